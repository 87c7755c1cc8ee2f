#pragma once

#include <QList>
#include <QObject>
#include <QScopedPointer>
#include <QString>
#include <QStringList>

#include "printdevicefinder/printdeviceinfo.h"
#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// A search for a printer that ends once, with one result, where PrintDeviceFinder has several
/// signals: it tells the device behind its end, ends without an end where there is nothing to
/// search, and takes a port that it can't use for one where nobody answers.
///
/// It lives on a thread with an event loop. A slot of over() may delete it, or begin the next
/// search. Who deletes it while it runs hears no more of it.
class PRINTERSLIB_DRIVERS_EXPORT PrinterSearch : public QObject
{
    Q_OBJECT

public:
    /// How a search ended. What wasn't asked is no proof that nothing is there, so where nothing
    /// was found, a port that couldn't be used is the result.
    enum class Result {
        None,       ///< nobody has answered, or there is nothing to search
        Found,      ///< device() has answered
        Cancelled,  ///< by cancel(), before there was anything else
        Busy,  ///< nobody has answered, and a port is held by another program, which text() names
        NotPermitted,  ///< nobody has answered, and a port isn't permitted; text() says to whom it
                       ///< is
    };
    Q_ENUM(Result)

    /// Sets the maximum of the process's global thread pool to 100 with its first search, as
    /// PrintDeviceFinder does.
    explicit PrinterSearch(QObject *parent = nullptr);
    /// Cancels, and doesn't wait.
    ~PrinterSearch() override;

    /// Whether a search is under way: from its beginning up to over().
    bool isRunning() const;
    /// How the last search ended.
    Result result() const;
    /// The printer that was found; invalid without one.
    PrintDeviceInfo device() const;
    /// The result in words for the user: the finder's own where nobody has answered, why ports
    /// can't be used, or the model and its port.
    QString text() const;

public Q_SLOTS:
    /// Searches all ports of the machine. False, and nothing happens, while a search is under way.
    bool start();
    /// Searches these ports, names or paths. False, and nothing happens, while a search is under
    /// way.
    bool start(const QStringList &portNames);
    /// Checks whether one of these printers is where it was. False, and nothing happens, while a
    /// search is under way.
    bool confirm(const QList<PrintDeviceInfo> &records);
    /// Ends the search that is under way; over() comes soon, the ports may be busy for up to 9.6
    /// seconds more. Without a search nothing happens.
    void cancel();

Q_SIGNALS:
    /// The search is over: once for each that began, and never before the event loop has had its
    /// turn.
    void over(printerslib::drivers::PrinterSearch::Result result);

private:
    class State;
    QScopedPointer<State> d;
};

}  // namespace printerslib::drivers
