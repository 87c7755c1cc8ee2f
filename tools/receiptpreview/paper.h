#pragma once

#include <optional>

#include "printers/printerinfo.h"

class QTextCodec;

namespace receiptpreview {

constexpr double millimetresPerInch = 25.4;

/// The catalogue's record of a model; nothing for an unknown one.
std::optional<PrinterInfo> catalogueModel(const QString &id);

/// The paper type of a model that has the longest line.
int widestPaperOf(const PrinterInfo &model);

/// A model with one of its papers and the font of text that chooses none: what the geometry of a
/// picture depends on. Lengths are in dots of the print head.
class Paper
{
public:
    /// @param paperId  a paper type of the model; one that it lacks counts as the nearest
    /// @param baseFont the font with which font byte 0 prints
    /// @param codePage the printer's character set; null: code page 866
    Paper(const PrinterInfo &model, int paperId, int baseFont,
          const QTextCodec *codePage = nullptr);

    /// The same paper with a line of other dots, as it was printed.
    Paper withLine(int dots, int dotsPerInch) const;

    const PrinterInfo &model() const { return m_model; }
    const PaperInfo &info() const { return m_info; }

    int dotsPerInch() const { return m_dotsPerInch; }
    /// Dots of a printed line.
    int printableWidth() const { return m_printableWidth; }
    /// The paper from edge to edge: the millimetres of its caption, such as "80 mm", and not less
    /// than what is printed. PaperInfo::width() is not that: it is the printable millimetres.
    int width() const { return m_width; }
    /// What is left blank at the left edge; the right one gets the rest.
    int leftMargin() const { return (m_width - m_printableWidth) / 2; }

    /// The font that a font byte selects: font 0 is the base font, and so is a number that the
    /// model lacks.
    const FontInfo &font(unsigned char number) const;
    const FontInfo &baseFont() const { return m_baseFont; }
    /// Null if there is none of that name in Qt.
    const QTextCodec *codePage() const { return m_codePage; }
    int charactersPerLine() const { return m_printableWidth / m_baseFont.width(); }

private:
    void setLine(int dots);

    PrinterInfo m_model;
    PaperInfo m_info;
    QList<FontInfo> m_fonts;
    FontInfo m_baseFont;
    const QTextCodec *m_codePage;
    int m_dotsPerInch;
    int m_printableWidth;
    int m_width;
};

}  // namespace receiptpreview
