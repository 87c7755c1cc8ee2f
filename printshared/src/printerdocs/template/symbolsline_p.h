#pragma once

#include <QStringList>
#include <algorithm>

#include "printerdocs/template/templatetags_p.h"

namespace templates {

/// Whether a line of a template names a file of special symbols.
inline bool isSymbolsLine(const QString &line)
{
    const QStringRef trimmed = QStringRef(&line).trimmed();
    return trimmed.startsWith(symbolsTag) && trimmed.endsWith(QLatin1Char('>'));
}

inline void removeSymbolsLines(QStringList &lines)
{
    lines.erase(std::remove_if(lines.begin(), lines.end(), isSymbolsLine), lines.end());
}

/// The path of the file that such a line names.
inline QString symbolsFile(const QString &line, const QString &folder)
{
    const QStringRef trimmed = QStringRef(&line).trimmed();
    QString path = folder + QLatin1Char('/') +
                   trimmed.mid(symbolsTag.size(), trimmed.size() - symbolsTag.size() - 1);
    if (!path.contains(QLatin1String(".ssi")) && !path.contains(QLatin1String(".SSI")))
        path += QLatin1String(".ssi");
    return path;
}

}  // namespace templates
