#pragma once

#include <QJsonArray>
#include <QList>
#include <QString>
#include <optional>

#include "printdevicefinder/printdeviceinfo.h"

/// Found printers as JSON: an array of objects with "deviceType", "deviceId" and "settings".
namespace devicejson {

QJsonArray write(const QList<PrintDeviceInfo> &devices);
/// Reads what write() gives. Complains, naming file and key, and gives nothing if it isn't that.
std::optional<QList<PrintDeviceInfo>> read(const QString &fileName, const QByteArray &text);

/// The line settings in one text, for example "57600 8N1, flow control none".
QString lineText(const hearth::Rs232PortSettings &settings);

}  // namespace devicejson
