#include "streamlines.h"

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamCommand;

StreamLines::StreamLines(const PrinterProfile &profile) : m_reader(profile), m_listing(profile) {}

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
