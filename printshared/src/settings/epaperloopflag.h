#pragma once

/// Behaviour of the paper loop, as a setting and as a flag of a document. The numbers are handed on
/// to the printer driver, which gives 1 and 2 their meaning.
enum EPaperLoopFlag : int {
    PaperLoopNone = 0,
    PaperLoopFirst = 1,
    PaperLoopSecond = 2,
};
