#pragma once

#include <printerslib/drivers/paper.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

#include "deviceline.h"
#include "printerdevice.h"

/// A virtual printer at its line: brings the bytes of one to the other, as fast as the line is, and
/// has time pass for the printer.
class Playing : public QObject
{
    Q_OBJECT

public:
    /// @param device null: the side isn't one that prints
    /// @param bytesPerSecond of the line; 0: as many as come
    Playing(DeviceLine &line, PrinterSide &side, PrinterDevice *device, int bytesPerSecond);

    /// Does what a line of standard input says, or what --at does.
    void apply(const PrinterFault &fault);

    /// Goes on by itself from here on.
    void start();
    /// Sees what has befallen the device otherwise.
    void look() { goOn(); }

Q_SIGNALS:
    void noted(const QString &text);
    void printed(const QVector<printerslib::drivers::Paper> &papers);

private:
    void goOn();
    void readLine();
    void followDevice();
    void wait();
    int allowance();

    DeviceLine &m_line;
    PrinterSide &m_side;
    PrinterDevice *const m_device;
    const int m_bytesPerSecond;
    QElapsedTimer m_clock;
    QTimer m_timer;
    double m_tokens = 0;         ///< bytes that the line has had time for
    qint64 m_tokensAt = 0;       ///< microseconds
    bool m_mayHaveMore = false;  ///< on the line
    bool m_isBusy = false;
    bool m_isPowered = true;
};
