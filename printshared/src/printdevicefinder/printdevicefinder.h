#pragma once

#include <QFutureWatcher>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include "printdevicefinder/printdeviceinfo.h"
#include "printerslib_export.h"

class FinderLink;

/// Finds the receipt printer on the machine's serial ports, or confirms that one recorded earlier
/// is still there. All ports are looked at at once, and the first printer ends the search.
///
/// A finder lives on a thread with an event loop; all its operations are called there and all its
/// signals come from there. The ports are worked on by threads of QThreadPool::globalInstance(). A
/// search over a port where nobody answers takes 171 seconds, and never more than 9 min 7 s, which
/// a device needs that answers each question at the last moment. A finder can be used again after
/// each search.
///
/// A slot of any of its signals may delete the finder. Its end signals needCancel() and finished()
/// once more, and what was still to be signalled behind that slot doesn't come: so no device either
/// for a slot of finished(). A slot that deletes has to do so once (test
/// finderMayBeDeletedInASlot).
class PRINTERSLIB_EXPORT PrintDeviceFinder : public QObject
{
    Q_OBJECT

public:
    /// Sets the maximum of the process's global thread pool to 100 threads, for good.
    explicit PrintDeviceFinder(QObject *parent = nullptr);
    /// Cancels, so that a finder that dies emits needCancel() and finished(); doesn't wait for the
    /// tasks, which end by themselves.
    ~PrintDeviceFinder() override;

public Q_SLOTS:
    /// Stops everything and emits finished(), even if nothing runs. Doesn't wait: a task goes on
    /// to the end of its dialogue on one line setting, up to 5.6 seconds, and its result is
    /// dropped. A search then still asks for an AV-268, which has no look at a stop, for up to 4
    /// seconds more; so a port can be busy for up to 9.6 seconds after a cancel.
    void cancel();
    /// Searches all ports that QSerialPortInfo knows.
    void start();
    /// Searches the named ports, each once. A name is one of QSerialPortInfo's, or a path.
    /// Intended: no names means noDevices() without finished(), which clients of the print service
    /// tell from a search that ran (test emptyInputHasNoFinished). A search that is under way goes
    /// on beside the new one.
    void start(QStringList portNames);
    /// Re-checks records, all at once; the first confirmed one ends the test. A record without
    /// the type of a serial printer, an identifier and a port name is taken for not confirmed.
    /// The settings of a record are the one line that is tried, with the exceptions that
    /// PrintersHelper::scan() names, and the device that comes back may be another model of the
    /// record's family. The list isn't changed.
    /// Intended: no records means noDevices() without finished() (test emptyInputHasNoFinished).
    void test(QList<PrintDeviceInfo> &devs);

private Q_SLOTS:
    void watcherFinished();

Q_SIGNALS:
    /// A printer was identified; comes at most once from a search.
    /// Intended: comes behind finished(), and clients of this library wait for it there (test
    /// finishedComesBeforeTheDevice).
    void deviceFinded(PrintDeviceInfo info);
    /// The search has nothing to report; the text is for the user.
    void noDevices(QString err);
    /// The search is over.
    void finished();
    /// Internal: reaches every running task. A slot must not wait for the tasks.
    void needCancel();

private:
    void watch(const QString &portName, const QFuture<PrintDeviceInfo> &future);
    void accept(const PrintDeviceInfo &info);
    void finishWithoutDevice();

    QList<PrintDeviceInfo> m_devices;
    QMap<QString, QPointer<QFutureWatcher<PrintDeviceInfo>>> m_watchers;
    QSharedPointer<FinderLink> m_link;
};
