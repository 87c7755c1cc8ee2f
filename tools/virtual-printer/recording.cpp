#include "recording.h"

#include <QStringList>
#include <algorithm>
#include <cctype>

#include "clockunits.h"

namespace {

/// Nothing for anything but pairs of hexadecimal digits.
QByteArray bytesOfHex(const QString &digits)
{
    const bool isHex = std::all_of(digits.begin(), digits.end(), [](QChar c) {
        return c.unicode() < 0x80 && std::isxdigit(static_cast<unsigned char>(c.unicode())) != 0;
    });
    return isHex && digits.size() % 2 == 0 ? QByteArray::fromHex(digits.toLatin1()) : QByteArray();
}

/// Why it is none; empty if it is a piece.
QString readPiece(const QString &line, qint64 earliest, RecordedPiece &piece)
{
    const QStringList words = line.split(QLatin1Char(' '));
    const std::optional<qint64> time = clockunits::ofSeconds(words.value(0));
    if (!time)
        return QStringLiteral("\"%1\" is no time in seconds").arg(words.value(0));
    if (*time < earliest)
        return QStringLiteral("the time is before that of the line above");
    const QString side = words.value(1);
    if (side != QLatin1String("host") && side != QLatin1String("printer"))
        return QStringLiteral("\"%1\" is neither host nor printer").arg(side);
    piece.microseconds = *time;
    piece.fromPrinter = side == QLatin1String("printer");
    piece.bytes = bytesOfHex(QStringList(words.mid(2)).join(QString()));
    return piece.bytes.isEmpty() ? QStringLiteral("there are no bytes in hexadecimal") : QString();
}

}  // namespace

QString RecordedPiece::toString() const
{
    return QStringLiteral("%1.%2 %3 %4")
        .arg(microseconds / clockunits::perSecond)
        .arg(microseconds % clockunits::perSecond, 6, 10, QLatin1Char('0'))
        .arg(QLatin1String(fromPrinter ? "printer" : "host"),
             QString::fromLatin1(bytes.toHex(' ').toUpper()));
}

std::optional<QVector<RecordedPiece>> readRecording(const QByteArray &text, QString *error)
{
    QVector<RecordedPiece> pieces;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = QString::fromUtf8(lines.at(i)).simplified();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        RecordedPiece piece;
        const qint64 earliest = pieces.isEmpty() ? 0 : pieces.constLast().microseconds;
        const QString fault = readPiece(line, earliest, piece);
        if (!fault.isEmpty()) {
            *error = QStringLiteral("line %1: %2").arg(i + 1).arg(fault);
            return std::nullopt;
        }
        pieces.append(piece);
    }
    return pieces;
}
