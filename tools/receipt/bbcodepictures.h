#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace tool {

/// A picture that a BBCode text names.
struct BbCodePicture
{
    QString pattern;    ///< of the files that may be taken for it
    QStringList files;  ///< their names, the one that is taken first; none for wildcards
    QString fault;      ///< why it isn't printed; empty if it is
    int line = 0;       ///< of the text that names it first, from 1; 0: that isn't known
    QString name;       ///< in small letters
};

/// The pictures of a BBCode text, each once, in the order of the text.
QVector<BbCodePicture> picturesOf(const QString &text, const QString &folder);

/// The picture of a name in small letters.
BbCodePicture pictureOf(const QString &name, const QString &folder);

}  // namespace tool
