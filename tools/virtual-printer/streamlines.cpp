#include "streamlines.h"

namespace {

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamCommand;

PrinterProfile profileOf(const QString &modelId)
{
    return PrinterProfile::forModel(modelId).value_or(PrinterProfile());
}

}  // namespace

StreamLines::StreamLines(const QString &modelId)
    : m_reader(profileOf(modelId)), m_listing(profileOf(modelId))
{}

QStringList StreamLines::linesOf(const VirtualExchange &exchange)
{
    if (exchange.fromPrinter || !exchange.isOnItsLine)
        return {exchange.toString()};
    m_heading = exchange.heading();
    return list(m_reader.read(exchange.bytes));
}

QStringList StreamLines::finish()
{
    return list(m_reader.finish());
}

QStringList StreamLines::list(const QVector<StreamCommand> &commands)
{
    QStringList lines;
    for (const StreamCommand &command : commands) {
        const QStringList listed =
            m_listing.linesOf(command).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString &line : listed)
            lines.append(m_heading + QLatin1Char(' ') + line);
    }
    return lines;
}
