#pragma once

#include <kainjow/mustache.hpp>
#include <string>

#include "receipt/hostvalues.h"
#include "receipt/sale.h"

namespace receipt {

/// The receipt by kainjow mustache: parsed once, filled with texts that the host has formatted.
class WithMustache
{
public:
    explicit WithMustache(const Sale &sale);
    std::string print() const;

private:
    void addHeader(kainjow::mustache::data &values) const;
    void addItems(kainjow::mustache::data &values) const;
    void addTotals(kainjow::mustache::data &values) const;

    const Sale m_sale;
    const HostSale m_host;
    mutable kainjow::mustache::mustache m_template;  // printing isn't const there
};

}  // namespace receipt
