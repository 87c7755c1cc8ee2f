#pragma once

#include <QString>
#include <QStringList>

#include "hearth/fileconfighelper.h"

namespace hearth {

/// Stand-in for the system's configuration: its folders, logs and language.
///
/// The environment variable TARN_CONF, when it isn't empty, names the configuration file instead of
/// the one that the program gives: for tests, for development, and for a site that keeps its own.
class Q_DECL_EXPORT InitConfig : public FileConfigHelper
{
public:
    /// @param fileName the configuration file; it need not exist
    /// @param writable whether setValue() and setlocale() may write it
    InitConfig(const QString &fileName, bool writable);
    ~InitConfig() override;

    /// Base folder of all data of the system, without a slash at its end: the key "workDir". A
    /// relative path starts at the configuration file's folder. Where the file or the key is
    /// missing or empty, it is the folder two levels above the file: /opt/tarnwick for
    /// /opt/tarnwick/etc/tarn.conf.
    virtual QString workDir() const;

    /// Folder of the log files, below the work folder.
    virtual QString loggerPath() const;
    /// Folder of process files, below the work folder.
    virtual QString runPath() const;
    /// Days to keep log files: the key "keepLogs", or 30.
    virtual int keepLogs() const;
    /// Whether log files rotate: the key "rotateLogs", or true.
    virtual bool rotateLogs() const;
    /// Log handlers whose files are kept: the key "keepLogsHandlers", or none.
    virtual QStringList keepLogsHandlers() const;
    /// Whether old log files of any program are removed: the key "cleanAnyOldLogs", or false.
    virtual bool cleanAnyOldLogs() const;
    /// Folder of the version register, below the work folder.
    virtual QString versionsPath() const;
    /// Folder of the translations, below the work folder.
    virtual QString translationsPath() const;
    /// Name of the language: the key "locale", or empty: none is named.
    virtual QString locale() const;
    /// Writes the language; false when the file couldn't be written.
    virtual bool setlocale(const QString &locale);
};

}  // namespace hearth
