#include "printerdocs/bbcode/bbcodetext_p.h"

#include <QLatin1Char>
#include <QLatin1String>
#include <QStringView>
#include <algorithm>

namespace bbcodetext {

namespace {

constexpr QLatin1Char lineEnd('\n');
constexpr QChar leftQuote(0x00AB);
constexpr QChar rightQuote(0x00BB);
const QLatin1String lineEndsToDrop[] = {QLatin1String("\n"), QLatin1String(" \n"),
                                        QLatin1String("\t\n"), QLatin1String("  \n")};

/// What a character is printed as; null: as it is. Intended: other quotation marks and dashes stay
/// (test quotesAndDashesBecomeAscii).
QChar asciiFor(QChar character)
{
    switch (character.unicode()) {
        case '\r':
            return lineEnd;
        case leftQuote.unicode():
        case rightQuote.unicode():
            return QLatin1Char('"');
        case 0x2013:
        case 0x2014:  // dashes
            return QLatin1Char('-');
        default:
            return QChar();
    }
}

int missingIn(QStringView line, int width)
{
    return width - static_cast<int>(line.size());
}

void appendBlanks(QString *target, int count)
{
    target->resize(target->size() + count, QLatin1Char(' '));
}

void appendPadded(QString *target, QStringView line, int width, ETextAlignment align)
{
    const int missing = qMax(0, missingIn(line, width));
    int before = 0;
    if (align == AlignRight)
        before = missing;
    else if (align == AlignCenter)
        before = missing / 2;
    appendBlanks(target, before);
    target->append(line.data(), static_cast<int>(line.size()));
    appendBlanks(target, missing - before);
}

/// Every line in order, an empty one and the one behind the last line end too.
template <class Visit>
void forEachLine(QStringView text, Visit visit)
{
    qsizetype end = text.indexOf(lineEnd);
    while (end >= 0) {
        visit(text.left(end));
        text = text.mid(end + 1);
        end = text.indexOf(lineEnd);
    }
    visit(text);
}

}  // namespace

QString withoutBrokenSurrogates(QString text)
{
    if (text.isValidUtf16())
        return text;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
        else if (text.at(i).isSurrogate())
            text[i] = QLatin1Char('?');
    }
    return text;
}

QString normalized(const QString &text)
{
    const auto isForeign = [](QChar c) { return !asciiFor(c).isNull(); };
    const auto first = std::find_if(text.cbegin(), text.cend(), isForeign);
    if (first == text.cend())
        return text;
    QString result;
    result.reserve(text.size());
    result.append(text.constData(), static_cast<int>(first - text.cbegin()));
    for (auto c = first; c != text.cend(); ++c) {
        const bool endsWithNextCharacter =
            *c == QLatin1Char('\r') && c + 1 != text.cend() && *(c + 1) == lineEnd;
        if (endsWithNextCharacter)
            continue;
        const QChar ascii = asciiFor(*c);
        result += ascii.isNull() ? *c : ascii;
    }
    return result;
}

QString zeroFilled(const QString &text, int digits)
{
    QString number = QString::number(text.toLongLong());
    const QString sign = number.startsWith(QLatin1Char('-')) ? QStringLiteral("-") : QString();
    number.remove(0, sign.size());
    return sign + number.rightJustified(digits, QLatin1Char('0'));
}

qint64 blanksToPad(const QString &text, int width)
{
    return qMax(0, width - text.size());
}

QString padded(const QString &text, int width, ETextAlignment align)
{
    QString result;
    appendPadded(&result, QStringView(text), width, align);
    return result;
}

qint64 blanksToPadLines(const QString &text, int width)
{
    qint64 blanks = 0;
    forEachLine(text, [&](QStringView line) { blanks += qMax(0, missingIn(line, width)); });
    return blanks;
}

QString paddedLines(const QString &text, int width, ETextAlignment align)
{
    QString result;
    result.reserve(static_cast<int>(text.size() + blanksToPadLines(text, width)));
    bool isFirst = true;
    forEachLine(text, [&](QStringView line) {
        if (!isFirst)
            result += lineEnd;
        isFirst = false;
        appendPadded(&result, line, width, align);
    });
    return result;
}

QStringView withoutLeadingLineEnd(QStringView text)
{
    for (const QLatin1String start : lineEndsToDrop) {
        if (text.startsWith(start))
            return text.mid(start.size());
    }
    return text;
}

bool needsBlankBetween(const QString &before, const QString &after)
{
    return !before.isEmpty() && !before.back().isSpace() && !after.isEmpty() &&
           !after.front().isSpace();
}

}  // namespace bbcodetext
