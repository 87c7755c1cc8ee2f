#include <printerslib/drivers/documentencoder.h>

#include "commands.h"
#include "forms.h"
#include "jobreport.h"
#include "printermodel.h"
#include "printeroption.h"
#include "printoptions.h"
#include "support.h"

namespace {

using printerslib::drivers::DocumentEncoder;
using printerslib::drivers::EncodedDocument;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Opens the cash drawer at a printer, by the command of its model, in its turn
behind the jobs of other programs. Nothing is printed. Whether the drawer is
open, a printer doesn't tell.

Exit status: 0 the command was obeyed, or sent to a printer that can't tell
more; 3 sent, but the confirmation that was expected didn't come, or Ctrl+C
came first; 4 not sent, as to a printer that has no paper; 5 some of it was; 1
the model has no such drawer; 2 wrong usage.)";

QCommandLineOption pinOption()
{
    return {QStringLiteral("pin"),
            QStringLiteral("Which drawer, by the pin of its connector: 2 (default) or 5."),
            QStringLiteral("N"), QStringLiteral("2")};
}

/// What opens the drawer, and nothing else: the printer stays as others have set it.
EncodedDocument pulseOf(const printerslib::drivers::PrinterProfile &profile, int pin)
{
    const PrintTarget target(profile, tool::recordOf(profile), 0);
    PrintOptions options;
    options.drawerPin = pin;
    const int sizeWithout = DocumentEncoder(target, options).encode({}).bytes.size();
    options.drawer = PrintOptions::Drawer::After;
    EncodedDocument pulse = DocumentEncoder(target, options).encode({});
    pulse.bytes.remove(0, sizeWithout);
    pulse.marks.clear();
    return pulse;
}

}  // namespace

int runDrawer(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions(tool::printerOptions());
    parser.addOptions(tool::printerModelOptions());
    parser.addOptions({pinOption()});
    parser.addOptions(tool::jobOptions());
    if (const auto status =
            tool::parseForPrinter(parser, QStringLiteral("drawer"), arguments, 0, 0))
        return *status;
    const auto pin = tool::pinOf(parser, pinOption());
    if (!pin)
        return tool::WrongUsage;
    int status = tool::Success;
    const auto printer = tool::chosenPrinterOf(parser, QStringLiteral("drawer"), &status);
    if (!printer)
        return status;
    const EncodedDocument pulse = pulseOf(printer->profile, *pin);
    if (pulse.bytes.isEmpty()) {
        tool::complain(
            QStringLiteral("%1 has no drawer at pin %2").arg(printer->profile.modelId()).arg(*pin));
        return tool::BadInput;
    }
    const tool::JobOrder order{pulse,
                               printer->profile,
                               printer->address,
                               tool::jobOptionsOf(parser),
                               false,
                               {},
                               tool::textsOf(pulse.notes, {})};
    const Interrupt interrupt(Interrupt::OfPeople);
    tool::JobRunner runner(order, interrupt);
    return tool::reportJob(order, runner.run(), QStringLiteral("the drawer at pin %1").arg(*pin),
                           parser.isSet(tool::jsonOption()));
}
