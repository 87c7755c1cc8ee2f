#pragma once

#include <QChar>
#include <QHash>
#include <QPainterPath>
#include <QRawFont>
#include <QSize>
#include <QString>
#include <QTransform>

#include "layout.h"

namespace receiptpreview {

/// The letters of pictures: DejaVu Sans Mono, regular and bold, read from its files, so that no
/// setting of the machine chooses another. Needs a QGuiApplication while it lives.
class Typeface
{
public:
    /// The folder of Debian's package fonts-dejavu-core.
    static QString defaultFolder();

    /// Reads the files. On failure gives false with a message that names the file and the package.
    bool load(const QString &folder, QString *error);

    /// The outline of a character in a cell of this size, with the cell's upper left corner at the
    /// origin. Empty for a blank.
    QPainterPath outline(char16_t code, quint16 effects, const QSizeF &cell) const;

    const QRawFont &font(quint16 effects) const { return face(effects).outlines; }
    /// The same font in a form that Qt embeds in a PDF, where it can be had; else as font(). Looks
    /// the font up each time.
    QRawFont embeddableFont(quint16 effects) const;
    quint32 glyph(char16_t code, quint16 effects) const;
    /// From the font's own units, with the origin on the base line, to a cell.
    QTransform toCell(quint16 effects, const QSizeF &cell) const;

private:
    struct Face
    {
        QString path;
        QRawFont outlines;
    };

    QTransform toUprightCell(quint16 effects, const QSizeF &cell) const;
    static bool loadFace(Face &face, const QString &path, QString *error);
    const Face &face(quint16 effects) const
    {
        return (effects & Cell::Bold) != 0 ? m_bold : m_regular;
    }

    Face m_regular;
    Face m_bold;
};

}  // namespace receiptpreview
