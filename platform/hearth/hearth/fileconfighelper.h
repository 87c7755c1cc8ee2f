#pragma once

#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace hearth {

/// Stand-in for the system's access to an INI configuration file in UTF-8.
///
/// The file is looked at anew by every operation, so that a change shows at once; Qt keeps what it
/// parsed as long as the file's time and size stay, so a change of the same size within the file
/// system's resolution of time doesn't show. Any thread may use its own object. The virtual
/// operations stand in the order that the system's own library gives them.
class Q_DECL_EXPORT FileConfigHelper
{
public:
    /// @param fileName a file that need not exist
    /// @param writable whether setValue() may write it
    FileConfigHelper(const QString &fileName, bool writable);
    FileConfigHelper(const FileConfigHelper &) = delete;
    FileConfigHelper &operator=(const FileConfigHelper &) = delete;
    virtual ~FileConfigHelper();

    /// The file, as given to the constructor.
    virtual QString settingsFileName() const;

    /// The value under a key, or `defaultValue` where the file or the key is missing.
    virtual QVariant value(const QString &key, const QVariant &defaultValue) const;

    /// Writes one value.
    /// @return whether it stands in the file now
    virtual bool setValue(const QString &key, const QVariant &value);

private:
    QString m_fileName;
    bool m_writable;
};

}  // namespace hearth
