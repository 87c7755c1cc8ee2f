#include "searchedport.h"

#include <QElapsedTimer>
#include <utility>

#include "printdevicefinder/printershelper.h"

namespace {

constexpr int sliceMilliseconds = 20;
// The most closing bytes, 19, take 159 ms at 1200 baud; a half of them would leave a printer in the
// middle of a command. A program that is to end does so within 300 ms.
constexpr qint64 hurriedMilliseconds = 200;

}  // namespace

SearchedPort::SearchedPort(const QString &path, const SearchOrders &orders,
                           std::function<void(const QSerialPort &port)> waits)
    : CancellablePort(path), m_orders(orders), m_waits(std::move(waits))
{}

void SearchedPort::setHelper(PrintersHelper *helper)
{
    m_helper = helper;
}

bool SearchedPort::mayGoOn()
{
    if (m_orders.stop) {
        if (m_helper != nullptr)
            m_helper->requestStop();
        requestClose();
    }
    closeIfRequested();
    return isOpen();
}

bool SearchedPort::waitForReadyRead(int milliseconds)
{
    m_waits(*this);
    QElapsedTimer clock;
    clock.start();
    for (qint64 left = milliseconds; mayGoOn(); left = milliseconds - clock.elapsed()) {
        if (left <= 0)
            return false;
        if (CancellablePort::waitForReadyRead(
                static_cast<int>(qMin<qint64>(left, sliceMilliseconds))))
            return true;
    }
    return false;
}

HurriableOutput::HurriableOutput(QSerialPort &port, const SearchOrders &orders)
    : SerialPortOutput(port), m_orders(orders)
{}

bool HurriableOutput::pause(int milliseconds)
{
    for (const qint64 end = now() + milliseconds; now() < end && mayWait();)
        SerialPortOutput::pause(static_cast<int>(qMin<qint64>(end - now(), sliceMilliseconds)));
    return mayWait();
}

bool HurriableOutput::mayWait()
{
    if (!m_orders.hurry)
        return true;
    if (m_hurryEnd == 0)
        m_hurryEnd = now() + hurriedMilliseconds;
    return now() < m_hurryEnd && unwritten() + queued() > 0;
}
