#include "hearth/fileconfighelper.h"

#include <QSettings>

namespace hearth {

FileConfigHelper::FileConfigHelper(const QString &fileName, bool writable)
    : m_fileName(fileName), m_writable(writable)
{}

FileConfigHelper::~FileConfigHelper() = default;

QString FileConfigHelper::settingsFileName() const
{
    return m_fileName;
}

QVariant FileConfigHelper::value(const QString &key, const QVariant &defaultValue) const
{
    QSettings file(m_fileName, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    return file.value(key, defaultValue);
}

bool FileConfigHelper::setValue(const QString &key, const QVariant &value)
{
    if (!m_writable)
        return false;
    QSettings file(m_fileName, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    file.setValue(key, value);
    file.sync();
    return file.status() == QSettings::NoError;
}

}  // namespace hearth
