#include "generator.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>
#include <QUuid>
#include <cmath>
#include <iterator>
#include <limits>

namespace {

/// A client's type, whose text is the client's code.
struct Weight
{
    int grams = 0;
};

/// A client's type without a text.
struct Nameless
{
    int number = 0;
};

}  // namespace

Q_DECLARE_METATYPE(Weight)
Q_DECLARE_METATYPE(Nameless)

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

// "%1" is the number of an item; some shapes are on more lines than others.
const char *const receiptLines[] = {
    "<NAME%1> <QTY%1,0.000> x <PRICE%1,0.00>[ -<DISC%1,0.00>]<S><SUM%1,0.00>",
    "<NAME%1> <QTY%1,0.000> x <PRICE%1,0.00>[ -<DISC%1,0.00>]<S><SUM%1,0.00>",
    "<NAME%1><S><PRICE%1*QTY%1-DISC%1,0.00>",
    "[<QTY%1> <NAME%1><S><QTY%1*PRICE%1,0.00>]",
    "[<NAME%1>[ (<QTY%1,0>)]]<S><PRICE%1,0.00>",
    "[[<QTY%1>]x[<PRICE%1>]]",
    "[a [b [c <DISC%1>] d] e] <NAME%1>",
    "[a<NAME%1> <DISC%1>]            <PRICE%1>[ <SUM%1>]",
    "<NAME%1>]<QTY%1>[ <DISC%1>",
    "[<B:>Discount<:B> <DISC%1>]",
    "[<DISC%1>]",
    "[<DISC%1> <GONE%1>]",
    "Sum <SUM%1+DISC%1,0000.0> <GONE%1+1>",
    "<sqrt(QTY%1)+abs PRICE%1,000>",
    "<QTY%1^2*-PRICE%1,0.E><S><-DISC%1>",
    "<QTY%1/DISC%1><S><1/0,0.00>",
    "<2*(QTY%1+1.5e1)-pi,0.00000>",
    "<QTY%1 % 3> <log10(PRICE%1)> <ncr(QTY%1,2)>",
    "<QTY%1*тариф%1,0.00><S><Имя %1>",
    "<тариф%1,0.00> <qty%1> <Qty%1>",
    "<C><NAME%1>",
    "<R><NAME%1> <SUM%1>",
    "<C><NAME%1><S><SUM%1>",
    "<L1><NAME%1>",
    "<B><NAME%1><S><SUM%1,0.00>",
    "<U><NAME%1>",
    "<H2><W2><NAME%1>",
    "<LS3><NAME%1> <QTY%1>",
    "<F2><NAME%1>",
    "<F3><NAME%1> <B:><SUM%1><:B>",
    "<B:><NAME%1><:B> <U:><QTY%1,00><:U>",
    "<B:><NAME%1> goes on",
    "<NAME%1><:B>",
    "<F2><C><Z><NAME%1><F1>",
    "<NAME%1>\t<PRICE%1>",
    "\t<NAME%1>",
    "<NAME%1><S>",
    "<NAME%1><S><S><PRICE%1>",
    "<NAME%1><65><PRICE%1>",
    "<#1><NAME%1><#60>B<#62>",
    "<1><NAME%1>",
    "< NAME%1> <NAME%1 > <NAME%1, 0.00> <QTY%1,>",
    "<<NAME%1>> <NA<QTY%1>ME>",
    "<,0.00><NAME%1>",
    "<QTY%1,0,00> <QTY%1,0.00,> <SUM%1,0.00 >",
    "<DATE%1> <DATE%1,dd.mm.yyyy hh:nn> <DATE%1,0.00>",
    "<NAME%1>&<QTY%1>&amp;<b>bold</b>",
    "\uFDD0<NAME%1>\uFDD1",
    "--------------------------------",
    "",
    " ",
    "plain text",
    "Чек № <DOCNO>",
    "<DOCNO,000000> <docno>",
    "<ENTRIES>",
    "a <ENTRIES> b",
    "<entries>",
    "[<ENTRIES><DISC%1>]",
    "<C><ENTRIES>",
    "<SPECSYMBOLS=shop>",
    "a<SPECSYMBOLS=none>b <NAME%1>",
    "<X><NAME%1>",
    "<X:><NAME%1><:X>",
    "<I><NAME%1></I>",
    "<QR><NAME%1>",
    "<NAME%1><QR>code <QTY%1>",
    "<FISCAL_BODY>",
};
const char *const wrongCharacters[] = {"<", ">",  "[", "]", ",",  ":",      "\t",
                                       " ", "\n", "%", "=", "\\", "\u0001", "\u0301",
                                       "Ж", "-",  "1", "S", "B",  "0",      "."};
