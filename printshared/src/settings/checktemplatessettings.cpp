#include "settings/checktemplatessettings.h"

#include <algorithm>
#include <utility>

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
    QString path;
    {
        const QMutexLocker lock(&_settingsMutex);
        path = _checkTemplatesPath;
    }
    // Not under the lock: what goes wrong with the folders is logged, and a client's message
    // handler may ask for the templates.
    return path.isEmpty() ? PrintSrvSettings().workDir() + QLatin1String("/templates") : path;
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
    const settingsitem::Item plain = settingsitem::withText(item);
    const QMutexLocker lock(&_settingsMutex);
    return setLocked(plain);
}

void CheckTemplatesSettings::setList(const QList<QVariant> &list)
{
    QVector<settingsitem::Item> items = settingsitem::itemsOf(list);
    std::transform(items.cbegin(), items.cend(), items.begin(), settingsitem::withText);
    const QMutexLocker lock(&_settingsMutex);
    for (const settingsitem::Item &item : std::as_const(items))
        setLocked(item);
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
