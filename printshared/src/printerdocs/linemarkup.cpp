#include <QVector>
#include <algorithm>

#include "printerdocs/linelimits_p.h"
#include "printerdocs/linemarkup_p.h"

namespace {

struct FormatTag
{
    QLatin1String letters;
    ECharFormat flag;
};

// The orders differ and decide about tags that stand next to each other.
const FormatTag wholeLineOrder[] = {
    {QLatin1String("Z"), CharMarkZ},         {QLatin1String("B"), CharBold},
    {QLatin1String("H2"), CharDoubleHeight}, {QLatin1String("W2"), CharDoubleWidth},
    {QLatin1String("N"), CharItalic},        {QLatin1String("U"), CharUnderline},
};
const FormatTag rangeOrder[] = {
    {QLatin1String("B"), CharBold},          {QLatin1String("Z"), CharMarkZ},
    {QLatin1String("U"), CharUnderline},     {QLatin1String("N"), CharItalic},
    {QLatin1String("H2"), CharDoubleHeight}, {QLatin1String("W2"), CharDoubleWidth},
};

constexpr int lineSpacings = 8;
constexpr int lowByte = 0xFF;
constexpr int fontCount = 4;

QString openTag(QLatin1String letters)
{
    return QLatin1Char('<') + letters + QLatin1String(":>");
}

QString closeTag(QLatin1String letters)
{
    return QLatin1String("<:") + letters + QLatin1Char('>');
}

/// Rewrites a text and its bytes from front to back in place: what is kept moves to the left over
/// what was dropped. There are at least as many bytes as characters; those beyond the text move
/// along.
class Rewriter
{
public:
    Rewriter(QString &text, QByteArray &bytes)
        : m_text(text), m_bytes(bytes), m_characters(text.data()), m_data(bytes.data())
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
    bool startsWith(const QString &tag) const
    {
        return size() - m_read >= tag.size() &&
               std::equal(tag.cbegin(), tag.cend(), m_characters + m_read);
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
    void drop(int count) { m_read += count; }
    void put(QChar character, unsigned char byte)
    {
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

}  // namespace

LineMarkup::LineMarkup(const QString &line, unsigned char format)
    : m_text(line), m_firstFormat(format), m_byteCount(line.size())
{}

/// At each hit the bytes are removed at the hit's index in the unchanged text, as far as there are
/// any: from the second hit on text and bytes part, and receipts are known to print that way.
bool LineMarkup::replaceTag(QLatin1String tag, QLatin1String replacement)
{
    int hit = m_text.indexOf(tag);
    if (hit < 0)
        return false;
    for (; hit >= 0; hit = m_text.indexOf(tag, hit + 1))
        m_byteCount -= qBound(0, m_byteCount - hit, tag.size() - replacement.size());
    m_text.replace(tag, replacement);
    return true;
}

ETextAlignment LineMarkup::takeAlignment()
{
    if (replaceTag(QLatin1String("<S>"), QLatin1String("\t")))
        return AlignJustify;
    if (replaceTag(QLatin1String("<C>"), QLatin1String()))
        return AlignCenter;
    if (replaceTag(QLatin1String("<R>"), QLatin1String()))
        return AlignRight;
    return AlignLeft;
}

void LineMarkup::takeObsolete()
{
    replaceTag(QLatin1String("<L1>"), QLatin1String());
}

void LineMarkup::wrapWholeLine()
{
    for (const FormatTag &tag : wholeLineOrder) {
        const QByteArray name = QByteArray(1, '<') + tag.letters.data() + '>';
        if (replaceTag(QLatin1String(name), QLatin1String()))
            wrapLine(tag.letters);
    }
}

void LineMarkup::wrapLine(QLatin1String letters)
{
    if (m_text.isEmpty() || m_byteCount != m_text.size())
        return;
    m_text = openTag(letters) + m_text + closeTag(letters);
    m_byteCount = m_text.size();
}

int LineMarkup::takeSpacing(int otherwise)
{
    for (int spacing = 0; spacing < lineSpacings; ++spacing) {
        const QByteArray tag = "<LS" + QByteArray::number(spacing) + '>';
        if (replaceTag(QLatin1String(tag), QLatin1String()))
            return spacing;
    }
    return otherwise;
}

void LineMarkup::takeBrackets()
{
    replaceTag(QLatin1String("["), QLatin1String());
    replaceTag(QLatin1String("]"), QLatin1String());
    replaceTag(QLatin1String("<:>"), QLatin1String());
}

void LineMarkup::placeCodes()
{
    m_formats = QByteArray(m_byteCount, static_cast<char>(m_firstFormat));
    Rewriter line(m_text, m_formats);
    int end = -1;
    for (int tag = line.find(QLatin1Char('<'), 0); tag >= 0;
         tag = line.find(QLatin1Char('<'), qMax(tag + 1, line.position()))) {
        if (end < tag)
            end = line.find(QLatin1Char('>'), tag);
        if (end < 0)
            break;
        const QChar first = line.at(tag + 1);
        const bool isPlain = first == QLatin1Char('#');
        if (!isPlain && !first.isDigit())
            continue;
        const int code = line.textOf(tag + (isPlain ? 2 : 1), end).toInt();  // 0 if it is no number
        const int format = line.byteAt(tag) | (isPlain ? 0 : CharRawCode);
        line.keepUpTo(tag);
        line.drop(end + 1 - tag);
        line.put(QChar(code & lowByte), static_cast<unsigned char>(format));
    }
    line.finish();
}

void LineMarkup::applyFormats(unsigned char &format)
{
    for (const FormatTag &tag : rangeOrder)
        applyFormatRange(tag.letters, tag.flag, format);
}

/// Intended: a tag directly behind one of its own pair that was just taken out is passed over and
/// stays as text, and so do later ones of its kind until one of the pair is honoured again; only a
/// close tag right behind an open tag is honoured. Templates in the field print like that.
/// Test: rangeTagRightBehindItsOwnPair.
void LineMarkup::applyFormatRange(QLatin1String letters, ECharFormat flag, unsigned char &format)
{
    const QString open = openTag(letters);
    const QString close = closeTag(letters);
    if (!m_text.contains(open) && !m_text.contains(close))
        return;
    Rewriter line(m_text, m_formats);
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

void LineMarkup::applyFonts(unsigned char &font)
{
    QByteArray fonts(m_formats.size(), static_cast<char>(font));
    Rewriter line(m_text, m_formats);
    QVector<Switch> switches;
    int end = -1;
    int next = -1;
    for (int tag = line.find(QLatin1Char('<'), 0); tag >= 0; tag = next) {
        next = line.find(QLatin1Char('<'), tag + 1);
        if (tag + 1 >= line.size() || line.at(tag + 1) != QLatin1Char('F'))
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
    fonts.truncate(m_formats.size());
    forEachStretch(
        switches, fonts.size(), [&fonts](int begin, int stretchEnd, unsigned char value) {
            std::fill(fonts.begin() + begin, fonts.begin() + stretchEnd, static_cast<char>(value));
        });
    m_fonts = fonts;
    if (!fonts.isEmpty())
        font = static_cast<unsigned char>(fonts.back());
}

void LineMarkup::trimFormats()
{
    if (m_formats.size() > m_text.size())
        m_formats.chop(1);
}

void LineMarkup::addMargin(int blanks)
{
    if (blanks < 1)
        return;
    const int count = qMin(blanks, longestPaddedLine);
    m_text.prepend(QString(count, QLatin1Char(' ')));
    m_formats.prepend(QByteArray(count, '\0'));
    m_fonts.prepend(QByteArray(count, '\0'));
}
