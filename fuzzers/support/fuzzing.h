#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <QDebug>
#include <QMap>
#include <QString>
#include <QVariant>

class DocumentBlock;
class TextPrinterDocument;

/// What the fuzz targets share. A target checks laws, which hold for every input: one that doesn't
/// is told on standard error, and ends the process.
namespace fuzzing {

/// Before the first input: no log output, and a configuration that isn't the machine's.
void prepare();

/// A folder of this process, in memory if the machine has such a place; gone at the end.
QString scratchFolder();

[[noreturn]] void fail(const char *law, const QString &actual, const QString &expected);

template <class Value>
QString shown(const Value &value)
{
    QString text;
    QDebug(&text) << value;
    return text;
}
QString shown(const DocumentBlock &block);
QString shown(const TextPrinterDocument &document);

template <class Value>
void equal(const char *law, const Value &actual, const Value &expected)
{
    if (!(actual == expected))
        fail(law, shown(actual), shown(expected));
}

inline void holds(const char *law, bool condition)
{
    if (!condition)
        fail(law, QStringLiteral("false"), QStringLiteral("true"));
}

/// A text that ends where the input says, and all that is left as a text. Numbers are taken from
/// the end of the input, so a text file is an input whose last bytes are numbers.
QString takeText(FuzzedDataProvider &input);
QString takeRest(FuzzedDataProvider &input);

/// A value of any kind that JSON, item lists or documents may hold.
QVariant takeValue(FuzzedDataProvider &input, int deepest = 2);

/// A map whose keys are mostly among the given ones.
QMap<QString, QVariant> takeMap(FuzzedDataProvider &input, const QStringList &keys,
                                int deepest = 2);

/// The bytes of a value, by which also values that aren't equal to themselves are compared.
QByteArray bytesOf(const QVariant &value);

}  // namespace fuzzing
