#include <algorithm>
#include <numeric>
#include <optional>

#include "templatelint.h"

namespace templatelint {

namespace {

// Longer names are no names any more, and the distance costs the product of the lengths.
constexpr int longestName = 64;
// One mistake in so many characters is still a mistake in the same name.
constexpr int charactersPerMistake = 3;

/// Characters to insert, remove, replace or swap with their neighbour to make one text of the
/// other.
int distance(const QString &a, const QString &b)
{
    QVector<int> beforeLast;
    QVector<int> last(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (int i = 0; i < a.size(); ++i) {
        QVector<int> row(b.size() + 1, i + 1);
        for (int j = 0; j < b.size(); ++j) {
            const int replaced = last.at(j) + (a.at(i) == b.at(j) ? 0 : 1);
            row[j + 1] = std::min({replaced, last.at(j + 1) + 1, row.at(j) + 1});
            if (i > 0 && j > 0 && a.at(i) == b.at(j - 1) && a.at(i - 1) == b.at(j))
                row[j + 1] = std::min(row.at(j + 1), beforeLast.at(j - 1) + 1);
        }
        beforeLast = last;
        last = row;
    }
    return last.constLast();
}

}  // namespace

std::optional<QString> nearestName(const QString &name, const QStringList &names)
{
    if (name.size() > longestName)
        return std::nullopt;
    const QString wanted = name.toUpper();
    int best = std::max(1, name.size() / charactersPerMistake) + 1;
    std::optional<QString> nearest;
    for (const QString &candidate : names) {
        if (std::abs(candidate.size() - name.size()) >= best)
            continue;
        const int mistakes = distance(wanted, candidate.toUpper());
        if (mistakes >= best)
            continue;
        best = mistakes;
        nearest = candidate;
    }
    return nearest;
}

}  // namespace templatelint
