#include "portsearch.h"

#include "printdevicefinder/printershelper.h"

namespace {

constexpr unsigned int serialTextPrinter = 1;

}  // namespace

PortSearch::PortSearch(const QList<PortTask> &tasks) : m_tasks(tasks), m_running(tasks.size())
{
    for (const PortTask &task : m_tasks)
        m_plans.push_back(task.records.isEmpty() ? SearchPlan::ofSearch()
                                                 : SearchPlan::ofRecords(task.records));
    m_pool.setMaxThreadCount(qMax(1, m_tasks.size()));
}

PortSearch::~PortSearch()
{
    interrupt();
    m_pool.waitForDone();
}

void PortSearch::start()
{
    for (int i = 0; i < m_tasks.size(); ++i)
        m_pool.start([this, i] { run(i); });
    if (m_tasks.isEmpty())
        QMetaObject::invokeMethod(this, &PortSearch::over, Qt::QueuedConnection);
}

void PortSearch::interrupt()
{
    m_orders.hurry = true;
    m_orders.stop = true;
}

QList<PortProgress> PortSearch::progress() const
{
    const QMutexLocker lock(&m_mutex);
    QList<PortProgress> list;
    for (int i = 0; i < m_tasks.size(); ++i)
        list.append({m_tasks.at(i).port.name(), m_plans.at(static_cast<std::size_t>(i))});
    return list;
}

/// Runs on a pool thread, in which the port lives. It is opened by its path without links, so that
/// its lock file is the same by whatever name it is opened.
void PortSearch::run(int index)
{
    const PortTask &task = m_tasks.at(index);
    SearchPlan &plan = m_plans.at(static_cast<std::size_t>(index));
    const auto port = QSharedPointer<SearchedPort>::create(
        task.port.canonicalPath(), m_orders, [this, &plan](const QSerialPort &waiting) {
            const QMutexLocker lock(&m_mutex);
            plan.advance(waiting.baudRate(), waiting.flowControl());
        });
    std::optional<PrintDeviceInfo> device;
    if (!m_orders.stop && port->open(QIODevice::ReadWrite))
        device = ask(task, port);
    if (device)
        QMetaObject::invokeMethod(this, [this, found = *device] { take(found); });
    if (port->isOpen()) {
        HurriableOutput output(*port, m_orders);
        discovery::closePort(output, device.has_value());
    }
    {
        const QMutexLocker lock(&m_mutex);
        plan.finish();
    }
    QMetaObject::invokeMethod(this, &PortSearch::countDown);
}

std::optional<PrintDeviceInfo> PortSearch::ask(const PortTask &task,
                                               const QSharedPointer<SearchedPort> &port)
{
    const QList<PrintDeviceInfo> questions =
        task.records.isEmpty() ? QList<PrintDeviceInfo>{PrintDeviceInfo()} : task.records;
    for (const PrintDeviceInfo &question : questions) {
        PrintersHelper helper(port);
        port->setHelper(&helper);
        QString id = question.deviceId();
        hearth::Rs232PortSettings settings = question.settings();
        const bool answered = port->isOpen() && helper.scan(id, settings) && port->isOpen();
        port->setHelper(nullptr);
        if (!answered || id.isEmpty())
            continue;
        settings.setPortName(task.records.isEmpty() ? task.port.name()
                                                    : question.settings().portName());
        PrintDeviceInfo device;
        device.setDeviceType(serialTextPrinter);
        device.setDeviceId(id);
        device.setSettings(settings);
        return device;
    }
    return std::nullopt;
}

void PortSearch::take(const PrintDeviceInfo &device)
{
    m_orders.stop = true;
    if (!m_hasFound)
        Q_EMIT found(device);
    m_hasFound = true;
}

void PortSearch::countDown()
{
    if (--m_running == 0)
        Q_EMIT over();
}
