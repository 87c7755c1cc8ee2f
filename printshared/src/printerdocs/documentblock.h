#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "printerdocs/etextalignment.h"
#include "printerdocs/monochromeimage.h"
#include "printerslib_export.h"

class SpecialCharacters;

/// One piece of a printable document: some lines of text with a format byte (ECharFormat) and a
/// font byte per character, or one image, one barcode or one QR code.
///
/// A font byte is the number of a font of the printer, counted from 0. In a line a character of
/// code 1 to 7 whose format byte lacks CharRawCode stands for a special symbol (SpecialCharacters).
///
/// The lists of a text block belong together: as many entries in `format`, `font` and `lineSpacing`
/// as in `text`. The setters don't enforce that; isText() tests it. A caller either passes whole
/// lists or sets the text first and then uses the forms of setFormat(), setFont() and
/// setLineSpacing() that take one value.
///
/// A plain value, of members that are implicitly shared; one object is used by one thread at a
/// time. No operation fails loudly; a block that isn't valid is skipped by its consumers.
class PRINTERSLIB_EXPORT DocumentBlock
{
public:
    /// Kind of a block. A number without a name is kept as it is and makes no valid block.
    enum EBlockType : int {
        BlockText = 0,
        BlockImage = 1,
        BlockBarcode = 2,
        BlockQrCode = 3,
    };

    /// Symbology of a barcode. The block hands any number on to the printer driver.
    enum EBarcodeType : int {
        BarcodeNone = 0,    ///< no symbology is set; the block isn't valid
        BarcodeBbCode = 7,  ///< what BBCode's element `barcode` asks for
    };

    /// A text block without lines, which isn't valid.
    DocumentBlock() = default;
    /// A default block that then reads the map with setMap().
    DocumentBlock(const QMap<QString, QVariant> &map);

    /// Kind of the block; consumers read what belongs to it.
    EBlockType type() const;
    void setType(const EBlockType &type);

    /// Symbology of a barcode block.
    EBarcodeType barCodeType() const;
    void setBarCodeType(const EBarcodeType &barCodeType);

    /// Text block: the printed lines. Barcode and QR code: one entry, the payload in Base64.
    QStringList text() const;
    void setText(const QStringList &text);

    /// One array per line, one format byte per character. An empty array stands for zero bytes, a
    /// shorter one goes on with its last byte.
    QList<QByteArray> format() const;
    void setFormat(const QList<QByteArray> &format);
    /// Gives every character of the present text this format.
    void setFormat(unsigned char value);

    /// One array per line, one font byte per character; short arrays count as in format().
    QList<QByteArray> font() const;
    void setFont(const QList<QByteArray> &font);
    /// Gives every character of the present text this font.
    void setFont(unsigned char value);

    /// Alignment of all lines.
    ETextAlignment alignment() const;
    void setAlignment(const ETextAlignment &alignment);

    /// One line spacing code per line, in the printer driver's meaning.
    QList<int> lineSpacing() const;
    void setLineSpacing(const QList<int> &lineSpacing);
    /// Gives every line of the present text this line spacing code.
    void setLineSpacing(int value);

    /// The picture of an image block. Setting it leaves the type as it is.
    MonochromeImage img() const;
    void setImg(const MonochromeImage &img);

    /// Whether this is a text block with at least one line and its lists in step.
    bool isText() const;
    /// Whether this is an image block with a valid image.
    bool isImage() const;
    /// Whether this is a barcode block with a payload, be it empty, and a symbology.
    bool isBarcode() const;
    /// Whether this is a QR code block with a payload, be it empty.
    bool isQrCode() const;
    /// Whether any of the four tests above holds.
    bool isValid() const;

    /// Whether this passes isText() and all its lines are blank. Intended: false for every other
    /// block, also for one without any content: clients skip blank text with it and must not skip
    /// a picture. Test: emptyMeansAllLinesBlank.
    bool isEmpty() const;

    /// Characters in all lines of a text block, tabs and special symbols included; 0 for any other.
    int symbolsCount() const;

    /// The payload of a QR code block; null without one.
    QByteArray qrCode() const;
    /// The payload of a barcode block; null without one.
    QByteArray barcode() const;
    /// Makes this a barcode block of this payload; the symbology stays.
    void setBarCode(const QByteArray &data);
    /// Makes this a barcode block of this payload and symbology.
    void setBarCode(const QByteArray &data, EBarcodeType type);
    /// Makes this a QR code block of this payload.
    void setQrCode(const QByteArray &data);

