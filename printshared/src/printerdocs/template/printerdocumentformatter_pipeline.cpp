#include <QFile>
#include <algorithm>

#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/entries_p.h"
#include "printerdocs/template/keyword_p.h"
#include "printerdocs/template/preparation_p.h"
#include "printerdocs/template/removal_p.h"
#include "printerdocs/template/symbolsline_p.h"
#include "printerdocs/template/templatetags_p.h"

using namespace templates;

QStringList PrinterDocumentFormatter::prepareDocument(const PrinterDocument &document) const
{
    return preparedLines(*this, m_templateLines->lines(), document);
}

void PrinterDocumentFormatter::addCopyInfo(QStringList &lines,
                                           const PrinterDocument &document) const
{
    const int number = document.isCopy() ? lineOfCopyNumber(lines) : -1;
    if (number >= 0)
        lines.insert(number + 1, tr(copyMark));
}

void PrinterDocumentFormatter::unpackEntries(QStringList &lines,
                                             const PrinterDocument &document) const
{
    const auto isUnpacked = [](const QString &line) { return holdsEntries(line); };
    if (std::none_of(lines.cbegin(), lines.cend(), isUnpacked))
        return;
    const Entries entries(document.entries());
    QStringList result;
    result.reserve(lines.size());
    for (const QString &line : qAsConst(lines)) {
        if (isUnpacked(line))
            entries.appendUnpacked(result, line);
        else
            result.append(line);
    }
    lines = result;
}

/// Intended: a set stays for templates without such a line (test
/// loadedSetStaysUntilAnotherIsLoaded).
void PrinterDocumentFormatter::loadSpecSymbols(QStringList &lines) const
{
    const auto last = std::find_if(lines.crbegin(), lines.crend(), isSymbolsLine);
    if (last == lines.crend())
        return;
    const QString path = symbolsFile(*last, m_specCharsPath);
    if (path != m_specialCharacters.fileName() && QFile::exists(path))
        m_specialCharacters.load(path);
    removeSymbolsLines(lines);
}

/// Intended: no lines become one blank line, as an empty text is one line; a receipt of which
/// nothing is left still feeds a line (test noLinesAreOneBlankLine).
void PrinterDocumentFormatter::removeXParts(QStringList &lines, bool remove) const
{
    // The lines are one text here, so a value with line feeds in it becomes several lines.
    if (!lines.isEmpty() && !holdMarkedParts(lines))
        return;
    QString text = lines.join(QLatin1Char('\n'));
    if (remove) {
        removeMarkedParts(text);
    } else {
        text.remove(removalBegin);
        text.remove(removalEnd);
    }
    lines = text.split(QLatin1Char('\n'));
}

void PrinterDocumentFormatter::removeXParts(QString &line, bool remove) const
{
    if (remove)
        emptyMarkedLine(line);
    else
        line.remove(blankLineTag);
}
