#include "markup.h"

#include <algorithm>

#include "printerdocs/template/templatetags_p.h"
#include "tags.h"

namespace templatelint {

namespace {

constexpr int lowByte = 0xFF;

/// Cuts parts out of a text, or puts one character in their place.
class Rewriting
{
public:
    explicit Rewriting(Text &text) : m_text(text), m_size(text.size()) {}
    ~Rewriting() { finish(); }
    Rewriting(const Rewriting &) = delete;
    Rewriting &operator=(const Rewriting &) = delete;

    void keepUpTo(int end)
    {
        if (m_written == m_read) {
            m_written = m_read = end;
            return;
        }
        while (m_read < end)
            put(m_text.characters.at(m_read), m_text.origins.at(m_read), 1);
    }
    /// Puts a character in the place of so many.
    void put(QChar character, int origin, int count)
    {
        m_text.characters[m_written] = character;
        m_text.origins[m_written] = origin;
        ++m_written;
        m_read += count;
    }
    void drop(int count) { m_read += count; }

private:
    void finish()
    {
        keepUpTo(m_size);
        m_text.truncate(m_written);
    }

    Text &m_text;
    const int m_size;
    int m_read = 0;
    int m_written = 0;
};

/// A line's text beside the number of bytes that the library has for it, which decides whether a
/// whole-line tag acts.
class TagTaker
{
public:
    explicit TagTaker(const Text &line) : m_text(line), m_bytes(line.size()) {}