// "%1" is the number of an item.
const char *const receiptNames[] = {"NAME%1", "QTY%1",   "PRICE%1", "DISC%1",
                                    "SUM%1",  "тариф%1", "Имя %1",  "DATE%1"};
// Those that could stand elsewhere in an expression, and those that are tags as well.
const char *const oddNames[] = {
    "",     "E",     "e",     "1",   "2",      "1.5",         "QTY",    "TY1",    "sqrt", "s",
    "abs",  "pi",    "log10", "QT",  "PRICE1", "QTY1*PRICE1", "NAME1 ", " NAME1", "a0",   "a1",
    "x",    "<",     "-",     "+",   "B",      "B:",          "S",      "C",      "X",    "I",
    "QR",   "LS3",   "F2",    "65",  "#1",     "ENTRIES",     "DOCNO",  "docno",  "NAME", "qty1",
    "Qty1", "тариф", "И",     "SUM", "0.00",   "QTY1*тариф1", ",",      "\uFDD0", "(",    ")",
    "GONE", "ONE1",  "1e",    "ncr", "DISC",   "-DISC1",      "5e1",    "n",      "f",    "in"};
// Tags in them name what has none in its turn, so that no value leads back to itself.
const char *const receiptTexts[] = {
    "Tea to go",
    "Чай чёрный",
    "Straße",
    "ﬁsh",
    "İi",
    "12.50",
    "7,5",
    "-3,25",
    "0",
    "0,00",
    "0.0",
    "00",
    "-0",
    "-0.0",
    "-0,00",
    "+5",
    " 12",
    "12 ",
    "1e3",
    "0x1F",
    "1.2.3",
    "1,2,3",
    ".5",
    "5.",
    ",",
    ".",
    "-",
    "nan",
    "inf",
    "NaN",
    "true",
    "a<b",
    "a>b",
    "<b>",
    "<PLAIN>",
    "[<NONE>]",
    "[x]",
    "a]b",
    "a[b",
    "a\tb",
    "a\nb",
    "<X>",
    "<X:>a",
    "<:X>",
    "<I>a</I>",
    "<S>",
    "<C>a",
    "<65>",
    "\u0001",
    "\u0007",
    "=",
    "a=b",
    "😀",
    "\u0301",
    "\u00A0",
    "  ",
    "\uFDD0",
    "12345678901234567890",
    "99999999999.99",
    "0.005",
    "2.675",
    "1000000,5",
    "",
};
const char *const copyMarks[] = {"<C>КОПИЯ",  "<B:>COPY<:B><S>x",
                                 "plain",     "<NAME1> copy",
                                 "<ENTRIES>", "<SPECSYMBOLS=shop>",
                                 "<X>",       "a\nb",
                                 "[<DISC1>]", "<B:>COPY"};

}  // namespace

Generator::Generator(unsigned seed, Kind kind, unsigned number)
{
    std::seed_seq sequence{seed, static_cast<unsigned>(kind), number};
    m_engine.seed(sequence);
    static const bool hasText = QMetaType::registerConverter<Weight, QString>(
        [](const Weight &weight) { return QString::number(weight.grams) + QLatin1String(" g<X"); });
    Q_UNUSED(hasText)
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

QString Generator::receiptLine()
{
    if (oneIn(8))
        return templateLine();
    QString line = oneOf(receiptLines).replace(QLatin1String("%1"), QString::number(1 + below(4)));
    // A line beyond all that is usual, and one beyond what buffers have at first.
    if (oneIn(60))
        line = line.repeated(oneIn(8) ? 200 : 2 + below(8));
    return oneIn(8) ? withAWrongCharacter(line) : line;
}

QString Generator::withAWrongCharacter(QString line)
{
    const int place = below(line.size() + 1);
    switch (below(3)) {
        case 0:
            return line.insert(place, oneOf(wrongCharacters));
        case 1:
            return line.remove(place, 1);
        default:
            return line.replace(place, 1, oneOf(wrongCharacters));
    }
}

double Generator::oddNumber()
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double oddNumbers[] = {0.0,       -0.0,   infinity,   -infinity,   std::nan(""),
                                 1e300,     1e-300, 5e-324,     1e15,        1e16 + 2,
                                 -1e19,     0.005,  1.005,      -0.004,      2.5,
                                 0.1 + 0.2, 1e-7,   123456.789, 4294967296.5};
    return oddNumbers[below(static_cast<int>(std::size(oddNumbers)))];
}

