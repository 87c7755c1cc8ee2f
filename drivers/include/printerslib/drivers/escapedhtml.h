#pragma once

#include <QString>

#include "printerslib/drivers/drivers_export.h"

class DocumentBlock;
class PrinterDocument;
class PrinterDocumentFormatter;
class SpecialCharacters;
class TextPrinterDocument;

namespace printerslib::drivers {

/// The HTML forms of receipts with their texts escaped.
///
/// printerslib's own `toHtml` operations don't escape: a "<img src=x onerror=..." in a customer's
/// name, with or without ">", is part of the page. These operations give the same HTML to the
/// letter, but for "&", "<", ">" and the double quote of the receipt's text, which stand in it as
/// "&amp;", "&lt;", "&gt;" and "&quot;". While the HTML is made each of them is one character, as
/// on paper: so a character keeps its format and font byte, and a cell its width. The noncharacters
/// U+FDD0 to U+FDD3, which nobody may exchange, are shown as U+FFFD.
///
/// What isn't text stays as it is. So does `<img src="file:///tmp/tempimg" ...>`, which stands for
/// every special symbol: the client provides that picture or puts its own address there.
///
/// Arguments and thread rules are those of the operations of the same names; none fails.
class PRINTERSLIB_DRIVERS_EXPORT EscapedHtml
{
public:
    /// As DocumentBlock::toHtml().
    static QString toHtml(const DocumentBlock &block, bool rightAlign,
                          const SpecialCharacters &symbols, bool useTable, int lineWidth);

    /// As TextPrinterDocument::toHtml().
    static QString toHtml(const TextPrinterDocument &document, bool useTable,
                          const SpecialCharacters &symbols);

    /// As PrinterDocumentFormatter::toHtml(). A tag in a value is a tag here as well, and what it
    /// prints is escaped: see DocumentCleaner for values that hold none.
    static QString toHtml(const PrinterDocumentFormatter &formatter,
                          const PrinterDocument &document, bool rightAlign);
    /// As PrinterDocumentFormatter::toHtmlDocument().
    static QString toHtmlDocument(const PrinterDocumentFormatter &formatter,
                                  const PrinterDocument &document, bool rightAlign);
    /// As PrinterDocumentFormatter::plainTextToHtml().
    static QString plainTextToHtml(const PrinterDocumentFormatter &formatter, const QString &text,
                                   bool rightAlign);
    /// As PrinterDocumentFormatter::plainTextToHtmlDocument().
    static QString plainTextToHtmlDocument(const PrinterDocumentFormatter &formatter,
                                           const QString &text, bool rightAlign);
};

}  // namespace printerslib::drivers
