#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// A character set of a printer: what its bytes show.
///
/// A value; any thread may use it. Sets are read once and kept for the process's life.
class PRINTERSLIB_DRIVERS_EXPORT CodePage
{
public:
    /// The set of a name as the C library knows it, such as "CP866", and those that it lacks under
    /// names of our own. Names in any case. Nothing for a name that nobody knows.
    static std::optional<CodePage> forName(const QString &name);

    QString name() const { return m_name; }  ///< of the set
    /// What a byte shows: U+0000 for a byte that the set leaves free.
    char16_t character(unsigned char byte) const { return m_characters[byte]; }
    /// The byte that shows a character, if there is one; of several the smallest.
    std::optional<unsigned char> byteOf(char16_t character) const;

private:
    QString m_name;
    const char16_t *m_characters = nullptr;  ///< 256, of the process's life
};

}  // namespace printerslib::drivers
