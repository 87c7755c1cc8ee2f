// The map form of a document: keys and kinds of value are what stored documents hold.
#include "latin1text_p.h"
#include "printerdocs/document/documentblock_map_p.h"
#include "printerdocs/textprinterdocument.h"

namespace {

using printshared::latin1Text;

using Map = QMap<QString, QVariant>;
using CharImages = QMultiMap<signed char, MonochromeImage>;

constexpr QLatin1String blocksKey = latin1Text("blocks");
constexpr QLatin1String charImagesKey = latin1Text("cis");
constexpr QLatin1String charImagePrefix = latin1Text("ci_");
constexpr QLatin1String prevTicketActionKey = latin1Text("pta");
constexpr QLatin1String currentTicketActionKey = latin1Text("cta");
constexpr QLatin1String retractionTimeoutKey = latin1Text("rtout");
constexpr QLatin1String loopPolicyKey = latin1Text("loop");
constexpr QLatin1String doInitKey = latin1Text("init");
constexpr QLatin1String symbolsPerLineKey = latin1Text("spl");

// Intended: only wider lines are written, as readers take 32 for granted; see
// tst_textprinterdocument_map, symbolsPerLineIsWrittenAbove32.
constexpr int unwrittenSymbolsPerLine = 32;

// Intended: one image per code; a multi-map walks equal keys from the newest to the oldest, so the
// image added first wins. See tst_textprinterdocument_map, imageAddedFirstWins.
Map mapOfImages(const CharImages &images)
{
    Map map;
    for (auto image = images.cbegin(); image != images.cend(); ++image)
        map.insert(charImagePrefix + QString::number(image.key()), image->toMap());
    return map;
}

// Intended: the code is read as an unsigned number of any size, narrowed to the table's key, so
// negative codes, which are written, are dropped. See tst_textprinterdocument_map,
// codesAreReadUnsignedAndNarrowed.
CharImages imagesOfMap(const Map &map)
{
    CharImages images;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        bool ok = false;
        const uint code = entry.key().midRef(charImagePrefix.size()).toUInt(&ok);
        if (ok)
            images.insert(static_cast<signed char>(code), MonochromeImage(entry->toMap()));
    }
    return images;
}

template <typename Enum>
QFlags<Enum> flagsOf(int value)
{
    return QFlags<Enum>(QFlag(value));
}

}  // namespace

QMap<QString, QVariant> TextPrinterDocument::toMap() const
{
    QVariantList blocks;
    blocks.reserve(m_blocks.size());
    documents::Base64Texts texts;
    for (const DocumentBlock &block : m_blocks)
        blocks.append(documents::mapOf(block, texts));
    Map map{{blocksKey, blocks},
            {prevTicketActionKey, static_cast<int>(m_prevTicketAction)},
            {currentTicketActionKey, static_cast<int>(m_currentTicketAction)},
            {loopPolicyKey, static_cast<uint>(m_loopPolicy)}};
    if (!m_charImages.isEmpty())
        map.insert(charImagesKey, mapOfImages(m_charImages));
    if (m_retractionTimeout > 0)
        map.insert(retractionTimeoutKey, m_retractionTimeout);
    if (m_doInit)
        map.insert(doInitKey, true);
    if (m_symbolsPerLine > unwrittenSymbolsPerLine)
        map.insert(symbolsPerLineKey, m_symbolsPerLine);
    return map;
}

void TextPrinterDocument::setMap(const QMap<QString, QVariant> &map)
{
    m_blocks.clear();
    const QVariantList blocks = map.value(blocksKey).toList();
    m_blocks.reserve(blocks.size());
    for (const QVariant &block : blocks)
        m_blocks.append(DocumentBlock(block.toMap()));
    m_charImages = imagesOfMap(map.value(charImagesKey).toMap());
    m_prevTicketAction = flagsOf<EPrinterTicketAction>(map.value(prevTicketActionKey).toInt());
    m_currentTicketAction =
        flagsOf<EPrinterTicketAction>(map.value(currentTicketActionKey).toInt());
    m_retractionTimeout = map.value(retractionTimeoutKey).toInt();
    m_loopPolicy = flagsOf<EPaperLoopFlag>(static_cast<int>(map.value(loopPolicyKey).toUInt()));
    // Intended: false when missing, though a fresh document has true; the writer leaves false out.
    // See tst_textprinterdocument_map, emptyMapIsNotTheDefaultDocument.
    m_doInit = map.value(doInitKey).toBool();
    m_symbolsPerLine = map.value(symbolsPerLineKey).toInt();
}
