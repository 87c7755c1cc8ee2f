#include "settings/printersettings.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "settings/settingsitem_p.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"

namespace {

// Guards the serial settings, the pointer to them and the printer's name for those operations that
// don't take the settings mutex, because they are called with it held. It is kept from the naming
// of the serial settings until they have been used under that name. Nothing is locked under it but
// the serial settings themselves, which call nothing.
std::mutex portMutex;

using PortLock = std::lock_guard<std::mutex>;

constexpr unsigned int textPrinterType = 1;
constexpr unsigned int systemPrinterType = 2;

// Both enumerations know 1 and 2; any other number in an item is 0.
template <typename Enumeration>
Enumeration knownOrZero(const QString &text)
{
    const int number = text.toInt();
    return static_cast<Enumeration>(number == 1 || number == 2 ? number : 0);
}

/// The item as it goes under the locks: the section's value as a text, that of the port for it to
/// choose.
settingsitem::Item plainItem(const settingsitem::Item &item)
{
    if (settingsitem::group(item) == PrinterSettings::SECTION)
        return settingsitem::withText(item);
    return settingsitem::plain(item, settingsitem::plainValue(settingsitem::value(item)));
}

}  // namespace

const QString PrinterSettings::SECTION = QStringLiteral("PRINTER");
const QString PrinterSettings::PRINTER_TYPE = QStringLiteral("printerType");
const QString PrinterSettings::PRINTER_ID = QStringLiteral("printerName");
const QString PrinterSettings::EMPTY_STRINGS_AT_END = QStringLiteral("emptyStringsAtEnd");
const QString PrinterSettings::SPACES_BEFORE_STRING = QStringLiteral("spacesBeforeString");
const QString PrinterSettings::PAPER_LOOP_FLAG = QStringLiteral("paperLoopFlag");
const QString PrinterSettings::MOVE_CHECK_TO = QStringLiteral("moveCheckTo");
const QString PrinterSettings::CHARACTER_MODE = QStringLiteral("characterMode");
const QString PrinterSettings::ENABLE_PORT_LOGGING = QStringLiteral("enablePortLogging");
const QString PrinterSettings::BASE_FISCAL_FONT = QStringLiteral("baseFiscFont");
const QString PrinterSettings::DEFAULT_SYMBOLS_PER_LINE = QStringLiteral("defSymPerLine");

const QString PrinterSettings::MAPPED_EMPTY_STRINGS_AT_END =
    QStringLiteral("PRINT_EMPTY_STRINGS_AT_END");
const QString PrinterSettings::MAPPED_SPACES_BEFORE_STRING =
    QStringLiteral("PRINT_SPACES_BEFORE_STRING");
const QString PrinterSettings::MAPPED_PAPER_LOOP_FLAG = QStringLiteral("PAPER_LOOP_FLAG");
const QString PrinterSettings::MAPPED_MOVE_CHECK_TO = QStringLiteral("MOVE_TICKET_TO");
const QString PrinterSettings::MAPPED_PRINTER_CHARACTER_MODE =
    QStringLiteral("PRINTER_CHARACTER_MODE");

QMutex PrinterSettings::_settingsMutex;
unsigned int PrinterSettings::_printerType = 0;
QString PrinterSettings::_printerId;
int PrinterSettings::_emptyStringsAtEnd = 5;
int PrinterSettings::_spacessBeforeString = 0;
EPaperLoopFlag PrinterSettings::_paperLoopFlag = PaperLoopNone;
signed char PrinterSettings::_moveCheckTo = 50;
IPrintDeviceSettings::ECharactersMode PrinterSettings::_charactersMode = CharactersAsWritten;
bool PrinterSettings::_enablePortLogging = false;
int PrinterSettings::_baseFiscalFont = 1;
int PrinterSettings::_defSymbolsPerLine = 0;
QSharedPointer<hearth::RS232Settings> PrinterSettings::_port(new hearth::RS232Settings(QString()));

/// One setting of the default section, in the order of the item list. Both functions run under the
/// settings mutex.
struct PrinterSettings::Field
{
    const QString &key;
    QVariant (*read)();
    void (*write)(const QString &value);
};

