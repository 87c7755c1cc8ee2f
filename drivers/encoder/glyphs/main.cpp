// Draws the characters of DejaVu Sans Mono in the cells of the models: a file for each size of
// cell, one that tells which characters these are, and the resource file that names them all. Run
// when the library is built. The output depends on nothing but the font and FreeType.
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSize>
#include <QVector>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "encoder/glyphs_p.h"

namespace {

using printerslib::drivers::glyphs::cells;

constexpr FT_Pos pixel = 64;  // FreeType's unit of lengths is a part of a pixel

[[noreturn]] void fail(const QString &text)
{
    std::fprintf(stderr, "glyph-bitmaps: %s\n", qPrintable(text));
    std::exit(1);
}

// The highest and the lowest of what receipts are full of.
constexpr char16_t extremes[] =
    u"\u00C5\u00C9\u00DC\u0160\u017B\u0401\u0419_gjpqy|{}()[]@$,;"
    u"\u0429\u0426\u0414\u0440\u0443\u0444";

/// Lines, blocks and pieces of brackets: they join the same of the next cell, and fill their own
/// from edge to edge.
bool isJoined(char16_t character)
{
    return (character >= 0x2500 && character <= 0x259F) ||
           (character >= 0x239B && character <= 0x23B3) || character == 0x2320 ||
           character == 0x2321;
}

/// What has a drawing: no control characters, no halves of characters, nothing private.
bool isDrawn(char16_t character)
{
    return character >= 0x20 && (character < 0x7F || character >= 0xA0) &&
           (character < 0xD800 || character >= 0xF900) && character < 0xFFFE;
}

/// Dots of a cell, in rows of whole bytes.
class Bitmap
{
public:
    explicit Bitmap(QSize cell)
        : m_cell(cell),
          m_bytesPerRow((cell.width() + 7) / 8),
          m_rows(m_bytesPerRow * cell.height(), 0)
    {}

    QByteArray rows() const { return m_rows; }

    void burn(int x, int y)
    {
        const int at = y * m_bytesPerRow + x / 8;
        m_rows[at] = char(static_cast<unsigned char>(m_rows.at(at)) | 0x80U >> (x % 8));
    }

    void draw(FT_Library library, FT_Outline &outline)
    {
        FT_Bitmap target = {};
        target.rows = unsigned(m_cell.height());
        target.width = unsigned(m_cell.width());
        target.pitch = m_bytesPerRow;
        target.buffer = reinterpret_cast<unsigned char *>(m_rows.data());
        target.pixel_mode = FT_PIXEL_MODE_MONO;
        FT_Outline_Get_Bitmap(library, &outline, &target);
    }

    /// What stands for a character without a drawing.
    void drawBox(int top, int foot)
    {
        const int right = m_cell.width() - 2;
        for (int x = 1; x <= right; ++x) {
            burn(x, top);
            burn(x, foot);
        }
        for (int y = top; y <= foot; ++y) {
            burn(1, y);
            burn(right, y);
        }
    }

private:
    const QSize m_cell;
    const int m_bytesPerRow;
    QByteArray m_rows;
};

FT_BBox boxOf(const FT_Outline &outline)
{
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    return box;
}

/// Dots that a drawing is wide.
int widthOf(const FT_Outline &outline)
{
    const FT_BBox box = boxOf(outline);
    const FT_Pos first = (box.xMin + pixel / 2) / pixel;
    return int((box.xMax + pixel / 2) / pixel - first);
}

/// The font in cells of one size.
class CellFont
{
public:
    CellFont(FT_Library library, FT_Face face, QSize cell);

    QByteArray box() const;
    QByteArray drawing(char16_t character) const;

private:
    bool setHeight(int size);
    void setWidth(int size) const;
    void load(char16_t character) const;
    void loadFitting(char16_t character) const;
    void fitExactly(FT_Outline &outline) const;
    void fitHinted(FT_Outline &outline) const;

