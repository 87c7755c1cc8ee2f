#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "../../differential/surroundings.h"
#include "printerdocs/printerdocumentformatter.h"

/// Documents, settings and files of symbols for a formatter, and what it makes of them in words.
namespace formatterbench {

using Attributes = QMap<QString, QVariant>;

/// A document of these attributes and entries.
inline PrinterDocument documentOf(const Attributes &attributes = {}, const QString &entries = {})
{
    PrinterDocument made;
    made.setAttributes(attributes);
    made.setEntries(entries);
    return made;
}

inline PrinterDocument copyOf(PrinterDocument made)
{
    made.setIsCopy(true);
    return made;
}

inline QString manyLines(const QString &line, int count)
{
    QString text = (line + "\n").repeated(count);
    text.chop(1);
    return text;
}

inline QString hexOf(const QList<QByteArray> &lines)
{
    QStringList shown;
    for (const QByteArray &bytes : lines)
        shown << QString::fromLatin1(bytes.toHex());
    return shown.join("|");
}

inline QList<QByteArray> zeroBytesFor(const QStringList &lines)
{
    QList<QByteArray> bytes;
    for (const QString &text : lines)
        bytes << QByteArray(text.length(), '\0');
    return bytes;
}

/// A block in one line: alignment, its lines parted by "|", and what isn't zero of all the rest.
inline QString shown(const DocumentBlock &block)
{
    static const char *const names[] = {"left", "right", "center", "justify"};
    const QString alignment = names[block.alignment() & 3];
    if (block.isQrCode())
        return "qr " + alignment + ": " + block.text().join("|");
    if (!block.isText())
        return "no text";
    QString text = alignment + ": " + block.text().join("|");
    if (block.format() != zeroBytesFor(block.text()))
        text += " formats " + hexOf(block.format());
    if (block.font() != zeroBytesFor(block.text()))
        text += " fonts " + hexOf(block.font());
    for (const int spacing : block.lineSpacing()) {
        if (spacing != 0)
            text += QString(" spacing %1").arg(spacing);
    }
    return text;
}

inline QStringList shown(const TextPrinterDocument &printable)
{
    QStringList blocks;
    for (const DocumentBlock &block : printable.blocks())
        blocks << shown(block);
    return blocks;
}

using differential::setCharactersMode;

inline void clearSettings()
{
    setCharactersMode(0);
    IPrintDeviceSettings::setPrintDeviceSettings({});
}

inline void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
}

inline QByteArray symbolFile(int code)
{
    return R"(<SpecialSymbolImages><Font Width="8" Height="1"><Symbol Code=")" +
           QByteArray::number(code) +
           R"("><Line>10000001</Line></Symbol></Font></SpecialSymbolImages>)";
}

/// A folder with "one.ssi", which draws the code 1, and "two.ssi", which draws the code 2.
class SymbolFolder
{
public:
    SymbolFolder()
    {
        writeFile(m_folder.filePath("one.ssi"), symbolFile(1));
        writeFile(m_folder.filePath("two.ssi"), symbolFile(2));
    }
    QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

}  // namespace formatterbench
