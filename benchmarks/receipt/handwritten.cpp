#include "receipt/handwritten.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "printerdocs/echarformat.h"
#include "printerdocs/etextalignment.h"

namespace {

using receipt::Item;
using receipt::Sale;

constexpr QLatin1Char blank(' ');

void pad(QString &text, int count)
{
    text.resize(text.size() + count);
    std::fill(text.end() - count, text.end(), blank);
}

QString digits(int value, int width)
{
    return QString::number(value).rightJustified(width, QLatin1Char('0'));
}

QString amount(double value)
{
    return QString::number(value, 'f', 2);
}

/// One line of the receipt, at the end of a text.
class Line
{
public:
    explicit Line(QString &text) : m_text(text), m_begin(text.size()) {}

    /// Formats don't show in a text.
    void setBold() {}
    void centre(const QString &what)
    {
        pad(m_text, (receipt::columns - what.size()) / 2);
        m_text += what;
    }
    void rule()
    {
        m_text.resize(m_begin + receipt::columns);
        std::fill(m_text.begin() + m_begin, m_text.end(), QLatin1Char('-'));
    }
    template <typename Text>
    void add(const Text &what)
    {
        m_text += what;
    }
    void toRight(const QString &what)
    {
        pad(m_text, std::max(receipt::columns - (m_text.size() - m_begin) - what.size(), 1));
        m_text += what;
    }

private:
    QString &m_text;
    const int m_begin;
};

/// One line of a block: its text isn't laid out.
class BlockLine
{
public:
    void setBold() { m_format = CharBold; }
    void centre(const QString &what)
    {
        m_text = what;
        m_alignment = AlignCenter;
    }
    void rule() { m_text = QString(receipt::columns, QLatin1Char('-')); }
    template <typename Text>
    void add(const Text &what)
    {
        m_text += what;
    }
    void toRight(const QString &what)
    {
        m_text += QLatin1Char('\t');
        m_text += what;
        m_alignment = AlignJustify;
    }
    const QString &text() const { return m_text; }
    char format() const { return m_format; }
    ETextAlignment alignment() const { return m_alignment; }

private:
    QString m_text;
    char m_format = 0;
    ETextAlignment m_alignment = AlignLeft;
};

/// The lines in one text, each with a line feed behind it.
class OneText
{
public:
    explicit OneText(int lines) { m_text.reserve(lines * (receipt::columns + 1)); }
    template <typename Print>
    void line(const Print &print)
    {
        Line line(m_text);
        print(line);
        m_text += QLatin1Char('\n');
    }
    QString result() const { return m_text; }

private:
    QString m_text;
};

class ListOfLines
{
public:
    explicit ListOfLines(int lines) { m_lines.reserve(lines); }
    template <typename Print>
    void line(const Print &print)
    {
        QString text;
        text.reserve(receipt::columns);
        Line line(text);
        print(line);
        m_lines.append(text);
    }
    QStringList result() const { return m_lines; }

private:
    QStringList m_lines;
};

/// The blocks of a document as JSON, made of what Qt has for it.
class JsonOfBlocks
{
public:
    explicit JsonOfBlocks(int) {}
    template <typename Print>
    void line(const Print &print)
    {
        BlockLine line;
        print(line);
        if (line.alignment() != m_alignment)
            closeBlock();
        m_alignment = line.alignment();
        m_text.append(line.text());
        m_formats.append(base64Of(line, line.format()));
        m_fonts.append(base64Of(line, '\0'));
        m_spacings.append(0);
    }
    QByteArray result()
    {
        closeBlock();
        const QJsonObject document{{QStringLiteral("blocks"), m_blocks},
                                   {QStringLiteral("pta"), 0},
                                   {QStringLiteral("cta"), 9},
                                   {QStringLiteral("loop"), 0},
                                   {QStringLiteral("init"), true}};
        return QJsonDocument(document).toJson(QJsonDocument::Compact);
    }

private:
    static QString base64Of(const BlockLine &line, char byte)
    {
        return QString::fromLatin1(QByteArray(line.text().size(), byte).toBase64());
    }
    void closeBlock()
    {
        if (m_text.isEmpty())
            return;
        m_blocks.append(QJsonObject{{QStringLiteral("type"), 0},
                                    {QStringLiteral("txt"), m_text},
                                    {QStringLiteral("fmt"), m_formats},
                                    {QStringLiteral("fnt"), m_fonts},
                                    {QStringLiteral("align"), m_alignment},
                                    {QStringLiteral("ls"), m_spacings}});
        m_text = m_formats = m_fonts = m_spacings = QJsonArray();
    }

