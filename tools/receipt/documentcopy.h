#pragma once

#include <QByteArray>
#include <QString>

/// One of the two copies in a document's set of files, looked at from outside the library, which
/// says only whether it could load one.
struct DocumentCopy
{
    QString fileName;
    QString checksumFileName;
    QByteArray content;
    QString contentFault;   ///< what is wrong with the document; empty: nothing
    QString checksumFault;  ///< what is wrong with its checksum file; empty: nothing

    bool isGood() const { return contentFault.isEmpty() && checksumFault.isEmpty(); }
};

/// Reads and checks a copy and its checksum file.
DocumentCopy readDocumentCopy(const QString &fileName);

/// Replaces the copy's two files, each at once, by the content and its checksum. Complains and
/// gives false on failure.
bool rewriteDocumentCopy(const QString &fileName, const QByteArray &content);
