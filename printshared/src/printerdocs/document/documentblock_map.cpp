// The map form of a block: keys and kinds of value are what stored documents hold.
#include <algorithm>

#include "latin1text_p.h"
#include "printerdocs/documentblock.h"

namespace {

using printshared::latin1Text;

constexpr QLatin1String typeKey = latin1Text("type");
constexpr QLatin1String imageKey = latin1Text("img");
constexpr QLatin1String textKey = latin1Text("txt");
constexpr QLatin1String formatKey = latin1Text("fmt");
constexpr QLatin1String fontKey = latin1Text("fnt");
constexpr QLatin1String alignmentKey = latin1Text("align");
constexpr QLatin1String lineSpacingKey = latin1Text("ls");
constexpr QLatin1String barcodeKey = latin1Text("bar");
constexpr QLatin1String barcodeTypeKey = latin1Text("bt");
constexpr QLatin1String qrCodeKey = latin1Text("qr");

constexpr int numberOfAlignments = 4;

template <typename List, typename Encode>
QVariantList encoded(const List &list, Encode encode)
{
    QVariantList result;
    result.reserve(list.size());
    for (const auto &entry : list)
        result.append(encode(entry));
    return result;
}

QVariant base64Text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray bytesOfBase64(const QVariant &text)
{
    return QByteArray::fromBase64(text.toString().toLatin1());
}

}  // namespace

/// Intended: of a code or an image only type, payload and symbology are written; documents and
/// readers in the field have it so (tests qrCodeBlockIsWrittenWithItsPayload and its like).
QMap<QString, QVariant> DocumentBlock::toMap() const
{
    QMap<QString, QVariant> map{{typeKey, static_cast<int>(m_type)}};
    if (isImage()) {
        map.insert(imageKey, m_img.toMap());
    } else if (isText()) {
        const auto asIs = [](const auto &entry) { return QVariant(entry); };
        map.insert(textKey, encoded(m_text, asIs));
        map.insert(formatKey, encoded(m_format, base64Text));
        map.insert(fontKey, encoded(m_font, base64Text));
        map.insert(alignmentKey, static_cast<int>(m_alignment));
        map.insert(lineSpacingKey, encoded(m_lineSpacing, asIs));
    } else if (isBarcode()) {
        map.insert(barcodeKey, m_text.constFirst());
        map.insert(barcodeTypeKey, static_cast<int>(m_barCodeType));
    } else if (isQrCode()) {
        map.insert(qrCodeKey, m_text.constFirst());
    }
    return map;
}

void DocumentBlock::setMap(const QMap<QString, QVariant> &map)
{
    *this = DocumentBlock();
    m_type = static_cast<EBlockType>(map.value(typeKey).toInt());
    switch (m_type) {
        case BlockText:
            readTextMap(map);
            break;
        case BlockImage:
            m_img.setMap(map.value(imageKey).toMap());
            break;
        case BlockBarcode:
            m_barCodeType = static_cast<EBarcodeType>(map.value(barcodeTypeKey).toInt());
            m_text.append(map.value(barcodeKey).toString());
            break;
        case BlockQrCode:
            m_text.append(map.value(qrCodeKey).toString());
            break;
    }
}

void DocumentBlock::readTextMap(const QMap<QString, QVariant> &map)
{
    // Intended: the remainder, which takes the number's sign; stored documents may hold numbers
    // above 3. See tst_documentblock_map, alignmentIsReadAsTheRemainderByFour.
    m_alignment = static_cast<ETextAlignment>(map.value(alignmentKey).toInt() % numberOfAlignments);
    const QVariantList text = map.value(textKey).toList();
    const QVariantList format = map.value(formatKey).toList();
    const QVariantList font = map.value(fontKey).toList();
    const QVariantList lineSpacing = map.value(lineSpacingKey).toList();
    const int lines = std::min({text.size(), format.size(), font.size(), lineSpacing.size()});
    for (int line = 0; line < lines; ++line) {
        m_text.append(text.at(line).toString());
        m_format.append(bytesOfBase64(format.at(line)));
        m_font.append(bytesOfBase64(font.at(line)));
        m_lineSpacing.append(lineSpacing.at(line).toInt());
    }
}
