#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"

/// One font of a printer model: a record of the catalogue. A plain value; any thread may use its
/// own object.
class PRINTERSLIB_EXPORT FontInfo
{
public:
    /// Index of the font within its model; -1: none.
    signed char id() const;
    void setId(const signed char &id);

    /// Width of the character cell in dots.
    unsigned char width() const;
    void setWidth(const unsigned char &width);
    /// Height of the character cell in dots.
    unsigned char height() const;
    void setHeight(const unsigned char &height);

    /// Width of a character in millimetres.
    double mwidth() const;
    void setMwidth(double mwidth);
    /// Height of a character in millimetres.
    double mheight() const;
    void setMheight(double mheight);

    /// Whether the pitch is fixed.
    bool monospace() const;
    void setMonospace(bool monospace);

    /// Whether the font can take user-defined characters.
    bool customSymbols() const;
    void setCustomSymbols(bool customSymbols);

    /// Width of a user-defined character's cell in dots; 0 where the font takes none.
    unsigned char customWidth() const;
    void setCustomWidth(const unsigned char &customWidth);
    /// Height of that cell in dots; 0 where the font takes none.
    unsigned char customHeight() const;
    void setCustomHeight(const unsigned char &customHeight);

    /// The id as a decimal number: the key of this record in the map of its model.
    QString idAsString() const;

    /// Assigns every field; a missing key gives 0 or false. The custom sizes are 0 for a font that
    /// takes no user-defined characters, whatever the map says: the catalogue lists sizes there.
    void setMap(const QMap<QString, QVariant> &map);
    /// Without the id, and without the custom sizes where the font takes no such characters.
    QMap<QString, QVariant> toMap() const;

    /// Whether all fields are equal.
    bool operator==(const FontInfo &other) const;
    bool operator!=(const FontInfo &other) const;

private:
    signed char m_id = -1;
    unsigned char m_width = 0;
    unsigned char m_height = 0;
    double m_mwidth = 0.0;
    double m_mheight = 0.0;
    bool m_monospace = true;
    bool m_customSymbols = false;
    unsigned char m_customWidth = 0;
    unsigned char m_customHeight = 0;
};
