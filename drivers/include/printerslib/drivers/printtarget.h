#pragma once

#include <QSize>
#include <QVector>
#include <optional>

#include "printers/printerinfo.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printermodels.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// A printer's own font as it prints a document's font byte.
struct PrintFont
{
    int number = 0;          ///< of the printer's fonts, from 0
    quint8 widthScale = 1;   ///< how often its dots are repeated to make the catalogue's cell
    quint8 heightScale = 1;  ///< the same downwards
    QSize cell;              ///< on the paper, without the format's doubling
    QSize ownCharacter;      ///< dots of characters that a stream defines; empty: it takes none
};

/// A model with one of its papers and the font of text that chooses none: what a document is laid
/// out and encoded for. The driver's data prevails over the catalogue's record.
///
/// A value; any thread may use its own copy.
class PRINTERSLIB_DRIVERS_EXPORT PrintTarget
{
public:
    /// @param modelId  of the catalogue; nothing for another one
    /// @param paperId  a paper type of the model; one that it lacks counts as the nearest
    /// @param baseFont the font with which font byte 0 prints, by its number in the catalogue
    static std::optional<PrintTarget> forModel(const QString &modelId, int paperId,
                                               int baseFont = 0);
    /// The same of models that a user's files may have changed or added. The catalogue's record is
    /// that of PrinterProfile::catalogueId().
    static std::optional<PrintTarget> forModel(const PrinterModels &models, const QString &modelId,
                                               int paperId, int baseFont = 0);
    /// @param record of the catalogue; its papers and fonts count, and what it says of formats
    PrintTarget(const PrinterProfile &profile, const PrinterInfo &record, int paperId,
                int baseFont = 0);

    const PrinterProfile &profile() const { return m_profile; }  ///< the driver's data
    const PrinterInfo &record() const { return m_record; }       ///< the catalogue's
    const PaperInfo &paper() const { return m_paper; }           ///< one of the record's

    /// Dots of a printed line: those of the paper, but no more than the head has.
    int lineDots() const { return m_lineDots; }
    /// Dots of the paper from edge to edge: its millimetres, and not less than the line.
    int paperDots() const;
    /// Millimetres of a paper from edge to edge, which stand in its caption, such as "80 mm":
    /// PaperInfo::width() is what is printed of them.
    static double millimetresOf(const PaperInfo &paper);
    /// What a font byte prints with: font 0 is the base font, and so is a number that the model
    /// lacks.
    const PrintFont &font(unsigned char number) const
    {
        return m_fonts.at(number < m_fonts.size() ? number : 0);
    }
    /// How many characters of a font are a line.
    int symbolsPerLine(unsigned char font = 0) const
    {
        return m_lineDots / this->font(font).cell.width();
    }
    /// Whether what happens to a ticket at its end takes a cut, if there is a cutter. What is
    /// handed out has to be cut, where there is something that hands out; else what would be held
    /// out is cut at least, and what would be ejected falls by itself.
    /// @param action bits of EPrinterTicketAction
    bool wantsCut(int action) const;
    /// Bits of ECharFormat that the model prints. CharMarkZ is white on black.
    unsigned char printedFormats() const { return m_printedFormats; }

private:
    PrinterProfile m_profile;
    PrinterInfo m_record;
    PaperInfo m_paper;
    QVector<PrintFont> m_fonts;  ///< by font byte; the first is the base font
    int m_lineDots = 0;
    unsigned char m_printedFormats = 0;
};

}  // namespace printerslib::drivers