    /// The HTML font size of a character: its font, read as a signed byte, plus 1, doubled when the
    /// format has both CharDoubleWidth and CharDoubleHeight.
    int prepareFont(char format, char font) const;

    /// The lines laid out for a width in characters; an empty list unless isText(). Lines are
    /// padded by their alignment, and in a justified line every tab is widened. A line that fills
    /// the width or overflows it isn't cut; its tabs become blanks. A line that padding would make
    /// longer than 16 Mi characters is treated like one that fills the width.
    QStringList toStringList(int width);

    /// Unicode case change of the text. Intended: whatever the type, so it spoils the payload of a
    /// barcode or QR code; a receipt printed in one case has always had such codes, and clients
    /// compare its blocks. Test: textInFrontOfACodeKeepsItsCaseAndThePayloadIsFolded.
    void toUpper();
    /// The same to lower case.
    void toLower();

    /// Adds the lines of another block behind the own ones. False, with nothing changed, unless
    /// both pass isText() and have the same alignment. The cost is that of the lines added.
    bool append(const DocumentBlock &other);

    /// Puts 1 to 16 blanks in front of every line, with zero bytes for them; any other number does
    /// nothing.
    void setSpacesBefore(int spaces);

    /// A text block of empty lines. A count below 1, or above 16 Mi, gives a default block.
    static DocumentBlock emptyBlock(int count, ETextAlignment alignment, int lineSpacing);

    /// A text block in one font and format.
    /// @param spaces as for setSpacesBefore()
    static DocumentBlock createSimpleBlock(const QStringList &lines, ETextAlignment alignment,
                                           unsigned char font, unsigned char format,
                                           int lineSpacing, int spaces);
    /// A text block of the lines of a text, separated by "\n".
    /// @param font, format one byte per character, line breaks included; empty: all zero; shorter:
    ///                     the last byte goes on
    static DocumentBlock createSimpleBlock(const QString &text, ETextAlignment alignment,
                                           QByteArray font, QByteArray format, int lineSpacing,
                                           int spaces);

    /// The lines as HTML, as rows of a table or as "<pre>" sections, separated by line breaks;
    /// empty unless isText().
    /// Intended: text isn't escaped, as clients compare pages. A "<", with or without a ">", is
    /// markup: `<img src=x onerror=...` in a customer's name acts. For pages that anybody looks at
    /// there is printerslib::drivers::EscapedHtml. Test: textIsNotEscaped.
    /// @param rightAlign whether the second cell of a justified line is aligned right (table only)
    /// @param symbols    not read: every special symbol is the same picture, "tempimg" in the
    ///                   folder for temporary files. Nothing here writes it, and that folder is
    ///                   everybody's: the client puts another address there
    /// @param lineWidth  the width in characters to which a line with one tab is filled (not in a
    ///                   table); above 16 Mi nothing is filled
    QString toHtml(bool rightAlign, const SpecialCharacters &symbols, bool useTable,
                   int lineWidth) const;
    /// One line of the above, counted from 0; empty if there is no such line.
    QString toHtml(int line, bool rightAlign, const SpecialCharacters &symbols, bool useTable,
                   int lineWidth) const;
    /// A run of text, with a table cell around it if useTable.
    /// @param font, format         one byte per character; short ones count as in format()
    /// @param attributes, width    those of the cell; an empty width is left out
    /// @param lineSpacing, symbols not read
    QString toHtml(const QString &text, QByteArray font, QByteArray format,
                   const QString &attributes, int lineSpacing, const SpecialCharacters &symbols,
                   bool useTable, QString width) const;

    /// The map form: "type", and what a valid block of this type holds. A block that isn't valid
    /// keeps its type alone.
    QMap<QString, QVariant> toMap() const;
    /// Replaces the whole block by what the map says. What is missing or of a wrong kind reads as 0
    /// or empty, and the lists of a text block are cut to the shortest of them.
    void setMap(const QMap<QString, QVariant> &map);

    /// Compares all fields.
    bool operator==(const DocumentBlock &other) const;
    bool operator!=(const DocumentBlock &other) const;

private:
    QList<QByteArray> bytesForEveryCharacter(unsigned char value) const;
    void readTextMap(const QMap<QString, QVariant> &map);

    EBlockType m_type = BlockText;
    EBarcodeType m_barCodeType = BarcodeNone;
    QStringList m_text;
    QList<QByteArray> m_format;
    QList<QByteArray> m_font;
    ETextAlignment m_alignment = AlignLeft;
    QList<int> m_lineSpacing;
    MonochromeImage m_img;
};
