#include "documentcopy.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonParseError>
#include <optional>

#include "outputfile.h"
#include "printerslib/drivers/documentfiles.h"
#include "support.h"

namespace {

constexpr int checksumDigits = 40;

QByteArray checksumOf(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
}

std::optional<QByteArray> contentOf(const QString &fileName, QString &fault)
{
    using printerslib::drivers::DocumentFiles;
    QFile file(fileName);
    // The fault begins with the file's name, which the caller tells itself.
    const QString whole = DocumentFiles::faultOfFile(fileName, DocumentFiles::ToLoad);
    if (!whole.isEmpty())
        fault = whole.mid(fileName.size() + 2);
    else if (!file.exists())
        fault = QStringLiteral("is missing");
    else if (!file.open(QIODevice::ReadOnly))
        fault = file.errorString();
    else
        return file.readAll();
    return std::nullopt;
}

QString faultOfDocument(const QByteArray &content)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError)
        return QStringLiteral("is no JSON: %1 at byte %2")
            .arg(error.errorString())
            .arg(error.offset);
    return document.isObject() ? QString() : QStringLiteral("holds no document");
}

}  // namespace

DocumentCopy readDocumentCopy(const QString &fileName)
{
    DocumentCopy copy{fileName, fileName + QLatin1String(".sha1"), {}, {}, {}};
    const auto content = contentOf(copy.fileName, copy.contentFault);
    const auto checksum = contentOf(copy.checksumFileName, copy.checksumFault);
    if (content) {
        copy.content = *content;
        copy.contentFault = faultOfDocument(*content);
    }
    if (!checksum)
        return copy;
    const QByteArray digits = checksum->left(checksumDigits);
    if (QByteArray::fromHex(digits).toHex() != digits.toLower() || digits.size() < checksumDigits)
        copy.checksumFault = QStringLiteral("holds no checksum");
    else if (content && digits.toLower() != checksumOf(*content))
        copy.checksumFault = QStringLiteral("is the checksum of something else");
    return copy;
}

bool rewriteDocumentCopy(const QString &fileName, const QByteArray &content)
{
    const QByteArray line = checksumOf(content) + "  " + QFile::encodeName(fileName) + '\n';
    return tool::writeFile(fileName, content) &&
           tool::writeFile(fileName + QLatin1String(".sha1"), line);
}
