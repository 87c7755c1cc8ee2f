#include "printerslib/drivers/printtarget.h"

#include <QRegularExpression>
#include <algorithm>

#include "printerdocs/echarformat.h"
#include "printerdocs/eprinterticketaction.h"

namespace printerslib::drivers {

namespace {

/// A bit of ECharFormat, and whether a model's record has it.
struct FormatRow
{
    ECharFormat format;
    bool (PrinterInfo::*isPrinted)() const;
};

constexpr FormatRow formatRows[] = {
    {CharBold, &PrinterInfo::bold},
    {CharItalic, &PrinterInfo::italic},
    {CharMarkZ, &PrinterInfo::inversion},
    {CharUnderline, &PrinterInfo::underline},
    {CharDoubleWidth, &PrinterInfo::doubleWidth},
    {CharDoubleHeight, &PrinterInfo::doubleHeight},
};

// A record without a sensible line still prints something.
constexpr int leastLine = 16;

int dotsOf(QSize cell)
{
    return cell.width() * cell.height();
}

/// Of the printer's fonts, once or doubled, the one that has the catalogue's cell; else the
/// largest that fits it; else the smallest.
PrintFont fontFor(QSize wanted, const QVector<QSize> &cells)
{
    PrintFont best;
    best.cell = cells.constFirst();
    for (int number = 0; number < cells.size(); ++number) {
        for (const quint8 scale : {quint8(1), quint8(2)}) {
            const QSize cell = cells.at(number) * scale;
            const bool fits = cell.expandedTo(wanted) == wanted;
            const bool bestFits = best.cell.expandedTo(wanted) == wanted;
            const bool isBetter = fits ? !bestFits || dotsOf(cell) > dotsOf(best.cell)
                                       : !bestFits && dotsOf(cell) < dotsOf(best.cell);
            if (isBetter)
                best = {number, scale, scale, cell, {}};
        }
    }
    return best;
}

QSize ownCharacterOf(const FontInfo &font, const PrinterProfile &profile, const PrintFont &printed)
{
    if (profile.ownCharacters() == 0 || !font.customSymbols())
        return {};
    const QSize dots(font.customWidth(), font.customHeight());
    const QSize cell(printed.cell.width() / printed.widthScale,
                     printed.cell.height() / printed.heightScale);
    return dots.isEmpty() ? cell : dots.boundedTo(cell);
}

std::optional<PrintTarget> targetOf(const std::optional<PrinterProfile> &profile, int paperId,
                                    int baseFont)
{
    const QString id = profile ? profile->catalogueId() : QString();
    const QList<PrinterInfo> records = PrinterInfo::fromResources();
    const auto record =
        std::find_if(records.begin(), records.end(), [&id](const auto &r) { return r.id() == id; });
    if (!profile || record == records.end())
        return std::nullopt;
    return PrintTarget(*profile, *record, paperId, baseFont);
}

}  // namespace

std::optional<PrintTarget> PrintTarget::forModel(const QString &modelId, int paperId, int baseFont)
{
    return targetOf(PrinterProfile::forModel(modelId), paperId, baseFont);
}

std::optional<PrintTarget> PrintTarget::forModel(const PrinterModels &models,
                                                 const QString &modelId, int paperId, int baseFont)
{
    return targetOf(models.profile(modelId), paperId, baseFont);
}

PrintTarget::PrintTarget(const PrinterProfile &profile, const PrinterInfo &record, int paperId,
                         int baseFont)
    : m_profile(profile), m_record(record), m_paper(record.paperType(paperId))
{
    const QVector<QSize> cells = profile.fontCells();
    const QList<FontInfo> fonts = record.fontTypes();
    PrintFont base;
    base.cell = cells.value(profile.initialFont());
    base.number = profile.initialFont();
    m_fonts.append(base);
    for (const FontInfo &font : fonts) {
        if (font.id() < 0)
            continue;
        PrintFont printed = fontFor({font.width(), font.height()}, cells);
        printed.ownCharacter = ownCharacterOf(font, profile, printed);
        const int number = static_cast<unsigned char>(font.id());
        m_fonts.resize(std::max(m_fonts.size(), number + 1));
        m_fonts[number] = printed;
    }
    if (baseFont > 0 && baseFont < m_fonts.size() && !m_fonts.at(baseFont).cell.isEmpty())
        m_fonts[0] = m_fonts.at(baseFont);
    // Numbers between those of the record.
    for (PrintFont &font : m_fonts) {
        if (font.cell.isEmpty())
            font = m_fonts.constFirst();
    }
    m_lineDots = std::min(profile.headDots(), std::max(m_paper.pointsToLine(), leastLine));
    for (const FormatRow &row : formatRows) {
        if ((record.*row.isPrinted)())
            m_printedFormats |= row.format;
    }
}

int PrintTarget::paperDots() const
{
    constexpr double millimetresPerInch = 25.4;
    constexpr double mostMillimetres = 1000;
    const double millimetres = qBound(0.0, millimetresOf(m_paper), mostMillimetres);
    return std::max(m_lineDots, qRound(millimetres / millimetresPerInch * m_profile.dotsPerInch()));
}

double PrintTarget::millimetresOf(const PaperInfo &paper)
{
    static const QRegularExpression number(QStringLiteral("\\d+(\\.\\d+)?"));
    const QRegularExpressionMatch match = number.match(paper.caption());
    return match.hasMatch() ? match.captured().toDouble() : paper.width();
}

bool PrintTarget::wantsCut(int action) const
{
    const int handsOver = m_profile.presenter() != Presenter::None ? TicketActionBbCodeDocument : 0;
    return (action & (TicketActionEveryDocument | TicketActionReceipt | handsOver)) != 0;
}

}  // namespace printerslib::drivers
