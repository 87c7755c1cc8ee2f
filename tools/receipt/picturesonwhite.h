#pragma once

#include <QHash>
#include <QString>

#include "printerdocs/textprinterdocument.h"

namespace tool {

/// Lays the transparent pictures of BBCode texts on white paper: the library reads what can be seen
/// through as black. Each file is read once while this lives.
class PicturesOnWhite
{
public:
    /// Takes what the files show on white in place of the document's transparent pictures.
    /// Complains of one with which that can't be done, and leaves it.
    void putInto(TextPrinterDocument &document);

private:
    QHash<QString, MonochromeImage> m_images;  ///< by file; invalid: the document's own is right
};

}  // namespace tool
