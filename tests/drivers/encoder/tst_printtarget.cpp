// What a model with a paper prints with.
#include <QtTest>

#include "laiddocuments.h"
#include "printerdocs/echarformat.h"

using namespace laiddocuments;

class TestPrintTarget : public QObject
{
    Q_OBJECT

    static QString described(const PrintFont &font)
    {
        QString text = QStringLiteral("%1: %2 x %3")
                           .arg(font.number)
                           .arg(font.cell.width())
                           .arg(font.cell.height());
        if (font.widthScale != 1 || font.heightScale != 1)
            text += QStringLiteral(" as %1 x %2").arg(font.widthScale).arg(font.heightScale);
        if (!font.ownCharacter.isEmpty())
            text += QStringLiteral(" own %1 x %2")
                        .arg(font.ownCharacter.width())
                        .arg(font.ownCharacter.height());
        return text;
    }

    static PrinterInfo recordOf(const char *model) { return targetOf(model).record(); }

private Q_SLOTS:
    void paperIsAsWideAsItsCaptionSays_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("paper");
        QTest::addColumn<int>("dots");
        QTest::newRow("204 dots to the inch") << "CUSTOM_VKP_80" << 0 << 643;
        QTest::newRow("203 dots to the inch") << "CITIZEN_PPU_700" << 0 << 639;
        QTest::newRow("with a fraction") << "CITIZEN_CTS_2000" << 2 << 436;
    }
    void paperIsAsWideAsItsCaptionSays()
    {
        QFETCH(QString, model);
        QFETCH(int, paper);
        QTEST(PrintTarget::forModel(model, paper)->paperDots(), "dots");
    }

    void paperWithoutCaptionIsAsWideAsItPrintsButNotLessThanTheLine()
    {
        PaperInfo paper;
        paper.setWidth(72);
        QCOMPARE(PrintTarget::millimetresOf(paper), 72.0);
        const PrintTarget nothing(PrinterProfile(), PrinterInfo(), 0);
        QCOMPARE(nothing.paperDots(), nothing.lineDots());
    }

    void handingOutTakesACut_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QVector<int>>("actions");
        QTest::newRow("presenter") << "CUSTOM_VKP_80" << QVector<int>{1, 4, 5, 8, 9, 12, 13};
        QTest::newRow("none") << "CITIZEN_CBM_1000" << QVector<int>{1, 5, 8, 9, 12, 13};
    }
    void handingOutTakesACut()
    {
        QFETCH(QString, model);
        QFETCH(QVector<int>, actions);
        const PrintTarget target = *PrintTarget::forModel(model, 0);
        for (const int bits : {0, 1, 2, 4, 5, 8, 9, 12, 13})
            QCOMPARE(target.wantsCut(bits), actions.contains(bits));
    }

    void fontsOfModels_data()
    {
        QTest::addColumn<QStringList>("fonts");
        const QString a12 = "0: 12 x 24";
        const QString a12own = "0: 12 x 24 own 12 x 24";
        const QString b9 = "1: 9 x 24";
        const QString b9own = "1: 9 x 24 own 9 x 24";
        const QStringList custom{"2: 10 x 24 own 10 x 24", "1: 14 x 24 own 13 x 24",
                                 "1: 14 x 24 own 13 x 24", "0: 18 x 24 own 16 x 24"};
        QTest::newRow("GENERAL_EPSON_PROTOCOL") << QStringList{a12, a12, a12, a12};
        QTest::newRow("CUSTOM_VKP_80") << custom;
        QTest::newRow("CUSTOM_TG_2480_H") << custom;
        QTest::newRow("CUSTOM_TG_2480_SE")
            << QStringList{custom.at(0), custom.at(0), custom.at(1), custom.at(1)};
        QTest::newRow("CITIZEN_PPU_700") << QStringList{
            "2: 8 x 16 own 8 x 16", "1: 9 x 17 own 9 x 17", "1: 9 x 17 own 9 x 17", a12own};
        QTest::newRow("CITIZEN_CBM_1000") << QStringList{b9own, b9own, a12own, a12own};
        QTest::newRow("CITIZEN_CTS_2000")
            << QStringList{"2: 8 x 16 own 8 x 16", b9own, b9own, a12own};
        // Its large font is the small one with all dots doubled.
        QTest::newRow("AV_268") << QStringList{"0: 8 x 16", "0: 8 x 16", "0: 16 x 32 as 2 x 2",
                                               "0: 16 x 32 as 2 x 2"};
        QTest::newRow("TSP-TUP") << QStringList{a12, a12, a12, a12};
        QTest::newRow("CITIZEN_PPU_231") << QStringList{b9own, b9own, a12own, a12own};
        QTest::newRow("EPSON_EU_4XX")
            << QStringList{"1: 9 x 17 own 9 x 17", "1: 9 x 17 own 9 x 17", a12own, a12own};
        const QString swecoin = "0: 18 x 24";
        QTest::newRow("SWECOIN_TM_20XX") << QStringList{swecoin, swecoin, swecoin, swecoin};
        QTest::newRow("CITIZEN_CPP_8001") << QStringList{b9, b9, a12, a12};
        QTest::newRow("WPK_833") << QStringList{b9, b9, a12, a12};
        QTest::newRow("MERCURY_G80_RS") << QStringList{b9, b9, a12, a12};
        QTest::newRow("NP_F209_2D") << QStringList{a12, a12, a12, a12};
    }
    void fontsOfModels()
    {
        QFETCH(QStringList, fonts);
        const PrintTarget target = targetOf(QTest::currentDataTag());
        QCOMPARE(target.profile().modelId(), QString(QTest::currentDataTag()));
        QStringList found;
        for (unsigned char font = 0; font < 4; ++font)
            found += described(target.font(font));
        QCOMPARE(found, fonts);
    }

    /// A row for each model of the catalogue.
    void everyModelHasATarget()
    {
        const QStringList models = PrinterProfile::modelIds();
        QCOMPARE(models.size(), 16);
        for (const QString &model : models)
            QVERIFY2(PrintTarget::forModel(model, 0), qPrintable(model));
    }

    void lineIsThatOfHeadOrPaper_data()
    {
        QTest::addColumn<QVector<int>>("lines");
        QTest::newRow("GENERAL_EPSON_PROTOCOL") << QVector<int>{384, 576};  // of 625
        QTest::newRow("CUSTOM_VKP_80") << QVector<int>{512, 400, 512, 512};
        QTest::newRow("CUSTOM_TG_2480_H") << QVector<int>{640};
        QTest::newRow("CUSTOM_TG_2480_SE") << QVector<int>{576};  // of 640
        QTest::newRow("CITIZEN_PPU_700") << QVector<int>{576};
        QTest::newRow("CITIZEN_CBM_1000") << QVector<int>{576, 422};            // of 625
        QTest::newRow("CITIZEN_CTS_2000") << QVector<int>{576, 558, 422, 406};  // of 625
        QTest::newRow("AV_268") << QVector<int>{384};
        QTest::newRow("TSP-TUP") << QVector<int>{576};  // of 640
        QTest::newRow("CITIZEN_PPU_231") << QVector<int>{576};
        QTest::newRow("EPSON_EU_4XX") << QVector<int>{640, 576, 448, 432};
        QTest::newRow("SWECOIN_TM_20XX") << QVector<int>{576};  // of 640
        QTest::newRow("CITIZEN_CPP_8001") << QVector<int>{576};
        QTest::newRow("WPK_833") << QVector<int>{576};
        QTest::newRow("MERCURY_G80_RS") << QVector<int>{576};
        QTest::newRow("NP_F209_2D") << QVector<int>{384};
    }
    void lineIsThatOfHeadOrPaper()
    {
        QFETCH(QVector<int>, lines);
        const char *const model = QTest::currentDataTag();
        QVector<int> found;
        const QList<int> papers = recordOf(model).paperTypes().keys();
        for (const int paper : papers)
            found.append(targetOf(model, paper).lineDots());
        QCOMPARE(found, lines);
    }

    /// The catalogue's line of 625 dots would be 69 characters.
    void lineOfSixtyNineIsOneOfSixtyFour()
    {
        const PrintTarget target = targetOf("CITIZEN_CBM_1000");
        QCOMPARE(target.paper().pointsToLine(), 625);
        QCOMPARE(target.symbolsPerLine(), 64);
        QCOMPARE(target.symbolsPerLine(3), 48);
    }

    void paperThatTheModelLacksIsTheNearest()
    {
        QCOMPARE(targetOf("EPSON_EU_4XX", 9).lineDots(), 432);
        QCOMPARE(targetOf("EPSON_EU_4XX", -1).lineDots(), 640);
    }

    void baseFontIsThatOfByteNull()
    {
        const PrintTarget target = targetOf("EPSON_EU_4XX", 0, 2);
        QCOMPARE(target.font(0).cell, QSize(12, 24));
        QCOMPARE(target.font(1).cell, QSize(9, 17));
        QCOMPARE(target.symbolsPerLine(), 53);
    }

    void fontThatTheModelLacksIsTheBaseFont()
    {
        const PrintTarget target = targetOf("EPSON_EU_4XX", 0, 2);
        QCOMPARE(target.font(4).cell, QSize(12, 24));
        QCOMPARE(target.font(255).cell, QSize(12, 24));
        QCOMPARE(target.symbolsPerLine(200), 53);
    }

    void fontBetweenThoseOfTheRecordIsTheBaseFont()
    {
        PrinterInfo record = recordOf("EPSON_EU_4XX");
        QList<FontInfo> fonts = record.fontTypes();
        fonts.removeAt(1);
        record.setFontTypes(fonts);
        const PrinterProfile profile = *PrinterProfile::forModel(QStringLiteral("EPSON_EU_4XX"));
        QCOMPARE(PrintTarget(profile, record, 0, 2).font(1).cell, QSize(12, 24));
        QCOMPARE(PrintTarget(profile, record, 0, 0).font(1).cell, QSize(9, 17));
        QCOMPARE(PrintTarget(profile, record, 0, 1).font(0).cell, QSize(9, 17));
    }

    void baseFontThatTheModelLacksIsItsFirst()
    {
        QCOMPARE(targetOf("EPSON_EU_4XX", 0, 4).font(0).cell, QSize(9, 17));
        QCOMPARE(targetOf("EPSON_EU_4XX", 0, -1).font(0).cell, QSize(9, 17));
    }

    void formatsAreThoseOfTheRecord()
    {
        const int usual = CharBold | CharUnderline | CharDoubleWidth | CharDoubleHeight;
        QCOMPARE(int(targetOf("GENERAL_EPSON_PROTOCOL").printedFormats()), usual);
        QCOMPARE(int(targetOf("EPSON_EU_4XX").printedFormats()), usual | CharMarkZ);
        QCOMPARE(int(targetOf("SWECOIN_TM_20XX").printedFormats()), usual | CharMarkZ | CharItalic);
    }

    void unknownModelHasNone()
    {
        QVERIFY(!PrintTarget::forModel("NONE", 0));
        QVERIFY(!PrintTarget::forModel(QString(), 0));
    }

    void modelsOfAFileAreOnThePapersOfThoseThatTheyAreLike()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "SHOP_80", "like": "CITIZEN_CBM_1000", "headDots": 400},
                                {"id": "AV_268", "headDots": 320}])",
                            "own.json"),
                 QStringList());
        const auto added = PrintTarget::forModel(models, "SHOP_80", 0);
        QVERIFY(added);
        QCOMPARE(added->profile().modelId(), QString("SHOP_80"));
        QCOMPARE(added->record().id(), QString("CITIZEN_CBM_1000"));
        QCOMPARE(added->paper().pointsToLine(), 625);
        QCOMPARE(added->lineDots(), 400);
        QCOMPARE(PrintTarget::forModel(models, "AV_268", 0)->lineDots(), 320);
        QCOMPARE(PrintTarget::forModel("AV_268", 0)->lineDots(), 384);
        QVERIFY(!PrintTarget::forModel("SHOP_80", 0));
        QVERIFY(!PrintTarget::forModel(models, "SHOP_81", 0));
    }

    void recordWithoutPapersAndFontsPrintsInThePrintersOwn()
    {
        const PrintTarget target(*PrinterProfile::forModel("TSP-TUP"), PrinterInfo(), 0, 3);
        QCOMPARE(target.font(0).cell, QSize(12, 24));
        QCOMPARE(target.font(3).cell, QSize(12, 24));
        QCOMPARE(target.lineDots(), 16);
        QCOMPARE(int(target.printedFormats()), 0);
        QCOMPARE(target.symbolsPerLine(), 1);
    }

    void fontsOfOtherSizesAreTheLargestThatFit_data()
    {
        QTest::addColumn<QSize>("wanted");
        QTest::addColumn<QString>("font");
        QTest::newRow("between") << QSize(11, 24) << "1: 9 x 24";
        QTest::newRow("larger than all") << QSize(20, 30) << "0: 12 x 24";
        QTest::newRow("twice") << QSize(24, 48) << "0: 24 x 48 as 2 x 2";
        QTest::newRow("more than twice") << QSize(40, 60) << "0: 24 x 48 as 2 x 2";
        QTest::newRow("smaller than all") << QSize(5, 7) << "1: 9 x 24";
        QTest::newRow("none") << QSize(0, 0) << "1: 9 x 24";
    }
    void fontsOfOtherSizesAreTheLargestThatFit()
    {
        QFETCH(QSize, wanted);
        QFETCH(QString, font);
        FontInfo info;
        info.setId(1);
        info.setWidth(quint8(wanted.width()));
        info.setHeight(quint8(wanted.height()));
        PrinterInfo record = recordOf("TSP-TUP");
        record.setFontTypes({info});
        const PrintTarget target(*PrinterProfile::forModel("TSP-TUP"), record, 0);
        QCOMPARE(described(target.font(1)), font);
    }

    /// What the printer takes prevails over what the catalogue says.
    void ownCharactersAreThoseOfTheDriversData()
    {
        QCOMPARE(described(changedTarget("EPSON_EU_4XX", R"("ownCharacters": 0)").font(0)),
                 QString("1: 9 x 17"));
        // A font that the record calls one without them has none, either.
        QCOMPARE(described(changedTarget("AV_268", R"("ownCharacters": 95)").font(2)),
                 QString("0: 16 x 32 as 2 x 2"));
        QCOMPARE(described(changedTarget("AV_268", R"("ownCharacters": 95)").font(0)),
                 QString("0: 8 x 16 own 8 x 16"));
    }

    void headOfAnotherWidthGivesAnotherLine()
    {
        QCOMPARE(changedTarget("EPSON_EU_4XX", R"("headDots": 512)").lineDots(), 512);
    }
};

QTEST_GUILESS_MAIN(TestPrintTarget)
#include "tst_printtarget.moc"
