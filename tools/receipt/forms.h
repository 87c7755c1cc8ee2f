#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>

#include "support.h"

namespace tool {

/// The option to leave the receipt's text in HTML as it is.
inline QCommandLineOption unescapedOption()
{
    return {
        QStringLiteral("unescaped"),
        QStringLiteral("Leave the receipt's text in HTML as it is, so that tags in it are tags of "
                       "the page. Without this option \"&\", \"<\", \">\" and the double quote "
                       "are escaped.")};
}

/// Of the two functions of a form the one that the option asks for. Complains and gives null where
/// the form isn't HTML and so has no unescaped one.
template <typename Function>
Function chosenWriter(const QCommandLineParser &parser, Function escaped, Function unescaped)
{
    if (!parser.isSet(unescapedOption().names().constFirst()))
        return escaped;
    if (unescaped == nullptr)
        complain(QStringLiteral("--unescaped needs HTML, see --as"));
    return unescaped;
}

}  // namespace tool
