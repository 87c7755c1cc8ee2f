#pragma once

#include <QString>
#include <QVector>

#include "analysis.h"
#include "templatelint.h"

namespace templatelint {

/// A printed total that isn't the sum of what is printed.
struct WrongSum
{
    int offset;  ///< of the total's tag
    Severity severity;
    QString message;
};

/// By the amounts at the ends of the lines, and by expressions whose terms are printed too. What
/// may be no sum at all isn't told.
QVector<WrongSum> wrongSumsOf(const Piece &piece, Values &values);

}  // namespace templatelint
