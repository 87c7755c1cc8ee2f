// A log in which nobody's text makes lines of its own or steers the terminal that shows it.
#pragma once

#include <QString>
#include <cstdio>

/// Control characters, marks that change the direction of text, separators of lines and paragraphs.
inline bool isObeyed(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x20 || (code >= 0x7F && code <= 0x9F) || code == 0x061C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

/// The text with these written as JSON writes them.
inline QString shownText(const QString &text)
{
    QString result;
    for (const QChar character : text) {
        if (character == '\n')
            result += "\\n";
        else if (character == '\r')
            result += "\\r";
        else if (character == '\t')
            result += "\\t";
        else if (isObeyed(character))
            result += QString("\\u%1").arg(character.unicode(), 4, 16, QChar('0'));
        else
            result += character;
    }
    return result;
}

/// For qInstallMessageHandler().
inline void writeShownLog(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QByteArray line = qFormatLogMessage(type, context, shownText(text)).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}
