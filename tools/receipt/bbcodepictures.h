#pragma once

#include <QString>
#include <QVector>

namespace tool {

/// A picture that a BBCode text names.
struct BbCodePicture
{
    QString pattern;  ///< of the files that may be taken for it
    QString fault;    ///< why it isn't printed; empty if it is
};

/// The pictures of a BBCode text, each once, in the order of the text.
QVector<BbCodePicture> picturesOf(const QString &text, const QString &folder);

}  // namespace tool
