#include "documentinput.h"

namespace {

QVariant takeBytes(FuzzedDataProvider &input)
{
    if (input.ConsumeBool())
        return fuzzing::takeValue(input);
    return QByteArray::fromStdString(input.ConsumeRandomLengthString(40)).toBase64();
}

QVariantMap takeImage(FuzzedDataProvider &input)
{
    QVariantMap map = fuzzing::takeMap(input, {"w", "h", "fn"}, 1);
    if (input.ConsumeBool())
        map.insert("w", input.ConsumeIntegralInRange<int>(-1, 40));
    if (input.ConsumeBool())
        map.insert("h", input.ConsumeIntegralInRange<int>(-1, 40));
    map.insert("data", takeBytes(input));
    return map;
}

QVariantMap takeTextBlock(FuzzedDataProvider &input)
{
    QVariantList text, formats, fonts, spacings;
    while (input.remaining_bytes() > 0 && input.ConsumeBool()) {
        text.append(input.ConsumeBool() ? QVariant(fuzzing::takeText(input))
                                        : fuzzing::takeValue(input));
        formats.append(takeBytes(input));
        fonts.append(takeBytes(input));
        if (!input.ConsumeBool())
            spacings.append(fuzzing::takeValue(input, 0));
        else
            spacings.append(input.ConsumeIntegral<int>());
    }
    return {{"txt", text},
            {"fmt", formats},
            {"fnt", fonts},
            {"ls", spacings},
            {"align", input.ConsumeIntegralInRange<int>(-9, 9)}};
}

QVariantMap takeBlock(FuzzedDataProvider &input)
{
    const QStringList keys{"txt", "fmt", "fnt", "ls", "align", "bar", "bt", "qr", "img", "type"};
    QVariantMap map;
    const int type = input.ConsumeIntegralInRange<int>(-1, 5);
    if (type == 0)
        map = takeTextBlock(input);
    if (type == 1)
        map.insert("img", takeImage(input));
    map.insert("type", type);
    const QVariantMap more = fuzzing::takeMap(input, keys, 1);
    for (auto entry = more.begin(); entry != more.end(); ++entry)
        map.insert(entry.key(), *entry);
    return map;
}

}  // namespace

QVariantMap fuzzing::takeDocument(FuzzedDataProvider &input)
{
    QVariantMap map =
        fuzzing::takeMap(input, {"blocks", "cis", "pta", "cta", "rtout", "loop", "init", "spl"}, 1);
    QVariantList blocks;
    while (input.remaining_bytes() > 0 && input.ConsumeBool())
        blocks.append(takeBlock(input));
    map.insert("blocks", blocks);
    QVariantMap images;
    while (input.remaining_bytes() > 0 && input.ConsumeBool())
        images.insert("ci_" + QString::number(input.ConsumeIntegralInRange<int>(-3, 600)),
                      takeImage(input));
    map.insert("cis", images);
    return map;
}
