#pragma once

#include <QList>
#include <QObject>
#include <QPair>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <memory>

#include "printerdocs/checkblocktype.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/etextalignment.h"
#include "printerdocs/printerdocument.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib_export.h"

namespace templates {
class TemplateLines;
}

/// The template engine: owns one receipt template, a list of lines, and turns it together with a
/// PrinterDocument into plain text, HTML or a TextPrinterDocument.
///
/// The template is not changed by formatting; a formatter is given a template once and used any
/// number of times, by one thread at a time (formatters in different threads don't meet). No
/// mistake in a template is an error: an unknown tag stays as text, an unknown attribute prints
/// nothing.
///
/// Intended: a value that holds an attribute tag is expanded in its turn, with no limit. A value
/// that expands to its own tag therefore never comes to an end; it is for the client not to hand in
/// such a document, nor one whose values name other attributes in tags over and over: a chain of
/// doublings grows without bound. Test: valueHoldingATagIsExpanded. In expressions such a chain
/// ends: one to which the values add more than 1 Mi characters counts as one that can't be read.
class PRINTERSLIB_EXPORT PrinterDocumentFormatter : public QObject
{
    Q_OBJECT

public:
    /// The fiscal sections and their markers, in the order of CheckBlockType. Not to be used before
    /// the library's static construction has finished.
    static const QList<QPair<CheckBlockType, QString>> PARTS;

    /// A formatter without a template; the folder of special symbol files is the template folder of
    /// CheckTemplatesSettings. While none is set there, this reads the system's configuration file
    /// and creates the print service's folders; see CheckTemplatesSettings::checkTemplatesPath().
    /// @param leftMargin blanks put in front of every non-empty formatted line; below 1: none, more
    ///                   than 16 Mi count as 16 Mi
    /// @param parent     owns the formatter in the way of QObject; may be null
    PrinterDocumentFormatter(int leftMargin, QObject *parent);
    ~PrinterDocumentFormatter() override;

    /// @name Template
    /// @{

    /// Takes the text, split at line feeds, as the template. An empty text is one empty line.
    void setTemplate(const QString &text);
    /// The template's lines, without line ends.
    QStringList getTemplate() const;
    /// Reads the template from a file.
    /// @param codec name of the file's encoding as QTextCodec knows it, such as "UTF-8" or "cp866";
    ///              with an unknown or null name the file is read in the locale's encoding
    /// @return isValid(). A file that can't be opened gives a warning in the log and false, and the
    ///         old template stays; an empty file gives false and an empty template.
    bool loadTemplate(const QString &fileName, const char *codec);
    /// Whether there is at least one line; one empty line counts.
    bool isValid() const;

    /// Folder in which the files named by `<SPECSYMBOLS=...>` lines are looked up.
    QString specCharsPath() const;
    void setSpecCharsPath(const QString &path);

    /// Cuts the template at one marker, which may stand in any case in the template and must be
    /// upper case here. Intended: the line is cut where the marker stands in its upper-cased copy:
    /// further right than the marker itself, if letters in front of it are more in upper case ("ß"
    /// is "SS"). Test: splitAtOneMarker.
    /// @return the part in front of the marker, invalid if nothing stands there, and, if anything
    ///         stands behind it, the part behind; nothing for an empty template. The parts have
    ///         this formatter's margin and parent, but the default folder of special symbols. They
    ///         are owned by their pointers and are at the same time children of the parent, so the
    ///         pointers must be gone before the parent is destroyed.
    QList<QSharedPointer<PrinterDocumentFormatter>> splitByFiscalInfo(const QString &marker);

    /// Cuts the template at all markers of a list; clients pass PARTS.
    /// @param found set to true if any marker was found, else left alone: clear it before the call
    /// @return in the order of the text: (Unsplit, formatter) for each piece of text and
    ///         (type, null) for the place of each section. Ownership as in splitByFiscalInfo().
    QList<QPair<CheckBlockType, QSharedPointer<PrinterDocumentFormatter>>> splitByFiscalParts(
        bool &found, QList<QPair<CheckBlockType, QString>> parts);
    /// @}

