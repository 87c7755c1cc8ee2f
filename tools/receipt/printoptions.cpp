#include "printoptions.h"

#include <printerslib/drivers/codepage.h>

#include "cleaning.h"
#include "dataschema.h"
#include "folderoptions.h"
#include "language.h"
#include "lineoptions.h"
#include "support.h"
#include "templatefile.h"

namespace tool {

namespace {

using printerslib::drivers::CodePage;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;

constexpr int lastNumberOfSets = 255;

QCommandLineOption bbCodeOption()
{
    return {QStringLiteral("bbcode"),
            QStringLiteral("Take a BBCode text, as wide as the line; - is standard input."),
            QStringLiteral("FILE")};
}

QCommandLineOption documentOption()
{
    return {QStringLiteral("document"),
            QStringLiteral("Take a saved document; see \"receipt document\"."),
            QStringLiteral("FILE")};
}

QCommandLineOption plainOption()
{
    return {QStringLiteral("plain"),
            QStringLiteral("Take a text that has markup but no attributes; - is standard input."),
            QStringLiteral("FILE")};
}

QCommandLineOption imagesOfTextOption()
{
    return imagesOption(QStringLiteral("that of the text"));
}

QCommandLineOption asPictureOption()
{
    return {QStringLiteral("as-picture"),
            QStringLiteral("Print all text as dots, with letters of the driver's own.")};
}

/// The files of exactly one source. Complains and gives none if there are more or none.
QStringList sourceFilesOf(const QCommandLineParser &parser)
{
    const QStringList positional = parser.positionalArguments();
    QStringList named;
    for (const QCommandLineOption &option : {bbCodeOption(), documentOption(), plainOption()})
        named += parser.values(option);
    const bool isOne =
        positional.isEmpty() ? named.size() == 1 : named.isEmpty() && positional.size() == 2;
    if (isOne)
        return positional + named;
    const bool hasValues = parser.isSet(bbCodeOption()) && positional.size() == 1;
    complain(hasValues ? QStringLiteral("a text in BBCode is taken as it stands; \"receipt fill\" "
                                        "puts the values of a document in")
                       : QStringLiteral("a template and a document are expected, or one of "
                                        "--bbcode, --document and --plain"));
    return {};
}

/// Complains and gives false if --images names no folder, or has nothing to find there.
bool isImageFolder(const QCommandLineParser &parser, bool isBbCode)
{
    if (!isFolder(parser, imagesOfTextOption()))
        return false;
    const bool isUsed = isBbCode || !parser.isSet(imagesOfTextOption());
    if (!isUsed)
        complain(QStringLiteral("--images needs --bbcode"));
    return isUsed;
}

/// Whether two names are of sets that show the same.
bool isSameSet(const CodePage &one, const QString &name)
{
    const auto other = CodePage::forName(name);
    if (!other)
        return false;
    for (int byte = 0; byte <= lastNumberOfSets; ++byte) {
        const auto value = static_cast<unsigned char>(byte);
        if (one.character(value) != other->character(value))
            return false;
    }
    return true;
}

/// What --code-page names.
struct CharacterSet
{
    std::optional<int> number;  ///< on the model; nothing: it lacks the set
    bool isAny = false;         ///< whether some model may have it
};

CharacterSet characterSetOf(const QString &name, const QMap<int, QString> &known)
{
    bool isNumber = false;
    const int number = name.toInt(&isNumber);
    if (isNumber) {
        const bool isKnown = number == 0 || known.contains(number);
        return {isKnown ? std::optional<int>(number) : std::nullopt,
                number >= 0 && number <= lastNumberOfSets};
    }
    const auto set = CodePage::forName(name);
    if (!set)
        return {};
    for (auto page = known.begin(); page != known.end(); ++page) {
        if (isSameSet(*set, *page))
            return {page.key(), true};
    }
    return {std::nullopt, true};
}

void complainOfEncoding(const QString &name)
{
    complain(QStringLiteral("--code-page: there is no encoding \"%1\"").arg(name));
}

PrintOptions optionsWith(const QCommandLineParser &parser, int codePage, PrintOptions options = {})
{
    options.codePage = codePage;
    options.isPicture = options.isPicture || parser.isSet(asPictureOption());
    return options;
}

}  // namespace

QList<QCommandLineOption> sourceOptions()
{
    return {bbCodeOption(),  documentOption(),     plainOption(), marginOption(),
            symbolsOption(), imagesOfTextOption(), cleanOption(), dataSchemaOption(),
            codecOption(),   languageOption()};
}

std::optional<ChosenSource> sourceOf(const QCommandLineParser &parser, bool isFiscal)
{
    const QTextCodec *codec = codecOf(parser);
    if (codec == nullptr)
        return std::nullopt;
    const QStringList files = sourceFilesOf(parser);
    if (files.isEmpty())
        return std::nullopt;
    const QString &file = files.constFirst();
    const bool isBbCode = parser.isSet(bbCodeOption());
    const bool isDocument = parser.isSet(documentOption());
    const bool isTemplate = !parser.positionalArguments().isEmpty();
    if (isFiscal && !isTemplate) {
        complain(QStringLiteral("--fiscal needs a template and a document"));
        return std::nullopt;
    }
    const bool hasSymbols = isFolder(parser, symbolsOption());
    const bool hasImages = isImageFolder(parser, isBbCode);
    const auto margin = marginOf(parser, !isBbCode && !isDocument);
    const auto rules = cleaningRulesOf(parser, isTemplate);
    if (!hasSymbols || !hasImages || !margin || !rules || !useDataSchema(parser, isTemplate) ||
        !readsInputOnce(files) || !useLanguage(parser))
        return std::nullopt;
    const QString symbols = folderOf(parser, symbolsOption(), file);
    useSymbolFolder(symbols);
    if (isBbCode)
        return ChosenSource{bbCodeSource(file, folderOf(parser, imagesOfTextOption(), file)),
                            files};
    if (isDocument)
        return ChosenSource{documentSource(file), files};
    if (!isTemplate)
        return ChosenSource{plainSource(file, *codec, *margin), files};
    return ChosenSource{
        templateSource(file, files.at(1), *codec, *rules, symbols, *margin, isFiscal),
        files + dataSchemaFiles()};
}

PrintTarget targetOf(const PrinterInfo &model, const ChosenPaper &paper)
{
    const auto profile = paper.models.profile(model.id());
    return PrintTarget(profile.value_or(PrinterProfile()), model, paper.paper, paper.font);
}

QCommandLineOption characterSetOption()
{
    return {QStringLiteral("code-page"),
            QStringLiteral("The printer's character set that text begins with and raw codes from "
                           "128 show: its name, such as cp866, or the number that the printer has "
                           "for it; default, and 0: the model's own."),
            QStringLiteral("SET"), QStringLiteral("0")};
}

QList<QCommandLineOption> printOptions()
{
    return {characterSetOption(), asPictureOption()};
}

std::optional<PrintOptions> printOptionsOf(const QCommandLineParser &parser,
                                           const PrinterProfile &profile,
                                           const PrintOptions &otherwise)
{
    if (!parser.isSet(characterSetOption()))
        return optionsWith(parser, otherwise.codePage, otherwise);
    const QString name = parser.value(characterSetOption());
    const CharacterSet set = characterSetOf(name, profile.codePages());
    if (set.number)
        return optionsWith(parser, *set.number, otherwise);
    if (set.isAny)
        complainOfCharacterSet(QStringLiteral("--code-page"), name, profile.codePages());
    else
        complainOfEncoding(name);
    return std::nullopt;
}

std::optional<PrintOptions> printOptionsOfEach(const QCommandLineParser &parser,
                                               const PrinterProfile &profile)
{
    const QString name = parser.value(characterSetOption());
    const CharacterSet set = characterSetOf(name, profile.codePages());
    if (set.isAny)
        return optionsWith(parser, set.number.value_or(0));
    complainOfEncoding(name);
    return std::nullopt;
}

std::optional<int> pinOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    constexpr int first = 2;
    constexpr int second = 5;
    const auto pin = numberOf(parser, option, first, second);
    if (!pin || *pin == first || *pin == second)
        return pin;
    complain(QStringLiteral("--%1: \"%2\" is none of 2, 5")
                 .arg(option.names().constFirst(), QString::number(*pin)));
    return std::nullopt;
}

void complainOfCharacterSet(const QString &place, const QString &set,
                            const QMap<int, QString> &known)
{
    QStringList sets;
    for (auto page = known.begin(); page != known.end(); ++page)
        sets.append(QStringLiteral("%1 (%2)").arg(page.key()).arg(*page));
    complain(QStringLiteral("%1: the model has no character set %2; it has: %3")
                 .arg(place, set, sets.join(QStringLiteral(", "))));
}

}  // namespace tool
