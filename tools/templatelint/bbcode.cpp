#include "bbcode.h"

#include <QRegularExpression>
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "bbcpp/bbdocument.h"
#include "linewidth.h"
#include "printerdocs/bbcodeparser.h"
#include "substitution.h"
#include "tags.h"
#include "values.h"

namespace templatelint {

namespace {

/// The bytes of a text, and of each the index of its character.
struct Bytes
{
    std::string bytes;
    std::vector<int> indexes;

    explicit Bytes(const QString &text)
    {
        for (int i = 0, length = 1; i < text.size(); i += length) {
            length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
            const QByteArray character = text.midRef(i, length).toUtf8();
            bytes.append(character.constData(), static_cast<std::size_t>(character.size()));
            indexes.insert(indexes.end(), static_cast<std::size_t>(character.size()), i);
        }
        indexes.push_back(text.size());
    }
};

QString smallLetters(const std::string &text)
{
    return QString::fromStdString(text).trimmed().toLower();
}

/// The name behind "[" or "[/".
QString beginningName(const QString &tag)
{
    static const QRegularExpression name(QStringLiteral("^\\[/?\\s*([A-Za-z_0-9]*)"));
    return name.match(tag).captured(1).toLower();
}

/// Whether a value stands between the brackets of a tag of BBCode.
bool isInTag(const QString &line, int begin, int end)
{
    const auto isBracket = [](QChar c) { return c == QLatin1Char('[') || c == QLatin1Char(']'); };
    const auto before = std::find_if(line.crend() - begin, line.crend(), isBracket);
    const auto behind = std::find_if(line.cbegin() + end, line.cend(), isBracket);
    return before != line.crend() && *before == QLatin1Char('[') && behind != line.cend() &&
           *behind == QLatin1Char(']');
}

/// The text with a sign in place of each tag of an attribute.
Text withSigns(const Text &line)
{
    Text result;
    int from = 0;
    const QVector<AttributeTag> tags = attributeTags(line.characters);
    for (const AttributeTag &tag : tags) {
        result.append(line, from, tag.begin - from);
        const int origin = Text::standIn(line.origins.at(tag.begin));
        if (isInTag(line.characters, tag.begin, tag.end))
            result.append(bbValueSign(), origin);
        else
            result.append(valueSign(), origin);
        from = tag.end;
    }
    result.append(line, from);
    return result;
}

Text filledText(const Source &source, const Options &options)
{
    std::unique_ptr<Values> values;
    if (options.document)
        values = std::make_unique<Values>(*options.document);
    const auto valueOf = [&values](const QString &inner) { return values->ofTag(inner); };
    Text text;
    int next = 0;
    const QVector<Text> lines = source.lines();
    for (const Text &line : lines) {
        if (next > 0)
            text.append(QLatin1Char('\n'), next - 1);
        next += line.size() + 1;
        if (!line.characters.contains(QLatin1Char('<'))) {
            text.append(line);
            continue;
        }
        const Filled filled = values ? fill(line, valueOf) : Filled();
        text.append(values && !filled.endless ? filled.text : withSigns(line));
    }
    return text;
}

/// The text as the library prints it: other quotation marks and dashes, each for one character.
QString printedCharacters(QString text)
{
    for (QChar &c : text) {
        if (c == QChar(0xAB) || c == QChar(0xBB))
            c = QLatin1Char('"');
        else if (c == QChar(0x2013) || c == QChar(0x2014))
            c = QLatin1Char('-');
    }
    return text;
}

constexpr int mostSymbols = 255;

/// Characters of a line, which rules are as long as.
int symbolsPerLine(const Options &options)
{
    if (!options.paper)
        return mostSymbols;
    const Paper &paper = *options.paper;
    const int cell = paper.fonts.isEmpty() ? 1 : paper.fonts.constFirst().cell.width();
    return std::min(paper.width / std::max(1, cell), mostSymbols);
}

/// Finds the places of printed lines in the text. They come in its order, but for rules.
class PlaceFinder
{
public:
    PlaceFinder(const Text &text, const QVector<BbEvent> &events)
        : m_text(text), m_words(text.size(), QChar())
    {
        const QString printed = printedCharacters(text.characters);
        for (const BbEvent &event : events) {
            if (event.kind != BbEvent::Words && event.kind != BbEvent::Malformed)
                continue;
            std::copy(printed.cbegin() + event.begin, printed.cbegin() + event.end,
                      m_words.begin() + event.begin);
        }
    }

    /// The origin of the first piece of a line that is found.
    int originOf(const QString &line)
    {
        const QStringList pieces = line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &piece : pieces) {
            const int place = m_words.midRef(m_next, farthest).indexOf(piece);
            if (place < 0)
                continue;
            m_next += place + piece.size();
            return Text::standIn(m_text.origins.at(m_next - piece.size()));
        }
        return Text::nowhere;
    }

private:
    static constexpr int farthest = 1 << 16;