    QJsonArray m_blocks;
    // The lines of the block that is being gathered.
    QJsonArray m_text;
    QJsonArray m_formats;
    QJsonArray m_fonts;
    QJsonArray m_spacings;
    ETextAlignment m_alignment = AlignLeft;
};

template <typename Out>
void printHeader(const Sale &sale, Out &out)
{
    out.line([&](auto &line) {
        line.setBold();
        line.centre(sale.shop);
    });
    out.line([&](auto &line) { line.centre(sale.address); });
    out.line([&](auto &line) { line.centre(QLatin1String("Tax number ") + sale.taxNumber); });
    out.line([&](auto &line) {
        line.add(QLatin1String("Receipt "));
        line.add(digits(sale.number, 6));
        line.toRight(sale.time.toString(QStringLiteral("dd.MM.yyyy hh:mm")));
    });
    out.line([&](auto &line) {
        line.add(QLatin1String("Cashier "));
        line.add(sale.cashier);
        line.toRight(QLatin1String("Till ") + digits(sale.till, 2));
    });
    out.line([](auto &line) { line.rule(); });
}

template <typename AnyLine>
void printItem(const Item &item, bool hasDiscountGroup, AnyLine &line)
{
    line.add(item.name);
    line.add(blank);
    line.add(QString::number(item.quantity, 'f', 3));
    line.add(QLatin1String(" x "));
    line.add(amount(item.price));
    if (hasDiscountGroup && item.discount > 0) {
        line.add(QLatin1String(" -"));
        line.add(amount(item.discount));
    }
    line.toRight(amount(item.sum));
}

template <typename Out>
void printTotals(const Sale &sale, Out &out)
{
    const auto total = [&out](QLatin1String name, const QString &value, bool isBold = false) {
        out.line([&](auto &line) {
            if (isBold)
                line.setBold();
            line.add(name);
            line.toRight(value);
        });
    };
    out.line([](auto &line) { line.rule(); });
    total(QLatin1String("Goods"), amount(sale.gross));
    if (sale.discount > 0)
        total(QLatin1String("Discounts"), amount(-sale.discount));
    total(QLatin1String("TOTAL"), amount(sale.total), true);
    total(QLatin1String("VAT 25 %"), amount(sale.tax));
    total(QLatin1String("Net of VAT"), amount(sale.net));
    total(QLatin1String("Cash"), amount(sale.paid));
    total(QLatin1String("Change"), amount(sale.change));
    out.line([](auto &line) { line.rule(); });
    out.line([&](auto &line) { line.centre(sale.footer); });
}

template <typename Out, typename ItemAt>
auto printed(const Sale &sale, int items, const ItemAt &itemAt)
{
    constexpr int otherLines = 16;
    Out out(items + otherLines);
    printHeader(sale, out);
    for (int i = 0; i < items; ++i)
        out.line([&](auto &line) { printItem(itemAt(i), receipt::hasDiscountGroup(i), line); });
    printTotals(sale, out);
    return out.result();
}

using Attributes = QMap<QString, QVariant>;

double numberIn(const Attributes &attributes, const QString &name)
{
    const QVariant &value = *attributes.constFind(name);
    return value.type() == QVariant::String ? value.toString().replace(',', '.').toDouble()
                                            : value.toDouble();
}

QString textIn(const Attributes &attributes, const QString &name)
{
    return attributes.constFind(name)->toString();
}

/// Everything of the sale but its items.
Sale saleWithoutItems(const Attributes &attributes)
{
    Sale sale;
    sale.shop = textIn(attributes, QStringLiteral("SHOP"));
    sale.address = textIn(attributes, QStringLiteral("ADDRESS"));
    sale.taxNumber = textIn(attributes, QStringLiteral("TAXNO"));
    sale.cashier = textIn(attributes, QStringLiteral("CASHIER"));
    sale.footer = textIn(attributes, QStringLiteral("FOOTER"));
    sale.number = attributes.constFind(QStringLiteral("RECEIPT"))->toInt();
    sale.till = attributes.constFind(QStringLiteral("TILL"))->toInt();
    sale.time = attributes.constFind(QStringLiteral("SALETIME"))->toDateTime();
    sale.gross = numberIn(attributes, QStringLiteral("GROSS"));
    sale.discount = numberIn(attributes, QStringLiteral("REBATE"));
    sale.total = numberIn(attributes, QStringLiteral("TOTAL"));
    sale.tax = numberIn(attributes, QStringLiteral("TAX25"));
    sale.net = numberIn(attributes, QStringLiteral("NET25"));
    sale.paid = numberIn(attributes, QStringLiteral("PAID"));
    sale.change = numberIn(attributes, QStringLiteral("CHANGE"));
    return sale;
}

Item itemIn(const Attributes &attributes, int index)
{
    const QString number = QString::number(index);
    Item item;
    item.name = textIn(attributes, QLatin1String("NAME") + number);
    item.quantity = numberIn(attributes, QLatin1String("QTY") + number);
    item.price = numberIn(attributes, QLatin1String("PRICE") + number);
    item.sum = numberIn(attributes, QLatin1String("SUM") + number);
    if (receipt::hasDiscountGroup(index))
        item.discount = numberIn(attributes, QLatin1String("DISC") + number);
    return item;
}

}  // namespace

QString receipt::byHandFromSale(const Sale &sale)
{
    const auto itemAt = [&sale](int i) -> const Item & { return sale.items[i]; };
    return printed<OneText>(sale, static_cast<int>(sale.items.size()), itemAt);
}

QByteArray receipt::jsonByHandFromSale(const Sale &sale)
{
    const auto itemAt = [&sale](int i) -> const Item & { return sale.items[i]; };
    return printed<JsonOfBlocks>(sale, static_cast<int>(sale.items.size()), itemAt);
}

QStringList receipt::byHandFromMap(const Attributes &attributes, int items)
{
    const auto itemAt = [&attributes](int i) { return itemIn(attributes, i); };
    return printed<ListOfLines>(saleWithoutItems(attributes), items, itemAt);
}
