#pragma once

#include <QString>

#include "tags.h"
#include "values.h"

namespace templatelint {

/// What a document's value loses on its way through the format of its tag.
struct FigureVerdict
{
    enum Fault {
        None,
        LostSign,      ///< of a number between -1 and 0
        ReadAsNumber,  ///< a text that is printed as the number that it reads as
        Changed        ///< another number is printed
    };
    Fault fault = None;
    QString message;
};

/// Of a tag for an attribute that the document has, or for an expression.
FigureVerdict figureVerdictOf(const AttributeTag &tag, Values &values);

}  // namespace templatelint
