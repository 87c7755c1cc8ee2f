#pragma once

/// Alignment of the lines of a block. Stored in documents by number; a number that has no name here
/// is kept as it is and treated as left.
enum ETextAlignment : int {
    AlignLeft = 0,
    AlignRight = 1,
    AlignCenter = 2,
    /// What stands before the line's tab goes to the left edge, the rest to the right.
    AlignJustify = 3,
};
