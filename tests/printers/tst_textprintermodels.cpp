#include <QtTest>

#include "printers/textprintermodels.h"

class TestTextPrinterModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constantsHoldTheStoredNames_data()
    {
        QTest::addColumn<QString>("constant");
        QTest::addColumn<QString>("text");

        using Models = TextPrinterModels;
        QTest::newRow("VKP-80") << Models::MODEL_CUSTOM_VKP_80 << "CUSTOM_VKP_80";
        QTest::newRow("TG 2480 H") << Models::MODEL_CUSTOM_TG_2480_H << "CUSTOM_TG_2480_H";
        QTest::newRow("TG 2480 SE") << Models::MODEL_CUSTOM_TG_2480_SE << "CUSTOM_TG_2480_SE";
        QTest::newRow("PPU-700") << Models::MODEL_CITIZEN_PPU_700 << "CITIZEN_PPU_700";
        QTest::newRow("CBM-1000") << Models::MODEL_CITIZEN_CBM_1000 << "CITIZEN_CBM_1000";
        QTest::newRow("CT-S2000") << Models::MODEL_CITIZEN_CTS_2000 << "CITIZEN_CTS_2000";
        QTest::newRow("AV-268") << Models::MODEL_AV_268 << "AV_268";
        QTest::newRow("common protocol") << Models::MODEL_GENERAL_EPSON << "GENERAL_EPSON_PROTOCOL";
        QTest::newRow("TSP, with a hyphen") << Models::MODEL_TSP_TUP << "TSP-TUP";
        QTest::newRow("PPU-231") << Models::MODEL_CITIZEN_PPU_231 << "CITIZEN_PPU_231";
        QTest::newRow("EU-4XX") << Models::MODEL_EPSON_EU_4XX << "EPSON_EU_4XX";
        QTest::newRow("TM 20xx") << Models::MODEL_SWECOIN_TM_20XX << "SWECOIN_TM_20XX";
        QTest::newRow("CPP-8001") << Models::MODEL_CITIZEN_CPP_8001 << "CITIZEN_CPP_8001";
        QTest::newRow("WPK 833, with an underscore") << Models::MODEL_WPK833 << "WPK_833";
        QTest::newRow("kept for clients") << Models::MODEL_PNG << "PNG";
        QTest::newRow("G80") << Models::MODEL_MERCURY_G80_RS << "MERCURY_G80_RS";
        QTest::newRow("F209") << Models::MODEL_NP_F209_2D << "NP_F209_2D";
    }

    void constantsHoldTheStoredNames()
    {
        QFETCH(QString, constant);
        QFETCH(QString, text);
        QCOMPARE(constant, text);
    }
};

QTEST_APPLESS_MAIN(TestTextPrinterModels)
#include "tst_textprintermodels.moc"
