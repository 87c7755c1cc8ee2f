#include "interpreter/linebuffer_p.h"

namespace printerslib::drivers {

void LineBuffer::settle(int left)
{
    for (Paper::Cell &cell : items.cells) {
        cell.left += left;
        cell.top = height - cell.height;
    }
    for (Paper::Picture &picture : items.pictures) {
        picture.place.translate(left, 0);
        picture.place.moveTop(height - picture.place.height());
    }
    for (Paper::Code &code : items.codes) {
        code.place.translate(left, 0);
        code.place.moveTop(height - code.place.height());
    }
}

}  // namespace printerslib::drivers
