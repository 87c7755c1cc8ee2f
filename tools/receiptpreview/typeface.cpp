#include "typeface.h"

#include <QFile>
#include <QFontDatabase>

namespace receiptpreview {

namespace {

// The outlines are taken at this size and scaled to the cell, so the size itself doesn't matter.
constexpr qreal outlineSize = 1000;
constexpr qreal slant = -0.2;  // of italic letters

}  // namespace

QString Typeface::defaultFolder()
{
    return QStringLiteral(RECEIPTPREVIEW_FONTS);
}

bool Typeface::load(const QString &folder, QString *error)
{
    return loadFace(m_regular, folder + QStringLiteral("/DejaVuSansMono.ttf"), error) &&
           loadFace(m_bold, folder + QStringLiteral("/DejaVuSansMono-Bold.ttf"), error);
}

bool Typeface::loadFace(Face &face, const QString &path, QString *error)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        face.outlines.loadFromData(file.readAll(), outlineSize, QFont::PreferNoHinting);
    if (!face.outlines.isValid()) {
        *error =
            QStringLiteral("%1: %2; the file belongs to the Debian package fonts-dejavu-core")
                .arg(path, file.isOpen() ? QStringLiteral("this is no font") : file.errorString());
        return false;
    }
    face.path = path;
    return true;
}

/// Qt embeds only what comes from its font database, which looks fonts up by name. The outlines say
/// whether what it found is the file's own font.
QRawFont Typeface::embeddableFont(quint16 effects) const
{
    const Face &own = face(effects);
    QFontDatabase::addApplicationFont(own.path);
    QFont wanted(own.outlines.familyName());
    wanted.setBold((effects & Cell::Bold) != 0);
    wanted.setPixelSize(static_cast<int>(outlineSize));
    wanted.setHintingPreference(QFont::PreferNoHinting);
    wanted.setStyleStrategy(QFont::NoFontMerging);
    QRawFont found = QRawFont::fromFont(wanted);
    return found.fontTable("glyf") == own.outlines.fontTable("glyf") ? found : own.outlines;
}

QPainterPath Typeface::outline(char16_t code, quint16 effects, const QSizeF &cell) const
{
    if (code == u' ')
        return QPainterPath();
    return toCell(effects, cell).map(font(effects).pathForGlyph(glyph(code, effects)));
}

quint32 Typeface::glyph(char16_t code, quint16 effects) const
{
    quint32 index = 0;
    int count = 1;
    const QChar character(code);
    font(effects).glyphIndexesForChars(&character, 1, &index, &count);
    return index;
}

QTransform Typeface::toCell(quint16 effects, const QSizeF &cell) const
{
    const bool isTurned = (effects & Cell::Turned) != 0;
    return toUprightCell(effects, isTurned ? cell.transposed() : cell) * turnOf(effects, cell);
}

QTransform Typeface::toUprightCell(quint16 effects, const QSizeF &cell) const
{
    const QRawFont &face = font(effects);
    const QPointF advance = face.advancesForGlyphIndexes({glyph(u'0', effects)}).value(0);
    const qreal ascent = face.ascent();
    const qreal xScale = cell.width() / advance.x();
    const qreal yScale = cell.height() / (ascent + face.descent());
    QTransform transform = QTransform::fromScale(xScale, yScale);
    transform.translate(0, ascent);
    if ((effects & Cell::Italic) != 0)
        transform.shear(slant, 0);
    return transform;
}

}  // namespace receiptpreview
