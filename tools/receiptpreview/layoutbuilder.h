#pragma once

#include <QByteArray>
#include <QSet>
#include <QSize>
#include <QString>
#include <QStringList>

#include "code.h"
#include "layout.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/specialcharacters.h"

class QTextCodec;

namespace receiptpreview {

/// One line of a text block.
struct TextLine
{
    QString text;
    QByteArray format;
    QByteArray font;
    ETextAlignment alignment = AlignLeft;
    int spacing = 0;
};

/// How a code is printed; lengths in dots.
struct CodeLook
{
    QString name;
    QSize module;  ///< without width if none fits the paper
    int quietModules = 0;
    int feed = 0;  ///< above and below
};

/// Puts the blocks of a document on the paper, one below the other.
class LayoutBuilder
{
public:
    LayoutBuilder(Layout &layout, const TextPrinterDocument &document);

    void build();

private:
    void addBlock(const DocumentBlock &block);
    void addText(const DocumentBlock &block);
    void addPicture(const DocumentBlock &block);
    void addBarcode(const DocumentBlock &block);
    void addQrCode(const DocumentBlock &block);
    void addCode(const Code &code, const CodeLook &look, const QByteArray &payload,
                 ETextAlignment alignment);
    void addCut();
    void addFault(const QString &what, const QString &fault, const QByteArray &payload);

    void addLine(const TextLine &line);
    /// How many cells of this width a line leaves free; below 1 it fills the paper or overflows it.
    int freeCells(const TextLine &line, int unit) const;
    void addTab(Cell cell, int unit, int freeCells);
    void warnOfBlankSymbol(int code, const FontInfo &font);
    void addCharacter(const TextLine &line, int index);
    void noteCharacter(const QString &character);
    void warnOfUnprintable();
    void addSymbol(const TextLine &line, int index);
    void addCell(Cell cell);
    void endRow();

    Cell cellOf(const TextLine &line, int index) const;
    const FontInfo &fontOf(const TextLine &line, int index) const;
    quint16 effectsOf(unsigned char format) const;
    char16_t printedCode(QChar character, unsigned char format) const;

    void addRaster(const Raster &raster);
    Row &addRow(Row::Kind kind, int height);
    int leftOf(int width, ETextAlignment alignment) const;
    void warn(const QString &warning);

    Layout &m_layout;
    const TextPrinterDocument &m_document;
    SpecialCharacters m_symbols;
    const QTextCodec *m_codePage;
    int m_block = 0;            ///< number of the block, from 1, for messages
    QSet<QString> m_noted;      ///< characters beyond ASCII that were met
    QStringList m_unprintable;  ///< those of them that the code page lacks, quoted

    /// The row being filled.
    int m_indent = 0;    ///< blank at both ends of the printed line, inside a frame
    int m_rowStart = 0;  ///< its first cell
    int m_next = 0;      ///< where the next cell goes, from the left of the printed line
    int m_emptyHeight = 0;
    int m_spacing = 0;
    bool m_isContinuation = false;
    bool m_isFramed = false;
};

}  // namespace receiptpreview
