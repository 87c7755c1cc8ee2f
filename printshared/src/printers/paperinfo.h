#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"

/// One paper type of a printer model: a record of the catalogue. A plain value; any thread may use
/// its own object.
class PRINTERSLIB_EXPORT PaperInfo
{
public:
    /// Index of the paper type within its model; -1: none.
    signed char id() const;
    void setId(const signed char &id);

    /// Printable width in millimetres.
    short width() const;
    void setWidth(const short &width);

    /// Length in millimetres; -1 for endless tape.
    short height() const;
    void setHeight(const short &height);

    /// Dots per printed line.
    int pointsToLine() const;
    void setPointsToLine(int pointsToLine);

    /// Label shown to a user, such as "80 mm".
    QString caption() const;
    void setCaption(const QString &caption);

    /// The id as a decimal number: the key of this record in the map of its model.
    QString idAsString() const;

    /// Assigns every field; a missing key gives 0 or an empty text.
    void setMap(const QMap<QString, QVariant> &map);
    /// Without the id.
    QMap<QString, QVariant> toMap() const;

    /// Whether all fields are equal.
    bool operator==(const PaperInfo &other) const;
    bool operator!=(const PaperInfo &other) const;

private:
    signed char m_id = -1;
    short m_width = 0;
    short m_height = 0;
    int m_pointsToLine = 0;
    QString m_caption;
};
