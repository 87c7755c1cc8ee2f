#include "commandsets/printerselection_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

void askStatus(Printer &printer, const StreamCommand &command)
{
    printer.roll.addEvent(Paper::Event::Status,
                          QStringLiteral("%1 %2").arg(QString::fromLatin1(command.row->mnemonic),
                                                      QString::fromLatin1(command.row->meaning)));
}

void selectPrinter(Printer &printer, const StreamCommand &command)
{
    printer.isSelected = selectionBy(command).value_or(true);
    if (!printer.isSelected)
        printer.noteFor(command, QStringLiteral("sends what follows to the printer's neighbour"));
}

/// What changes nothing that can be seen on paper.
void changeNothing(Printer & /*printer*/, const StreamCommand & /*command*/) {}

constexpr CommandId questions[] = {
    CommandId::RealTimeStatus,  CommandId::DrawerStatus,       CommandId::PaperStatus,
    CommandId::Identification,  CommandId::TransmitStatus,     CommandId::AutomaticStatus,
    CommandId::RequestResponse, CommandId::GraphicsCapacity,   CommandId::GraphicsFree,
    CommandId::GraphicsList,    CommandId::DownloadsList,      CommandId::QrSize,
    CommandId::Pdf417Size,      CommandId::MaxiCodeSize,       CommandId::DataBarSize,
    CommandId::CompositeSize,   CommandId::AztecSize,          CommandId::DataMatrixSize,
    CommandId::EjectorStatus,   CommandId::MaintenanceCounter, CommandId::UserMemoryRead,
    CommandId::StatusRequest,   CommandId::ParameterStatus,    CommandId::Acknowledge,
};

constexpr CommandId unseen[] = {
    CommandId::RealTimeSwitch,   CommandId::Smoothing,       CommandId::RealTimeRequest,
    CommandId::RealTimePowerOff, CommandId::SensorsForEnd,   CommandId::SensorsForStop,
    CommandId::PanelButtons,     CommandId::InkStatus,       CommandId::OfflineResponse,
    CommandId::OneDirection,     CommandId::PrintControl,    CommandId::GraphicsDensity,
    CommandId::PrintDensity,     CommandId::HeadControl,     CommandId::PrintSpeed,
    CommandId::MaintenanceReset, CommandId::OnlineRecovery,  CommandId::NotchDistance,
    CommandId::UserMemory,       CommandId::UserMemoryWrite, CommandId::Customize,
    CommandId::UserSetup,        CommandId::KanjiFont,       CommandId::SlashedZero,
    CommandId::EtbMark,          CommandId::EtbReset,        CommandId::StatusMode,
    CommandId::EndMark,          CommandId::MemorySwitch,    CommandId::DriverMode,
    CommandId::BuzzerPulse,      CommandId::TwoColours,      CommandId::Calibrate,
    CommandId::SetParameters,    CommandId::SetParameter,    CommandId::StoreParameters,
};

QVector<HandlerRow> makeStatusRows()
{
    QVector<HandlerRow> rows = {{CommandId::PrinterSelect, selectPrinter}};
    for (const CommandId id : questions)
        rows.append({id, askStatus});
    for (const CommandId id : unseen)
        rows.append({id, changeNothing});
    return rows;
}

}  // namespace

HandlerRows statusHandlers()
{
    static const QVector<HandlerRow> rows = makeStatusRows();
    return {rows.constBegin(), rows.constEnd()};
}

}  // namespace printerslib::drivers