    const FT_Library m_library;
    const FT_Face m_face;
    const QSize m_cell;
    int m_width = 0;      ///< of the font
    int m_height = 0;     ///< of the font
    int m_aboveBase = 0;  ///< rows of the cell above the base line
};

CellFont::CellFont(FT_Library library, FT_Face face, QSize cell)
    : m_library(library), m_face(face), m_cell(cell)
{
    if (face->units_per_EM == 0 || face->max_advance_width <= 0)
        fail(QStringLiteral("the font has no outlines"));
    // A little less than the cell is wide is better than thick lines.
    m_width = qRound(cell.width() * double(face->units_per_EM) / face->max_advance_width - 0.2);
    // Hints are made for whole sizes, which may make letters higher than the font says.
    int height = cell.height();
    while (height > 1 && !setHeight(height))
        --height;
}

/// Whether all is no higher then than the cell.
bool CellFont::setHeight(int size)
{
    m_height = size;
    setWidth(m_width);
    FT_Pos top = 0;
    FT_Pos foot = 0;
    for (const char16_t letter : extremes) {
        load(letter);
        const FT_BBox box = boxOf(m_face->glyph->outline);
        top = std::max(top, box.yMax);
        foot = std::min(foot, box.yMin);
    }
    const int above = int((top + pixel / 2) / pixel);
    const int below = int((pixel / 2 - foot) / pixel);
    // What is left over goes above, as there is least air.
    m_aboveBase = m_cell.height() - below;
    return above <= m_aboveBase;
}

QByteArray CellFont::box() const
{
    Bitmap bitmap(m_cell);
    bitmap.drawBox(m_cell.height() / 8, m_aboveBase - 1);
    return bitmap.rows();
}

QByteArray CellFont::drawing(char16_t character) const
{
    loadFitting(character);
    FT_Outline &outline = m_face->glyph->outline;
    if (isJoined(character))
        fitExactly(outline);
    else
        fitHinted(outline);
    Bitmap bitmap(m_cell);
    bitmap.draw(m_library, outline);
    return bitmap.rows();
}

void CellFont::setWidth(int size) const
{
    if (FT_Set_Pixel_Sizes(m_face, FT_UInt(size), FT_UInt(m_height)) != 0)
        fail(QStringLiteral("the font has no outlines"));
}

void CellFont::load(char16_t character) const
{
    const FT_Int32 how = isJoined(character) ? FT_LOAD_NO_SCALE : FT_LOAD_TARGET_MONO;
    if (FT_Load_Char(m_face, character, how) != 0)
        fail(QStringLiteral("U+%1 can't be read").arg(uint(character), 4, 16, QLatin1Char('0')));
}

/// Hints may make a letter of many strokes wider than its cell.
void CellFont::loadFitting(char16_t character) const
{
    for (int width = m_width; width > m_width / 2; --width) {
        setWidth(width);
        load(character);
        if (isJoined(character) || widthOf(m_face->glyph->outline) <= m_cell.width())
            break;
    }
    setWidth(m_width);
}

/// From the font's own units to the cell.
void CellFont::fitExactly(FT_Outline &outline) const
{
    const FT_Fixed xScale = FT_DivFix(m_cell.width() * pixel, FT_Long(m_face->max_advance_width));
    const FT_Fixed yScale =
        FT_DivFix(m_cell.height() * pixel, FT_Long(m_face->ascender - m_face->descender));
    const FT_Matrix scale = {xScale, 0, 0, yScale};
    FT_Outline_Transform(&outline, &scale);
    FT_Outline_Translate(&outline, 0, FT_MulFix(-m_face->descender, yScale));
}

/// Moved by whole dots, so that what the hints gave stays. Marks that belong above the character
/// before stand in a cell of their own, and what is higher or lower than the letters is moved into
/// the cell, its head first.
void CellFont::fitHinted(FT_Outline &outline) const
{
    const FT_BBox box = boxOf(outline);
    const FT_Pos width = m_cell.width() * pixel;
    FT_Pos aside = (width - m_face->glyph->advance.x) / 2;
    if (box.xMax + aside <= 0 || box.xMin + aside >= width)
        aside = (width - box.xMax - box.xMin) / 2;
    aside = std::min(aside, width - box.xMax);
    aside = std::max(aside, -box.xMin);
    FT_Pos base = (m_cell.height() - m_aboveBase) * pixel;
    base = std::max(base, -box.yMin);
    base = std::min(base, m_cell.height() * pixel - box.yMax);
    FT_Outline_Translate(&outline, aside & -pixel, base & -pixel);
}

QVector<char16_t> charactersOf(FT_Face face)
{
    QVector<char16_t> characters;
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0 && code < 0x10000;
         code = FT_Get_Next_Char(face, code, &glyph)) {
        if (isDrawn(char16_t(code)))
            characters.append(char16_t(code));
    }
    return characters;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        fail(QStringLiteral("%1: %2").arg(path, file.errorString()));
}

void appendWord(QByteArray &bytes, int value)
{
    bytes.append(char(value & 0xFF));
    bytes.append(char(value >> 8));
}

/// First and number of each run of characters that follow each other, as words, low byte first.
QByteArray runsOf(const QVector<char16_t> &characters)
{
    QByteArray runs;
    for (int first = 0; first < characters.size();) {
        int end = first + 1;
        while (end < characters.size() && characters.at(end) == characters.at(end - 1) + 1)
            ++end;
        appendWord(runs, characters.at(first));
        appendWord(runs, end - first);
        first = end;
    }
    return runs;
}

QByteArray drawingsOf(const CellFont &font, const QVector<char16_t> &characters)
{
    QByteArray drawings = font.box();
    for (const char16_t character : characters)
        drawings.append(font.drawing(character));
    return drawings;
}

}  // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        fail(QStringLiteral("usage: glyph-bitmaps FONT FOLDER"));
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    FT_Init_FreeType(&library);
    if (FT_New_Face(library, QFile::encodeName(arguments.at(1)).constData(), 0, &face) != 0)
        fail(QStringLiteral("%1 can't be read as a font; DejaVuSansMono.ttf belongs to the Debian "
                            "package fonts-dejavu-core")
                 .arg(arguments.at(1)));
    const QVector<char16_t> characters = charactersOf(face);
    const QDir folder(arguments.at(2));
    const auto writeFile = [&folder](const QString &name, const QByteArray &bytes) {
        write(folder.filePath(name), bytes);
    };
    writeFile(QStringLiteral("characters"), runsOf(characters));
    QByteArray names = "<file>characters</file>";
    for (const QSize cell : cells) {
        const QString name = QStringLiteral("%1x%2").arg(cell.width()).arg(cell.height());
        writeFile(name, drawingsOf(CellFont(library, face, cell), characters));
        names += "<file>" + name.toLatin1() + "</file>";
    }
    writeFile(
        QStringLiteral("glyphs.qrc"),
        "<RCC><qresource prefix=\"/printerslib/drivers/glyphs\">" + names + "</qresource></RCC>\n");
    FT_Done_FreeType(library);
    return 0;
}
