#include "language.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTranslator>
#include <memory>

#include "support.h"

// A site's own platform may choose languages in another way, and lack this one.
#if __has_include("hearth/apptranslations.h")
#include "hearth/apptranslations.h"
#define RECEIPT_HAS_TRANSLATIONS
#endif

namespace tool {

namespace {

#ifdef RECEIPT_HAS_TRANSLATIONS
bool translateTo(const QString &language)
{
    return !language.isEmpty() && hearth::AppTranslations::use(language);
}

QStringList knownLanguages()
{
    return hearth::AppTranslations::languages();
}
#else
bool translateTo(const QString &)
{
    return false;
}

QStringList knownLanguages()
{
    return QStringList();
}
#endif

/// The checker's words are a part of the program; there is nothing for English, in which it is
/// written, nor for a site's own languages.
void translateRules(const QString &language)
{
    auto words = std::make_unique<QTranslator>();
    if (!words->load(QStringLiteral(":/receipt/receipt_%1.qm").arg(language)))
        return;
    words->setParent(QCoreApplication::instance());
    QCoreApplication::installTranslator(words.release());
}

}  // namespace

QCommandLineOption languageOption()
{
    return QCommandLineOption(
        QStringLiteral("language"),
        QStringLiteral("Language of the library's own words, such as the mark of a copy: de, en or "
                       "ru. A site may have added others. Default: none; the mark is CHECK_COPY."),
        QStringLiteral("LANGUAGE"));
}

bool useLanguage(const QCommandLineParser &parser)
{
    const QString option = languageOption().names().constFirst();
    if (!parser.isSet(option))
        return true;
    if (translateTo(parser.value(option)))
        return true;
    const QStringList languages = knownLanguages();
    complain(QStringLiteral("--%1: there is no translation to \"%2\"; there are: %3")
                 .arg(option, parser.value(option),
                      languages.isEmpty() ? QStringLiteral("none")
                                          : languages.join(QStringLiteral(", "))));
    return false;
}

void useLanguageOfRules(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addOption(languageOption());
    // The other options are judged later.
    parser.parse(QStringList(QString()) + arguments);
    const QString language = parser.value(languageOption());
    if (knownLanguages().contains(language))
        translateRules(language);
}

}  // namespace tool
