#pragma once

#include <printerslib/drivers/printeraddress.h>

#include <QByteArray>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <optional>

namespace tool {

/// Where the bytes of a printer go.
class StreamDestination
{
public:
    /// Standard output.
    StreamDestination() = default;
    explicit StreamDestination(const QString &fileName);
    explicit StreamDestination(const printerslib::drivers::PrinterAddress &printer);

    bool isFile() const { return !m_fileName.isEmpty(); }
    const QString &fileName() const { return m_fileName; }
    /// Whether it is a printer, which takes them as a job: take() isn't for it.
    bool isPrinter() const { return !m_printer.isNull(); }
    const printerslib::drivers::PrinterAddress &printer() const { return m_printer; }

    /// Complains and gives false for the user's terminal, which would obey the bytes, and for a
    /// line that changes them.
    bool canTake() const;
    /// Writes the bytes, to a file whole or not at all. Shows how far it is if that takes longer
    /// than a second, as on a slow line. Complains and gives false on failure.
    bool take(const QByteArray &bytes) const;

private:
    QString m_fileName;
    printerslib::drivers::PrinterAddress m_printer;  ///< without both: standard output
};

/// The option --to.
QCommandLineOption destinationOption();
/// What it says. Complains and gives nothing if that is no destination, or it isn't given.
std::optional<StreamDestination> destinationOf(const QCommandLineParser &parser);

}  // namespace tool
