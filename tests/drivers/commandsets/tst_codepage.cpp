#include "printerslib/drivers/codepage.h"

#include <QtTest>
#include <array>

#include "commandsets/codepage_p.h"
#include "commandsets/internationalset_p.h"
#include "threads.h"

using namespace printerslib::drivers;

class TestCodePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void byteShowsCharacter_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("byte");
        QTest::addColumn<uint>("character");
        const auto row = [](const char *name, int byte, uint character) {
            QTest::addRow("%s %02X", name, byte) << QString(name) << byte << character;
        };
        row("CP866", 0x80, 0x410);  // first capital
        row("CP866", 0xEF, 0x44F);  // last small letter
        row("CP866", 0xF0, 0x401);
        row("CP866", 0xFC, 0x2116);  // numero sign
        row("CP437", 0x81, 0xFC);
        row("CP437", 0xE1, 0xDF);
        row("CP437", 0xDB, 0x2588);
        row("CP858", 0xD5, 0x20AC);
        row("CP850", 0xD5, 0x131);
        row("CP852", 0xA5, 0x105);
        row("CP1251", 0xC0, 0x410);
        row("CP1251", 0xB9, 0x2116);
        row("CP1252", 0x80, 0x20AC);
        row("ISO-8859-2", 0xA1, 0x104);
        row("ISO-8859-2", 0xA0, 0xA0);
        row("ISO-8859-2", 0x9F, 0);  // a control, no sign
        row("ISO-8859-15", 0x80, 0);
        row("CP1125", 0xF2, 0x490);
        row("CP737", 0x80, 0x391);
        row("CP775", 0xD0, 0x105);
        row("CP874", 0xA1, 0xE01);
        row("CP1258", 0xC3, 0x102);
        row("CP1258", 'A', 'A');  // a mark could follow it
        row("RK1048", 0x8D, 0x49A);
        row("ISO-8859-15", 0xA4, 0x20AC);
        row("KOI8-R", 0xC1, 0x430);
        row("KATAKANA", 0xB1, 0xFF71);
        row("KATAKANA", 0xDF, 0xFF9F);
        row("KATAKANA", 0x80, 0x2581);
        row("KATAKANA", 0xF1, 0x5186);
        row("KATAKANA", 0xFF, ' ');
        row("KATAKANA", 'a', 'a');
        row("CP866", 0x7F, ' ');
        row("CP866", 0x20, ' ');
    }
    void byteShowsCharacter()
    {
        QFETCH(QString, name);
        QFETCH(int, byte);
        QFETCH(uint, character);
        const auto page = CodePage::forName(name);
        QVERIFY(page);
        QCOMPARE(uint(page->character(static_cast<unsigned char>(byte))), character);
    }

    void everyByteIsFoundAgain_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"CP437", "CP866", "CP858", "CP1251", "CP1255", "KATAKANA"})
            QTest::newRow(name) << QString(name);
    }
    void everyByteIsFoundAgain()
    {
        QFETCH(QString, name);
        const auto page = CodePage::forName(name);
        for (int value = 0x20; value < 0x100; ++value) {
            const auto byte = static_cast<unsigned char>(value);
            const char16_t character = page->character(byte);
            if (character == 0)
                continue;
            const auto found = page->byteOf(character);
            QVERIFY(found && *found <= byte);
            QCOMPARE(uint(page->character(*found)), uint(character));
        }
    }

    void ofSeveralBytesTheSmallestIsGiven()
    {
        QCOMPARE(int(*CodePage::forName("KATAKANA")->byteOf(u' ')), 0x20);
    }

    void bytesThatTheSetLeavesFree()
    {
        QCOMPARE(uint(CodePage::forName("CP1252")->character(0x81)), 0u);
        QCOMPARE(uint(CodePage::forName("CP1255")->character(0xD9)), 0u);
        QCOMPARE(uint(CodePage::forName("CP866")->character(0x0A)), 0u);
        QVERIFY(!CodePage::forName("CP866")->byteOf(0));
    }

    void characterThatTheSetLacks() { QVERIFY(!CodePage::forName("CP866")->byteOf(u'\u20AC')); }

    void namesInAnyCase()
    {
        const auto page = CodePage::forName("cp866");
        QVERIFY(page);
        QCOMPARE(page->name(), QString("CP866"));
        QVERIFY(CodePage::forName("Katakana"));
    }

    void whatIsNoSetOfSingleBytesIsUnknown_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name :
             {"", "nothing", "UTF-8", "UTF-16", "UTF-7", "SHIFT_JIS", "GB18030", "ISO-2022-JP",
              "EBCDIC-US", "WCHAR_T", "CP866//TRANSLIT", "CP866,", "../CP866", "CP866\n"})
            QTest::newRow(name) << QString(name);
        QTest::newRow("not ASCII") << QString::fromUtf8("СР866");
        QTest::newRow("long") << QString(100'000, u'a');
    }
    void whatIsNoSetOfSingleBytesIsUnknown()
    {
        QFETCH(QString, name);
        QVERIFY(!CodePage::forName(name));
    }

    void twoBytesShowACharacter_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("bytes");
        QTest::addColumn<uint>("character");
        QTest::newRow("GB18030") << "GB18030" << 0xD6D0 << 0x4E2Du;
        QTest::newRow("GB2312") << "GB2312" << 0xD6D0 << 0x4E2Du;
        QTest::newRow("BIG5") << "BIG5" << 0xA4A4 << 0x4E2Du;
        QTest::newRow("EUC-KR") << "EUC-KR" << 0xB0A1 << 0xAC00u;
        QTest::newRow("SHIFT_JIS") << "SHIFT_JIS" << 0x93FA << 0x65E5u;
        QTest::newRow("JIS") << "JIS" << 0x467C << 0x65E5u;
        QTest::newRow("free") << "SHIFT_JIS" << 0x8120 << 0u;
        QTest::newRow("half of four") << "GB18030" << 0x8130 << 0u;
    }
    void twoBytesShowACharacter()
    {
        QFETCH(QString, name);
        QFETCH(int, bytes);
        QFETCH(uint, character);
        const auto set = TwoByteSet::forName(name);
        QVERIFY(set);
        const auto lead = static_cast<unsigned char>(bytes >> 8);
        QVERIFY(set->isLead(lead));
        QCOMPARE(uint(set->character(lead, static_cast<unsigned char>(bytes & 0xFF))), character);
    }

    void leadsOfTwoByteSets()
    {
        QVERIFY(!TwoByteSet::forName("GB2312")->isLead(0x84));
        QVERIFY(!TwoByteSet::forName("SHIFT_JIS")->isLead('A'));
        QVERIFY(TwoByteSet::forName("JIS")->isLead('A'));
        // Narrow katakana are one byte: the digit behind one isn't its second.
        for (const int kana : {0xA1, 0xB6, 0xDF})
            QVERIFY(!TwoByteSet::forName("SHIFT_JIS")->isLead(static_cast<unsigned char>(kana)));
        for (const int lead : {0x81, 0x9F, 0xE0, 0xFC})
            QVERIFY(TwoByteSet::forName("SHIFT_JIS")->isLead(static_cast<unsigned char>(lead)));
        QVERIFY(TwoByteSet::forName("GB18030")->isLead(0xB6));
        QVERIFY(!TwoByteSet::forName("CP866"));
    }

    void countriesReplaceTwelveCharacters()
    {
        QCOMPARE(uint(internationalCharacters(2)[3]), 0xC4u);  // Germany: A with dots for [
        QCOMPARE(uint(internationalCharacters(8)[4]), 0xA5u);  // Japan: yen for backslash
        QCOMPARE(uint(internationalCharacters(7)[0]), 0x20A7u);
        for (int number = 0; number < 256; ++number) {
            const char16_t *characters = internationalCharacters(number);
            if (characters != nullptr)
                QCOMPARE(std::char_traits<char16_t>::length(characters),
                         std::size(internationalBytes));
        }
        for (size_t i = 0; i < std::size(internationalBytes); ++i)
            QCOMPARE(uint(internationalCharacters(0)[i]), uint(internationalBytes[i]));
        QCOMPARE(internationalCharacters(18), nullptr);
        QCOMPARE(internationalCharacters(-1), nullptr);
    }

    void threadsShareSets()
    {
        const QStringList names = {"CP866", "CP437", "KATAKANA", "CP1251", "nothing", "CP862"};
        constexpr int numbers = 200;
        const auto letterOf = [&names](int number) {
            const auto page = CodePage::forName(names.at(number % names.size()));
            const auto set = TwoByteSet::forName(number % 2 == 0 ? "GB18030" : "BIG5");
            const bool isRight = set->character(0xA4, 0xA4) != 0;
            return isRight && page ? int(page->character('A')) : -1;
        };
        std::array<int, numbers> letters{};
        constexpr int threads = 4;
        runOnThreads(threads, [&letters, &letterOf](int thread) {
            for (int number = thread; number < numbers; number += threads)
                letters[size_t(number)] = letterOf(number);
        });
        for (int number = 0; number < numbers; ++number)
            QCOMPARE(letters[size_t(number)], number % names.size() == 4 ? -1 : int('A'));
    }
};

QTEST_GUILESS_MAIN(TestCodePage)
#include "tst_codepage.moc"
