#include "printerslib/drivers/printlayout.h"

#include "encoder/codesetter_p.h"
#include "encoder/layoutsheet_p.h"
#include "encoder/pagetable_p.h"
#include "encoder/picturesetter_p.h"
#include "encoder/rasterroom_p.h"
#include "encoder/textsetter_p.h"
#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

/// The document's blocks, one below the other.
class BlockSetter
{
public:
    BlockSetter(LayoutSheet &sheet, const TextPrinterDocument &document,
                const PrintOptions &options, const CodeDrawer &codes)
        : m_sheet(sheet), m_text(sheet, document, options), m_codes(sheet, codes)
    {}

    void add(const DocumentBlock &block)
    {
        if (block.isText())
            m_text.add(block);
        else if (block.isImage())
            addPicture(m_sheet, block);
        else if (block.isBarcode())
            m_codes.addBarcode(block);
        else if (block.isQrCode())
            m_codes.addQrCode(block);
        else
            noteInvalid(block);
    }

private:
    /// A block that has nothing in it is none.
    void noteInvalid(const DocumentBlock &block)
    {
        QString reason;
        if (block.type() == DocumentBlock::BlockText)
            reason = block.text().isEmpty()
                         ? QString()
                         : QStringLiteral("formats, fonts and spacings don't go with its lines");
        else if (block.type() == DocumentBlock::BlockImage)
            reason = QStringLiteral("its picture isn't whole");
        else if (block.type() == DocumentBlock::BlockBarcode && !block.text().isEmpty())
            reason = QStringLiteral("its symbology isn't set");
        else if (block.type() == DocumentBlock::BlockBarcode ||
                 block.type() == DocumentBlock::BlockQrCode)
            reason = QStringLiteral("it has no payload");
        else
            reason = QStringLiteral("its type %1 isn't known").arg(block.type());
        if (!reason.isEmpty())
            m_sheet.notes().add(QStringLiteral("the block isn't printed: %1").arg(reason));
    }

    LayoutSheet &m_sheet;
    TextSetter m_text;
    CodeSetter m_codes;
};

QString namesOf(const QMap<int, QString> &pages)
{
    QStringList names;
    for (auto it = pages.begin(); it != pages.end(); ++it)
        names.append(QStringLiteral("%1 (%2)").arg(it.key()).arg(*it));
    return names.join(QLatin1String(", "));
}

void setFirstPage(LayoutSheet &sheet, const PrintOptions &options)
{
    PrintLayout &layout = sheet.layout();
    const PrinterProfile &profile = sheet.profile();
    layout.firstPage = PageTable::firstPage(profile, options.codePage, options.codec);
    if (layout.firstPage >= 0)
        return;
    layout.firstPage = profile.initialCodePage();
    if (options.codePage != 0)
        layout.error = QStringLiteral("the model has no code page %1, but %2")
                           .arg(options.codePage)
                           .arg(namesOf(profile.codePages()));
    else
        sheet.notes().add(QStringLiteral("the model has no code page \"%1\"").arg(options.codec),
                          false);
}

void noteOptions(LayoutSheet &sheet, const TextPrinterDocument &document,
                 const PrintOptions &options)
{
    const int symbols = sheet.target().symbolsPerLine();
    if (document.symbolsPerLine() > symbols)
        sheet.notes().add(
            QStringLiteral("the document is for lines of %1 symbols, and %2 fit the paper")
                .arg(document.symbolsPerLine())
                .arg(symbols),
            false);
    if (options.isPicture && !sheet.hasRaster())
        sheet.notes().add(QStringLiteral("the model prints no text as dots"));
}

/// Room for all characters, so that cells are seldom moved.
void reserve(PrintLayout &layout, const QList<DocumentBlock> &blocks)
{
    constexpr size_t most = 1 << 16;
    size_t characters = 0;
    for (const DocumentBlock &block : blocks)
        characters += static_cast<size_t>(block.symbolsCount());
    layout.cells.reserve(std::min(most, characters + characters / 4));
    layout.rows.reserve(std::min(most, characters / 32 + 2 * static_cast<size_t>(blocks.size())));
}

}  // namespace

QString PrintNote::toString() const
{
    if (block == 0)
        return text;
    const QString place = line == 0 ? QStringLiteral("block %1").arg(block)
                                    : QStringLiteral("block %1, line %2").arg(block).arg(line);
    return QStringLiteral("%1: %2").arg(place, text);
}

PrintLayout PrintLayout::of(const TextPrinterDocument &document, const PrintTarget &target,
                            const PrintOptions &options, const CodeDrawer &codes)
{
    PrintLayout layout(target);
    LayoutSheet sheet(layout);
    noteOptions(sheet, document, options);
    setFirstPage(sheet, options);
    const QList<DocumentBlock> blocks = document.blocks();
    reserve(layout, blocks);
    BlockSetter setter(sheet, document, options, codes);
    for (int i = 0; i < blocks.size() && !sheet.isFull(); ++i) {
        sheet.beginBlock(i + 1);
        setter.add(blocks.at(i));
    }
    layout.notes = sheet.notes().notes();
    rasterroom::make(layout);
    return layout;
}

QSize PrintLayout::sizeOf(const Cell &cell) const
{
    const QSize size = target.font(cell.font).cell;
    return {size.width() * ((cell.format & CharDoubleWidth) != 0 ? 2 : 1),
            size.height() * ((cell.format & CharDoubleHeight) != 0 ? 2 : 1)};
}

}  // namespace printerslib::drivers
