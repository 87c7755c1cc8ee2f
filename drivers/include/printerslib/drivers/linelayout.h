#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include "printerdocs/documentblock.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printtarget.h"

namespace printerslib::drivers {

/// One row of text as it is printed from the left edge of the line: a character after the other,
/// each in the cell of its font, doubled as its format says. Format and font have one byte for each
/// character.
struct LaidLine
{
    /// Blanks stand for alignment, tabs and codes that aren't printed. Special symbols have their
    /// codes 1 to 7; all other codes below 0x20 are allowed ones. Both halves of a character beyond
    /// U+FFFF have a cell, in the same row if it has room for them.
    QString text;
    /// Bits of ECharFormat that the model prints. CharRawCode is set where the character is a byte
    /// for the printer: an allowed code, or one from 0x80 to 0xFF.
    QByteArray format;
    QByteArray font;         ///< as in the document
    bool isWrapped = false;  ///< goes on with a line that was too long for the row above
};

/// Lays out lines of text blocks: alignment by cells, justified lines, tabs, and what is too long
/// goes on below. Any driver may take it.
///
/// A value; any thread may use its own copy.
class PRINTERSLIB_DRIVERS_EXPORT LineLayout
{
public:
    /// @param allowedRawCodes codes below 0x20 that may go to the printer where CharRawCode is set;
    ///                        all others are blank
    explicit LineLayout(const PrintTarget &target, const QByteArray &allowedRawCodes = {});

    /// The rows of a line, at least one.
    /// @param format, font one byte per character; a shorter one has its last byte repeated, an
    ///                     empty one stands for zero bytes
    QVector<LaidLine> rowsOf(const QString &text, const QByteArray &format, const QByteArray &font,
                             ETextAlignment alignment) const;
    /// The rows of all lines of a text block.
    QVector<LaidLine> rowsOf(const DocumentBlock &block) const;

private:
    PrintTarget m_target;
    QByteArray m_allowedRawCodes;
};

}  // namespace printerslib::drivers
