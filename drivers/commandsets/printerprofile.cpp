#include "commandsets/printerprofile_p.h"

#include <QFile>

#include "commandsets/modelsfile_p.h"

namespace printerslib::drivers {

namespace {

/// The models that are compiled in. They are read at their first use.
const ModelsFile &shippedModels()
{
    static const ModelsFile models = [] {
        QFile file(QStringLiteral(":/printerslib/drivers/models.info"));
        file.open(QIODevice::ReadOnly);
        return ModelsFile(file.readAll(), file.fileName());
    }();
    return models;
}

}  // namespace

QStringList PrinterProfile::modelIds()
{
    return shippedModels().modelIds();
}

std::optional<PrinterProfile> PrinterProfile::forModel(const QString &modelId)
{
    return shippedModels().profile(modelId);
}

PrinterProfile::PrinterProfile()
{
    // The file itself is read with profiles that begin empty; see ModelsFile.
    if (const auto general = forModel(QStringLiteral("GENERAL_EPSON_PROTOCOL")))
        d = general->d;
}

PrinterProfile::PrinterProfile(Data *data) : d(data) {}
PrinterProfile::PrinterProfile(const PrinterProfile &other) = default;
PrinterProfile &PrinterProfile::operator=(const PrinterProfile &other) = default;
PrinterProfile::~PrinterProfile() = default;

QString PrinterProfile::modelId() const
{
    return d->modelId;
}

Dialect PrinterProfile::dialect() const
{
    return d->dialect;
}

Vendor PrinterProfile::vendor() const
{
    return d->vendor;
}

int PrinterProfile::headDots() const
{
    return d->headDots;
}

int PrinterProfile::dotsPerInch() const
{
    return d->dotsPerInch;
}

QSize PrinterProfile::motionUnitsPerInch() const
{
    return d->motionUnits;
}

int PrinterProfile::lineSpacingUnitsPerInch() const
{
    return d->lineSpacingUnits;
}

int PrinterProfile::lineSpacing() const
{
    return d->lineSpacing;
}

QVector<QSize> PrinterProfile::fontCells() const
{
    return d->fonts;
}

int PrinterProfile::initialFont() const
{
    return d->initialFont;
}

QMap<int, QString> PrinterProfile::codePages() const
{
    return d->codePages;
}

int PrinterProfile::initialCodePage() const
{
    return d->initialCodePage;
}

QString PrinterProfile::kanjiSet() const
{
    return d->kanjiSet;
}

int PrinterProfile::dotsToCutter() const
{
    return d->cutCommand == CutCommand::None ? 0 : d->dotsToCutter;
}

QString PrinterProfile::catalogueId() const
{
    return d->catalogueId.isEmpty() ? d->modelId : d->catalogueId;
}

RasterCommand PrinterProfile::rasterCommand() const
{
    return d->rasterCommand;
}

int PrinterProfile::ownCharacters() const
{
    return d->ownCharacters;
}

QMap<Paper::Symbology, int> PrinterProfile::drawnCodes() const
{
    return d->drawnCodes;
}

int PrinterProfile::leastModule() const
{
    return d->leastModule;
}

int PrinterProfile::mostModule() const
{
    return d->mostModule;
}

CutCommand PrinterProfile::cutCommand() const
{
    return d->cutCommand;
}

Presenter PrinterProfile::presenter() const
{
    return d->presenter;
}

int PrinterProfile::presenterTimerStep() const
{
    return d->presenterTimerStep;
}

int PrinterProfile::drawers() const
{
    return d->drawers;
}

int PrinterProfile::bufferBytes() const
{
    return d->bufferBytes;
}

Handshake PrinterProfile::handshake() const
{
    return d->handshake;
}

Confirmation PrinterProfile::confirmation() const
{
    return d->confirmation;
}

bool PrinterProfile::switchesRealTime() const
{
    return d->switchesRealTime;
}

bool PrinterProfile::keepsMacro() const
{
    return d->keepsMacro;
}

QJsonObject PrinterProfile::toJson() const
{
    return ModelsFile::recordOf(*this);
}

QString PrinterProfile::sourceOf(const QString &fact) const
{
    return d->sources.value(fact);
}

QString PrinterProfile::note() const
{
    return d->note;
}

}  // namespace printerslib::drivers
