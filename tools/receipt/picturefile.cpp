#include "picturefile.h"

#include <QFileInfo>

#include "outputfile.h"
#include "progressline.h"
#include "support.h"

namespace tool {

namespace {

constexpr PictureForm pictureForms[] = {
    {"png", receiptpreview::writePng},
    {"pdf", receiptpreview::writePdf},
    {"svg", receiptpreview::writeSvg},
};

}  // namespace

const PictureForm *pictureForm(const QString &name)
{
    for (const PictureForm &form : pictureForms) {
        if (name == QLatin1String(form.suffix))
            return &form;
    }
    return nullptr;
}

const PictureForm *pictureFormOf(const QString &fileName)
{
    return pictureForm(QFileInfo(fileName).suffix().toLower());
}

bool writePicture(const PictureForm &form, const receiptpreview::Layout &layout,
                  const receiptpreview::Typeface &typeface, int scale, const QString &fileName)
{
    ProgressLine line(QStringLiteral("drawing"));
    const auto progress = [&line](int done, int all) { line.show(done, all); };
    return writeFile(fileName, [&](QIODevice &device, QString *error) {
        return form.write(layout, typeface, scale, device, progress, error);
    });
}

std::optional<receiptpreview::Typeface> loadedTypeface()
{
    receiptpreview::Typeface typeface;
    QString error;
    if (typeface.load(receiptpreview::Typeface::defaultFolder(), &error))
        return typeface;
    complain(error);
    return std::nullopt;
}

QCommandLineOption scaleOption()
{
    return {QStringLiteral("scale"),
            QStringLiteral("Pixels per dot of a PNG; times the real size of a PDF or SVG; a whole "
                           "number from 1 to %1; default: 1.")
                .arg(receiptpreview::greatestScale),
            QStringLiteral("N"), QStringLiteral("1")};
}

std::optional<int> scaleOf(const QCommandLineParser &parser)
{
    return numberOf(parser, scaleOption(), 1, receiptpreview::greatestScale);
}

}  // namespace tool
