#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QTextCodec>
#include <algorithm>

#include "analysis.h"
#include "bbcode.h"
#include "checks.h"
#include "linewidth.h"
#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/echarformat.h"
#include "printerdocs/template/templatetags_p.h"
#include "words.h"

// Rules about what the template needs beside it: files, the document, the paper.

namespace templatelint {

namespace {

bool marksCopies(const Piece &piece, const PrinterDocument &document)
{
    QStringList lines;
    for (const TemplateLine &line : piece.lines)
        lines.append(line.text.characters);
    PrinterDocument original = document;
    original.setIsCopy(false);
    PrinterDocument copy = document;
    copy.setIsCopy(true);
    return preparedByEngine(lines, copy) != preparedByEngine(lines, original);
}

/// Offset of the first tag of the document's number that has a format, or calculates with it.
int formattedNumber(const Analysis &analysis)
{
    static const QRegularExpression number(
        QStringLiteral("\\b%1\\b").arg(innerOf(templates::copyNumberTag)),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    const auto isFormatted = [](const AttributeTag &tag) {
        return tag.name.contains(number) &&
               tag.inner.toUpper() != innerOf(templates::copyNumberTag);
    };
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines) {
            const auto tag = std::find_if(line.tags.cbegin(), line.tags.cend(), isFormatted);
            if (tag != line.tags.cend() && piece.isPrinted(line.offsetOf(*tag)))
                return line.offsetOf(*tag);
        }
    }
    return Text::nowhere;
}

char formatAt(const Printed &line, int index)
{
    return documents::CharacterBytes(line.formats).at(index);
}

bool isRaw(const Printed &line, int index)
{
    return documents::hasFormat(formatAt(line, index), CharRawCode);
}

bool isSymbol(const Printed &line, int index)
{
    return documents::isSymbol(line.text.characters.at(index), formatAt(line, index));
}

bool fits(const MonochromeImage &image, const QSize &cell)
{
    return image.isValid() && image.width() <= cell.width() && image.height() <= cell.height();
}

/// What is wrong with a symbol's drawing; empty if nothing is.
QString symbolFault(const Printed &line, int index, const SpecialCharacters &drawings,
                    const std::optional<Paper> &paper)
{
    const int code = line.text.characters.at(index).unicode();
    const QList<MonochromeImage> images = drawings.values(static_cast<signed char>(code));
    if (images.isEmpty())
        return Words::tr("the symbol %1 has no drawing").arg(code);
    if (!paper || paper->fonts.isEmpty())
        return QString();
    const PaperFont &font = fontAt(line, index, *paper);
    if (font.drawing.isEmpty())
        return Words::tr("the symbol %1 is blank: font %2 of %3 takes no drawings")
            .arg(QString::number(code), font.name, paper->name);
    const QSize cell = font.drawing;
    if (std::any_of(images.cbegin(), images.cend(),
                    [&cell](const MonochromeImage &image) { return fits(image, cell); }))
        return QString();
    return Words::tr(
               "the symbol %1 has no drawing that fits the %2 x %3 dots of a character "
               "of %4")
        .arg(QString::number(code), QString::number(cell.width()), QString::number(cell.height()),
             paper->name);
}

void checkSymbols(const Piece &piece, const Road &road, const std::optional<Paper> &paper,
                  Report &report)
{
    for (const Printed &line : road.lines) {
        for (int i = 0; i < line.text.size(); ++i) {
            const int offset = Text::offsetOf(line.text.origins.at(i));
            if (!isSymbol(line, i) || offset == Text::nowhere)
                continue;
            const QString fault = symbolFault(line, i, piece.symbols.drawings, paper);
            if (!fault.isEmpty())
                report.addEach(offset, fault);
        }
    }
}

/// Tells which characters a code page has.
class CodePage
{
public:
    explicit CodePage(const QTextCodec &codec) : m_codec(codec) {}

