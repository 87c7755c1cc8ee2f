#pragma once

#include <QDateTime>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include "printerdocs/printerdocument.h"
#include "randomlines.h"

/// Receipts of shops, put together at random, with the text that the shop wants on paper. That text
/// is worked out in whole hundredths and shares nothing with the library.
class ReceiptModel
{
public:
    explicit ReceiptModel(unsigned seed) : m_random(seed) {}

    QStringList lines;
    QStringList expected;  ///< of the lines that print; what stands in columns is apart by a blank
    QMap<QString, QVariant> attributes;
    QStringList entries;
    bool isCopy = false;

    void add(const QString &line, const QString &text)
    {
        lines.append(line);
        expected.append(text);
    }
    void addUnprinted(const QString &line) { lines.append(line); }
    void set(const QString &name, const QVariant &value) { attributes.insert(name, value); }

    int below(int limit) { return m_random.below(limit); }
    bool oneIn(int count) { return below(count) == 0; }
    QString oneOf(const QStringList &texts) { return texts.at(below(texts.size())); }
    QString digits(int count)
    {
        QString text;
        while (text.size() < count)
            text += QChar('0' + below(10));
        return text;
    }

    static QString amount(qint64 hundredths)
    {
        return QString("%1%2.%3")
            .arg(hundredths < 0 ? "-" : "")
            .arg(qAbs(hundredths) / 100)
            .arg(qAbs(hundredths) % 100, 2, 10, QChar('0'));
    }

    /// A whole receipt. What is put into it later stands in front of its last line.
    void make()
    {
        addHead();
        if (oneIn(3))
            addEntries();
        else
            addItems();
        addTotal();
        addTail();
    }
    void makeOfEntries()
    {
        addHead();
        addEntries();
        addTotal();
        addTail();
    }

    PrinterDocument document() const
    {
        PrinterDocument result;
        result.setAttributes(attributes);
        result.setEntries(entries.join('\t'));
        result.setIsCopy(isCopy);
        return result;
    }
    qint64 total() const { return m_total; }
    void setTotal(qint64 total)
    {
        m_total = total;
        set("TOTAL", amount(total));
    }
    QString name() { return oneOf(names()); }

private:
    static QStringList names()
    {
        return {"Tea to go", "Cola 0.5 l",   "Tea, black",   "Rye bread 500 g",
                "No. 5",     "5 > 3",        "Кофе чёрный",  "Crème fraîche",
                "7a",        "1,2,3",        "12/3 mix",     "Bun (fresh)",
                "A + B",     "50% off soap", "\"Best\" tea", "M&M mix",
                "e-ticket",  "Nan bread",    "Info card",    "Infinite jest"};
    }

    void addHead()
    {
        const int number = 1 + below(90000);
        const QDateTime when(QDate(2026, 1 + below(12), 1 + below(28)),
                             QTime(below(24), below(60)));
        set("SHOP", oneOf({"Harbour Kiosk", "Old Boathouse", "Аптека"}));
        set("DOCNO", number);
        set("SALE_DT", when);
        add(oneOf({"<C><B><SHOP>", "<C><SHOP>", "<B><H2><SHOP>"}), attributes["SHOP"].toString());
        add("Receipt <DOCNO><S><SALE_DT,dd.mm.yyyy hh:nn>",
            QString("Receipt %1 %2").arg(number).arg(when.toString("dd.MM.yyyy hh:mm")));
        if (oneIn(2)) {
            const QString code = digits(6);
            set("AUTH", code);
            add("Authorisation <AUTH,000000>", "Authorisation " + code);
        }
    }

    void addItems()
    {
        for (int i = 1, count = 1 + below(6); i <= count; ++i)
            addItem(QString::number(i));
    }
    void addItem(const QString &number)
    {
        const QString item = name();
        set("NAME" + number, item);
        const int price = 1 + below(5000);
        switch (below(3)) {
            case 0: {
                const int quantity = 1 + below(4);
                set("QTY" + number, quantity);
                set("PRICE" + number, amount(price));
                add(QString("[<QTY%1> x <NAME%1><S><QTY%1*PRICE%1,0.00>]").arg(number),
                    QString("%1 x %2 %3").arg(quantity).arg(item, amount(price * quantity)));
                addPart(QString("QTY%1*PRICE%1").arg(number), price * quantity);
                break;
            }
            case 1: {
                const int grams = 1 + below(3000);
                // The product has five decimals; a half of the last is rounded up.
                const qint64 sum = (qint64(grams) * price + 500) / 1000;
                set("KG" + number, QString::number(grams / 1000.0, 'f', 3));
                set("PRICE" + number, amount(price));
                const QString rounded = QString("floor(KG%1*PRICE%1*100+0.500001)/100").arg(number);
                add(QString("<KG%1,0.000> kg <NAME%1><S><%2,0.00>").arg(number, rounded),
                    QString("%1 kg %2 %3")
                        .arg(attributes["KG" + number].toString(), item, amount(sum)));
                addPart(rounded, sum);
                break;
            }
            default:
                set("SUM" + number, amount(price));
                add(QString("<NAME%1><S><SUM%1,0.00>").arg(number), item + ' ' + amount(price));
                addPart("SUM" + number, price);
                break;
        }
    }
    void addPart(const QString &expression, qint64 sum)
    {
        m_parts.append(expression);
        m_total += sum;
    }

