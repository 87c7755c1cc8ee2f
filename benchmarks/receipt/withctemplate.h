#pragma once

#include <string>

#include "receipt/hostvalues.h"
#include "receipt/sale.h"

namespace ctemplate {
class TemplateDictionary;
}

namespace receipt {

/// The receipt by ctemplate: parsed once, filled with texts that the host has formatted.
class WithCtemplate
{
public:
    explicit WithCtemplate(const Sale &sale);
    std::string print() const;

private:
    void addHeader(ctemplate::TemplateDictionary &values) const;
    void addItems(ctemplate::TemplateDictionary &values) const;
    void addTotals(ctemplate::TemplateDictionary &values) const;

    const Sale m_sale;
    const HostSale m_host;
};

}  // namespace receipt
