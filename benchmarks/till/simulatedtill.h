#pragma once

#include <QTimer>
#include <memory>

#include "printerdevice.h"
#include "printerslib/drivers/printjob.h"

namespace till {

class SimulatedLine;

/// How long a line was what, in times of a byte.
struct LineTimes
{
    qint64 busy = 0;    ///< a byte went
    qint64 held = 0;    ///< the printer accepted nothing
    qint64 waited = 0;  ///< all had gone, and an answer was due
    qint64 idle = 0;    ///< none of these

    qint64 all() const { return busy + held + waited + idle; }
};

/// A till that prints one receipt after the other at 19200 baud, on a printer of 150 mm a second.
/// Its clock goes on by a byte's time with each turn of the event loop, so that a turn in which the
/// job has nothing on the line counts as idle, however fast the machine is.
class SimulatedTill
{
public:
    SimulatedTill();
    ~SimulatedTill();

    /// Prints to the end of the job.
    printerslib::drivers::PrintJobResult print(
        const printerslib::drivers::EncodedDocument &document);
    LineTimes times() const { return m_times; }

private:
    void turn();
    bool isWaiting() const;

    PrinterDevice m_device;
    QTimer m_timer;
    SimulatedLine *m_line = nullptr;  ///< the job's
    std::unique_ptr<printerslib::drivers::PrintJob> m_job;
    LineTimes m_times;
};

}  // namespace till
