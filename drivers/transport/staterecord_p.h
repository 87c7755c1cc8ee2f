#pragma once

#include <QByteArray>
#include <QString>

namespace printerslib::drivers {

/// What stays beside a lock. Each user has a file of its own, as nobody may replace another's in a
/// folder of all users; the newest counts. Used by the holder of the lock alone.
class StateRecord
{
public:
    static constexpr int greatestSize = 64 * 1024;  ///< bytes

    /// @param name of the lock's file, without its suffix
    StateRecord(const QString &folder, const QString &name);

    /// Empty if there is none that is whole.
    QByteArray read() const;
    bool write(const QByteArray &bytes) const;

private:
    struct Version;

    Version newest() const;

    QString m_folder;
    QString m_name;
};

}  // namespace printerslib::drivers