    const Text &m_text;
    QString m_words;
    int m_next = 0;
};

QString payloadOf(const DocumentBlock &block)
{
    return QString::fromUtf8(block.isQrCode() ? block.qrCode() : block.barcode());
}

/// Whether a tag can be the one of a picture.
bool isOf(const BbEvent &event, const MonochromeImage &picture)
{
    const QString name = event.parameters.value(QStringLiteral("name"));
    const QString file = picture.fileName().section(QLatin1Char('/'), -1).toLower();
    const bool hasWildcards = name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
    return event.kind == BbEvent::Open && event.name == QLatin1String("img") && !name.isEmpty() &&
           (hasWildcards || file.startsWith(name));
}

bool holdBbTags(const QStringList &lines)
{
    // Whatever its name is, a tag with its end is meant as one.
    static const QRegularExpression pair(
        QStringLiteral("\\[([a-z]+)(?:[= ][^\\[\\]<>]*)?\\][^\\[\\]]*\\[/\\1\\]"),
        QRegularExpression::CaseInsensitiveOption);
    return std::any_of(lines.cbegin(), lines.cend(), [](const QString &line) {
        return !bbTagsOf(line).isEmpty() || line.contains(pair);
    });
}

bool holdMarkup(const QStringList &lines)
{
    return std::any_of(lines.cbegin(), lines.cend(),
                       [](const QString &line) { return !markupOf(line).isEmpty(); });
}

}  // namespace

QString bbValueSign()
{
    return QStringLiteral("_value_of_data_");
}

const QStringList &bbTagNames()
{
    static const QStringList names = QStringLiteral(
                                         "b i u size left center right hr img field column "
                                         "barcode qrcode")
                                         .split(QLatin1Char(' '));
    return names;
}

const QStringList &bbKeys()
{
    static const QStringList keys =
        QStringLiteral("size hr width align zerofill name").split(QLatin1Char(' '));
    return keys;
}

BbCode::BbCode(const QStringList &lines, const Options &options)
    : m_options(options), m_source(lines), m_text(filledText(m_source, options))
{
    readEvents();
    pairUp();
}

int BbCode::offsetOf(const BbEvent &event) const
{
    return Text::offsetOf(m_text.origins.at(event.begin));
}

bool BbCode::isOfValue(const BbEvent &event) const
{
    return m_options.document && !Text::isTemplate(m_text.origins.at(event.begin));
}

QString BbCode::partOf(int begin, int end) const
{
    return m_text.characters.mid(begin, end - begin);
}

/// Each tag is read into a tree of its own, so that what comes of it is known to come of it.
void BbCode::readEvents()
{
    const Bytes text(m_text.characters);
    const auto first = text.bytes.cbegin();
    const auto indexOf = [&](std::string::const_iterator at) {
        return text.indexes.at(static_cast<std::size_t>(at - first));
    };
    for (auto at = first; at != text.bytes.cend();) {
        if (*at != '[') {
            const auto end = std::find(at, text.bytes.cend(), '[');
            m_events.append({BbEvent::Words, indexOf(at), indexOf(end), QString(), {}});
            at = end;
            continue;
        }
        const auto tree = std::make_shared<bbcpp::BBDocument>();
        const auto end = tree->parseElement(at, text.bytes.cend());
        BbEvent event{BbEvent::Malformed, indexOf(at), indexOf(end), QString(), {}};
        event.name = beginningName(m_text.characters.mid(event.begin, mostSymbols));
        bool isTag = false;
        bbcpp::walk(*tree, [&](const bbcpp::BBNodePtr &node, unsigned int) {
            const auto element = bbcpp::tryDowncast<bbcpp::BBElement>(node);
            if (!element)
                return;
            if (element->getElementType() == bbcpp::BBElement::ElementParameter) {
                for (const auto &[key, value] : element->getParameters())
                    m_events.last().parameters.insert(smallLetters(key), smallLetters(value));
                return;
            }
            const bool isClosing = element->getElementType() == bbcpp::BBElement::ElementClosing;
            m_events.append({isClosing ? BbEvent::Close : BbEvent::Open,
                             event.begin,
                             event.end,
                             smallLetters(element->getNodeName()),
                             {}});
            isTag = true;
        });
        if (!isTag)
            m_events.append(event);
        at = end;
    }
}

/// A tag closes the nearest open one of its name; nesting counts nothing.
void BbCode::pairUp()
{
    QMap<QString, QVector<int>> open;
    for (int i = 0; i < m_events.size(); ++i) {
        const BbEvent &event = m_events.at(i);
        if (event.kind == BbEvent::Open)
            open[event.name].append(i);
        if (event.kind != BbEvent::Close)
            continue;
        QVector<int> &opened = open[event.name];
        if (opened.isEmpty())
            m_lonely.append(i);
        else
            m_pairs.append({opened.takeLast(), i});
    }
    for (const QVector<int> &opened : qAsConst(open))
        m_lonely += opened;
    std::sort(m_lonely.begin(), m_lonely.end());
}

