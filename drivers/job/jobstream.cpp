#include "job/jobstream_p.h"

#include <algorithm>

#include "commandsets/commandid_p.h"
#include "commandsets/commandrow_p.h"
#include "encoder/commandbytes_p.h"
#include "job/jobrecord_p.h"
#include "printerdocs/eprinterticketaction.h"
#include "printerslib/drivers/printtarget.h"
#include "printerslib/drivers/streamreader.h"

namespace printerslib::drivers {

namespace {

bool resetsPrinter(const StreamCommand &command)
{
    return command.row != nullptr && command.row->id == CommandId::Initialize;
}

}  // namespace

JobStream::JobStream(const EncodedDocument &document, const PrinterProfile &profile)
    : m_bytes(document.bytes), m_marks(document.marks)
{
    const QVector<StreamCommand> commands = StreamReader::commandsOf(m_bytes, profile);
    for (const StreamCommand &command : commands) {
        if (command.kind == StreamCommand::Text || command.bytes.size() < 2)
            continue;
        const qint64 size = std::max<qint64>(command.bytes.size(), command.bytesExpected);
        m_commands.append({command.offset, command.offset + size});
    }
    if (!commands.isEmpty() && resetsPrinter(commands.first()))
        m_resetEnd = commands.first().bytes.size();
}

void JobStream::insert(const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return;
    m_bytes.insert(int(m_resetEnd), bytes);
    m_inserted = bytes.size();
    for (Span &span : m_commands) {
        if (span.begin >= m_resetEnd) {
            span.begin += m_inserted;
            span.end += m_inserted;
        }
    }
    // What is inserted counts as one command: it isn't to be cut off in its middle, either.
    if (m_inserted > 1) {
        const auto behind = std::find_if(m_commands.begin(), m_commands.end(),
                                         [this](Span span) { return span.begin > m_resetEnd; });
        m_commands.insert(behind, {m_resetEnd, m_resetEnd + m_inserted});
    }
}

QByteArray JobStream::part(qint64 begin, qint64 end) const
{
    return m_bytes.mid(int(begin), int(end - begin));
}

qint64 JobStream::documentBytes(qint64 offset) const
{
    return offset <= m_resetEnd ? offset : std::max(m_resetEnd, offset - m_inserted);
}

const JobStream::Span *JobStream::spanAt(qint64 offset) const
{
    return std::lower_bound(m_commands.cbegin(), m_commands.cend(), offset,
                            [](const Span &one, qint64 at) { return one.end <= at; });
}

qint64 JobStream::commandEnd(qint64 offset) const
{
    const Span *const span = spanAt(offset);
    if (span == m_commands.cend() || span->begin >= offset)
        return offset;
    return std::min(span->end, size());
}

qint64 JobStream::pieceEnd(qint64 begin, qint64 end) const
{
    const Span *const span = spanAt(end);
    const bool isWithin = span != m_commands.cend() && span->begin < end;
    return isWithin && span->begin > begin ? span->begin : end;
}

int JobStream::fillBetween(qint64 begin, qint64 end) const
{
    const Span *span = spanAt(begin);
    qint64 fill = 0;
    for (; span != m_commands.cend() && span->begin < end; ++span)
        fill = std::max(fill, span->end - std::max(begin, span->begin + 1));
    return int(std::min<qint64>(fill, JobRecord::mostFill));
}

EncodedDocument::Mark JobStream::place(qint64 documentByte) const
{
    const auto *const next = std::upper_bound(
        m_marks.cbegin(), m_marks.cend(), documentByte,
        [](qint64 at, const EncodedDocument::Mark &mark) { return at < mark.offset; });
    return next == m_marks.cbegin() ? EncodedDocument::Mark() : *(next - 1);
}

QByteArray JobStream::selecting(const PrinterProfile &profile)
{
    QByteArray bytes;
    CommandBytes commands(profile, bytes);
    if (profile.dialect() == Dialect::EscPos)
        commands.put(CommandId::PrinterSelect, 1);
    else
        commands.put(CommandId::PrinterSelect);
    return bytes;
}

QByteArray JobStream::closing(const PrinterProfile &profile)
{
    if (const auto target = PrintTarget::forModel(profile.catalogueId(), 0)) {
        TextPrinterDocument nothing;
        nothing.setDoInit(true);
        nothing.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument) |
                                       TicketActionBbCodeDocument);
        return DocumentEncoder(PrintTarget(profile, target->record(), 0), {}).encode(nothing).bytes;
    }
    QByteArray bytes;
    CommandBytes commands(profile, bytes);
    commands.put(profile.dialect() == Dialect::Swecoin ? CommandId::CancelData
                                                       : CommandId::Initialize);
    return bytes;
}

}  // namespace printerslib::drivers
