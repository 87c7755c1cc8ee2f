// Puts the rows of the dialects into a page as tables.
#include <QStringList>
#include <algorithm>
#include <iterator>

#include "commandsets/commandrows_p.h"
#include "commandsets/commandtext_p.h"
#include "commandsets/tables/pagetables_p.h"

using namespace printerslib::drivers;
using pagetables::code;

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
    QString table = pagetables::headOf({QStringLiteral("Command"), QStringLiteral("Bytes"),
                                        QStringLiteral("Operands and data"), QStringLiteral("Does"),
                                        QStringLiteral("Of"), QStringLiteral("Manual")});
    for (const CommandRow *row = rows.first; row != rows.end; ++row) {
        table += pagetables::rowOf(
            {code(QString::fromLatin1(row->mnemonic)), hexOf(*row), operandsText(*row),
             meaningText(*row), QString::fromLatin1(vendorNames[static_cast<int>(row->vendor)]),
             QString::number(sources.indexOf(QLatin1String(row->source)) + 1)});
    }
    table += QLatin1String("\nManuals:\n\n");
    for (int i = 0; i < sources.size(); ++i)
        table += QStringLiteral("%1. %2\n").arg(i + 1).arg(sources.at(i));
    return table;
}

}  // namespace

int main(int argumentCount, char *arguments[])
{
    QVector<pagetables::Section> sections;
    for (const DialectSection &section : dialectSections)
        sections.append(
            {QStringLiteral("commands: ") + QLatin1String(section.name), tableOf(section.rows())});
    return pagetables::refresh(argumentCount, arguments, "command-tables", sections);
}
