// Prints a receipt, and says what is known of it: print-job ADDRESS, for example
// tcp:192.168.0.5:9100, serial:/dev/ttyS0?baud=19200 or file:receipt.bin.
#include <printerslib/drivers/documentencoder.h>
#include <printerslib/drivers/printjob.h>

#include <QCoreApplication>
#include <QTextStream>

#include "printerdocs/bbcodeparser.h"

using namespace printerslib::drivers;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream output(stdout);
    const QStringList arguments = application.arguments();
    QString error = "print-job ADDRESS";
    std::optional<PrinterAddress> address;
    if (arguments.size() == 2)
        address = PrinterAddress::parse(arguments.at(1), &error);
    if (!address) {
        output << error << '\n';
        return 2;
    }
    const auto target = PrintTarget::forModel("GENERAL_EPSON_PROTOCOL", 0);  // paper 0
    BbCodeParser parser(nullptr);
    parser.parseText("[center][b]Harbour[/b] Kiosk[/center]");
    const EncodedDocument document = DocumentEncoder(*target, {}).encode(parser.document());

    PrintJob job(document, target->profile(), *address);
    QObject::connect(&job, &PrintJob::waiting, &job,
                     [&](int ahead) { output << ahead << " jobs are in front" << Qt::endl; });
    QObject::connect(&job, &PrintJob::note, &job,
                     [&](const QString &text) { output << text << Qt::endl; });
    QObject::connect(&job, &PrintJob::finished, &job, [&](const PrintJobResult &result) {
        static const char *const words[] = {"not printed", "printed in part", "sent", "processed",
                                            "printed"};
        output << words[int(result.outcome)];
        if (!result.text.isEmpty())
            output << ": " << result.text;
        output << Qt::endl;
        QCoreApplication::exit(result.isSent() ? 0 : 1);
    });
    job.start();
    return QCoreApplication::exec();
}
