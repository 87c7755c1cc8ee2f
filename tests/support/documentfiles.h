#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "printerdocs/textprinterdocument.h"

/// What the tests of document files share: documents, the four files, and stand-ins for the two
/// programs that a save runs.
namespace documentfiles {

const QStringList suffixes{"", ".sha1", ".bak", ".bak.sha1"};

/// Content of a document's files by suffix; a file that isn't there has no entry.
using Folder = QMap<QString, QByteArray>;

inline TextPrinterDocument documentOf(const QString &text)
{
    DocumentBlock block;
    block.setType(DocumentBlock::BlockText);
    block.setText({text});
    block.setFormat(QList<QByteArray>{QByteArray(text.size(), '\0')});
    block.setFont(QList<QByteArray>{QByteArray(text.size(), '\1')});
    block.setLineSpacing(0);
    TextPrinterDocument document;
    document.appendBlock(block);
    document.setSymbolsPerLine(48);
    return document;
}

inline const TextPrinterDocument oldDocument = documentOf("OLD 1.00");
inline const TextPrinterDocument newDocument = documentOf(QString::fromUtf8("НОВЫЙ 2.50"));
/// What a document holds before it is loaded.
inline const TextPrinterDocument before = documentOf("what the document held before the load");

inline QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

/// What a document that can't be parsed leaves: the map form's empty map.
inline TextPrinterDocument emptied()
{
    TextPrinterDocument document;
    document.setMap({});
    return document;
}

/// Both copies hold the text, with right checksums.
inline Folder folderOf(const QByteArray &primary, const QByteArray &backup)
{
    return {{"", primary},
            {".sha1", digestOf(primary) + "  P\n"},
            {".bak", backup},
            {".bak.sha1", digestOf(backup) + "  P.bak\n"}};
}

inline QByteArray jsonOf(const TextPrinterDocument &document)
{
    return QJsonDocument::fromVariant(document.toMap()).toJson(QJsonDocument::Compact);
}

/// Loads into a document that held something else; `loaded` is the result.
inline TextPrinterDocument loadedFrom(const QString &path, bool *loaded)
{
    TextPrinterDocument document = before;
    *loaded = document.loadFromFile(path);
    return document;
}

inline QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes the file anew: some file systems go to the disk when a file is truncated and written.
inline bool writeFile(const QString &fileName, const QByteArray &content)
{
    QFile::remove(fileName);
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

inline Folder readFolder(const QString &path)
{
    Folder folder;
    for (const QString &suffix : suffixes) {
        if (QFile::exists(path + suffix))
            folder.insert(suffix, contentOf(path + suffix));
    }
    return folder;
}

inline bool writeFolder(const QString &path, const Folder &folder)
{
    for (const QString &suffix : suffixes) {
        if (!folder.contains(suffix))
            QFile::remove(path + suffix);
        else if (!writeFile(path + suffix, folder.value(suffix)))
            return false;
    }
    return true;
}

/// A folder of programs that PATH names before, or instead of, the machine's.
class Programs
{
public:
    /// A "sync" that does nothing: the tests save hundreds of times, and the machine's disks are
    /// not theirs.
    Programs() : m_path(qgetenv("PATH"))
    {
        add("sync", ":");
        putFirst();
    }
    ~Programs() { qputenv("PATH", m_path); }
    Q_DISABLE_COPY(Programs)

    void add(const QString &name, const QByteArray &script) const
    {
        const QString fileName = m_folder.filePath(name);
        writeFile(fileName, "#!/bin/sh\n" + script + "\n");
        QFile::setPermissions(fileName, QFile::ReadOwner | QFile::ExeOwner);
    }
    void remove(const QString &name) const { QFile::remove(m_folder.filePath(name)); }

    /// PATH: this folder before the machine's.
    void putFirst() const { qputenv("PATH", folder() + ":" + m_path); }
    /// PATH: this folder alone.
    void putAlone() const { qputenv("PATH", folder()); }

private:
    QByteArray folder() const { return QFile::encodeName(m_folder.path()); }

    QByteArray m_path;
    QTemporaryDir m_folder;
};

}  // namespace documentfiles
