#include "receipt/withctemplate.h"

#include <ctemplate/template.h>

using ctemplate::StaticTemplateString;
using ctemplate::TemplateDictionary;
using ctemplate::TemplateString;

namespace {

// Names made once, as ctemplate advises.
#define NAME(variable, text) const StaticTemplateString variable = STS_INIT(variable, text)
NAME(shopName, "SHOP");
NAME(shopBlanks, "SHOP_BLANKS");
NAME(addressName, "ADDRESS");
NAME(addressBlanks, "ADDRESS_BLANKS");
NAME(taxNumberName, "TAX_NUMBER");
NAME(taxNumberBlanks, "TAX_NUMBER_BLANKS");
NAME(numberName, "NUMBER");
NAME(timeName, "TIME");
NAME(timeBlanks, "TIME_BLANKS");
NAME(cashierName, "CASHIER");
NAME(tillName, "TILL");
NAME(tillBlanks, "TILL_BLANKS");
NAME(footerName, "FOOTER");
NAME(footerBlanks, "FOOTER_BLANKS");
NAME(itemSection, "ITEM");
NAME(itemName, "NAME");
NAME(quantityName, "QUANTITY");
NAME(priceName, "PRICE");
NAME(discountSection, "DISCOUNTED");
NAME(discountName, "DISCOUNT");
NAME(sumName, "SUM");
NAME(blanksName, "BLANKS");
NAME(totalSection, "TOTAL");
NAME(labelName, "LABEL");
NAME(valueName, "VALUE");
#undef NAME

const char *const key = "receipt";
const char *const text =
    "{{SHOP_BLANKS}}{{SHOP}}\n"
    "{{ADDRESS_BLANKS}}{{ADDRESS}}\n"
    "{{TAX_NUMBER_BLANKS}}Tax number {{TAX_NUMBER}}\n"
    "Receipt {{NUMBER}}{{TIME_BLANKS}}{{TIME}}\n"
    "Cashier {{CASHIER}}{{TILL_BLANKS}}Till {{TILL}}\n"
    "------------------------------------------\n"
    "{{#ITEM}}"
    "{{NAME}} {{QUANTITY}} x {{PRICE}}{{#DISCOUNTED}} -{{DISCOUNT}}{{/DISCOUNTED}}"
    "{{BLANKS}}{{SUM}}\n"
    "{{/ITEM}}"
    "------------------------------------------\n"
    "{{#TOTAL}}"
    "{{LABEL}}{{BLANKS}}{{VALUE}}\n"
    "{{/TOTAL}}"
    "------------------------------------------\n"
    "{{FOOTER_BLANKS}}{{FOOTER}}\n";

TemplateString lasting(std::string_view value)
{
    return TemplateString(value.data(), value.size());
}

TemplateString passing(const receipt::NumberText &value)
{
    return TemplateString(value.data(), value.size());
}

TemplateString blanksOf(int count)
{
    return lasting(receipt::blanks(count));
}

}  // namespace

receipt::WithCtemplate::WithCtemplate(const Sale &sale) : m_sale(sale), m_host(sale)
{
    ctemplate::StringToTemplateCache(key, text, ctemplate::DO_NOT_STRIP);
}

std::string receipt::WithCtemplate::print() const
{
    TemplateDictionary values(key);
    addHeader(values);
    addItems(values);
    addTotals(values);
    constexpr size_t otherLines = 16;
    std::string result;
    // Letters outside ASCII take two bytes, which is why a line is more than its columns.
    result.reserve((m_sale.items.size() + otherLines) * (columns + columns / 4));
    ctemplate::ExpandTemplate(key, ctemplate::DO_NOT_STRIP, &values, &result);
    return result;
}

void receipt::WithCtemplate::addHeader(TemplateDictionary &values) const
{
    values.SetValueWithoutCopy(shopName, lasting(m_host.shop));
    values.SetValueWithoutCopy(shopBlanks, blanksOf(blanksBefore(m_host.shop)));
    values.SetValueWithoutCopy(addressName, lasting(m_host.address));
    values.SetValueWithoutCopy(addressBlanks, blanksOf(blanksBefore(m_host.address)));
    values.SetValueWithoutCopy(taxNumberName, lasting(m_host.taxNumber));
    values.SetValueWithoutCopy(taxNumberBlanks,
                               blanksOf(blanksBefore("Tax number " + m_host.taxNumber)));
    values.SetValueWithoutCopy(footerName, lasting(m_host.footer));
    values.SetValueWithoutCopy(footerBlanks, blanksOf(blanksBefore(m_host.footer)));
    const std::string number = digitsOf(m_sale.number, 6);
    const std::string time = m_host.timeText();
    const std::string till = digitsOf(m_sale.till, 2);
    values.SetValue(numberName, number);
    values.SetValue(timeName, time);
    values.SetValueWithoutCopy(
        timeBlanks,
        blanksOf(blanksBetween(lengthOf("Receipt ") + lengthOf(number), lengthOf(time))));
    values.SetValueWithoutCopy(cashierName, lasting(m_host.cashier));
    values.SetValue(tillName, till);
    values.SetValueWithoutCopy(
        tillBlanks, blanksOf(blanksBetween(lengthOf("Cashier ") + lengthOf(m_host.cashier),
                                           lengthOf("Till ") + lengthOf(till))));
}

void receipt::WithCtemplate::addItems(TemplateDictionary &values) const
{
    for (const Item &item : m_sale.items) {
        TemplateDictionary &line = *values.AddSectionDictionary(itemSection);
        const NumberText quantity(item.quantity, 3);
        const NumberText price(item.price, 2);
        const NumberText sum(item.sum, 2);
        int left = lengthOf(item.nameUtf8) + 1 + static_cast<int>(quantity.size()) + 3 +
                   static_cast<int>(price.size());
        if (item.discount > 0) {
            const NumberText discount(item.discount, 2);
            left += 2 + static_cast<int>(discount.size());
            line.SetValueAndShowSection(discountName, passing(discount), discountSection);
        }
        line.SetValueWithoutCopy(itemName, lasting(item.nameUtf8));
        line.SetValue(quantityName, passing(quantity));
        line.SetValue(priceName, passing(price));
        line.SetValue(sumName, passing(sum));
        line.SetValueWithoutCopy(blanksName,
                                 blanksOf(blanksBetween(left, static_cast<int>(sum.size()))));
    }
}

void receipt::WithCtemplate::addTotals(TemplateDictionary &values) const
{
    for (const Total &total : totalsOf(m_sale)) {
        if (total.value == 0 && total.label == "Discounts")
            continue;
        const NumberText value(total.value, 2);
        TemplateDictionary &line = *values.AddSectionDictionary(totalSection);
        line.SetValueWithoutCopy(labelName, lasting(total.label));
        line.SetValue(valueName, passing(value));
        line.SetValueWithoutCopy(blanksName,
                                 blanksOf(blanksBetween(static_cast<int>(total.label.size()),
                                                        static_cast<int>(value.size()))));
    }
}
