#include "interpreter/pagebuffer_p.h"

#include <algorithm>

#include "interpreter/dots_p.h"

namespace printerslib::drivers {

PageBuffer::PageBuffer(int paperDots, int firstLine)
    : m_paperDots(paperDots), m_firstLine(firstLine)
{
    reset();
}

void PageBuffer::reset()
{
    m_area = QRect(0, 0, m_paperDots, Paper::longest);
    m_direction = 0;
    m_y = m_firstLine;
    m_areasEnd = 0;
    m_itemsEnd = 0;
    m_items.clear();
    m_clearedArea = QRect();
}

void PageBuffer::setArea(const QRect &area)
{
    m_area = area;
    m_areasEnd = std::max(m_areasEnd, area.bottom() + 1);
    m_y = m_firstLine;
}

void PageBuffer::setDirection(int direction)
{
    m_direction = direction;
    m_y = m_firstLine;
}

void PageBuffer::clearArea()
{
    // What was looked at lies outside: streams may clear one area over and over.
    if (m_clearedArea != m_area)
        m_cleared = {};
    m_clearedArea = m_area;
    const auto clear = [](auto &items, int &cleared, const auto &lies) {
        items.erase(std::remove_if(items.begin() + cleared, items.end(), lies), items.end());
        cleared = items.size();
    };
    clear(m_items.cells, m_cleared.cells, [this](const Paper::Cell &cell) {
        return isInArea({cell.left, cell.top, cell.width, cell.height});
    });
    const auto isPlaced = [this](const auto &item) { return isInArea(item.place); };
    clear(m_items.pictures, m_cleared.pictures, isPlaced);
    clear(m_items.codes, m_cleared.codes, isPlaced);
}

int PageBuffer::width() const
{
    return m_direction % 2 == 0 ? m_area.width() : m_area.height();
}

int PageBuffer::height() const
{
    return m_direction % 2 == 0 ? m_area.height() : m_area.width();
}

/// From the lines' own direction to the page.
QRect PageBuffer::placeOf(const QRect &place) const
{
    const int x = place.x();
    const int y = place.y();
    const int width = place.width();
    const int height = place.height();
    switch (m_direction) {
        case 1:
            return {m_area.x() + y, m_area.y() + m_area.height() - x - width, height, width};
        case 2:
            return {m_area.x() + m_area.width() - x - width,
                    m_area.y() + m_area.height() - y - height, width, height};
        case 3:
            return {m_area.x() + m_area.width() - y - height, m_area.y() + x, height, width};
        default:
            return {m_area.x() + x, m_area.y() + y, width, height};
    }
}

/// Codes that nobody draws take no place: they are where they begin, be it at the area's edge.
bool PageBuffer::isInArea(const QRect &place) const
{
    return place.isEmpty() ? m_area.adjusted(0, 0, 1, 1).contains(place.topLeft())
                           : m_area.contains(place);
}

bool PageBuffer::isInside(const QRect &place) const
{
    return isInArea(place) && place.left() >= 0 && place.right() < m_paperDots;
}

namespace {

// What is turned once more by these quarters, clockwise.
constexpr quint16 turnEffects[] = {0, Paper::Turned, Paper::UpsideDown,
                                   Paper::Turned | Paper::UpsideDown};

quint16 turnedEffects(quint16 effects, int quarters)
{
    constexpr int mask = Paper::Turned | Paper::UpsideDown;
    int turns = quarters;
    for (int i = 0; i < 4; ++i) {
        if ((effects & mask) == turnEffects[i])
            turns += i;
    }
    return quint16((effects & ~mask) | turnEffects[turns % 4]);
}

}  // namespace

bool PageBuffer::take(LineBuffer &line)
{
    line.settle(0);
    const int top = m_y - line.height;
    const int firstDrawing = m_items.drawings.size();
    const int taken = m_items.cells.size() + m_items.pictures.size() + m_items.codes.size();
    m_items.drawings += line.items.drawings;
    const auto keep = [this](const QRect &place) {
        if (isInside(place))
            m_itemsEnd = std::max(m_itemsEnd, place.bottom() + 1);
        return isInside(place);
    };
    for (Paper::Cell cell : qAsConst(line.items.cells)) {
        const QRect place = placeOf({cell.left, top + cell.top, cell.width, cell.height});
        cell.left = place.left();
        cell.top = place.top();
        cell.width = quint16(place.width());
        cell.height = quint16(place.height());
        cell.effects = turnedEffects(cell.effects, quarterTurns());
        if (cell.drawing >= 0)
            cell.drawing += firstDrawing;
        if (keep(place))
            m_items.cells.append(cell);
    }
    for (const Paper::Picture &picture : qAsConst(line.items.pictures)) {
        Paper::Picture turned = turnedPicture(picture, quarterTurns());
        turned.place = placeOf(picture.place.translated(0, top));
        if (keep(turned.place))
            m_items.pictures.append(turned);
    }
    for (Paper::Code code : qAsConst(line.items.codes)) {
        code.place = placeOf(code.place.translated(0, top));
        turnCode(code, quarterTurns());
        if (keep(code.place))
            m_items.codes.append(code);
    }
    const int all = line.items.cells.size() + line.items.pictures.size() + line.items.codes.size();
    return m_items.cells.size() + m_items.pictures.size() + m_items.codes.size() == taken + all;
}

int PageBuffer::length() const
{
    return m_areasEnd > 0 ? m_areasEnd : m_itemsEnd;
}

}  // namespace printerslib::drivers
