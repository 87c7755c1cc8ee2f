#pragma once

#include <QString>
#include <QStringList>

#include "printerdocs/documentblock.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"

/// Laws of every printable document, however it came about.
namespace documentlaws {

/// What a document is after it went through its map form: the same but for the intended losses.
TextPrinterDocument afterItsMapForm(const TextPrinterDocument &document);

/// All laws below.
void check(const TextPrinterDocument &document);

/// setMap(toMap()), with and without JSON in between.
void mapFormKeepsTheDocument(const TextPrinterDocument &document);
/// The HTML of a document from that of its blocks, of these from that of their lines, of these from
/// that of their characters.
void htmlIsThatOfTheLines(const TextPrinterDocument &document);
/// Lines of text, and the characters of the estimate.
void linesAreThoseOfTheBlocks(const TextPrinterDocument &document);
/// Every text block has a format and a font byte for every character, or more of them.
void bytesReachOverTheText(const TextPrinterDocument &document);
/// The same, and no byte more.
void bytesAreInStep(const TextPrinterDocument &document);

}  // namespace documentlaws
