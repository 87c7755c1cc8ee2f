// Puts what the driver knows of each model into a page as tables.
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QStringList>
#include <cstdio>

#include "commandsets/tables/pagetables_p.h"
#include "printerslib/drivers/printerprofile.h"

using namespace printerslib::drivers;
using pagetables::code;

namespace {

/// A column of a table, and what stands there of a model.
struct ModelColumn
{
    const char *head;
    QString (*cell)(const QJsonObject &facts);
};

QString textOf(const QJsonObject &facts, const char *key)
{
    return facts.value(QLatin1String(key)).toVariant().toString();
}

/// A number, or a word where it is 0.
QString numberOr(const QJsonObject &facts, const char *key, const char *zero)
{
    const int number = facts.value(QLatin1String(key)).toInt();
    return number == 0 ? QString::fromLatin1(zero) : QString::number(number);
}

QString sizeText(const QJsonValue &pair)
{
    return QStringLiteral("%1 x %2")
        .arg(pair.toArray().at(0).toInt())
        .arg(pair.toArray().at(1).toInt());
}

QString modelCell(const QJsonObject &facts)
{
    return code(textOf(facts, "id"));
}

QString commandsCell(const QJsonObject &facts)
{
    const QString vendor = textOf(facts, "vendor");
    const bool isNamed = vendor != QLatin1String("General");
    return textOf(facts, "dialect") + (isNamed ? QStringLiteral(", ") + vendor : QString());
}

QString headCell(const QJsonObject &facts)
{
    return QStringLiteral("%1 at %2").arg(textOf(facts, "headDots"), textOf(facts, "dotsPerInch"));
}

QString unitsCell(const QJsonObject &facts)
{
    return sizeText(facts.value(QLatin1String("motionUnits")));
}

QString fontsCell(const QJsonObject &facts)
{
    QStringList cells;
    const QJsonArray fonts = facts.value(QLatin1String("fonts")).toArray();
    for (const QJsonValue &font : fonts)
        cells.append(sizeText(font));
    return cells.join(QStringLiteral(", "));
}

QString codesCell(const QJsonObject &facts)
{
    const QJsonObject codes = facts.value(QLatin1String("drawnCodes")).toObject();
    if (codes.isEmpty())
        return QStringLiteral("none");
    return QStringLiteral("%1; modules of %2 to %3 dots")
        .arg(codes.keys().join(QStringLiteral(", ")), textOf(facts, "leastModule"),
             textOf(facts, "mostModule"));
}

QString cutterCell(const QJsonObject &facts)
{
    return QStringLiteral("%1, %2 dots behind the head")
        .arg(textOf(facts, "cutCommand"), textOf(facts, "dotsToCutter"));
}

QString presenterCell(const QJsonObject &facts)
{
    const int step = facts.value(QLatin1String("presenterTimerStep")).toInt();
    const QString timer =
        step == 0 ? QString() : QStringLiteral(", a timer of %1 s a step").arg(step / 1000.0);
    return textOf(facts, "presenter") + timer;
}

QString pagesCell(const QJsonObject &facts)
{
    const QJsonObject pages = facts.value(QLatin1String("codePages")).toObject();
    QMap<int, QString> numbers;
    for (auto it = pages.begin(); it != pages.end(); ++it)
        numbers.insert(it.key().toInt(), it.value().toString());
    QStringList texts;
    for (auto it = numbers.begin(); it != numbers.end(); ++it)
        texts.append(QStringLiteral("%1 %2").arg(QString::number(it.key()), it.value()));
    return texts.join(QStringLiteral(", "));
}

constexpr ModelColumn printingColumns[] = {
    {"Model", &modelCell},
    {"Commands", &commandsCell},
    {"Head: dots, per inch", &headCell},
    {"Units per inch", &unitsCell},
    {"Fonts", &fontsCell},
    {"Line", [](const QJsonObject &facts) { return textOf(facts, "lineSpacing"); }},
    {"Pictures", [](const QJsonObject &facts) { return textOf(facts, "rasterCommand"); }},
    {"Own characters",
     [](const QJsonObject &facts) { return numberOr(facts, "ownCharacters", "none"); }},
    {"Codes that it draws", &codesCell},
};

constexpr ModelColumn handlingColumns[] = {
    {"Model", &modelCell},
    {"Cutter", &cutterCell},
    {"Presenter", &presenterCell},
    {"Drawers", [](const QJsonObject &facts) { return numberOr(facts, "drawers", "none"); }},
    {"Handshake", [](const QJsonObject &facts) { return textOf(facts, "handshake"); }},
    {"Buffer, bytes",
     [](const QJsonObject &facts) { return numberOr(facts, "bufferBytes", "unknown"); }},
    {"Confirms", [](const QJsonObject &facts) { return textOf(facts, "confirmation"); }},
    {"Note", [](const QJsonObject &facts) { return textOf(facts, "note"); }},
};

constexpr ModelColumn pageColumns[] = {
    {"Model", &modelCell},
    {"Character sets by their numbers", &pagesCell},
};

template <std::size_t size>
QString tableOf(const ModelColumn (&columns)[size])
{
    QStringList heads;
    for (const ModelColumn &column : columns)
        heads.append(QLatin1String(column.head));
    QString table = pagetables::headOf(heads);
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids) {
        const QJsonObject facts = PrinterProfile::forModel(id)->toJson();
        QStringList cells;
        for (const ModelColumn &column : columns)
            cells.append(column.cell(facts));
        table += pagetables::rowOf(cells);
    }
    return table;
}

/// A row for each source of each model, with the facts that are from there.
QString sourcesTable()
{
    QString table = pagetables::headOf(
        {QStringLiteral("Model"), QStringLiteral("Facts"), QStringLiteral("From")});
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids) {
        const QJsonObject facts = PrinterProfile::forModel(id)->toJson();
        const QJsonObject sources = facts.value(QLatin1String("sources")).toObject();
        QMap<QString, QStringList> factsBySource;
        for (auto it = sources.begin(); it != sources.end(); ++it)
            factsBySource[it.value().toString()].append(code(it.key()));
        for (auto it = factsBySource.begin(); it != factsBySource.end(); ++it)
            table += pagetables::rowOf({code(id), it->join(QStringLiteral(", ")), it.key()});
    }
    return table;
}

/// The keys that the page has no row for.
QStringList missingKeys(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return {};
    const QString page = QString::fromUtf8(file.readAll());
    const int end = page.indexOf(QLatin1String("<!-- models: "));
    QStringList missing;
    const QStringList keys = PrinterProfile().toJson().keys();
    for (const QString &key : keys) {
        if (!page.leftRef(end).contains(code(key)))
            missing.append(key);
    }
    return missing;
}

}  // namespace

int main(int argumentCount, char *arguments[])
{
    const int status =
        pagetables::refresh(argumentCount, arguments, "model-tables",
                            {{QStringLiteral("models: printing"), tableOf(printingColumns)},
                             {QStringLiteral("models: handling"), tableOf(handlingColumns)},
                             {QStringLiteral("models: code pages"), tableOf(pageColumns)},
                             {QStringLiteral("models: sources"), sourcesTable()}});
    if (status != 0)
        return status;
    const QStringList missing = missingKeys(QString::fromLocal8Bit(arguments[argumentCount - 1]));
    for (const QString &key : missing)
        std::fprintf(stderr, "model-tables: the page doesn't tell of \"%s\"\n", qPrintable(key));
    return missing.isEmpty() ? 0 : 1;
}
