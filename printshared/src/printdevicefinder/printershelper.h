#pragma once

#include <QObject>
#include <QSerialPort>
#include <QSharedPointer>
#include <QString>
#include <QVector>
#include <atomic>
#include <functional>

#include "hearth/rs232portsettings.h"
#include "printerslib_export.h"

enum class EntryOutcome;

/// Identifies the receipt printer on one serial port by speaking to it, with the line settings that
/// such printers can have. It speaks to nothing but that port, and leaves it open.
///
/// A helper is used by the thread that its port lives in; requestStop() alone may be called from
/// any thread. While it works it calls QCoreApplication::processEvents() on its thread.
class PRINTERSLIB_EXPORT PrintersHelper : public QObject
{
    Q_OBJECT

public:
    /// @param port shared with the caller; may be null, and then nothing is ever found
    explicit PrintersHelper(const QSharedPointer<QSerialPort> &port, QObject *parent = nullptr);

    /// Looks for a printer. The port is opened first if it isn't open; it is never closed here.
    ///
    /// With an empty id this is a search: all probes in their order, each over all its line
    /// settings, near three minutes on a silent port. With an id it is the confirmation of that one
    /// model on the given settings, and later searches of this helper walk that one entry only.
    /// Not all models keep to that: a TSP-TUP is looked for on its own 24 line settings and an
    /// AV-268 on its own one, whatever is given, and to a Citizen PPU-231 nothing is sent above
    /// 19200 baud, so that it isn't confirmed there. Custom, Citizen and Epson printers that share
    /// a probe are told apart by their answer, and the id that comes back may be another model of
    /// them (test confirmationMayGiveAnotherModelOfTheFamily).
    /// @param id       on success the identifier of the model, one of TextPrinterModels
    /// @param settings on success those on which the printer answered; otherwise unspecified
    /// @return whether a printer answered as one of ours does. Intended: true with an untouched id
    ///         after the identification byte 3D, whose model has no identifier;
    ///         PrintDeviceFinder takes that for nothing found (test answer3DIsTrueWithoutAModel).
    ///         Intended: false for the id of the Citizen CPP-8001, which a search can report but
    ///         no probe confirms (test modelsThatNoProbeConfirms).
    bool scan(QString &id, hearth::Rs232PortSettings &settings);

    /// Puts baud rate, parity, data bits, stop bits and flow control on the port; failures are
    /// not looked at. Does nothing without a port.
    void setPortSettings(const hearth::Rs232PortSettings &settings);
    /// Whether there is a port, and it is open. In a search of PrintDeviceFinder a port whose
    /// device has gone is closed here, and a cancelled test's port.
    bool portIsValid() const;
    /// Waits for input on the port.
    /// @return whether there is something to read; false at once if the port isn't valid
    bool waitForReadyRead(int milliseconds);
    /// The line settings of Star printers: 24 entries, built anew by each call.
    QVector<hearth::Rs232PortSettings> prepareStarSettings();

    /// @name The probes, one per family of printers
    /// Each gives true when it has identified a printer, with arguments as for scan().
    /// @{

    /// Custom, Citizen and Epson printers, which tell their model when asked.
    bool scan1D491(QString &id, hearth::Rs232PortSettings &settings);
    /// Intended: always false without a look at the port; it holds a place in the order of the
    /// probes (test scan1B73TouchesNothing).
    bool scan1B73(QString &id, hearth::Rs232PortSettings &settings);
    /// Swecoin printers.
    bool scanSwecoin(QString &id, hearth::Rs232PortSettings &settings);
    /// Star printers. Intended: after a port that went away or an echoing line the helper keeps the
    /// Star line settings, and the probes after it walk those (test
    /// starListStaysAfterAnEchoingLine).
    bool scanStar(QString &id, hearth::Rs232PortSettings &settings);
    /// The AV-268. Intended: runs even after requestStop() (test av268RunsAfterAStop).
    bool scanAV268(QString &id, hearth::Rs232PortSettings &settings);
    /// The Citizen PPU-231, told by its status and its silence.
    bool scanSimple(QString &id, hearth::Rs232PortSettings &settings);
    /// @}

    /// Ends the scan at its next line setting; the dialogue under way runs to its end, up to 5.6
    /// seconds. In a search scanAV268() still runs behind it, unless it has run already: up to 4
    /// seconds more. There is no way back. Thread-safe.
    void requestStop();

private:
    bool search(QString &id, hearth::Rs232PortSettings &settings);
    bool confirm(QString &id, hearth::Rs232PortSettings &settings);
    EntryOutcome walk(QVector<hearth::Rs232PortSettings> entries,
                      hearth::Rs232PortSettings &settings,
                      const std::function<EntryOutcome()> &dialogue, int fastestBaudRate = 0);

    QSharedPointer<QSerialPort> m_port;
    QVector<hearth::Rs232PortSettings> m_portSettings;
    std::atomic<bool> m_stopRequested{false};
};
