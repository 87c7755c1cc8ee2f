#pragma once

#include <QHash>
#include <QSharedData>

#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

struct PrinterProfile::Data : QSharedData
{
    QString modelId;
    Dialect dialect = Dialect::EscPos;
    Vendor vendor = Vendor::General;
    int headDots = 0;
    int dotsPerInch = 0;
    QSize motionUnits;
    int lineSpacingUnits = 0;
    int lineSpacing = 0;
    QVector<QSize> fonts;
    int initialFont = 0;
    QMap<int, QString> codePages;
    int initialCodePage = 0;
    QString kanjiSet;
    int dotsToCutter = 0;
    QString catalogueId;
    RasterCommand rasterCommand = RasterCommand::RasterBlock;
    int ownCharacters = 0;
    QMap<Paper::Symbology, int> drawnCodes;
    int leastModule = 2;
    int mostModule = 6;
    CutCommand cutCommand = CutCommand::GsV;
    Presenter presenter = Presenter::None;
    int presenterTimerStep = 0;
    int drawers = 2;
    int bufferBytes = 0;
    Handshake handshake = Handshake::None;
    Confirmation confirmation = Confirmation::None;
    bool switchesRealTime = false;
    bool keepsMacro = false;
    QString note;
    QHash<QString, QString> sources;
};

}  // namespace printerslib::drivers
