#include "printerdocs/bbcodeparser.h"

#include <QDebug>
#include <algorithm>
#include <iterator>
#include <utility>

#include "printerdocs/bbcode/bbcodeimage_p.h"
#include "printerdocs/bbcode/bbcodeparser_p.h"
#include "printerdocs/bbcode/bbcodetext_p.h"
#include "printerdocs/echarformat.h"

struct BbCodeParser::Tag
{
    const char *name;
    void (BbCodeParser::*open)();  ///< null: warns as of an unknown tag
    void (BbCodeParser::*close)();
};

struct BbCodeParser::Parameter
{
    const char *key;
    void (BbCodeParser::*apply)(const QString &value);
};

// Intended: opening `size` does nothing and logs the warning of an unknown tag, as its parameter
// does the work; support reads those lines (test openingSizeLogsAWarning).
const BbCodeParser::Tag BbCodeParser::_tags[] = {
    {"center", &BbCodeParser::openCenter, &BbCodeParser::closeAlignment},
    {"left", &BbCodeParser::openLeft, &BbCodeParser::closeAlignment},
    {"right", &BbCodeParser::openRight, &BbCodeParser::closeAlignment},
    {"b", &BbCodeParser::openBold, &BbCodeParser::closeBold},
    {"i", &BbCodeParser::openItalic, &BbCodeParser::closeItalic},
    {"u", &BbCodeParser::openUnderline, &BbCodeParser::closeUnderline},
    {"size", nullptr, &BbCodeParser::closeSize},
    {"hr", &BbCodeParser::openHr, &BbCodeParser::closeHr},
    {"img", &BbCodeParser::openImg, &BbCodeParser::closeImg},
    {"column", &BbCodeParser::openColumn, &BbCodeParser::closeColumn},
    {"barcode", &BbCodeParser::openBarcode, &BbCodeParser::closeBarcode},
    {"qrcode", &BbCodeParser::openQrCode, &BbCodeParser::closeQrCode},
    {"field", &BbCodeParser::openField, &BbCodeParser::closeField},
};

const BbCodeParser::Parameter BbCodeParser::_parameters[] = {
    {"size", &BbCodeParser::setSize},         {"hr", &BbCodeParser::setHr},
    {"width", &BbCodeParser::setWidth},       {"align", &BbCodeParser::setAlign},
    {"zerofill", &BbCodeParser::setZerofill}, {"name", &BbCodeParser::loadImage},
};

namespace {

constexpr QLatin1Char usualLine('_');
constexpr unsigned char doubleSize = CharDoubleWidth | CharDoubleHeight;

/// An unsigned number cut to its low 8 bits; 0 for anything else.
quint8 readByte(const QString &value)
{
    return static_cast<quint8>(value.toUInt() & 0xFF);
}

ETextAlignment readAlignment(const QString &value)
{
    if (value == QLatin1String("center"))
        return AlignCenter;
    if (value == QLatin1String("right"))
        return AlignRight;
    return AlignLeft;
}

}  // namespace

BbCodeParser::BbCodeParser(QObject *parent) : QObject(parent) {}

BbCodeParser::~BbCodeParser() = default;

void BbCodeParser::TextReader::read(const QString &text)
{
    const auto *const begin = reinterpret_cast<Position>(text.utf16());
    const Position end = begin + text.size();
    bbcpp::Reader<Position, TextReader>(end, *this).readAll(begin);
    addPendingText();
}

void BbCodeParser::TextReader::text(const Piece &piece)
{
    m_pendingText.append(reinterpret_cast<const QChar *>(piece.begin),
                         static_cast<int>(piece.end - piece.begin));
}

void BbCodeParser::TextReader::open(const Piece &name)
{
    addPendingText();
    open(m_parser, lowerCased(name));
}

void BbCodeParser::TextReader::close(const Piece &name)
{
    addPendingText();
    close(m_parser, lowerCased(name));
}

