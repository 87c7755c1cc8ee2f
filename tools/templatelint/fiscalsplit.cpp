#include "fiscalsplit.h"

#include "printerdocs/printerdocumentformatter.h"

namespace templatelint {

namespace {

struct Halves
{
    QVector<Text> before;
    QVector<Text> after;
};

Halves cutAt(const QString &marker, const QVector<Text> &lines)
{
    Halves halves;
    bool isBehind = false;
    for (const Text &line : lines) {
        const int begin = line.characters.toUpper().indexOf(marker);
        if (begin < 0) {
            (isBehind ? halves.after : halves.before).append(line);
            continue;
        }
        const Text head = line.mid(0, begin).trimmed();
        const Text tail = line.mid(begin + marker.size()).trimmed();
        if (!head.isEmpty())
            (isBehind ? halves.after : halves.before).append(head);
        if (!tail.isEmpty())
            halves.after.append(tail);
        isBehind = true;
    }
    return halves;
}

}  // namespace

QVector<QVector<Text>> fiscalPieces(const QVector<Text> &lines)
{
    QVector<QVector<Text>> pieces{lines};
    for (const auto &part : PrinterDocumentFormatter::PARTS) {
        QVector<QVector<Text>> smaller;
        for (const QVector<Text> &piece : qAsConst(pieces)) {
            const Halves halves = cutAt(part.second, piece);
            for (const QVector<Text> &half : {halves.before, halves.after}) {
                if (!half.isEmpty())
                    smaller.append(half);
            }
        }
        pieces = smaller;
    }
    return pieces;
}

}  // namespace templatelint
