#pragma once

/// Section of a fiscal receipt's template. Clients store the numbers.
enum CheckBlockType : unsigned char {
    Unsplit = 0,  ///< a piece of template text outside any marker
    FiscalHeader = 1,
    FiscalBody = 2,
    FiscalOperations = 3,
    FiscalSummary = 4,
    FiscalQr = 5,
    FiscalFooter = 6,
};
