#pragma once

#include <QList>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <optional>
#include <vector>

#include "printdevicefinder/printdeviceinfo.h"
#include "searchedport.h"
#include "searchplan.h"
#include "transport/portuse_p.h"

using printerslib::drivers::PortUse;

/// What is to be done on one port.
struct PortTask
{
    PortUse port;
    QList<PrintDeviceInfo> records;  ///< To be confirmed, one after the other; none: a search.
};

/// How far a port is.
struct PortProgress
{
    QString name;
    SearchPlan plan;
};

/// Searches ports, or confirms records on them, all at once; the first printer ends it. This is
/// what PrintDeviceFinder does, but it ends at once when it is told to, tells of a printer before
/// the other ports are closed, and asks the records of one port one after the other.
class PortSearch : public QObject
{
    Q_OBJECT

public:
    explicit PortSearch(const QList<PortTask> &tasks);
    /// Stops, and waits for the tasks.
    ~PortSearch() override;

    void start();
    /// Ends the search; over() comes when all ports are closed, with their line settings as before.
    void interrupt();

    /// Thread-safe.
    QList<PortProgress> progress() const;

Q_SIGNALS:
    /// The first printer, as soon as it has answered.
    void found(const PrintDeviceInfo &device);
    /// All ports are closed.
    void over();

private:
    void run(int index);
    std::optional<PrintDeviceInfo> ask(const PortTask &task,
                                       const QSharedPointer<SearchedPort> &port);
    void take(const PrintDeviceInfo &device);
    void countDown();

    const QList<PortTask> m_tasks;
    SearchOrders m_orders;
    mutable QMutex m_mutex;  ///< Of the plans.
    std::vector<SearchPlan> m_plans;
    int m_running = 0;
    bool m_hasFound = false;
    QThreadPool m_pool;  ///< The last one, as its tasks use the others.
};
