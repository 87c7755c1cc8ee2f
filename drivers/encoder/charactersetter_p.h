#pragma once

#include <QHash>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "encoder/layoutsheet_p.h"
#include "encoder/pagetable_p.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/codepage.h"

namespace printerslib::drivers {

/// Decides how the characters of rows get on the paper: by the printer's letters, as characters
/// that the stream defines, as dots, or not at all.
class CharacterSetter
{
public:
    /// @param sheet outlives this, and so does the document
    CharacterSetter(LayoutSheet &sheet, const TextPrinterDocument &document,
                    const PrintOptions &options);

    /// Whether a row needs set().
    bool concern(bool isOdd) const { return isOdd || m_isEachRowOdd; }
    /// Sets the cells of a row that LineFiller has filled.
    void set(PrintLayout::Row &row);

private:
    using Cell = PrintLayout::Cell;

    /// A drawing of a character or special symbol in a size.
    struct Key
    {
        char16_t character = 0;
        bool isSymbol = false;
        QSize size;
        bool operator==(const Key &other) const
        {
            return character == other.character && isSymbol == other.isSymbol && size == other.size;
        }
        friend uint qHash(const Key &key, uint seed = 0)
        {
            const uint dots = uint(key.size.width()) << 8 | uint(key.size.height());
            return seed ^ (uint(key.character) << 1 | uint(key.isSymbol)) ^ dots << 17;
        }
    };

    void sift(const PrintLayout::Row &row);
    void siftCell(Cell &cell);
    void setSurrogate(Cell &cell, char16_t previous, char16_t next);
    void setUnprinted(Cell &cell);
    void setByte(Cell &cell);
    static void clearByte(Cell &cell);
    bool takesOwnCharacters();
    void setOwnCharacters();
    bool setLineDots(const PrintLayout::Row &row);
    bool takesLineDots(const PrintLayout::Row &row);
    void setDots(const PrintLayout::Row &row);
    void setDots(Cell &cell);
    bool countOwn(const Cell &cell);
    bool isDefinable(const Key &key);
    Paper::Picture drawingOf(const Key &key);
    void setBlank(Cell &cell);
    void setDrawing(Cell &cell, QSize size);

    static bool isSymbol(const Cell &cell);
    static Key keyOf(const Cell &cell, QSize size);
    const PrintFont &fontOf(const Cell &cell) const;
    QSize dotsOf(const Cell &cell) const;
    bool isBlank(const Cell &cell) const;
    bool hasDrawing(char16_t symbol, QSize size) const;
    bool findDrawing(signed char symbol, QSize size) const;
    Paper::Picture symbolOf(char16_t symbol, QSize size);
    void noteWithoutGlyph(uint character);

    LayoutSheet &m_sheet;
    SpecialCharacters m_symbols;
    std::shared_ptr<const PageTable> m_pages;
    std::optional<CodePage> m_firstPage;  ///< when a byte asks for it
    bool m_isPicture = false;
    bool m_isEachRowOdd = false;
    std::vector<Cell *> m_pending;  ///< of the row: those that the printer has no letters for
    std::vector<Key> m_own;         ///< of the row: characters that have to be defined
    QHash<Key, qint16> m_drawings;
    QHash<Key, bool> m_definable;      ///< of those that were asked for
    mutable QHash<Key, bool> m_drawn;  ///< symbols that have a drawing, of those too
};

}  // namespace printerslib::drivers
