#pragma once

#include <QString>

namespace hearth {

/// Without the base class of the stand-in's.
class Q_DECL_EXPORT InitConfig
{
public:
    InitConfig(const QString &fileName, bool writable);
    virtual ~InitConfig();
    /// "/other/" and the configuration file's name.
    virtual QString workDir() const;

private:
    QString m_fileName;
};

}  // namespace hearth
