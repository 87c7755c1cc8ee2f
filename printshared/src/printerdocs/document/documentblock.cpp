#include "printerdocs/documentblock.h"

#include <algorithm>
#include <limits>

#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/echarformat.h"

namespace {

using namespace documents;

constexpr int maximumSpacesBefore = 16;
// Keeps a wild count from taking the machine's memory.
constexpr int mostEmptyLines = 1 << 24;

// The bytes of each line; those of the line breaks between the lines are left out.
QList<QByteArray> bytesPerLine(const QStringList &lines, const QByteArray &bytes)
{
    QList<QByteArray> result;
    result.reserve(lines.size());
    int position = 0;
    for (const QString &line : lines) {
        result.append(line.isEmpty() ? QByteArray() : bytes.mid(position, line.size()));
        position += line.size() + 1;
    }
    return result;
}

void prependZeroBytes(QList<QByteArray> &list, int line, int count)
{
    if (line < list.size())
        list[line].prepend(count, '\0');
}

}  // namespace

DocumentBlock::DocumentBlock(const QMap<QString, QVariant> &map)
{
    setMap(map);
}

DocumentBlock::EBlockType DocumentBlock::type() const
{
    return m_type;
}

void DocumentBlock::setType(const EBlockType &type)
{
    m_type = type;
}

DocumentBlock::EBarcodeType DocumentBlock::barCodeType() const
{
    return m_barCodeType;
}

void DocumentBlock::setBarCodeType(const EBarcodeType &barCodeType)
{
    m_barCodeType = barCodeType;
}

QStringList DocumentBlock::text() const
{
    return m_text;
}

void DocumentBlock::setText(const QStringList &text)
{
    m_text = text;
}

QList<QByteArray> DocumentBlock::format() const
{
    return m_format;
}

void DocumentBlock::setFormat(const QList<QByteArray> &format)
{
    m_format = format;
}

void DocumentBlock::setFormat(unsigned char value)
{
    m_format = bytesForEveryCharacter(value);
}

QList<QByteArray> DocumentBlock::font() const
{
    return m_font;
}

void DocumentBlock::setFont(const QList<QByteArray> &font)
{
    m_font = font;
}

void DocumentBlock::setFont(unsigned char value)
{
    m_font = bytesForEveryCharacter(value);
}

QList<QByteArray> DocumentBlock::bytesForEveryCharacter(unsigned char value) const
{
    QList<QByteArray> result;
    result.reserve(m_text.size());
    for (const QString &line : m_text)
        result.append(QByteArray(line.size(), static_cast<char>(value)));
    return result;
}

ETextAlignment DocumentBlock::alignment() const
{
    return m_alignment;
}

void DocumentBlock::setAlignment(const ETextAlignment &alignment)
{
    m_alignment = alignment;
}

QList<int> DocumentBlock::lineSpacing() const
{
    return m_lineSpacing;
}

void DocumentBlock::setLineSpacing(const QList<int> &lineSpacing)
{
    m_lineSpacing = lineSpacing;
}

void DocumentBlock::setLineSpacing(int value)
{
    m_lineSpacing.clear();
    m_lineSpacing.reserve(m_text.size());
    for (int line = 0; line < m_text.size(); ++line)
        m_lineSpacing.append(value);
}

MonochromeImage DocumentBlock::img() const
{
    return m_img;
}

void DocumentBlock::setImg(const MonochromeImage &img)
{
    m_img = img;
}

bool DocumentBlock::isText() const
{
    const int lines = m_text.size();
    return m_type == BlockText && lines > 0 && m_format.size() == lines && m_font.size() == lines &&
           m_lineSpacing.size() == lines;
}

bool DocumentBlock::isImage() const
{
    return m_type == BlockImage && m_img.isValid();
}

bool DocumentBlock::isBarcode() const
{
    return m_type == BlockBarcode && !m_text.isEmpty() && m_barCodeType != BarcodeNone;
}

bool DocumentBlock::isQrCode() const
{
    return m_type == BlockQrCode && !m_text.isEmpty();
}

bool DocumentBlock::isValid() const
{
    return isText() || isImage() || isBarcode() || isQrCode();
}

bool DocumentBlock::isEmpty() const
{
    return isText() && std::all_of(m_text.cbegin(), m_text.cend(), [](const QString &line) {
               return QStringView(line).trimmed().isEmpty();
           });
}

