#include "till/simulatedline.h"

using namespace printerslib::drivers;

bool till::SimulatedLine::write(const QByteArray &bytes)
{
    if (m_state == State::Closed)
        return false;
    m_queue += bytes;
    return true;
}

void till::SimulatedLine::hasOpened()
{
    m_state = State::Open;
    Q_EMIT opened();
}

QByteArray till::SimulatedLine::takeByte()
{
    QByteArray byte = m_queue.left(1);
    m_queue.remove(0, 1);
    m_written += byte.size();
    return byte;
}
