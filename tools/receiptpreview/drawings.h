#pragma once

#include <printerslib/drivers/paper.h>

#include <map>
#include <tuple>
#include <vector>

#include "layout.h"

namespace receiptpreview {

/// Drawings that stand in the place of characters, each once for a size on the paper.
class Drawings
{
public:
    using Picture = printerslib::drivers::Paper::Picture;

    explicit Drawings(std::vector<Raster> &drawings) : m_drawings(drawings) {}

    /// The number of a drawing in the layout.
    /// @param number of the picture where it comes from
    /// @param scale  how often its pixels are repeated
    int numberOf(int number, const Picture &picture, const QSize &scale);
    /// Numbers are those of other pictures from now on.
    void startAnew() { m_numbers.clear(); }

private:
    std::vector<Raster> &m_drawings;
    std::map<std::tuple<int, int, int>, int> m_numbers;
};

}  // namespace receiptpreview
