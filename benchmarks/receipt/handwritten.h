#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "receipt/sale.h"

/// The receipt of sale.h printed by code that can print nothing else: what no template engine gets
/// below.
namespace receipt {

/// From the sale itself into one text, by appending.
QString byHandFromSale(const Sale &sale);

/// From the sale itself into the JSON of its blocks, by QJsonObject and QJsonArray.
QByteArray jsonByHandFromSale(const Sale &sale);

/// From the attributes of indexedDocument(), which the library has to look up too, into a list of
/// lines, which it has to return too.
QStringList byHandFromMap(const QMap<QString, QVariant> &attributes, int items);

}  // namespace receipt
