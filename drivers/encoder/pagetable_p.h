#pragma once

#include <QMap>
#include <QString>
#include <array>
#include <memory>
#include <optional>

#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// Which of a model's code pages show a character, and by what byte. ASCII is in all of them by
/// its own code, but for what a page has in its place, such as CP864 instead of the percent sign.
/// Spaces of a width of their own, and those that don't break, are the blank where a page lacks
/// them. Tables are made once for a list of pages and kept; any thread may use them.
class PageTable
{
public:
    static std::shared_ptr<const PageTable> of(const PrinterProfile &profile);

    /// Whether any page has it. Blanks are characters, control characters (below 0x20, 0x7F to
    /// 0x9F) aren't.
    bool has(char16_t character) const
    {
        return (m_characters[character >> 6] >> (character & 63) & 1) != 0;
    }
    /// The byte on a page of this number; nothing if the page lacks the character.
    std::optional<unsigned char> byteOn(int page, char16_t character) const;
    /// The page for a text that begins with a character that `current` lacks: the preferred one if
    /// it has it, else the one that has most of the characters that follow at once, the smaller
    /// number of equals. -1: none has the character.
    int pageFor(const char16_t *text, int size, int preferred) const;

    /// The page that a text begins with: by number, or (number 0) by name for the general Epson
    /// model, whose pages the shop names as Qt knows them; else the model's own. -1: the model has
    /// no such page. A name that no page has is no reason to print nothing, but to tell.
    static int firstPage(const PrinterProfile &profile, int number, const QString &codec);

private:
    class Rows;
    explicit PageTable(const QMap<int, QString> &pages);

    std::shared_ptr<const Rows> m_rows;
    std::array<quint64, 1024> m_characters = {};  ///< a bit for each that any page has
};

}  // namespace printerslib::drivers
