#pragma once

#include <QSharedPointer>
#include <QString>

#include "printdevicefinder/finderlink_p.h"
#include "printdevicefinder/printdeviceinfo.h"

/// What a finder runs on pool threads: each opens one port and hands it to a PrintersHelper. The
/// result always names the port; it is valid if a printer was identified.
namespace findertasks {

PrintDeviceInfo searchPort(const QSharedPointer<FinderLink> &link, int cancelCount,
                           const QString &portName);
PrintDeviceInfo testDevice(const QSharedPointer<FinderLink> &link, int cancelCount,
                           const PrintDeviceInfo &record);

}  // namespace findertasks
