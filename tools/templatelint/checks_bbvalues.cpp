#include <QRegularExpression>
#include <algorithm>

#include "analysis.h"
#include "bbcode.h"
#include "checks.h"
#include "linewidth.h"
#include "printerdocs/bbcodeparser.h"
#include "signs.h"
#include "tags.h"
#include "words.h"

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

/// Whether a value that is called after copies says that the text is one.
bool tellsCopies(const Source &source, const PrinterDocument &document)
{
    const QString copy = QStringLiteral("COPY");
    const QVector<Text> lines = source.lines();
    return std::any_of(lines.cbegin(), lines.cend(), [&](const Text &line) {
        const QVector<AttributeTag> tags = attributeTags(line.characters);
        return std::any_of(tags.cbegin(), tags.cend(), [&](const AttributeTag &tag) {
            return tag.name.contains(copy, Qt::CaseInsensitive) &&
                   !document.attributeValue(tag.name).toString().isEmpty();
        });
    });
}

/// Whether an event begins or ends a block, so that what follows stands on another line.
bool breaksTheLine(const BbEvent &event)
{
    static const QStringList formats{QStringLiteral("b"), QStringLiteral("i"), QStringLiteral("u"),
                                     QStringLiteral("size"), QStringLiteral("field")};
    return bbTagNames().contains(event.name) && !formats.contains(event.name);
}

/// Whether text stands on the same line behind an event.
bool isFollowed(const BbCode &text, int event)
{
    for (int i = event + 1; i < text.events().size(); ++i) {
        const BbEvent &next = text.events().at(i);
        const bool isTag = next.kind == BbEvent::Open || next.kind == BbEvent::Close;
        if (isTag && breaksTheLine(next))
            return false;
        const QString words = isTag ? QString() : text.partOf(next.begin, next.end);
        if (!words.section(QLatin1Char('\n'), 0, 0).trimmed().isEmpty())
            return true;
        if (words.contains(QLatin1Char('\n')))
            return false;
    }
    return false;
}

}  // namespace

void checkBbFields(const BbCode &text, Report &report)
{
    constexpr int most = 255;
    const QString key = QStringLiteral("width");
    int width = 0;
    for (int i = 0; i < text.events().size(); ++i) {
        const BbEvent &event = text.events().at(i);
        if (event.kind == BbEvent::Open && event.name == QLatin1String("field"))
            width = event.parameters.value(key).toInt() & most;
        else if (event.kind == BbEvent::Close && event.name == QLatin1String("field"))
            width = 0;
        if (event.kind != BbEvent::Words || width == 0 || !isFollowed(text, i))
            continue;
        const QString words = text.partOf(event.begin, event.end).remove(valueSign());
        // Over two lines nothing stands in columns.
        if (words.size() <= width || words.contains(QLatin1Char('\n')))
            continue;
        report.add(text.offsetOf(event),
                   Words::tr("\"%1\" takes %2 characters, and the field has %3: what stands "
                             "behind it is moved")
                       .arg(clipped(words))
                       .arg(words.size())
                       .arg(width));
    }
}

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
                       Words::tr("\"zerofill\" takes whole numbers alone, and prints \"%1\" "
                                 "for \"%2\"")
                           .arg(clipped(printed), clipped(words.characters)));
    }
}

void checkBbCopyMark(const BbCode &text, Report &report)
{
    const std::optional<PrinterDocument> &document = text.options().document;
    if (document && document->isCopy() && !tellsCopies(text.source(), *document))
        report.add(0,
                   Words::tr("the copy prints without a mark: BBCode has none, so a value has to "
                             "say that it is a copy, such as <COPY_MARK>"));
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
