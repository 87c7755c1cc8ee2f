// What holds for the rows of all lines, on all models.
#include <QtTest>

#include "arbitrary.h"
#include "laiddocuments.h"
#include "printerdocs/echarformat.h"
#include "printerslib/drivers/linelayout.h"

using namespace laiddocuments;

namespace {

struct LineCase
{
    QString text;
    QByteArray format;
    QByteArray font;
    ETextAlignment alignment = AlignLeft;
    PrintTarget target;
};

PrintTarget anyTarget()
{
    static const QStringList models = PrinterProfile::modelIds();
    const int model = *rc::gen::inRange(0, models.size());
    return *PrintTarget::forModel(models.at(model), *rc::gen::inRange(0, 4),
                                  *rc::gen::inRange(0, 4));
}

LineCase anyLine()
{
    const auto usual =
        rc::textOf(U"abcdefghijklmnopqrstuvwxyz 0123456789\t\u0002\u001BßЖ\U0001F600");
    LineCase line{*rc::gen::scale(3, usual), *rc::gen::arbitrary<QByteArray>(),
                  *rc::gen::arbitrary<QByteArray>(),
                  static_cast<ETextAlignment>(*rc::gen::inRange(0, 4)), anyTarget()};
    return line;
}

QVector<LaidLine> rowsOf(const LineCase &line)
{
    return LineLayout(line.target).rowsOf(line.text, line.format, line.font, line.alignment);
}

int widthOf(const LaidLine &row, const PrintTarget &target)
{
    int width = 0;
    for (int i = 0; i < row.text.size(); ++i) {
        const bool isWide = (row.format.at(i) & CharDoubleWidth) != 0;
        const auto font = static_cast<unsigned char>(row.font.at(i));
        width += target.font(font).cell.width() * (isWide ? 2 : 1);
    }
    return width;
}

bool isControl(QChar character)
{
    return character < QChar(0x20) || (character >= QChar(0x7F) && character < QChar(0xA0));
}

/// What stays of a text whatever blanks are put between, with a format that isn't raw.
QString inkOf(const QString &text)
{
    QString ink;
    for (const QChar character : text) {
        const bool isSymbol = character >= QChar(1) && character <= QChar(7);
        if (isSymbol || (!isControl(character) && character != QLatin1Char(' ')))
            ink += character;
    }
    return ink;
}

}  // namespace

class TestLineLayoutLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreNoWiderThanTheLine()
    {
        VERIFY_LAW([] {
            const LineCase line = anyLine();
            for (const LaidLine &row : rowsOf(line))
                RC_ASSERT(row.text.size() <= 1 ||
                          widthOf(row, line.target) <= line.target.lineDots());
        });
    }

    void rowsHaveAByteForEachCharacter()
    {
        VERIFY_LAW([] {
            const LineCase line = anyLine();
            const auto rows = rowsOf(line);
            RC_ASSERT(!rows.isEmpty());
            for (int i = 0; i < rows.size(); ++i) {
                RC_ASSERT(rows.at(i).format.size() == rows.at(i).text.size());
                RC_ASSERT(rows.at(i).font.size() == rows.at(i).text.size());
                RC_ASSERT(rows.at(i).isWrapped == (i > 0));
                RC_ASSERT(i == 0 || !rows.at(i).text.isEmpty());
            }
        });
    }

    void rowsTogetherHoldTheText()
    {
        VERIFY_LAW([] {
            LineCase line = anyLine();
            for (char &byte : line.format)
                byte = static_cast<char>(byte & ~CharRawCode);
            QString text;
            for (const LaidLine &row : rowsOf(line))
                text += row.text;
            RC_ASSERT(inkOf(text) == inkOf(line.text));
            RC_ASSERT(text.size() >= line.text.size());
        });
    }

    void withoutAlignmentRowsAreTheText()
    {
        VERIFY_LAW([] {
            LineCase line = anyLine();
            line.alignment = AlignLeft;
            QString text;
            for (const LaidLine &row : rowsOf(line))
                text += row.text;
            RC_ASSERT(text.size() == line.text.size());
            for (int i = 0; i < text.size(); ++i)
                RC_ASSERT(text.at(i) == line.text.at(i) ||
                          (text.at(i) == QLatin1Char(' ') && isControl(line.text.at(i))));
        });
    }

    void nothingBelowABlankGoesThroughButSymbols()
    {
        VERIFY_LAW([] {
            const LineCase line = anyLine();
            for (const LaidLine &row : rowsOf(line)) {
                for (int i = 0; i < row.text.size(); ++i) {
                    const ushort code = row.text.at(i).unicode();
                    const bool isRaw = (row.format.at(i) & CharRawCode) != 0;
                    RC_ASSERT(code >= 0x20 || (code >= 1 && code <= 7 && !isRaw));
                    RC_ASSERT(code != 0x7F && (isRaw || code < 0x80 || code > 0x9F));
                }
            }
        });
    }

    void noPairIsParted()
    {
        VERIFY_LAW([] {
            const LineCase line = anyLine();
            const auto rows = rowsOf(line);
            for (int i = 1; i < rows.size(); ++i)
                RC_ASSERT(!(rows.at(i - 1).text.back().isHighSurrogate() &&
                            rows.at(i).text.front().isLowSurrogate()));
        });
    }

    /// What is laid out with all else of a document has the same cells.
    void layoutOfABlockHasTheSameRows()
    {
        VERIFY_LAW([] {
            const LineCase line = anyLine();
            DocumentBlock block;
            block.setText({line.text});
            block.setFormat(QList<QByteArray>{line.format});
            block.setFont(QList<QByteArray>{line.font});
            block.setLineSpacing(QList<int>{0});
            block.setAlignment(line.alignment);
            const PrintLayout layout = layoutOf(block, line.target);
            const auto rows = rowsOf(line);
            RC_ASSERT(layout.rows.size() == size_t(rows.size()));
            for (int i = 0; i < rows.size(); ++i) {
                const PrintLayout::Row &row = layout.rows[size_t(i)];
                RC_ASSERT(row.isWrapped == rows.at(i).isWrapped);
                RC_ASSERT(row.count == rows.at(i).text.size());
                for (int k = 0; k < row.count; ++k)
                    RC_ASSERT(char(cellAt(layout, k, size_t(i)).font) == rows.at(i).font.at(k));
            }
        });
    }

    void layoutOfAnyDocumentIsWhole()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            const PrintTarget target = anyTarget();
            const PrintLayout layout = layoutOf(document, target);
            int next = 0;
            for (const PrintLayout::Row &row : layout.rows) {
                RC_ASSERT(row.height >= 0 && row.feed >= 0 && row.left >= 0);
                RC_ASSERT(row.block >= 1 && row.block <= document.blocks().size());
                if (row.kind == PrintLayout::Row::Text) {
                    RC_ASSERT(row.first == next);
                    next += row.count;
                } else if (row.kind == PrintLayout::Row::Picture) {
                    RC_ASSERT(row.first < layout.pictures.size());
                } else if (row.kind == PrintLayout::Row::Code) {
                    RC_ASSERT(row.first < layout.codes.size());
                } else if (row.kind == PrintLayout::Row::Fault) {
                    RC_ASSERT(row.first < layout.faults.size());
                }
            }
            RC_ASSERT(next == int(layout.cells.size()) || !layout.error.isEmpty());
            for (const PrintLayout::Cell &cell : layout.cells) {
                RC_ASSERT(cell.drawing >= -1 && cell.drawing < layout.drawings.size());
                RC_ASSERT(cell.character >= 0x20 && !QChar::isSurrogate(cell.character));
                RC_ASSERT((cell.format & ~target.printedFormats() & ~CharRawCode) == 0);
                RC_ASSERT(cell.byte == 0 ||
                          ((cell.format & CharRawCode) != 0 && cell.byte >= 0x80));
            }
        });
    }
};

QTEST_GUILESS_MAIN(TestLineLayoutLaws)
#include "tst_linelayout_laws.moc"