void BbCodeParser::TextReader::parameters(const Piece &, const bbcpp::Pairs<Position> &pairs)
{
    addPendingText();
    bbcpp::Pairs<Position> sorted = pairs;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto &a, const auto &b) { return viewOf(a.key) < viewOf(b.key); });
    // The first of several pairs with one key counts.
    const auto end = std::unique(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) {
        return viewOf(a.key) == viewOf(b.key);
    });
    for (auto pair = sorted.begin(); pair != end; ++pair)
        apply(m_parser, lowerCased(pair->key), lowerCased(pair->value));
}

void BbCodeParser::TextReader::open(BbCodeParser &parser, const QString &name)
{
    const Tag *tag = findTag(name);
    if (tag == nullptr || tag->open == nullptr)
        qWarning() << "BBCode: unknown opening tag" << name;
    else
        (parser.*tag->open)();
}

void BbCodeParser::TextReader::close(BbCodeParser &parser, const QString &name)
{
    if (const Tag *tag = findTag(name))
        (parser.*tag->close)();
    else
        qWarning() << "BBCode: unknown closing tag" << name;
}

void BbCodeParser::TextReader::apply(BbCodeParser &parser, const QString &key, const QString &value)
{
    const auto *const end = std::end(_parameters);
    const auto *const found = std::find_if(
        std::begin(_parameters), end,
        [&key](const Parameter &parameter) { return key == QLatin1String(parameter.key); });
    if (found == end)
        qWarning() << "BBCode: unknown parameter" << key << value;
    else
        (parser.*found->apply)(value);
}

std::u16string_view BbCodeParser::TextReader::viewOf(const Piece &piece)
{
    return std::u16string_view(piece.begin, static_cast<std::size_t>(piece.end - piece.begin));
}

/// Names, keys and values have nothing but ASCII in them, and no blanks.
QString BbCodeParser::TextReader::lowerCased(const Piece &piece)
{
    QString text(static_cast<int>(piece.end - piece.begin), Qt::Uninitialized);
    std::transform(piece.begin, piece.end, text.begin(), [](char16_t c) {
        return c >= u'A' && c <= u'Z' ? QChar(c + (u'a' - u'A')) : QChar(c);
    });
    return text;
}

/// Pieces of text without a tag between them are one text.
void BbCodeParser::TextReader::addPendingText()
{
    if (m_pendingText.isEmpty())
        return;
    if (m_pendingText.front() == QChar(QChar::ByteOrderMark))
        m_pendingText.remove(0, 1);
    m_parser.addText(m_pendingText);
    m_pendingText.resize(0);
}

void BbCodeParser::parseText(QString text)
{
    m_blocks.clear();
    m_padding = 0;
    TextReader(*this).read(bbcodetext::withoutBrokenSurrogates(text));
    flush();
    m_alignment = AlignLeft;
}

QList<DocumentBlock> BbCodeParser::blocks() const
{
    return m_blocks;
}

TextPrinterDocument BbCodeParser::document() const
{
    TextPrinterDocument document;
    document.setBlocks(m_blocks);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(QFlag(5)));
    document.setDoInit(false);
    document.setLoopPolicy(QFlags<EPaperLoopFlag>(QFlag(0)));
    document.setPrevTicketAction(QFlags<EPrinterTicketAction>(QFlag(4)));
    return document;
}

unsigned char BbCodeParser::symbolsPerLine() const
{
    return m_symbolsPerLine;
}

void BbCodeParser::setSymbolsPerLine(const unsigned char &symbolsPerLine)
{
    m_symbolsPerLine = symbolsPerLine;
}

QString BbCodeParser::imagesPath() const
{
    return m_imagesPath;
}

void BbCodeParser::setImagesPath(const QString &imagesPath)
{
    m_imagesPath = imagesPath;
}

const BbCodeParser::Tag *BbCodeParser::findTag(const QString &name)
{
    const auto first = name.isEmpty() ? QLatin1Char('\0') : name.at(0);
    for (const Tag &tag : _tags) {
        if (first == QLatin1Char(*tag.name) && name == QLatin1String(tag.name))
            return &tag;
    }
    return nullptr;
}

