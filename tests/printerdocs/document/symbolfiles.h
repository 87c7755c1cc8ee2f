#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <limits>

#include "printerdocs/specialcharacters.h"

/// Files of symbols, and the table that they give.
namespace symbolfiles {

inline constexpr int maximum = std::numeric_limits<int>::max();
inline constexpr int minimum = std::numeric_limits<int>::min();

inline QByteArray symbol(int code, int width, int height)
{
    const QByteArray line = "<Line>" + QByteArray(width, '1') + "</Line>\n";
    return "<Symbol Code=\"" + QByteArray::number(code) + "\">\n" + line.repeated(height) +
           "</Symbol>\n";
}

inline QByteArray font(int width, int height, const QByteArray &symbols)
{
    return "<Font Width=\"" + QByteArray::number(width) + "\" Height=\"" +
           QByteArray::number(height) + "\">\n" + symbols + "</Font>\n";
}

inline QByteArray file(const QByteArray &fonts)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<SpecialSymbolImages>\n" + fonts +
           "</SpecialSymbolImages>\n";
}

/// Writes a file of symbols, and gives its name.
inline QString writeTo(const QTemporaryDir &folder, const QByteArray &content)
{
    const QString name = folder.filePath("symbols.ssi");
    QFile output(name);
    if (!output.open(QIODevice::WriteOnly) || output.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(name));
    return name;
}

inline MonochromeImage filled(int width, int height)
{
    MonochromeImage image = MonochromeImage::createEmpty(width, height, 8);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, true, 8);
    }
    return image;
}

inline SpecialCharacters tableOf(int code, const MonochromeImage &image)
{
    SpecialCharacters table;
    table.insert(static_cast<signed char>(code), image);
    return table;
}

}  // namespace symbolfiles
