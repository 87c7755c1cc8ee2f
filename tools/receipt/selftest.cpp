#include "selftest.h"

#include <QJsonObject>
#include <algorithm>

#include "dotpicture.h"
#include "printerdocs/echarformat.h"

namespace tool {

using printerslib::drivers::DocumentEncoder;
using printerslib::drivers::EncodedDocument;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrintNote;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;

namespace {

constexpr int firstHighByte = 0x80;
constexpr int bytesOfSet = 0x100;
// Cut, and handed out where something does that.
const QFlags<EPrinterTicketAction> endAction =
    TicketActionEveryDocument | TicketActionBbCodeDocument;

DocumentBlock blockOf(const QStringList &lines, int format = 0)
{
    return DocumentBlock::createSimpleBlock(lines, AlignLeft, 0, static_cast<unsigned char>(format),
                                            0, 0);
}

TextPrinterDocument documentOf(const QList<DocumentBlock> &blocks,
                               QFlags<EPrinterTicketAction> action = {})
{
    TextPrinterDocument document;
    document.setBlocks(blocks);
    document.setCurrentTicketAction(action);
    return document;
}

/// What is sent for a code's sample.
struct SampleRow
{
    const char *name;
    int number;  ///< of barcode blocks; 0: a QR code
    const char *payload;
};

constexpr SampleRow sampleRows[] = {
    {"upcA", 65, "036000291452"},
    {"upcE", 66, "012345000065"},
    {"ean13", 67, "4006381333931"},
    {"ean8", 68, "73513537"},
    {"code39", 69, "CODE39"},
    {"itf", 70, "123456"},
    {"codabar", 71, "A1234A"},
    {"code93", 72, "CODE93"},
    {"code128", 73, "Code 128"},
    {"gs1_128", 74, "(01)04006381333931"},
    {"gs1DataBar", 75, "0400638133393"},
    {"qrCode", 0, "SELF TEST"},
};

DocumentBlock sampleOf(const QString &code)
{
    const auto *const row =
        std::find_if(std::begin(sampleRows), std::end(sampleRows),
                     [&code](const SampleRow &r) { return code == QLatin1String(r.name); });
    DocumentBlock block;
    if (row == std::end(sampleRows))
        return block;
    if (row->number == 0)
        block.setQrCode(row->payload);
    else
        block.setBarCode(row->payload, DocumentBlock::EBarcodeType(row->number));
    block.setType(row->number == 0 ? DocumentBlock::BlockQrCode : DocumentBlock::BlockBarcode);
    return block;
}

/// Ticks from the left edge; a number ends at its tick, which is the dot of that number.
DotPicture rulerOf(int dots)
{
    constexpr int tick = 8;
    constexpr int middleTick = 16;
    constexpr int longTick = 24;
    constexpr int height = longTick + DotPicture::digitHeight;
    DotPicture picture(dots, height);
    picture.fill(0, 0, dots, 2);
    for (int at = SelfTestPlan::step; at <= dots; at += SelfTestPlan::step) {
        const bool hasNumber = at % SelfTestPlan::numberStep == 0;
        const bool isMiddle = at % (SelfTestPlan::numberStep / 2) == 0;
        picture.fill(at - 1, 0, 1, hasNumber ? longTick : isMiddle ? middleTick : tick);
        if (hasNumber)
            picture.writeNumber(at - DotPicture::widthOf(at), longTick, at);
    }
    return picture;
}

/// Rungs that are numbered by their dots from the lower edge, where the head is when it is printed.
DotPicture ladderOf(int dots)
{
    constexpr int rung = 48;
    constexpr int longRung = 96;
    constexpr int width = longRung + 48;
    DotPicture picture(width, dots);
    picture.fill(0, 0, 2, dots);
    for (int at = SelfTestPlan::step; at <= dots; at += SelfTestPlan::step) {
        const bool hasNumber = at % SelfTestPlan::numberStep == 0;
        picture.fill(0, dots - at, hasNumber ? longRung : rung, 1);
        if (hasNumber)
            picture.writeNumber(longRung + 8, dots - at, at);
    }
    return picture;
}

/// Squares, bars and grey: bytes that no printer obeys, if it prints a picture as text.
DotPicture patternOf(int dots)
{
    constexpr int square = 24;
    constexpr int rows = 4;
    constexpr char white = 0;
    constexpr auto black = static_cast<char>(0xFF);
    constexpr auto grey = static_cast<char>(0xAA);
    constexpr char otherGrey = 0x55;
    const int width = dots / square * square;
    DotPicture picture(width, rows * square);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < width / square; ++column) {
            const bool isDark = (row + column) % 2 == 0;
            const bool isGrey = row >= rows / 2;
            const char byte = isDark ? (isGrey ? grey : black) : white;
            picture.fillBytes(column * square, row * square, square, square, byte,
                              isDark && isGrey ? otherGrey : byte);
        }
    }
    return picture;
}

