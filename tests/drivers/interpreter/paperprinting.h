#pragma once

#include <QString>
#include <QVector>
#include <string>
#include <string_view>

#include "printerslib/drivers/printermodels.h"
#include "printerslib/drivers/streaminterpreter.h"

/// Streams on paper, for tests of what comes out.
namespace paperprinting {

using printerslib::drivers::LetterReader;
using printerslib::drivers::Paper;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamInterpreter;

/// Bytes of a literal, zero bytes among them.
template <std::size_t Size>
QByteArray bytes(const char (&literal)[Size])
{
    return QByteArray(literal, int(Size - 1));
}

inline PrinterProfile model(const char *id)
{
    return *PrinterProfile::forModel(QString::fromLatin1(id));
}

/// A general printer whose cutter is 96 dots behind the head.
inline PrinterProfile printerCuttingAt96()
{
    printerslib::drivers::PrinterModels models;
    models.add(R"([{"id": "GENERAL_EPSON_PROTOCOL", "dotsToCutter": 96}])", QString());
    return *models.profile(QStringLiteral("GENERAL_EPSON_PROTOCOL"));
}

inline QVector<Paper> papersOf(const QByteArray &stream, const PrinterProfile &profile = {},
                               const StreamInterpreter::Options &options = {})
{
    return StreamInterpreter::papersOf(stream, profile, options);
}

/// The only paper of a stream; an empty one if there's none.
inline Paper paperOf(const QByteArray &stream, const PrinterProfile &profile = {},
                     const StreamInterpreter::Options &options = {})
{
    return papersOf(stream, profile, options).value(0);
}

inline QString textOf(const QByteArray &stream, const PrinterProfile &profile = {})
{
    QString text;
    for (const Paper &paper : papersOf(stream, profile))
        text += paper.toText();
    return text;
}

/// "kind text" of each event, notes as their text.
inline QStringList eventsOf(const Paper &paper)
{
    static const char *const kinds[] = {"cut",   "partial", "eject", "retract", "present",
                                        "pulse", "beep",    "reset", "status",  "note"};
    QStringList events;
    for (const Paper::Event &event : paper.events)
        events.append(QStringLiteral("%1: %2").arg(QLatin1String(kinds[event.kind]), event.text));
    return events;
}

inline QStringList notesOf(const Paper &paper)
{
    QStringList notes;
    for (const Paper::Event &event : paper.events) {
        if (event.kind == Paper::Event::Note)
            notes.append(event.text);
    }
    return notes;
}

inline QRect placeOf(const Paper::Cell &cell)
{
    return {cell.left, cell.top, cell.width, cell.height};
}

/// The first cell of a character.
inline Paper::Cell cellOf(const Paper &paper, char16_t character)
{
    for (const Paper::Cell &cell : paper.cells) {
        if (cell.character == character)
            return cell;
    }
    return {};
}

/// Rows of "#" and "." of a picture.
inline QStringList dotsOf(const Paper::Picture &picture)
{
    QStringList rows;
    const int bytesPerRow = (picture.size.width() + 7) / 8;
    for (int y = 0; y < picture.size.height(); ++y) {
        QString row;
        for (int x = 0; x < picture.size.width(); ++x) {
            const int byte = static_cast<unsigned char>(picture.rows.at(y * bytesPerRow + x / 8));
            row += (byte & (0x80 >> (x % 8))) != 0 ? u'#' : u'.';
        }
        rows.append(row);
    }
    return rows;
}

}  // namespace paperprinting
