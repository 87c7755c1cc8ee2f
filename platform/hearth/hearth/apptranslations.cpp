#include "hearth/apptranslations.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QThread>
#include <QTranslator>
#include <QVector>
#include <memory>

#include "hearth/appversionmanager.h"
#include "hearth/initconfig.h"

namespace hearth {

namespace {

// Far more than words for receipts take.
constexpr qint64 mostTranslationBytes = 16LL * 1024 * 1024;

const char *const translationSuffix = ".qm";

/// A translation that has the bytes of its file for itself. QTranslator maps the file into memory,
/// and whoever writes over it then ends the process or changes its receipts.
class KeptTranslation : public QTranslator
{
public:
    KeptTranslation(const QByteArray &bytes, QObject *parent) : QTranslator(parent), m_bytes(bytes)
    {}
    ~KeptTranslation() override
    {
        // Before the bytes go. There is no instance any more when the application object takes its
        // translations with it.
        if (QCoreApplication::instance() != nullptr)
            QCoreApplication::removeTranslator(this);
    }
    KeptTranslation(const KeptTranslation &) = delete;
    KeptTranslation &operator=(const KeptTranslation &) = delete;

    /// False if the bytes are no translation, or one without a word.
    bool isReadable(const QString &folder)
    {
        return load(reinterpret_cast<const uchar *>(m_bytes.constData()), m_bytes.size(), folder) &&
               !isEmpty();
    }

private:
    const QByteArray m_bytes;
};

using Translations = QVector<QPointer<QTranslator>>;

/// By component. For the thread of the application object alone.
QMap<QString, Translations> &installedTranslations()
{
    static QMap<QString, Translations> installed;
    return installed;
}

/// The folder in the tree in which this library is installed, wherever that was moved to. A library
/// that was loaded by a relative path has none: that would be looked up from any working folder.
QString installedFolder()
{
    static const char inThisLibrary = 0;
    Dl_info library = {};
    if (dladdr(&inThisLibrary, &library) == 0 || library.dli_fname == nullptr)
        return QString();
    const QFileInfo file(QFile::decodeName(library.dli_fname));
    const QString folder = file.canonicalPath();
    if (file.isRelative() || folder.isEmpty())
        return QString();
    return QDir::cleanPath(folder + QLatin1String("/" HEARTH_TRANSLATIONS_FROM_LIBRARY));
}

/// The folders of translations; a later one prevails.
QStringList translationFolders()
{
    const InitConfig config(QStringLiteral("/opt/tarnwick/etc/tarn.conf"), false);
    QStringList folders{installedFolder(), config.translationsPath()};
    folders.removeAll(QString());
    return folders;
}

/// What is wrong with a file's name as that of a translation, or with its size; empty: nothing.
QString faultOf(const QFileInfo &info)
{
    if (!info.isFile())
        return QStringLiteral("this is no file");
    if (info.size() > mostTranslationBytes)
        return QStringLiteral("this is larger than %1 bytes").arg(mostTranslationBytes);
    return QString();
}

/// The translation in a file; null without one. A file that can't be used is logged.
QTranslator *loadTranslation(const QString &fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists())
        return nullptr;
    QString fault = faultOf(info);
    if (fault.isEmpty()) {
        QFile file(fileName);
        if (file.open(QIODevice::ReadOnly)) {
            auto translation =
                std::make_unique<KeptTranslation>(file.readAll(), QCoreApplication::instance());
            if (translation->isReadable(info.path()))
                return translation.release();
            fault = QStringLiteral("this is no translation");
        } else {
            fault = file.errorString();
        }
    }
    qWarning().noquote() << QStringLiteral("%1: %2").arg(fileName, fault);
    return nullptr;
}

/// Loads what the folders have, in their order.
Translations loadTranslations(const QString &component, const QString &language)
{
    Translations loaded;
    const QStringList folders = translationFolders();
    for (const QString &folder : folders) {
        QTranslator *translation = loadTranslation(
            QStringLiteral("%1/%2_%3%4")
                .arg(folder, component, language, QLatin1String(translationSuffix)));
        if (translation != nullptr)
            loaded.append(translation);
    }
    return loaded;
}

/// Gives the component these translations. The new ones are there before the old ones go, so that
/// no other thread prints untranslated words in between.
void replaceTranslations(const QString &component, const Translations &translations)
{
    Translations &installed = installedTranslations()[component];
    for (const QPointer<QTranslator> &translation : translations)
        QCoreApplication::installTranslator(translation);
    for (const QPointer<QTranslator> &translation : qAsConst(installed))
        delete translation;
    installed = translations;
}

bool translateComponent(const QString &component, const QString &language)
{
    const Translations translations =
        language.isEmpty() ? Translations() : loadTranslations(component, language);
    if (translations.isEmpty() && !language.isEmpty()) {
        qWarning().noquote() << QStringLiteral("There is no translation of %1 to \"%2\" in %3")
                                    .arg(component, language,
                                         translationFolders().join(QLatin1String(", ")));
        return false;
    }
    replaceTranslations(component, translations);
    return true;
}

/// Not a path, nor a part of one.
bool isLanguageName(const QString &language)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z0-9_@-]*\\z"));
    return form.match(language).hasMatch();
}

/// Why no translation can be installed; empty: one can.
QString obstacle(const QString &language)
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (application == nullptr)
        return QStringLiteral("there is no application object yet");
    if (application->thread() != QThread::currentThread())
        return QStringLiteral("only the thread of the application object may do that");
    if (!isLanguageName(language))
        return QStringLiteral("this is no language's name");
    if (!language.isEmpty() && AppVersionManager::localisations().isEmpty())
        return QStringLiteral("no component has translations");
    return QString();
}

/// The languages of a component in all folders.
QSet<QString> languagesOf(const QString &component)
{
    QSet<QString> languages;
    const QString prefix = component + QLatin1Char('_');
    const QStringList folders = translationFolders();
    for (const QString &folder : folders) {
        const QStringList files = QDir(folder).entryList(QDir::Files);
        for (const QString &file : files) {
            if (!file.startsWith(prefix) || !file.endsWith(QLatin1String(translationSuffix)))
                continue;
            const int length =
                file.size() - prefix.size() - static_cast<int>(qstrlen(translationSuffix));
            const QString language = file.mid(prefix.size(), qMax(length, 0));
            if (!language.isEmpty() && isLanguageName(language))
                languages.insert(language);
        }
    }
    return languages;
}

}  // namespace

bool AppTranslations::use(const QString &language)
{
    const QString why = obstacle(language);
    if (!why.isEmpty()) {
        qWarning().noquote()
            << QStringLiteral("The language \"%1\" can't be used: %2").arg(language, why);
        return false;
    }
    bool all = true;
    const QStringList components = AppVersionManager::localisations();
    for (const QString &component : components)
        all = translateComponent(component, language) && all;
    return all;
}

QStringList AppTranslations::languages()
{
    const QStringList components = AppVersionManager::localisations();
    if (components.isEmpty())
        return QStringList();
    QSet<QString> common = languagesOf(components.constFirst());
    for (const QString &component : components)
        common.intersect(languagesOf(component));
    QStringList sorted = common.values();
    sorted.sort();
    return sorted;
}

}  // namespace hearth