/// "........10........20", of which each number ends at its place.
QString rowOfDigits(int count)
{
    QString text;
    for (int ten = 10; ten <= count; ten += 10)
        text += QString::number(ten).rightJustified(10, QLatin1Char('.'));
    return text;
}

/// Puts the sections behind each other.
class Composer
{
public:
    explicit Composer(const SelfTestPlan &plan) : m_plan(plan) {}

    EncodedDocument compose();

private:
    void add(const TextPrinterDocument &document, const PrintTarget &target,
             const PrintOptions &options = {});
    void addText(const QStringList &lines) { add(documentOf({blockOf(lines)}), m_plan.target); }
    void dropEndMark();
    void addHead();
    void addRuler();
    void addFonts();
    void addFormats();
    void addPages();
    void addPictures();
    void addCodes();
    void addDrawers();
    void addLadder();
    void addCuts();

    const SelfTestPlan &m_plan;
    EncodedDocument m_all;
    int m_sections = 0;
};

void Composer::add(const TextPrinterDocument &document, const PrintTarget &target,
                   const PrintOptions &options)
{
    const EncodedDocument section = DocumentEncoder(target, options).encode(document);
    ++m_sections;
    if (!section.error.isEmpty() && m_all.error.isEmpty())
        m_all.error = QStringLiteral("section %1: %2").arg(m_sections).arg(section.error);
    // The end of the section before is the beginning of this one.
    dropEndMark();
    int line = 0;
    for (EncodedDocument::Mark mark : section.marks) {
        mark.offset += m_all.bytes.size();
        mark.block = m_sections;
        mark.line = ++line;
        m_all.marks.append(mark);
    }
    for (PrintNote note : section.notes) {
        note.block = m_sections;
        m_all.notes.append(note);
    }
    m_all.bytes += section.bytes;
    m_all.pieces += section.pieces;
}

/// A place in which nothing was sent.
void Composer::dropEndMark()
{
    if (!m_all.marks.isEmpty() && m_all.marks.constLast().offset == m_all.bytes.size())
        m_all.marks.removeLast();
}

void Composer::addHead()
{
    addText({QStringLiteral("SELF TEST"), m_plan.profile().modelId(),
             QStringLiteral("%1 dots at %2 dpi")
                 .arg(m_plan.profile().headDots())
                 .arg(m_plan.profile().dotsPerInch()),
             QString()});
}

void Composer::addRuler()
{
    if (m_plan.hasRuler)
        add(documentOf({blockOf({QStringLiteral("Ruler, in dots")}),
                        rulerOf(m_plan.rulerDots()).toBlock()}),
            m_plan.with({}, m_plan.rulerDots()));
    if (!m_plan.hasRow)
        return;
    addText({QString(), QStringLiteral("Characters of a line")});
    const int count = m_plan.charactersOfRow();
    constexpr int mostHeadDots = 4096;
    const int dots = std::min(count * m_plan.target.font(0).cell.width(), mostHeadDots);
    add(documentOf({blockOf({rowOfDigits(count), QString()})}),
        m_plan.with({{QStringLiteral("headDots"), dots}}, dots));
}

void Composer::addFonts()
{
    for (const int font : m_plan.fonts) {
        const QSize cell = m_plan.profile().fontCells().at(font);
        const QString text =
            QStringLiteral("Font %1, %2 x %3").arg(font).arg(cell.width()).arg(cell.height());
        add(documentOf({blockOf({text, QStringLiteral("ABCDEFGabcdefg0123456789"), QString()})}),
            m_plan.with({{QStringLiteral("initialFont"), font}}));
    }
}