int DocumentBlock::symbolsCount() const
{
    if (m_type != BlockText)
        return 0;
    qint64 count = 0;
    for (const QString &line : m_text)
        count += line.size();
    return static_cast<int>(qMin<qint64>(count, std::numeric_limits<int>::max()));
}

QByteArray DocumentBlock::qrCode() const
{
    return m_text.isEmpty() ? QByteArray() : QByteArray::fromBase64(m_text.constFirst().toLatin1());
}

QByteArray DocumentBlock::barcode() const
{
    return qrCode();
}

void DocumentBlock::setBarCode(const QByteArray &data)
{
    m_text = QStringList(QString::fromLatin1(data.toBase64()));
    m_type = BlockBarcode;
}

void DocumentBlock::setBarCode(const QByteArray &data, EBarcodeType type)
{
    setBarCode(data);
    m_barCodeType = type;
}

void DocumentBlock::setQrCode(const QByteArray &data)
{
    m_text = QStringList(QString::fromLatin1(data.toBase64()));
    m_type = BlockQrCode;
}

int DocumentBlock::prepareFont(char format, char font) const
{
    constexpr uint doubled = CharDoubleWidth | CharDoubleHeight;
    const int size = static_cast<signed char>(font) + 1;
    return (static_cast<uchar>(format) & doubled) == doubled ? 2 * size : size;
}

QStringList DocumentBlock::toStringList(int width)
{
    QStringList result;
    if (!isText())
        return result;
    result.reserve(m_text.size());
    for (const QString &line : qAsConst(m_text))
        result.append(paddedLine(line, m_alignment, width));
    return result;
}

void DocumentBlock::toUpper()
{
    for (QString &line : m_text)
        line = line.toUpper();
}

void DocumentBlock::toLower()
{
    for (QString &line : m_text)
        line = line.toLower();
}

bool DocumentBlock::append(const DocumentBlock &other)
{
    if (!isText() || !other.isText() || m_alignment != other.m_alignment)
        return false;
    m_text.append(other.m_text);
    m_format.append(other.m_format);
    m_font.append(other.m_font);
    m_lineSpacing.append(other.m_lineSpacing);
    return true;
}

void DocumentBlock::setSpacesBefore(int spaces)
{
    if (spaces < 1 || spaces > maximumSpacesBefore)
        return;
    const QString blanks(spaces, blank);
    for (int line = 0; line < m_text.size(); ++line) {
        m_text[line].prepend(blanks);
        prependZeroBytes(m_font, line, spaces);
        prependZeroBytes(m_format, line, spaces);
    }
}

DocumentBlock DocumentBlock::emptyBlock(int count, ETextAlignment alignment, int lineSpacing)
{
    if (count < 1 || count > mostEmptyLines)
        return DocumentBlock();
    QStringList lines;
    lines.reserve(count);
    for (int line = 0; line < count; ++line)
        lines.append(QString());
    return createSimpleBlock(lines, alignment, 0, 0, lineSpacing, 0);
}

DocumentBlock DocumentBlock::createSimpleBlock(const QStringList &lines, ETextAlignment alignment,
                                               unsigned char font, unsigned char format,
                                               int lineSpacing, int spaces)
{
    DocumentBlock block;
    block.setText(lines);
    block.setAlignment(alignment);
    block.setFont(font);
    block.setFormat(format);
    block.setLineSpacing(lineSpacing);
    block.setSpacesBefore(spaces);
    block.setType(BlockText);
    return block;
}

DocumentBlock DocumentBlock::createSimpleBlock(const QString &text, ETextAlignment alignment,
                                               QByteArray font, QByteArray format, int lineSpacing,
                                               int spaces)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    DocumentBlock block;
    block.setText(lines);
    block.setAlignment(alignment);
    block.setFont(bytesPerLine(lines, CharacterBytes::extended(font, text.size())));
    block.setFormat(bytesPerLine(lines, CharacterBytes::extended(format, text.size())));
    block.setLineSpacing(lineSpacing);
    block.setSpacesBefore(spaces);
    block.setType(BlockText);
    return block;
}

bool DocumentBlock::operator==(const DocumentBlock &other) const
{
    return m_type == other.m_type && m_barCodeType == other.m_barCodeType &&
           m_text == other.m_text && m_format == other.m_format && m_font == other.m_font &&
           m_alignment == other.m_alignment && m_lineSpacing == other.m_lineSpacing &&
           m_img == other.m_img;
}

bool DocumentBlock::operator!=(const DocumentBlock &other) const
{
    return !(*this == other);
}
