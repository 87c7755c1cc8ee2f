#include "queueplace.h"

#include <printerslib/drivers/devicelock.h>
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

QString waitForTurn(printerslib::drivers::DeviceLock &lock,
                    const printerslib::drivers::PrinterAddress &address,
                    const std::function<QString(int ahead)> &obstacle)
{
    constexpr int step = 100;  // milliseconds between two looks for an obstacle
    int told = 0;
    while (!lock.waitFor(step)) {
        if (!lock.fault().isEmpty())
            return lock.fault();
        const int ahead = lock.ahead();
        if (ahead > 0 && ahead != told)
            tellPlaceInQueue(address, ahead);
        told = ahead;
        QString fault = obstacle(ahead);
        if (!fault.isEmpty())
            return fault;
    }
    return {};
}

}  // namespace tool
