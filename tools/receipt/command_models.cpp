#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "commands.h"
#include "forms.h"
#include "printermodel.h"
#include "support.h"

namespace {

QString cell(const QString &text, int width)
{
    return text.leftJustified(width);
}

/// Characters per line of each font on one paper.
QVariantList charactersByFont(const PrinterInfo &model, int paper)
{
    QVariantList numbers;
    for (int font = 0; font < model.fontTypes().size(); ++font)
        numbers.append(tool::charactersPerLine(model, paper, font));
    return numbers;
}

QString charactersPerLine(const PrinterInfo &model, int paper)
{
    return QVariant(charactersByFont(model, paper)).toStringList().join(QLatin1Char(' '));
}

/// One line for each paper of each model.
void printTable(const QList<PrinterInfo> &models)
{
    int idWidth = 2;
    int nameWidth = 4;
    for (const PrinterInfo &model : models) {
        idWidth = std::max(idWidth, model.id().size());
        nameWidth = std::max(nameWidth, model.name().size());
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
    for (const PrinterInfo &model : models) {
        const QMap<int, PaperInfo> papers = model.paperTypes();
        for (auto paper = papers.constBegin(); paper != papers.constEnd(); ++paper)
            printRow(model.id(), model.name(), paper->caption(),
                     charactersPerLine(model, paper.key()));
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

void printModel(const PrinterInfo &model)
{
    const QMap<QString, QVariant> fields = model.toMap();
    for (auto field = fields.constBegin(); field != fields.constEnd(); ++field) {
        if (field->userType() != QMetaType::QVariantMap)
            tool::print(QStringLiteral("%1: %2").arg(field.key(), field->toString()));
    }
    const QMap<int, PaperInfo> papers = model.paperTypes();
    for (auto paper = papers.constBegin(); paper != papers.constEnd(); ++paper)
        tool::print(QStringLiteral("paper %1: %2, %3 mm wide, %4, %5 dots; characters per line: %6")
                        .arg(paper.key())
                        .arg(paper->caption())
                        .arg(paper->width())
                        .arg(heightText(*paper))
                        .arg(paper->pointsToLine())
                        .arg(charactersPerLine(model, paper.key())));
    const QList<FontInfo> fonts = model.fontTypes();
    for (const FontInfo &font : fonts)
        tool::print(fontText(font));
}

void printJson(const QJsonDocument &json)
{
    tool::printContent(tool::linesOf(json.toJson()));
}

/// The model's map form, with the characters per line of each paper.
QJsonObject jsonOf(const PrinterInfo &model)
{
    const QString papersKey = QStringLiteral("paperTypes");
    QMap<QString, QVariant> fields = model.toMap();
    QMap<QString, QVariant> papers = fields.value(papersKey).toMap();
    for (auto paper = papers.begin(); paper != papers.end(); ++paper) {
        QMap<QString, QVariant> map = paper->toMap();
        map.insert(QStringLiteral("charactersPerLine"),
                   charactersByFont(model, paper.key().toInt()));
        *paper = map;
    }
    fields.insert(papersKey, papers);
    return QJsonObject::fromVariantMap(fields);
}

int showModel(const QString &id, bool asJson)
{
    const auto model = tool::findModel(id);
    if (!model)
        return tool::BadInput;
    if (asJson)
        printJson(QJsonDocument(jsonOf(*model)));
    else
        printModel(*model);
    return tool::Success;
}

int showModels(bool asJson)
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    if (!asJson) {
        printTable(models);
        return tool::Success;
    }
    QJsonArray array;
    for (const PrinterInfo &model : models)
        array.append(jsonOf(model));
    printJson(QJsonDocument(array));
    return tool::Success;
}

}  // namespace

int runModels(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists the known text printers, or tells everything about one."));
    parser.addPositionalArgument(QStringLiteral("ID"), QStringLiteral("Identifier of one model."),
                                 QStringLiteral("[ID]"));
    const QCommandLineOption json = tool::jsonOption();
    parser.addOption(json);
    if (const auto status = tool::parse(parser, QStringLiteral("models"), arguments, 0, 1))
        return *status;
    const QStringList ids = parser.positionalArguments();
    return tool::finished(ids.isEmpty() ? showModels(parser.isSet(json))
                                        : showModel(ids.constFirst(), parser.isSet(json)));
}