void BbCodeParser::addText(const QString &content)
{
    const QString text = laidOut(bbcodetext::normalized(content));
    const int sizeBefore = m_text.size();
    if (m_text.isEmpty()) {
        const QStringView kept = bbcodetext::withoutLeadingLineEnd(text);
        m_text.append(kept.data(), static_cast<int>(kept.size()));
    } else if (bbcodetext::needsBlankBetween(m_text, text)) {
        m_text.append(QLatin1Char(' ')).append(text);
    } else {
        m_text += text;
    }
    const int added = m_text.size() - sizeBefore;
    m_fonts.append(added, static_cast<char>(m_font));
    m_formats.append(added, static_cast<char>(m_format));
}

/// Pads what stands in a field or in a column, or in both.
QString BbCodeParser::laidOut(const QString &text)
{
    QString result = m_field ? laidOutInField(text) : text;
    if (m_column && countPadding(bbcodetext::blanksToPadLines(result, m_column->width)))
        return bbcodetext::paddedLines(result, m_column->width, m_column->align);
    return result;
}

QString BbCodeParser::laidOutInField(const QString &text)
{
    QString result = text;
    if (m_field->zerofill != 0) {
        result = bbcodetext::zeroFilled(text, 1);
        const QString filled = bbcodetext::zeroFilled(text, m_field->zerofill);
        if (countPadding(filled.size() - result.size()))
            result = filled;
    }
    if (countPadding(bbcodetext::blanksToPad(result, m_field->width)))
        return bbcodetext::padded(result, m_field->width, m_field->align);
    return result;
}

/// Whether the text being parsed may have so many more characters of padding; if so, they count.
bool BbCodeParser::countPadding(qint64 characters)
{
    if (characters > bbcodetext::mostPadding - m_padding)
        return false;
    m_padding += characters;
    return true;
}

/// A text block of the gathered text, which is then gone.
DocumentBlock BbCodeParser::takeText()
{
    DocumentBlock block = DocumentBlock::createSimpleBlock(m_text, m_alignment, m_fonts, m_formats,
                                                           0, m_symbolsPerLine);
    m_text.clear();
    m_fonts.clear();
    m_formats.clear();
    return block;
}

DocumentBlock BbCodeParser::linesInPresentStyle(const QStringList &lines) const
{
    return DocumentBlock::createSimpleBlock(lines, m_alignment, m_font, m_format, 0,
                                            m_symbolsPerLine);
}

void BbCodeParser::flush()
{
    if (m_text.isEmpty())
        return;
    DocumentBlock block = takeText();
    block.setType(m_blockType);
    block.setBarCodeType(m_barcodeType);
    m_blocks.append(block);
}

void BbCodeParser::openCenter()
{
    m_alignment = AlignCenter;
}

void BbCodeParser::openLeft()
{
    m_alignment = AlignLeft;
}

void BbCodeParser::openRight()
{
    m_alignment = AlignRight;
}

void BbCodeParser::openBold()
{
    m_format |= CharBold;
}

void BbCodeParser::openItalic()
{
    m_format |= CharItalic;
}

void BbCodeParser::openUnderline()
{
    m_format |= CharUnderline;
}

void BbCodeParser::openHr()
{
    m_hr = std::make_unique<QChar>(usualLine);
}

void BbCodeParser::openImg()
{
    flush();
    m_image = std::make_unique<MonochromeImage>();
}

void BbCodeParser::openColumn()
{
    flush();
    m_column = std::make_unique<ColumnRecord>();
}

void BbCodeParser::openBarcode()
{
    flush();
    m_blockType = DocumentBlock::BlockBarcode;
    m_barcodeType = DocumentBlock::BarcodeBbCode;
}

void BbCodeParser::openQrCode()
{
    flush();
    m_blockType = DocumentBlock::BlockQrCode;
    m_barcodeType = DocumentBlock::BarcodeNone;
}

void BbCodeParser::openField()
{
    m_field = std::make_unique<FieldRecord>();
}

void BbCodeParser::closeAlignment()
{
    flush();
    m_alignment = AlignLeft;
}

void BbCodeParser::closeBold()
{
    m_format &= static_cast<unsigned char>(~CharBold);
}

void BbCodeParser::closeItalic()
{
    m_format &= static_cast<unsigned char>(~CharItalic);
}

