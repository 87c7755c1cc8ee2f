#include <QRegularExpression>

#include "analysis.h"
#include "bbcode.h"
#include "checks.h"
#include "linewidth.h"
#include "printerdocs/bbcodeparser.h"
#include "signs.h"

// Rules about what texts in BBCode make of values.

namespace templatelint {

namespace {

/// What a field prints that is filled up with zeros.
QString printedNumber(const QString &words, int digits)
{
    BbCodeParser parser(nullptr);
    parser.parseText(QStringLiteral("[field zerofill=%1]%2[/field]").arg(digits).arg(words));
    QStringList lines;
    const QList<DocumentBlock> blocks = parser.blocks();
    for (const DocumentBlock &block : blocks) {
        if (block.isText())
            lines += block.text();
    }
    return lines.join(QLatin1Char('\n')).trimmed();
}

/// Whether a field prints a number, filled up or not, as the one that it is.
bool isSameNumber(const QString &words, const QString &printed)
{
    static const QRegularExpression wholeNumber(QStringLiteral("^-?\\d+$"));
    return words == printed ||
           (wholeNumber.match(words).hasMatch() && words.toLongLong() == printed.toLongLong());
}

}  // namespace

void checkBbNumbers(const BbCode &text, Report &report)
{
    const QVector<BbNumber> numbers = text.numbers();
    for (const BbNumber &number : numbers) {
        const BbEvent &event = text.events().at(number.event);
        const Text words = text.text().mid(event.begin, event.end - event.begin).trimmed();
        if (words.isEmpty() || words.characters.contains(valueSign()))
            continue;
        const QString printed = printedNumber(words.characters, number.digits);
        if (!isSameNumber(words.characters, printed))
            report.add(words.firstOffset(),
                       QStringLiteral("\"zerofill\" takes whole numbers alone, and prints \"%1\" "
                                      "for \"%2\"")
                           .arg(clipped(printed), clipped(words.characters)));
    }
}

void checkBbCopyMark(const BbCode &text, Report &report)
{
    const std::optional<PrinterDocument> &document = text.options().document;
    if (document && document->isCopy())
        report.add(0, QStringLiteral("the copy prints without a mark: BBCode has none, so a value "
                                     "has to say that it is a copy"));
}

void checkBbDoubleSigns(const BbCode &text, Report &report)
{
    if (!text.options().document)
        return;
    Values values(*text.options().document);
    const QVector<Printed> words = text.words();
    for (const Printed &printed : words)
        reportDoubleSigns(printed.text, text.source(), values, report);
}

}  // namespace templatelint
