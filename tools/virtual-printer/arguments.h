#pragma once

#include <printerslib/drivers/printerprofile.h>

#include <QString>
#include <QVector>
#include <optional>

#include "printerfault.h"
#include "recording.h"
#include "virtualprinter.h"

/// How fast a printer is.
struct Pace
{
    int bytesPerSecond = 0;           ///< of its line; 0: as many as come
    double millimetresPerSecond = 0;  ///< of its head; 0: it takes no time
};

/// What the program was told to play.
struct Arguments
{
    VirtualPrinterOptions printer;
    printerslib::drivers::PrinterProfile profile;  ///< how it reads what it is sent
    QString link;
    std::optional<QString> paper;   ///< folder for what is printed
    std::optional<QString> listen;  ///< host and port, in place of a pseudo terminal
    bool hasListing = false;
    Pace pace;
    QVector<PlannedFault> plan;
    std::optional<QVector<RecordedPiece>> recording;  ///< of the session to play
};

/// Reads the program's own. Nothing after a message on standard error.
std::optional<Arguments> readArguments();
/// A line on standard error, behind the program's name.
void complain(const QString &text);
