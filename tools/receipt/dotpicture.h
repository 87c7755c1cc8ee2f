#pragma once

#include <printerslib/drivers/printtarget.h>

#include <QByteArray>
#include <QString>

#include "printerdocs/documentblock.h"

namespace tool {

/// A picture that is drawn dot by dot, for documents. Rows are of whole bytes. What is beyond the
/// edges isn't drawn.
class DotPicture
{
public:
    DotPicture(int width, int height);

    int width() const { return m_width; }
    int height() const { return m_height; }

    void fill(int left, int top, int width, int height);
    /// A byte side by side over a part whose edges are at multiples of eight.
    void fillBytes(int left, int top, int width, int height, char even, char odd);
    /// A number in digits of the library's own, 8 x 16 dots each.
    void writeNumber(int left, int top, int number);
    /// Dots that a number takes across.
    static int widthOf(int number);

    static constexpr int digitHeight = 16;

    DocumentBlock toBlock() const;

private:
    void setDot(int x, int y);

    int m_width;
    int m_height;
    int m_rowBytes;
    QByteArray m_rows;
};

}  // namespace tool
