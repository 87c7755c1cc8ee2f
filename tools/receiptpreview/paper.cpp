#include "paper.h"

#include <QtMath>
#include <algorithm>

namespace receiptpreview {

namespace {

constexpr int usualDotsPerInch = 203;
// A record without a sensible line still gives a picture.
constexpr int leastLine = 16;
constexpr int mostDots = 10000;

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

Paper::Paper(const printerslib::drivers::PrintTarget &target)
    : Paper(target.record(), target.paper())
{
    *this = withLine(target.lineDots(), target.profile().dotsPerInch());
}

Paper::Paper(const PrinterInfo &model, int paperId) : Paper(model, model.paperType(paperId)) {}

Paper::Paper(const PrinterInfo &model, const PaperInfo &info)
    : m_model(model),
      m_info(info),
      m_dotsPerInch(model.resolution() > 0 ? model.resolution() : usualDotsPerInch)
{
    setLine(m_info.pointsToLine());
}

void Paper::setLine(int dots)
{
    const int paperDots = qRound(printerslib::drivers::PrintTarget::millimetresOf(m_info) /
                                 millimetresPerInch * m_dotsPerInch);
    m_printableWidth = qBound(leastLine, dots, mostDots);
    m_width = qBound(m_printableWidth + 2 * leastMargin, paperDots, 2 * mostDots);
}

Paper Paper::withLine(int dots, int dotsPerInch) const
{
    Paper paper = *this;
    paper.m_dotsPerInch = dotsPerInch > 0 ? dotsPerInch : usualDotsPerInch;
    paper.setLine(dots);
    return paper;
}

}  // namespace receiptpreview