    bool has(const QString &character)
    {
        const auto known = m_known.constFind(character);
        return known != m_known.constEnd()
                   ? *known
                   : *m_known.insert(character, m_codec.canEncode(character));
    }
    QString name() const { return QString::fromLatin1(m_codec.name()); }

private:
    const QTextCodec &m_codec;
    QHash<QString, bool> m_known;
};

QString missingCharacters(const QStringList &characters, const CodePage &codePage)
{
    const QString quoted =
        QLatin1Char('"') + characters.join(QStringLiteral("\", \"")) + QLatin1Char('"');
    const QString what = characters.size() == 1
                             ? Words::tr("%1 is not in the printer's character set, %2")
                             : Words::tr("%1 are not in the printer's character set, %2");
    return what.arg(quoted, codePage.name());
}

/// The characters of a line, surrogates in pairs, that a code page lacks: those of each value, at
/// its tag, and those of the template, at the first of them.
void checkCharactersOf(const Printed &line, bool hasValues, CodePage &codePage, Report &report)
{
    const QString &text = line.text.characters;
    QMap<int, QStringList> missing;
    int first = Text::nowhere;
    for (int i = 0, length = 1; i < text.size(); i += length) {
        length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QString character = text.mid(i, length);
        const int origin = line.text.origins.at(i);
        const bool isOwn = Text::isTemplate(origin) || (hasValues && origin != Text::nowhere);
        if (text.at(i) <= QLatin1Char('~') || !isOwn || isRaw(line, i) || codePage.has(character))
            continue;
        if (Text::isTemplate(origin) && first == Text::nowhere)
            first = origin;
        QStringList &characters = missing[Text::isTemplate(origin) ? first : origin];
        if (!characters.contains(character))
            characters.append(character);
    }
    for (auto place = missing.cbegin(); place != missing.cend(); ++place)
        report.addEach(Text::offsetOf(place.key()), missingCharacters(*place, codePage));
}

}  // namespace

void checkCopyMark(const Analysis &analysis, Report &report)
{
    const Options &options = analysis.options();
    const bool isCopy = options.document && options.document->isCopy();
    const int formatted = formattedNumber(analysis);
    // A template without any number may never be printed again.
    if (!isCopy && formatted == Text::nowhere)
        return;
    for (const Piece &piece : analysis.pieces()) {
        const bool hasRoad = !piece.isSilent && !(piece.filled && piece.filled->endless);
        if (!hasRoad || marksCopies(piece, options.document.value_or(PrinterDocument())))
            return;
    }
    const QString begin = isCopy ? Words::tr("the copy prints without a mark: ")
                                 : Words::tr("a copy will print without a mark: ");
    if (formatted == Text::nowhere)
        report.add(0, begin + Words::tr("there is no \"<DOCNO>\""));
    else
        report.add(
            formatted,
            begin + Words::tr("\"<DOCNO>\" doesn't count with a format or in an expression"));
}

void checkRepeatedSymbolFiles(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (int i = 1; i < piece.symbols.offsets.size(); ++i)
            report.add(piece.symbols.offsets.at(i),
                       Words::tr("a file of special symbols is named on line %1 already; the "
                                 "lowest line counts")
                           .arg(analysis.source().place(piece.symbols.offsets.at(0)).line));
    }
}

void checkMissingSymbolFile(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.symbols.offsets.isEmpty() && !piece.symbols.exists)
            report.add(piece.symbols.offsets.constLast(), piece.symbols.fault);
    }
}

void checkDamagedSymbolFile(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (piece.symbols.exists && !piece.symbols.isUsable())
            report.add(piece.symbols.offsets.constLast(), piece.symbols.fault);
    }
}

void checkSymbolDrawings(const Analysis &analysis, Report &report)
{
    const std::optional<Paper> &paper = analysis.options().paper;
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.symbols.isUsable())
            continue;
        checkSymbols(piece, piece.blank, paper, report);
        if (piece.filled)
            checkSymbols(piece, *piece.filled, paper, report);
    }
}

void checkCharacters(const Analysis &analysis, Report &report)
{
    if (analysis.options().codePage == nullptr)
        return;
    CodePage codePage(*analysis.options().codePage);
    for (const Piece &piece : analysis.pieces()) {
        for (const Printed &line : piece.blank.lines)
            checkCharactersOf(line, false, codePage, report);
        if (!piece.filled)
            continue;
        for (const Printed &line : piece.filled->lines)
            checkCharactersOf(line, true, codePage, report);
    }
}

void checkBbCharacters(const BbCode &text, Report &report)
{
    if (text.options().codePage == nullptr)
        return;
    CodePage codePage(*text.options().codePage);
    const QVector<Printed> words = text.words();
    for (const Printed &printed : words)
        checkCharactersOf(printed, true, codePage, report);
}

void checkEndlessValues(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (piece.filled && piece.filled->endless)
            report.add(piece.filled->endless->offset, piece.filled->endless->message);
    }
}

}  // namespace templatelint
