#include "shopfile.h"

#include <printerslib/drivers/printeraddress.h>
#include <printerslib/drivers/printermodels.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

#include "printermodel.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::PrinterAddress;
using printerslib::drivers::PrinterModels;

// What any model may have.
constexpr int mostPaperNumber = 127;
constexpr int mostFontNumber = 3;

const QString toKey = QStringLiteral("to");
const QString modelKey = QStringLiteral("model");
const QString modelsKey = QStringLiteral("models");
const QString settingsKey = QStringLiteral("settings");
const QString paperKey = QStringLiteral("paper");
const QString fontKey = QStringLiteral("font");

/// What a file says, key by key, while it is checked.
class ShopFile
{
public:
    explicit ShopFile(const QString &name) : m_name(name), m_folder(QFileInfo(name).absolutePath())
    {}

    bool read();
    /// @param hasMoreModels whether others than those of the file are known
    bool check(bool hasMoreModels);
    QStringList options(const QCommandLineParser &parser) const;

private:
    bool isReadable();
    bool hasKeysOnce(const QByteArray &content) const;
    bool take(const QString &key, const QVariant &value);
    bool checkAddress();
    bool checkModels(bool hasMoreModels);
    bool checkSettings();
    bool checkNumber(const QString &key, int last);
    QString pathOf(const QString &name) const { return QDir(m_folder).filePath(name); }
    bool complainOf(const QString &key, const QString &fault) const;

    const QString m_name;
    const QString m_folder;
    QMap<QString, QStringList> m_values;
    // Of the file's model, where that is known.
    int m_lastPaper = mostPaperNumber;
    int m_lastFont = mostFontNumber;
};

bool ShopFile::complainOf(const QString &key, const QString &fault) const
{
    complain(QStringLiteral("%1: the key \"%2\": %3").arg(m_name, key, fault));
    return false;
}

bool ShopFile::isReadable()
{
    const QFileInfo info(m_name);
    QFile file(m_name);
    QString fault;
    // QSettings takes a pipe for an empty file.
    if (info.exists() && !info.isFile() && m_name != QProcess::nullDevice())
        fault = QStringLiteral("is no regular file");
    else if (!file.open(QIODevice::ReadOnly))
        fault = file.errorString();
    const QByteArray content = file.isOpen() ? file.readAll() : QByteArray();
    // QSettings would have it as a part of the first line.
    if (content.startsWith("\xEF\xBB\xBF"))
        fault = QStringLiteral("begins with a byte order mark; save it as UTF-8 without one");
    if (fault.isEmpty())
        return hasKeysOnce(content);
    complain(QStringLiteral("%1: %2").arg(m_name, fault));
    return false;
}

/// Of a key that stands twice QSettings keeps one.
bool ShopFile::hasKeysOnce(const QByteArray &content) const
{
    QSet<QByteArray> keys;
    const QList<QByteArray> lines = content.split('\n');
    for (const QByteArray &line : lines) {
        const int end = line.indexOf('=');
        const QByteArray key = line.left(end).trimmed();
        if (end < 0 || key.startsWith(';'))
            continue;
        if (keys.contains(key))
            return complainOf(QString::fromUtf8(key),
                              QStringLiteral("stands twice; several values have commas between "
                                             "them"));
        keys.insert(key);
    }
    return true;
}

bool ShopFile::take(const QString &key, const QVariant &value)
{
    const QStringList known{toKey, modelKey, modelsKey, settingsKey, paperKey, fontKey};
    if (!known.contains(key)) {
        complain(QStringLiteral("%1: there is no key \"%2\"; there are: %3")
                     .arg(m_name, key, known.join(QStringLiteral(", "))));
        return false;
    }
    const QStringList values = value.toStringList();
    if (values.isEmpty() || values.contains(QString()))
        return complainOf(key, QStringLiteral("has no value"));
    if (values.size() > 1 && key != modelsKey)
        return complainOf(key,
                          QStringLiteral("has several values; one with a comma in it stands in "
                                         "quotation marks"));
    m_values.insert(key, values);
    return true;
}

