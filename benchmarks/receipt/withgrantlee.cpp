#include "receipt/withgrantlee.h"

#include <QVariantHash>
#include <QVariantList>

#include "receipt/hostvalues.h"

namespace {

using receipt::Item;
using receipt::Sale;

const char *const withFormats =
    "{% autoescape off %}"
    "{{ shop|rjust:shop_end }}\n"
    "{{ address|rjust:address_end }}\n"
    "{{ tax_number|rjust:tax_number_end }}\n"
    "Receipt {{ number }}{{ time|date:\"dd.MM.yyyy hh:mm\"|rjust:28 }}\n"
    "Cashier {{ cashier|ljust:27 }}Till {{ till }}\n"
    "------------------------------------------\n"
    "{% for item in items %}"
    "{% filter ljust:34 %}{{ item.name }} {{ item.quantity|floatformat:3 }} x "
    "{{ item.price|floatformat:2 }}"
    "{% if item.discount %} -{{ item.discount|floatformat:2 }}{% endif %}{% endfilter %}"
    "{{ item.sum|floatformat:2|rjust:8 }}\n"
    "{% endfor %}"
    "------------------------------------------\n"
    "Goods{{ gross|floatformat:2|rjust:37 }}\n"
    "{% if discount %}Discounts{{ rebate|floatformat:2|rjust:33 }}\n{% endif %}"
    "TOTAL{{ total|floatformat:2|rjust:37 }}\n"
    "VAT 25 %{{ tax|floatformat:2|rjust:34 }}\n"
    "Net of VAT{{ net|floatformat:2|rjust:32 }}\n"
    "Cash{{ paid|floatformat:2|rjust:38 }}\n"
    "Change{{ change|floatformat:2|rjust:36 }}\n"
    "------------------------------------------\n"
    "{{ footer|rjust:footer_end }}\n"
    "{% endautoescape %}";

const char *const withoutFormats =
    "{% autoescape off %}"
    "{{ shop }}\n"
    "{{ address }}\n"
    "{{ tax_number }}\n"
    "Receipt {{ number }}{{ time }}\n"
    "Cashier {{ cashier }}Till {{ till }}\n"
    "------------------------------------------\n"
    "{% for item in items %}"
    "{{ item.name }} {{ item.quantity }} x {{ item.price }}"
    "{% if item.discount %} -{{ item.discount }}{% endif %}{{ item.sum }}\n"
    "{% endfor %}"
    "------------------------------------------\n"
    "{% for line in totals %}"
    "{{ line.label }}{{ line.value }}\n"
    "{% endfor %}"
    "------------------------------------------\n"
    "{{ footer }}\n"
    "{% endautoescape %}";

/// The column at which a centred text ends.
int endOf(const QString &centred)
{
    return (receipt::columns - centred.size()) / 2 + centred.size();
}

QString centred(const QString &text)
{
    return text.rightJustified(endOf(text));
}

/// A text at the right edge, with the blanks in front of it.
QString atRight(const QString &text, int left)
{
    return text.rightJustified(receipt::columns - left);
}

QString digits(int value, int width)
{
    return QString::number(value).rightJustified(width, QLatin1Char('0'));
}

QVariantHash rawItem(const Item &item)
{
    return {{"name", item.name},
            {"quantity", item.quantity},
            {"price", item.price},
            {"discount", item.discount},
            {"sum", item.sum}};
}

QVariantHash rawSale(const Sale &sale)
{
    const QString taxNumber = "Tax number " + sale.taxNumber;
    QVariantList items;
    for (const Item &item : sale.items)
        items.append(rawItem(item));
    return {{"shop", sale.shop},
            {"shop_end", endOf(sale.shop)},
            {"address", sale.address},
            {"address_end", endOf(sale.address)},
            {"tax_number", taxNumber},
            {"tax_number_end", endOf(taxNumber)},
            {"number", digits(sale.number, 6)},
            {"time", sale.time},
            {"cashier", sale.cashier},
            {"till", digits(sale.till, 2)},
            {"items", items},
            {"gross", sale.gross},
            {"discount", sale.discount},
            {"rebate", -sale.discount},
            {"total", sale.total},
            {"tax", sale.tax},
            {"net", sale.net},
            {"paid", sale.paid},
            {"change", sale.change},
            {"footer", sale.footer},
            {"footer_end", endOf(sale.footer)}};
}

}  // namespace

receipt::WithGrantleeFormats::WithGrantleeFormats(const Sale &sale)
    : m_template(m_engine.newTemplate(QString::fromLatin1(withFormats), QStringLiteral("receipt"))),
      m_values(rawSale(sale))
{}

QString receipt::WithGrantleeFormats::print() const
{
    return m_template->render(&m_values);
}

receipt::WithGrantlee::WithGrantlee(const Sale &sale)
    : m_sale(sale),
      m_template(
          m_engine.newTemplate(QString::fromLatin1(withoutFormats), QStringLiteral("receipt")))
{}

QString receipt::WithGrantlee::print() const
{
    QVariantHash values = header();
    values.insert(QStringLiteral("items"), items());
    values.insert(QStringLiteral("totals"), totals());
    Grantlee::Context context(values);
    return m_template->render(&context);
}

QVariantHash receipt::WithGrantlee::header() const
{
    const QString time = m_sale.time.toString(QStringLiteral("dd.MM.yyyy hh:mm"));
    const QString number = digits(m_sale.number, 6);
    const int leftOfTime = QLatin1String("Receipt ").size() + number.size();
    const int besideCashier = QLatin1String("Cashier Till 00").size();
    return {{QStringLiteral("shop"), centred(m_sale.shop)},
            {QStringLiteral("address"), centred(m_sale.address)},
            {QStringLiteral("tax_number"), centred("Tax number " + m_sale.taxNumber)},
            {QStringLiteral("number"), number},
            {QStringLiteral("time"), atRight(time, leftOfTime)},
            {QStringLiteral("cashier"), m_sale.cashier.leftJustified(columns - besideCashier)},
            {QStringLiteral("till"), digits(m_sale.till, 2)},
            {QStringLiteral("footer"), centred(m_sale.footer)}};
}

QVariantList receipt::WithGrantlee::items() const
{
    QVariantList items;
    items.reserve(static_cast<int>(m_sale.items.size()));
    for (const Item &item : m_sale.items) {
        const QString quantity = QString::number(item.quantity, 'f', 3);
        const QString price = QString::number(item.price, 'f', 2);
        int left = item.name.size() + 1 + quantity.size() + 3 + price.size();
        QString discount;
        if (item.discount > 0) {
            discount = QString::number(item.discount, 'f', 2);
            left += 2 + discount.size();
        }
        items.append(QVariantHash{
            {QStringLiteral("name"), item.name},
            {QStringLiteral("quantity"), quantity},
            {QStringLiteral("price"), price},
            {QStringLiteral("discount"), discount},
            {QStringLiteral("sum"), atRight(QString::number(item.sum, 'f', 2), left)}});
    }
    return items;
}

QVariantList receipt::WithGrantlee::totals() const
{
    QVariantList totals;
    for (const Total &total : totalsOf(m_sale)) {
        if (total.value == 0 && total.label == "Discounts")
            continue;
        const QString label =
            QString::fromLatin1(total.label.data(), static_cast<int>(total.label.size()));
        totals.append(QVariantHash{{QStringLiteral("label"), label},
                                   {QStringLiteral("value"),
                                    atRight(QString::number(total.value, 'f', 2), label.size())}});
    }
    return totals;
}
