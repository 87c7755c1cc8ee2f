#include "wordwrap.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include "printerdocs/printerdocument.h"

namespace tool {

namespace {

/// A word in pieces that fit.
QStringList piecesOfWord(const QString &word, int width)
{
    QStringList pieces;
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, word);
    int begin = 0;
    int end = 0;
    while (letters.toNextBoundary() >= 0) {
        if (letters.position() - begin > width && end > begin) {
            pieces.append(word.mid(begin, end - begin));
            begin = end;
        }
        end = letters.position();
    }
    pieces.append(word.mid(begin));
    return pieces;
}

void moveNumbersDown(QStringList &pieces, int width)
{
    for (int i = pieces.size() - 1; i > 0; --i) {
        QString &above = pieces[i - 1];
        const int blank = above.lastIndexOf(QLatin1Char(' '));
        const QString joined = above.mid(blank + 1) + QLatin1Char(' ') + pieces.at(i);
        if (!readsAsNumber(pieces.at(i)) || blank < 0 || joined.size() > width)
            continue;
        pieces[i] = joined;
        above.truncate(blank);
    }
}

}  // namespace

bool readsAsNumber(const QString &text)
{
    const QString name = QStringLiteral("TEXT");
    PrinterDocument document;
    document.setAttributes({{name, text}});
    return document.attributeValue(name).type() != QVariant::String;
}

QStringList wrappedAtWords(const QString &text, int width)
{
    static const QRegularExpression gaps(QStringLiteral("[ \\t\\r\\n]+"));
    QStringList pieces;
    const QStringList words = text.split(gaps, Qt::SkipEmptyParts);
    for (const QString &word : words) {
        if (!pieces.isEmpty() && pieces.constLast().size() + 1 + word.size() <= width)
            pieces.last() += QLatin1Char(' ') + word;
        else
            pieces += piecesOfWord(word, width);
    }
    moveNumbersDown(pieces, width);
    return pieces;
}

}  // namespace tool