    bool replace(QLatin1String tag, QLatin1String left = QLatin1String())
    {
        int hit = m_text.characters.indexOf(tag);
        if (hit < 0)
            return false;
        Rewriting rewriting(m_text);
        for (int next = hit; hit >= 0; hit = next) {
            m_bytes -= qBound(0, m_bytes - hit, tag.size() - left.size());
            next = m_text.characters.indexOf(tag, hit + tag.size());
            const int origin = Text::standIn(Text::offsetOf(m_text.origins.at(hit)));
            rewriting.keepUpTo(hit);
            if (left.size() == 0)
                rewriting.drop(tag.size());
            else
                rewriting.put(left.front(), origin, tag.size());
        }
        return true;
    }
    /// The row of the step whose tags were taken out; null: none was there.
    const templates::PlainTag *takeFirst(const templates::PlainTagRange &tags)
    {
        const auto *const taken = std::find_if(
            tags.begin(), tags.end(),
            [this](const templates::PlainTag &tag) { return replace(tag.text, tag.left); });
        return taken != tags.end() ? taken : nullptr;
    }
    void takeEach(const templates::PlainTagRange &tags)
    {
        for (const templates::PlainTag &tag : tags)
            replace(tag.text, tag.left);
    }
    void wrap(const templates::FormatTag &tag)
    {
        if (m_text.isEmpty() || m_bytes != m_text.size())
            return;
        Text wrapped;
        wrapped.append(tag.open, Text::nowhere);
        wrapped.append(m_text);
        wrapped.append(tag.close, Text::nowhere);
        m_text = wrapped;
        m_bytes = m_text.size();
    }
    const Text &text() const { return m_text; }

private:
    Text m_text;
    int m_bytes;
};

/// The places of a tag in a text, asked for from front to back.
class Hits
{
public:
    Hits(const QString &text, const QString &tag) : m_text(text), m_tag(tag) {}
    bool isAt(int place, int from)
    {
        if (m_hit < from && m_hit != none)
            m_hit = m_text.indexOf(m_tag, from);
        if (m_hit < 0)
            m_hit = none;
        return m_hit == place;
    }
    int size() const { return m_tag.size(); }

private:
    static constexpr int none = std::numeric_limits<int>::max();
    const QString m_text;
    const QString m_tag;
    int m_hit = -1;
};

}  // namespace

Markup::Markup() : m_formatter(0, nullptr)
{
    m_openTags.fill(Text::nowhere);
}

Printed Markup::print(const Text &line)
{
    Printed printed;
    printed.text = withoutTags(line, printed);
    const DocumentBlock block =
        m_formatter.formatPrintStr(line.characters, m_format, m_font, m_alignment, 0);
    printed.formats = block.format().value(0);
    printed.fonts = block.font().value(0);
    // The library is right about what is printed.
    if (block.text().value(0) != printed.text.characters) {
        printed.isTraced = false;
        printed.text = Text();
        printed.text.append(block.text().value(0), Text::standIn(line.firstOffset()));
    }
    return printed;
}

QVector<int> Markup::openFormats() const
{
    QVector<int> offsets;
    std::copy_if(m_openTags.cbegin(), m_openTags.cend(), std::back_inserter(offsets),
                 [](int offset) { return offset != Text::nowhere; });
    return offsets;
}

Text Markup::withoutTags(const Text &line, Printed &printed)
{
    using templates::MarkupStep;
    TagTaker taker(line);
    const auto *const alignment = taker.takeFirst(templates::plainTagsOf<MarkupStep::Align>);
    printed.hasTab = alignment != nullptr && alignment->text == templates::tabTag;
    taker.takeEach(templates::plainTagsOf<MarkupStep::TakeObsolete>);
    for (const templates::FormatTag &tag : templates::wholeLineOrder) {
        const int begin = taker.text().characters.indexOf(tag.wholeLine);
        if (begin < 0)
            continue;
        printed.wholeLineTags.insert(innerOf(tag.wholeLine),
                                     Text::offsetOf(taker.text().origins.at(begin)));
        taker.replace(tag.wholeLine);
        taker.wrap(tag);
    }
    taker.takeFirst(templates::plainTagsOf<MarkupStep::SetSpacing>);
    taker.replace(QLatin1String("["));
    taker.replace(QLatin1String("]"));
    taker.takeEach(templates::plainTagsOf<MarkupStep::TakeEmpty>);
    Text text = taker.text();
    placeCodes(text);
    for (int format = 0; format < static_cast<int>(m_openTags.size()); ++format)
        switchFormat(text, format);
    takeFonts(text);
    return text;
}

void Markup::placeCodes(Text &text)
{
    const Text line = text;
    Rewriting rewriting(text);
    int end = -1;
    int from = 0;
    while (true) {
        const int begin = line.characters.indexOf(QLatin1Char('<'), from);
        if (begin >= 0 && end < begin)
            end = line.characters.indexOf(QLatin1Char('>'), begin);
        if (begin < 0 || end < 0)
            return;
        from = begin + 1;
        const QChar first = line.characters.at(begin + 1);
        const bool isPlain = first == templates::plainCodeSign;
        if (!isPlain && !first.isDigit())
            continue;
        const QString inner = line.characters.mid(begin + 1, end - begin - 1);
        bool isNumber = false;
        const int number = inner.midRef(isPlain ? 1 : 0).toInt(&isNumber);
        if (!isNumber && line.isOnePiece(begin, end + 1))
            m_badCodes.append({line.origins.at(begin), inner});
        rewriting.keepUpTo(begin);
        rewriting.put(QChar(number & lowByte),
                      Text::standIn(Text::offsetOf(line.origins.at(begin))), end + 1 - begin);
        from = end + 1;
    }
}

void Markup::switchFormat(Text &text, int format)
{
    const QString openName = templates::rangeOrder[format].open;
    const QString closeName = templates::rangeOrder[format].close;
    if (!text.characters.contains(openName) && !text.characters.contains(closeName))
        return;
    Hits open(text.characters, openName);
    Hits close(text.characters, closeName);
    const int size = text.size();
    const QVector<int> origins = text.origins;
    int &openTag = m_openTags.at(static_cast<std::size_t>(format));
    Rewriting rewriting(text);
    for (int place = 0, from = 0; place < size; ++place) {
        rewriting.keepUpTo(place);
        if (open.isAt(place, from)) {
            if (openTag == Text::nowhere)
                openTag = Text::offsetOf(origins.at(place));
            rewriting.drop(open.size());
            place = from = place + open.size();
        }
        if (close.isAt(place, from)) {
            openTag = Text::nowhere;
            rewriting.drop(close.size());
            place = from = place + close.size();
        }
    }
}

void Markup::takeFonts(Text &text)
{
    const QString line = text.characters;
    Rewriting rewriting(text);
    int end = -1;
    int next = -1;
    for (int begin = line.indexOf(templates::fontTag); begin >= 0; begin = next) {
        next = line.indexOf(templates::fontTag, begin + 1);
        if (end < begin)
            end = line.indexOf(QLatin1Char('>'), begin);
        if (end < 0)
            return;
        if ((next >= 0 && next < end) || line.midRef(begin + 2, end - begin - 2).toInt() < 1)
            continue;
        rewriting.keepUpTo(begin);
        rewriting.drop(end + 1 - begin);
    }
}

}  // namespace templatelint
