#include "generator.h"

#include <QDateTime>

namespace differential {

namespace {

const char *const words[] = {"a",      "Tea to go", " ",      "12.50", "-",     ":",     "Total",
                             "Привет", "ß",         "ﬁ",      "😀",     "0",     "1",     "x=1",
                             "a\tb",   "a\nb",      "  ",     "%",     "\"q\"", "&amp;", "ЖЁ",
                             "=",      "\u0301",    "\u00A0", "É",     "<",     ">",     "<>"};
const char *const names[] = {"SHOP", "DOCNO", "NAME1", "QTY1",  "PRICE1", "QTY2", "PRICE2",
                             "ZERO", "EMPTY", "SUM",   "Тариф", "name",   "DATE", "TIME",
                             "WHEN", "FLAG",  "AA",    "AAB",   "MISSING"};
// Their values may hold tags, which name others, so that no value leads back to itself.
const char *const namesOfTags[] = {"TAGS", "GROUP"};
const char *const formats[] = {"0.00",       "0",     "000",   "0.0",        "0.E",
                               "0.",         ".00",   "abc",   "dd.mm.yyyy", "dd.mm.yyyy hh:nn",
                               "hh:nn",      "0.000", "00.00", "0.00000",    "-0.00",
                               "0.00000000", "",      "5",     "0.000000000"};
const char *const markup[] = {
    "<C>",   "<R>",   "<S>",   "<L1>",  "<B>",   "<Z>",    "<N>",  "<U>",  "<H2>",  "<W2>",
    "<B:>",  "<:B>",  "<Z:>",  "<:Z>",  "<N:>",  "<:N>",   "<U:>", "<:U>", "<H2:>", "<:H2>",
    "<W2:>", "<:W2>", "<LS0>", "<LS3>", "<LS7>", "<LS8>",  "<:>",  "<65>", "<#1>",  "<#65>",
    "<#60>", "<#62>", "<300>", "<F1>",  "<F2>",  "<F4>",   "<F5>", "<F9>", "<F0>",  "<1x>",
    "<X>",   "<QR>",  "[",     "]",     "<L>",   "<<B>B>", "<:",   "<S",   ":>"};
const char *const spans[] = {"<X:>",      "<:X>",        "<I>",           "</I>",
                             "<X:>a<:X>", "<I>logo</I>", "<<X:>a<:X>X:>", "<<I>a</I>I>"};
const char *const keywords[] = {"<ENTRIES>",     "<entries>",          "<DOCNO>",
                                "<docno>",       "<FISCAL_BODY>",      "<FISCAL_QR>",
                                "<fiscal_body>", "<SPECSYMBOLS=shop>", "<SPECSYMBOLS=none>",
                                "<DOCNO,000000>"};
const char *const functions[] = {"sqrt", "abs", "floor", "ceil", "exp", "ln",    "log", "sin",
                                 "cos",  "pow", "ncr",   "npr",  "fac", "atan2", "pi",  "e"};
const char *const operators[] = {"+", "-", "*", "/", "^", "%", ",", " + ", "*-", "--"};
const char *const numbers[] = {"0",   "1",    "2",   "3.5",  "10",    "0.1",        ".5",    "1e3",
                               "1e9", "0x1F", "007", "1e-9", "12345", "4294967296", "1e400", "."};
const char *const bbTags[] = {"[b]",
                              "[/b]",
                              "[i]",
                              "[/i]",
                              "[u]",
                              "[/u]",
                              "[center]",
                              "[/center]",
                              "[right]",
                              "[/right]",
                              "[left]",
                              "[/left]",
                              "[size=2]",
                              "[size 1]",
                              "[/size]",
                              "[hr]",
                              "[hr size=3]",
                              "[/hr]",
                              "[hr=2]",
                              "[img name=logo]",
                              "[img name=none]",
                              "[/img]",
                              "[column width=8]",
                              "[column width=6 align=right]",
                              "[/column]",
                              "[barcode]",
                              "[/barcode]",
                              "[barcode type=7]",
                              "[qrcode]",
                              "[/qrcode]",
                              "[qrcode size=4]",
                              "[field width=10 align=right]",
                              "[field width=6 zerofill=1]",
                              "[/field]",
                              "[",
                              "]",
                              "[/]",
                              "[x y=1]",
                              "[b",
                              "[/b",
                              "[B]",
                              "[ b ]",
                              "[img name=*o*]"};

}  // namespace

Generator::Generator(unsigned seed, Kind kind, unsigned number)
{
    std::seed_seq sequence{seed, static_cast<unsigned>(kind), number};
    m_engine.seed(sequence);
}

// The distributions of the standard library differ by implementation.
int Generator::below(int limit)
{
    return static_cast<int>(m_engine() % static_cast<unsigned>(limit));
}

QString Generator::word()
{
    return oneOf(words);
}

QString Generator::name()
{
    return oneOf(names);
}

QString Generator::format()
{
    return oneOf(formats);
}

QString Generator::templateExpression(int depth)
{
    switch (below(depth > 0 ? 6 : 3)) {
        case 0:
            return oneOf(numbers);
        case 1:
        case 2:
            return name();
        case 3:
            return QLatin1Char('(') + templateExpression(depth - 1) + QLatin1Char(')');
        case 4:
            return oneOf(functions) + QLatin1Char('(') + templateExpression(depth - 1) +
                   QLatin1Char(')');
        default:
            return templateExpression(depth - 1) + oneOf(operators) + templateExpression(depth - 1);
    }
}

QString Generator::attributeTag()
{
    QString inner = oneIn(3) ? templateExpression(2) : name();
    if (oneIn(2))
        inner += QLatin1Char(',') + format();
    return QLatin1Char('<') + inner + QLatin1Char('>');
}

QString Generator::group(int depth)
{
    QString text(QLatin1Char('['));
    for (int count = 1 + below(3); count > 0; --count)
        text += depth > 0 && oneIn(4) ? group(depth - 1) : oneIn(2) ? attributeTag() : word();
    return text + QLatin1Char(']');
}

QString Generator::templateLine()
{
    QString line;
    for (int count = below(7); count > 0; --count) {
        switch (below(12)) {
            case 0:
            case 1:
            case 2:
                line += attributeTag();
                break;
            case 3:
            case 4:
                line += oneOf(markup);
                break;
            case 5:
                line += group(2);
                break;
            case 6:
                line += oneIn(3) ? oneOf(spans) : oneOf(markup);
                break;
            case 7:
                line += oneIn(4) ? oneOf(keywords)
                                 : QLatin1Char('<') + oneOf(namesOfTags) + QLatin1Char('>');
                break;
            default:
                line += word();
                break;
        }
    }
    return line;
}

/// A line as receipts have it: the same shape with other names.
QString Generator::itemLine(int number)
{
    const QString index = QString::number(1 + number % 2);
    return QStringLiteral("[<QTY%1> <NAME%1><S><QTY%1*PRICE%1,0.00>]").arg(index);
}

QVariant Generator::mixedNumber()
{
    switch (below(6)) {
        case 0:
            return below(100) - 20;
        case 1:
            return QVariant(static_cast<qlonglong>(below(100000)) * 100003);
        case 2:
            return (below(20000) - 5000) / 100.0;
        case 3:
            return QString::number(below(100000) / 100.0, 'f', 2);
        case 4:
            return QString::number(below(100000) / 100.0, 'f', 2)
                .replace(QLatin1Char('.'), QLatin1Char(','));
        default:
            return QString::number(below(4));
    }
}

QVariant Generator::value()
{
    switch (below(14)) {
        case 0:
            return QString();
        case 1:
            return QDate(2026, 1 + below(12), 1 + below(28));
        case 2:
            return QTime(below(24), below(60));
        case 3:
            return QDateTime(QDate(2026, 5, 1 + below(28)), QTime(below(24), below(60)), Qt::UTC);
        case 4:
            return oneIn(2);
        case 5:
        case 6:
            return oneIn(3) ? oneOf(markup) : mixedNumber();
        case 7:
            return oneOf(numbers);
        case 8:
        case 9:
            return word();
        default:
            return mixedNumber();
    }
}

QString Generator::entries()
{
    QStringList list;
    for (int count = below(4); count > 0; --count)
        list.append(word() + QLatin1Char('=') + mixedNumber().toString());
    return list.join(QLatin1Char('\t'));
}

TemplateCase Generator::templateCase()
{
    TemplateCase result;
    for (int count = 1 + below(8); count > 0; --count)
        result.lines.append(oneIn(4) ? itemLine(count) : templateLine());
    QMap<QString, QVariant> attributes;
    for (const char *const key : names) {
        if (!oneIn(5) && qstrcmp(key, "MISSING") != 0)
            attributes.insert(QString::fromUtf8(key), value());
    }
    for (const char *const key : namesOfTags)
        attributes.insert(QString::fromUtf8(key), oneIn(2) ? group(1) : attributeTag());
    result.document.setAttributes(attributes);
    result.document.setEntries(entries());
    result.document.setIsCopy(oneIn(4));
    result.leftMargin = oneIn(3) ? below(4) : 0;
    result.width = oneIn(8) ? below(4) : 20 + below(40);
    result.charactersMode = oneIn(4) ? 1 + below(2) : 0;
    result.rightAlign = oneIn(2);
    return result;
}

BbcodeCase Generator::bbcodeCase()
{
    BbcodeCase result;
    for (int count = below(24); count > 0; --count)
        result.text += oneIn(2) ? oneOf(bbTags) : word();
    result.symbolsPerLine = static_cast<unsigned char>(oneIn(6) ? below(256) : 20 + below(40));
    return result;
}

QByteArray Generator::operand(int depth)
{
    switch (below(depth > 0 ? 7 : 2)) {
        case 0:
        case 1:
            return oneOf(numbers).toUtf8();
        case 2:
            return '(' + operand(depth - 1) + ')';
        case 3:
            return '-' + operand(depth - 1);
        case 4:
            return (oneOf(functions) + QLatin1Char(' ')).toUtf8() + operand(depth - 1);
        case 5:
            return oneOf(functions).toUtf8() + '(' + operand(depth - 1) + ',' + operand(depth - 1) +
                   ')';
        default:
            return operand(depth - 1) + oneOf(operators).toUtf8() + operand(depth - 1);
    }
}

QByteArray Generator::expression()
{
    QByteArray text = operand(4);
    // One in eight is broken somewhere.
    if (oneIn(8) && !text.isEmpty())
        text.remove(below(text.size()), 1);
    return text;
}

}  // namespace differential
