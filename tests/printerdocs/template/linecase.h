#pragma once

#include <QtTest>

#include "markupmodel.h"
#include "printerdocs/printerdocumentformatter.h"

/// Lines with what they have to become, and the engine's reading of them in the model's terms.
namespace linecase {

/// One line, what is carried into it, and what it has to become. Unless told otherwise every
/// character has the format and the font carried in, and nothing is carried out but AlignLeft.
struct LineCase
{
    QString line;
    MarkupCarry before;
    int defaultSpacing = 0;
    int margin = 0;
    MarkupOutcome outcome;
    MarkupCarry after;

    LineCase &entering(int format, int font = 0, ETextAlignment alignment = AlignLeft)
    {
        before.format = static_cast<unsigned char>(format);
        before.font = static_cast<unsigned char>(font);
        before.alignment = alignment;
        return *this;
    }
    LineCase &spacing(int value)
    {
        defaultSpacing = value;
        return *this;
    }
    LineCase &leftMargin(int value)
    {
        margin = value;
        return *this;
    }

    LineCase &gives(const QString &text)
    {
        outcome.valid = true;
        outcome.text = text;
        outcome.formats = QByteArray(text.length(), char(before.format));
        outcome.fonts = QByteArray(text.length(), char(before.font));
        outcome.lineSpacing = defaultSpacing;
        after = before;
        after.alignment = AlignLeft;
        return *this;
    }
    /// A line of nothing but tags.
    LineCase &givesNothing()
    {
        outcome = MarkupOutcome();
        after = before;
        return *this;
    }
    /// One pair of hexadecimal digits for each byte.
    LineCase &formats(const char *hex)
    {
        outcome.formats = QByteArray::fromHex(hex);
        return *this;
    }
    LineCase &formats(int format, int count)
    {
        outcome.formats = QByteArray(count, char(format));
        return *this;
    }
    /// One digit for each byte.
    LineCase &fonts(const QByteArray &digits)
    {
        outcome.fonts = digits;
        for (char &font : outcome.fonts)
            font = char(font - '0');
        return *this;
    }
    LineCase &aligned(ETextAlignment alignment)
    {
        outcome.alignment = alignment;
        after.alignment = alignment;
        return *this;
    }
    LineCase &spaced(int value)
    {
        outcome.lineSpacing = value;
        return *this;
    }
    LineCase &leavesFormat(int format)
    {
        after.format = static_cast<unsigned char>(format);
        return *this;
    }
    LineCase &leavesFont(int font)
    {
        after.font = static_cast<unsigned char>(font);
        return *this;
    }
};

}  // namespace linecase

Q_DECLARE_METATYPE(linecase::LineCase)

namespace linecase {

inline LineCase line(const QString &text)
{
    LineCase made;
    made.line = text;
    return made;
}

inline QString shown(const MarkupOutcome &outcome, const MarkupCarry &carry)
{
    const QString carried = QString("carries format %1 font %2 alignment %3")
                                .arg(int(carry.format), 2, 16, QChar('0'))
                                .arg(int(carry.font))
                                .arg(int(carry.alignment));
    if (!outcome.valid)
        return "nothing; " + carried;
    QString text = outcome.text;
    for (int code = 0; code < 32; ++code)
        text.replace(QChar(code), QString("{%1}").arg(code));
    return QString("\"%1\" formats %2 fonts %3 alignment %4 spacing %5; %6")
        .arg(text, QString::fromLatin1(outcome.formats.toHex()),
             QString::fromLatin1(outcome.fonts.toHex()))
        .arg(int(outcome.alignment))
        .arg(outcome.lineSpacing)
        .arg(carried);
}

inline bool same(const MarkupOutcome &a, const MarkupOutcome &b)
{
    return a.valid == b.valid && a.text == b.text && a.formats == b.formats && a.fonts == b.fonts &&
           a.alignment == b.alignment && a.lineSpacing == b.lineSpacing;
}

inline bool same(const MarkupCarry &a, const MarkupCarry &b)
{
    return a.format == b.format && a.font == b.font && a.alignment == b.alignment;
}

/// A block of one line in the model's terms. A block of any other shape comes out as a text that no
/// line gives.
inline MarkupOutcome outcomeOf(const DocumentBlock &block)
{
    if (block == DocumentBlock())
        return {};
    MarkupOutcome outcome;
    outcome.valid = true;
    if (!block.isText() || block.text().size() != 1) {
        outcome.text = "a block that is not one line of text";
        return outcome;
    }
    outcome.alignment = block.alignment();
    outcome.lineSpacing = block.lineSpacing().first();
    outcome.text = block.text().first();
    outcome.formats = block.format().first();
    outcome.fonts = block.font().first();
    return outcome;
}

inline MarkupOutcome readByLibrary(const PrinterDocumentFormatter &formatter, const QString &line,
                                   MarkupCarry &carry, int lineSpacing)
{
    return outcomeOf(
        formatter.formatPrintStr(line, carry.format, carry.font, carry.alignment, lineSpacing));
}

/// Why the library reads a line in another way than told; empty if it doesn't.
inline QString differenceOfTheLibrary(const LineCase &told)
{
    MarkupCarry carry = told.before;
    const PrinterDocumentFormatter formatter(told.margin, nullptr);
    const MarkupOutcome read = readByLibrary(formatter, told.line, carry, told.defaultSpacing);
    if (same(read, told.outcome) && same(carry, told.after))
        return QString();
    return "read: " + shown(read, carry).left(2000) +
           "\ntold: " + shown(told.outcome, told.after).left(2000);
}

/// The same of the model.
inline QString differenceOfTheModel(const LineCase &told)
{
    MarkupCarry carry = told.before;
    const MarkupOutcome modelled =
        MarkupModel(told.margin).read(told.line, carry, told.defaultSpacing);
    if (same(modelled, told.outcome) && same(carry, told.after))
        return QString();
    return "model: " + shown(modelled, carry) + "\ntold:  " + shown(told.outcome, told.after);
}

inline void addLines()
{
    QTest::addColumn<LineCase>("told");
}

inline QTestData &row(const char *name)
{
    return QTest::newRow(name);
}

/// Compares model and library with the row.
inline void checkLine()
{
    QFETCH(LineCase, told);
    for (const QString &difference : {differenceOfTheModel(told), differenceOfTheLibrary(told)})
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

}  // namespace linecase
