#include "encoder/pagetable_p.h"

#include <QtConcurrent>
#include <QtTest>
#include <numeric>

#include "printerslib/drivers/codepage.h"

using namespace printerslib::drivers;

Q_DECLARE_METATYPE(std::optional<unsigned char>)

namespace {

PrinterProfile profileOf(const char *model)
{
    return *PrinterProfile::forModel(QString::fromLatin1(model));
}

int pageFor(const PageTable &table, const QString &text, int preferred)
{
    return table.pageFor(reinterpret_cast<const char16_t *>(text.utf16()), text.size(), preferred);
}

}  // namespace

class TestPageTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachByteOfEachPageIsWhatThePageShows_data() { modelRows(); }
    void eachByteOfEachPageIsWhatThePageShows()
    {
        QFETCH(QString, model);
        const auto profile = PrinterProfile::forModel(model);
        const auto table = PageTable::of(*profile);
        const auto pages = profile->codePages();
        for (auto it = pages.begin(); it != pages.end(); ++it) {
            const auto page = CodePage::forName(*it);
            QVERIFY(page);
            for (int character = 0; character < 0x10000; ++character)
                compareCharacter(*table, it.key(), *page, char16_t(character));
        }
    }

    void aPageAboveAByteOrBelowNoneHasNothing()
    {
        const auto table = PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL"));
        for (const int page : {-1, 256, 1 << 20, INT_MIN, INT_MAX, 99})
            QVERIFY(!table->byteOn(page, u'A'));
        QVERIFY(table->byteOn(17, u'A'));
    }

    void controlCharactersAreNowhere()
    {
        const auto table = PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL"));
        for (int character = 0; character < 0x20; ++character)
            QVERIFY(!table->has(char16_t(character)));
        for (int character = 0x7F; character < 0xA0; ++character)
            QVERIFY(!table->has(char16_t(character)));
        QVERIFY(!table->has(0xFFFD));
        QVERIFY(!table->has(0xD83D));
        QVERIFY(!table->has(0xFFFF));
    }

    void spacesThatDontBreakAreBlanks()
    {
        const auto table = PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL"));
        for (const char16_t space : {u'\u00A0', u'\u2007', u'\u2009', u'\u202F', u'\u3000'})
            QCOMPARE(int(table->byteOn(0, space).value_or(0)), space == 0xA0 ? 0xFF : int(' '));
        QCOMPARE(int(table->byteOn(16, 0xA0).value_or(0)), 0xA0);
        QVERIFY(!table->has(0x200B));
    }

    void asciiOfAPageThatHasSomethingElseThereIsNotOnIt()
    {
        // CP864 has the Arabic percent sign in the place of the usual one.
        const auto table = PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL"));
        QVERIFY(!table->byteOn(37, u'%'));
        QCOMPARE(int(table->byteOn(37, 0x066A).value_or(0)), int('%'));
        QCOMPARE(int(table->byteOn(37, u'A').value_or(0)), int('A'));
        QCOMPARE(pageFor(*table, QStringLiteral("%"), 37), 0);
    }

    void pageForText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("preferred");
        QTest::addColumn<int>("page");
        const auto row = [](const char *name, const QString &text, int preferred, int page) {
            QTest::newRow(name) << text << preferred << page;
        };
        // 15 ISO-8859-7, 17 CP866, 46 CP1251, 19 CP858, 16 CP1252, 2 CP850, 13 CP857
        row("preferred has it", QStringLiteral("Щи €"), 17, 17);
        row("most that follow at once", QStringLiteral("Щи €5"), 0, 46);
        row("smaller number of equals", QStringLiteral("ы"), 0, 17);
        row("the euro alone", QStringLiteral("€"), 17, 15);
        row("the euro before what one page lacks", QStringLiteral("€╔"), 17, 19);
        row("preferred has it for a moment", QStringLiteral("ñüЩ"), 0, 0);
        row("text in between counts", QStringLiteral("ы 1234567890 €"), 0, 46);
        row("the text's end", QStringLiteral("ы"), -1, 17);
        row("no preferred page", QStringLiteral("a"), -1, 0);
        row("a preferred page that isn't there", QStringLiteral("a"), 99, 0);
        row("none", QStringLiteral("漢"), 17, -1);
        row("none, then one", QStringLiteral("漢a"), 17, -1);
        row("one, then none", QStringLiteral("ы漢"), 0, 17);
        row("nothing", QString(), 17, -1);
        row("a control character", QStringLiteral("\n"), 17, -1);
    }
    void pageForText()
    {
        QFETCH(QString, text);
        QFETCH(int, preferred);
        QFETCH(int, page);
        const auto table = PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL"));
        QCOMPARE(pageFor(*table, text, preferred), page);
    }

    void aTextOfAnySizeEnds()
    {
        const auto table = PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL"));
        QCOMPARE(pageFor(*table, QString(1'000'000, u'ы'), 0), 17);
    }

    void firstPage_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("codec");
        QTest::addColumn<int>("page");
        const auto row = [](const char *model, int number, const char *codec, int page) {
            QTest::addRow("%s %d %s", model, number, codec)
                << QString(model) << number << QString(codec) << page;
        };
        const char *const general = "GENERAL_EPSON_PROTOCOL";
        row(general, 0, "", 0);
        row(general, 0, "cp866", 17);
        row(general, 0, "CP866", 17);
        row(general, 0, "IBM866", 17);
        row(general, 0, "IBM 866", 17);
        row(general, 0, "windows-1251", 46);
        row(general, 0, "Windows-1251", 46);
        row(general, 0, "ISO 8859-15", 40);
        row(general, 0, "UTF-8", -1);
        row(general, 0, "no such codec", -1);
        row(general, 0, "//IGNORE", -1);
        row(general, 46, "cp866", 46);
        row(general, 99, "cp866", -1);
        row(general, -1, "", -1);
        row("CUSTOM_VKP_80", 0, "cp866", 0);
        row("CUSTOM_VKP_80", 19, "cp866", 19);
        row("CUSTOM_VKP_80", 17, "", -1);
    }
    void firstPage()
    {
        QFETCH(QString, model);
        QFETCH(int, number);
        QFETCH(QString, codec);
        QFETCH(int, page);
        QCOMPARE(PageTable::firstPage(*PrinterProfile::forModel(model), number, codec), page);
    }

    void aModelsOwnPageIsOneOfItsPages_data() { modelRows(); }
    void aModelsOwnPageIsOneOfItsPages()
    {
        QFETCH(QString, model);
        const auto profile = PrinterProfile::forModel(model);
        const int page = PageTable::firstPage(*profile, 0, QStringLiteral("cp866"));
        QVERIFY(profile->codePages().contains(page));
    }

    void tablesAreMadeOnceForAListOfPages()
    {
        const auto first = PageTable::of(profileOf("CUSTOM_VKP_80"));
        QCOMPARE(PageTable::of(profileOf("CUSTOM_VKP_80")), first);
        QCOMPARE(PageTable::of(profileOf("CUSTOM_TG_2480_H")), first);
        QVERIFY(PageTable::of(profileOf("GENERAL_EPSON_PROTOCOL")) != first);
    }

    void anyThreadMayAsk()
    {
        const QStringList models = PrinterProfile::modelIds();
        QVector<int> rounds(200);
        std::iota(rounds.begin(), rounds.end(), 0);
        QtConcurrent::blockingMap(rounds, [&models](int &round) {
            const auto profile = PrinterProfile::forModel(models.at(round % models.size()));
            const auto table = PageTable::of(*profile);
            round = table->byteOn(profile->codePages().firstKey(), u'A').value_or(0);
        });
        QCOMPARE(rounds, QVector<int>(200, 'A'));
    }

private:
    static void modelRows()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : PrinterProfile::modelIds())
            QTest::newRow(qPrintable(model)) << model;
    }

    static void compareCharacter(const PageTable &table, int number, const CodePage &page,
                                 char16_t character)
    {
        const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
        std::optional<unsigned char> expected;
        if (!isControl)
            expected = page.byteOf(character);
        const bool isSpace = QChar(character).category() == QChar::Separator_Space;
        if (isSpace && !expected)
            expected = static_cast<unsigned char>(' ');
        const auto byte = table.byteOn(number, character);
        if (byte != expected) {
            QFAIL(qPrintable(QStringLiteral("page %1, U+%2: %3")
                                 .arg(number)
                                 .arg(uint(character), 4, 16, QLatin1Char('0'))
                                 .arg(int(byte.value_or(0)))));
        }
        if (byte && !table.has(character))
            QFAIL("a page has it, but not all together");
    }
};

QTEST_APPLESS_MAIN(TestPageTable)
#include "tst_pagetable.moc"
