#pragma once

#include <QString>
#include <optional>

namespace printerslib::drivers {

/// A set of characters of two bytes each, as printers of East Asia have them.
class TwoByteSet
{
public:
    /// Names as of the C library ("GB18030", "SHIFT_JIS", "BIG5", "EUC-KR"), and "JIS", in which
    /// both bytes are below 0x80. Nothing for any other.
    static std::optional<TwoByteSet> forName(const QString &name);

    QString name() const { return QString::fromLatin1(m_name); }
    /// Whether a byte begins a character.
    bool isLead(unsigned char byte) const
    {
        const bool isKana = m_hasKana && byte >= 0xA0 && byte < 0xE0;
        return byte >= m_firstLead && byte <= m_lastLead && !isKana;
    }
    /// What two bytes show: U+0000 where the set has nothing.
    char16_t character(unsigned char lead, unsigned char trail) const;

private:
    const char *m_name = nullptr;
    const char *m_iconvName = nullptr;
    bool m_hasKana = false;  ///< narrow katakana of one byte stand among the leads
    bool m_isSevenBit = false;
    unsigned char m_firstLead = 0x81;
    unsigned char m_lastLead = 0xFE;
};

}  // namespace printerslib::drivers
