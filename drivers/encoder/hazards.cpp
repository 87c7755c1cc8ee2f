#include "encoder/hazards_p.h"

#include <algorithm>

#include "encoder/printdots_p.h"

namespace printerslib::drivers::hazards {

namespace {

constexpr unsigned char dle = 0x10;
constexpr unsigned char eot = 0x04;
constexpr unsigned char enq = 0x05;
constexpr unsigned char dc4 = 0x14;
constexpr unsigned char esc = 0x1B;
constexpr unsigned char ack = 0x06;
constexpr unsigned char soh = 0x01;

const unsigned char *begin(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

/// DLE DC4 1 and 2 are what GS ( D switches; buzzer, statuses and clearing aren't.
bool isSwitched(const unsigned char *at, int size)
{
    constexpr unsigned char lasting[] = {3, 7, 8};
    return size < 3 ||
           std::find(std::begin(lasting), std::end(lasting), at[2]) == std::end(lasting);
}

/// Whether a command begins here that is obeyed at once.
bool isObeyed(const unsigned char *at, int size, Rules rules, bool isSwitchedOff)
{
    switch (rules.dialect) {
        case Dialect::EscPos:
            if (size < 2 || at[0] != dle)
                return false;
            return at[1] == eot || at[1] == enq ||
                   (at[1] == dc4 && !(isSwitchedOff && isSwitched(at, size)));
        case Dialect::StarLine:
            return size >= 3 && at[0] == esc && at[1] == ack && at[2] == soh;
        case Dialect::Swecoin:
            break;
    }
    return false;
}

bool hasObeyed(const QByteArray &bytes, Rules rules, bool isSwitchedOff)
{
    for (int i = 0; i < bytes.size(); ++i) {
        if (isObeyed(begin(bytes) + i, bytes.size() - i, rules, isSwitchedOff))
            return true;
    }
    return false;
}

}  // namespace

Rules rulesOf(const PrinterProfile &profile)
{
    return {profile.dialect(), profile.switchesRealTime()};
}

bool hasAny(const QByteArray &bytes, Rules rules)
{
    return hasObeyed(bytes, rules, false);
}

bool hasLasting(const QByteArray &bytes, Rules rules)
{
    return hasObeyed(bytes, rules, rules.switchesRealTime);
}

bool isDefinable(const Paper::Picture &drawing, const PrinterProfile &profile)
{
    const QByteArray columns = columnsOf24(placedDots(drawing, 0), 0);
    // The count of columns stands in front of them.
    return !hasLasting(static_cast<char>(drawing.size.width()) + columns, rulesOf(profile));
}

Parts partsOf(const QByteArray &data, Rules rules)
{
    Parts parts = {data, {}};
    for (int i = 0; i + 1 < data.size(); ++i) {
        if (!isObeyed(begin(parts.first) + i, data.size() - i, rules, false))
            continue;
        if (parts.second.isEmpty())
            parts.second = QByteArray(data.size(), '\0');
        parts.second[i + 1] = data.at(i + 1);
        parts.first[i + 1] = '\0';
    }
    return parts;
}

std::vector<int> columnsApart(const QByteArray &columns, Rules rules)
{
    constexpr int size = 3;
    const int count = columns.size() / size;
    std::vector<int> parts;
    int first = 0;
    for (int i = 0; i < count; ++i) {
        // What is obeyed is no longer than a column.
        const int before = std::max(first, i - 1);
        const auto has = [&columns, rules](int begin, int end) {
            return hasAny(QByteArray::fromRawData(columns.constData() + qptrdiff(size) * begin,
                                                  size * (end - begin)),
                          rules);
        };
        if (!has(before, i + 1))
            continue;
        if (has(i, i + 1))
            return {};
        parts.push_back(i - first);
        first = i;
    }
    if (count > first)
        parts.push_back(count - first);
    return parts;
}

std::vector<bool> rowsWithin(const PrintDots &dots, Rules rules)
{
    std::vector<bool> rows(size_t(dots.height), false);
    const int total = dots.bytesPerRow * dots.height;
    for (int y = 0; y < dots.height; ++y) {
        const unsigned char *const row = dots.row(y);
        const int behind = total - y * dots.bytesPerRow;
        for (int x = 0; x + 1 < dots.bytesPerRow && !rows[size_t(y)]; ++x)
            rows[size_t(y)] = isObeyed(row + x, behind - x, rules, rules.switchesRealTime);
    }
    return rows;
}

bool standsBetween(const PrintDots &dots, int upperRow, Rules rules)
{
    if (upperRow < 0 || upperRow + 1 >= dots.height || dots.bytesPerRow == 0)
        return false;
    const int last = dots.bytesPerRow - 1;
    const int behind = dots.bytesPerRow * (dots.height - upperRow) - last;
    return isObeyed(dots.row(upperRow) + last, behind, rules, rules.switchesRealTime);
}

namespace {

std::vector<int> bandsFromTop(const std::vector<bool> &rows)
{
    std::vector<int> bands;
    for (int y = 0; y < int(rows.size()); ++y) {
        if (rows[size_t(y)]) {
            bands.push_back(y);
            y += bandRows - 1;
        }
    }
    return bands;
}

/// As far down as they may stand.
std::vector<int> bandsFromBottom(const std::vector<bool> &rows, int height)
{
    std::vector<int> bands;
    int end = height;
    for (int y = int(rows.size()) - 1; y >= 0; --y) {
        if (!rows[size_t(y)])
            continue;
        const int top = std::min(y, end - bandRows);
        bands.push_back(top);
        end = top;
        y = top;
    }
    std::reverse(bands.begin(), bands.end());
    return bands;
}

}  // namespace

std::vector<int> bandsFor(const std::vector<bool> &rows, int height)
{
    std::vector<int> low = bandsFromTop(rows);
    if (low.empty() || low.back() + bandRows <= height)
        return low;
    std::vector<int> high = bandsFromBottom(rows, height);
    return high.front() >= 0 ? high : low;
}

}  // namespace printerslib::drivers::hazards
