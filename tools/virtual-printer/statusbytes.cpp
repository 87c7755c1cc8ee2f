#include "statusbytes.h"

#include <algorithm>
#include <iterator>

#include "virtualprintermodels.h"

namespace statusbytes {

namespace {

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::Vendor;

/// A bit, or some, if something is the case.
constexpr int bitsIf(bool condition, int bits)
{
    return condition ? bits : 0;
}

QByteArray byteOf(int value)
{
    return QByteArray(1, static_cast<char>(value));
}

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values)
        bytes.append(static_cast<char>(value));
    return bytes;
}

const char *nameOf(Vendor vendor)
{
    switch (vendor) {
        case Vendor::Custom:
            return "CUSTOM";
        case Vendor::Citizen:
            return "CITIZEN";
        case Vendor::Star:
            return "Star";
        case Vendor::Swecoin:
            return "Swecoin";
        case Vendor::Epson:
        case Vendor::General:
            break;
    }
    return "EPSON";
}

/// The number that a search knows the model by; nothing for one that isn't known so.
QByteArray modelNumber(const PrinterProfile &profile)
{
    constexpr int generalNumber = 0x20;
    const std::optional<VirtualModel> model = virtualModel(profile.catalogueId());
    if (!model)
        return byteOf(generalNumber);
    const auto asksForIt = [](const VirtualReply &reply) { return reply.request == "\x1DI\x01"; };
    const auto reply = std::find_if(model->replies.begin(), model->replies.end(), asksForIt);
    return reply == model->replies.end() ? QByteArray() : reply->answers.value(0);
}

}  // namespace

QByteArray realTimeStatus(int n, const PrinterHardware &hardware)
{
    constexpr int fixedBits = 0x12;
    switch (n) {
        case 1:
            return byteOf(fixedBits | bitsIf(hardware.isStopped(), 0x08));
        case 2:
            return byteOf(fixedBits | bitsIf(hardware.isCoverOpen, 0x04) |
                          bitsIf(!hardware.hasPaper, 0x20) | bitsIf(hardware.isCutterJammed, 0x40));
        case 3:
            return byteOf(fixedBits | bitsIf(hardware.isCutterJammed, 0x08));
        case 4:
            return byteOf(fixedBits | bitsIf(hardware.seesNearEnd(), 0x0C) |
                          bitsIf(!hardware.hasPaper, 0x60));
        default:
            return {};
    }
}

QByteArray fullStatus(const PrinterHardware &hardware)
{
    return bytesOf(
        {0x10, 0x0F, bitsIf(!hardware.hasPaper, 0x01) | bitsIf(hardware.seesNearEnd(), 0x04),
         bitsIf(hardware.isCoverOpen, 0x02), 0x00, bitsIf(hardware.isCutterJammed, 0x01)});
}

QByteArray paperStatus(const PrinterHardware &hardware)
{
    return byteOf(bitsIf(hardware.seesNearEnd(), 0x03) | bitsIf(!hardware.hasPaper, 0x0C));
}

QByteArray automaticStatus(const PrinterHardware &hardware)
{
    return bytesOf({0x10 | bitsIf(hardware.isStopped(), 0x08) | bitsIf(hardware.isCoverOpen, 0x20),
                    bitsIf(hardware.isCutterJammed, 0x08),
                    bitsIf(hardware.seesNearEnd(), 0x03) | bitsIf(!hardware.hasPaper, 0x0C), 0x0F});
}

QByteArray automaticStatusMask(int n)
{
    const int line = bitsIf((n & 0x02) != 0, 0x28);
    const int errors = bitsIf((n & 0x04) != 0, 0x6C);
    const int paper = bitsIf((n & 0x08) != 0, 0x0F);
    return bytesOf({bitsIf((n & 0x01) != 0, 0x04) | line, errors, paper, 0});
}

QByteArray starStatus(const PrinterHardware &hardware, int marks, bool hasOverflown)
{
    // The five bits of the counter stand around the bits that are always the same.
    const int counter = ((marks & 0x07) << 1) | ((marks & 0x18) << 2);
    return bytesOf({0x23, 0x06,
                    bitsIf(marks != 0, 0x02) | bitsIf(hardware.isStopped(), 0x08) |
                        bitsIf(hardware.isCoverOpen, 0x20),
                    bitsIf(hardware.isCutterJammed, 0x08), bitsIf(hasOverflown, 0x40),
                    bitsIf(hardware.seesNearEnd(), 0x04) | bitsIf(!hardware.hasPaper, 0x08), 0x00,
                    counter, 0x00});
}

QByteArray swecoinError(const PrinterHardware &hardware)
{
    constexpr int acknowledged = 0x06;
    constexpr int refused = 0x15;
    const std::pair<bool, int> errors[] = {
        {hardware.isCutterJammed, 2}, {!hardware.hasPaper, 3}, {hardware.isCoverOpen, 4}};
    const auto *const error = std::find_if(std::begin(errors), std::end(errors),
                                           [](const auto &candidate) { return candidate.first; });
    return error == std::end(errors) ? byteOf(acknowledged) : bytesOf({refused, error->second});
}

QByteArray swecoinStatus(const PrinterHardware &hardware, bool hasPrintData, bool wasOff)
{
    const bool hasCode = hardware.isCutterJammed || !hardware.hasPaper || hardware.isCoverOpen;
    return bytesOf({bitsIf(hasCode, 0x80) | bitsIf(hasPrintData, 0x40) | bitsIf(wasOff, 0x20),
                    bitsIf(hardware.isCoverOpen, 0x20) | bitsIf(hardware.isCutterJammed, 0x10) |
                        bitsIf(hardware.seesNearEnd(), 0x02) | bitsIf(!hardware.hasPaper, 0x01)});
}

QByteArray identification(int n, const PrinterProfile &profile)
{
    QByteArray number = modelNumber(profile);
    if (number.isEmpty())
        return {};
    const auto text = [](const QByteArray &value) { return '_' + value + '\0'; };
    switch (n) {
        case 1:
        case '1':
            return number;
        case 2:
        case '2':
            return byteOf(0x02);  // has a cutter
        case 3:
        case '3':
            return byteOf(0x01);
        case 65:
            return text("1.00");
        case 66:
            return text(nameOf(profile.vendor()));
        case 67:
            return text(profile.modelId().toLatin1());
        case 68:
            return text("VIRTUAL001");
        default:
            return {};
    }
}

}  // namespace statusbytes
