// Until there are glyphs: blank drawings.
#include "encoder/glyphs_p.h"
#include "printerslib/drivers/printlayout.h"

namespace printerslib::drivers {

__attribute__((weak)) bool glyphs::has(char16_t character)
{
    return character < 0x500;
}

__attribute__((weak)) Paper::Picture glyphs::of(char16_t, QSize cell)
{
    Paper::Picture picture;
    picture.size = cell;
    picture.rows = QByteArray((cell.width() + 7) / 8 * cell.height(), '\x55');
    return picture;
}

__attribute__((weak)) Paper::Picture PrintLayout::rasterOf(const Row &row) const
{
    Paper::Picture picture;
    picture.size = QSize(target.lineDots(), row.height);
    picture.rows = QByteArray((picture.size.width() + 7) / 8 * row.height, '\x55');
    return picture;
}

}  // namespace printerslib::drivers
