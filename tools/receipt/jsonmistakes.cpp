#include "jsonmistakes.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <cctype>
#include <cstring>
#include <vector>

namespace tool {

namespace {

// Who has made more of them by a program wants no list.
constexpr int mostLosses = 10;
constexpr int longestShownWord = 30;
constexpr const char *byteOrderMark = "\xEF\xBB\xBF";

/// What word processors make of a double quote.
constexpr const char *typographicQuotes[] = {
    "\xE2\x80\x9C", "\xE2\x80\x9D", "\xE2\x80\x9E", "\xC2\xAB", "\xC2\xBB",
};

bool isOneOf(char character, const char *characters)
{
    return character != '\0' && std::strchr(characters, character) != nullptr;
}

bool isDigit(char character)
{
    return std::isdigit(static_cast<unsigned char>(character)) != 0;
}

/// Reads a JSON text from token to token, and keeps in mind what is wrong. A token that is wrong by
/// itself doesn't end that, as QJsonDocument takes some.
class JsonScanner
{
public:
    explicit JsonScanner(const QByteArray &text) : m_text(text) { scan(); }

    const std::optional<JsonMistake> &mistake() const { return m_mistake; }
    const QVector<JsonMistake> &losses() const { return m_losses; }

private:
    /// What may stand next. Where something may be the first, the end may stand as well.
    enum class Expected { FirstKey, Key, Colon, FirstValue, Value, CommaOrEnd };

    struct Token
    {
        int start = 0;
        int end = 0;
    };

    struct Container
    {
        bool isObject = false;
        int start = 0;
        QHash<QString, int> keys;  ///< with their places
    };

    void scan();
    void skipBlanks();
    void scanToken();
    bool lacksSeparator(char first);
    bool lacksKey(char first);
    bool lacksValue(char first);
    bool isQuoteOfOthers();
    void scanMark(char mark);
    void close(char mark);
    void scanText();
    void scanEscape();
    void scanWord();
    void checkWord(const QString &word);
    void addKey();
    void checkEnd();

    bool isDecimalComma() const;
    char at(int offset) const { return offset < m_text.size() ? m_text.at(offset) : '\0'; }
    int lineOf(int offset) const { return m_text.left(offset).count('\n') + 1; }
    QString shownWord(int offset) const;
    QString textOf(const Token &token) const
    {
        return QString::fromUtf8(m_text.mid(token.start, token.end - token.start));
    }
    void note(int offset, const QString &what);
    void noteInText(int offset, const QString &what);
    void lose(int offset, const QString &what);
    void stop(int offset, const QString &what);

