#include "selftestplan.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace tool {

using printerslib::drivers::CutCommand;
using printerslib::drivers::Dialect;
using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrintTarget;
using printerslib::drivers::RasterCommand;

namespace {

/// What printers of a dialect may have.
struct DialectRow
{
    Dialect dialect;
    QStringList rasters;
    QStringList cuts;
    bool drawsCodes;
    bool opensDrawers;
};

const DialectRow &dialectRowOf(Dialect dialect)
{
    static const DialectRow rows[] = {
        {Dialect::EscPos,
         {QStringLiteral("RasterBlock"), QStringLiteral("BitImage")},
         {QStringLiteral("GsV"), QStringLiteral("EscI"), QStringLiteral("GsVPartial")},
         true,
         true},
        {Dialect::StarLine, {QStringLiteral("StarRows")}, {QStringLiteral("StarEscD")}, true, true},
        {Dialect::Swecoin,
         {QStringLiteral("SwecoinRows")},
         {QStringLiteral("SwecoinEscRs")},
         false,
         false},
    };
    return *std::find_if(std::begin(rows), std::end(rows),
                         [dialect](const DialectRow &row) { return row.dialect == dialect; });
}

const QString codesKey = QStringLiteral("drawnCodes");

/// Those of the model, and those that a general printer draws.
QStringList codesOf(const PrinterProfile &profile)
{
    QStringList codes = profile.toJson().value(codesKey).toObject().keys();
    if (dialectRowOf(profile.dialect()).drawsCodes)
        codes += PrinterProfile().toJson().value(codesKey).toObject().keys();
    codes.sort();
    codes.removeDuplicates();
    return codes;
}

struct PartRow
{
    const char *name;
    void (*leaveOut)(SelfTestPlan &plan);
};

constexpr PartRow partRows[] = {
    {"ruler", [](SelfTestPlan &plan) { plan.hasRuler = plan.hasRow = false; }},
    {"fonts", [](SelfTestPlan &plan) { plan.fonts.clear(); }},
    {"formats", [](SelfTestPlan &plan) { plan.hasFormats = false; }},
    {"pages", [](SelfTestPlan &plan) { plan.pages.clear(); }},
    {"pictures", [](SelfTestPlan &plan) { plan.rasters.clear(); }},
    {"codes", [](SelfTestPlan &plan) { plan.codes.clear(); }},
    {"cuts",
     [](SelfTestPlan &plan) {
         plan.cuts.clear();
         plan.hasLadder = false;
     }},
};

}  // namespace

SelfTestPlan::SelfTestPlan(const PrinterModels &knownModels, const PrintTarget &printTarget,
                           int paper)
    : models(knownModels),
      target(printTarget),
      paperId(paper),
      pages(printTarget.profile().codePages()),
      rasters(dialectRowOf(profile().dialect()).rasters),
      codes(codesOf(profile())),
      cuts(dialectRowOf(profile().dialect()).cuts)
{
    const bool hasRaster = profile().rasterCommand() != RasterCommand::None;
    const bool hasCutter = profile().cutCommand() != CutCommand::None;
    hasRuler = hasRaster;
    hasDrawings = hasRaster;
    hasLadder = hasRaster && hasCutter;
    for (int font = 0; font < profile().fontCells().size(); ++font)
        fonts.append(font);
    const QString raster = fact(QStringLiteral("rasterCommand")).toString();
    if (rasters.removeAll(raster) > 0)
        rasters.prepend(raster);
    const QString cut = fact(QStringLiteral("cutCommand")).toString();
    if (!hasCutter)
        cuts.clear();
    if (cuts.removeAll(cut) > 0)
        cuts.append(cut);
}

PrintTarget SelfTestPlan::with(const QJsonObject &facts, int lineDots) const
{
    QJsonObject record = facts;
    record.insert(QStringLiteral("id"), profile().modelId());
    PrinterModels changed = models;
    const QStringList faults =
        changed.add(QJsonDocument(QJsonArray{record}).toJson(), QStringLiteral("self test"));
    Q_ASSERT(faults.isEmpty());
    PrinterInfo catalogue = target.record();
    // The catalogue's fonts choose among the printer's by their size; without them its own counts.
    if (facts.contains(QStringLiteral("initialFont")))
        catalogue.setFontTypes({});
    if (lineDots > 0) {
        PaperInfo paper = catalogue.paperType(paperId);
        paper.setPointsToLine(lineDots);
        catalogue.setPaperTypes({{paperId, paper}});
    }
    return PrintTarget(changed.profile(profile().modelId()).value_or(profile()), catalogue,
                       paperId);
}

int SelfTestPlan::ladderDots() const
{
    constexpr int least = 320;
    constexpr int most = 1024;
    const int wanted = 2 * profile().dotsToCutter();
    return std::clamp((wanted + numberStep - 1) / numberStep * numberStep, least, most);
}

QJsonValue SelfTestPlan::drawnCode(const QString &code) const
{
    const QJsonObject own = fact(codesKey).toObject();
    return own.contains(code) ? own.value(code)
                              : PrinterProfile().toJson().value(codesKey).toObject().value(code);
}

bool SelfTestPlan::opensDrawers() const
{
    return dialectRowOf(profile().dialect()).opensDrawers;
}

QStringList SelfTestPlan::partNames()
{
    QStringList names;
    for (const PartRow &row : partRows)
        names.append(QLatin1String(row.name));
    return names;
}

void SelfTestPlan::choosePages(const QVector<int> &numbers)
{
    const QMap<int, QString> known = profile().codePages();
    pages.clear();
    for (const int number : numbers)
        pages.insert(number, known.value(number));
}

void SelfTestPlan::keepOnly(const QStringList &parts)
{
    for (const PartRow &row : partRows) {
        if (!parts.contains(QLatin1String(row.name)))
            row.leaveOut(*this);
    }
}

}  // namespace tool
