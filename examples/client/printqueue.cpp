// Keeps a receipt until it is printed: print-queue FOLDER ADDRESS, for example
// /var/lib/till/queue tcp:192.168.0.5:9100.
#include <printerslib/drivers/documentencoder.h>
#include <printerslib/drivers/printqueue.h>

#include <QCoreApplication>
#include <QTextStream>

#include "printerdocs/bbcodeparser.h"

using namespace printerslib::drivers;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream output(stdout);
    const QStringList arguments = application.arguments();
    QString error = "print-queue FOLDER ADDRESS";
    std::optional<PrinterAddress> address;
    if (arguments.size() == 3)
        address = PrinterAddress::parse(arguments.at(2), &error);
    if (!address) {
        output << error << '\n';
        return 2;
    }
    const auto target = PrintTarget::forModel("GENERAL_EPSON_PROTOCOL", 0);  // paper 0
    BbCodeParser parser(nullptr);
    parser.parseText("[center][b]Harbour[/b] Kiosk[/center]");

    PrintQueueRequest request;
    request.document = DocumentEncoder(*target, {}).encode(parser.document());
    request.profile = target->profile();
    request.address = *address;
    request.documentNumber = "4711";
    PrintQueue queue(arguments.at(1));
    // From here on a power cut loses nothing.
    if (queue.add(request) == 0) {
        output << queue.fault() << '\n';
        return 1;
    }
    QObject::connect(&queue, &PrintQueue::ended, &queue, [&](const PrintQueueEntry &entry) {
        static const char *const words[] = {
            "waits",   "is under way", "may be printed, or not", "is printed in part",
            "is done", "was given up"};
        output << "receipt " << entry.documentNumber << ' ' << words[int(entry.state)];
        if (!entry.result.text.isEmpty())
            output << ": " << entry.result.text;
        output << Qt::endl;
    });
    QObject::connect(&queue, &PrintQueue::idle, &application, &QCoreApplication::quit);
    if (!queue.start()) {
        output << queue.fault() << '\n';
        return 1;
    }
    return QCoreApplication::exec();
}