void Composer::addFormats()
{
    static const std::pair<int, const char *> formats[] = {
        {CharBold, "bold"},     {CharItalic, "italic"},    {CharUnderline, "underlined"},
        {CharMarkZ, "inverse"}, {CharDoubleWidth, "wide"}, {CharDoubleHeight, "high"},
    };
    if (!m_plan.hasFormats)
        return;
    QList<DocumentBlock> blocks = {blockOf({QStringLiteral("plain")})};
    for (const auto &[format, name] : formats) {
        if ((m_plan.target.printedFormats() & format) != 0)
            blocks.append(blockOf({QLatin1String(name)}, format));
    }
    blocks.append(blockOf({QString()}));
    add(documentOf(blocks), m_plan.target);
}

void Composer::addPages()
{
    constexpr int usualRow = 32;
    const int row = m_plan.target.symbolsPerLine() < usualRow ? usualRow / 2 : usualRow;
    QStringList rows;
    for (int byte = firstHighByte; byte < bytesOfSet; byte += row) {
        QString text;
        for (int i = byte; i < byte + row; ++i)
            text += QChar(i);
        rows.append(text);
    }
    for (auto page = m_plan.pages.begin(); page != m_plan.pages.end(); ++page) {
        QJsonObject pages = m_plan.fact(QStringLiteral("codePages")).toObject();
        const QString number = QString::number(page.key());
        // A set that leaves no byte free: they are sent as they are, and judged on the paper.
        pages.insert(number, QStringLiteral("CP437"));
        add(documentOf({blockOf({QStringLiteral("Code page %1 %2").arg(number, *page).trimmed()}),
                        blockOf(rows, CharRawCode)}),
            m_plan.with({{QStringLiteral("codePages"), pages},
                         {QStringLiteral("initialCodePage"), page.key()},
                         {QStringLiteral("kanjiSet"), QString()}}));
    }
}

void Composer::addPictures()
{
    for (const QString &raster : m_plan.rasters)
        add(documentOf({blockOf({QString(), QStringLiteral("Picture by ") + raster}),
                        patternOf(m_plan.target.lineDots()).toBlock()}),
            m_plan.with({{QStringLiteral("rasterCommand"), raster}}));
}

void Composer::addCodes()
{
    const QString key = QStringLiteral("drawnCodes");
    for (const QString &code : m_plan.codes) {
        const QJsonObject drawn{{code, m_plan.drawnCode(code)}};
        add(documentOf(
                {blockOf({QString(), code + QStringLiteral(" by the printer")}), sampleOf(code)}),
            m_plan.with({{key, drawn}}));
        if (m_plan.hasDrawings)
            add(documentOf({blockOf({code + QStringLiteral(" as a picture")}), sampleOf(code)}),
                m_plan.with({{key, QJsonObject()}}));
    }
}

void Composer::addDrawers()
{
    constexpr int most = 2;
    for (const int pin : m_plan.pins) {
        PrintOptions options;
        options.drawer = PrintOptions::Drawer::After;
        options.drawerPin = pin;
        add(documentOf({blockOf({QString(), QStringLiteral("Drawer at pin %1").arg(pin)})}),
            m_plan.with({{QStringLiteral("drawers"), most}}), options);
    }
}

/// Cut where it is, without a feed: the cutter stands somewhere in it.
void Composer::addLadder()
{
    if (!m_plan.hasLadder)
        return;
    add(documentOf({blockOf({QString(), QStringLiteral("Dots to the cutter"), QString()}),
                    ladderOf(m_plan.ladderDots()).toBlock()},
                   endAction),
        m_plan.with({{QStringLiteral("dotsToCutter"), 0}}));
}

void Composer::addCuts()
{
    for (const QString &cut : m_plan.cuts)
        add(documentOf({blockOf({QString(), QStringLiteral("Cut by ") + cut})}, endAction),
            m_plan.with({{QStringLiteral("cutCommand"), cut}}));
    if (!m_plan.cuts.isEmpty())
        return;
    // So that all of it is to be seen, and comes out.
    PrintOptions options;
    options.emptyLinesAtEnd = 4;
    add(documentOf({blockOf({QString(), QStringLiteral("END")})}, endAction), m_plan.target,
        options);
}

EncodedDocument Composer::compose()
{
    addHead();
    addRuler();
    addFonts();
    addFormats();
    addPages();
    addPictures();
    addCodes();
    addDrawers();
    addLadder();
    addCuts();
    dropEndMark();
    if (!m_all.error.isEmpty())
        m_all.bytes.clear();
    return m_all;
}

}  // namespace

EncodedDocument selfTestOf(const SelfTestPlan &plan)
{
    return Composer(plan).compose();
}

}  // namespace tool
