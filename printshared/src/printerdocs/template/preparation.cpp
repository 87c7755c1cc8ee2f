#include "printerdocs/template/preparation_p.h"

#include <algorithm>

#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/linefilling_p.h"
#include "printerdocs/template/removal_p.h"
#include "printerdocs/template/symbolsline_p.h"

namespace templates {

namespace {

/// Fills the attributes in. A blank line of the template stays; one that comes out empty goes.
void fillLines(QStringList &lines, const PrinterDocument &document, int silentLines)
{
    DocumentValues values(document);
    values.setMute(silentLines > 0);
    QStringList filled;
    filled.reserve(lines.size());
    for (const QString &line : qAsConst(lines)) {
        const QString withValues = lineWithValues(line, values);
        if (--silentLines == 0)
            values.setMute(false);
        if (line.isEmpty() || !withValues.isEmpty())
            filled.append(withValues);
    }
    lines = filled;
}

}  // namespace

QStringList preparedLines(const PrinterDocumentFormatter &formatter, QStringList lines,
                          const PrinterDocument &document, int silentLines)
{
    if (lines.isEmpty())
        return lines;
    formatter.addCopyInfo(lines, document);
    formatter.unpackEntries(lines, document);
    if (silentLines == 0)
        formatter.loadSpecSymbols(lines);
    else
        removeSymbolsLines(lines);
    fillLines(lines, document, silentLines);
    const bool remove = document.removeFiscalAttrs();
    if (!lines.isEmpty() && std::none_of(lines.cbegin(), lines.cend(), mayHoldRemovals))
        return lines;
    formatter.removeXParts(lines, remove);
    QStringList prepared;
    prepared.reserve(lines.size());
    for (QString &line : lines) {
        if (!removeImages(line))
            continue;
        formatter.removeXParts(line, remove);
        prepared.append(line);
    }
    return prepared;
}

}  // namespace templates
