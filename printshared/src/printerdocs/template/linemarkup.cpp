#include <QVector>
#include <algorithm>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/linemarkup_p.h"

namespace templates {

namespace {

constexpr int lowByte = 0xFF;
constexpr int fontCount = 4;

/// A tag that stands at some place, and where it ends.
struct FoundTag
{
    quint32 kind = 0;  ///< 0: none
    const QChar *end = nullptr;
};

FoundTag plainTagAt(const QChar *text, const QChar *end)
{
    for (const PlainTag &tag : plainTags) {
        if (text[1] == QLatin1Char(tag.text.data()[1]) && standsAt(text, end, tag.text))
            return {tag.kind, text + tag.text.size()};
    }
    return {};
}

FoundTag formatTagAt(const QChar *text, const QChar *end)
{
    for (const FormatTag &tag : rangeOrder) {
        if (standsAt(text, end, tag.wholeLine))
            return {tag.lineKind, text + tag.wholeLine.size()};
        if (standsAt(text, end, tag.open))
            return {tag.rangeKind, text + tag.open.size()};
        if (standsAt(text, end, tag.close))
            return {tag.rangeKind, text + tag.close.size()};
    }
    return {};
}

/// A tag with a number: nothing but digits, so that no step before can change it.
FoundTag numberTagAt(const QChar *text, const QChar *end)
{
    const bool isFont = text[1] == fontLetter;
    const bool isCode = text[1] == plainCodeSign || text[1].isDigit();
    if (!isFont && !isCode)
        return {};
    const QChar *const stop = std::find_if_not(text + 2, end, [](QChar c) { return c.isDigit(); });
    if (stop == end || *stop != QLatin1Char('>'))
        return {};
    // A code can be that of "<" or of ">" and so make tags for the steps behind it.
    return {isFont ? quint32(FontTag) : CodeTag | allRanges | FontTag, stop + 1};
}

FoundTag tagAt(const QChar *text, const QChar *end)
{
    constexpr int shortest = 3;
    if (end - text < shortest)
        return {};
    const FoundTag plain = plainTagAt(text, end);
    if (plain.kind != 0)
        return plain;
    const FoundTag format = formatTagAt(text, end);
    return format.kind != 0 ? format : numberTagAt(text, end);
}

/// Rewrites a text and its bytes from front to back in place: what is kept moves to the left over
/// what was dropped. There are at least as many bytes as characters; those beyond the text move
/// along.
template <typename Edits>
class Rewriter
{
public:
    Rewriter(QString &text, QByteArray &bytes, Edits edits)
        : m_text(text),
          m_bytes(bytes),
          m_characters(text.data()),
          m_data(bytes.data()),
          m_edits(edits)
    {}

    int position() const { return m_read; }
    /// Index at which the next kept character comes to stand.
    int written() const { return m_written; }
    int size() const { return m_text.size(); }

    /// Index of the first such character from `from` on; -1: none.
    int find(QChar wanted, int from) const
    {
        const QChar *const characters = m_characters;
        const QChar *const end = characters + size();
        const QChar *const found = std::find(characters + std::min(from, size()), end, wanted);
        return found == end ? -1 : static_cast<int>(found - characters);
    }
    bool startsWith(QLatin1String tag) const
    {
        return standsAt(m_characters + m_read, m_characters + size(), tag);
    }
    QString textOf(int begin, int end) const { return QString(m_characters + begin, end - begin); }
    QChar at(int index) const { return m_characters[index]; }

    void keepUpTo(int end)
    {
        const int count = end - m_read;
        if (m_written != m_read) {
            std::copy(m_characters + m_read, m_characters + end, m_characters + m_written);
            std::copy(m_data + m_read, m_data + end, m_data + m_written);
        }
        m_read = end;
        m_written += count;
    }
    void drop(int count)
    {
        m_edits.replace(m_written, count, QStringView());
        m_read += count;
    }
    /// Puts a character in the place of so many.
    void put(QChar character, unsigned char byte, int count)
    {
        m_edits.replace(m_written, count, QStringView(&character, 1));
        m_read += count;
        m_characters[m_written] = character;
        m_data[m_written] = static_cast<char>(byte);
        ++m_written;
    }
    unsigned char byteAt(int index) const { return static_cast<unsigned char>(m_data[index]); }

