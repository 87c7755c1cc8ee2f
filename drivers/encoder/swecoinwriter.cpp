#include <algorithm>

#include "encoder/documentwriter_p.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;

constexpr int mostDots = 255;
constexpr int mostBytes = 255;  ///< of a row

class SwecoinWriter final : public DocumentWriter
{
public:
    SwecoinWriter(const PrintTarget &target, const PrintOptions &options, EncodedDocument &document)
        : DocumentWriter(target, options, document)
    {}

    void begin(bool resets) override;
    void cut() override { commands().put(Id::FullCut); }
    // There is no connector for one.
    void openDrawer(int /*pin*/, int /*on*/, int /*off*/) override {}

protected:
    void chooseStyle(const TextStyle &style) override;
    // There is no command for one.
    void choosePage(int /*page*/) override {}
    void chooseOwn(bool /*isOwn*/) override {}
    void defineOwn(int /*code*/, const Paper::Picture & /*drawing*/) override {}
    void endLine(int height, int pitch, bool isBlank) override;
    int printDots(const PrintDots &dots, int room) override;
    void printDrawn(const Paper::Code & /*code*/, int /*left*/) override {}
    void feedDots(int dots) override;

private:
    int m_spacing = -1;
};

/// The command that resets takes seconds, in which bytes are lost: so what counts is set, and what
/// was left in the line goes.
void SwecoinWriter::begin(bool resets)
{
    if (resets)
        commands().put(Id::CancelData);
    commands().put(Id::Font, '0' + baseFont());
    for (const Id id : {Id::BoldSwitch, Id::ItalicSwitch, Id::Inverse, Id::UnderlineThickness,
                        Id::HeightScale, Id::WidthScale})
        commands().put(id, 0);
    commands().put(Id::DotLineCompression, 0);
    setPlain(baseFont());
}

void SwecoinWriter::chooseStyle(const TextStyle &wanted)
{
    const TextStyle &now = style();
    if (wanted.font != now.font)
        commands().put(Id::Font, '0' + wanted.font);
    if (wanted.heightScale != now.heightScale)
        commands().put(Id::HeightScale, wanted.heightScale - 1);
    if (wanted.widthScale != now.widthScale)
        commands().put(Id::WidthScale, wanted.widthScale - 1);
    if (wanted.isBold != now.isBold)
        commands().put(Id::BoldSwitch, wanted.isBold ? 1 : 0);
    if (wanted.isItalic != now.isItalic)
        commands().put(Id::ItalicSwitch, wanted.isItalic ? 1 : 0);
    if (wanted.isUnderlined != now.isUnderlined)
        commands().put(Id::UnderlineThickness, wanted.isUnderlined ? 2 : 0);
    if (wanted.isInverse != now.isInverse)
        commands().put(Id::Inverse, wanted.isInverse ? 1 : 0);
}

void SwecoinWriter::endLine(int height, int pitch, bool isBlank)
{
    const int spacing = std::clamp(pitch, 0, mostDots);
    if (spacing != m_spacing)
        commands().put(Id::LineSpacing, spacing);
    m_spacing = spacing;
    commands().put(Id::LineFeed);
    feedDots(pitch - (isBlank ? spacing : std::max(spacing, height)));
}

int SwecoinWriter::printDots(const PrintDots &dots, int /*room*/)
{
    // Heads have no more than 2040 dots.
    const int bytes = std::min(dots.bytesPerRow, mostBytes);
    for (int y = 0; y < dots.height; ++y) {
        commands().put(Id::DotLine, bytes);
        commands().putText(dots.rows.constData() + qptrdiff(y) * dots.bytesPerRow, bytes);
    }
    return dots.height;
}

void SwecoinWriter::feedDots(int dots)
{
    while (dots > 0) {
        const int part = std::min(dots, mostDots);
        commands().put(Id::FeedUnits, part);
        dots -= part;
    }
}

}  // namespace

std::unique_ptr<DocumentWriter> swecoinWriter(const PrintTarget &target,
                                              const PrintOptions &options,
                                              EncodedDocument &document)
{
    return std::make_unique<SwecoinWriter>(target, options, document);
}

}  // namespace printerslib::drivers
