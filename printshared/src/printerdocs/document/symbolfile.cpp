#include "printerdocs/document/symbolfile_p.h"

#include <QTextCodec>
#include <QVector>
#include <QXmlStreamReader>
#include <algorithm>

namespace symbolfile {

namespace {

/// Unicode by the mark or the zeros at the beginning, as the reader finds it.
QByteArray encodingByStart(const QByteArray &content)
{
    struct Start
    {
        const char *hex;
        const char *encoding;
    };
    constexpr Start starts[] = {
        {"0000feff", "UTF-32"},   {"fffe0000", "UTF-32"}, {"3c000000", "UTF-32LE"},
        {"0000003c", "UTF-32BE"}, {"feff", "UTF-16"},     {"fffe", "UTF-16"},
        {"3c00", "UTF-16LE"},     {"003c", "UTF-16BE"},
    };
    const auto *const found = std::find_if(
        std::begin(starts), std::end(starts),
        [&](const Start &start) { return content.startsWith(QByteArray::fromHex(start.hex)); });
    return found == std::end(starts) ? QByteArray("UTF-8") : QByteArray(found->encoding);
}

/// What the XML declaration names; null if there is none.
QByteArray namedEncoding(const QByteArray &content)
{
    // The reader knows no longer one: four bytes for each character.
    QXmlStreamReader reader(content.left(4 * mostOpenCharacters));
    reader.readNext();
    return reader.documentEncoding().toLatin1();
}

/// The text in UTF-8, whatever its encoding.
QByteArray utf8Of(const QByteArray &content, const QByteArray &named)
{
    constexpr int mibOfUtf8 = 106;
    const QTextCodec *const codec =
        QTextCodec::codecForName(named.isEmpty() ? encodingByStart(content) : named);
    if (codec == nullptr || codec->mibEnum() == mibOfUtf8)
        return content;
    return codec->toUnicode(content).toUtf8();
}

/// Goes over a text as its reader will. What isn't XML stops the reader, so that all behind it may
/// be taken for anything.
class Scan
{
public:
    explicit Scan(const QByteArray &text) : m_text(text) {}

    QString refusal()
    {
        for (m_at = m_text.indexOf('<'); m_at >= 0; m_at = m_text.indexOf('<', m_at)) {
            if (!skipSpan() && !skipDocumentType())
                takeTag();
            if (!m_refusal.isEmpty())
                break;
        }
        return m_refusal;
    }

private:
    bool isAt(const char *mark) const
    {
        return qstrncmp(m_text.constData() + m_at, mark, qstrlen(mark)) == 0;
    }

    /// Behind the next mark, or at the end.
    int behind(const char *mark, int from) const
    {
        const int found = m_text.indexOf(mark, from);
        return found < 0 ? m_text.size() : found + int(qstrlen(mark));
    }

    /// Comments, CDATA and instructions, which may hold anything.
    bool skipSpan()
    {
        struct Span
        {
            const char *begin;
            const char *end;
        };
        static constexpr Span spans[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
        for (const Span &span : spans) {
            if (isAt(span.begin)) {
                checkDeclaration();
                m_at = behind(span.end, m_at + int(qstrlen(span.begin)));
                return true;
            }
        }
        return false;
    }

    /// Behind a longer XML declaration the text could be of an encoding that nobody looked for.
    void checkDeclaration()
    {
        if (isAt("<?xml") && behind("?>", m_at) - m_at > mostOpenCharacters)
            refuse(m_at, "an XML declaration of more than 1024 characters");
    }

    bool skipDocumentType()
    {
        if (!isAt("<!"))
            return false;
        const int begin = m_at;
        m_at += 2;
        for (int depth = 0; m_at < m_text.size();) {
            const char byte = m_text.at(m_at);
            if (isAt("<!ENTITY") || isAt("<!ATTLIST")) {
                refuse(begin, "a document type declaration with entities or attribute lists");
                return true;
            }
            if (byte == '<' && skipSpan())
                continue;
            ++m_at;
            if (byte == '"' || byte == '\'')
                m_at = behind(byte == '"' ? "\"" : "'", m_at);
            else if (byte == '[' || byte == ']')
                depth += byte == '[' ? 1 : -1;
            else if (byte == '>' && depth == 0)
                break;
        }
        return true;
    }

    /// The end of a tag, behind its ">"; a "<" ends it too, as the reader stops there.
    int endOfTag() const
    {
        char quote = '\0';
        int at = m_at + 1;
        for (; at < m_text.size(); ++at) {
            const char byte = m_text.at(at);
            if (byte == '<')
                return at;
            if (quote != '\0')
                quote = byte == quote ? '\0' : quote;
            else if (byte == '"' || byte == '\'')
                quote = byte;
            else if (byte == '>')
                return at + 1;
        }
        return at;
    }

    void takeTag()
    {
        const int end = endOfTag();
        if (isAt("</")) {
            if (!m_open.isEmpty())
                m_openCharacters -= m_open.takeLast();
        } else {
            const int length = end - m_at;
            if (m_openCharacters + length > mostOpenCharacters)
                refuse(m_at, "start tags of more than 1024 characters in one another");
            if (end < 2 || m_text.at(end - 2) != '/') {
                m_open.append(length);
                m_openCharacters += length;
            }
        }
        m_at = end;
    }

    void refuse(int at, const char *reason)
    {
        const int line = m_text.left(at).count('\n') + 1;
        m_refusal = QStringLiteral("line %1: %2").arg(line).arg(QLatin1String(reason));
    }

    const QByteArray m_text;
    int m_at = 0;
    QVector<int> m_open;  // characters of each start tag whose element is open
    int m_openCharacters = 0;
    QString m_refusal;
};

}  // namespace

QString refusal(const QByteArray &content)
{
    if (content.size() > mostBytes)
        return QStringLiteral("the file has more than %1 bytes").arg(mostBytes);
    const QByteArray named = namedEncoding(content);
    const QByteArray text = utf8Of(content, named);
    // The reader changes to the named encoding after as many characters as the declaration has:
    // in another one it would go on elsewhere.
    if (!named.isEmpty() && !text.startsWith("<?xml") && !text.startsWith("\xEF\xBB\xBF<?xml"))
        return QStringLiteral("line 1: an XML declaration in another encoding than it names");
    return Scan(text).refusal();
}

}  // namespace symbolfile
