#pragma once

#include <QByteArray>

/// One byte sequence of a dialogue with a printer.
struct DeviceMessage
{
    const char *name;
    const char *mnemonic;
    const char *answer;  ///< What a printer of the family answers.
    const char *bytes;
    int size;

    /// Without a copy of the bytes.
    QByteArray toByteArray() const { return QByteArray::fromRawData(bytes, size); }
};

/// All that discovery ever sends to a device.
namespace devicemessages {

template <std::size_t Size>
constexpr DeviceMessage message(const char *name, const char *mnemonic, const char *answer,
                                const char (&bytes)[Size])
{
    return {name, mnemonic, answer, bytes, static_cast<int>(Size - 1)};
}

// clang-format off
inline constexpr auto statusRequest =
    message("status request", "ESC v", "one status byte", "\x1B\x76");
inline constexpr auto threeFillerBytes =
    message("three filler bytes", "SOH STX ETX", "none", "\x01\x02\x03");
inline constexpr auto fourFillerBytes =
    message("four filler bytes", "SOH STX ETX EOT", "none", "\x01\x02\x03\x04");
inline constexpr auto cut =
    message("cut", "ESC i", "none", "\x1B\x69");

inline constexpr auto idRequestA =
    message("id request A", "GS I 1", "one identification byte", "\x1D\x49\x01");
inline constexpr auto idRequestB =
    message("id request B", "GS I '1'", "one identification byte", "\x1D\x49\x31");
inline constexpr auto lineSpacing =
    message("line spacing", "ESC 3 255, LF", "none", "\x1B\x33\xFF\x0A");
inline constexpr auto epsonCut =
    message("Epson cut", "GS V 'f' 160", "none", "\x1D\x56\x66\xA0");
inline constexpr auto customClosing =
    message("Custom closing", "FS 192 170 15 238 11 '4'", "none", "\x1C\xC0\xAA\x0F\xEE\x0B\x34");
inline constexpr auto feedAndCut =
    message("feed and cut", "SP LF SP LF, ESC i, SP LF", "none", "\x20\x0A\x20\x0A\x1B\x69\x20\x0A");
inline constexpr auto sevenBlankLines =
    message("seven blank lines", "SP LF, seven times", "none",
            "\x20\x0A\x20\x0A\x20\x0A\x20\x0A\x20\x0A\x20\x0A\x20\x0A");
inline constexpr auto eject =
    message("eject", "GS e 2", "none", "\x1D\x65\x02");

inline constexpr auto swecoinFirmware =
    message("Swecoin firmware request", "ESC ENQ BEL", "two bytes of a version", "\x1B\x05\x07");
inline constexpr auto swecoinStep2 =
    message("Swecoin step 2", "ESC ENQ SOH", "ACK or NAK", "\x1B\x05\x01");
inline constexpr auto swecoinStep3 =
    message("Swecoin step 3", "ESC ACK DC1", "DC1", "\x1B\x06\x11");
inline constexpr auto swecoinStep4 =
    message("Swecoin step 4", "ESC ACK DC2", "DC2", "\x1B\x06\x12");

inline constexpr auto starMode =
    message("Star mode", "ESC RS '`' 2", "none", "\x1B\x1E\x60\x02");
inline constexpr auto starStatus =
    message("Star status", "ESC ACK SOH", "two or more status bytes", "\x1B\x06\x01");
inline constexpr auto enq =
    message("ENQ", "ENQ", "one byte", "\x05");
inline constexpr auto eot =
    message("EOT", "EOT", "one byte", "\x04");
// The beginning of "STAR-TEST".
inline constexpr auto starFiller =
    message("Star filler", "'STA'", "fewer than three bytes", "\x53\x54\x41");
inline constexpr auto starCut =
    message("Star cut", "ESC d '2'", "none", "\x1B\x64\x32");
// clang-format on

}  // namespace devicemessages
