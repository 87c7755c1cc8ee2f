#include "printerslib/drivers/streamlisting.h"

#include <QStringList>
#include <algorithm>
#include <iterator>

#include "commandsets/commandtext_p.h"
#include "commandsets/printerselection_p.h"
#include "interpreter/handlers_kanji_p.h"
#include "interpreter/printstate_p.h"

namespace printerslib::drivers {

namespace {

constexpr int mostBytesShown = 10;
constexpr int bytesShownOfMore = 6;
constexpr int mostDataShown = 60;
constexpr int offsetDigits = 8;
// The widths of bytes, mnemonic and operands.
constexpr int columnWidths[] = {32, 14, 30};

QString hexOf(const QByteArray &bytes)
{
    const int shown = bytes.size() <= mostBytesShown ? bytes.size() : bytesShownOfMore;
    const QString hex = QString::fromLatin1(bytes.left(shown).toHex(' ')).toUpper();
    return shown == bytes.size() ? hex
                                 : QStringLiteral("%1 .. %2").arg(hex, countedBytes(bytes.size()));
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

bool isPlainText(const QByteArray &bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char byte) { return byte >= ' ' && byte < '\x7F'; });
}

QString shownData(const QByteArray &data)
{
    if (!isPlainText(data))
        return countedBytes(data.size());
    const QString text = quoted(QString::fromLatin1(data.left(mostDataShown)));
    return data.size() <= mostDataShown
               ? text
               : QStringLiteral("%1 .. %2").arg(text, countedBytes(data.size()));
}

QString shownOperands(const QVector<QPair<QString, qint64>> &operands, const QByteArray &data)
{
    QStringList parts;
    for (const auto &[name, value] : operands)
        parts.append(QStringLiteral("%1=%2").arg(name).arg(value));
    if (!data.isEmpty())
        parts.append(QStringLiteral("data=%1").arg(shownData(data)));
    return parts.join(QLatin1Char(' '));
}

QString lineOf(qint64 offset, const QStringList &columns)
{
    QString line = QStringLiteral("%1").arg(offset, offsetDigits, 16, QLatin1Char('0'));
    for (int i = 0; i < columns.size(); ++i) {
        const int width = i < int(std::size(columnWidths)) ? columnWidths[i] : 0;
        line += QLatin1String("  ") + columns.at(i).leftJustified(width);
    }
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line + QLatin1Char('\n');
}

QString meaningOf(const CommandRow &row, bool isSwitchedOff)
{
    const QString meaning = QString::fromLatin1(row.meaning);
    return isSwitchedOff ? meaning + QLatin1String("; switched off by GS ( D") : meaning;
}

QString meaningByKind(const StreamCommand &command)
{
    switch (command.kind) {
        case StreamCommand::Text:
            return {};
        case StreamCommand::Skipped:
            return QStringLiteral("unknown, skipped by its length");
        case StreamCommand::Unknown:
            return QStringLiteral("unknown");
        case StreamCommand::Incomplete:
            return endsInside(command);
        case StreamCommand::Command:
            break;
    }
    return meaningOf(*command.row, command.isSwitchedOff);
}

QString lineOf(const StreamCommand::RealTime &found)
{
    const QByteArray operands = found.bytes.mid(found.row->introducerSize);
    QString meaning =
        QString::fromLatin1(found.row->meaning) + QLatin1String("; at once, inside the data above");
    if (found.isSwitchedOff)
        meaning += QLatin1String("; switched off by GS ( D");
    return lineOf(found.offset, {hexOf(found.bytes), QLatin1String(found.row->mnemonic),
                                 shownOperands(operandsOf(*found.row, operands), {}), meaning});
}

}  // namespace

class StreamListing::State
{
public:
    State(const PrinterProfile &profile, int codePage) : m_profile(profile), m_codePage(codePage)
    {
        reset();
    }

    void follow(const StreamCommand &command);
    QString meaningOf(const StreamCommand &command) const;
    QString textOf(const QByteArray &bytes);

private:
    void reset();
    void obey(const StreamCommand &command);

    const PrinterProfile m_profile;
    const int m_codePage;
    PrintCharset m_charset;
    KanjiState m_kanji;
    bool m_isSelected = true;
};

void StreamListing::State::reset()
{
    const PrintState state(m_profile, m_codePage, m_profile.headDots());
    m_charset = state.charset;
    m_kanji = state.kanji;
}

void StreamListing::State::follow(const StreamCommand &command)
{
    if (command.kind != StreamCommand::Text)
        m_kanji.lead = -1;
    if (command.kind != StreamCommand::Command)
        return;
    m_isSelected = selectionBy(command).value_or(m_isSelected);
    if (m_isSelected)
        obey(command);
}

/// What a command changes in how texts print.
void StreamListing::State::obey(const StreamCommand &command)
{
    switch (command.row->id) {
        case CommandId::Initialize:
        case CommandId::ResetPrinter:
            return reset();
        case CommandId::CancelData:
            // Star's resets, too.
            if (m_profile.dialect() == Dialect::StarLine)
                reset();
            return;
        case CommandId::CodePage:
            m_charset.setCodePage(m_profile, command.operand(0));
            return;
        case CommandId::InternationalSet:
            m_charset.setCountry(command.operand(0));
            return;
        default:
            followKanji(m_kanji, m_profile, command);
    }
}

QString StreamListing::State::meaningOf(const StreamCommand &command) const
{
    QString meaning = meaningByKind(command);
    if (command.kind != StreamCommand::Command || command.row->id != CommandId::CodePage)
        return meaning;
    const QString name = m_profile.codePages().value(command.operand(0));
    return QStringLiteral("%1: %2").arg(
        meaning, name.isEmpty() ? QStringLiteral("the printer has no such one") : name);
}

QString StreamListing::State::textOf(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (m_kanji.isOn && m_kanji.set && m_kanji.lead < 0 && m_kanji.set->isLead(byte)) {
            m_kanji.lead = byte;
            continue;
        }
        QChar character = m_kanji.lead < 0 ? m_charset.character(byte)
                                           : m_kanji.set->character(
                                                 static_cast<unsigned char>(m_kanji.lead), byte);
        m_kanji.lead = -1;
        // What a terminal obeys doesn't print.
        if (character.category() == QChar::Other_Control)
            character = QChar::ReplacementCharacter;
        text += character;
    }
    return text;
}

StreamListing::StreamListing(const PrinterProfile &profile, int codePage)
    : d(new State(profile, codePage))
{}

StreamListing::~StreamListing() = default;

QString StreamListing::linesOf(const StreamCommand &command)
{
    const bool isText = command.kind == StreamCommand::Text;
    const QString what = isText ? QStringLiteral("text") : mnemonicOf(command);
    const QString operands = isText ? quoted(d->textOf(command.bytes))
                                    : shownOperands(operandsOf(command), dataOf(command));
    QString lines =
        lineOf(command.offset, {hexOf(command.bytes), what, operands, d->meaningOf(command)});
    for (const StreamCommand::RealTime &found : command.realTime)
        lines += lineOf(found);
    d->follow(command);
    return lines;
}

}  // namespace printerslib::drivers
