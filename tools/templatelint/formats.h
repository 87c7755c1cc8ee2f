#pragma once

#include <QString>
#include <QVariant>

namespace templatelint {

/// What is wrong with the format of a tag.
struct FormatFault
{
    enum Kind {
        None,
        Letters,  ///< of a date or time that mean something else
        Misfit    ///< it isn't for the value
    };
    Kind kind = None;
    QString message;
    bool changesFigure = false;  ///< what is printed is another value than was given
};

/// The fault that the format of an attribute's value has.
/// @param printed what the library prints of the two
FormatFault formatFault(const QVariant &value, const QString &format, const QString &printed);

/// The fault that a format has with values of any kind.
FormatFault formatFault(const QString &format);

/// Whether it can only be meant for dates or times.
bool looksLikeDateFormat(const QString &format);

}  // namespace templatelint
