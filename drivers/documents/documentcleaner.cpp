#include "printerslib/drivers/documentcleaner.h"

#include <QByteArray>
#include <QChar>
#include <QStringList>

namespace printerslib::drivers {

namespace {

constexpr ushort takenOut = 0;

/// A range of characters and what stands for each of them.
struct CleanedRange
{
    ushort first;
    ushort last;
    DocumentCleaner::Rule rule;
    ushort replacement;
};

constexpr CleanedRange cleanedRanges[] = {
    {u'<', u'<', DocumentCleaner::CleanTags, u' '},
    {u'[', u'[', DocumentCleaner::CleanBrackets, u'('},
    {u']', u']', DocumentCleaner::CleanBrackets, u')'},
    {0x0000, 0x001F, DocumentCleaner::CleanControls, u' '},
    {0x007F, 0x009F, DocumentCleaner::CleanControls, u' '},
    {0x2028, 0x2029, DocumentCleaner::CleanControls, u' '},
    {0x061C, 0x061C, DocumentCleaner::CleanBidirectional, takenOut},
    {0x200E, 0x200F, DocumentCleaner::CleanBidirectional, takenOut},
    {0x202A, 0x202E, DocumentCleaner::CleanBidirectional, takenOut},
    {0x2066, 0x2069, DocumentCleaner::CleanBidirectional, takenOut},
    {0x00AD, 0x00AD, DocumentCleaner::CleanInvisible, takenOut},
    {0x180E, 0x180E, DocumentCleaner::CleanInvisible, takenOut},
    {0x200B, 0x200D, DocumentCleaner::CleanInvisible, takenOut},
    {0x2060, 0x2064, DocumentCleaner::CleanInvisible, takenOut},
    {0x206A, 0x206F, DocumentCleaner::CleanInvisible, takenOut},
    {0xFEFF, 0xFEFF, DocumentCleaner::CleanInvisible, takenOut},
    {0xFFF9, 0xFFFB, DocumentCleaner::CleanInvisible, takenOut},
};

ushort cleanedCharacter(ushort character, DocumentCleaner::Rules rules)
{
    for (const CleanedRange &range : cleanedRanges) {
        if (character >= range.first && character <= range.last && rules.testFlag(range.rule))
            return range.replacement;
    }
    return character;
}

/// A part of an entry in which no "=" is left.
QString withoutEqualsSigns(QString text)
{
    return text.replace(QLatin1Char('='), QLatin1Char(' '));
}

/// All of it, where a conversion of a byte array stops at the first NUL.
QString textOf(const QVariant &value)
{
    if (value.type() != QVariant::ByteArray)
        return value.toString();
    const QByteArray bytes = value.toByteArray();
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

QString cleanedEntry(const QString &entry, DocumentCleaner::Rules rules)
{
    const int separator = entry.indexOf(QLatin1Char('='));
    if (separator < 0)
        return DocumentCleaner::cleanedText(entry, rules);
    const QString value = DocumentCleaner::cleanedText(entry.mid(separator + 1), rules);
    return DocumentCleaner::cleanedText(entry.left(separator), rules) + QLatin1Char('=') +
           (rules.testFlag(DocumentCleaner::CleanEqualsSigns) ? withoutEqualsSigns(value) : value);
}

/// A name or a value of a pair: neither ends an entry or begins a column.
QString entryPart(const QString &text, DocumentCleaner::Rules rules)
{
    QString part = DocumentCleaner::cleanedText(text, rules);
    return withoutEqualsSigns(part.replace(QLatin1Char('\t'), QLatin1Char(' ')));
}

}  // namespace

QList<DocumentCleaner::NamedRule> DocumentCleaner::namedRules()
{
    return {
        {CleanTags, QStringLiteral("tags"), QStringLiteral("\"<\" becomes a blank")},
        {CleanBrackets, QStringLiteral("brackets"),
         QStringLiteral("\"[\" and \"]\" become \"(\" and \")\"")},
        {CleanControls, QStringLiteral("controls"),
         QStringLiteral("control characters and line separators become blanks")},
        {CleanBidirectional, QStringLiteral("bidirectional"),
         QStringLiteral("marks that turn the direction of writing are taken out")},
        {CleanInvisible, QStringLiteral("invisible"),
         QStringLiteral("characters without width are taken out")},
        {CleanEqualsSigns, QStringLiteral("equals"),
         QStringLiteral("\"=\" behind the first of an entry becomes a blank")},
    };
}

QString DocumentCleaner::cleanedText(const QString &text, Rules rules)
{
    QString cleaned;
    int kept = 0;  // up to here the text is in "cleaned"
    for (int i = 0; i < text.size(); ++i) {
        const ushort character = text.at(i).unicode();
        const ushort replacement = cleanedCharacter(character, rules);
        if (replacement == character)
            continue;
        cleaned += text.midRef(kept, i - kept);
        if (replacement != takenOut)
            cleaned += QChar(replacement);
        kept = i + 1;
    }
    return kept == 0 ? text : cleaned + text.midRef(kept);
}

QVariant DocumentCleaner::cleanedValue(const QVariant &value, Rules rules)
{
    const QString text = textOf(value);
    const QString cleaned = cleanedText(text, rules);
    if (cleaned == text)
        return value;
    if (value.type() == QVariant::ByteArray)
        return cleaned.toUtf8();
    if (value.type() == QVariant::Char)
        return cleaned.isEmpty() ? QChar(QLatin1Char(' ')) : cleaned.at(0);
    return cleaned;
}

QString DocumentCleaner::cleanedEntries(const QString &entries, Rules rules)
{
    QStringList cleaned;
    const QStringList parts = entries.split(QLatin1Char('\t'));
    for (const QString &entry : parts)
        cleaned.append(cleanedEntry(entry, rules));
    const QString joined = cleaned.join(QLatin1Char('\t'));
    return joined == entries ? entries : joined;
}

QString DocumentCleaner::joinedEntries(const QList<QPair<QString, QString>> &entries, Rules rules)
{
    QStringList lines;
    for (const QPair<QString, QString> &entry : entries)
        lines.append(entryPart(entry.first, rules) + QLatin1Char('=') +
                     entryPart(entry.second, rules));
    return lines.join(QLatin1Char('\t'));
}

PrinterDocument DocumentCleaner::cleanedDocument(const PrinterDocument &document, Rules rules)
{
    QMap<QString, QVariant> attributes = document.attributes();
    for (QVariant &value : attributes)
        value = cleanedValue(value, rules);
    PrinterDocument cleaned = document;
    cleaned.setAttributes(attributes);
    cleaned.setEntries(cleanedEntries(document.entries(), rules));
    return cleaned;
}

}  // namespace printerslib::drivers