QVector<BbNumber> BbCode::numbers() const
{
    QVector<BbNumber> result;
    const QString key = QStringLiteral("zerofill");
    bool isField = false;
    int digits = 0;
    for (int i = 0; i < m_events.size(); ++i) {
        const BbEvent &event = m_events.at(i);
        const bool isTag = event.kind == BbEvent::Open || event.kind == BbEvent::Close;
        if (isTag && event.name == QLatin1String("field")) {
            isField = event.kind == BbEvent::Open;
            digits = 0;
        }
        if (event.kind == BbEvent::Open && isField && event.parameters.contains(key))
            digits = event.parameters.value(key).toInt();
        else if (event.kind == BbEvent::Words && digits > 0)
            result.append({i, digits});
    }
    return result;
}

QHash<int, int> BbCode::digitsOfValues() const
{
    QHash<int, int> digits;
    const QVector<BbNumber> all = numbers();
    for (const BbNumber &number : all) {
        const BbEvent &words = m_events.at(number.event);
        for (int i = words.begin; i < words.end; ++i) {
            const int origin = m_text.origins.at(i);
            if (!Text::isTemplate(origin) && origin != Text::nowhere)
                digits.insert(Text::offsetOf(origin), number.digits);
        }
    }
    return digits;
}

QVector<Printed> BbCode::lines() const
{
    BbCodeParser parser(nullptr);
    parser.setSymbolsPerLine(static_cast<unsigned char>(symbolsPerLine(m_options)));
    // No pictures: they take no place on a line, and may be large.
    parser.setImagesPath(QStringLiteral("/dev/null"));
    parser.parseText(m_text.characters);
    PlaceFinder places(m_text, m_events);
    QVector<Printed> result;
    const QList<DocumentBlock> blocks = parser.blocks();
    for (const DocumentBlock &block : blocks) {
        if (!block.isText())
            continue;
        const QStringList lines = block.text();
        for (int i = 0; i < lines.size(); ++i) {
            Printed line;
            line.formats = block.format().at(i);
            line.fonts = block.font().at(i);
            line.text.append(lines.at(i), places.originOf(lines.at(i)));
            result.append(line);
        }
    }
    return result;
}

QVector<int> BbCode::linesOf(const QList<DocumentBlock> &blocks) const
{
    PlaceFinder places(m_text, m_events);
    const BbEvent *picture = m_events.cbegin();
    const auto lineOf = [this](int origin) {
        return origin == Text::nowhere ? 0 : m_source.place(Text::offsetOf(origin)).line;
    };
    QVector<int> result;
    for (const DocumentBlock &block : blocks) {
        const QStringList texts = block.text();
        if (block.isText()) {
            for (const QString &text : texts)
                result.append(lineOf(places.originOf(text)));
        } else if (block.isImage()) {
            picture = std::find_if(picture, m_events.cend(), [&block](const BbEvent &event) {
                return isOf(event, block.img());
            });
            result.append(picture == m_events.cend() ? 0 : lineOf(offsetOf(*picture++)));
        } else {
            result.append(lineOf(places.originOf(payloadOf(block))));
        }
    }
    return result;
}

QVector<Printed> BbCode::words() const
{
    QVector<Printed> result;
    bool isCode = false;
    for (const BbEvent &event : m_events) {
        const bool isTag = event.kind == BbEvent::Open || event.kind == BbEvent::Close;
        if (isTag &&
            (event.name == QLatin1String("barcode") || event.name == QLatin1String("qrcode")))
            isCode = event.kind == BbEvent::Open;
        if (isTag || isCode)
            continue;
        Printed words;
        words.text = m_text.mid(event.begin, event.end - event.begin);
        words.text.characters =
            printedCharacters(words.text.characters).replace(valueSign(), QLatin1Char(' '));
        result.append(words);
    }
    return result;
}

QVector<BbTag> bbTagsOf(const QString &line)
{
    static const QRegularExpression tag(
        QStringLiteral("\\[/(b|i|u|size|left|center|right|hr|img|field|column|barcode|qrcode)\\]|"
                       "\\[(size|left|center|right|hr|img|field|column|barcode|qrcode)"
                       "(?:[= ][^\\[\\]<>]*)?\\]"),
        QRegularExpression::CaseInsensitiveOption);
    QVector<BbTag> tags;
    if (!line.contains(QLatin1Char('[')))
        return tags;
    auto matches = tag.globalMatch(line);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString name = match.captured(1) + match.captured(2);
        tags.append({match.capturedStart(), match.captured(), name.toLower()});
    }
    return tags;
}

QVector<MarkupTag> markupOf(const QString &line)
{
    static const QRegularExpression tag(QStringLiteral("<([^<>]+)>"));
    QVector<MarkupTag> tags;
    auto matches = tag.globalMatch(line);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString inner = match.captured(1);
        if (isMarkup(inner) || isEntriesTag(inner) || isFiscalMarker(inner) || isSymbolsTag(inner))
            tags.append({match.capturedStart(), match.captured()});
    }
    return tags;
}

bool isBbCode(const QStringList &lines)
{
    return holdBbTags(lines) && !holdMarkup(lines);
}

bool isTemplate(const QStringList &lines)
{
    return holdMarkup(lines) && !holdBbTags(lines);
}

}  // namespace templatelint
