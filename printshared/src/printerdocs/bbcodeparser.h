#pragma once

#include <QByteArray>
#include <QChar>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

#include "bbcpp/bbdocument.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/etextalignment.h"
#include "printerdocs/monochromeimage.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib_export.h"

/// Turns a BBCode text into the blocks of a printable document.
///
/// The tags are switches that act where they stand; nesting is never checked. Names of tags, keys
/// and values are read without regard to case:
///
/// | Tag                               | Meaning                                                 |
/// |-----------------------------------|---------------------------------------------------------|
/// | `left`, `center`, `right`         | alignment of the block that ends at the closing tag     |
/// | `b`, `i`, `u`                     | bold, italic, underlined                                |
/// | `size=`small, normal, middle, large | font 0, 1, 2, 3; the closing tag goes back to 0       |
/// | `hr`, `hr=dashed`, `hr=dotted`    | a line over the receipt's width, drawn when closed      |
/// | `img name=`                       | the first picture whose file name begins so             |
/// | `column width= align=`            | pads every line to a width                              |
/// | `field width= align= zerofill=`   | pads a value; leading zeros                             |
/// | `barcode`, `qrcode`               | the text between the tags as a code                     |
///
/// Nothing fails: a bad tag is text, an unknown tag or key logs a warning and does nothing else,
/// and a missing or unreadable picture leaves an empty block. The text isn't wrapped.
///
/// The picture is searched in the folder imagesPath(). Its name is read in lower case, and small
/// and capital letters of the file's name count as the same; `*` and `?` in it are wildcards. Of
/// the files whose names begin so the first by name is taken, and no other is tried if that one
/// can't be read. A picture higher than 384 dots is scaled to a width of 384. One of more than 128
/// Mi pixels, as stored or as scaled, counts as unreadable.
///
/// Blanks and zeros that columns and fields add are limited to 16 Mi characters in all of one text.
/// A piece of text between two tags whose padding would go beyond is left without it.
///
/// A parser may be used again. Intended: what a tag left open has switched on (format, font, kind
/// of code, field, column, line, picture) goes on in the next text; clients that print a text in
/// pieces rely on it (test whatIsLeftOpenGoesOn). The blocks, the alignment and the gathered text
/// don't survive. A parser belongs to one thread.
class PRINTERSLIB_EXPORT BbCodeParser : public QObject
{
    Q_OBJECT

public:
    /// A parser without blocks. @param parent owns the parser in the way of QObject; may be null
    explicit BbCodeParser(QObject *parent = nullptr);
    ~BbCodeParser() override;

    /// Replaces the blocks by those of the text.
    void parseText(QString text);

    /// The blocks of the last text.
    QList<DocumentBlock> blocks() const;
    /// A document of these blocks: current ticket action 5, previous ticket action 4, loop policy
    /// 0, and without initialising the printer. What the actions' bits mean is the drivers' matter.
    TextPrinterDocument document() const;

    /// Characters per line of the receipt, 32 at first: the length of the line that `hr` draws.
    /// Intended: it is also handed to the blocks as their count of leading blanks, where only 1 to
    /// 16 has an effect; drivers of narrow displays rely on it (test
    /// narrowReceiptIndentsItsBlocks).
    unsigned char symbolsPerLine() const;
    void setSymbolsPerLine(const unsigned char &symbolsPerLine);

    /// Directory of the pictures; empty, as at first: the current directory.
    QString imagesPath() const;
    void setImagesPath(const QString &imagesPath);

private:
    struct FieldRecord
    {
        quint8 width = 1;
        ETextAlignment align = AlignLeft;
        quint8 zerofill = 0;
    };
    struct ColumnRecord
    {
        quint8 width = 1;
        ETextAlignment align = AlignLeft;
    };
    struct Tag;
    struct Parameter;
    class TextReader;
    static const Tag _tags[];
    static const Parameter _parameters[];

    static const Tag *findTag(const QString &name);

    void parseChildren(const bbcpp::BBNode &node);
    void parseNode(const bbcpp::BBNodePtr &node);
    void openElement(bbcpp::BBElementPtr element);
    void closeElement(bbcpp::BBElementPtr element);
    void processParams(bbcpp::BBElementPtr element);
    void loadImage(const QString &name);

    void addText(const QString &content);
    QString laidOut(const QString &text);
    QString laidOutInField(const QString &text);
    bool countPadding(qint64 characters);
    DocumentBlock takeText();
    DocumentBlock linesInPresentStyle(const QStringList &lines) const;
    void flush();

    void openCenter();
    void openLeft();
    void openRight();
    void openBold();
    void openItalic();
    void openUnderline();
    void openHr();
    void openImg();
    void openColumn();
    void openBarcode();
    void openQrCode();
    void openField();

    void closeAlignment();
    void closeBold();
    void closeItalic();
    void closeUnderline();
    void closeSize();
    void closeHr();
    void closeImg();
    void closeColumn();
    void closeBarcode();
    void closeQrCode();
    void closeField();
    void closeCode(DocumentBlock::EBlockType tagType);

    void setSize(const QString &value);
    void setHr(const QString &value);
    void setWidth(const QString &value);
    void setAlign(const QString &value);
    void setZerofill(const QString &value);

    std::unique_ptr<FieldRecord> m_field;
    std::unique_ptr<ColumnRecord> m_column;
    std::unique_ptr<QChar> m_hr;
    std::unique_ptr<MonochromeImage> m_image;
    QString m_text;
    QByteArray m_fonts;
    QByteArray m_formats;
    unsigned char m_symbolsPerLine = 32;
    unsigned char m_font = 0;
    unsigned char m_format = 0;
    ETextAlignment m_alignment = AlignLeft;
    DocumentBlock::EBlockType m_blockType = DocumentBlock::BlockText;
    DocumentBlock::EBarcodeType m_barcodeType = DocumentBlock::BarcodeNone;
    QList<DocumentBlock> m_blocks;
    QString m_imagesPath;
    qint64 m_padding = 0;
};
