#include "printerdelivery.h"

#include <printerslib/drivers/leadingline.h>

#include <memory>

#include "jobreport.h"
#include "printeroption.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::PrinterAddress;
using printerslib::drivers::PrintJobResult;

/// Whether the printer is why it isn't known to be printed, so that another one may do better.
bool isPrintersFault(const PrintJobResult &result)
{
    switch (result.reason) {
        case PrintJobResult::Reason::Lock:
        case PrintJobResult::Reason::Line:
        case PrintJobResult::Reason::Status:
        case PrintJobResult::Reason::NoAnswer:
        case PrintJobResult::Reason::NoConfirmation:
            return true;
        default:
            return false;
    }
}

bool wantsSpare(const PrinterDelivery &delivery, const PrintJobResult &result)
{
    if (!delivery.spare || !isPrintersFault(result))
        return false;
    return result.outcome == PrintJobResult::Outcome::NotBegun ||
           (result.outcome <= PrintJobResult::Outcome::Sent && delivery.repeatsOnSpare);
}

/// What goes to the other printer: a repeat, if some of it is on the first one's paper.
PreparedReceipt spareOf(const PrinterDelivery &delivery, const PrintJobResult &result)
{
    PreparedReceipt spare = *delivery.spare;
    if (result.outcome != PrintJobResult::Outcome::NotBegun && !delivery.isRepeat)
        spare.order.document = printerslib::drivers::withLineInFront(
            spare.order.document, spare.target, printerslib::drivers::repeatMark());
    return spare;
}

QCommandLineOption spareOption()
{
    return {QStringLiteral("spare"),
            QStringLiteral("Another printer for when that of --to is out of paper or isn't "
                           "reached, before anything of the receipt has gone to it."),
            QStringLiteral("URL")};
}

}  // namespace

QString receiptText(const printerslib::drivers::PrintTarget &target,
                    const printerslib::drivers::EncodedDocument &encoded)
{
    return QStringLiteral("%1, paper %2: %3 bytes, %4 of paper")
        .arg(target.profile().modelId(), target.paper().caption())
        .arg(encoded.bytes.size())
        .arg(encoded.pieces == 1 ? QStringLiteral("1 piece")
                                 : QStringLiteral("%1 pieces").arg(encoded.pieces));
}

int deliver(const PrinterDelivery &delivery)
{
    const Interrupt interrupt(Interrupt::OfPeople);
    PreparedReceipt receipt = delivery.receipt;
    auto runner = std::make_unique<JobRunner>(receipt.order, interrupt);
    PrintJobResult result = runner->run();
    // Who has stopped it wants it on no other paper either.
    if (!interrupt.hasCome() && wantsSpare(delivery, result)) {
        complain(faultOf(receipt.order, result));
        receipt = spareOf(delivery, result);
        complain(QStringLiteral("%1 takes its place").arg(receipt.order.address.toString()));
        runner = std::make_unique<JobRunner>(receipt.order, interrupt);
        result = runner->run();
    }
    const int status =
        reportJob(receipt.order, result, receiptText(receipt.target, receipt.order.document),
                  delivery.asJson);
    runner->awaitRetraction();
    return status;
}

QCommandLineOption spareModelOption()
{
    return {QStringLiteral("spare-model"), QStringLiteral("Its model; default: the same."),
            QStringLiteral("ID")};
}

QCommandLineOption spareRepeatsOption()
{
    return {QStringLiteral("spare-repeats"),
            QStringLiteral(
                "Print it there also when some or all of it has gone to the first one, which "
                "then couldn't print or didn't confirm it, with the line of --repeat.")};
}

QList<QCommandLineOption> spareOptions()
{
    return {spareOption(), spareModelOption(), spareRepeatsOption()};
}

bool choosesSpare(const QCommandLineParser &parser)
{
    return parser.isSet(spareOption()) || parser.isSet(spareModelOption()) ||
           parser.isSet(spareRepeatsOption());
}

bool setSpare(const QCommandLineParser &parser, const PrinterAddress &printer,
              std::optional<PrinterAddress> &spare)
{
    const bool hasDetails = parser.isSet(spareModelOption()) || parser.isSet(spareRepeatsOption());
    if (!parser.isSet(spareOption())) {
        if (hasDetails)
            complain(QStringLiteral("--spare-model and --spare-repeats need --spare"));
        return !hasDetails;
    }
    spare = printerAddressOf(parser, spareOption());
    if (!spare)
        return false;
    const QString option = QStringLiteral("--spare: %1 is %2");
    if (spare->kind() == PrinterAddress::Kind::File) {
        complain(option.arg(spare->toString(), QStringLiteral("a file")));
        return false;
    }
    if (spare->lockKey() == printer.lockKey()) {
        complain(option.arg(spare->toString(), QStringLiteral("the printer of --to")));
        return false;
    }
    return true;
}

}  // namespace tool
