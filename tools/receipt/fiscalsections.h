#pragma once

#include <printerslib/drivers/printlayout.h>

#include <QCommandLineOption>
#include <QMap>
#include <QString>
#include <QStringList>

#include "filling.h"
#include "printerdocs/textprinterdocument.h"

class PrinterDocumentFormatter;

/// Receipts of which the fiscal printer prints some sections by itself.
namespace tool {

/// The option --fiscal of a command that shows them.
QCommandLineOption fiscalOption();

/// A receipt with an empty block in the place of each such section.
struct FiscalReceipt
{
    TextPrinterDocument document;
    QMap<int, QString> sections;  ///< by the number of their block, from 1
};

/// What a client sends of a template, cut at its markers.
/// @param margin blanks in front of each line
FiscalReceipt fiscalReceiptOf(const TemplateAndDocument &source, int margin);

/// The same as text, with a frame in the place of each section.
/// @param width characters per line
QStringList fiscalTextOf(const TemplateAndDocument &source, int margin, int width);

/// One of the HTML forms of a template's receipt.
using HtmlOf = QString (*)(const PrinterDocumentFormatter &formatter,
                           const PrinterDocument &document);
/// The same in such a form, with a framed row in the place of each section.
QStringList fiscalHtmlOf(const TemplateAndDocument &source, int margin, HtmlOf htmlOf);

/// Puts a frame in the place of each section's block.
void frameSections(const QMap<int, QString> &sections, printerslib::drivers::PrintLayout &layout);

}  // namespace tool
