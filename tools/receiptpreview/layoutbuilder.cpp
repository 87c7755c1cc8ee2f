#include "layoutbuilder.h"

#include <QTextCodec>

#include "printerdocs/echarformat.h"

namespace receiptpreview {

namespace {

// Every document made by the library carries this bit on its own ticket.
constexpr int cutAction = TicketActionEveryDocument;

constexpr int barcodeQuietModules = 10;
constexpr int barcodeHeight = 80;  // 10 mm
constexpr int barcodeFeed = 8;
constexpr int barcodeModules[] = {3, 2};  // dots, the larger first; a single dot isn't readable
constexpr int qrQuietModules = 4;
constexpr int qrModules[] = {6, 5, 4, 3, 2};

constexpr int frameEdge = 8;
constexpr int maximumFaultText = 1000;

constexpr int rowAlignmentOfPictures = 32;
constexpr int rowAlignmentOfBytes = 8;

int rowBytes(int width, int alignmentBits)
{
    return alignmentBits / 8 * ((width + alignmentBits - 1) / alignmentBits);
}

/// An image doesn't say how its rows are aligned; pictures of BBCode have rows of whole 32 bits,
/// and what has too few bytes for that is aligned to bytes.
int alignmentOf(const MonochromeImage &image)
{
    const qint64 needed = qint64(rowBytes(image.width(), rowAlignmentOfPictures)) * image.height();
    return image.image().size() >= needed ? rowAlignmentOfPictures : rowAlignmentOfBytes;
}

/// The largest module, in dots, with which a code of this width fits: its bars the printed line,
/// and with its quiet zones the paper. 0: none.
template <std::size_t count>
int moduleThatFits(const int (&choices)[count], int modules, int quiet, const Paper &paper)
{
    for (const int dots : choices) {
        if (modules * dots <= paper.printableWidth() &&
            (modules + 2 * quiet) * dots <= paper.width())
            return dots;
    }
    return 0;
}

}  // namespace

LayoutBuilder::LayoutBuilder(Layout &layout, const TextPrinterDocument &document)
    : m_layout(layout), m_document(document), m_codePage(layout.m_paper.codePage())
{
    static_cast<QMultiMap<signed char, MonochromeImage> &>(m_symbols) = document.charImages();
}

void LayoutBuilder::build()
{
    if ((m_document.prevTicketAction() & cutAction) != 0)
        addCut();
    m_layout.feed(Layout::endMargin);
    const QList<DocumentBlock> blocks = m_document.blocks();
    for (const DocumentBlock &block : blocks) {
        ++m_block;
        addBlock(block);
        if (m_layout.m_tooLong)
            return;
    }
    warnOfUnprintable();
    if ((m_document.currentTicketAction() & cutAction) != 0)
        addCut();
    m_layout.feed(Layout::endMargin);
}

void LayoutBuilder::addBlock(const DocumentBlock &block)
{
    if (block.isText())
        addText(block);
    else if (block.isImage())
        addPicture(block);
    else if (block.isBarcode())
        addBarcode(block);
    else if (block.isQrCode())
        addQrCode(block);
}

void LayoutBuilder::addPicture(const DocumentBlock &block)
{
    const MonochromeImage image = block.img();
    const PrinterInfo &model = m_layout.m_paper.model();
    if (!model.customImages()) {
        warn(QStringLiteral("the picture is left out: the model prints none"));
        return;
    }
    const int line = m_layout.m_paper.printableWidth();
    if (image.width() > line)
        warn(QStringLiteral("the picture is %1 dots wide; what is right of the line's %2 is lost")
                 .arg(image.width())
                 .arg(line));
    Raster raster;
    raster.image = image;
    raster.alignmentBits = alignmentOf(image);
    raster.left = leftOf(qMin(image.width(), line), block.alignment());
    addRaster(raster);
}

void LayoutBuilder::addBarcode(const DocumentBlock &block)
{
    const Code code = encodeBarcode(block.barcode(), block.barCodeType());
    CodeLook look;
    look.name = QStringLiteral("Barcode");
    look.quietModules = barcodeQuietModules;
    const int dots =
        moduleThatFits(barcodeModules, code.modules.width(), look.quietModules, m_layout.m_paper);
    look.module = QSize(dots, barcodeHeight);
    look.feed = barcodeFeed;
    addCode(code, look, block.barcode(), block.alignment());
}

void LayoutBuilder::addQrCode(const DocumentBlock &block)
{
    const Code code = encodeQrCode(block.qrCode());
    CodeLook look;
    look.name = QStringLiteral("QR code");
    look.quietModules = qrQuietModules;
    const int dots =
        moduleThatFits(qrModules, code.modules.width(), look.quietModules, m_layout.m_paper);
    look.module = QSize(dots, dots);
    look.feed = qrQuietModules * dots;
    addCode(code, look, block.qrCode(), block.alignment());
}

void LayoutBuilder::addCode(const Code &code, const CodeLook &look, const QByteArray &payload,
                            ETextAlignment alignment)
{
    const int dots = look.module.width();
    if (!code.fault.isEmpty() || dots == 0) {
        const QString tooWide = QStringLiteral("It doesn't fit the paper");
        addFault(look.name, code.fault.isEmpty() ? tooWide : code.fault, payload);
        return;
    }
    const int modules = code.modules.width();
    const int width =
        qMin((modules + 2 * look.quietModules) * dots, m_layout.m_paper.printableWidth());
    Raster raster;
    raster.image = code.modules;
    raster.left = leftOf(width, alignment) + (width - modules * dots) / 2;
    raster.dotsPerPixel = look.module;
    m_layout.feed(look.feed);
    addRaster(raster);
    m_layout.feed(look.feed);
}

void LayoutBuilder::addRaster(const Raster &raster)
{
    const qint64 height = qint64(raster.image.height()) * raster.dotsPerPixel.height();
    m_layout.m_rasters.push_back(raster);
    Row &row = addRow(Row::Image, static_cast<int>(qMin<qint64>(height, Layout::longestPaper)));
    row.firstRaster = static_cast<int>(m_layout.m_rasters.size()) - 1;
    row.rasterCount = 1;
}

void LayoutBuilder::addCut()
{
    m_layout.feed(Layout::endMargin);
    addRow(Row::Cut, Layout::cutHeight);
}

/// A box that says in plain text what couldn't be printed.
void LayoutBuilder::addFault(const QString &what, const QString &fault, const QByteArray &payload)
{
    const QString text = QStringLiteral("%1: %2").arg(what, fault);
    warn(text);
    m_isFramed = true;
    m_indent = frameEdge;
    addRow(Row::FrameTop, frameEdge);
    for (const QString &line : {text, QString::fromUtf8(payload.left(maximumFaultText))})
        addLine({QString(line).replace(QLatin1Char('\n'), QLatin1Char(' ')), QByteArray(),
                 QByteArray(), AlignLeft, 0});
    addRow(Row::FrameBottom, frameEdge);
    m_isFramed = false;
    m_indent = 0;
}

Row &LayoutBuilder::addRow(Row::Kind kind, int height)
{
    Row &row = m_layout.addRow(kind, height);
    row.framed = m_isFramed;
    return row;
}

/// Where something of a width goes, from the paper's left edge.
int LayoutBuilder::leftOf(int width, ETextAlignment alignment) const
{
    const int room = m_layout.m_paper.printableWidth() - width;
    const int margin = m_layout.m_paper.leftMargin();
    if (alignment == AlignRight)
        return margin + room;
    return alignment == AlignCenter ? margin + room / 2 : margin;
}

void LayoutBuilder::warn(const QString &warning)
{
    m_layout.m_warnings.append(QStringLiteral("block %1: %2").arg(m_block).arg(warning));
}

}  // namespace receiptpreview