const PrinterSettings::Field PrinterSettings::fields[] = {
    {PRINTER_TYPE, [] { return QVariant(int(_printerType)); },
     [](const QString &value) { _printerType = value.toUInt(); }},
    {PRINTER_ID, [] { return QVariant(_printerId); }, storePrinterId},
    {EMPTY_STRINGS_AT_END, [] { return QVariant(_emptyStringsAtEnd); },
     [](const QString &value) { _emptyStringsAtEnd = value.toInt(); }},
    {SPACES_BEFORE_STRING, [] { return QVariant(_spacessBeforeString); },
     [](const QString &value) { _spacessBeforeString = value.toInt(); }},
    {PAPER_LOOP_FLAG, [] { return QVariant(int(_paperLoopFlag)); },
     [](const QString &value) { _paperLoopFlag = knownOrZero<EPaperLoopFlag>(value); }},
    {MOVE_CHECK_TO, [] { return QVariant(int(_moveCheckTo)); },
     [](const QString &value) { _moveCheckTo = static_cast<signed char>(value.toInt()); }},
    {CHARACTER_MODE, [] { return QVariant(int(_charactersMode)); },
     [](const QString &value) { _charactersMode = knownOrZero<ECharactersMode>(value); }},
    {ENABLE_PORT_LOGGING, [] { return QVariant(int(_enablePortLogging)); },
     [](const QString &value) { _enablePortLogging = value.toInt() != 0; }},
    {BASE_FISCAL_FONT, [] { return QVariant(_baseFiscalFont); },
     [](const QString &value) { _baseFiscalFont = value.toInt(); }},
    {DEFAULT_SYMBOLS_PER_LINE, [] { return QVariant(_defSymbolsPerLine); },
     [](const QString &value) { _defSymbolsPerLine = value.toInt(); }},
};

PrinterSettings::PrinterSettings()
{
    PrinterSettings::port();
}

PrinterSettings::~PrinterSettings() = default;

QSharedPointer<hearth::RS232Settings> PrinterSettings::port(const QString &name) const
{
    const PortLock lock(portMutex);
    return portNamedLocked(name);
}

QSharedPointer<hearth::RS232Settings> PrinterSettings::port() const
{
    QString name;
    {
        const PortLock lock(portMutex);
        name = _printerId;
    }
    return port(name);
}

unsigned int PrinterSettings::printerType() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _printerType;
}

void PrinterSettings::setPrinterType(unsigned int type)
{
    const QMutexLocker lock(&_settingsMutex);
    _printerType = type > systemPrinterType ? 0 : type;
}

QString PrinterSettings::printerId() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _printerId;
}

void PrinterSettings::setPrinterId(const QString &name)
{
    const QMutexLocker lock(&_settingsMutex);
    storePrinterId(name);
    // Intended: what it gives isn't used; programs with a port() of their own wait for the call
    // (test setPrinterIdAsksTheVirtualPort).
    port();
    const PortLock portLock(portMutex);
    portNamedLocked(name);
}

bool PrinterSettings::portLoggingEnabled() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _enablePortLogging;
}

void PrinterSettings::setPortLoggingEnabled(bool enabled)
{
    const QMutexLocker lock(&_settingsMutex);
    _enablePortLogging = enabled;
}

int PrinterSettings::emptyStringsAtEnd() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _emptyStringsAtEnd;
}

void PrinterSettings::setEmptyStringsAtEnd(int count)
{
    const QMutexLocker lock(&_settingsMutex);
    _emptyStringsAtEnd = count;
}

int PrinterSettings::spacessBeforeString() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _spacessBeforeString;
}

void PrinterSettings::setSpacesBeforeString(int count)
{
    const QMutexLocker lock(&_settingsMutex);
    _spacessBeforeString = count;
}

IPrintDeviceSettings::ECharactersMode PrinterSettings::charactersMode() const
{
    const QMutexLocker lock(&_settingsMutex);
    return _charactersMode;
}

void PrinterSettings::setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode)
{
    const QMutexLocker lock(&_settingsMutex);
    _charactersMode = mode;
}

bool PrinterSettings::paperLoopSupported() const
{
    return false;
}

bool PrinterSettings::paperLoopSupported(const QString &name) const
{
    Q_UNUSED(name)
    return false;
}

EPaperLoopFlag PrinterSettings::paperLoopFlag() const
{
    if (!paperLoopSupported())
        return PaperLoopNone;
    const QMutexLocker lock(&_settingsMutex);
    return _paperLoopFlag;
}

void PrinterSettings::setPaperLoopFlag(EPaperLoopFlag flag)
{
    const QMutexLocker lock(&_settingsMutex);
    _paperLoopFlag = flag;
}

EPaperLoopFlag PrinterSettings::paperLoopFlag(const QString &name)
{
    if (!paperLoopSupported(name))
        return PaperLoopNone;
    const QMutexLocker lock(&_settingsMutex);
    return _paperLoopFlag;
}

void PrinterSettings::setPaperLoopFlag(EPaperLoopFlag flag, const QString &name)
{
    const EPaperLoopFlag stored = paperLoopSupported(name) ? flag : PaperLoopNone;
    const QMutexLocker lock(&_settingsMutex);
    _paperLoopFlag = stored;
}

