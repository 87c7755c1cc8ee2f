#pragma once

#include <vector>

/// One comparison: what was measured of two benchmarks of one program, and what their ratio should
/// be. A "#" in the names stands for each of the sizes: the number of a receipt's items, or of
/// names.
struct Goal
{
    const char *work;
    const char *program;
    const char *ours;
    const char *peer;  ///< empty: what `counter` counts of ours is compared with the limit itself
    double atMost;     ///< 0: only stated
    const char *counter = "";
    bool isAim = false;  ///< aimed at beyond what has to be reached
    std::vector<int> sizes{10, 100, 1000};
};

extern const std::vector<Goal> goals;
