// The four files of a document, each as it should be, torn, or anything else.
#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <numeric>

#include "documentinput.h"
#include "documentlaws.h"
#include "fuzzing.h"
#include "support/documentfiles.h"

using fuzzing::equal;

namespace {

using documentfiles::Folder;

constexpr int digits = 40;

QByteArray checksumOf(const QByteArray &content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
}

QByteArray takeContent(FuzzedDataProvider &input)
{
    if (input.ConsumeBool())
        return QByteArray::fromStdString(input.ConsumeRandomLengthString());
    const QVariantMap map = fuzzing::takeDocument(input);
    QByteArray json = QJsonDocument::fromVariant(map).toJson(QJsonDocument::Compact);
    if (input.ConsumeBool())
        json.truncate(input.ConsumeIntegralInRange<int>(0, json.size()));
    return json;
}

QByteArray takeChecksum(FuzzedDataProvider &input, const QByteArray &content)
{
    const QByteArray right = checksumOf(content) + "  /some/path\n";
    switch (input.ConsumeIntegralInRange<int>(0, 4)) {
        case 0:
            return QByteArray::fromStdString(input.ConsumeRandomLengthString());
        case 1:
            return right.left(input.ConsumeIntegralInRange<int>(0, digits));
        case 2:
            return right.toUpper();
        default:
            return right;
    }
}

Folder takeFolder(FuzzedDataProvider &input)
{
    Folder folder;
    for (const QString &copy : {QString(), QStringLiteral(".bak")}) {
        const QByteArray content = takeContent(input);
        if (input.ConsumeIntegralInRange<int>(0, 7) > 0)
            folder.insert(copy, content);
        if (input.ConsumeIntegralInRange<int>(0, 7) > 0)
            folder.insert(copy + ".sha1", takeChecksum(input, content));
    }
    return folder;
}

/// The content that a load has to find: that of the first copy with its checksum.
const QByteArray *goodCopyOf(const Folder &folder)
{
    for (const QString &copy : {QString(), QStringLiteral(".bak")}) {
        const auto content = folder.constFind(copy);
        const auto checksum = folder.constFind(copy + ".sha1");
        if (content == folder.cend() || checksum == folder.cend())
            continue;
        if (QByteArray::fromHex(checksum->left(digits)).toHex() == checksumOf(*content))
            return &*content;
    }
    return nullptr;
}

void loadFindsTheGoodCopy(const QString &path, const Folder &folder)
{
    const TextPrinterDocument before = documentfiles::documentOf("before");
    TextPrinterDocument loaded = before;
    const bool success = loaded.loadFromFile(path);
    const QByteArray *const content = goodCopyOf(folder);
    TextPrinterDocument expected = before;
    QJsonParseError error{};
    if (content)
        expected.setMap(QJsonDocument::fromJson(*content, &error).toVariant().toMap());
    equal("a load succeeds with a good copy of JSON", success,
          content && error.error == QJsonParseError::NoError);
    equal("a load gives the good copy", loaded, expected);
    equal("a load changes no file", documentfiles::readFolder(path), folder);
    documentlaws::check(loaded);
}

void saveIsLoaded(const QString &path, const TextPrinterDocument &document)
{
    static const documentfiles::Programs programs;
    equal("a save succeeds", document.saveToFile(path), true);
    TextPrinterDocument loaded;
    equal("what was saved is loaded", loaded.loadFromFile(path), true);
    equal("and is the document", loaded, documentlaws::afterItsMapForm(document));
    document.removeFile(path);
    equal("nothing is left", documentfiles::readFolder(path), Folder());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // A save runs programs, which takes a thousand times as long as a load. By the sum of the bytes
    // few of the inputs that are made of one that saves do so too.
    const bool saves = std::accumulate(data, data + size, 0U) % 64 == 13;
    FuzzedDataProvider input(data, size);
    const Folder folder = takeFolder(input);
    const QString path = fuzzing::scratchFolder() + QStringLiteral("/document");
    for (const QString &suffix : documentfiles::suffixes) {
        QFile::remove(path + suffix);
        if (folder.contains(suffix))
            documentfiles::writeFile(path + suffix, folder.value(suffix));
    }
    loadFindsTheGoodCopy(path, folder);
    if (saves) {
        TextPrinterDocument document;
        document.setMap(fuzzing::takeDocument(input));
        saveIsLoaded(path, document);
    }
    return 0;
}
