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
/// A plain value, implicitly shared; one object is used by one thread at a time. Nothing is checked
/// on the way in; consumers skip blocks that aren't valid.
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
    void toLower();

    /// The document as an HTML page, one table or a sequence of "<pre>" sections. Blocks other than
    /// text leave an empty line. See DocumentBlock::toHtml().
    QString toHtml(bool useTable, const SpecialCharacters &symbols) const;

    /// The map form, of values that pass through JSON unchanged.
    QMap<QString, QVariant> toMap() const;
    /// Replaces the whole document by what the map says; a missing number is 0. Intended: these
    /// don't come back as they were, and stored documents rely on it: a symbolsPerLine() of 1 to 32
    /// (read as 0), doInit() where the map has none (false, though a fresh document has true), all
    /// but the first added of several images of one code, and images of negative codes.
    void setMap(const QMap<QString, QVariant> &map);

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
