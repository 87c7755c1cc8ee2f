#include "places.h"

#include <QRegularExpression>
#include <algorithm>

namespace tool {

/// Finds the lines of blocks when they are asked for.
class Places::Finder
{
public:
    Finder(const TextPrinterDocument &document, std::function<QVector<int>()> lines)
        : m_document(document), m_linesOfParts(std::move(lines))
    {}

    int lineOf(int block, int line)
    {
        findBlocks();
        if (!isKnown(block) || m_lines.isEmpty())
            return 0;
        const int first = m_firstParts.at(block - 1);
        // Of several lines none is that of the block.
        const bool isOneLine = line > 0 || m_firstParts.at(block) == first + 1;
        return isOneLine ? m_lines.value(first + std::max(line, 1) - 1) : 0;
    }

    /// "lines 3 to 9" of the text for a block of several; empty where they aren't known.
    QString linesOf(int block)
    {
        findBlocks();
        if (!isKnown(block) || m_lines.isEmpty())
            return QString();
        const auto known = [](int line) { return line > 0; };
        const auto begin = m_lines.cbegin() + m_firstParts.at(block - 1);
        const auto end = m_lines.cbegin() + m_firstParts.at(block);
        const auto first = std::find_if(begin, end, known);
        if (first == end)
            return QString();
        const int last = *std::max_element(first, end);
        return *first == last ? QStringLiteral("line %1").arg(last)
                              : QStringLiteral("lines %1 to %2").arg(*first).arg(last);
    }

    QString printedPlace(int block, int line)
    {
        findBlocks();
        if (!isKnown(block))
            return QStringLiteral("block %1").arg(block);
        const int before = m_printedLines.at(block - 1);
        const int end = m_printedLines.at(block);
        if (line > 0 && before < end)
            return QStringLiteral("printed line %1").arg(before + line);
        if (end > before + 1)
            return QStringLiteral("printed lines %1 to %2").arg(before + 1).arg(end);
        if (end > before)
            return QStringLiteral("printed line %1").arg(end);
        return before > 0 ? QStringLiteral("behind printed line %1").arg(before)
                          : QStringLiteral("at the beginning");
    }

private:
    bool isKnown(int block) const { return block > 0 && block < m_firstParts.size(); }

    void findBlocks()
    {
        if (!m_firstParts.isEmpty())
            return;
        m_firstParts.append(0);
        m_printedLines.append(0);
        const QList<DocumentBlock> blocks = m_document.blocks();
        for (const DocumentBlock &block : blocks) {
            const int lines = block.isText() ? block.text().size() : 0;
            m_firstParts.append(m_firstParts.constLast() + (block.isText() ? lines : 1));
            m_printedLines.append(m_printedLines.constLast() + lines);
        }
        if (m_linesOfParts)
            m_lines = m_linesOfParts();
        if (m_lines.size() != m_firstParts.constLast())
            m_lines.clear();
    }

    const TextPrinterDocument m_document;
    const std::function<QVector<int>()> m_linesOfParts;
    QVector<int> m_lines;
    QVector<int> m_firstParts;    ///< of each block, among all lines and codes, and the end
    QVector<int> m_printedLines;  ///< in front of each block, and all
};

Places::Places(const TextPrinterDocument &document) : Places(document, nullptr) {}

Places::Places(const TextPrinterDocument &document, std::function<QVector<int>()> lines)
    : m_finder(std::make_shared<Finder>(document, std::move(lines)))
{}

int Places::lineOf(int block, int line) const
{
    return m_finder ? m_finder->lineOf(block, line) : 0;
}

QString Places::textOf(int block, int line) const
{
    if (const int known = lineOf(block, line))
        return QStringLiteral("line %1").arg(known);
    if (m_finder) {
        const QString lines = line == 0 ? m_finder->linesOf(block) : QString();
        return lines.isEmpty() ? m_finder->printedPlace(block, line) : lines;
    }
    return line > 0 ? QStringLiteral("block %1, line %2").arg(block).arg(line)
                    : QStringLiteral("block %1").arg(block);
}

QString Places::standingOf(int block, int line) const
{
    const QString place = textOf(block, line);
    const bool isComplete =
        place.startsWith(QLatin1String("behind ")) || place.startsWith(QLatin1String("at "));
    return isComplete ? place : QStringLiteral("in ") + place;
}

QString Places::inMessage(const QString &message) const
{
    static const QRegularExpression place(QStringLiteral("^block ([0-9]+)(?:, line ([0-9]+))?: "));
    const QRegularExpressionMatch match = place.match(message);
    if (!match.hasMatch())
        return message;
    return textOf(match.captured(1).toInt(), match.captured(2).toInt()) + QStringLiteral(": ") +
           message.mid(match.capturedLength());
}

}  // namespace tool