QVariant Generator::oddValue()
{
    switch (below(26)) {
        case 0:
            return QVariant();
        case 1:
            return QString();
        case 2:
            return below(100000);
        case 3:
            return QVariant(static_cast<uint>(below(10)) * 429496729U);
        case 4:
            return QVariant(std::numeric_limits<qlonglong>::min() + below(3));
        case 5:
            return QVariant(std::numeric_limits<qulonglong>::max() - static_cast<uint>(below(3)));
        case 6:
            return QVariant(static_cast<float>(below(1000)) / 7.0F);
        case 7:
            return QVariant::fromValue(static_cast<short>(below(100) - 50));
        case 8:
            return QVariant::fromValue(static_cast<char>('0' + below(64)));
        case 9:
            return QVariant::fromValue(static_cast<unsigned char>(below(200)));
        case 10:
            return QChar(static_cast<ushort>('0' + below(80)));
        case 11:
            return oneOf(receiptTexts).toUtf8();
        case 12:
            return oneIn(2) ? QStringList{oneOf(receiptTexts)}
                            : QStringList{oneOf(receiptTexts), oneOf(receiptTexts)};
        case 13:
            return QVariantList{mixedNumber(), oneOf(receiptTexts)};
        case 14:
            return QVariantMap{{oneOf(receiptTexts), mixedNumber()}};
        case 15:
            return QVariant::fromValue(Weight{below(1000)});
        case 16:
            return QVariant::fromValue(Nameless{below(1000)});
        case 17:
            return QUrl(QLatin1String("https://example.org/?a=") + oneOf(receiptTexts));
        case 18:
            return QJsonValue(oddNumber());
        case 19:
            return QJsonObject{{QStringLiteral("a"), 1}};
        case 20:
            return oneIn(2) ? QDate() : QDate(-4 + below(9999), 1 + below(12), 1 + below(28));
        case 21:
            return oneIn(2) ? QTime() : QTime(below(24), below(60), below(60), below(1000));
        case 22:
            return oneIn(2) ? QDateTime()
                            : QDateTime(QDate(2026, 3, 29), QTime(below(24), 30), Qt::UTC);
        case 23:
            return QVariant(QVariant::Double);
        case 24:
            return QVariant(oneIn(2) ? QVariant::Int : QVariant::Date);
        default:
            return QUuid();
    }
}

QVariant Generator::receiptValue()
{
    switch (below(8)) {
        case 0:
            return oddValue();
        case 1:
            return oneIn(3) ? oddNumber() : 0.0;
        case 2:
            return oneOf(receiptTexts);
        case 3:
            return oneIn(2) ? value() : QVariant(oneIn(2));
        case 4:
            return QString::number(below(100000)) + QLatin1Char(',') + QString::number(below(100));
        default:
            return mixedNumber();
    }
}

QMap<QString, QVariant> Generator::receiptAttributes()
{
    QMap<QString, QVariant> attributes;
    const bool isPlain = oneIn(2);
    for (int item = 1; item <= 4; ++item) {
        for (const char *const key : receiptNames) {
            if (!oneIn(12))
                attributes.insert(QString::fromUtf8(key).arg(item),
                                  isPlain ? mixedNumber() : receiptValue());
        }
        if (isPlain)
            attributes.insert(QStringLiteral("NAME%1").arg(item), word());
    }
    attributes.insert(QStringLiteral("DOCNO"), oneIn(8) ? receiptValue() : QVariant(below(1000)));
    for (int count = oneIn(3) ? below(4) : 0; count > 0; --count)
        attributes.insert(oneOf(oddNames), oneIn(8) ? QVariant(oneIn(2)) : mixedNumber());
    attributes.insert(QStringLiteral("PLAIN"), mixedNumber());
    attributes.insert(QStringLiteral("NONE"), 0);
    // Many more than the template asks for, in front of its names and behind them.
    for (int count = oneIn(6) ? below(600) : 0; count > 0; --count)
        attributes.insert(QLatin1String(oneIn(2) ? "ZZ" : "AA") + QString::number(count), count);
    return attributes;
}

QString Generator::receiptEntries()
{
    QStringList list;
    for (int count = below(6); count > 0; --count)
        list.append(oneOf(receiptTexts) + (oneIn(6) ? QString() : QStringLiteral("=")) +
                    (oneIn(3) ? oneOf(receiptTexts) : mixedNumber().toString()));
    return list.join(QLatin1Char('\t'));
}

TemplateCase Generator::receiptCase()
{
    TemplateCase result;
    // One in eight is long enough to be known from its first use on.
    for (int count = oneIn(8) ? 60 + below(20) : 1 + below(10); count > 0; --count)
        result.lines.append(receiptLine());
    result.document.setAttributes(receiptAttributes());
    result.document.setEntries(receiptEntries());
    result.document.setIsCopy(oneIn(3));
    if (oneIn(2))
        result.copyMark = oneOf(copyMarks);
    result.leftMargin = oneIn(3) ? below(24) - 2 : 0;
    result.width = oneIn(8) ? below(4) - 1 : 20 + below(80);
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
