#pragma once

#include <printerslib/drivers/printerprofile.h>
#include <printerslib/drivers/streamlisting.h>
#include <printerslib/drivers/streamreader.h>

#include <QString>
#include <QStringList>

#include "virtualprinter.h"

/// The dialogue with a printer as commands in place of hexadecimal, where the printer understands
/// it.
class StreamLines
{
public:
    explicit StreamLines(const printerslib::drivers::PrinterProfile &profile);

    /// A command that isn't whole yet has its line later.
    QStringList linesOf(const VirtualExchange &exchange);
    /// The end: a line for what isn't whole.
    QStringList finish();

private:
    QStringList list(const QVector<printerslib::drivers::StreamCommand> &commands);

    QString m_heading;  ///< of the last bytes that the printer got
    printerslib::drivers::StreamReader m_reader;
    printerslib::drivers::StreamListing m_listing;
};
