#include "queueplace.h"

#include <printerslib/drivers/printeraddress.h>

#include "support.h"

namespace tool {

QString jobsInFront(int ahead)
{
    return ahead == 1 ? QStringLiteral("1 job is in front")
                      : QStringLiteral("%1 jobs are in front").arg(ahead);
}

void tellPlaceInQueue(const printerslib::drivers::PrinterAddress &address, int ahead)
{
    complain(QStringLiteral("%1: waiting, %2").arg(address.toString(), jobsInFront(ahead)));
}

}  // namespace tool
