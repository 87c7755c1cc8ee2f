// Puts the rows of the dialects into a page as tables, in place of what stands between
// "<!-- commands: ESC/POS -->" and "<!-- end -->". With --check nothing is written, and the status
// is 1 if the page isn't up to date.
#include <QFile>
#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <iterator>

#include "commandsets/commandrows_p.h"
#include "commandsets/commandtext_p.h"

using namespace printerslib::drivers;

namespace {

struct DialectSection
{
    const char *name;
    CommandRows (*rows)();
};

constexpr DialectSection dialectSections[] = {
    {"ESC/POS", escPosRows},
    {"Star Line Mode", starLineRows},
    {"Swecoin", swecoinRows},
};

// In the order of Vendor.
constexpr const char *vendorNames[] = {"", "Epson", "Custom", "Citizen", "Star", "Swecoin"};

struct DataText
{
    PayloadRule rule;
    const char *text;
};

// In the order of PayloadRule.
constexpr DataText dataTexts[] = {
    {PayloadRule::None, ""},
    {PayloadRule::NulTerminated, "data up to 00"},
    {PayloadRule::RsTerminated, "data up to 1E"},
    {PayloadRule::DecimalCounted, "a number in digits, 00, so many bytes"},
    {PayloadRule::TabStops, "rising numbers, 32 at most, up to 00"},
    {PayloadRule::FiveSemicolons, "five numbers, a semicolon behind each"},
    {PayloadRule::LengthByte, "data"},
    {PayloadRule::LengthWord, "data"},
    {PayloadRule::LengthWordHighFirst, "data"},
    {PayloadRule::LengthDouble, "data"},
    {PayloadRule::RasterWords, "rows of x bytes, y of them"},
    {PayloadRule::ColumnsOfByte, "columns of 1 byte"},
    {PayloadRule::ColumnsOf3Bytes, "columns of 3 bytes"},
    {PayloadRule::ColumnsByMode, "n columns of 1 byte, for m = 32 and 33 of 3"},
    {PayloadRule::RowsOf24, "24 rows of n1 bytes"},
    {PayloadRule::EightDotCells, "8 bytes for each of x * y"},
    {PayloadRule::NvPictures, "n pictures: xL xH yL yH and 8 bytes for each of x * y"},
    {PayloadRule::UserCharacters, "for each character its columns and y bytes for each of these"},
    {PayloadRule::QrParts, "a parts: a type, nL nH and n bytes"},
    {PayloadRule::Bitmap, "a bitmap file"},
    {PayloadRule::Bytes48, "48 bytes"},
    {PayloadRule::Bytes72, "72 bytes"},
};
static_assert(std::size(dataTexts) == static_cast<std::size_t>(PayloadRule::Bytes72) + 1);

constexpr bool areInOrder()
{
    for (std::size_t i = 0; i < std::size(dataTexts); ++i) {
        if (static_cast<std::size_t>(dataTexts[i].rule) != i)
            return false;
    }
    return true;
}
static_assert(areInOrder());

/// In a table a bar ends a cell, also within code.
QString code(QString text)
{
    return QLatin1Char('`') + text.replace(QLatin1Char('|'), QLatin1String("\\|")) +
           QLatin1Char('`');
}

QString hexOf(const CommandRow &row)
{
    const QByteArray bytes(row.introducer, row.introducerSize);
    return QString::fromLatin1(bytes.toHex(' ')).toUpper();
}

QString operandsText(const CommandRow &row)
{
    QStringList names =
        QString::fromLatin1(row.operands).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (int i = 0; i < row.selectorSize; ++i)
        names[row.selectorAt + i] +=
            QStringLiteral("=%1").arg(static_cast<unsigned char>(row.selector[i]));
    const QString data = QString::fromLatin1(dataTexts[static_cast<int>(row.payload)].text);
    QStringList parts;
    if (!names.isEmpty())
        parts.append(code(names.join(QLatin1Char(' '))));
    if (!data.isEmpty())
        parts.append(data);
    return parts.join(QLatin1String(", "));
}

QString meaningText(const CommandRow &row)
{
    QString text = QString::fromLatin1(row.meaning);
    if ((row.traits & CommandRow::InRasterMode) != 0)
        text += QLatin1String("; in the raster mode alone");
    if ((row.traits & CommandRow::ActsAtOnce) != 0)
        text += QLatin1String("; at once, in data too");
    return text;
}

QStringList sourcesOf(const CommandRows &rows)
{
    QStringList sources;
    for (const CommandRow *row = rows.first; row != rows.end; ++row) {
        const QString source = QString::fromLatin1(row->source);
        if (!sources.contains(source))
            sources.append(source);
    }
    return sources;
}

QString tableOf(const CommandRows &rows)
{
    const QStringList sources = sourcesOf(rows);
    QString table = QStringLiteral(
        "| Command | Bytes | Operands and data | Does | Of | Manual "
        "|\n|---|---|---|---|---|---|\n");
    for (const CommandRow *row = rows.first; row != rows.end; ++row) {
        const QStringList cells{code(QString::fromLatin1(row->mnemonic)),
                                hexOf(*row),
                                operandsText(*row),
                                meaningText(*row),
                                QString::fromLatin1(vendorNames[static_cast<int>(row->vendor)]),
                                QString::number(sources.indexOf(QLatin1String(row->source)) + 1)};
        table += QLatin1String("| ") + cells.join(QLatin1String(" | ")) + QLatin1String(" |\n");
    }
    table += QLatin1String("\nManuals:\n\n");
    for (int i = 0; i < sources.size(); ++i)
        table += QStringLiteral("%1. %2\n").arg(i + 1).arg(sources.at(i));
    return table;
}

/// The page with its tables made anew; empty if a mark is missing.
QString refreshed(const QString &page)
{
    const QString end = QStringLiteral("<!-- end -->");
    QString made = page;
    for (const DialectSection &section : dialectSections) {
        const QString mark =
            QStringLiteral("<!-- commands: %1 -->\n").arg(QLatin1String(section.name));
        const int from = made.indexOf(mark);
        const int to = made.indexOf(end, from);
        if (from < 0 || to < 0)
            return {};
        const int begin = from + mark.size();
        made.replace(begin, to - begin,
                     QLatin1Char('\n') + tableOf(section.rows()) + QLatin1Char('\n'));
    }
    return made;
}

int fail(const char *text, const QString &path)
{
    std::fprintf(stderr, "command-tables: %s: %s\n", qPrintable(path), text);
    return 1;
}

}  // namespace

int main(int argumentCount, char *arguments[])
{
    const bool isCheck = argumentCount == 3 && qstrcmp(arguments[1], "--check") == 0;
    if (argumentCount != 2 && !isCheck) {
        std::fprintf(stderr, "Usage: command-tables [--check] PAGE\n");
        return 2;
    }
    const QString path = QString::fromLocal8Bit(arguments[argumentCount - 1]);
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return fail("can't be read", path);
    const QString page = QString::fromUtf8(file.readAll());
    file.close();
    const QString made = refreshed(page);
    if (made.isEmpty())
        return fail("has no marks for the tables", path);
    if (isCheck)
        return made == page ? 0 : fail("isn't what the rows of the commands say", path);
    const QByteArray bytes = made.toUtf8();
    const bool isWritten = file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size();
    return isWritten && file.flush() ? 0 : fail("can't be written", path);
}
