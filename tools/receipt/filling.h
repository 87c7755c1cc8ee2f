#pragma once

#include <printerslib/drivers/documentcleaner.h>

#include <QString>
#include <optional>

#include "printerdocs/printerdocument.h"
#include "templatelint.h"

class QTextCodec;

namespace tool {

/// A template and the document to fill it with.
struct TemplateAndDocument
{
    QString text;
    PrinterDocument document;
};

/// Reads both, "-" being standard input. Complains about all that is wrong in the files and gives
/// nothing then; so it does for a value whose tags lead on without end, on which the library would
/// hang, and for a file of special symbols that is no regular file.
/// @param rules by which the document's texts are cleaned first
std::optional<TemplateAndDocument> readTemplateAndDocument(
    const QString &templateFile, const QString &dataFile, const QTextCodec &codec,
    printerslib::drivers::DocumentCleaner::Rules rules,
    templatelint::Filling filling = templatelint::Filling::Receipt);

/// For each text line and each code of the receipt that both make its line in the template; see
/// templatelint::printedLinesOf().
/// @param isFiscal whether the template is cut at its fiscal markers
QVector<int> printedLinesOf(const TemplateAndDocument &source, bool isFiscal = false);

}  // namespace tool
