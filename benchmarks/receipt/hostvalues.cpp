#include "receipt/hostvalues.h"

#include <algorithm>

receipt::HostSale::HostSale(const Sale &sale)
    : shop(sale.shop.toStdString()),
      address(sale.address.toStdString()),
      taxNumber(sale.taxNumber.toStdString()),
      cashier(sale.cashier.toStdString()),
      footer(sale.footer.toStdString())
{
    const QDate date = sale.time.date();
    constexpr int firstYear = 1900;
    time.tm_year = date.year() - firstYear;
    time.tm_mon = date.month() - 1;
    time.tm_mday = date.day();
    time.tm_hour = sale.time.time().hour();
    time.tm_min = sale.time.time().minute();
}

std::string receipt::HostSale::timeText() const
{
    std::array<char, 32> text{};
    return std::string(text.data(),
                       std::strftime(text.data(), text.size(), "%d.%m.%Y %H:%M", &time));
}

int receipt::lengthOf(std::string_view text)
{
    const auto beginsCharacter = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    };
    return static_cast<int>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string receipt::digitsOf(int value, int width)
{
    const std::string digits = std::to_string(value);
    return std::string(std::max(width - static_cast<int>(digits.size()), 0), '0') + digits;
}

std::array<receipt::Total, receipt::numberOfTotals> receipt::totalsOf(const Sale &sale)
{
    return {{{"Goods", sale.gross},
             {"Discounts", -sale.discount},
             {"TOTAL", sale.total},
             {"VAT 25 %", sale.tax},
             {"Net of VAT", sale.net},
             {"Cash", sale.paid},
             {"Change", sale.change}}};
}

int receipt::blanksBetween(int left, int right)
{
    return std::max(columns - left - right, 1);
}

int receipt::blanksBefore(std::string_view centred)
{
    return (columns - lengthOf(centred)) / 2;
}

std::string_view receipt::blanks(int count)
{
    static const std::string all(columns, ' ');
    return std::string_view(all).substr(0, static_cast<size_t>(count));
}
