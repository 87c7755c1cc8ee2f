#pragma once

#include <QJsonDocument>
#include <QJsonObject>

#include "receiptprogram.h"

/// Runs of "receipt decode".
namespace decodebench {

inline constexpr int patience = 30000;
// 576 dots of 12 x 24, 48 columns.
inline const QStringList model{"--model", "GENERAL_EPSON_PROTOCOL"};

// Feeds to the cutter first.
inline const QByteArray cut("\x1DVB\x00", 4);

inline QStringList decode(const QString &file, const QStringList &options = {})
{
    return QStringList{"decode", file} + model + options;
}

/// A run over bytes that come on standard input.
inline ReceiptRun decoded(const QByteArray &stream, const QStringList &options = {})
{
    return runReceipt(decode("-", options), stream);
}

inline QJsonObject jsonOf(const QByteArray &stream)
{
    const ReceiptRun run = decoded(stream, {"--as", "json"});
    return QJsonDocument::fromJson(run.output.toUtf8()).object();
}

/// A function of GS ( k.
inline QByteArray symbol(const QByteArray &functionAndData)
{
    const int size = functionAndData.size();
    return QByteArray("\x1D(k") + static_cast<char>(size % 256) + static_cast<char>(size / 256) +
           functionAndData;
}

inline QByteArray qrOf(const QByteArray &payload)
{
    return symbol("1C\x04") + symbol("1P0" + payload) + symbol("1Q0");
}

}  // namespace decodebench
