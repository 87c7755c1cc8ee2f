#pragma once

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QString>
#include <QStringList>

#include "printerdocs/monochromeimage.h"
#include "printerslib_export.h"

class QXmlStreamReader;

/// The drawings of the special symbols, by character code, several sizes of one code side by side.
/// A code beyond a byte counts by its low 8 bits, read as a signed number.
///
/// The drawings come from a `.ssi` file, an XML document: "SpecialSymbolImages" holds "Font"
/// elements with the cell size in pixels ("Width", "Height"); a "Font" holds "Symbol" elements with
/// a character code ("Code"); a "Symbol" holds exactly Height "Line" elements of exactly Width
/// characters, "0" for an empty pixel and any other for a set one. Other elements are skipped, but
/// not inside a "Line".
///
/// A plain value, of a map that is implicitly shared; one object is used by one thread at a time.
class PRINTERSLIB_EXPORT SpecialCharacters : public QMultiMap<signed char, MonochromeImage>
{
public:
    /// An empty table.
    SpecialCharacters() = default;

    /// Replaces the table by the file's drawings. False if the file can't be opened, its root has
    /// another name, or a symbol has lines of a wrong number or length; symbols in front of the
    /// fault stay. What can't be opened and what isn't XML is logged as critical.
    /// False too, with an empty table and a critical log line, for a file of more than 16 MiB, one
    /// whose document type declaration has entities or attribute lists, and one with start tags in
    /// one another of more than 1,024 characters: its reader would take any time and memory.
    /// Intended: a fault in the XML ends the reading like the end of the file, with true, unless it
    /// strikes a symbol that lacks lines; the receipt then prints with the symbols that were read.
    bool load(const QString &fileName);

    /// Empties the table.
    void clear();

    /// Intended: empty, also after load(), which doesn't keep the name.
    QString fileName() const;

    /// The largest drawing of the code that fits a cell of this size in pixels; without one a blank
    /// image of the cell's size, made by MonochromeImage::createEmpty(). Drawings that aren't valid
    /// are passed over.
    MonochromeImage getImage(int code, int width, int height);

    /// The drawing of getImage() as a picture in memory, black on white. Intended, as viewers
    /// expect the picture like this: every group of 8 pixels comes out mirrored, and of a drawing
    /// with exactly its rows the last row stays white. A null picture for a cell without pixels and
    /// for one of more than 64 Mi pixels.
    QImage getPngImage(int code, int width, int height);

    /// Step of load(): reads the fonts of the root element at which the reader stands. False if the
    /// reader is null or stands at no start element, or a symbol is wrong.
    bool parseImages(QXmlStreamReader *reader);
    /// Step of load(): reads the symbols of the font at which the reader stands. False as
    /// parseImages(); symbols in front of the wrong one are added.
    bool parseFonts(QXmlStreamReader *reader);
    /// Step of load(): reads the symbol at which the reader stands and adds its drawing. False,
    /// with nothing added, if the reader is null or stands at no start element, a line isn't of
    /// `width` characters or there aren't `height` lines. A size of 0 that the lines have gives
    /// true and no drawing.
    bool parseSymbols(QXmlStreamReader *reader, int width, int height);
    /// Step of load(): reads the text of the line at which the reader stands. False, with `line`
    /// untouched, if the reader is null or stands at no start element; a fault in the XML gives
    /// true, and shows in the reader.
    bool parseLines(QXmlStreamReader *reader, QString &line);
    /// Step of load(): packs the first width characters of a line into bytes, the leftmost in the
    /// most significant bit. False, with the bytes untouched, if the line has fewer or width is
    /// below 1.
    bool strToData(const QString &line, int width, QByteArray &data);
    /// Step of load(): adds a drawing of these lines in front of older ones of the code. False,
    /// with nothing added, if height is below 1 or above the number of lines, or a line is short.
    bool createImage(int code, const QStringList &lines, int width, int height);

    /// Compares codes and drawings, in their order; not fileName().
    bool operator==(const SpecialCharacters &other) const;
    bool operator!=(const SpecialCharacters &other) const;

private:
    QString m_fileName;
};
