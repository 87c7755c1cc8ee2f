// The map form of a block: keys and kinds of value are what stored documents hold.
#include <algorithm>

#include "printerdocs/document/documentblock_map_p.h"

namespace {

/// Made once: a document has hundreds of each.
struct Keys
{
    const QString type = QStringLiteral("type");
    const QString image = QStringLiteral("img");
    const QString text = QStringLiteral("txt");
    const QString format = QStringLiteral("fmt");
    const QString font = QStringLiteral("fnt");
    const QString alignment = QStringLiteral("align");
    const QString lineSpacing = QStringLiteral("ls");
    const QString barcode = QStringLiteral("bar");
    const QString barcodeType = QStringLiteral("bt");
    const QString qrCode = QStringLiteral("qr");
};

const Keys &keys()
{
    static const Keys all;
    return all;
}

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

QString base64Of(const QByteArray &bytes)
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
QMap<QString, QVariant> documents::mapOf(const DocumentBlock &block, Base64Texts &texts)
{
    QMap<QString, QVariant> map{{keys().type, static_cast<int>(block.type())}};
    if (block.isImage()) {
        map.insert(keys().image, block.img().toMap());
    } else if (block.isText()) {
        const auto asIs = [](const auto &entry) { return QVariant(entry); };
        const auto inBase64 = [&texts](const QByteArray &bytes) {
            return texts.of(bytes, base64Of);
        };
        map.insert(keys().text, encoded(block.text(), asIs));
        map.insert(keys().format, encoded(block.format(), inBase64));
        map.insert(keys().font, encoded(block.font(), inBase64));
        map.insert(keys().alignment, static_cast<int>(block.alignment()));
        map.insert(keys().lineSpacing, encoded(block.lineSpacing(), asIs));
    } else if (block.isBarcode()) {
        map.insert(keys().barcode, block.text().constFirst());
        map.insert(keys().barcodeType, static_cast<int>(block.barCodeType()));
    } else if (block.isQrCode()) {
        map.insert(keys().qrCode, block.text().constFirst());
    }
    return map;
}

QMap<QString, QVariant> DocumentBlock::toMap() const
{
    documents::Base64Texts texts;
    return documents::mapOf(*this, texts);
}

void DocumentBlock::setMap(const QMap<QString, QVariant> &map)
{
    *this = DocumentBlock();
    m_type = static_cast<EBlockType>(map.value(keys().type).toInt());
    switch (m_type) {
        case BlockText:
            readTextMap(map);
            break;
        case BlockImage:
            m_img.setMap(map.value(keys().image).toMap());
            break;
        case BlockBarcode:
            m_barCodeType = static_cast<EBarcodeType>(map.value(keys().barcodeType).toInt());
            m_text.append(map.value(keys().barcode).toString());
            break;
        case BlockQrCode:
            m_text.append(map.value(keys().qrCode).toString());
            break;
    }
}

void DocumentBlock::readTextMap(const QMap<QString, QVariant> &map)
{
    // Intended: the remainder, which takes the number's sign; stored documents may hold numbers
    // above 3. See tst_documentblock_map, alignmentIsReadAsTheRemainderByFour.
    m_alignment =
        static_cast<ETextAlignment>(map.value(keys().alignment).toInt() % numberOfAlignments);
    const QVariantList text = map.value(keys().text).toList();
    const QVariantList format = map.value(keys().format).toList();
    const QVariantList font = map.value(keys().font).toList();
    const QVariantList lineSpacing = map.value(keys().lineSpacing).toList();
    const int lines = std::min({text.size(), format.size(), font.size(), lineSpacing.size()});
    for (int line = 0; line < lines; ++line) {
        m_text.append(text.at(line).toString());
        m_format.append(bytesOfBase64(format.at(line)));
        m_font.append(bytesOfBase64(font.at(line)));
        m_lineSpacing.append(lineSpacing.at(line).toInt());
    }
}
