#include "lintpaper.h"

#include <printerslib/drivers/printlayout.h>
#include <printerslib/drivers/symbologydrawer.h>

#include "printerdocs/echarformat.h"
#include "printoptions.h"
#include "words.h"

namespace tool {

namespace {

using printerslib::drivers::PrintFont;
using printerslib::drivers::PrintTarget;
using printerslib::drivers::RasterCommand;
using printerslib::drivers::SymbologyDrawer;
using templatelint::CodeKind;

}  // namespace

templatelint::Paper lintPaperOf(const ChosenPaper &chosen)
{
    const PrintTarget target = targetOf(*chosen.model, chosen);
    const bool takesDots = target.profile().rasterCommand() != RasterCommand::None;
    const QList<FontInfo> types = target.record().fontTypes();
    QVector<templatelint::PaperFont> fonts;
    for (int number = 0; number < types.size(); ++number) {
        const PrintFont &font = target.font(static_cast<unsigned char>(number));
        const FontInfo &type = types.at(number == 0 ? chosen.font : number);
        const QSize dots(font.cell.width() / font.widthScale,
                         font.cell.height() / font.heightScale);
        fonts.append({font.cell, takesDots ? dots : font.ownCharacter, type.idAsString()});
    }
    return {target.lineDots(), fonts,
            templatelint::Words::tr("%1 with %2 paper")
                .arg(chosen.model->id(), target.paper().caption()),
            (target.printedFormats() & CharDoubleWidth) != 0};
}

QString drawingFaultOf(CodeKind kind, const QByteArray &payload)
{
    static const SymbologyDrawer drawer;
    printerslib::drivers::Paper::Code code;
    using Symbology = printerslib::drivers::Paper::Symbology;
    code.symbology = kind == CodeKind::Barcode ? Symbology::Code128 : Symbology::QrCode;
    code.payload = payload;
    drawer.draw(code);
    return code.fault;
}

QString codeFaultOf(CodeKind kind, const QByteArray &payload, const PrintTarget &target)
{
    static const SymbologyDrawer drawer;
    DocumentBlock block;
    if (kind == CodeKind::Barcode)
        block.setBarCode(payload, DocumentBlock::BarcodeBbCode);
    else
        block.setQrCode(payload);
    TextPrinterDocument document;
    document.setBlocks({block});
    const auto layout = printerslib::drivers::PrintLayout::of(document, target, {}, drawer);
    return layout.faults.isEmpty() ? QString() : layout.faults.constFirst().cause;
}

}  // namespace tool
