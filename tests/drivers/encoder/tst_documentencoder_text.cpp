#include <QtTest>

#include "printedpaper.h"

using namespace printedpaper;

class TestDocumentEncoderText : public QObject
{
    Q_OBJECT

private:
    /// A block of one line, of which each character has a format and font of its own.
    static DocumentBlock mixedBlock(const QString &text, const QByteArray &formats,
                                    const QByteArray &fonts)
    {
        return DocumentBlock::createSimpleBlock(text, AlignLeft, fonts, formats, 1, 0);
    }

private Q_SLOTS:
    void eachFormatInEachFontIsPrintedAsLaidOut_data() { addModels(); }
    void eachFormatInEachFontIsPrintedAsLaidOut()
    {
        QFETCH(QString, model);
        for (const PaperInfo &paper : target(model).record().paperTypes()) {
            QList<DocumentBlock> blocks;
            for (int font = 0; font < 5; ++font) {
                for (int format = 0; format < 0x40; ++format)
                    blocks.append(textBlock("Aqy 1", AlignCenter, format, font, format % 8));
            }
            QCOMPARE(differenceOf(documentOf(blocks), target(model, paper.id())), QString());
        }
    }

    void formatsChangeWithinALine_data() { addModels(); }
    void formatsChangeWithinALine()
    {
        QFETCH(QString, model);
        QByteArray formats;
        QByteArray fonts;
        for (int i = 0; i < 16; ++i) {
            formats += char(i * 37 % 64);
            fonts += char(i * 5 % 4);
        }
        const auto block = mixedBlock("abcdefghijklmnop", formats, fonts);
        QCOMPARE(differenceOf(documentOf({block, block}), target(model)), QString());
    }

    void eachLineSpacingGivesItsDots_data() { addModels(); }
    void eachLineSpacingGivesItsDots()
    {
        QFETCH(QString, model);
        for (int font = 0; font < 4; ++font) {
            for (int spacing = 0; spacing < 8; ++spacing) {
                for (const int format : {0, int(CharDoubleHeight)}) {
                    const auto document = documentOf(
                        {textBlock("one\n\ntwo\n \nthree", AlignLeft, format, font, spacing)});
                    QCOMPARE(differenceOf(document, target(model)), QString());
                    const PrintLayout layout = layoutOf(document, target(model));
                    int length = 0;
                    for (const PrintLayout::Row &row : layout.rows)
                        length += row.height + row.feed;
                    const QVector<Paper> papers =
                        papersOf(encoded(document, target(model)).bytes, target(model).profile());
                    QCOMPARE(papers.size(), 1);
                    QCOMPARE(papers.first().length, length);
                }
            }
        }
    }

    void emptyLinesAreRead_data() { addModels(); }
    void emptyLinesAreRead()
    {
        QFETCH(QString, model);
        for (int spacing = 0; spacing < 8; ++spacing) {
            const auto document =
                documentOf({textBlock("one\n\n\n\ntwo\n \nx", AlignLeft, 0, 0, spacing)});
            const QVector<Paper> papers =
                papersOf(encoded(document, target(model)).bytes, target(model).profile());
            QCOMPARE(papers.value(0).toText(), QStringLiteral("one\n\n\n\ntwo\n\nx\n"));
        }
    }

    void charactersOfAllPagesAreFound_data() { addModels(); }
    void charactersOfAllPagesAreFound()
    {
        QFETCH(QString, model);
        const QString text = QString::fromUtf8("Чек № 5 €10 Ünï ąćę Ελλ ½ end");
        QCOMPARE(differenceOf(documentOf({textBlock(text), textBlock("plain")}), target(model)),
                 QString());
        PrintOptions options;
        options.isPicture = true;
        QCOMPARE(
            differenceOf(documentOf({textBlock(text), textBlock("plain")}), target(model), options),
            QString());
    }

