#include <algorithm>

#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

constexpr int mostTabs = 32;

void feedLine(Printer &printer, const StreamCommand & /*command*/)
{
    printer.printLine(1);
}

/// Printers are delivered so that CR does nothing, as LF comes with it.
void returnCarriage(Printer & /*printer*/, const StreamCommand & /*command*/) {}

/// What is on a page is cleared by all that have pages, a line by a few.
void cancelData(Printer &printer, const StreamCommand &command)
{
    const Vendor vendor = printer.profile.vendor();
    if (printer.isPageMode)
        printer.page.clearArea();
    if (printer.isPageMode || vendor == Vendor::Custom || vendor == Vendor::Swecoin)
        printer.dropLine(command);
}

void goToTab(Printer &printer, const StreamCommand & /*command*/)
{
    const QVector<int> &tabs = printer.state.tabs;
    const auto next = std::upper_bound(tabs.begin(), tabs.end(), printer.line.x);
    if (next != tabs.end())
        printer.line.moveTo(std::min(*next, printer.lineWidth()));
}

void setTabs(Printer &printer, const StreamCommand &command)
{
    QVector<int> &tabs = printer.state.tabs;
    tabs.clear();
    const QByteArray payload = command.payload();
    for (const char byte : payload) {
        const int columns = static_cast<unsigned char>(byte);
        if (columns == 0 || tabs.size() == mostTabs)
            break;
        const int place = columns * printer.columnWidth();
        if (!tabs.isEmpty() && place <= tabs.last())
            break;
        tabs.append(place);
    }
}

void goTo(Printer &printer, const StreamCommand &command)
{
    const int place = printer.dotsAcross(command.word(0));
    if (place > printer.lineWidth())
        printer.noteFor(command, QStringLiteral("goes to dot %1, behind the line's %2")
                                     .arg(place)
                                     .arg(printer.lineWidth()));
    else
        printer.line.moveTo(place);
}

/// The distance has a sign.
void goOn(Printer &printer, const StreamCommand &command)
{
    const int place = printer.line.x + printer.dotsAcross(static_cast<qint16>(command.word(0)));
    if (place < 0 || place > printer.lineWidth())
        printer.noteFor(command, QStringLiteral("leaves the line"));
    else
        printer.line.moveTo(place);
}

void setAlignment(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 3);
    if (choice < 0 || printer.state.alignment == choice)
        return;
    if (printer.isPageMode || printer.isAtLineStart(command))
        printer.state.alignment = choice;
}

/// A margin takes from the area what is beyond the paper.
void setArea(Printer &printer, int left, int width)
{
    printer.state.leftMargin = std::min(left, printer.paperDots);
    printer.state.areaWidth = std::min(width, printer.paperDots - printer.state.leftMargin);
}

void setLeftMargin(Printer &printer, const StreamCommand &command)
{
    if (!printer.isAtLineStart(command))
        return;
    const int right = printer.state.leftMargin + printer.state.areaWidth;
    const int left = printer.dotsAcross(command.word(0));
    const bool reachesEdge = right == printer.paperDots;
    setArea(printer, left, reachesEdge ? printer.paperDots : printer.state.areaWidth);
}

void setAreaWidth(Printer &printer, const StreamCommand &command)
{
    if (printer.isAtLineStart(command))
        setArea(printer, printer.state.leftMargin, printer.dotsAcross(command.word(0)));
}

/// GS T 0 drops what stands in the line, 1 prints it.
void goToLineStart(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 2);
    if (choice == 1 && !printer.line.isEmpty())
        printer.printLine(1);
    else if (choice >= 0)
        printer.dropLine(command);
}

void setDefaultLineSpacing(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.lineSpacing = printer.profile.lineSpacing();
}

void setLineSpacing(Printer &printer, const StreamCommand &command)
{
    const int units = printer.profile.lineSpacingUnitsPerInch();
    const int n = command.operand(0);
    printer.state.lineSpacing =
        units > 0 ? qRound(double(n) * printer.profile.dotsPerInch() / units) : printer.dotsDown(n);
}

void setEighthLineSpacing(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.lineSpacing = qRound(printer.profile.dotsPerInch() / 8.0);
}

void feedUnits(Printer &printer, const StreamCommand &command)
{
    printer.printLineAndFeed(printer.dotsDown(command.operand(0)));
}

void feedLines(Printer &printer, const StreamCommand &command)
{
    printer.printLine(command.operand(0));
}

void feedBack(Printer &printer, int dots)
{
    if (!printer.line.isEmpty())
        printer.printLineAndFeed(0);
    printer.roll.feedBack(dots);
}

void feedUnitsBack(Printer &printer, const StreamCommand &command)
{
    feedBack(printer, printer.dotsDown(command.operand(0)));
}

void feedLinesBack(Printer &printer, const StreamCommand &command)
{
    feedBack(printer, command.operand(0) * printer.state.lineSpacing);
}

void setMotionUnits(Printer &printer, const StreamCommand &command)
{
    const QSize usual = printer.profile.motionUnitsPerInch();
    const int x = command.operand(0);
    const int y = command.operand(1);
    printer.state.motionUnits = {x == 0 ? usual.width() : x, y == 0 ? usual.height() : y};
}

void stepBack(Printer &printer, const StreamCommand & /*command*/)
{
    printer.line.x = std::max(0, printer.line.x - printer.columnWidth());
}

constexpr HandlerRow lineRows[] = {
    {CommandId::Backspace, stepBack},
    {CommandId::LineFeed, feedLine},
    {CommandId::CarriageReturn, returnCarriage},
    {CommandId::CancelData, cancelData},
    {CommandId::HorizontalTab, goToTab},
    {CommandId::TabStops, setTabs},
    {CommandId::AbsolutePosition, goTo},
    {CommandId::RelativePosition, goOn},
    {CommandId::Alignment, setAlignment},
    {CommandId::LeftMargin, setLeftMargin},
    {CommandId::AreaWidth, setAreaWidth},
    {CommandId::LineStart, goToLineStart},
    {CommandId::DefaultLineSpacing, setDefaultLineSpacing},
    {CommandId::LineSpacing, setLineSpacing},
    {CommandId::EighthLineSpacing, setEighthLineSpacing},
    {CommandId::FeedUnits, feedUnits},
    {CommandId::FeedLines, feedLines},
    {CommandId::ReverseFeedUnits, feedUnitsBack},
    {CommandId::ReverseFeedLines, feedLinesBack},
    {CommandId::MotionUnits, setMotionUnits},
};

}  // namespace

HandlerRows lineHandlers()
{
    return {std::begin(lineRows), std::end(lineRows)};
}

}  // namespace printerslib::drivers
