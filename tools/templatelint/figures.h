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

/// What is wrong with a tag whatever the value is; empty if nothing is. A name that says that it is
/// one of digits to be copied, such as AUTH or INN, has a format that takes zeros off.
QString faultOfCode(const AttributeTag &tag);

/// Of a tag for an attribute that the document has, or for an expression.
/// @param isBbCode the text is one in BBCode, where the tags of templates print as they stand
FigureVerdict figureVerdictOf(const AttributeTag &tag, Values &values, bool isBbCode = false);

}  // namespace templatelint
