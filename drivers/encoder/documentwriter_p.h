#pragma once

#include <array>
#include <memory>

#include "encoder/commandbytes_p.h"
#include "encoder/hazards_p.h"
#include "encoder/pagetable_p.h"
#include "encoder/printdots_p.h"
#include "printerslib/drivers/documentencoder.h"

namespace printerslib::drivers {

/// How characters look.
struct TextStyle
{
    int font = 0;  ///< of the printer's own
    int widthScale = 1;
    int heightScale = 1;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isInverse = false;
};

/// Sends what stands in a layout, each dialect in its commands. What is seen is decided by the
/// layout alone.
class DocumentWriter
{
public:
    /// The writer of a model's dialect.
    /// @param document gets bytes and notes; it and the rest outlive the writer
    static std::unique_ptr<DocumentWriter> of(const PrintTarget &target,
                                              const PrintOptions &options,
                                              EncodedDocument &document);
    virtual ~DocumentWriter() = default;
    DocumentWriter(const DocumentWriter &) = delete;
    DocumentWriter &operator=(const DocumentWriter &) = delete;

    /// Brings the printer to the state in which all begins, by a reset or else step by step.
    virtual void begin(bool resets) = 0;
    void printText(const PrintLayout &layout, const PrintLayout::Row &row);
    /// @param room that is blank below it, and fed later
    void printPicture(const Paper::Picture &picture, int left, int room);
    void printCode(const Paper::Code &code, int left, int room);
    void feed(int dots);
    virtual void cut() = 0;
    /// Pulse of a drawer at a pin; times in milliseconds.
    virtual void openDrawer(int pin, int on, int off) = 0;

    CommandBytes &commands() { return m_commands; }
    /// Where what follows stands in the document, for notes.
    void setPlace(int block, int line)
    {
        m_block = block;
        m_line = line;
    }
    void note(const QString &text, bool isLoss = true);

protected:
    DocumentWriter(const PrintTarget &target, const PrintOptions &options,
                   EncodedDocument &document);

    virtual void chooseStyle(const TextStyle &style) = 0;
    virtual void choosePage(int page) = 0;
    /// Whether codes print the characters that were defined.
    virtual void chooseOwn(bool isOwn) = 0;
    virtual void defineOwn(int code, const Paper::Picture &drawing) = 0;
    /// Prints the line; the next one begins `pitch` dots below its top.
    virtual void endLine(int height, int pitch, bool isBlank) = 0;
    /// Prints dots at the beginning of a line, of a model that has a command for them.
    /// @param room blank rows below, that may be fed with them
    /// @return how many rows of paper they took
    virtual int printDots(const PrintDots &dots, int room) = 0;
    /// Columns of three bytes that stand in the line as a character does. Nothing where there is no
    /// such command.
    virtual void printColumns(const QByteArray & /*columns*/, int /*first*/, int /*count*/) {}
    /// Prints a code that isDrawnByPrinter().
    virtual void printDrawn(const Paper::Code &code, int left) = 0;
    virtual void feedDots(int dots) = 0;

    const PrintTarget &target() const { return m_target; }
    const PrinterProfile &profile() const { return m_target.profile(); }
    hazards::Rules rules() const { return m_rules; }
    const TextStyle &style() const { return m_style; }
    /// Without any format, once, in a font of the printer's: that is how it prints now.
    void setPlain(int font);
    int firstPage() const { return m_firstPage; }
    /// The base font of the printer's.
    int baseFont() const { return m_target.font(0).number; }
    /// Text as the base font prints it, without any format.
    void choosePlain() { applyStyle(PrintLayout::Cell()); }
    /// How many of a command's units a pulse takes, from `least` to `most`; what is more is told.
    int pulseUnits(int milliseconds, int unit, int least, int most);

private:
    int printLineDots(const PrintLayout &layout, const PrintLayout::Row &row, int first);
    void prepareOwn(const PrintLayout &layout, const PrintLayout::Row &row);
    void define(const PrintLayout &layout, const PrintLayout::Cell &cell, qint64 key, int slot);
    void applyStyle(const PrintLayout::Cell &cell);
    void setOwn(bool isOwn);
    void setPage(int page);
    char byteOf(const PrintLayout &layout, const PrintLayout::Row &row, int index);
    int putKnown(const PrintLayout::Cell *cells, int count);
    char byteOnSomePage(const PrintLayout &layout, const PrintLayout::Row &row, int index);
    void putRaw(const PrintLayout::Cell &cell);
    qint64 ownKey(const PrintLayout::Cell &cell) const;
    int slotOf(qint64 key) const;
    void put(char byte);
    void flush();

    const PrintTarget &m_target;
    const PrintOptions &m_options;
    EncodedDocument &m_document;
    CommandBytes m_commands;
    std::shared_ptr<const PageTable> m_pages;
    hazards::Rules m_rules;
    int m_firstPage = 0;
    int m_page = -1;
    int m_block = 0;
    int m_line = 0;
    TextStyle m_style;
    int m_styleKey = -1;
    bool m_isOwn = false;
    int m_borrowed = 0;         ///< dots that were fed already of what comes
    std::vector<qint64> m_own;  ///< keys by slot; -1: free
    /// On the page the bytes of characters up to the end of Cyrillic; 0: none was asked for yet.
    std::array<char, 0x500> m_known = {};
    std::array<char, 256> m_run = {};
    int m_runSize = 0;
};

std::unique_ptr<DocumentWriter> escPosWriter(const PrintTarget &target, const PrintOptions &options,
                                             EncodedDocument &document);
std::unique_ptr<DocumentWriter> starLineWriter(const PrintTarget &target,
                                               const PrintOptions &options,
                                               EncodedDocument &document);
std::unique_ptr<DocumentWriter> swecoinWriter(const PrintTarget &target,
                                              const PrintOptions &options,
                                              EncodedDocument &document);

/// How many of a command's units are so many dots as the printer rounds them; the nearest, if none
/// are so many.
int unitsOf(int dots, int unitsPerInch, int dotsPerInch);
/// Dots of units, as a printer rounds them.
int dotsOfUnits(int units, int unitsPerInch, int dotsPerInch);

}  // namespace printerslib::drivers