    void addEntries()
    {
        addUnprinted("<ENTRIES>");
        addGoods();
        for (int count = below(6); count > 0; --count) {
            const int kind = below(12);
            if (kind < 6)
                addGoods();
            else if (kind < 8)
                addDearGoods();
            else if (kind < 10)
                addOffer();
            else
                addWeighedGoods();
        }
        if (oneIn(4))
            addEntry("VAT 20%=" + amount(m_total / 6));
    }
    void addEntry(const QString &entry)
    {
        entries.append(entry);
        expected.append(QString(entry).replace('=', ' ').simplified());
    }
    void addGoods()
    {
        const int sum = 1 + below(5000);
        addEntry(name() + '=' + amount(sum));
        m_total += sum;
    }
    /// With a sign between the thousands.
    void addDearGoods()
    {
        const int sum = 100000 + below(900000);
        const QString digits = amount(sum);
        const QString sign = oneOf({",", ".", " ", "'", "\u00a0"});
        const QString point = sign == "." ? "," : ".";
        addEntry(name() + '=' + digits.left(1) + sign + digits.mid(1, 3) + point + digits.right(2));
        m_total += sum;
    }
    /// What is taken off, in one of the ways in which programs write it.
    void addOffer()
    {
        const int sum = 1 + below(300);
        if (sum >= m_total)
            return;
        const QString pattern =
            oneOf({"-%1", "- %1", "%1-", "%1", "%1", "EUR -%1", "-EUR %1", "(%1)"});
        addEntry(oneOf({"Offer", "Discount", "Rabatt", "Скидка"}) + '=' + pattern.arg(amount(sum)));
        m_total -= sum;
    }
    /// With a line that says how dear a kilogram is.
    void addWeighedGoods()
    {
        const int grams = 1 + below(3000);
        const int price = 1 + below(2000);
        const qint64 sum = (qint64(grams) * price + 500) / 1000;
        addEntry(name() + '=' + amount(sum));
        const QString kilograms = QString::number(grams / 1000.0, 'f', 3);
        addEntry(oneOf({QString("Price per kg=%2"), QString("%1 kg x %2"), QString("Weight=%1 kg")})
                     .replace("%1", kilograms)
                     .replace("%2", amount(price)));
        m_total += sum;
    }
    /// A sum of something else, in front of the total.
    void addOtherSum()
    {
        const qint64 sum = 1 + below(900);
        set("OTHER", amount(sum));
        const QString label = oneOf({"Total VAT", "Total savings", "Сумма НДС", "Total weight"});
        add(label + "<S><OTHER,0.00>", label + ' ' + amount(sum));
    }

    void addTotal()
    {
        const int discount = oneIn(3) ? below(static_cast<int>(qMin<qint64>(m_total, 500))) : 0;
        set("DISCOUNT", amount(discount));
        addUnprinted("[Discount<S>-<DISCOUNT,0.00>]");
        if (discount > 0)
            expected.append("Discount -" + amount(discount));
        if (oneIn(4))
            addOtherSum();
        setTotal(m_total - discount);
        const bool isGiven = m_parts.isEmpty() || oneIn(2);
        const QString sum = isGiven ? "TOTAL" : m_parts.join('+') + "-DISCOUNT";
        switch (below(3)) {
            case 0:
                add(QString("<B>Total<S><%1,0.00>").arg(sum), "Total " + amount(m_total));
                break;
            case 1:
                add(QString("TOTAL EUR<S><%1>").arg(sum), "TOTAL EUR " + amount(m_total));
                break;
            default:
                add(QString("Итог<S>=<%1,0.00>").arg(sum), "Итог =" + amount(m_total));
                break;
        }
    }

    void addTail()
    {
        if (m_total % 6 != 3 && m_total > 6) {
            const qint64 tax = (m_total * 2 + 6) / 12;
            add("VAT 20%<S><TOTAL*20/120,0.00>", "VAT 20% " + amount(tax));
        }
        if (oneIn(3))
            addUnprinted("[Voucher <VOUCHER>]");
        const int change = oneIn(2) ? 0 : below(3000);
        set("CASH", amount(m_total + change));
        add("Cash<S><CASH,0.00>", "Cash " + amount(m_total + change));
        addUnprinted("[Change<S><CASH-TOTAL,0.00>]");
        if (change > 0)
            expected.append("Change " + amount(change));
        if (oneIn(3)) {
            const QString card = "**** " + digits(4);
            set("CARD", card);
            add("Card <CARD>", "Card " + card);
        }
        add("<C>Thank you!", "Thank you!");
    }

    RandomLines m_random;
    QStringList m_parts;  ///< of the total, as expressions
    qint64 m_total = 0;
};
