#pragma once

#include <printerslib/drivers/printtarget.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <optional>

#include "jobrunner.h"

/// A receipt on its way to a printer, or to another one in its place.
namespace tool {

/// A receipt made for one printer.
struct PreparedReceipt
{
    JobOrder order;
    printerslib::drivers::PrintTarget target;
};

struct PrinterDelivery
{
    PreparedReceipt receipt;
    std::optional<PreparedReceipt> spare;
    /// Whether it goes to the other printer also when this one has got some or all of it, and isn't
    /// known to have printed it.
    bool repeatsOnSpare = false;
    bool isRepeat = false;  ///< whether its first line says so already
    bool asJson = false;
};

/// "CUSTOM_VKP_80, paper 80 mm: 1234 bytes, 1 piece of paper"
QString receiptText(const printerslib::drivers::PrintTarget &target,
                    const printerslib::drivers::EncodedDocument &encoded);

/// Prints it, and tells what became of it. Gives the exit status.
int deliver(const PrinterDelivery &delivery);

/// The options --spare, --spare-model and --spare-repeats.
QList<QCommandLineOption> spareOptions();
/// Whether one of them is given.
bool choosesSpare(const QCommandLineParser &parser);
QCommandLineOption spareModelOption();    ///< the second of them
QCommandLineOption spareRepeatsOption();  ///< the third
/// The other printer; nothing if there is none. Complains, and gives false, if these options
/// contradict themselves or others.
bool setSpare(const QCommandLineParser &parser, const printerslib::drivers::PrinterAddress &printer,
              std::optional<printerslib::drivers::PrinterAddress> &spare);

}  // namespace tool