    void theEuroStandsBesideCyrillic()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.codePage = 17;
        const auto document = documentOf({textBlock(QString::fromUtf8("Чек 5 €, сдача"))});
        const QByteArray bytes = encoded(document, to, options).bytes;
        // The page that has what follows the sign, too.
        QCOMPARE(commandsOf(bytes, to.profile()).filter("1b 74"),
                 QStringList({"1b 74 11", "1b 74 2e"}));
        QCOMPARE(differenceOf(document, to, options), QString());
    }

    void symbolsArePrintedInEachFont_data() { addModels(); }
    void symbolsArePrintedInEachFont()
    {
        QFETCH(QString, model);
        TextPrinterDocument document =
            documentOf({textBlock(QStringLiteral("a\x01\x02 b\x01"), AlignLeft, 0, 1),
                        textBlock(QStringLiteral("\x03\x02\x01"), AlignLeft, 0, 3),
                        textBlock("!!! plain \"#$%")});
        QMultiMap<signed char, MonochromeImage> images;
        for (int code = 1; code < 4; ++code) {
            MonochromeImage image;
            image.setWidth(8);
            image.setHeight(16);
            image.setImage(QByteArray(16, char(0xA0 + code)));
            images.insert(static_cast<signed char>(code), image);
        }
        document.setCharImages(images);
        const PrintTarget to = target(model);
        const PrintLayout layout = layoutOf(document, to);
        QCOMPARE(differenceOf(document, to), QString());
    }

    void moreCharactersThanCanBeDefinedComeRowByRow_data() { addModels(); }
    void moreCharactersThanCanBeDefinedComeRowByRow()
    {
        // No page has Georgian letters and arrows.
        QFETCH(QString, model);
        QList<DocumentBlock> blocks;
        for (int row = 0; row < 8; ++row) {
            QString text;
            for (int i = 0; i < 16; ++i)
                text += QChar(0x10D0 + (row * 11 + i) % 33);
            for (int i = 0; i < 8; ++i)
                text += QChar(0x2190 + (row * 8 + i) % 64);
            blocks.append(textBlock(text, AlignLeft, row % 2 == 0 ? 0 : int(CharBold), row % 4));
            blocks.append(textBlock(QStringLiteral("!\"#$%&'() plain")));
        }
        const PrintTarget to = target(model);
        QCOMPARE(differenceOf(documentOf(blocks), to), QString());
        QCOMPARE(encoded(documentOf(blocks), to).bytes.contains("\x1B&\x03"),
                 !to.font(0).ownCharacter.isEmpty());
    }

    void dotsOfASymbolAreNoCommand_data() { addModels(); }
    void dotsOfASymbolAreNoCommand()
    {
        // Columns that are the bytes 10 04, 10 05 and 10 14, if they define a character.
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        for (const QVector<int> &rows :
             {QVector<int>{3, 13}, QVector<int>{3, 13, 15}, QVector<int>{3, 11, 13}}) {
            MonochromeImage image;
            image.setWidth(8);
            image.setHeight(16);
            QByteArray dots(16, '\0');
            for (const int y : rows)
                dots[y] = '\x42';
            image.setImage(dots);
            TextPrinterDocument document = documentOf(
                {textBlock(QStringLiteral("a\x01z")), textBlock(QStringLiteral("\x01"))});
            document.setCharImages({{1, image}});
            QCOMPARE(differenceOf(document, to), QString());
            const EncodedDocument made = encoded(document, to);
            QCOMPARE(made.isFaithful(), layoutOf(document, to).notes.isEmpty());
            for (const StreamCommand &command : StreamReader::commandsOf(made.bytes, to.profile()))
                QVERIFY(command.realTime.isEmpty());
        }
    }

    void nothingOfATextIsACommand_data() { addModels(); }
    void nothingOfATextIsACommand()
    {
        QFETCH(QString, model);
        QString text;
        for (int code = 8; code < 0x20; ++code) {
            if (code != '\n' && code != '\t')
                text += QChar(code);
            text += "p@";
        }
        text += QStringLiteral("\x10\x04\x10\x05\x10\x14\x01");
        text += QChar(0);
        for (int code = 0x7F; code < 0xA0; ++code)
            text += QChar(code);
        for (const int format : {0, int(CharRawCode), int(CharRawCode | CharBold)}) {
            const PrintTarget to = target(model);
            const TextPrinterDocument document = documentOf({textBlock(text, AlignLeft, format)});
            const TextPrinterDocument blank = documentOf({textBlock("x", AlignLeft, format)});
            const EncodedDocument made = encoded(document, to);
            for (const StreamCommand &command :
                 StreamReader::commandsOf(made.bytes, to.profile())) {
                QVERIFY(command.kind == StreamCommand::Text ||
                        command.kind == StreamCommand::Command);
                QVERIFY(command.realTime.isEmpty());
            }
            QVERIFY(eventsOf(papersOf(made.bytes, to.profile())).isEmpty());
            QVERIFY(!made.isFaithful());
        }
    }

    void layoutsOfOthersInjectNothingEither()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintLayout layout(to);
        PrintLayout::Row row;
        row.kind = PrintLayout::Row::Text;
        row.height = 24;
        for (int code = 0; code < 0x100; ++code) {
            PrintLayout::Cell cell;
            cell.character = char16_t(code);
            layout.cells.push_back(cell);
            cell.format = CharRawCode;
            cell.byte = quint8(code);
            layout.cells.push_back(cell);
        }
        row.count = int(layout.cells.size());
        layout.rows.push_back(row);
        const QByteArray bytes = DocumentEncoder(to, {}).encode(documentOf({}), layout).bytes;
        for (const StreamCommand &command : StreamReader::commandsOf(bytes, to.profile()))
            QVERIFY(command.kind == StreamCommand::Text || command.bytes.size() <= 3);
        QVERIFY(!bytes.contains("\x1Bp"));
        QVERIFY(!bytes.contains(QByteArray("\x1B\x70", 2)));
    }

    void codesThatAreAllowedGoBehindABlank()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.allowedRawCodes = QByteArray("\x07", 1);
        const auto document =
            documentOf({textBlock(QStringLiteral("a\x07\x08z"), AlignLeft, CharRawCode)});
        QVERIFY(encoded(document, to, options).bytes.contains(QByteArray("a \x07 z\x1B", 6)));
        QVERIFY(encoded(document, to).bytes.contains("a  z"));
        // Without the bit the code goes nowhere.
        const auto plain = documentOf({textBlock(QStringLiteral("a\x08z"))});
        QVERIFY(encoded(plain, to, options).bytes.contains("a z"));
    }

    void codeZeroIsSentLikeOthersThatAreAllowed()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        const auto document = documentOf(
            {textBlock(QString(QLatin1Char('a')) + QChar(0) + 'z', AlignLeft, CharRawCode)});
        PrintOptions options;
        options.allowedRawCodes = QByteArray(1, '\0');
        const EncodedDocument job = encoded(document, to, options);
        QVERIFY2(job.bytes.contains(QByteArray("a \0z", 4)), job.bytes.toHex(' ').constData());
        QVERIFY(job.isFaithful());
        QVERIFY(encoded(document, to).bytes.contains("a z"));
    }

    void allowedCodesMakeNoPairWithWhatIsSentBeforeThem()
    {
        // The operand of double width is the byte that begins commands which act at once.
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.allowedRawCodes = QByteArray("\x10\x04\x05\x14", 4);
        const auto document = documentOf({textBlock(QStringLiteral("\x10\x04\x10\x05\x10\x14"),
                                                    AlignLeft, CharRawCode | CharDoubleWidth)});
        const QByteArray bytes = encoded(document, to, options).bytes;
        for (const char second : {'\x04', '\x05', '\x14'})
            QVERIFY(!bytes.contains(QByteArray("\x10") + second));
    }

    void textBeginsWithThePageOfTheCodec_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("codePage");
        QTest::addColumn<QString>("codec");
        QTest::addColumn<QString>("page");
        const QString general = "GENERAL_EPSON_PROTOCOL";
        QTest::newRow("codec of the general model") << general << 0 << "cp866"
                                                    << "1b 74 11";
        QTest::newRow("number prevails") << general << 46 << "cp866"
                                         << "1b 74 2e";
        QTest::newRow("codec that it lacks") << general << 0 << "UTF-8"
                                             << "1b 74 00";
        QTest::newRow("other models") << "WPK_833" << 0 << "cp866"
                                      << "1b 74 00";
        QTest::newRow("number of another model") << "WPK_833" << 17 << "cp437"
                                                 << "1b 74 11";
    }
    void textBeginsWithThePageOfTheCodec()
    {
        QFETCH(QString, model);
        QFETCH(int, codePage);
        QFETCH(QString, codec);
        QFETCH(QString, page);
        PrintOptions options;
        options.codePage = codePage;
        options.codec = codec;
        const PrintTarget to = target(model);
        const auto document = documentOf({textBlock("a")});
        QCOMPARE(commandsOf(encoded(document, to, options).bytes, to.profile()).filter("1b 74"),
                 QStringList{page});
    }

    void rawBytesAreThoseOfTheFirstPage()
    {
        const PrintTarget to = target("GENERAL_EPSON_PROTOCOL");
        PrintOptions options;
        options.codePage = 17;
        const auto document = documentOf({textBlock(QString::fromUtf8("€")),
                                          textBlock(QString(QChar(0x80)), AlignLeft, CharRawCode)});
        const QStringList commands = commandsOf(encoded(document, to, options).bytes, to.profile());
        QCOMPARE(commands.filter("1b 74").last(), QStringLiteral("1b 74 11"));
    }
};

QTEST_APPLESS_MAIN(TestDocumentEncoderText)
#include "tst_documentencoder_text.moc"
