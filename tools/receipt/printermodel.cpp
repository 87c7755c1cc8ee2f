#include "printermodel.h"

#include <QFileInfo>

#include "paper.h"
#include "settings/textprintersettings.h"
#include "support.h"

namespace tool {

using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrinterProfile;

namespace {

// The numbers that some model may have.
constexpr int lastPaperOfAny = 127;
constexpr int lastFontOfAny = 3;

QCommandLineOption paperOption(const QString &byDefault = QStringLiteral("0"),
                               const QString &value = QStringLiteral("0"))
{
    return {QStringLiteral("paper"),
            QStringLiteral("The model's paper type, from 0; default: %1.").arg(byDefault),
            QStringLiteral("N"), value};
}

QCommandLineOption fontOption(const QString &byDefault = QStringLiteral("0"),
                              const QString &value = QStringLiteral("0"))
{
    return {QStringLiteral("font"),
            QStringLiteral("The model's font, from 0, of text that chooses none (or font 0, which "
                           "is the same); default: %1.")
                .arg(byDefault),
            QStringLiteral("N"), value};
}

/// What --paper and --font say up to these numbers; what isn't given is as there.
std::optional<ChosenPaper> paperUpTo(const QCommandLineParser &parser, const ChosenPaper &otherwise,
                                     int lastPaper, int lastFont)
{
    const auto numberOr = [&parser](int number, const QCommandLineOption &option, int last) {
        return parser.isSet(option) ? numberOf(parser, option, 0, last)
                                    : std::make_optional(number);
    };
    const auto paper = numberOr(otherwise.paper, paperOption(), lastPaper);
    const auto font = numberOr(otherwise.font, fontOption(), lastFont);
    if (!paper || !font)
        return std::nullopt;
    return ChosenPaper{otherwise.models, otherwise.model, *paper, *font};
}

QCommandLineOption describedModelOption(const QString &described, const QString &value)
{
    return {QStringLiteral("model"),
            QStringLiteral("The printer, with its paper, fonts and characters; see \"receipt "
                           "models\"; default: %1.")
                .arg(described),
            QStringLiteral("ID"), value};
}

}  // namespace

QCommandLineOption modelsFileOption()
{
    return {
        QStringLiteral("models"),
        QStringLiteral("A file of further models and of other facts of known ones; may be given "
                       "several times. \"receipt models ID --json\" shows under \"driver\" what "
                       "a record holds."),
        QStringLiteral("FILE")};
}

std::optional<PrinterModels> modelsOf(const QCommandLineParser &parser)
{
    const QString option = QStringLiteral("models");
    QStringList faults;
    PrinterModels models;
    // The parser itself complains of a question for what a command hasn't.
    const QStringList files =
        parser.optionNames().contains(option) ? parser.values(option) : QStringList();
    bool isRead = true;
    for (const QString &file : files) {
        // Mistakes in the JSON are told here, as those of all other files. A pipe can be read once.
        if (QFileInfo(file).isFile() && !readJson(file))
            isRead = false;
        else
            faults += models.addFile(file);
    }
    for (const QString &fault : qAsConst(faults))
        complain(fault);
    return isRead && faults.isEmpty() ? std::make_optional(models) : std::nullopt;
}

PrinterInfo recordOf(const PrinterProfile &profile)
{
    PrinterInfo record =
        receiptpreview::catalogueModel(profile.catalogueId()).value_or(PrinterInfo());
    if (profile.modelId() == profile.catalogueId())
        return record;
    record.setId(profile.modelId());
    record.setName(QStringLiteral("like ") + record.name());
    return record;
}

std::optional<PrinterInfo> findModel(const PrinterModels &models, const QString &id)
{
    const auto profile = models.profile(id);
    if (profile)
        return recordOf(*profile);
    complain(QStringLiteral("there is no model \"%1\"; see \"receipt models\"").arg(id));
    return std::nullopt;
}

int charactersPerLine(const PrinterInfo &model, int paper, int font)
{
    TextPrinterSettings settings;
    settings.setPrinterId(model.id());
    settings.setPaperTypeId(paper);
    settings.setDefSymbolsPerLine(0);
    settings.setBaseFiscalFont(font + 1);
    return settings.defSymbolsPerLine();
}

QCommandLineOption modelOption(const QString &byDefault)
{
    return describedModelOption(byDefault.isEmpty() ? QStringLiteral("none") : byDefault,
                                byDefault);
}

QCommandLineOption neededModelOption()
{
    return describedModelOption(QStringLiteral("none, so it has to be given"), QString());
}

QList<QCommandLineOption> paperOptions(const QString &defaultModel)
{
    return {modelOption(defaultModel), paperOption(), fontOption()};
}

QList<QCommandLineOption> paperOptionsOr(const QString &otherwise, const QString &defaultModel)
{
    const QString text = QStringLiteral("%1, or %2");
    const QString model = defaultModel.isEmpty() ? otherwise : text.arg(otherwise, defaultModel);
    const QString number = text.arg(otherwise, QStringLiteral("0"));
    return {describedModelOption(model, QString()), paperOption(number, QString()),
            fontOption(number, QString())};
}

bool choosesPaper(const QCommandLineParser &parser)
{
    return parser.isSet(paperOption()) || parser.isSet(fontOption());
}

std::optional<ChosenPaper> paperOf(const QCommandLineParser &parser)
{
    const auto models = modelsOf(parser);
    const auto model = models ? findModel(*models, parser.value(modelOption())) : std::nullopt;
    if (!model)
        return std::nullopt;
    return paperOf(parser, {*models, model, 0, 0});
}

std::optional<ChosenPaper> paperOf(const QCommandLineParser &parser, const ChosenPaper &otherwise)
{
    return paperUpTo(parser, otherwise, otherwise.model->paperTypes().lastKey(),
                     otherwise.model->fontTypes().size() - 1);
}

std::optional<ChosenPaper> paperOfEveryModel(const QCommandLineParser &parser)
{
    const auto models = modelsOf(parser);
    if (!models)
        return std::nullopt;
    return paperUpTo(parser, {*models, std::nullopt, 0, 0}, lastPaperOfAny, lastFontOfAny);
}

QList<QCommandLineOption> printedPaperOptions()
{
    return {neededModelOption(), paperOption(QStringLiteral("the widest"), QString())};
}

std::optional<ChosenPaper> printedPaperOf(const QCommandLineParser &parser)
{
    const auto models = modelsOf(parser);
    const auto model = models ? findModel(*models, parser.value(modelOption())) : std::nullopt;
    if (!model)
        return std::nullopt;
    if (!parser.isSet(paperOption()))
        return ChosenPaper{*models, model, receiptpreview::widestPaperOf(*model), 0};
    const auto paper = numberOf(parser, paperOption(), 0, model->paperTypes().lastKey());
    if (!paper)
        return std::nullopt;
    return ChosenPaper{*models, model, *paper, 0};
}

QCommandLineOption codePageOption()
{
    return {
        QStringLiteral("code-page"),
        QStringLiteral("The printer's character set, such as cp437; default of a model: cp866."),
        QStringLiteral("NAME"), QStringLiteral("cp866")};
}

const QTextCodec *codePageOf(const QCommandLineParser &parser)
{
    return encodingOf(parser, codePageOption());
}

}  // namespace tool
