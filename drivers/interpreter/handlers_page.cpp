#include <algorithm>

#include "interpreter/handlers_p.h"
#include "interpreter/handlers_page_p.h"

namespace printerslib::drivers {

void printPage(Printer &printer)
{
    if (!printer.line.isEmpty() && !printer.page.take(printer.line))
        printer.note(QStringLiteral("what lies outside of the page's area is left out"));
    printer.line.clear();
    const int length = printer.page.length();
    if (length > 0)
        printer.roll.print(Paper::Line::Page, printer.page.items(), length, length);
}

void leavePageMode(Printer &printer)
{
    printer.isPageMode = false;
    printer.page.reset();
    printer.line.clear();
}

namespace {

void beginPageMode(Printer &printer, const StreamCommand &command)
{
    if (printer.isPageMode)
        return;
    printer.endLineFor(command);
    printer.line.clear();
    printer.page.reset();
    printer.isPageMode = true;
}

void endPageMode(Printer &printer, const StreamCommand &command)
{
    if (!printer.isPageMode)
        return;
    if (!printer.page.items().isEmpty() || !printer.line.isEmpty())
        printer.noteFor(command, QStringLiteral("throws away a page that wasn't printed"));
    leavePageMode(printer);
}

/// Bytes that a copy takes; what pictures and codes show is shared.
qint64 sizeOf(const LineItems &items)
{
    return qint64(sizeof(Paper::Cell)) * items.cells.size() +
           qint64(sizeof(Paper::Picture)) * (items.pictures.size() + items.drawings.size()) +
           qint64(sizeof(Paper::Code)) * items.codes.size();
}

void printPageAndStay(Printer &printer, const StreamCommand & /*command*/)
{
    const qint64 size = sizeOf(printer.page.items()) + sizeOf(printer.line.items);
    if (printer.isPageMode && printer.mayCopy(size, QStringLiteral("a page")))
        printPage(printer);
}

/// FF prints the page of page mode; on a roll there is no other form to go to.
void feedForm(Printer &printer, const StreamCommand & /*command*/)
{
    if (!printer.isPageMode) {
        printer.printLine(1);
        return;
    }
    printPage(printer);
    leavePageMode(printer);
}

/// A change of direction or area begins at its upper left.
void flushPageLine(Printer &printer)
{
    if (!printer.line.isEmpty())
        printer.printLineAndFeed(0);
    printer.line.clear();
}

void setPageDirection(Printer &printer, const StreamCommand &command)
{
    const int direction = choiceOf(command, 0, 4);
    if (direction < 0 || !printer.isPageMode)
        return;
    flushPageLine(printer);
    printer.page.setDirection(direction);
}

void setPageArea(Printer &printer, const StreamCommand &command)
{
    if (!printer.isPageMode)
        return;
    const QRect wanted(printer.dotsAcross(command.word(0)), printer.dotsDown(command.word(2)),
                       printer.dotsAcross(command.word(4)), printer.dotsDown(command.word(6)));
    const QRect area = wanted & QRect(0, 0, printer.paperDots, Paper::longest);
    if (area.isEmpty()) {
        printer.noteFor(command, QStringLiteral("sets an area beside the paper"));
        return;
    }
    flushPageLine(printer);
    printer.page.setArea(area);
}

void goToPageHeight(Printer &printer, int y)
{
    if (!printer.isPageMode)
        return;
    const int x = printer.line.x;
    if (!printer.line.isEmpty())
        printer.printLineAndFeed(0);
    printer.page.setY(std::clamp(y, 0, Paper::longest));
    printer.line.moveTo(x);
}

void setPageHeight(Printer &printer, const StreamCommand &command)
{
    goToPageHeight(printer, printer.dotsDown(command.word(0)));
}

void changePageHeight(Printer &printer, const StreamCommand &command)
{
    const int distance = printer.dotsDown(static_cast<qint16>(command.word(0)));
    goToPageHeight(printer, printer.page.y() + distance);
}

void printPageAndLeave(Printer &printer, const StreamCommand &command)
{
    if (printer.isPageMode)
        feedForm(printer, command);
}

void clearPage(Printer &printer, const StreamCommand & /*command*/)
{
    if (printer.isPageMode)
        printer.page.clearArea();
}

constexpr HandlerRow pageRows[] = {
    {CommandId::PageMode, beginPageMode},
    {CommandId::StandardMode, endPageMode},
    {CommandId::PrintPage, printPageAndStay},
    {CommandId::PrintPageAndLeave, printPageAndLeave},
    {CommandId::CancelPage, clearPage},
    {CommandId::FormFeed, feedForm},
    {CommandId::PageDirection, setPageDirection},
    {CommandId::PageArea, setPageArea},
    {CommandId::PageAbsoluteHeight, setPageHeight},
    {CommandId::PageRelativeHeight, changePageHeight},
};

}  // namespace

HandlerRows pageHandlers()
{
    return {std::begin(pageRows), std::end(pageRows)};
}

}  // namespace printerslib::drivers
