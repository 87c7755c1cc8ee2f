#pragma once

#include <QByteArray>
#include <QString>

#include "printerdocs/documentblock.h"

/// What carries from line to line while a document's lines are formatted.
struct LineFormat
{
    unsigned char format = 0;
    unsigned char font = 0;
    ETextAlignment alignment = AlignLeft;  ///< of the last line that had text
};

/// One formatted line: what PrinterDocumentFormatter::formatPrintStr() makes a block of.
struct FormattedLine
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
enum class LineParts { Text, All };

FormattedLine formattedLine(const QString &line, LineFormat &carried, int lineSpacing,
                            int leftMargin, LineParts wanted = LineParts::All);
