#pragma once

#include <QList>
#include <QSerialPort>
#include <QString>
#include <QVector>

#include "printdevicefinder/printdeviceinfo.h"

/// The line settings that a search of one port goes through, probe by probe, and how long each of
/// them is waited for where nobody answers. The search tells the line settings that are in force at
/// each wait; they say where it is, since those that follow each other differ.
class SearchPlan
{
public:
    /// Of a search: 171 seconds.
    static SearchPlan ofSearch();
    /// Of a confirmation of these records, one after the other.
    static SearchPlan ofRecords(const QList<PrintDeviceInfo> &records);

    /// The search waits with these line settings.
    void advance(int baudRate, QSerialPort::FlowControl flowControl);
    /// The search of this port is over.
    void finish();

    bool isEmpty() const { return m_steps.isEmpty(); }
    /// Milliseconds of the whole, and of what is still to come.
    int wholeTime() const;
    int restTime() const;

    /// The kind of printer that is looked for, for example "Swecoin"; empty behind the end.
    QString kind() const;
    /// For example "line setting 3 of 63, Swecoin, 115200 baud".
    QString toString() const;

private:
    enum class Probe { Identification, Swecoin, Star, Av268, Simple };
    struct ProbeRow;
    struct Step
    {
        const ProbeRow *row;
        int entry;
        int entries;
        int baudRate;
        QSerialPort::FlowControl flowControl;
    };

    static const ProbeRow _rows[];
    static Probe probeOf(const QString &modelId);
    void append(Probe probe, const QVector<int> &baudRates,
                const QVector<QSerialPort::FlowControl> &flowControls);
    void appendWhole(Probe probe);

    QVector<Step> m_steps;
    int m_current = 0;
};
