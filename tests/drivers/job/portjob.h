#pragma once

#include <QRegularExpression>

#include "jobparts.h"
#include "playedport.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/eprinterticketaction.h"

/// Jobs over the lines that clients use, to printers that are played at their other ends.
namespace portjob {

using namespace jobparts;

constexpr int linesOfReceipt = 12;
const char *const model = "GENERAL_EPSON_PROTOCOL";

inline PrinterProfile profile()
{
    return PrinterProfile::forModel(model).value();
}

/// Lines that tell whose they are.
inline EncodedDocument receipt(int job, int count = linesOfReceipt)
{
    QStringList lines;
    for (int line = 1; line <= count; ++line)
        lines.append(QString("job %1 line %2.").arg(job).arg(line));
    BbCodeParser parser(nullptr);
    parser.parseText(lines.join('\n'));
    TextPrinterDocument document = parser.document();
    document.setDoInit(true);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
    return DocumentEncoder(PrintTarget::forModel(model, 0).value(), {}).encode(document);
}

/// The lines on a piece of paper, as pairs of job and line.
inline QVector<QPair<int, int>> linesOn(const Paper &paper)
{
    static const QRegularExpression form("job (\\d+) line (\\d+)\\.");
    QVector<QPair<int, int>> lines;
    auto found = form.globalMatch(paper.toText());
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        lines.append({match.captured(1).toInt(), match.captured(2).toInt()});
    }
    return lines;
}

/// A job with its locks in a folder of the test.
class PortJob : public PrintJob
{
public:
    PortJob(const EncodedDocument &document, const PrinterAddress &printer, const QString &folder,
            const PrintJobOptions &options = {})
        : PrintJob(document, profile(), Transport::make(printer, options.transport),
                   std::make_unique<Lock>(printer, folder), options, 1)
    {}
};

}  // namespace portjob