    /// Keeps the rest of both.
    void finish()
    {
        keepUpTo(size());
        if (m_written == m_read)
            return;
        char *const end = std::copy(m_data + m_read, m_data + m_bytes.size(), m_data + m_written);
        m_bytes.truncate(static_cast<int>(end - m_data));
        m_text.truncate(m_written);
    }

private:
    QString &m_text;
    QByteArray &m_bytes;
    QChar *m_characters;
    char *m_data;
    const Edits m_edits;
    int m_read = 0;
    int m_written = 0;
};

/// From this character on the bytes have another value, up to the next switch.
struct Switch
{
    int index;
    unsigned char value;
};
constexpr unsigned char switchedOff = 0;
constexpr unsigned char switchedOn = 1;

template <typename Visitor>
void forEachStretch(const QVector<Switch> &switches, int size, Visitor visit)
{
    for (int i = 0; i < switches.size(); ++i)
        visit(switches.at(i).index, i + 1 < switches.size() ? switches.at(i + 1).index : size,
              switches.at(i).value);
}

/// Tags F1 to F4 are the fonts 0 to 3; beyond that the number counts round.
unsigned char fontOfTag(int number)
{
    return static_cast<unsigned char>(number <= fontCount ? number - 1 : number % fontCount);
}

template <typename Edits>
QVector<Switch> takeFontTags(Rewriter<Edits> line)
{
    QVector<Switch> switches;
    int end = -1;
    int next = -1;
    for (int tag = line.find(QLatin1Char('<'), 0); tag >= 0; tag = next) {
        next = line.find(QLatin1Char('<'), tag + 1);
        if (tag + 1 >= line.size() || line.at(tag + 1) != fontLetter)
            continue;
        if (end < tag)
            end = line.find(QLatin1Char('>'), tag);
        if (end < 0)
            break;
        // What holds another "<" is no number; not to look at it keeps the work linear.
        const bool canBeNumber = next < 0 || next > end;
        const int number = canBeNumber ? line.textOf(tag + 2, end).toInt() : 0;
        if (number < 1)
            continue;
        line.keepUpTo(tag);
        line.drop(end + 1 - tag);
        switches.append({line.written(), fontOfTag(number)});
    }
    line.finish();
    return switches;
}

}  // namespace

quint32 tagKindsOf(const QString &line)
{
    quint32 tags = 0;
    const QChar *c = line.constData();
    const QChar *const end = c + line.size();
    while (c != end) {
        switch (c->unicode()) {
            case '<': {
                const FoundTag tag = tagAt(c, end);
                if (tag.kind == 0)
                    return EveryTag;
                tags |= tag.kind;
                c = tag.end;
                continue;
            }
            case '>':
                return EveryTag;
            case '[':
            case ']':
                tags |= Brackets;
                break;
            default:
                break;
        }
        ++c;
    }
    return tags;
}

template <typename Edits>
LineMarkup<Edits>::LineMarkup(const QString &line, unsigned char format, Edits edits)
    : m_edits(edits),
      m_text(line),
      m_tags(tagKindsOf(line)),
      m_firstFormat(format),
      m_byteCount(line.size())
{}

/// Most tags aren't there, and to find that out is all that a line without them costs.
template <typename Edits>
Q_ALWAYS_INLINE bool LineMarkup<Edits>::replaceTag(QLatin1String tag, QLatin1String replacement)
{
    const int hit = placeOfTag(tag, m_text);
    if (hit >= 0)
        replaceFrom(hit, tag, replacement);
    return hit >= 0;
}

/// At each hit the bytes are removed at the hit's index in the unchanged text, as far as there are
/// any: from the second hit on text and bytes part, and receipts are known to print that way.
template <typename Edits>
void LineMarkup<Edits>::replaceFrom(int hit, QLatin1String tag, QLatin1String replacement)
{
    QChar *const text = m_text.data();
    const QChar *const end = text + m_text.size();
    const QChar *read = text + hit;
    QChar *written = text + hit;
    while (read != end) {
        const int place = static_cast<int>(read - text);
        m_edits.replace(static_cast<int>(written - text), tag.size(), replacement);
        m_byteCount -= qBound(0, m_byteCount - place, tag.size() - replacement.size());
        written = std::transform(replacement.begin(), replacement.end(), written,
                                 [](char c) { return QLatin1Char(c); });
        const QChar *const rest = read + tag.size();
        read = std::find(rest, end, QChar(tag.front()));
        while (read != end && !standsAt(read, end, tag))
            read = std::find(read + 1, end, QChar(tag.front()));
        written = std::copy(rest, read, written);
    }
    m_text.truncate(static_cast<int>(written - text));
}

/// Takes the tags of a step's first row out that hits. @return the row; null: none did
template <typename Edits>
template <MarkupStep step>
const PlainTag *LineMarkup<Edits>::takeFirst()
{
    constexpr PlainTagRange tags = plainTagsOf<step>;
    if (!mayHold(tags.kinds))
        return nullptr;
    for (const PlainTag &tag : tags) {
        if (mayHold(tag.kind) && replaceTag(tag.text, tag.left))
            return &tag;
    }
    return nullptr;
}

/// Takes the tags of all of a step's rows out.
template <typename Edits>
template <MarkupStep step>
void LineMarkup<Edits>::takeEach()
{
    constexpr PlainTagRange tags = plainTagsOf<step>;
    if (!mayHold(tags.kinds))
        return;
    for (const PlainTag &tag : tags)
        replaceTag(tag.text, tag.left);
}

template <typename Edits>
ETextAlignment LineMarkup<Edits>::takeAlignment()
{
    const PlainTag *const tag = takeFirst<MarkupStep::Align>();
    return tag != nullptr ? static_cast<ETextAlignment>(tag->value) : AlignLeft;
}

template <typename Edits>
void LineMarkup<Edits>::takeObsolete()
{
    takeEach<MarkupStep::TakeObsolete>();
}

template <typename Edits>
void LineMarkup<Edits>::wrapWholeLine()
{
    for (const FormatTag &tag : wholeLineOrder) {
        if (!mayHold(tag.lineKind) || !replaceTag(tag.wholeLine, QLatin1String()))
            continue;
        wrapLine(tag.open, tag.close);
        m_tags |= tag.rangeKind;
    }
}

/// Intended: the close tag also ends a range that an earlier line left open (test
/// wholeLineFormats).
template <typename Edits>
void LineMarkup<Edits>::wrapLine(QLatin1String open, QLatin1String close)
{
    if (m_text.isEmpty() || m_byteCount != m_text.size())
        return;
    m_edits.replace(0, 0, open);
    m_edits.replace(open.size() + m_text.size(), 0, close);
    m_text.reserve(open.size() + m_text.size() + close.size());
    m_text.prepend(open);
    m_text.append(close);
    m_byteCount = m_text.size();
}

template <typename Edits>
int LineMarkup<Edits>::takeSpacing(int otherwise)
{
    const PlainTag *const tag = takeFirst<MarkupStep::SetSpacing>();
    return tag != nullptr ? tag->value : otherwise;
}

template <typename Edits>
void LineMarkup<Edits>::takeBrackets()
{
    if (mayHold(Brackets)) {
        replaceTag(QLatin1String("["), QLatin1String());
        replaceTag(QLatin1String("]"), QLatin1String());
    }
    takeEach<MarkupStep::TakeEmpty>();
}

template <typename Edits>
bool LineMarkup<Edits>::mayHoldCharacterTags() const
{
    return mayHold(CodeTag | allRanges | FontTag);
}

template <typename Edits>
void LineMarkup<Edits>::placeCodes()
{
    m_formats = QByteArray(m_byteCount, static_cast<char>(m_firstFormat));
    if (!mayHold(CodeTag))
        return;
    Rewriter line(m_text, m_formats, m_edits);
    int end = -1;
    for (int tag = line.find(QLatin1Char('<'), 0); tag >= 0;
         tag = line.find(QLatin1Char('<'), qMax(tag + 1, line.position()))) {
        if (end < tag)
            end = line.find(QLatin1Char('>'), tag);
        if (end < 0)
            break;
        const QChar first = line.at(tag + 1);
        const bool isPlain = first == plainCodeSign;
        if (!isPlain && !first.isDigit())
            continue;
        const int code = line.textOf(tag + (isPlain ? 2 : 1), end).toInt();  // 0 if it is no number
        const int format = line.byteAt(tag) | (isPlain ? 0 : CharRawCode);
        line.keepUpTo(tag);
        line.put(QChar(code & lowByte), static_cast<unsigned char>(format), end + 1 - tag);
    }
    line.finish();
}

template <typename Edits>
void LineMarkup<Edits>::applyFormats(unsigned char &format)
{
    for (const FormatTag &tag : rangeOrder) {
        if (mayHold(tag.rangeKind))
            applyFormatRange(tag.open, tag.close, tag.flag, format);
    }
}

/// Intended: a tag directly behind one of its own pair that was just taken out is passed over and
/// stays as text, and so do later ones of its kind until one of the pair is honoured again; only a
/// close tag right behind an open tag is honoured. Templates in the field print like that.
/// Test: rangeTagRightBehindItsOwnPair.
template <typename Edits>
void LineMarkup<Edits>::applyFormatRange(QLatin1String open, QLatin1String close, ECharFormat flag,
                                         unsigned char &format)
{
    if (!m_text.contains(open) && !m_text.contains(close))
        return;
    Rewriter line(m_text, m_formats, m_edits);
    QVector<Switch> switches;
    bool openIsPassed = false;
    bool closeIsPassed = false;
    for (int tag = line.find(QLatin1Char('<'), 0); tag >= 0;
         tag = line.find(QLatin1Char('<'), line.position() + 1)) {
        line.keepUpTo(tag);
        const bool opens = !openIsPassed && line.startsWith(open);
        if (opens)
            line.drop(open.size());
        const bool closes = (opens || !closeIsPassed) && line.startsWith(close);
        if (closes)
            line.drop(close.size());
        if (!opens && !closes)
            continue;
        switches.append({line.written(), closes ? switchedOff : switchedOn});
        openIsPassed = line.startsWith(open);
        closeIsPassed = line.startsWith(close);
    }
    line.finish();
    const auto withFlag = [flag](unsigned char byte, unsigned char value) {
        return static_cast<unsigned char>(value == switchedOn ? byte | flag : byte & ~flag);
    };
    char *const bytes = m_formats.data();
    forEachStretch(switches, m_formats.size(), [=](int begin, int end, unsigned char value) {
        std::transform(bytes + begin, bytes + end, bytes + begin, [=](char byte) {
            return static_cast<char>(withFlag(static_cast<unsigned char>(byte), value));
        });
    });
    if (!switches.isEmpty())
        format = withFlag(format, switches.constLast().value);
}

template <typename Edits>
void LineMarkup<Edits>::applyFonts(unsigned char &font)
{
    if (!mayHoldCharacterTags() && font == m_firstFormat) {
        m_fonts = m_formats;  // alike, so they share their bytes
        return;
    }
    QByteArray fonts(m_formats.size(), static_cast<char>(font));
    if (!mayHold(FontTag)) {
        m_fonts = fonts;
        if (!fonts.isEmpty())
            font = static_cast<unsigned char>(fonts.back());
        return;
    }
    const QVector<Switch> switches = takeFontTags(Rewriter(m_text, m_formats, m_edits));
    fonts.truncate(m_formats.size());
    forEachStretch(
        switches, fonts.size(), [&fonts](int begin, int stretchEnd, unsigned char value) {
            std::fill(fonts.begin() + begin, fonts.begin() + stretchEnd, static_cast<char>(value));
        });
    m_fonts = fonts;
    if (!fonts.isEmpty())
        font = static_cast<unsigned char>(fonts.back());
}

template <typename Edits>
void LineMarkup<Edits>::trimFormats()
{
    if (m_formats.size() > m_text.size())
        m_formats.chop(1);
}

template <typename Edits>
void LineMarkup<Edits>::addMargin(int blanks)
{
    if (blanks < 1)
        return;
    const int count = qMin(blanks, documents::longestPaddedLine);
    const QString margin(count, QLatin1Char(' '));
    m_edits.replace(0, 0, margin);
    m_text.prepend(margin);
    m_formats.prepend(QByteArray(count, '\0'));
    m_fonts.prepend(QByteArray(count, '\0'));
}

template class LineMarkup<NoEdits>;
template class LineMarkup<HeardEdits>;

}  // namespace templates
