#include <QJsonDocument>
#include <QtTest>

#include "arbitrary.h"
#include "printerdocs/specialcharacters.h"

namespace {

QString lineWithout(const QString &text)
{
    QString line = text;
    return line.remove('\n');
}

int widest(const QStringList &lines)
{
    int width = 0;
    for (const QString &line : lines)
        width = qMax(width, line.size());
    return width;
}

DocumentBlock appended(DocumentBlock block, const DocumentBlock &other)
{
    RC_ASSERT(block.append(other));
    return block;
}

/// The two as one alignment, so that they may be appended.
void align(DocumentBlock &a, DocumentBlock &b)
{
    b.setAlignment(a.alignment());
}

QString foldedByCharacters(const QString &text, bool toUpper)
{
    QString folded;
    for (const uint code : text.toUcs4()) {
        const QString character = QString::fromUcs4(&code, 1);
        folded += toUpper ? character.toUpper() : character.toLower();
    }
    return folded;
}

/// The document with every text folded, that of codes too, and all else as it was.
TextPrinterDocument withFoldedText(const TextPrinterDocument &document, bool toUpper)
{
    TextPrinterDocument result = document;
    result.setBlocks({});
    for (DocumentBlock block : document.blocks()) {
        QStringList text = block.text();
        for (QString &line : text)
            line = foldedByCharacters(line, toUpper);
        block.setText(text);
        result.appendBlock(block);
    }
    return result;
}

}  // namespace

class TestDocumentLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void imageKeepsThroughItsMapForm()
    {
        VERIFY_LAW([](const MonochromeImage &image) {
            MonochromeImage expected = image;
            if (image.fileName().trimmed().isEmpty())
                expected.setFileName(QString());
            RC_ASSERT(MonochromeImage(image.toMap()) == expected);
        });
    }

    void pixelIsWhatWasSetAndTheOthersStay()
    {
        VERIFY_LAW([] {
            const int width = *rc::gen::inRange(1, 70);
            const int height = *rc::gen::inRange(1, 9);
            const int alignment = 8 * *rc::gen::inRange(1, 5);
            MonochromeImage image = MonochromeImage::createEmpty(width, height, alignment);
            QSet<QPair<int, int>> black;
            for (const auto &flip : *rc::gen::container<std::vector<std::tuple<int, int, bool>>>(
                     rc::gen::tuple(rc::gen::inRange(0, width), rc::gen::inRange(0, height),
                                    rc::gen::arbitrary<bool>()))) {
                const auto [x, y, value] = flip;
                RC_ASSERT(image.setPixel(x, y, value, alignment) == value);
                value ? (void)black.insert({x, y}) : (void)black.remove({x, y});
            }
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x)
                    RC_ASSERT(image.pixel(x, y, alignment) == black.contains({x, y}));
            }
        });
    }

    void blockKeepsThroughItsMapForm()
    {
        VERIFY_LAW([](const DocumentBlock &block) {
            const DocumentBlock once(block.toMap());
            RC_ASSERT(DocumentBlock(once.toMap()) == once);
            RC_ASSERT(once.isValid() == block.isValid());
            if (block.isText() || block.isBarcode() || block.isQrCode())
                RC_ASSERT(once == block);
        });
    }

    void codeKeepsItsPayload()
    {
        VERIFY_LAW([](const QByteArray &payload) {
            DocumentBlock block;
            block.setQrCode(payload);
            RC_ASSERT(block.qrCode() == payload);
            block.setBarCode(payload);
            RC_ASSERT(block.barcode() == payload);
        });
    }

    void documentKeepsThroughItsMapForm()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            TextPrinterDocument once;
            once.setMap(document.toMap());
            TextPrinterDocument twice;
            twice.setMap(once.toMap());
            RC_ASSERT(twice == once);
            RC_ASSERT(once.blocks().size() == document.blocks().size());
            RC_ASSERT(once.currentTicketAction() == document.currentTicketAction());
            RC_ASSERT(once.prevTicketAction() == document.prevTicketAction());
            RC_ASSERT(once.loopPolicy() == document.loopPolicy());
            RC_ASSERT(once.doInit() == document.doInit());
            RC_ASSERT(once.retractionTimeout() == qMax(0, document.retractionTimeout()));
            RC_ASSERT(once.toStringList() == document.toStringList());
        });
    }

    void documentKeepsThroughJson()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            const QByteArray json = QJsonDocument::fromVariant(document.toMap()).toJson();
            TextPrinterDocument direct;
            direct.setMap(document.toMap());
            TextPrinterDocument read;
            read.setMap(QJsonDocument::fromJson(json).toVariant().toMap());
            RC_ASSERT(read == direct);
        });
    }

    void appendAddsLinesAndCharacters()
    {
        VERIFY_LAW([] {
            DocumentBlock a = *rc::textBlock();
            DocumentBlock b = *rc::textBlock();
            align(a, b);
            const DocumentBlock both = appended(a, b);
            RC_ASSERT(both.text() == a.text() + b.text());
            RC_ASSERT(both.symbolsCount() == a.symbolsCount() + b.symbolsCount());
            RC_ASSERT(both.isEmpty() == (a.isEmpty() && b.isEmpty()));
            const int width = *rc::gen::inRange(0, 60);
            DocumentBlock laidOut = both;
            RC_ASSERT(laidOut.toStringList(width) == a.toStringList(width) + b.toStringList(width));
            for (const bool useTable : {true, false})
                RC_ASSERT(both.toHtml(true, {}, useTable, width) ==
                          a.toHtml(true, {}, useTable, width) + '\n' +
                              b.toHtml(true, {}, useTable, width));
        });
    }

    void appendIsAssociative()
    {
        VERIFY_LAW([] {
            DocumentBlock a = *rc::textBlock();
            DocumentBlock b = *rc::textBlock();
            DocumentBlock c = *rc::textBlock();
            align(a, b);
            align(a, c);
            RC_ASSERT(appended(appended(a, b), c) == appended(a, appended(b, c)));
        });
    }

    void appendOfOtherAlignmentOrKindChangesNothing()
    {
        VERIFY_LAW([](const DocumentBlock &a, const DocumentBlock &b) {
            RC_PRE(!a.isText() || !b.isText() || a.alignment() != b.alignment());
            DocumentBlock block = a;
            RC_ASSERT(!block.append(b));
            RC_ASSERT(block == a);
        });
    }

    void linesGrowWithTheWidth()
    {
        VERIFY_LAW([] {
            DocumentBlock block = *rc::textBlock();
            const int narrow = *rc::gen::inRange(-5, 60);
            const int wide = narrow + *rc::gen::inRange(0, 60);
            const QStringList before = block.toStringList(narrow);
            const QStringList after = block.toStringList(wide);
            RC_ASSERT(before.size() == after.size());
            for (int line = 0; line < before.size(); ++line)
                RC_ASSERT(before.at(line).size() <= after.at(line).size());
        });
    }

    void paddingChangesNothingButBlanksAndTabs()
    {
        VERIFY_LAW([] {
            DocumentBlock block = *rc::textBlock();
            const auto bare = [](const QStringList &lines) {
                QString text = lines.join('\n');
                return text.remove(' ').remove('\t');
            };
            RC_ASSERT(bare(block.toStringList(*rc::gen::inRange(0, 90))) == bare(block.text()));
        });
    }

    void rightAlignedLinesEndAtTheWidth()
    {
        VERIFY_LAW([](const QString &text) {
            DocumentBlock block = DocumentBlock::createSimpleBlock(QStringList{lineWithout(text)},
                                                                   AlignRight, 0, 0, 0, 0);
            const int width = *rc::gen::inRange(0, 90);
            RC_ASSERT(widest(block.toStringList(width)) == qMax(width, lineWithout(text).size()));
        });
    }

    void blanksBeforeAddUp()
    {
        VERIFY_LAW([](const DocumentBlock &block) {
            const int first = *rc::gen::inRange(1, 16);
            const int second = *rc::gen::inRange(1, 17 - first);
            DocumentBlock atOnce = block;
            atOnce.setSpacesBefore(first + second);
            DocumentBlock inSteps = block;
            inSteps.setSpacesBefore(first);
            inSteps.setSpacesBefore(second);
            RC_ASSERT(inSteps == atOnce);
        });
    }

    void caseFoldingFoldsTheTextAlone()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            TextPrinterDocument folded = document;
            folded.toUpper();
            RC_ASSERT(folded == withFoldedText(document, true));
            folded = document;
            folded.toLower();
            RC_ASSERT(folded == withFoldedText(document, false));
        });
    }

    void caseFoldingIsIdempotent()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            TextPrinterDocument once = document;
            once.toUpper();
            TextPrinterDocument twice = once;
            twice.toUpper();
            RC_ASSERT(twice == once);
            once.toLower();
            twice = once;
            twice.toLower();
            RC_ASSERT(twice == once);
        });
    }

    void estimateGrowsWithTheDocument()
    {
        VERIFY_LAW([](const TextPrinterDocument &document, const DocumentBlock &block) {
            TextPrinterDocument longer = document;
            longer.appendBlock(block);
            RC_ASSERT(longer.symbolsCount() >= document.symbolsCount());
            TextPrinterDocument otherEnd = document;
            otherEnd.prependBlock(block);
            RC_ASSERT(otherEnd.symbolsCount() == longer.symbolsCount());
            DocumentBlock copy = block;
            RC_ASSERT(longer.toStringList() == document.toStringList() + copy.toStringList(80));
        });
    }

    void copiesAreIndependent()
    {
        VERIFY_LAW([](const TextPrinterDocument &document) {
            TextPrinterDocument copy = document;
            copy.toUpper();
            copy.appendBlock(DocumentBlock::emptyBlock(1, AlignLeft, 0));
            copy.setDoInit(!document.doInit());
            RC_ASSERT(copy != document);
            copy = document;
            RC_ASSERT(copy == document);
        });
    }
};

QTEST_APPLESS_MAIN(TestDocumentLaws)
#include "tst_document_laws.moc"
