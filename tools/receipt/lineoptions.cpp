#include "lineoptions.h"

#include "support.h"

namespace tool {

namespace {

QCommandLineOption lineWidthOption(const QString &value = QString())
{
    return widthOption(mostCharacters,
                       QStringLiteral("that of --model, or else %1")
                           .arg(value.isEmpty() ? QStringLiteral("none") : value),
                       value);
}

std::optional<ChosenLine> lineOfModel(const QCommandLineParser &parser)
{
    if (parser.isSet(lineWidthOption())) {
        complain(QStringLiteral("--width and --model exclude each other"));
        return std::nullopt;
    }
    const auto paper = paperOf(parser);
    if (!paper)
        return std::nullopt;
    return ChosenLine{std::nullopt, paper};
}

}  // namespace

QCommandLineOption widthOption(int most, const QString &byDefault, const QString &value)
{
    return {QStringLiteral("width"),
            QStringLiteral("Characters per line, 1 to %1; default: %2.").arg(most).arg(byDefault),
            QStringLiteral("N"), value};
}

QList<QCommandLineOption> lineOptions(const QString &defaultWidth)
{
    return paperOptions() + QList<QCommandLineOption>{lineWidthOption(defaultWidth)};
}

std::optional<ChosenLine> lineOf(const QCommandLineParser &parser)
{
    const QCommandLineOption width = lineWidthOption();
    if (parser.isSet(modelOption()))
        return lineOfModel(parser);
    if (choosesPaper(parser)) {
        complain(QStringLiteral("--paper and --font need --model"));
        return std::nullopt;
    }
    if (!parser.isSet(width) && parser.value(width).isEmpty())
        return ChosenLine{};
    const auto characters = numberOf(parser, width, 1, mostCharacters);
    if (!characters)
        return std::nullopt;
    return ChosenLine{characters, std::nullopt};
}

QCommandLineOption marginOption()
{
    return {
        QStringLiteral("margin"),
        QStringLiteral("Blanks in front of each line of a template or a plain text; default: 0."),
        QStringLiteral("N"), QStringLiteral("0")};
}

std::optional<int> marginOf(const QCommandLineParser &parser, bool hasLines)
{
    const auto margin = numberOf(parser, marginOption(), 0, mostCharacters);
    if (!margin || *margin == 0 || hasLines)
        return margin;
    complain(QStringLiteral("--margin needs a template or --plain"));
    return std::nullopt;
}

}  // namespace tool
