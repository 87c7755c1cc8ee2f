#include "fuzzing.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "printerdocs/textprinterdocument.h"
#include "settings/checktemplatessettings.h"

#if defined(QT_NO_DEBUG) || !defined(_GLIBCXX_ASSERTIONS)
#error \
    "fuzzing without the assertions of Qt and of the standard library passes over what it is there for"
#endif

namespace fuzzing {

namespace {

const QString memoryFolder = QStringLiteral("/dev/shm");

void ignoreLog(QtMsgType, const QMessageLogContext &, const QString &) {}

QString folderTemplate()
{
    const bool inMemory = QFileInfo(memoryFolder).isWritable();
    return (inMemory ? memoryFolder : QDir::tempPath()) + QStringLiteral("/fuzz-XXXXXX");
}

QString jsonOf(const QVariant &value)
{
    return QString::fromUtf8(QJsonDocument::fromVariant(value).toJson());
}

}  // namespace

void prepare()
{
    qInstallMessageHandler(ignoreLog);
    qputenv("TARN_CONF", QFile::encodeName(scratchFolder() + QStringLiteral("/etc/tarn.conf")));
    CheckTemplatesSettings().setCheckTemplatesPath(QStringLiteral(PRINTERSLIB_EXAMPLES "/symbols"));
}

QString scratchFolder()
{
    static const QTemporaryDir folder(folderTemplate());
    return folder.path();
}

void fail(const char *law, const QString &actual, const QString &expected)
{
    std::fprintf(stderr, "law broken: %s\n  actual: %s\nexpected: %s\n", law,
                 actual.toUtf8().constData(), expected.toUtf8().constData());
    std::abort();
}

QString shown(const DocumentBlock &block)
{
    return jsonOf(block.toMap()) + shown(block.text()) + shown(block.format()) +
           shown(block.font()) + shown(block.lineSpacing()) +
           shown(static_cast<int>(block.alignment()));
}

QString shown(const TextPrinterDocument &document)
{
    QString text = jsonOf(document.toMap());
    for (const DocumentBlock &block : document.blocks())
        text += shown(block);
    return text;
}

QString takeText(FuzzedDataProvider &input)
{
    return QString::fromStdString(input.ConsumeRandomLengthString());
}

QString takeRest(FuzzedDataProvider &input)
{
    return QString::fromStdString(input.ConsumeRemainingBytesAsString());
}

QVariant takeValue(FuzzedDataProvider &input, int deepest)
{
    enum Kind { Nothing, Number, Small, Real, Truth, Digits, Bytes, List, Map, Text };
    switch (input.ConsumeIntegralInRange<int>(Nothing, Text)) {
        case Nothing:
            return QVariant();
        case Number:
            return input.ConsumeIntegral<qint64>();
        case Small:
            return input.ConsumeIntegralInRange<int>(-2, 70);
        case Real:
            return input.ConsumeFloatingPoint<double>();
        case Truth:
            return input.ConsumeBool();
        case Digits:
            return QString::number(input.ConsumeIntegral<qint64>());
        case Bytes:
            return QByteArray::fromStdString(input.ConsumeRandomLengthString());
        case List: {
            QVariantList list;
            while (deepest > 0 && input.remaining_bytes() > 0 && input.ConsumeBool())
                list.append(takeValue(input, deepest - 1));
            return list;
        }
        case Map:
            return deepest > 0 ? takeMap(input, {}, deepest - 1) : QVariantMap();
        default:
            return takeText(input);
    }
}

QMap<QString, QVariant> takeMap(FuzzedDataProvider &input, const QStringList &keys, int deepest)
{
    QMap<QString, QVariant> map;
    while (input.remaining_bytes() > 0 && input.ConsumeBool()) {
        const int key = input.ConsumeIntegralInRange<int>(0, keys.size());
        map.insert(key < keys.size() ? keys.at(key) : takeText(input), takeValue(input, deepest));
    }
    return map;
}

QByteArray bytesOf(const QVariant &value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

}  // namespace fuzzing

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzzing::prepare();
    return 0;
}
