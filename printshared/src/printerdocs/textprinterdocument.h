#pragma once

#include <QFlags>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "printerdocs/documentblock.h"
#include "printerdocs/eprinterticketaction.h"
#include "printerdocs/monochromeimage.h"
#include "printerslib_export.h"
#include "settings/epaperloopflag.h"

/// A print job: blocks in print order, the images of the special symbols in their text, and what
/// the printer is to do with the ticket before and after printing.
///
/// A plain value, of members that are implicitly shared; one object is used by one thread at a
/// time. Nothing is checked on the way in; consumers skip blocks that aren't valid.
class PRINTERSLIB_EXPORT TextPrinterDocument
{
public:
    /// A document without blocks that asks for the printer's initialisation.
    TextPrinterDocument() = default;

    /// The content, in print order.
    QList<DocumentBlock> blocks() const;
    void setBlocks(const QList<DocumentBlock> &blocks);
    /// Adds a block behind the last one.
    void appendBlock(const DocumentBlock &block);
    /// Adds a block before the first one.
    void prependBlock(const DocumentBlock &block);

    /// Images of special symbols by character code, several sizes of one code included.
    QMultiMap<signed char, MonochromeImage> charImages() const;
    void setCharImages(const QMultiMap<signed char, MonochromeImage> &charImages);

    /// Action on the previous ticket.
    QFlags<EPrinterTicketAction> prevTicketAction() const;
    void setPrevTicketAction(const QFlags<EPrinterTicketAction> &action);

    /// Action on this ticket.
    QFlags<EPrinterTicketAction> currentTicketAction() const;
    void setCurrentTicketAction(const QFlags<EPrinterTicketAction> &action);

    /// Timeout of the ticket's retraction in the driver's unit; 0: not set.
    int retractionTimeout() const;
    void setRetractionTimeout(const int &timeout);

    /// Behaviour of the paper loop.
    QFlags<EPaperLoopFlag> loopPolicy() const;
    void setLoopPolicy(const QFlags<EPaperLoopFlag> &policy);

    /// Whether the driver is to initialise the printer for this document.
    bool doInit() const;
    void setDoInit(bool doInit);

    /// Characters per line that the document was laid out for; 0: not set.
    int symbolsPerLine() const;
    void setSymbolsPerLine(const int &symbols);

    /// Estimate of the document's length: the characters of all text blocks and a fifth more,
    /// rounded down. Intended: the margin belongs to the estimate that clients work with.
    int symbolsCount() const;

    /// The text blocks laid out for 80 characters. Intended: 80 whatever symbolsPerLine() says;
    /// journals are kept in this width.
    QStringList toStringList() const;

    /// Unicode case change in every block; see DocumentBlock::toUpper().
    void toUpper();
    /// The same to lower case.
    void toLower();

    /// The document as an HTML page, one table or a sequence of "<pre>" sections. Blocks other than
    /// text leave an empty line. Text isn't escaped: see DocumentBlock::toHtml().
    QString toHtml(bool useTable, const SpecialCharacters &symbols) const;

    /// The map form, of values that pass through JSON unchanged.
    QMap<QString, QVariant> toMap() const;
    /// Replaces the whole document by what the map says; a missing number is 0. Intended: these
    /// don't come back as they were, and stored documents rely on it: a symbolsPerLine() of 32 or
    /// less and a retractionTimeout() below 0 (both read as 0), doInit() where the map has none
    /// (false, though a fresh document has true), what a block that isn't valid holds (its type
    /// stays), what a valid block holds beside that which its type names: of an image, barcode or
    /// QR code block so its alignment, formats, fonts and line spacings, an alignment beyond 3
    /// (read as the remainder by 4), all but the first added of several images of one code, and
    /// images of negative codes. So a caller that stores documents compares what it loaded with
    /// what this operation makes of the stored document's toMap().
    void setMap(const QMap<QString, QVariant> &map);

    /// @name Document files
    /// A document in a file `path` is a set of four: `path` and `path`.bak hold the map form as
    /// compact JSON, and beside each stands what the program sha1sum says of it, in `path`.sha1 and
    /// `path`.bak.sha1. A power cut at any moment of a save leaves the old or the new document to
    /// load, provided that both copies were good when the save began. Nothing repairs a broken copy
    /// but the next save that runs to its end, or "receipt document repair".
    ///
    /// `path` is to be absolute: sha1sum runs in the file's own folder and gets the path as it is
    /// given here, so a relative one with a folder in it names another file there, and one that
    /// begins with "-" is an option to it. It must not hold a backslash, a line feed or a carriage
    /// return either, as sha1sum then writes its line in another form. All of these are saved with
    /// true, and not found good by the load. See tst_textprinterdocument_file,
    /// pathsThatTheChecksumProgramTakesOtherwiseDontLoad.
    ///
    /// All calls block, and nothing is locked: the caller keeps two savers of one path apart.
    /// @{

    /// Writes both copies, and forces them to the disk one after the other with "sync". A save
    /// takes as long as the machine's disks need, and up to 60 seconds per copy where sha1sum
    /// hangs. Gives false for an empty path, having touched nothing, and if a copy couldn't be
    /// opened; that is logged, and the other copy is written all the same.
    /// Intended: true doesn't mean that the document can be loaded. A full disk or a missing
    /// sha1sum shows at the load only, so a caller that must know loads the file into a second
    /// document. See tst_textprinterdocument_file, saveOnAFullDiskIsTrueAndLoadsNothing.
    bool saveToFile(const QString &path) const;

    /// Loads the first copy whose checksum is right, `path` before its backup. Gives false, with
    /// the document unchanged, for an empty path and if no copy is right; and false, with the
    /// document as setMap() of an empty map leaves it, if that copy isn't JSON.
    /// Intended: a copy with the right checksum that isn't JSON doesn't lead to the other one, and
    /// nothing is repaired or logged. See tst_textprinterdocument_file,
    /// checkedPrimaryThatIsNoJsonEmptiesTheDocument.
    bool loadFromFile(const QString &path);

    /// Removes whichever of the four files there are, and waits until that is on the disk.
    void removeFile(const QString &path) const;
    /// @}

    /// Compares all fields; of several images of one code the order counts.
    bool operator==(const TextPrinterDocument &other) const;
    bool operator!=(const TextPrinterDocument &other) const;

private:
    QList<DocumentBlock> m_blocks;
    QMultiMap<signed char, MonochromeImage> m_charImages;
    QFlags<EPrinterTicketAction> m_prevTicketAction;
    QFlags<EPrinterTicketAction> m_currentTicketAction;
    int m_retractionTimeout = 0;
    QFlags<EPaperLoopFlag> m_loopPolicy;
    bool m_doInit = true;
    int m_symbolsPerLine = 0;
};
