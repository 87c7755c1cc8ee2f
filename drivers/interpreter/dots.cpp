#include "interpreter/dots_p.h"

#include <algorithm>

namespace printerslib::drivers {

namespace {

int bytesOfRow(int width)
{
    return (width + 7) / 8;
}

bool isDark(const Paper::Picture &picture, int x, int y)
{
    const int at = y * bytesOfRow(picture.size.width()) + x / 8;
    return (static_cast<unsigned char>(picture.rows.at(at)) & (0x80 >> (x % 8))) != 0;
}

void darken(Paper::Picture &picture, int x, int y)
{
    const int at = y * bytesOfRow(picture.size.width()) + x / 8;
    picture.rows[at] = static_cast<char>(picture.rows.at(at) | (0x80 >> (x % 8)));
}

Paper::Picture blankPicture(int width, int height)
{
    Paper::Picture picture;
    picture.size = {width, height};
    picture.rows = QByteArray(bytesOfRow(width) * height, '\0');
    return picture;
}

}  // namespace

Paper::Picture pictureOfColumns(const QByteArray &data, int columns, int bytesPerColumn)
{
    // As many columns as there's data for, else a few bytes would ask for much memory.
    const int known = bytesPerColumn == 0 ? 0 : (data.size() + bytesPerColumn - 1) / bytesPerColumn;
    Paper::Picture picture = blankPicture(std::min(columns, known), 8 * bytesPerColumn);
    for (int i = 0; i < data.size(); ++i) {
        const int x = i / bytesPerColumn;
        if (x >= picture.size.width())
            break;
        const auto byte = static_cast<unsigned char>(data.at(i));
        for (int bit = 0; byte != 0 && bit < 8; ++bit) {
            if ((byte & (0x80 >> bit)) != 0)
                darken(picture, x, 8 * (i % bytesPerColumn) + bit);
        }
    }
    return picture;
}

Paper::Picture pictureOfRows(const QByteArray &data, int width, int height)
{
    const int bytes = bytesOfRow(width);
    const int known = bytes == 0 ? 0 : (data.size() + bytes - 1) / bytes;
    Paper::Picture picture;
    picture.size = {width, std::min(height, known)};
    picture.rows = QByteArray(data.constData(), std::min(data.size(), bytes * height));
    picture.rows += QByteArray(bytes * picture.size.height() - picture.rows.size(), '\0');
    return picture;
}

Paper::Picture croppedPicture(const Paper::Picture &picture, QSize size)
{
    const QSize kept = size.boundedTo(picture.size).expandedTo({0, 0});
    if (kept == picture.size)
        return picture;
    Paper::Picture cropped = picture;
    cropped.size = kept;
    cropped.rows.clear();
    const int bytes = bytesOfRow(picture.size.width());
    for (int y = 0; y < kept.height(); ++y)
        cropped.rows += picture.rows.mid(y * bytes, bytesOfRow(kept.width()));
    const int beyond = 8 * bytesOfRow(kept.width()) - kept.width();
    for (int y = 1; beyond > 0 && y <= kept.height(); ++y) {
        const int at = y * bytesOfRow(kept.width()) - 1;
        cropped.rows[at] = static_cast<char>(cropped.rows.at(at) & (0xFF << beyond));
    }
    return cropped;
}

Paper::Picture turnedPicture(const Paper::Picture &picture, int quarters)
{
    if (quarters % 4 == 0)
        return picture;
    const int width = picture.size.width();
    const int height = picture.size.height();
    const bool isSwapped = quarters % 2 != 0;
    Paper::Picture turned = isSwapped ? blankPicture(height, width) : blankPicture(width, height);
    turned.dotsPerPixel = isSwapped ? picture.dotsPerPixel.transposed() : picture.dotsPerPixel;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (!isDark(picture, x, y))
                continue;
            if (quarters % 4 == 1)
                darken(turned, height - 1 - y, x);
            else if (quarters % 4 == 2)
                darken(turned, width - 1 - x, height - 1 - y);
            else
                darken(turned, y, width - 1 - x);
        }
    }
    return turned;
}

void turnCode(Paper::Code &code, int quarters)
{
    Paper::Picture modules;
    modules.size = code.modules;
    modules.rows = code.rows;
    modules.dotsPerPixel = code.module;
    const Paper::Picture turned = turnedPicture(modules, quarters);
    code.modules = turned.size;
    code.rows = turned.rows;
    code.module = turned.dotsPerPixel;
    code.quarterTurns = quint8((code.quarterTurns + quarters) % 4);
}

QSize dotsOf(const Paper::Picture &picture)
{
    return {picture.size.width() * picture.dotsPerPixel.width(),
            picture.size.height() * picture.dotsPerPixel.height()};
}

}  // namespace printerslib::drivers
