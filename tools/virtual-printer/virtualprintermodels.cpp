#include "virtualprintermodels.h"

#include <algorithm>
#include <iterator>

namespace {

enum class Family { Identifying, Swecoin, Star, ThreeStatus, OneStatus };

struct ModelRow
{
    const char *id;
    Family family;
    char identification;  ///< Answer to GS I, for the identifying family.
    int baudRate;
    QSerialPort::FlowControl flowControl;
};

// The usual lines are those that a search comes to early.
constexpr ModelRow models[] = {
    {"CUSTOM_VKP_80", Family::Identifying, '\x5D', 57600, QSerialPort::NoFlowControl},
    {"CUSTOM_TG_2480_H", Family::Identifying, '\xA7', 57600, QSerialPort::NoFlowControl},
    {"CUSTOM_TG_2480_SE", Family::Identifying, '\x93', 57600, QSerialPort::NoFlowControl},
    {"CITIZEN_PPU_700", Family::Identifying, '\x75', 57600, QSerialPort::NoFlowControl},
    {"CITIZEN_CBM_1000", Family::Identifying, '\x30', 57600, QSerialPort::NoFlowControl},
    {"CITIZEN_CTS_2000", Family::Identifying, '\x51', 57600, QSerialPort::NoFlowControl},
    {"CITIZEN_CPP_8001", Family::Identifying, '\x20', 57600, QSerialPort::NoFlowControl},
    {"EPSON_EU_4XX", Family::Identifying, '\x27', 57600, QSerialPort::NoFlowControl},
    {"SWECOIN_TM_20XX", Family::Swecoin, 0, 115200, QSerialPort::NoFlowControl},
    {"TSP-TUP", Family::Star, 0, 38400, QSerialPort::NoFlowControl},
    {"AV_268", Family::ThreeStatus, 0, 115200, QSerialPort::SoftwareControl},
    {"CITIZEN_PPU_231", Family::OneStatus, 0, 19200, QSerialPort::NoFlowControl},
};

template <std::size_t Size>
QByteArray bytes(const char (&text)[Size])
{
    return QByteArray(text, static_cast<int>(Size - 1));
}

QVector<VirtualReply> identifyingReplies(char identification)
{
    const QByteArray answer(1, identification);
    return {{bytes("\x1D\x49\x01"), {answer}}, {bytes("\x1D\x49\x31"), {answer}}};
}

QVector<VirtualReply> swecoinReplies()
{
    return {{bytes("\x1B\x05\x07"), {bytes("\x01\x0C")}},
            {bytes("\x1B\x05\x01"), {bytes("\x06")}},
            {bytes("\x1B\x06\x11"), {bytes("\x11")}},
            {bytes("\x1B\x06\x12"), {bytes("\x12")}}};
}

// The silent rows keep a byte 05 or 04 within another printer's command from counting as ENQ or
// EOT.
QVector<VirtualReply> starReplies()
{
    return {{bytes("\x1B\x1E\x60\x02"), {}},
            {bytes("\x1B\x05\x07"), {}},
            {bytes("\x1B\x05\x01"), {}},
            {bytes("\x01\x02\x03\x04"), {}},
            {bytes("\x1B\x06\x01"), {bytes("\x01\x00")}},
            {bytes("\x05"), {bytes("\x00")}},
            {bytes("\x04"), {bytes("\x00")}}};
}

QVector<VirtualReply> statusReplies()
{
    return {{bytes("\x1B\x76"), {bytes("\x00")}}};
}

QVector<VirtualReply> repliesOf(const ModelRow &row)
{
    switch (row.family) {
        case Family::Identifying:
            return identifyingReplies(row.identification);
        case Family::Swecoin:
            return swecoinReplies();
        case Family::Star:
            return starReplies();
        case Family::ThreeStatus:
        case Family::OneStatus:
            return statusReplies();
    }
    return {};
}

}  // namespace

QStringList virtualModelIds()
{
    QStringList ids;
    for (const ModelRow &row : models)
        ids.append(QLatin1String(row.id));
    return ids;
}

std::optional<VirtualModel> virtualModel(const QString &id)
{
    const auto *const row =
        std::find_if(std::begin(models), std::end(models),
                     [&id](const auto &m) { return id == QLatin1String(m.id); });
    if (row == std::end(models))
        return std::nullopt;
    return VirtualModel{id, row->baudRate, row->flowControl, repliesOf(*row)};
}
