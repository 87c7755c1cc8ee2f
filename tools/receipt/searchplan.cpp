#include "searchplan.h"

#include "printers/textprintermodels.h"

namespace {

constexpr int parities = 3;
constexpr int fastestOfSimple = 19200;

struct ModelRow
{
    const QString *id;
    int probe;
};

// All other models that can be confirmed are Custom's, Citizen's and Epson's.
const ModelRow modelsWithAProbe[] = {
    {&TextPrinterModels::MODEL_SWECOIN_TM_20XX, 1},
    {&TextPrinterModels::MODEL_TSP_TUP, 2},
    {&TextPrinterModels::MODEL_AV_268, 3},
    {&TextPrinterModels::MODEL_CITIZEN_PPU_231, 4},
};

QVector<int> everyBaudRate()
{
    return {115200, 57600, 38400, 19200, 9600, 4800, 1200};
}

QVector<QSerialPort::FlowControl> everyFlowControl()
{
    return {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl};
}

}  // namespace

struct SearchPlan::ProbeRow
{
    const char *kind;
    int milliseconds;  ///< Waited on a line setting on which nobody answers.
    QVector<int> baudRates;
    QVector<QSerialPort::FlowControl> flowControls;
};

// In the order of the probes, and of a search.
const SearchPlan::ProbeRow SearchPlan::_rows[] = {
    {"Custom, Citizen, Epson", 2 * 300, everyBaudRate(), everyFlowControl()},
    {"Swecoin", 1400, everyBaudRate(), everyFlowControl()},
    {"Star",
     300,
     {38400, 19200, 9600, 4800},
     {QSerialPort::NoFlowControl, QSerialPort::HardwareControl}},
    {"AV-268", 1000, {115200}, {QSerialPort::SoftwareControl}},
    {"Citizen PPU-231", 1000, {19200, 9600, 4800, 1200}, everyFlowControl()},
};

SearchPlan SearchPlan::ofSearch()
{
    SearchPlan plan;
    for (const Probe probe :
         {Probe::Identification, Probe::Swecoin, Probe::Star, Probe::Av268, Probe::Simple})
        plan.appendWhole(probe);
    return plan;
}

SearchPlan SearchPlan::ofRecords(const QList<PrintDeviceInfo> &records)
{
    SearchPlan plan;
    for (const PrintDeviceInfo &record : records) {
        const Probe probe = probeOf(record.deviceId());
        const int baudRate = record.settings().baudRate();
        if (probe == Probe::Star || probe == Probe::Av268)
            plan.appendWhole(probe);
        else if (probe != Probe::Simple || baudRate <= fastestOfSimple)
            plan.append(probe, {baudRate}, {record.settings().flowControl()});
    }
    return plan;
}

SearchPlan::Probe SearchPlan::probeOf(const QString &modelId)
{
    for (const ModelRow &row : modelsWithAProbe) {
        if (modelId == *row.id)
            return static_cast<Probe>(row.probe);
    }
    return Probe::Identification;
}

void SearchPlan::append(Probe probe, const QVector<int> &baudRates,
                        const QVector<QSerialPort::FlowControl> &flowControls)
{
    const bool isOne = baudRates.size() * flowControls.size() == 1;
    const int entries = baudRates.size() * flowControls.size() * (isOne ? 1 : parities);
    int entry = 0;
    for (const int baudRate : baudRates) {
        for (int parity = 0; parity < (isOne ? 1 : parities); ++parity) {
            for (const QSerialPort::FlowControl flowControl : flowControls)
                m_steps.append(
                    {&_rows[static_cast<int>(probe)], ++entry, entries, baudRate, flowControl});
        }
    }
}

void SearchPlan::appendWhole(Probe probe)
{
    const ProbeRow &row = _rows[static_cast<int>(probe)];
    append(probe, row.baudRates, row.flowControls);
}

// A probe may give up and leave line settings out, but never goes back. What fits nowhere, such as
// the baud rate that a port keeps when it has no faster one, says nothing.
void SearchPlan::advance(int baudRate, QSerialPort::FlowControl flowControl)
{
    for (int i = m_current; i < m_steps.size(); ++i) {
        if (m_steps.at(i).baudRate == baudRate && m_steps.at(i).flowControl == flowControl) {
            m_current = i;
            return;
        }
    }
}

void SearchPlan::finish()
{
    m_current = m_steps.size();
}

int SearchPlan::wholeTime() const
{
    int sum = 0;
    for (const Step &step : m_steps)
        sum += step.row->milliseconds;
    return sum;
}

int SearchPlan::restTime() const
{
    int sum = 0;
    for (int i = m_current; i < m_steps.size(); ++i)
        sum += m_steps.at(i).row->milliseconds;
    return sum;
}

QString SearchPlan::kind() const
{
    return m_current < m_steps.size() ? QString::fromLatin1(m_steps.at(m_current).row->kind)
                                      : QString();
}

QString SearchPlan::toString() const
{
    if (m_current >= m_steps.size())
        return QStringLiteral("done");
    const Step &step = m_steps.at(m_current);
    if (step.row == &_rows[static_cast<int>(Probe::Av268)])
        return QStringLiteral("%1, %2 baud").arg(kind()).arg(step.baudRate);
    return QStringLiteral("line setting %1 of %2, %3, %4 baud")
        .arg(step.entry)
        .arg(step.entries)
        .arg(kind())
        .arg(step.baudRate);
}