    /// @name Attribute substitution
    /// @{

    /// The line with every attribute tag replaced by its value's text and with the groups of empty
    /// and zero values removed. Shorter tags are left for the line markup.
    QString processDocAttributes(const QString &line, const PrinterDocument &document) const;
    /// Cuts the next attribute tag out of the text.
    /// @param position in: where to look from; out: where the tag stood, or just behind one that is
    ///                 too short, or the end of the text
    /// @return what stood between the angle brackets; null if there was no tag or it is too short
    QString extractAttr(QString &text, int &position) const;
    /// Cuts what stands behind the last comma off the attribute; without a comma the format is
    /// empty.
    void extractFormat(QString &attribute, QString &format) const;
    /// The text of an attribute, or else of an arithmetic expression over the attributes; empty for
    /// a name that is neither. Writes warning lines to the default category on every call; they are
    /// not even made when its warnings are off.
    /// @param format how a number or a time is written, as extractFormat() gives it; only read
    QString nameToVal(const QString &name, const PrinterDocument &document, QString &format) const;
    /// Index of the "[" that encloses the given place, looking to the left from it; -1: none.
    int scanL(const QString &text, int from) const;
    /// Index of the "]" that encloses the given place, looking to the right from it; -1: none.
    int scanR(const QString &text, int from) const;
    /// Removes the innermost group around `position`, where `value` begins, if the value is empty,
    /// a number of at most 1e-12 in size, or "nan".
    void removeGroupIfZero(int position, QString &text, const QString &value) const;

    /// Decimal digits, padded with zeros to the format's length from its first "0" on, or to its
    /// whole length if it has none. The sign doesn't count.
    QString intToString(const QString &format, long long value) const;
    /// Number with as many decimals as the format has characters behind its "."; empty: "0.00". A
    /// format without "." rounds to a whole number; an "E" behind the "." gives six significant
    /// digits, nothing behind it six decimals.
    /// Intended: where decimals are counted out, the whole part passes through 32 bits: it prints
    /// as 0 if it doesn't fit, and a number between -1 and 0 loses its sign; whole numbers, "0."
    /// and "0.E" keep theirs. More than nine decimals are not counted out. What isn't finite prints
    /// as 0, and so does what 64 bits don't count in units of the last decimal. Test:
    /// wholePartPassesThrough32Bits.
    QString floatToString(const QString &format, double value) const;
    /// Qt date and time format in which "m" means month and "n" minute; empty: "dd.MM.yy hh:mm".
    QString dtToString(const QString &format, const QDateTime &value) const;
    /// As dtToString(); empty: "dd.MM.yy".
    QString dateToString(const QString &format, const QDate &value) const;
    /// As dtToString(); empty: "hh:mm".
    QString timeToString(const QString &format, const QTime &value) const;
    /// Replaces a name of the form "A+B+..." by the sum of these attributes or numbers.
    /// @return false, leaving the name alone, if it has no "+". What isn't numeric adds nothing;
    ///         Intended: neither do unsigned attributes. Test: summAddsOnlySignedAndRealNumbers.
    bool summAttributes(QString &name, const PrinterDocument &document, QString &format) const;
    /// @}

    /// @name Line markup
    /// @{

    /// Turns one line, whose attributes are filled in, into a block of one line: its plain text, a
    /// format byte and a font byte per character, alignment and spacing.
    /// @param format      in and out: ECharFormat bits that are on from earlier lines
    /// @param font        in and out: current font number, 0 to 3
    /// @param alignment   in: that of an empty line; out: that of this line, if it has text
    /// @param lineSpacing spacing of a line that has no spacing tag
    /// @return an invalid block for a line of nothing but tags; such a line changes `format` and
    ///         `font` all the same. Intended: several hits of one tag on a line, such as two
    ///         brackets, leave more bytes than characters; clients compare these arrays.
    ///         Test: repeatedTagsLeaveSurplusBytes.
    DocumentBlock formatPrintStr(const QString &line, unsigned char &format, unsigned char &font,
                                 ETextAlignment &alignment, int lineSpacing) const;
    /// @}

