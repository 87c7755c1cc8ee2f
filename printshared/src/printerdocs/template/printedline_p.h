#pragma once

#include <QByteArray>
#include <QString>

#include "printerdocs/documentblock.h"
#include "printerdocs/template/textedits_p.h"

namespace templates {

/// What carries from line to line while the markup of a document's lines is read.
struct CarriedStyle
{
    unsigned char format = 0;
    unsigned char font = 0;
    ETextAlignment alignment = AlignLeft;  ///< of the last line that had text
};

/// One line as it is printed: what PrinterDocumentFormatter::formatPrintStr() makes a block of.
struct PrintedLine
{
    bool isValid = false;  ///< a line of nothing but tags isn't
    QString text;
    QByteArray formats;
    QByteArray fonts;
    ETextAlignment alignment = AlignLeft;
    int spacing = 0;

    DocumentBlock toBlock() const;
};

/// What is wanted of a line. Where only its text is, most lines go without the bytes.
enum class LineDetail { TextOnly, WithBytes };

/// Reads the markup of one line.
template <typename Edits = NoEdits>
PrintedLine printedLine(const QString &line, CarriedStyle &carried, int lineSpacing, int leftMargin,
                        LineDetail wanted = LineDetail::WithBytes, Edits edits = Edits());

}  // namespace templates
