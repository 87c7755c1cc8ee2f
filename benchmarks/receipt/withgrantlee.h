#pragma once

#include <grantlee/context.h>
#include <grantlee/engine.h>
#include <grantlee/template.h>

#include <QString>

#include "receipt/sale.h"

namespace receipt {

/// The receipt by Grantlee, parsed once, with numbers and times formatted by the template's filters
/// and lines laid out by them. The values are at hand, as the attributes are for the library.
class WithGrantleeFormats
{
public:
    explicit WithGrantleeFormats(const Sale &sale);
    QString print() const;

private:
    Grantlee::Engine m_engine;
    const Grantlee::Template m_template;
    mutable Grantlee::Context m_values;  // printing pushes onto it and pops again
};

/// The same, filled with texts that the host has formatted, so the template only puts them in.
class WithGrantlee
{
public:
    explicit WithGrantlee(const Sale &sale);
    QString print() const;

private:
    QVariantHash header() const;
    QVariantList items() const;
    QVariantList totals() const;

    const Sale m_sale;
    Grantlee::Engine m_engine;
    const Grantlee::Template m_template;
};

}  // namespace receipt
