#include "folderoptions.h"

#include <QFileInfo>

#include "support.h"

namespace tool {

QCommandLineOption symbolsOption()
{
    return {QStringLiteral("symbols"),
            QStringLiteral("Folder of the special symbol files; default: that of the template."),
            QStringLiteral("DIR")};
}

QCommandLineOption imagesOption(const QString &byDefault)
{
    return {QStringLiteral("images"),
            QStringLiteral("Folder of a BBCode text's pictures; default: %1.").arg(byDefault),
            QStringLiteral("DIR")};
}

QString folderOf(const QCommandLineParser &parser, const QCommandLineOption &option,
                 const QString &fileName)
{
    return parser.isSet(option) ? parser.value(option) : QFileInfo(fileName).path();
}

bool isFolder(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    const QString folder = parser.value(option);
    if (!parser.isSet(option) || QFileInfo(folder).isDir())
        return true;
    complain(QStringLiteral("--%1: \"%2\" is no folder").arg(option.names().constFirst(), folder));
    return false;
}

}  // namespace tool