bool PrinterSettings::checkMoveSettingsSupported() const
{
    return false;
}

bool PrinterSettings::checkMoveSettingsSupported(const QString &name) const
{
    Q_UNUSED(name)
    return false;
}

int PrinterSettings::baseFiscalFont()
{
    const QMutexLocker lock(&_settingsMutex);
    return _baseFiscalFont;
}

void PrinterSettings::setBaseFiscalFont(const int &font)
{
    const QMutexLocker lock(&_settingsMutex);
    _baseFiscalFont = font;
}

int PrinterSettings::getDefSymbolsPerLine()
{
    switch (printerType()) {
        case textPrinterType:
            return TextPrinterSettings().defSymbolsPerLine();
        case systemPrinterType:
            return SystemPrinterSettings().defSymbolsPerLine();
        default:
            return defSymbolsPerLine();
    }
}

void PrinterSettings::setDefSymbolsPerLine(const int &count)
{
    const QMutexLocker lock(&_settingsMutex);
    _defSymbolsPerLine = count;
}

QList<QVariant> PrinterSettings::toList() const
{
    const QMutexLocker lock(&_settingsMutex);
    QList<QVariant> list;
    for (const Field &field : fields)
        settingsitem::append(list, SECTION, field.key, field.read());
    const PortLock portLock(portMutex);
    list.append(portNamedLocked(_printerId)->toList());
    return list;
}

void PrinterSettings::setList(const QList<QVariant> &list)
{
    QVector<settingsitem::Item> items = settingsitem::itemsOf(list);
    std::transform(items.cbegin(), items.cend(), items.begin(), plainItem);
    const QMutexLocker lock(&_settingsMutex);
    for (const settingsitem::Item &item : std::as_const(items))
        setLocked(item);
}

bool PrinterSettings::setValue(const QMap<QString, QVariant> &item)
{
    const settingsitem::Item plain = plainItem(item);
    const QMutexLocker lock(&_settingsMutex);
    return setLocked(plain);
}

int PrinterSettings::defSymbolsPerLine()
{
    const QMutexLocker lock(&_settingsMutex);
    return _defSymbolsPerLine;
}

void PrinterSettings::setPortSettings(const QString &name, const hearth::RS232Settings &source)
{
    const PortLock lock(portMutex);
    const QSharedPointer<hearth::RS232Settings> target = existingPortLocked(name);
    target->setText(source.text());
    target->setPortSettings(source.portSettings());
}

QString PrinterSettings::printerNameToSection(const QString &name) const
{
    return name.toHtmlEscaped();
}

signed char PrinterSettings::moveCheckTo() const
{
    return moveCheckTo(printerId());
}

signed char PrinterSettings::moveCheckTo(const QString &name) const
{
    if (!checkMoveSettingsSupported(name))
        return 0;
    const QMutexLocker lock(&_settingsMutex);
    return _moveCheckTo;
}

void PrinterSettings::setCheckMovingTo(signed char value)
{
    const QMutexLocker lock(&_settingsMutex);
    _moveCheckTo = value;
}

void PrinterSettings::setCheckMovingTo(const QString &name, signed char value)
{
    if (!checkMoveSettingsSupported(name))
        return;
    const QMutexLocker lock(&_settingsMutex);
    _moveCheckTo = value;
}

bool PrinterSettings::setLocked(const QMap<QString, QVariant> &item)
{
    if (!settingsitem::hasGroup(item))
        return false;
    const QString group = settingsitem::group(item);
    if (group == SECTION)
        return setFieldLocked(settingsitem::key(item), settingsitem::value(item).toString());
    if (group != _printerId)
        return false;
    const PortLock lock(portMutex);
    return portNamedLocked(_printerId)->setValue(item);
}

bool PrinterSettings::setFieldLocked(const QString &key, const QString &value)
{
    for (const Field &field : fields) {
        if (key == field.key) {
            field.write(value);
            return true;
        }
    }
    return false;
}

void PrinterSettings::storePrinterId(const QString &name)
{
    const PortLock lock(portMutex);
    _printerId = name;
}

/// The serial settings under whatever name they have; `name` is theirs if they have to be made.
QSharedPointer<hearth::RS232Settings> PrinterSettings::existingPortLocked(const QString &name)
{
    if (!_port)
        _port.reset(new hearth::RS232Settings(name));
    return _port;
}

QSharedPointer<hearth::RS232Settings> PrinterSettings::portNamedLocked(const QString &name)
{
    QSharedPointer<hearth::RS232Settings> port = existingPortLocked(name);
    if (port->name() != name)
        port->setName(name);
    return port;
}