    const QByteArray &m_text;
    int m_next = 0;
    Token m_last;   ///< of all tokens
    Token m_value;  ///< of texts and words
    QString m_key;
    bool m_isStopped = false;
    Expected m_expected = Expected::Value;
    std::vector<Container> m_containers;
    std::optional<JsonMistake> m_mistake;
    std::optional<JsonMistake> m_mistakeInText;  ///< in the text that is the last token
    QVector<JsonMistake> m_losses;
};

void JsonScanner::scan()
{
    if (m_text.startsWith(byteOrderMark))
        m_next = static_cast<int>(std::strlen(byteOrderMark));
    skipBlanks();
    if (m_next == m_text.size())
        return stop(0, QStringLiteral("there is nothing in it; JSON begins with \"{\""));
    if (!isOneOf(at(m_next), "{[/#"))
        return stop(m_next, QStringLiteral("this is no JSON, which begins with \"{\""));
    while (!m_isStopped && m_next < m_text.size()) {
        scanToken();
        skipBlanks();
    }
    if (!m_isStopped)
        checkEnd();
}

void JsonScanner::skipBlanks()
{
    while (isOneOf(at(m_next), " \t\r\n"))
        ++m_next;
}

void JsonScanner::scanToken()
{
    const char first = at(m_next);
    if (first == '/' || first == '#')
        return stop(m_next, QStringLiteral("JSON has no comments"));
    if (m_containers.empty() && m_last.end > 0)
        return stop(
            m_next,
            QStringLiteral("\"%1\" stands behind the end of the JSON text").arg(shownWord(m_next)));
    if (lacksSeparator(first) || isQuoteOfOthers() || lacksKey(first) || lacksValue(first))
        return;
    m_mistakeInText.reset();
    m_last.start = m_next;
    if (isOneOf(first, "{}[],:"))
        scanMark(first);
    else if (first == '"')
        scanText();
    else
        scanWord();
    m_last.end = m_next;
}

/// Whether a comma or a colon has to be in front of what stands next.
bool JsonScanner::lacksSeparator(char first)
{
    if (m_expected == Expected::Colon && first != ':') {
        stop(m_last.end, QStringLiteral("a colon is missing behind the name \"%1\"").arg(m_key));
        return true;
    }
    if (m_expected != Expected::CommaOrEnd || isOneOf(first, "}],"))
        return false;
    const int line = lineOf(m_last.end);
    stop(m_last.end,
         lineOf(m_next) > line
             ? QStringLiteral("a comma is missing behind line %1").arg(line)
             : QStringLiteral("a comma is missing in front of \"%1\"").arg(shownWord(m_next)));
    return true;
}

/// Whether something else stands where a name ought to.
bool JsonScanner::lacksKey(char first)
{
    const bool isFirst = m_expected == Expected::FirstKey;
    if ((m_expected != Expected::Key && !isFirst) || first == '"' || (first == '}' && isFirst))
        return false;
    if (first == '}')
        stop(m_last.start, QStringLiteral("this comma is one too many: \"}\" follows"));
    else if (isDecimalComma())
        stop(m_value.start, QStringLiteral("a number has a decimal point, not a comma: write %1.%2")
                                .arg(textOf(m_value), shownWord(m_next)));
    else if (isOneOf(first, "{[]:,"))
        stop(m_next, QStringLiteral("a name in double quotes is expected in place of \"%1\"")
                         .arg(QLatin1Char(first)));
    else
        stop(m_next,
             QStringLiteral("a name stands in double quotes: write \"%1\"").arg(shownWord(m_next)));
    return true;
}

/// Whether something else stands where a value ought to.
bool JsonScanner::lacksValue(char first)
{
    const bool isFirst = m_expected == Expected::FirstValue;
    if ((m_expected != Expected::Value && !isFirst) || !isOneOf(first, "}],:") ||
        (first == ']' && isFirst))
        return false;
    if (at(m_last.start) == ',' && first != ',')
        stop(m_last.start,
             QStringLiteral("this comma is one too many: \"%1\" follows").arg(QLatin1Char(first)));
    else if (at(m_last.start) == ':')
        stop(m_last.end, QStringLiteral("the value of \"%1\" is missing").arg(m_key));
    else
        stop(m_next,
             QStringLiteral("a value is missing in front of \"%1\"").arg(QLatin1Char(first)));
    return true;
}

/// "12,50" for a number: digits, a comma, and digits without a blank.
bool JsonScanner::isDecimalComma() const
{
    return isDigit(at(m_next)) && m_next == m_last.end && at(m_last.start) == ',' &&
           m_value.end == m_last.start && isDigit(at(m_value.end - 1));
}

bool JsonScanner::isQuoteOfOthers()
{
    if (at(m_next) == '\'') {
        stop(m_next, QStringLiteral("names and texts stand in double quotes, not in single ones"));
        return true;
    }
    const QByteArray here =
        QByteArray::fromRawData(m_text.constData() + m_next, m_text.size() - m_next);
    for (const char *quote : typographicQuotes) {
        if (!here.startsWith(quote))
            continue;
        stop(m_next,
             QStringLiteral("%1 isn't the double quote of JSON").arg(QString::fromUtf8(quote)));
        return true;
    }
    return false;
}

void JsonScanner::scanMark(char mark)
{
    const bool isObject = mark == '{';
    const bool isInObject = !m_containers.empty() && m_containers.back().isObject;
    if (isObject || mark == '[') {
        m_containers.push_back({isObject, m_next, {}});
        m_expected = isObject ? Expected::FirstKey : Expected::FirstValue;
    } else if (mark == '}' || mark == ']') {
        close(mark);
    } else if (mark == ',') {
        m_expected = isInObject ? Expected::Key : Expected::Value;
    } else {
        m_expected = Expected::Value;
    }
    ++m_next;
}

void JsonScanner::close(char mark)
{
    const Container &container = m_containers.back();
    if (container.isObject != (mark == '}'))
        return stop(m_next, QStringLiteral("\"%1\" is expected, as line %2 has \"%3\"")
                                .arg(QLatin1Char(container.isObject ? '}' : ']'))
                                .arg(lineOf(container.start))
                                .arg(QLatin1Char(container.isObject ? '{' : '[')));
    m_containers.pop_back();
    m_expected = Expected::CommaOrEnd;
}

/// QJsonDocument takes a text of several lines. The end of one was missing only where what follows
/// makes no sense, and so it is with backslashes.
void JsonScanner::scanText()
{
    m_value.start = m_next++;
    while (m_next < m_text.size() && at(m_next) != '"') {
        if (at(m_next) == '\n')
            noteInText(
                m_value.start,
                QStringLiteral("the double quote that ends this text is missing on its line"));
        if (at(m_next) == '\\')
            scanEscape();
        ++m_next;
    }
    if (m_next >= m_text.size())
        return stop(m_value.start,
                    QStringLiteral("the double quote that ends this text is missing"));
    ++m_next;
    m_value.end = m_next;
    if (m_expected == Expected::Key || m_expected == Expected::FirstKey)
        addKey();
    else
        m_expected = Expected::CommaOrEnd;
}

void JsonScanner::scanEscape()
{
    const int start = m_next++;
    if (isOneOf(at(m_next), "\"\\/bfnrtu"))
        return;
    const QString what = QStringLiteral("a backslash in a text is written \\\\");
    noteInText(start, what);
    lose(start, what);
}

void JsonScanner::addKey()
{
    m_key = textOf({m_value.start + 1, m_value.end - 1});
    if (m_key.contains(QLatin1Char('\\'))) {
        const QByteArray array = '[' + m_text.mid(m_value.start, m_value.end - m_value.start) + ']';
        m_key = QJsonDocument::fromJson(array).array().at(0).toString(m_key);
    }
    QHash<QString, int> &keys = m_containers.back().keys;
    const auto known = keys.constFind(m_key);
    if (known == keys.constEnd())
        keys.insert(m_key, m_value.start);
    else
        lose(m_value.start, QStringLiteral("the name \"%1\" stands on line %2 already")
                                .arg(m_key)
                                .arg(lineOf(*known)));
    m_expected = Expected::Colon;
}

void JsonScanner::scanWord()
{
    m_value.start = m_next;
    while (m_next < m_text.size() && !isOneOf(at(m_next), " \t\r\n{}[],:\""))
        ++m_next;
    m_value.end = m_next;
    checkWord(textOf(m_value));
    m_expected = Expected::CommaOrEnd;
}

void JsonScanner::checkWord(const QString &word)
{
    static const QRegularExpression number(
        QStringLiteral("^-?(0|[1-9][0-9]*)([.][0-9]+)?([eE][-+]?[0-9]+)?$"));
    static const QRegularExpression digits(QStringLiteral("^[-+]?[.]?[0-9][0-9.,]*$"));
    static const QStringList words{QStringLiteral("true"), QStringLiteral("false"),
                                   QStringLiteral("null")};
    if (words.contains(word) || number.match(word).hasMatch())
        return;
    if (digits.match(word).hasMatch())
        note(m_value.start,
             QStringLiteral("%1 is no number of JSON; write it as a text: \"%1\"").arg(word));
    else
        note(m_value.start, words.contains(word.toLower())
                                ? QStringLiteral("%1 is written %2").arg(word, word.toLower())
                                : QStringLiteral("a text stands in double quotes: write \"%1\"")
                                      .arg(shownWord(m_value.start)));
}

void JsonScanner::checkEnd()
{
    if (m_containers.empty())
        return;
    const Container &container = m_containers.back();
    stop(m_last.end, QStringLiteral("\"%1\" is missing at the end, as line %2 has \"%3\"")
                         .arg(QLatin1Char(container.isObject ? '}' : ']'))
                         .arg(lineOf(container.start))
                         .arg(QLatin1Char(container.isObject ? '{' : '[')));
}

/// What stands there, up to a blank or a mark, and without the quotes of a text.
QString JsonScanner::shownWord(int offset) const
{
    const bool isText = at(offset) == '"';
    const int start = isText ? offset + 1 : offset;
    int end = start;
    while (end < m_text.size() && !isOneOf(at(end), isText ? "\"\n" : " \t\r\n{}[],:\""))
        ++end;
    const QString word = textOf({start, qMax(end, isText ? end : start + 1)});
    return word.size() <= longestShownWord ? word
                                           : word.left(longestShownWord) + QStringLiteral("...");
}

void JsonScanner::note(int offset, const QString &what)
{
    if (!m_mistake)
        m_mistake = JsonMistake{offset, what};
}

void JsonScanner::noteInText(int offset, const QString &what)
{
    if (!m_mistakeInText)
        m_mistakeInText = JsonMistake{offset, what};
}

void JsonScanner::lose(int offset, const QString &what)
{
    if (m_losses.size() < mostLosses)
        m_losses.append({offset, what});
}

void JsonScanner::stop(int offset, const QString &what)
{
    if (m_mistakeInText)
        note(m_mistakeInText->offset, m_mistakeInText->what);
    else
        note(offset, what);
    m_isStopped = true;
}

}  // namespace

std::optional<JsonMistake> jsonMistakeIn(const QByteArray &text)
{
    return JsonScanner(text).mistake();
}

QVector<JsonMistake> lossesIn(const QByteArray &text)
{
    return JsonScanner(text).losses();
}

}  // namespace tool
