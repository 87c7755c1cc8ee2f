#include "printerdocs/textprinterdocument.h"

#include <limits>

namespace {

constexpr int plainTextWidth = 80;
constexpr double estimateMargin = 1.2;

}  // namespace

QList<DocumentBlock> TextPrinterDocument::blocks() const
{
    return m_blocks;
}

void TextPrinterDocument::setBlocks(const QList<DocumentBlock> &blocks)
{
    m_blocks = blocks;
}

void TextPrinterDocument::appendBlock(const DocumentBlock &block)
{
    m_blocks.append(block);
}

void TextPrinterDocument::prependBlock(const DocumentBlock &block)
{
    m_blocks.prepend(block);
}

QMultiMap<signed char, MonochromeImage> TextPrinterDocument::charImages() const
{
    return m_charImages;
}

void TextPrinterDocument::setCharImages(const QMultiMap<signed char, MonochromeImage> &charImages)
{
    m_charImages = charImages;
}

QFlags<EPrinterTicketAction> TextPrinterDocument::prevTicketAction() const
{
    return m_prevTicketAction;
}

void TextPrinterDocument::setPrevTicketAction(const QFlags<EPrinterTicketAction> &action)
{
    m_prevTicketAction = action;
}

QFlags<EPrinterTicketAction> TextPrinterDocument::currentTicketAction() const
{
    return m_currentTicketAction;
}

void TextPrinterDocument::setCurrentTicketAction(const QFlags<EPrinterTicketAction> &action)
{
    m_currentTicketAction = action;
}

int TextPrinterDocument::retractionTimeout() const
{
    return m_retractionTimeout;
}

void TextPrinterDocument::setRetractionTimeout(const int &timeout)
{
    m_retractionTimeout = timeout;
}

QFlags<EPaperLoopFlag> TextPrinterDocument::loopPolicy() const
{
    return m_loopPolicy;
}

void TextPrinterDocument::setLoopPolicy(const QFlags<EPaperLoopFlag> &policy)
{
    m_loopPolicy = policy;
}

bool TextPrinterDocument::doInit() const
{
    return m_doInit;
}

void TextPrinterDocument::setDoInit(bool doInit)
{
    m_doInit = doInit;
}

int TextPrinterDocument::symbolsPerLine() const
{
    return m_symbolsPerLine;
}

void TextPrinterDocument::setSymbolsPerLine(const int &symbols)
{
    m_symbolsPerLine = symbols;
}

int TextPrinterDocument::symbolsCount() const
{
    qint64 count = 0;
    for (const DocumentBlock &block : m_blocks)
        count += block.symbolsCount();
    const double estimate = static_cast<double>(count) * estimateMargin;
    constexpr int maximum = std::numeric_limits<int>::max();
    return estimate < maximum ? static_cast<int>(estimate) : maximum;
}

QStringList TextPrinterDocument::toStringList() const
{
    QStringList result;
    for (DocumentBlock block : m_blocks)
        result.append(block.toStringList(plainTextWidth));
    return result;
}

void TextPrinterDocument::toUpper()
{
    for (DocumentBlock &block : m_blocks)
        block.toUpper();
}

void TextPrinterDocument::toLower()
{
    for (DocumentBlock &block : m_blocks)
        block.toLower();
}

bool TextPrinterDocument::operator==(const TextPrinterDocument &other) const
{
    return m_blocks == other.m_blocks && m_charImages == other.m_charImages &&
           m_prevTicketAction == other.m_prevTicketAction &&
           m_currentTicketAction == other.m_currentTicketAction &&
           m_retractionTimeout == other.m_retractionTimeout && m_loopPolicy == other.m_loopPolicy &&
           m_doInit == other.m_doInit && m_symbolsPerLine == other.m_symbolsPerLine;
}

bool TextPrinterDocument::operator!=(const TextPrinterDocument &other) const
{
    return !(*this == other);
}
