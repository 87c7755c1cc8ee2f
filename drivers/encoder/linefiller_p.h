#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <vector>

#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/etextalignment.h"
#include "printerslib/drivers/printlayout.h"
#include "printerslib/drivers/printtarget.h"

namespace printerslib::drivers {

/// Fills rows with the cells of lines: the one place that knows of alignment, tabs and wrapping.
class LineFiller
{
public:
    using Cell = PrintLayout::Cell;

    /// A line of a text block. Refers to its text and bytes.
    struct Line
    {
        Line(const QString &lineText, const QByteArray &formats, const QByteArray &fonts,
             ETextAlignment lineAlignment);

        const QString &text;
        documents::CharacterBytes format;
        documents::CharacterBytes font;
        ETextAlignment alignment;
        bool isUniform;  ///< all characters look alike
    };
    struct RowEnd
    {
        int end = 0;         ///< behind its last cell
        int height = 0;      ///< of the highest cell; of an empty row that of the line's first font
        bool isOdd = false;  ///< has cells that aren't printing ASCII
    };
    /// In place of a drawing: the cell is blank for the code `byte`, which isn't printed.
    static constexpr qint16 unprintedCode = -2;

    /// @param target outlives this
    LineFiller(const PrintTarget &target, const QByteArray &allowedRawCodes, int spacesInFront = 0);

    /// Appends the cells of a line, and an end for each row. Special symbols have their codes, and
    /// all characters stand as in the text.
    /// @param mostRows ends that there may be in all; rows beyond are left out
    void fill(const Line &line, int mostRows, std::vector<Cell> &cells, std::vector<RowEnd> &rows);
    /// Format bits of the last line that the model doesn't print.
    quint8 unprintedFormats() const { return m_unprintedFormats; }

    static constexpr char16_t firstPrinting = 0x20;
    static constexpr char16_t lastControl = 0x9F;

    static bool isPlain(char16_t character)
    {
        return character >= firstPrinting && character < 0x7F;
    }

private:
    /// Characters side by side that look alike.
    struct Run
    {
        int first = 0;
        int end = 0;
        bool isRaw = false;
        quint8 format = 0;
        quint8 font = 0;
        QSize cell;
    };

    Run runFrom(const Line &line, int first) const;
    int freeCells(const Line &line, int unit) const;
    void fillRun(const Line &line, const Run &run, int tabCells);
    void fillTab(const Run &run, int tabCells);
    int fitting(const Line &line, const Run &run, int first, int end) const;
    void add(const char16_t *characters, int count, const Run &run);
    void addBlanks(int count, quint8 format, quint8 font);
    void setCharacter(Cell &cell, bool isRaw) const;
    void beginRow();
    void beginCells();
    void endRow();
    bool isFull() const { return static_cast<int>(m_rows->size()) >= m_mostRows; }
    QSize sizeOf(quint8 format, quint8 font) const;

    const PrintTarget &m_target;
    const QByteArray m_allowedRawCodes;
    const quint8 m_printed;
    int m_spaces = 0;
    int m_width = 0;  ///< of a row, in dots
    quint8 m_unprintedFormats = 0;

    // The row that is being filled.
    std::vector<Cell> *m_cells = nullptr;
    std::vector<RowEnd> *m_rows = nullptr;
    int m_mostRows = 0;
    int m_next = 0;
    int m_height = 0;
    quint8 m_firstFont = 0;
    bool m_isEmpty = true;
    bool m_isOdd = false;
};

}  // namespace printerslib::drivers