    /// @name Stages of the pipeline
    /// @{

    /// The template's lines with all of the document's values in them, ready for the line markup.
    /// No template gives an empty list; one whose lines all vanish gives a blank line.
    QStringList prepareDocument(const PrinterDocument &document) const;
    /// Puts the translated copy mark behind the first line with `<DOCNO>` if the document is a
    /// copy.
    void addCopyInfo(QStringList &lines, const PrinterDocument &document) const;
    /// Replaces each `<ENTRIES>` by the document's entries, one line each.
    /// Intended: the first line put in isn't looked at again, so entries of one line are put in
    /// place of the first tag of a line only; and entries that hold the tag themselves, which
    /// would never come to an end, are unpacked once. The line is cut where the tag stands in its
    /// upper-cased copy, as in splitByFiscalInfo(). Tests: entriesAreUnpacked,
    /// entryHoldingTheTagIsUnpackedOnce.
    void unpackEntries(QStringList &lines, const PrinterDocument &document) const;
    /// Loads the special symbols named by the last `<SPECSYMBOLS=...>` line, and removes all such
    /// lines. The set stays loaded until another is. A missing file is passed over in silence.
    void loadSpecSymbols(QStringList &lines) const;
    /// Removes what stands between `<X:>` and `<:X>`, over line ends too, or only the two tags.
    /// Intended: no lines become one blank line. Test: noLinesAreOneBlankLine.
    void removeXParts(QStringList &lines, bool remove) const;
    /// Empties a line that holds `<X>`, or removes only the tag.
    void removeXParts(QString &line, bool remove) const;
    /// @}

    /// @name Output
    /// None of these fails. Case is folded by the characters mode of the process's printer
    /// settings.
    /// @{

    /// Attribute substitution alone, on every line of the template.
    QStringList toFormattedText(const PrinterDocument &document) const;
    /// The receipt as lines of text.
    /// @param width characters per line. A longer line is not cut; a blank one is as many blanks,
    ///              an empty text below 1; more than 16 Mi count as 16 Mi.
    QStringList toPlainText(const PrinterDocument &document, int width) const;
    /// The receipt as an HTML fragment. Text isn't escaped, as in all HTML here: see
    /// DocumentBlock::toHtml().
    /// @param rightAlign handed on to DocumentBlock::toHtml()
    QString toHtml(const PrinterDocument &document, bool rightAlign) const;
    /// The receipt as a whole HTML document.
    QString toHtmlDocument(const PrinterDocument &document, bool rightAlign) const;
    /// The receipt as blocks for a printer driver; `<QR>` makes a QR code of the rest of its line.
    TextPrinterDocument toTextPrinterDocument(const PrinterDocument &document) const;

    /// The same for a text without attributes: only the line markup is read.
    QStringList plainTextToFormattedPlainText(const QString &text, int width) const;
    /// The same as an HTML fragment.
    QString plainTextToHtml(const QString &text, bool rightAlign) const;
    /// The same as a whole HTML document.
    QString plainTextToHtmlDocument(const QString &text, bool rightAlign) const;
    /// The same as blocks for a printer driver.
    TextPrinterDocument plainTextToTextPrinterDocument(const QString &text) const;
    /// @}

private:
    PrinterDocumentFormatter(const PrinterDocumentFormatter &model, const QStringList &lines);

    std::unique_ptr<templates::TemplateLines> m_templateLines;
    QString m_specCharsPath;
    int m_leftMargin;
    mutable SpecialCharacters m_specialCharacters;
};
