#pragma once

#include <QVector>
#include <QtTest>
#include <algorithm>
#include <vector>

#include "commandsets/commandrow_p.h"
#include "joinedtexts.h"
#include "printerslib/drivers/streamreader.h"
#include "streamnotation.h"

/// What a reader cuts streams into, for tests of it.
namespace streamreading {

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamCommand;
using printerslib::drivers::StreamReader;

inline QVector<StreamCommand> commandsOf(const QByteArray &notation,
                                         const PrinterProfile &profile = profileOf())
{
    return StreamReader::commandsOf(streamOf(notation), profile);
}

inline QByteArray told(const StreamCommand &command)
{
    const QByteArray name = command.row == nullptr ? "" : command.row->mnemonic;
    switch (command.kind) {
        case StreamCommand::Text:
            return '\'' + command.bytes + '\'';
        case StreamCommand::Command:
            return name + ' ' + command.bytes.mid(command.operandsBegin).toHex();
        case StreamCommand::Skipped:
            return "skipped " + name + ' ' + command.bytes.mid(command.operandsBegin).toHex();
        case StreamCommand::Unknown:
            return "unknown " + command.bytes.toHex();
        case StreamCommand::Incomplete:
            break;
    }
    return "incomplete " + name + ' ' + QByteArray::number(command.bytes.size()) + '/' +
           QByteArray::number(command.bytesExpected);
}

inline QByteArray told(const QVector<StreamCommand> &commands)
{
    QByteArray all;
    for (const StreamCommand &command : commands)
        all += (all.isEmpty() ? "" : "; ") + told(command).trimmed();
    return all;
}

inline QByteArray told(const QByteArray &notation, const char *model = "GENERAL_EPSON_PROTOCOL")
{
    return told(commandsOf(notation, profileOf(model)));
}

inline QByteArray together(const QVector<StreamCommand> &commands)
{
    QByteArray bytes;
    for (const StreamCommand &command : commands)
        bytes += command.bytes;
    return bytes;
}

inline bool areSame(const StreamCommand::RealTime &a, const StreamCommand::RealTime &b)
{
    return a.offset == b.offset && a.row == b.row && a.bytes == b.bytes &&
           a.isSwitchedOff == b.isSwitchedOff;
}

inline bool areSame(const StreamCommand &a, const StreamCommand &b)
{
    return a.kind == b.kind && a.offset == b.offset && a.bytes == b.bytes && a.row == b.row &&
           a.operandsBegin == b.operandsBegin && a.payloadBegin == b.payloadBegin &&
           a.bytesExpected == b.bytesExpected && a.isSwitchedOff == b.isSwitchedOff &&
           std::equal(a.realTime.begin(), a.realTime.end(), b.realTime.begin(), b.realTime.end(),
                      [](const auto &x, const auto &y) { return areSame(x, y); });
}

inline bool areSame(const QVector<StreamCommand> &a, const QVector<StreamCommand> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto &x, const auto &y) { return areSame(x, y); });
}

inline QVector<StreamCommand> readInPieces(const QByteArray &stream, const PrinterProfile &profile,
                                           const std::vector<int> &sizes)
{
    StreamReader reader(profile);
    QVector<StreamCommand> commands;
    int at = 0;
    for (const int size : sizes) {
        commands += reader.read(stream.mid(at, size));
        at += size;
    }
    commands += reader.read(stream.mid(at));
    return commands + reader.finish();
}

inline void isTheSameByteByByte(const QByteArray &stream, const PrinterProfile &profile)
{
    const std::vector<int> sizes(static_cast<std::size_t>(stream.size()), 1);
    QVERIFY(areSame(joined(readInPieces(stream, profile, sizes)),
                    StreamReader::commandsOf(stream, profile)));
}

}  // namespace streamreading
