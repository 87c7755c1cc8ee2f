#include "receipt/sale.h"

#include <QMap>
#include <QStringList>
#include <QVariant>
#include <cmath>
#include <iterator>
#include <random>

namespace {

using receipt::Item;
using receipt::Sale;

constexpr int groupCycle = 10;
constexpr double centsPerUnit = 100;
constexpr double shareOfDiscount = 0.1;

const char *const goods[] = {
    "Чай чёрный",   "Хлеб ржаной", "Apples, red", "Butter 82 %",  "Café crème",
    "Tea, 25 bags", "Müsli 500 g", "Молоко 1 л",  "Coffee 250 g", "Rice basmati",
    "Orange juice", "Сыр",         "Tomatoes",    "Salt",         "Olive oil 0,5",
};

/// Draws numbers that are the same with every standard library.
class Draw
{
public:
    explicit Draw(unsigned number) : m_engine(20260314 + number) {}
    int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }

private:
    std::minstd_rand m_engine;
};

double cents(int number)
{
    return number / centsPerUnit;
}

double rounded(double amount)
{
    return std::round(amount * centsPerUnit) / centsPerUnit;
}

/// Weights go in steps of 100 g and their prices in steps of 10 cents: products are whole cents.
Item drawItem(int index, Draw &draw)
{
    Item item;
    item.name = QString::fromUtf8(goods[draw.below(static_cast<int>(std::size(goods)))]);
    item.nameUtf8 = item.name.toStdString();
    const bool isWeighed = draw.below(4) == 0;
    item.quantity = isWeighed ? (1 + draw.below(30)) / 10.0 : 1 + draw.below(9);
    item.price = cents(200 + 10 * draw.below(900) + (isWeighed ? 0 : draw.below(10)));
    if (receipt::hasDiscountGroup(index) && index % groupCycle != groupCycle - 2)
        item.discount = rounded(item.quantity * item.price * shareOfDiscount);
    item.sum = rounded(item.quantity * item.price - item.discount);
    return item;
}

void addTotals(Sale &sale)
{
    constexpr double note = 50;
    constexpr double shareOfTax = 5;  // 25 % on the net amount
    for (const Item &item : sale.items) {
        sale.discount += item.discount;
        sale.total += item.sum;
    }
    sale.discount = rounded(sale.discount);
    sale.total = rounded(sale.total);
    sale.gross = rounded(sale.total + sale.discount);
    sale.tax = rounded(sale.total / shareOfTax);
    sale.net = rounded(sale.total - sale.tax);
    sale.paid = std::ceil(sale.total / note) * note;
    sale.change = rounded(sale.paid - sale.total);
}

/// Everything of the sale but its items.
QMap<QString, QVariant> commonAttributes(const Sale &sale)
{
    return {{"SHOP", sale.shop},       {"ADDRESS", sale.address}, {"TAXNO", sale.taxNumber},
            {"CASHIER", sale.cashier}, {"FOOTER", sale.footer},   {"RECEIPT", sale.number},
            {"TILL", sale.till},       {"SALETIME", sale.time},   {"GROSS", sale.gross},
            {"REBATE", sale.discount}, {"TOTAL", sale.total},     {"TAX25", sale.tax},
            {"NET25", sale.net},       {"PAID", sale.paid},       {"CHANGE", sale.change}};
}

const char *const header =
    "<C><B><SHOP>\n"
    "<C><ADDRESS>\n"
    "<C>Tax number <TAXNO>\n"
    "Receipt <RECEIPT,000000><S><SALETIME,dd.mm.yyyy hh:nn>\n"
    "Cashier <CASHIER><S>Till <TILL,00>\n"
    "------------------------------------------\n";

const char *const totals =
    "------------------------------------------\n"
    "Goods<S><GROSS,0.00>\n"
    "[Discounts<S>-<REBATE,0.00>]\n"
    "<B>TOTAL<S><TOTAL,0.00>\n"
    "VAT 25 %<S><TAX25,0.00>\n"
    "Net of VAT<S><NET25,0.00>\n"
    "Cash<S><PAID,0.00>\n"
    "Change<S><CHANGE,0.00>\n"
    "------------------------------------------\n"
    "<C><FOOTER>";

const char *const calculatedTotals =
    "------------------------------------------\n"
    "Goods<S><TOTAL+REBATE,0.00>\n"
    "[Discounts<S>-<REBATE,0.00>]\n"
    "<B>TOTAL<S><GROSS-REBATE,0.00>\n"
    "VAT 25 %<S><TOTAL*25/125,0.00>\n"
    "Net of VAT<S><TOTAL-TAX25,0.00>\n"
    "Cash<S><PAID,0.00>\n"
    "Change<S><PAID-TOTAL,0.00>\n"
    "------------------------------------------\n"
    "<C><FOOTER>";

