#include "dotpicture.h"

#include <printerslib/drivers/printerprofile.h>
#include <printerslib/drivers/printlayout.h>
#include <printerslib/drivers/symbologydrawer.h>

#include <algorithm>

namespace tool {

using printerslib::drivers::Paper;
using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;
using printerslib::drivers::SymbologyDrawer;

namespace {

constexpr int bitsOfDots = 8;
constexpr int digitWidth = 8;
// Rows of an image are of whole 32 bits, as those of BBCode are.
constexpr int alignmentBits = 32;

/// A printer whose letters are as small as the digits.
PrintTarget smallLetters()
{
    const QString model = QStringLiteral("GENERAL_EPSON_PROTOCOL");
    PrinterModels models;
    models.add(R"([{"id": "GENERAL_EPSON_PROTOCOL", "fonts": [[8, 16]]}])", model);
    return *PrintTarget::forModel(models, model, 0);
}

Paper::Picture dotsOfText(const QString &text)
{
    static const PrintTarget target = smallLetters();
    TextPrinterDocument document;
    document.appendBlock(
        DocumentBlock::createSimpleBlock(QStringList{text}, AlignLeft, 0, 0, 0, 0));
    PrintOptions options;
    options.isPicture = true;
    const PrintLayout layout = PrintLayout::of(document, target, options, SymbologyDrawer());
    return layout.rows.empty() ? Paper::Picture() : layout.rasterOf(layout.rows.front());
}

}  // namespace

DotPicture::DotPicture(int width, int height)
    : m_width(width),
      m_height(height),
      m_rowBytes((width + alignmentBits - 1) / alignmentBits * (alignmentBits / bitsOfDots)),
      m_rows(m_rowBytes * height, '\0')
{}

void DotPicture::setDot(int x, int y)
{
    if (x < 0 || y < 0 || x >= m_width || y >= m_height)
        return;
    char &byte = m_rows.data()[y * m_rowBytes + x / bitsOfDots];
    byte = static_cast<char>(byte | 0x80 >> x % bitsOfDots);
}

void DotPicture::fill(int left, int top, int width, int height)
{
    for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x)
            setDot(x, y);
    }
}

void DotPicture::fillBytes(int left, int top, int width, int height, char even, char odd)
{
    const int first = std::max(0, left) / bitsOfDots;
    const int end = std::min(left + width, m_width) / bitsOfDots;
    for (int y = std::max(0, top); y < std::min(top + height, m_height); ++y) {
        for (int byte = first; byte < end; ++byte)
            m_rows[y * m_rowBytes + byte] = y % 2 == 0 ? even : odd;
    }
}

void DotPicture::writeNumber(int left, int top, int number)
{
    const Paper::Picture letters = dotsOfText(QString::number(number));
    const int rowBytes = (letters.size.width() + bitsOfDots - 1) / bitsOfDots;
    for (int y = 0; y < letters.size.height(); ++y) {
        for (int x = 0; x < letters.size.width(); ++x) {
            const auto byte =
                static_cast<unsigned char>(letters.rows.at(y * rowBytes + x / bitsOfDots));
            if ((byte & 0x80 >> x % bitsOfDots) != 0)
                setDot(left + x, top + y);
        }
    }
}

int DotPicture::widthOf(int number)
{
    return QString::number(number).size() * digitWidth;
}

DocumentBlock DotPicture::toBlock() const
{
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setImg(MonochromeImage(m_width, m_height, m_rows));
    return block;
}

}  // namespace tool