void BbCodeParser::closeUnderline()
{
    m_format &= static_cast<unsigned char>(~CharUnderline);
}

void BbCodeParser::closeSize()
{
    m_font = 0;
    m_format &= static_cast<unsigned char>(~doubleSize);
}

/// Intended: the text gathered so far isn't flushed, so the line comes before it; templates place
/// their lines accordingly (test lineComesBeforeTheTextBeingGathered).
void BbCodeParser::closeHr()
{
    const QString line(m_symbolsPerLine, m_hr ? *m_hr : QChar(usualLine));
    m_blocks.append(DocumentBlock::createSimpleBlock(QStringList{line}, AlignCenter, 0, 0, 0,
                                                     m_symbolsPerLine));
    m_hr.reset();
}

void BbCodeParser::closeImg()
{
    if (!m_image)
        return;
    DocumentBlock block = takeText();
    if (m_image->width() > 0 && m_image->height() > 0) {
        block.setImg(*m_image);
        block.setType(DocumentBlock::BlockImage);
        block.setAlignment(AlignCenter);
    } else {
        block.setType(m_blockType);
        block.setBarCodeType(m_barcodeType);
    }
    m_blocks.append(block);
    m_image.reset();
}

void BbCodeParser::closeColumn()
{
    flush();
    m_column.reset();
}

void BbCodeParser::closeBarcode()
{
    closeCode(DocumentBlock::BlockBarcode);
}

void BbCodeParser::closeQrCode()
{
    closeCode(DocumentBlock::BlockQrCode);
}

void BbCodeParser::closeField()
{
    m_field.reset();
}

/// Intended: the payload is set only if the closing tag fits the opening one; the block is there in
/// any case (test codeClosedByTheOtherTagHasNoPayload).
void BbCodeParser::closeCode(DocumentBlock::EBlockType tagType)
{
    if (!m_text.isEmpty()) {
        DocumentBlock block = linesInPresentStyle(m_text.split(QLatin1Char('\n')));
        block.setType(m_blockType);
        block.setBarCodeType(m_barcodeType);
        const QByteArray payload = block.text().join(QLatin1Char('\n')).toUtf8();
        if (m_blockType == tagType && tagType == DocumentBlock::BlockBarcode)
            block.setBarCode(payload);
        else if (m_blockType == tagType)
            block.setQrCode(payload);
        m_blocks.append(block);
        m_text.clear();
        m_fonts.clear();
        m_formats.clear();
        m_blocks.append(linesInPresentStyle(QStringList{QString()}));
    }
    m_blockType = DocumentBlock::BlockText;
    m_barcodeType = DocumentBlock::BarcodeNone;
}

void BbCodeParser::setSize(const QString &value)
{
    static const QStringList sizes{QStringLiteral("small"), QStringLiteral("normal"),
                                   QStringLiteral("middle"), QStringLiteral("large")};
    m_format &= static_cast<unsigned char>(~doubleSize);
    const int font = sizes.indexOf(value);
    if (font >= 0)
        m_font = static_cast<unsigned char>(font);
}

void BbCodeParser::setHr(const QString &value)
{
    if (!m_hr)
        m_hr = std::make_unique<QChar>();
    if (value == QLatin1String("dashed"))
        *m_hr = QLatin1Char('-');
    else if (value == QLatin1String("dotted"))
        *m_hr = QLatin1Char('.');
    else
        *m_hr = usualLine;
}

void BbCodeParser::setWidth(const QString &value)
{
    if (m_field)
        m_field->width = readByte(value);
    else if (m_column)
        m_column->width = readByte(value);
}

void BbCodeParser::setAlign(const QString &value)
{
    if (m_field)
        m_field->align = readAlignment(value);
    else if (m_column)
        m_column->align = readAlignment(value);
}

void BbCodeParser::setZerofill(const QString &value)
{
    if (m_field)
        m_field->zerofill = readByte(value);
}

void BbCodeParser::loadImage(const QString &name)
{
    if (!m_image)
        return;
    if (auto image = bbcodeimage::load(m_imagesPath, name))
        *m_image = *std::move(image);
}
