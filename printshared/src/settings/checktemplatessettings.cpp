#include "settings/checktemplatessettings.h"

#include "settings/printsrvsettings.h"
#include "settings/settingsitem_p.h"

const QString CheckTemplatesSettings::SECTION = QStringLiteral("CHECK_TEMPLATES");
const QString CheckTemplatesSettings::CHECK_TEMPLATES_PATH = QStringLiteral("checkTemplatesPath");
const QString CheckTemplatesSettings::DEFAULT_CHECK_TEMPLATE =
    QStringLiteral("defaultCheckTemplate");
const QString CheckTemplatesSettings::SPEC_SYMBOLS_PATH = QStringLiteral("specsymbolsPath");
const QString CheckTemplatesSettings::Z_TEMPLATES_PATH = QStringLiteral("z_templatesPath");
const QString CheckTemplatesSettings::FISCAL_TEMPLATES_PATH = QStringLiteral("fiscalTemplatesPath");

QMutex CheckTemplatesSettings::_settingsMutex;
QString CheckTemplatesSettings::_checkTemplatesPath;
QString CheckTemplatesSettings::_defaultCheckTemplate = QStringLiteral("default.cpt");

CheckTemplatesSettings::~CheckTemplatesSettings() = default;

QString CheckTemplatesSettings::checkTemplatesPath() const
{
    const QMutexLocker lock(&_settingsMutex);
    if (_checkTemplatesPath.isEmpty())
        return PrintSrvSettings().workDir() + QLatin1String("/templates");
    return _checkTemplatesPath;
}

void CheckTemplatesSettings::setCheckTemplatesPath(const QString &path)
{
    const QMutexLocker lock(&_settingsMutex);
    _checkTemplatesPath = path;
}

QString CheckTemplatesSettings::defaultCheckTemplate() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _defaultCheckTemplate;
}

void CheckTemplatesSettings::setDefaultCheckTemplate(const QString &fileName)
{
    const QMutexLocker lock(&_settingsMutex);
    _defaultCheckTemplate = fileName;
}

bool CheckTemplatesSettings::setValue(const QMap<QString, QVariant> &item)
{
    const QMutexLocker lock(&_settingsMutex);
    return setLocked(item);
}

void CheckTemplatesSettings::setList(const QList<QVariant> &list)
{
    const QMutexLocker lock(&_settingsMutex);
    for (const QVariant &item : list)
        setLocked(item.toMap());
}

QList<QVariant> CheckTemplatesSettings::toList() const
{
    const QMutexLocker lock(&_settingsMutex);
    QList<QVariant> list;
    settingsitem::append(list, SECTION, CHECK_TEMPLATES_PATH, _checkTemplatesPath);
    settingsitem::append(list, SECTION, DEFAULT_CHECK_TEMPLATE, _defaultCheckTemplate);
    return list;
}

bool CheckTemplatesSettings::setLocked(const QMap<QString, QVariant> &item)
{
    if (settingsitem::group(item) != SECTION)
        return false;
    const QString key = settingsitem::key(item);
    const QString value = settingsitem::value(item).toString();
    if (key == CHECK_TEMPLATES_PATH)
        _checkTemplatesPath = value;
    else if (key == DEFAULT_CHECK_TEMPLATE)
        _defaultCheckTemplate = value;
    else
        return false;
    return true;
}
