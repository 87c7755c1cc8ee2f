#include "receipt/withmustache.h"

using kainjow::mustache::data;

namespace {

const char *const text =
    "{{&shop_blanks}}{{&shop}}\n"
    "{{&address_blanks}}{{&address}}\n"
    "{{&tax_number_blanks}}Tax number {{&tax_number}}\n"
    "Receipt {{&number}}{{&time_blanks}}{{&time}}\n"
    "Cashier {{&cashier}}{{&till_blanks}}Till {{&till}}\n"
    "------------------------------------------\n"
    "{{#items}}\n"
    "{{&name}} {{&quantity}} x {{&price}}{{#discount}} -{{&discount}}{{/discount}}"
    "{{&blanks}}{{&sum}}\n"
    "{{/items}}\n"
    "------------------------------------------\n"
    "{{#totals}}\n"
    "{{&label}}{{&blanks}}{{&value}}\n"
    "{{/totals}}\n"
    "------------------------------------------\n"
    "{{&footer_blanks}}{{&footer}}\n";

data blanksOf(int count)
{
    return data(std::string(receipt::blanks(count)));
}

}  // namespace

receipt::WithMustache::WithMustache(const Sale &sale) : m_sale(sale), m_host(sale), m_template(text)
{}

std::string receipt::WithMustache::print() const
{
    data values;
    addHeader(values);
    addItems(values);
    addTotals(values);
    constexpr size_t otherLines = 16;
    std::string result;
    // Letters outside ASCII take two bytes, which is why a line is more than its columns.
    result.reserve((m_sale.items.size() + otherLines) * (columns + columns / 4));
    m_template.render(values, [&result](const std::string &piece) { result += piece; });
    return result;
}

void receipt::WithMustache::addHeader(data &values) const
{
    values["shop"] = m_host.shop;
    values["shop_blanks"] = blanksOf(blanksBefore(m_host.shop));
    values["address"] = m_host.address;
    values["address_blanks"] = blanksOf(blanksBefore(m_host.address));
    values["tax_number"] = m_host.taxNumber;
    values["tax_number_blanks"] = blanksOf(blanksBefore("Tax number " + m_host.taxNumber));
    values["footer"] = m_host.footer;
    values["footer_blanks"] = blanksOf(blanksBefore(m_host.footer));
    const std::string number = digitsOf(m_sale.number, 6);
    const std::string time = m_host.timeText();
    const std::string till = digitsOf(m_sale.till, 2);
    values["number"] = number;
    values["time"] = time;
    values["time_blanks"] =
        blanksOf(blanksBetween(lengthOf("Receipt ") + lengthOf(number), lengthOf(time)));
    values["cashier"] = m_host.cashier;
    values["till"] = till;
    values["till_blanks"] = blanksOf(blanksBetween(lengthOf("Cashier ") + lengthOf(m_host.cashier),
                                                   lengthOf("Till ") + lengthOf(till)));
}

/// A list takes copies of its elements, so one element is filled again and again.
void receipt::WithMustache::addItems(data &values) const
{
    data items(data::type::list);
    data element;
    for (const Item &item : m_sale.items) {
        const NumberText quantity(item.quantity, 3);
        const NumberText price(item.price, 2);
        const NumberText sum(item.sum, 2);
        int left = lengthOf(item.nameUtf8) + 1 + static_cast<int>(quantity.size()) + 3 +
                   static_cast<int>(price.size());
        if (item.discount > 0) {
            const NumberText discount(item.discount, 2);
            left += 2 + static_cast<int>(discount.size());
            element["discount"] = discount.string();
        } else {
            element["discount"] = data(false);
        }
        element["name"] = item.nameUtf8;
        element["quantity"] = quantity.string();
        element["price"] = price.string();
        element["sum"] = sum.string();
        element["blanks"] = blanksOf(blanksBetween(left, static_cast<int>(sum.size())));
        items.push_back(element);
    }
    values["items"] = std::move(items);
}

void receipt::WithMustache::addTotals(data &values) const
{
    data totals(data::type::list);
    for (const Total &total : totalsOf(m_sale)) {
        if (total.value == 0 && total.label == "Discounts")
            continue;
        const NumberText value(total.value, 2);
        data element;
        element["label"] = std::string(total.label);
        element["value"] = value.string();
        element["blanks"] = blanksOf(
            blanksBetween(static_cast<int>(total.label.size()), static_cast<int>(value.size())));
        totals.push_back(element);
    }
    values["totals"] = std::move(totals);
}