/// The template with one line for each item, in which every "#" is the item's number.
QString templateOf(const Sale &sale, const QString &sum, const char *tail)
{
    const QString line = "<NAME#> <QTY#,0.000> x <PRICE#,0.00>%1<S>" + sum + "\n";
    const QString group = "[ -<DISC#,0.00>]";
    QString text = header;
    for (int i = 0; i < static_cast<int>(sale.items.size()); ++i) {
        text += QString(line)
                    .replace("%1", receipt::hasDiscountGroup(i) ? group : QString())
                    .replace('#', QString::number(i));
    }
    return text + tail;
}

QString entryOf(const Item &item, int index)
{
    QString entry = item.name + ' ' + QString::number(item.quantity, 'f', 3) + " x " +
                    QString::number(item.price, 'f', 2);
    if (receipt::hasDiscountGroup(index) && item.discount > 0)
        entry += " -" + QString::number(item.discount, 'f', 2);
    return entry + '=' + QString::number(item.sum, 'f', 2);
}

}  // namespace

Sale receipt::makeSale(int items, unsigned number)
{
    Sale sale;
    sale.shop = QStringLiteral("Harbour Market");
    sale.address = QStringLiteral("12 Quay Street, Old Town");
    sale.taxNumber = QStringLiteral("GB 123 4567 89");
    sale.cashier = QStringLiteral("Анна Петрова");
    sale.footer = QStringLiteral("Thank you for your visit!");
    sale.number = 4711;
    sale.till = 3;
    sale.time = QDateTime(QDate(2026, 3, 14), QTime(18, 5));
    Draw draw(number);
    for (int i = 0; i < items; ++i)
        sale.items.push_back(drawItem(i, draw));
    addTotals(sale);
    return sale;
}

bool receipt::hasDiscountGroup(int index)
{
    const int place = index % groupCycle;
    return place == 2 || place == 5 || place == 8;
}

PrinterDocument receipt::indexedDocument(const Sale &sale)
{
    QMap<QString, QVariant> attributes = commonAttributes(sale);
    for (size_t i = 0; i < sale.items.size(); ++i) {
        const QString number = QString::number(i);
        const Item &item = sale.items[i];
        attributes.insert("NAME" + number, item.name);
        attributes.insert("QTY" + number, item.quantity);
        attributes.insert("PRICE" + number, item.price);
        attributes.insert("DISC" + number, item.discount);
        attributes.insert("SUM" + number, item.sum);
    }
    PrinterDocument document;
    document.setAttributes(attributes);
    return document;
}

PrinterDocument receipt::mixedDocument(const Sale &sale)
{
    PrinterDocument document = indexedDocument(sale);
    QMap<QString, QVariant> attributes = document.attributes();
    attributes["RECEIPT"] = static_cast<qlonglong>(sale.number);
    for (size_t i = 0; i < sale.items.size(); ++i) {
        const QString number = QString::number(i);
        const Item &item = sale.items[i];
        const bool isWhole = item.quantity == std::floor(item.quantity);
        attributes["PRICE" + number] = QString::number(item.price, 'f', 2);
        if (i % 2 == 0)
            attributes["SUM" + number] = QString::number(item.sum, 'f', 2).replace('.', ',');
        if (!isWhole)
            attributes["QTY" + number] = QString::number(item.quantity, 'f', 1).replace('.', ',');
    }
    document.setAttributes(attributes);
    return document;
}

QString receipt::indexedTemplate(const Sale &sale)
{
    return templateOf(sale, "<SUM#,0.00>", totals);
}

QString receipt::expressionTemplate(const Sale &sale)
{
    return templateOf(sale, "<QTY#*PRICE#-DISC#,0.00>", calculatedTotals);
}

PrinterDocument receipt::entriesDocument(const Sale &sale)
{
    QStringList entries;
    for (size_t i = 0; i < sale.items.size(); ++i)
        entries += entryOf(sale.items[i], static_cast<int>(i));
    PrinterDocument document;
    document.setAttributes(commonAttributes(sale));
    document.setEntries(entries.join('\t'));
    return document;
}

QString receipt::entriesTemplate()
{
    return QString(header) + "<ENTRIES>\n" + totals;
}

QByteArray receipt::utf8Of(const QStringList &lines)
{
    return (lines.join('\n') + '\n').toUtf8();
}

QByteArray receipt::utf8Of(const QString &text)
{
    return text.toUtf8();
}

QByteArray receipt::utf8Of(const std::string &text)
{
    return QByteArray::fromStdString(text);
}
