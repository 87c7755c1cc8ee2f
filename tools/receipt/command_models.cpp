#include <printerslib/drivers/printtarget.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "commands.h"
#include "forms.h"
#include "printermodel.h"
#include "support.h"

namespace {

using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrintTarget;

/// A model as the driver and as the catalogue know it.
struct ListedModel
{
    PrinterProfile profile;
    PrinterInfo record;

    explicit ListedModel(const PrinterProfile &facts)
        : profile(facts), record(tool::recordOf(facts))
    {}
};

/// In the order of the catalogue, and behind them those that files add.
QVector<ListedModel> allOf(const PrinterModels &models)
{
    QStringList ids;
    const QList<PrinterInfo> records = PrinterInfo::fromResources();
    for (const PrinterInfo &record : records)
        ids.append(record.id());
    const QStringList known = models.modelIds();
    for (const QString &id : known) {
        if (!ids.contains(id))
            ids.append(id);
    }
    QVector<ListedModel> all;
    for (const QString &id : qAsConst(ids)) {
        if (const auto profile = models.profile(id))
            all.append(ListedModel(*profile));
    }
    return all;
}

QString cell(const QString &text, int width)
{
    return text.leftJustified(width);
}

/// Characters per line of each font on one paper: as many as are printed side by side.
QVariantList charactersByFont(const ListedModel &model, int paper)
{
    const PrintTarget target(model.profile, model.record, paper);
    QVariantList numbers;
    for (int font = 0; font < model.record.fontTypes().size(); ++font)
        numbers.append(target.symbolsPerLine(static_cast<unsigned char>(font)));
    return numbers;
}

/// As many as the library's settings have, which go by the catalogue alone.
QVariantList charactersOfSettings(const ListedModel &model, int paper)
{
    PrinterInfo record = model.record;
    record.setId(model.profile.catalogueId());
    QVariantList numbers;
    for (int font = 0; font < record.fontTypes().size(); ++font)
        numbers.append(tool::charactersPerLine(record, paper, font));
    return numbers;
}

QString textOf(const QVariantList &numbers)
{
    return QVariant(numbers).toStringList().join(QLatin1Char(' '));
}

/// One line for each paper of each model.
void printTable(const QVector<ListedModel> &models)
{
    int idWidth = 2;
    int nameWidth = 4;
    for (const ListedModel &model : models) {
        idWidth = std::max(idWidth, model.record.id().size());
        nameWidth = std::max(nameWidth, model.record.name().size());
    }
    constexpr int paperWidth = 7;
    const auto printRow = [=](const QString &id, const QString &name, const QString &paper,
                              const QString &characters) {
        tool::print(QStringLiteral("%1  %2  %3  %4")
                        .arg(cell(id, idWidth), cell(name, nameWidth), cell(paper, paperWidth),
                             characters));
    };
    printRow(QStringLiteral("ID"), QStringLiteral("Name"), QStringLiteral("Paper"),
             QStringLiteral("Characters per line, by font"));
    for (const ListedModel &model : models) {
        const QMap<int, PaperInfo> papers = model.record.paperTypes();
        for (auto paper = papers.constBegin(); paper != papers.constEnd(); ++paper)
            printRow(model.record.id(), model.record.name(), paper->caption(),
                     textOf(charactersByFont(model, paper.key())));
    }
}

QString fontText(const FontInfo &font)
{
    QString text =
        QStringLiteral("font %1: %2 x %3 dots, %4 x %5 mm, %6")
            .arg(font.idAsString())
            .arg(font.width())
            .arg(font.height())
            .arg(font.mwidth())
            .arg(font.mheight())
            .arg(font.monospace() ? QStringLiteral("monospace") : QStringLiteral("not monospace"));
    if (!font.customSymbols())
        return text;
    return text + QStringLiteral(", own symbols of %1 x %2")
                      .arg(font.customWidth())
                      .arg(font.customHeight());
}

/// The catalogue's height of a paper that has no end is -1.
QString heightText(const PaperInfo &paper)
{
    return paper.height() < 0 ? QStringLiteral("endless (height %1)").arg(paper.height())
                              : QStringLiteral("%1 mm high").arg(paper.height());
}

QString paperText(const ListedModel &model, int number, const PaperInfo &paper)
{
    const QVariantList printed = charactersByFont(model, number);
    const QVariantList ofSettings = charactersOfSettings(model, number);
    QString text = QStringLiteral("paper %1: %2, %3 mm wide, %4, %5 dots; characters per line: %6")
                       .arg(number)
                       .arg(paper.caption())
                       .arg(paper.width())
                       .arg(heightText(paper))
                       .arg(paper.pointsToLine())
                       .arg(textOf(printed));
    if (printed != ofSettings)
        text += QStringLiteral(" (settings have %1)").arg(textOf(ofSettings));
    return text;
}

QString valueText(const QJsonValue &value)
{
    return value.isString() ? value.toString() : tool::jsonText(value);
}

/// What the driver knows, and from where.
void printFacts(const PrinterProfile &profile)
{
    QJsonObject facts = profile.toJson();
    facts.remove(QStringLiteral("id"));
    facts.remove(QStringLiteral("sources"));
    for (auto fact = facts.begin(); fact != facts.end(); ++fact) {
        if (fact->isString() && fact->toString().isEmpty())
            continue;
        const QString source = profile.sourceOf(fact.key());
        QString text = QStringLiteral("driver's %1: %2").arg(fact.key(), valueText(*fact));
        if (!source.isEmpty())
            text += QStringLiteral(" (%1)").arg(source);
        tool::print(text);
    }
}

void printModel(const ListedModel &model)
{
    const QMap<QString, QVariant> fields = model.record.toMap();
    for (auto field = fields.constBegin(); field != fields.constEnd(); ++field) {
        if (field->userType() != QMetaType::QVariantMap)
            tool::print(QStringLiteral("%1: %2").arg(field.key(), field->toString()));
    }
    const QMap<int, PaperInfo> papers = model.record.paperTypes();
    for (auto paper = papers.constBegin(); paper != papers.constEnd(); ++paper)
        tool::print(paperText(model, paper.key(), *paper));
    const QList<FontInfo> fonts = model.record.fontTypes();
    for (const FontInfo &font : fonts)
        tool::print(fontText(font));
    printFacts(model.profile);
}

void printJson(const QJsonDocument &json)
{
    tool::printContent(tool::linesOf(json.toJson()));
}

/// The model's map form, with the characters per line of each paper, and what the driver knows.
QJsonObject jsonOf(const ListedModel &model)
{
    const QString papersKey = QStringLiteral("paperTypes");
    QMap<QString, QVariant> fields = model.record.toMap();
    QMap<QString, QVariant> papers = fields.value(papersKey).toMap();
    for (auto paper = papers.begin(); paper != papers.end(); ++paper) {
        QMap<QString, QVariant> map = paper->toMap();
        map.insert(QStringLiteral("charactersPerLine"),
                   charactersByFont(model, paper.key().toInt()));
        *paper = map;
    }
    fields.insert(papersKey, papers);
    QJsonObject json = QJsonObject::fromVariantMap(fields);
    json.insert(QStringLiteral("driver"), model.profile.toJson());
    return json;
}

int showModel(const PrinterModels &models, const QString &id, bool asJson)
{
    if (!tool::findModel(models, id))
        return tool::BadInput;
    const ListedModel model(*models.profile(id));
    if (asJson)
        printJson(QJsonDocument(jsonOf(model)));
    else
        printModel(model);
    return tool::Success;
}

int showModels(const PrinterModels &models, bool asJson)
{
    const QVector<ListedModel> all = allOf(models);
    if (!asJson) {
        printTable(all);
        return tool::Success;
    }
    QJsonArray array;
    for (const ListedModel &model : all)
        array.append(jsonOf(model));
    printJson(QJsonDocument(array));
    return tool::Success;
}

}  // namespace

int runModels(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists the known text printers, or tells everything about one: the "
                       "catalogue's record, then\n"
                       "what the driver knows of it and from where. Characters per line are as "
                       "many as are printed\n"
                       "side by side: those of the paper, but no more than the head has."));
    parser.addPositionalArgument(QStringLiteral("ID"), QStringLiteral("Identifier of one model."),
                                 QStringLiteral("[ID]"));
    const QCommandLineOption json = tool::jsonOption();
    parser.addOptions({json, tool::modelsFileOption()});
    if (const auto status = tool::parse(parser, QStringLiteral("models"), arguments, 0, 1))
        return *status;
    const auto models = tool::modelsOf(parser);
    if (!models)
        return tool::BadInput;
    const QStringList ids = parser.positionalArguments();
    return ids.isEmpty() ? showModels(*models, parser.isSet(json))
                         : showModel(*models, ids.constFirst(), parser.isSet(json));
}
