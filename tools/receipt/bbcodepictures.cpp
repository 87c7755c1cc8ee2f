#include "bbcodepictures.h"

#include <QDir>
#include <QHash>
#include <QImageReader>
#include <QStringList>
#include <memory>

#include "bbcode.h"
#include "bbcpp/bbdocument.h"
#include "printerdocs/bbcodeparser.h"
#include "words.h"

namespace tool {

namespace {

QString lowerCased(const std::string &text)
{
    return QString::fromStdString(text).trimmed().toLower();
}

/// The names that stand in the tags for pictures.
QStringList pictureNames(const QString &text)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    document->load(text.toStdString());
    QStringList names;
    bool isPicture = false;
    bbcpp::walk(*document, [&](const bbcpp::BBNodePtr &node, unsigned int) {
        const auto element = bbcpp::tryDowncast<bbcpp::BBElement>(node);
        if (!element)
            return;
        if (element->getElementType() != bbcpp::BBElement::ElementParameter) {
            if (lowerCased(element->getNodeName()) == QLatin1String("img"))
                isPicture = element->getElementType() == bbcpp::BBElement::ElementSimple;
            return;
        }
        for (const auto &[key, value] : element->getParameters()) {
            if (isPicture && lowerCased(key) == QLatin1String("name"))
                names.append(lowerCased(value));
        }
    });
    names.removeDuplicates();
    return names;
}

/// The first line that names a picture, by its name.
QHash<QString, int> linesOfNames(const QString &text)
{
    const templatelint::BbCode code(text.split(QLatin1Char('\n')), {});
    QHash<QString, int> lines;
    for (const templatelint::BbEvent &event : code.events()) {
        const QString name = event.parameters.value(QStringLiteral("name"));
        if (event.name == QLatin1String("img") && !name.isEmpty() && !lines.contains(name))
            lines.insert(name, code.source().place(code.offsetOf(event)).line);
    }
    return lines;
}

/// The library's own reading of a picture says whether it can be printed.
bool isPrinted(const QString &name, const QString &folder)
{
    BbCodeParser parser(nullptr);
    parser.setImagesPath(folder);
    parser.parseText(QStringLiteral("[img name=%1][/img]").arg(name));
    const QList<DocumentBlock> blocks = parser.blocks();
    return !blocks.isEmpty() && blocks.constFirst().isImage();
}

/// Why a picture of a file isn't printed.
QString faultOf(const QString &fileName)
{
    QImageReader reader(fileName);
    reader.setDecideFormatFromContent(true);
    return templatelint::Words::tr("the picture \"%1\" can't be read: %2")
        .arg(fileName, reader.canRead() ? templatelint::Words::tr(
                                              "it is damaged, too large, or of a format that isn't "
                                              "printed")
                                        : reader.errorString());
}

}  // namespace

QVector<BbCodePicture> picturesOf(const QString &text, const QString &folder)
{
    QVector<BbCodePicture> pictures;
    const QStringList names = pictureNames(text);
    const QHash<QString, int> lines = names.isEmpty() ? QHash<QString, int>() : linesOfNames(text);
    for (const QString &name : names) {
        pictures.append(pictureOf(name, folder));
        pictures.last().line = lines.value(name);
    }
    return pictures;
}

/// Of names with several wildcards only the library finds the files in bounded time.
BbCodePicture pictureOf(const QString &name, const QString &folder)
{
    const QDir place(folder);
    const bool hasWildcards = name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
    const QString pattern = hasWildcards ? QStringLiteral("*") : name + QLatin1Char('*');
    BbCodePicture picture{place.filePath(pattern), {}, QString(), 0, name};
    if (!hasWildcards)
        picture.files = place.entryList({pattern}, QDir::Files, QDir::Name);
    if (isPrinted(name, folder))
        return picture;
    if (!picture.files.isEmpty())
        picture.fault = faultOf(place.filePath(picture.files.constFirst()));
    else if (hasWildcards)
        picture.fault =
            templatelint::Words::tr("the folder \"%2\" has no picture \"%1\" that can be read")
                .arg(name, folder);
    else
        picture.fault = templatelint::Words::tr("there is no picture \"%1\" in the folder \"%2\"")
                            .arg(name, folder);
    return picture;
}

}  // namespace tool
