#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "printerslib/drivers/drivers_export.h"

class TextPrinterDocument;

namespace printerslib::drivers {

/// The map form of a document as JSON, without the map: for programs that send or keep documents as
/// JSON and have no use for a `QVariantMap`.
///
/// Both operations give what Qt makes of TextPrinterDocument::toMap(), byte for byte, whatever the
/// document holds: a text that isn't Unicode, numbers without a name and blocks that aren't valid
/// included. So TextPrinterDocument::setMap() reads it back as it reads the map.
///
/// Free of state; any number of threads may call. None fails.
class PRINTERSLIB_DRIVERS_EXPORT DocumentJson
{
public:
    /// As QJsonObject::fromVariantMap() of the map form.
    static QJsonObject toObject(const TextPrinterDocument &document);

    /// As QJsonDocument::fromVariant() of the map form, written by QJsonDocument::toJson(). Compact
    /// is what a document file holds.
    static QByteArray toJson(const TextPrinterDocument &document,
                             QJsonDocument::JsonFormat form = QJsonDocument::Compact);

    DocumentJson() = delete;
};

}  // namespace printerslib::drivers
