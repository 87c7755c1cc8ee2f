#include "replay.h"

#include <algorithm>
#include <utility>

Replay::Replay(const QVector<RecordedPiece> &pieces) : m_pieces(pieces)
{
    for (const RecordedPiece &piece : pieces) {
        if (!piece.fromPrinter)
            m_expected += piece.bytes;
    }
    play();
}

int Replay::room() const
{
    constexpr int plenty = 65536;
    return plenty;
}

void Replay::take(const QByteArray &bytes)
{
    compare(bytes);
    m_received += bytes.size();
    play();
}

void Replay::compare(const QByteArray &bytes)
{
    const auto known = qMax<qint64>(0, m_expected.size() - m_received);
    const QByteArray expected = m_expected.mid(m_expected.size() - int(known), bytes.size());
    const auto difference =
        std::mismatch(expected.begin(), expected.end(), bytes.begin(), bytes.end());
    if (m_hasDiffered || difference.second == bytes.end())
        return;
    m_hasDiffered = true;
    const auto at = difference.second - bytes.begin();
    const auto hexOf = [](char byte) {
        return QString::fromLatin1(QByteArray(1, byte).toHex().toUpper());
    };
    m_notes.append(
        difference.first == expected.end()
            ? QStringLiteral("differs: byte %1 is more than the recording has").arg(m_received + at)
            : QStringLiteral("differs: byte %1 is %2, where the recording has %3")
                  .arg(m_received + at)
                  .arg(hexOf(*difference.second), hexOf(*difference.first)));
}

qint64 Replay::timeOf(const RecordedPiece &piece) const
{
    return piece.microseconds + m_lag;
}

/// Goes on as far as time and the host have come.
void Replay::play()
{
    const bool wasOver = m_next == m_pieces.size();
    while (m_next < m_pieces.size()) {
        const RecordedPiece &piece = m_pieces.at(m_next);
        const qint64 needed = m_needed + (piece.fromPrinter ? 0 : piece.bytes.size());
        if (piece.fromPrinter ? timeOf(piece) > m_now : needed > m_received)
            return;
        if (piece.fromPrinter)
            m_answers += piece.bytes;
        else
            m_lag = m_now - piece.microseconds;
        m_needed = needed;
        ++m_next;
    }
    if (!wasOver)
        m_notes.append(QStringLiteral("the recording has ended"));
}

QByteArray Replay::takeAnswers()
{
    return std::exchange(m_answers, QByteArray());
}

void Replay::advanceTo(qint64 microseconds)
{
    m_now = std::max(m_now, microseconds);
    play();
}

qint64 Replay::nextEvent() const
{
    if (m_next == m_pieces.size() || !m_pieces.at(m_next).fromPrinter)
        return -1;
    return timeOf(m_pieces.at(m_next));
}

QStringList Replay::takeNotes()
{
    return std::exchange(m_notes, QStringList());
}
