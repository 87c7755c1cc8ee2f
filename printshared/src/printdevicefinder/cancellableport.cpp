#include "printdevicefinder/cancellableport_p.h"

#include <poll.h>

#include "printdevicefinder/outputdrain_p.h"

namespace {

bool hasHungUp(int descriptor)
{
    pollfd line{descriptor, 0, 0};
    return ::poll(&line, 1, 0) == 1 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace

CancellablePort::CancellablePort(const QString &portName) : QSerialPort(portName)
{
    connect(this, &QSerialPort::errorOccurred, this, &CancellablePort::look, Qt::DirectConnection);
}

// The signal comes from within the port's own operations, which go on with its descriptor. A line
// that has hung up reads as empty, which is a ReadError with whatever errno had been before.
void CancellablePort::look(SerialPortError error)
{
    if (!isOpen() || error == NoError || error == TimeoutError)
        return;
    if (error == ResourceError || hasHungUp(static_cast<int>(handle())))
        requestClose();
}

void CancellablePort::requestClose()
{
    m_closeRequested.store(true, std::memory_order_relaxed);
}

void CancellablePort::closeIfRequested()
{
    if (m_closeRequested.load(std::memory_order_relaxed) && isOpen())
        discovery::closePort(*discovery::outputOf(*this), false);
}
