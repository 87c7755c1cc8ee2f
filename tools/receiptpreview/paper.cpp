#include "paper.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QtMath>
#include <algorithm>

namespace receiptpreview {

namespace {

constexpr int usualDotsPerInch = 203;
// A record without a sensible font or line still gives a picture.
constexpr int leastCell = 1;
constexpr int usualCellWidth = 12;
constexpr int usualCellHeight = 24;
constexpr int leastLine = 16;
constexpr int mostDots = 10000;

double millimetresOf(const PaperInfo &paper)
{
    static const QRegularExpression number(QStringLiteral("\\d+(\\.\\d+)?"));
    const QRegularExpressionMatch match = number.match(paper.caption());
    return match.hasMatch() ? match.captured().toDouble() : paper.width();
}

FontInfo usable(FontInfo font)
{
    if (font.width() < leastCell)
        font.setWidth(usualCellWidth);
    if (font.height() < leastCell)
        font.setHeight(usualCellHeight);
    return font;
}

}  // namespace

std::optional<PrinterInfo> catalogueModel(const QString &id)
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    const auto model = std::find_if(models.begin(), models.end(),
                                    [&id](const PrinterInfo &info) { return info.id() == id; });
    return model == models.end() ? std::nullopt : std::optional<PrinterInfo>(*model);
}

int widestPaperOf(const PrinterInfo &model)
{
    const QMap<int, PaperInfo> papers = model.paperTypes();
    const auto isNarrower = [](const PaperInfo &one, const PaperInfo &other) {
        return one.pointsToLine() < other.pointsToLine();
    };
    const auto widest = std::max_element(papers.begin(), papers.end(), isNarrower);
    return widest == papers.end() ? 0 : widest.key();
}

Paper::Paper(const PrinterInfo &model, int paperId, int baseFont, const QTextCodec *codePage)
    : m_model(model),
      m_info(model.paperType(paperId)),
      m_baseFont(usable(FontInfo())),
      m_codePage(codePage != nullptr ? codePage : QTextCodec::codecForName("IBM866")),
      m_dotsPerInch(model.resolution() > 0 ? model.resolution() : usualDotsPerInch)
{
    const QList<FontInfo> fonts = model.fontTypes();
    for (const FontInfo &font : fonts)
        m_fonts.append(usable(font));
    if (!m_fonts.isEmpty())
        m_baseFont = m_fonts.constFirst();
    for (const FontInfo &font : qAsConst(m_fonts)) {
        if (font.id() == baseFont)
            m_baseFont = font;
    }
    setLine(m_info.pointsToLine());
}

void Paper::setLine(int dots)
{
    const int paperDots = qRound(millimetresOf(m_info) / millimetresPerInch * m_dotsPerInch);
    m_printableWidth = qBound(leastLine, dots, mostDots);
    m_width = qBound(m_printableWidth, paperDots, 2 * mostDots);
}

Paper Paper::withLine(int dots, int dotsPerInch) const
{
    Paper paper = *this;
    paper.m_dotsPerInch = dotsPerInch > 0 ? dotsPerInch : usualDotsPerInch;
    paper.setLine(dots);
    return paper;
}

const FontInfo &Paper::font(unsigned char number) const
{
    for (const FontInfo &font : m_fonts) {
        if (number != 0 && static_cast<unsigned char>(font.id()) == number)
            return font;
    }
    return m_baseFont;
}

}  // namespace receiptpreview
