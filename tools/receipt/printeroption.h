#pragma once

#include <printerslib/drivers/printeraddress.h>
#include <printerslib/drivers/printerprofile.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QStringList>
#include <optional>

/// Which printer a command works with.
namespace tool {

/// The options --to and --config.
QList<QCommandLineOption> printerOptions();
/// The first of them.
QCommandLineOption printerOption();

/// parse() of a command with these options: what its options don't say, the shop's file does, as if
/// it stood on the command line. With --help the file isn't read. Complains, and gives the status
/// that ends the command, if something in it is wrong.
std::optional<int> parseForPrinter(QCommandLineParser &parser, const QString &usage,
                                   const QStringList &arguments, int minimum, int maximum);

/// A printer, and what it understands.
struct ChosenPrinter
{
    printerslib::drivers::PrinterAddress address;
    printerslib::drivers::PrinterProfile profile;
};
/// The options --model and --models of a command that works with a printer. Without the first it is
/// a general one of Epson's commands.
QList<QCommandLineOption> printerModelOptions();
/// The printer of --to. Complains and gives nothing if there is none, or for a file.
/// @param command as the message names it
std::optional<printerslib::drivers::PrinterAddress> printerOf(const QCommandLineParser &parser,
                                                              const QString &command);
/// The same, and what --model and --models say of it. What is wrong gives the exit status, too.
std::optional<ChosenPrinter> chosenPrinterOf(const QCommandLineParser &parser,
                                             const QString &command, int *status);
/// The address of an option. Complains and gives nothing if it is none; a file is one.
std::optional<printerslib::drivers::PrinterAddress> printerAddressOf(
    const QCommandLineParser &parser, const QCommandLineOption &option);

}  // namespace tool
