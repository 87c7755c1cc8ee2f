#include "printdevicefinder/printershelper.h"

#include <QCoreApplication>

#include "printdevicefinder/cancellableport_p.h"
#include "printdevicefinder/portsettingsmatrix_p.h"
#include "printdevicefinder/printershelper_p.h"
#include "printdevicefinder/searchprinters_p.h"
#include "printers/textprintermodels.h"

namespace {

using Probe = bool (PrintersHelper::*)(QString &, hearth::Rs232PortSettings &);

constexpr Probe searchOrder[] = {
    &PrintersHelper::scan1D491, &PrintersHelper::scan1B73,  &PrintersHelper::scanSwecoin,
    &PrintersHelper::scanStar,  &PrintersHelper::scanAV268, &PrintersHelper::scanSimple,
};

struct ConfirmationRow
{
    const QString *id;
    Probe probe;
};

// MODEL_CITIZEN_CPP_8001 is not here: no probe confirms it, though scan1D491 reports it.
constexpr ConfirmationRow confirmations[] = {
    {&TextPrinterModels::MODEL_AV_268, &PrintersHelper::scanAV268},
    {&TextPrinterModels::MODEL_CUSTOM_VKP_80, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_CUSTOM_TG_2480_H, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_CUSTOM_TG_2480_SE, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_CITIZEN_PPU_700, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_CITIZEN_CBM_1000, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_CITIZEN_CTS_2000, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_EPSON_EU_4XX, &PrintersHelper::scan1D491},
    {&TextPrinterModels::MODEL_TSP_TUP, &PrintersHelper::scanStar},
    {&TextPrinterModels::MODEL_CITIZEN_PPU_231, &PrintersHelper::scanSimple},
    {&TextPrinterModels::MODEL_SWECOIN_TM_20XX, &PrintersHelper::scanSwecoin},
};

bool waitOnPort(QSerialPort &port, int milliseconds)
{
    return port.waitForReadyRead(milliseconds);
}

}  // namespace

discovery::WaitForInput discovery::waitForInput = waitOnPort;

PrintersHelper::PrintersHelper(const QSharedPointer<QSerialPort> &port, QObject *parent)
    : QObject(parent), m_port(port), m_portSettings(portsettingsmatrix::common())
{
    setObjectName(QStringLiteral("printersHelper[%1]")
                      .arg(m_port.isNull() ? tr("Unknown") : m_port->portName()));
}

bool PrintersHelper::scan(QString &id, hearth::Rs232PortSettings &settings)
{
    if (m_port.isNull()) {
        qCritical().noquote() << tr("There are no port objects");
        return false;
    }
    qCDebug(SEARCH_PRINTERS).noquote()
        << tr("Start search on %1 for printers").arg(m_port->portName());
    if (!m_port->isOpen() && !m_port->open(QIODevice::ReadWrite)) {
        qCritical().noquote() << tr("Open port error (%1)").arg(m_port->portName());
        return false;
    }
    const bool found = id.isEmpty() ? search(id, settings) : confirm(id, settings);
    qCDebug(SEARCH_PRINTERS).noquote()
        << tr("Stop search on %1 for printers").arg(m_port->portName()) << id;
    return found;
}

bool PrintersHelper::search(QString &id, hearth::Rs232PortSettings &settings)
{
    for (const Probe probe : searchOrder) {
        if ((this->*probe)(id, settings))
            return true;
    }
    return false;
}

/// Intended: the printer's answer takes the place of the id, so another model of a family counts as
/// confirmed (test confirmationMayGiveAnotherModelOfTheFamily).
bool PrintersHelper::confirm(QString &id, hearth::Rs232PortSettings &settings)
{
    m_portSettings = {settings};
    for (const ConfirmationRow &row : confirmations) {
        if (id == *row.id)
            return (this->*row.probe)(id, settings);
    }
    return false;
}

void PrintersHelper::setPortSettings(const hearth::Rs232PortSettings &settings)
{
    if (m_port.isNull())
        return;
    m_port->setBaudRate(settings.baudRate(), QSerialPort::AllDirections);
    m_port->setParity(settings.parity());
    m_port->setDataBits(settings.dataBits());
    m_port->setStopBits(settings.stopBits());
    m_port->setFlowControl(settings.flowControl());
}

bool PrintersHelper::portIsValid() const
{
    if (m_port.isNull())
        return false;
    if (auto *const cancellable = dynamic_cast<CancellablePort *>(m_port.data()))
        cancellable->closeIfRequested();
    return m_port->isOpen();
}

bool PrintersHelper::waitForReadyRead(int milliseconds)
{
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    if (!portIsValid())
        return false;
    if (m_port->bytesAvailable() > 0)
        return true;
    return discovery::waitForInput(*m_port, milliseconds);
}

QVector<hearth::Rs232PortSettings> PrintersHelper::prepareStarSettings()
{
    return portsettingsmatrix::star();
}

void PrintersHelper::requestStop()
{
    m_stopRequested.store(true, std::memory_order_relaxed);
}

// The entries come by value: a scan that an event starts in here replaces the helper's list.
EntryOutcome PrintersHelper::walk(QVector<hearth::Rs232PortSettings> entries,
                                  hearth::Rs232PortSettings &settings,
                                  const std::function<EntryOutcome()> &dialogue,
                                  int fastestBaudRate)
{
    const PrinterDialogue line(*this, m_port.data());
    for (int i = 0; i < entries.size(); ++i) {
        const hearth::Rs232PortSettings &entry = entries.at(i);
        if (fastestBaudRate > 0 && entry.baudRate() > fastestBaudRate)
            continue;
        qCDebug(SEARCH_PRINTERS).nospace().noquote() << line.portLabel() << ' ' << entry.baudRate()
                                                     << ' ' << i + 1 << " from " << entries.size();
        QCoreApplication::processEvents();
        if (m_stopRequested.load(std::memory_order_relaxed))
            return EntryOutcome::NextEntry;
        settings = entry;
        setPortSettings(settings);
        const EntryOutcome outcome = dialogue();
        if (outcome != EntryOutcome::NextEntry)
            return outcome;
    }
    return EntryOutcome::NextEntry;
}
