#pragma once

#include <printerslib/drivers/printtarget.h>

#include <optional>

#include "printers/printerinfo.h"

namespace receiptpreview {

constexpr double millimetresPerInch = 25.4;

/// The catalogue's record of a model; nothing for an unknown one.
std::optional<PrinterInfo> catalogueModel(const QString &id);

/// The paper type of a model that has the longest line.
int widestPaperOf(const PrinterInfo &model);

/// A model with one of its papers: what the geometry of a picture depends on. Lengths are in dots
/// of the print head.
class Paper
{
public:
    /// Where something will be printed.
    explicit Paper(const printerslib::drivers::PrintTarget &target);
    /// Where something was printed that says by itself how wide it is.
    /// @param paperId a paper type of the model; one that it lacks counts as the nearest
    Paper(const PrinterInfo &model, int paperId);

    /// The same paper with a line of other dots, as it was printed.
    Paper withLine(int dots, int dotsPerInch) const;

    const PrinterInfo &model() const { return m_model; }
    const PaperInfo &info() const { return m_info; }

    int dotsPerInch() const { return m_dotsPerInch; }
    /// Dots of a printed line.
    int printableWidth() const { return m_printableWidth; }
    /// What is left blank at each edge at least, where the caption's millimetres leave less: the
    /// mark of a line that goes on stands there.
    static constexpr int leastMargin = 6;
    /// The paper from edge to edge: the millimetres of its caption, such as "80 mm", and not less
    /// than what is printed with its margins. PaperInfo::width() is not that: it is the printable
    /// millimetres.
    int width() const { return m_width; }
    /// What is left blank at the left edge; the right one gets the rest.
    int leftMargin() const { return (m_width - m_printableWidth) / 2; }

private:
    Paper(const PrinterInfo &model, const PaperInfo &info);
    void setLine(int dots);

    PrinterInfo m_model;
    PaperInfo m_info;
    int m_dotsPerInch;
    int m_printableWidth;
    int m_width;
};

}  // namespace receiptpreview
