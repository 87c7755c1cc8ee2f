#pragma once

#include <QVector>

#include "printerside.h"
#include "recording.h"

/// Plays the printer's side of a recorded session: what the printer said comes again when as many
/// bytes have come in as it had got then, and as much later as it was then. What the bytes are
/// changes nothing; the first that differs is told.
class Replay : public PrinterSide
{
public:
    explicit Replay(const QVector<RecordedPiece> &pieces);

    void take(const QByteArray &bytes) override;
    int room() const override;
    QByteArray takeAnswers() override;
    void advanceTo(qint64 microseconds) override;
    qint64 nextEvent() const override;
    QStringList takeNotes() override;

private:
    void play();
    void compare(const QByteArray &bytes);
    qint64 timeOf(const RecordedPiece &piece) const;

    const QVector<RecordedPiece> m_pieces;
    QByteArray m_expected;  ///< all that the host sent then
    int m_next = 0;         ///< of the pieces
    qint64 m_received = 0;
    qint64 m_needed = 0;  ///< up to the next piece
    qint64 m_now = 0;
    qint64 m_lag = 0;  ///< of this session's clock behind the recording's
    bool m_hasDiffered = false;
    QByteArray m_answers;
    QStringList m_notes;
};
