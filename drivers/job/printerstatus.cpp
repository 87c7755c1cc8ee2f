#include "printerslib/drivers/printerstatus.h"

#include <algorithm>

namespace printerslib::drivers {

namespace {

/// Flags of TxtPrinterError. Those of its mask of real errors say who can help, and so what a till
/// has to ask for; the others say what it is, or are no error.
enum TxtFlag : int {
    NotReached = 0x001,     ///< an error: nobody is there to take the data, look at line and power
    NeedsPaper = 0x002,     ///< an error: a roll helps, which every cashier can put in
    NearEnd = 0x004,        ///< none: it prints on
    TicketWaits = 0x008,    ///< none: the customer has to take it
    CoverIsOpen = 0x010,    ///< none by itself: says which of NeedsHand
    NeedsHand = 0x020,      ///< an error: somebody at the printer can mend it
    CutterIsStuck = 0x040,  ///< none by itself: says which of NeedsHand
    NeedsService = 0x200,   ///< an error: no hand helps
};

/// What a flag means to the rest of the system.
struct StatusRow
{
    PrinterStatus::Flag flag;
    PrintServiceState::EDeviceState state;
    int txtFlags;
    const char *sentence;
};

/// The gravest first. States: who waits a while, or puts something right, has a printer that is
/// critical; fatal is what stays so. The one of warning prints on.
constexpr StatusRow statusRows[] = {
    {PrinterStatus::UnrecoverableError, PrintServiceState::DeviceFatal, NeedsService,
     "The printer has an error: switch it off and on, or call the service."},
    {PrinterStatus::NoAnswer, PrintServiceState::DeviceCritical, NotReached,
     "The printer doesn't answer."},
    {PrinterStatus::PaperOut, PrintServiceState::DeviceCritical, NeedsPaper, "There is no paper."},
    {PrinterStatus::CoverOpen, PrintServiceState::DeviceCritical, NeedsHand | CoverIsOpen,
     "The cover is open."},
    {PrinterStatus::CutterError, PrintServiceState::DeviceCritical, NeedsHand | CutterIsStuck,
     "The cutter is stuck."},
    {PrinterStatus::RecoverableError, PrintServiceState::DeviceCritical, NeedsHand,
     "The printer has stopped: its paper is jammed, or it is too hot."},
    {PrinterStatus::DataLost, PrintServiceState::DeviceCritical, NotReached,
     "The printer has lost data."},
    {PrinterStatus::OffLine, PrintServiceState::DeviceCritical, NotReached,
     "The printer is off line."},
    {PrinterStatus::PaperNearEnd, PrintServiceState::DeviceWarning, NearEnd,
     "The paper is nearly used up."},
    {PrinterStatus::PaperInPresenter, PrintServiceState::DeviceNormalFirst, TicketWaits,
     "A ticket hasn't been taken yet."},
};

constexpr bool hinders(const StatusRow &row)
{
    return row.state >= PrintServiceState::DeviceCritical;
}

/// Calls `act` with the rows of all flags that are set.
template <typename Act>
void forRowsOf(PrinterStatus::Flags flags, Act act)
{
    for (const StatusRow &row : statusRows) {
        if (flags.testFlag(row.flag))
            act(row);
    }
}

PrinterStatus::Flags obstacles(PrinterStatus::Flags flags)
{
    PrinterStatus::Flags found;
    forRowsOf(flags, [&found](const StatusRow &row) { found.setFlag(row.flag, hinders(row)); });
    return found;
}

/// The sentences. That it is off line goes without saying where the cause is known.
QString sentencesOf(PrinterStatus::Flags flags)
{
    if (obstacles(flags) != PrinterStatus::OffLine)
        flags.setFlag(PrinterStatus::OffLine, false);
    QString text;
    forRowsOf(flags, [&text](const StatusRow &row) {
        text +=
            (text.isEmpty() ? QString() : QStringLiteral(" ")) + QString::fromLatin1(row.sentence);
    });
    return text;
}

}  // namespace

PrinterStatus::PrinterStatus(Flags flags, const QByteArray &native, bool isKnown)
    : m_flags(flags), m_native(native), m_isKnown(isKnown)
{}

bool PrinterStatus::isKnown() const
{
    return m_isKnown;
}

PrinterStatus::Flags PrinterStatus::flags() const
{
    return m_flags;
}

bool PrinterStatus::has(Flag flag) const
{
    return m_flags.testFlag(flag);
}

PrinterStatus PrinterStatus::with(Flags more) const
{
    return PrinterStatus(m_flags | more, m_native, m_isKnown);
}

QByteArray PrinterStatus::native() const
{
    return m_native;
}

unsigned int PrinterStatus::nativeCode() const
{
    unsigned int code = 0;
    const QByteArray first = m_native.left(int(sizeof code));
    for (const char byte : first)
        code = code << 8U | static_cast<quint8>(byte);
    return code;
}

bool PrinterStatus::canPrint() const
{
    return m_isKnown && !obstacles(m_flags);
}

QString PrinterStatus::text() const
{
    QString sentences = sentencesOf(m_flags);
    if (!sentences.isEmpty())
        return sentences;
    return m_isKnown ? QStringLiteral("The printer is ready.")
                     : QStringLiteral("The printer hasn't told its status.");
}

TxtPrinterError PrinterStatus::toTxtPrinterError() const
{
    int code = 0;
    forRowsOf(m_flags, [&code](const StatusRow &row) { code |= row.txtFlags; });
    return TxtPrinterError(QFlags<TxtPrinterError::EError>(QFlag(code)), sentencesOf(m_flags));
}

PrintServiceState PrinterStatus::toServiceState(PrintServiceState::EServiceState service) const
{
    auto device = PrintServiceState::DeviceNormalFirst;
    forRowsOf(m_flags, [&device](const StatusRow &row) { device = std::max(device, row.state); });
    if (!m_isKnown && device < PrintServiceState::DeviceCritical)
        device = PrintServiceState::DeviceInvalid;
    const TxtPrinterError error = toTxtPrinterError();
    PrintServiceState state;
    state.setServiceState(service);
    state.setDeviceState(device);
    state.setDeviceErrorCode(static_cast<unsigned int>(int(error.errorCode())));
    state.setDeviceNativeCode(nativeCode());
    state.setDeviceErorMsg(error.errorText());
    state.setTapeAvailable(!has(PaperOut));
    return state;
}

bool PrinterStatus::operator==(const PrinterStatus &other) const
{
    return m_flags == other.m_flags && m_native == other.m_native && m_isKnown == other.m_isKnown;
}

bool PrinterStatus::operator!=(const PrinterStatus &other) const
{
    return !(*this == other);
}

}  // namespace printerslib::drivers