bool ShopFile::read()
{
    if (!isReadable())
        return false;
    QSettings settings(m_name, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const QStringList keys = settings.allKeys();
    if (settings.status() != QSettings::NoError) {
        complain(QStringLiteral("%1: has a line that isn't KEY=VALUE").arg(m_name));
        return false;
    }
    return std::all_of(keys.begin(), keys.end(),
                       [&](const QString &key) { return take(key, settings.value(key)); });
}

bool ShopFile::checkAddress()
{
    if (!m_values.contains(toKey))
        return true;
    QString error;
    const auto address = PrinterAddress::parse(m_values[toKey].constFirst(), &error);
    if (!address)
        return complainOf(toKey, error);
    // The folder that a program is started in isn't what the file's writer had in mind.
    const bool isFile = address->kind() == PrinterAddress::Kind::File;
    m_values[toKey] =
        QStringList(isFile ? QStringLiteral("file:") + QString::fromLatin1(QUrl::toPercentEncoding(
                                                           pathOf(address->path()), "/"))
                           : address->toString());
    return true;
}

bool ShopFile::checkModels(bool hasMoreModels)
{
    PrinterModels models;
    const QStringList names = m_values.take(modelsKey);
    for (const QString &name : names) {
        const QString file = pathOf(name);
        m_values[modelsKey].append(file);
        const QStringList faults = models.addFile(file);
        if (!faults.isEmpty())
            return complainOf(modelsKey, faults.constFirst());
    }
    const QString model = m_values.value(modelKey).value(0);
    if (model.isEmpty() || hasMoreModels)
        return true;
    const auto profile = models.profile(model);
    if (!profile)
        return complainOf(
            modelKey,
            QStringLiteral("there is no model \"%1\"; see \"receipt models\"").arg(model));
    const PrinterInfo record = recordOf(*profile);
    m_lastPaper = record.paperTypes().lastKey();
    m_lastFont = record.fontTypes().size() - 1;
    return true;
}

bool ShopFile::checkSettings()
{
    if (!m_values.contains(settingsKey))
        return true;
    if (m_values.contains(modelKey))
        return complainOf(settingsKey, QStringLiteral("excludes the key \"model\""));
    QFile file(pathOf(m_values[settingsKey].constFirst()));
    if (!file.open(QIODevice::ReadOnly))
        return complainOf(settingsKey,
                          QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    m_values[settingsKey] = QStringList(file.fileName());
    return true;
}

bool ShopFile::checkNumber(const QString &key, int last)
{
    if (!m_values.contains(key))
        return true;
    const QString text = m_values[key].constFirst();
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= 0 && number <= last)
        return true;
    return complainOf(key, QStringLiteral("\"%1\" is no number from 0 to %2").arg(text).arg(last));
}

bool ShopFile::check(bool hasMoreModels)
{
    return checkAddress() && checkModels(hasMoreModels) && checkSettings() &&
           checkNumber(paperKey, m_lastPaper) && checkNumber(fontKey, m_lastFont);
}

/// Those of a model count where the command line names none.
QStringList ShopFile::options(const QCommandLineParser &parser) const
{
    const QStringList given = parser.optionNames();
    const bool namesModel = given.contains(modelKey) || given.contains(settingsKey);
    QStringList options;
    for (auto value = m_values.begin(); value != m_values.end(); ++value) {
        const bool isOfModel = value.key() != toKey && value.key() != modelsKey;
        if (given.contains(value.key()) ? value.key() != modelsKey : isOfModel && namesModel)
            continue;
        for (const QString &text : *value)
            options.append(QStringLiteral("--%1=%2").arg(value.key(), text));
    }
    return options;
}

}  // namespace

QCommandLineOption shopFileOption()
{
    return {QStringLiteral("config"),
            QStringLiteral("The file that says which printer the shop has, by lines such as "
                           "to=URL, model=ID, models=FILE, settings=FILE, paper=N and font=N; "
                           "options prevail. Default: printerslib/receipt.conf in ~/.config, in "
                           "/etc/xdg or in /etc."),
            QStringLiteral("FILE")};
}

QString shopFileOf(const QCommandLineParser &parser)
{
    if (parser.isSet(shopFileOption()))
        return parser.value(shopFileOption());
    const QString name = QStringLiteral("printerslib/receipt.conf");
    QString found = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, name);
    if (!found.isEmpty())
        return found;
    QString ofMachine = QStringLiteral("/etc/") + name;
    return QFile::exists(ofMachine) ? ofMachine : QString();
}

std::optional<QStringList> shopFileOptions(const QCommandLineParser &parser)
{
    const QString name = shopFileOf(parser);
    if (name.isEmpty() && !parser.isSet(shopFileOption()))
        return QStringList();
    ShopFile file(name);
    if (!file.read() || !file.check(parser.optionNames().contains(modelsKey)))
        return std::nullopt;
    return file.options(parser);
}

}  // namespace tool
