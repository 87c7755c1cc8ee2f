#include <QtTest>

#include "randomlines.h"
#include "templatelint.h"

using namespace templatelint;

/// Templates as people write them, put together at random: nothing is found in them, and with one
/// mistake put in, that one is.
class TestLintFaults : public QObject
{
    Q_OBJECT

private:
    static constexpr int runs = 400;

    static QStringList soundLines()
    {
        return {"<C><B><SHOP>",
                "Order <ORDER,000000><S><SALE_DT,dd.mm.yyyy hh:nn>",
                "Receipt <DOCNO><S>Till <TILL,00>",
                "[<NAME>]",
                "[  <QTY1,0.000> x <PRICE,0.00><S><QTY1*PRICE,0.00>]",
                "[Discount<S>-<NONE,0.00>]",
                "<B>Total<S><TOTAL,0.00>",
                "",
                "------------------------------",
                "<C>Thank you!",
                "<R>at the right edge",
                "<QR>https://example.org/r?n=<DOCNO>&s=<TOTAL>",
                "<LS2>more space",
                "<F2>small print<F1> and large",
                "plain <B:>bold<:B>, <U:>underlined<:U>",
                "<ENTRIES>",
                "VAT 20%<S><TOTAL*20/120,0.00>",
                "<H2><W2>PAID",
                "open from <OPENS,h:nn ap>",
                "<SALE_DT,yyyy-mm-dd>, <SALE_DT,hh:nn:ss>",
                "[<X:><TILL-1><:X>Till <TILL> of two]",
                "points<S><floor(TOTAL/TILL),0>",
                "never printed<X:> <DOCNO><:X>",
                "symbols <#91> and <93>"};
    }

    static PrinterDocument sale()
    {
        PrinterDocument document;
        document.setAttributes({{"SHOP", "Harbour Kiosk"},
                                {"ORDER", 1207},
                                {"DOCNO", 7},
                                {"TILL", 2},
                                {"NAME", "Black tea"},
                                {"QTY1", 2.5},
                                {"PRICE", 3.5},
                                {"NONE", 0},
                                {"TOTAL", 8.75},
                                {"TRUE", true},
                                {"WILD", "Sale [b]!"},
                                {"LINE", "a [hr /] b"},
                                {"GIFT", "Gift [card]"},
                                {"SPECIAL", "Gift <Special> card"},
                                {"OPENS", QTime(9, 30)},
                                {"SALE_DT", QDateTime(QDate(2026, 5, 9), QTime(14, 30, 7))}});
        document.setEntries("Cash=10\tChange=1.25");
        return document;
    }

    static Options optionsFor(bool withData)
    {
        Options options;
        if (withData)
            options.document = sale();
        return options;
    }

    static QStringList soundTemplate(RandomLines &random)
    {
        const QStringList pool = soundLines();
        QStringList lines{pool.first()};
        for (int count = 3 + random.below(12); count > 0; --count)
            lines.append(pool.at(random.below(pool.size())));
        lines.append("The end");
        return lines;
    }

    static QStringList soundBbLines()
    {
        return {"[b]<SHOP>[/b]",
                "Order <ORDER,000000>, [i]till[/i] <TILL,00>",
                "[u]open from <OPENS,h:nn ap>[/u]",
                "[b][i]both[/i][/b] and [b]one[/b]",
                "[size=small]small print[/size] and [size=normal]other[/size]",
                "[size=large]PAID[/size]",
                "[hr /]",
                "[hr=dashed /]",
                "[center]a\nb[/center]",
                "[right]at the right edge[/right]",
                "[img name=logo][/img]",
                "[field width=10]Tea[/field][field width=8 align=right]<PRICE,0.00>[/field]",
                "[column width=20]Bun[/column]",
                "[field width=6 zerofill=4]<TILL>[/field]",
                "[barcode]<ORDER,0000000000000>[/barcode]",
                "[qrcode]https://example.org/r?n=<DOCNO>&s=<TOTAL>[/qrcode]",
                "<SALE_DT,yyyy-mm-dd>, <SALE_DT,hh:nn:ss>",
                "Cola [0.5 l] for <NAME>",
                "",
                "plain text"};
    }

    static QStringList soundBbText(RandomLines &random)
    {
        const QStringList pool = soundBbLines();
        QStringList lines{"[center][b]Receipt[/b][/center]"};
        for (int count = 3 + random.below(12); count > 0; --count)
            lines += pool.at(random.below(pool.size())).split('\n');
        lines.append("The end");
        return lines;
    }

    /// A paper with a larger font, or without one, and two pictures that one name fits.
    static Options bbOptions(bool withData, bool hasLargeFont)
    {
        constexpr int dots = 512;
        const PaperFont usual{QSize(12, 24), QSize(), "0"};
        const PaperFont large{QSize(24, 48), QSize(), "1"};
        Options options = optionsFor(withData);
        options.paper = Paper{dots, {usual, usual, usual, hasLargeFont ? large : usual}, "P", true};
        options.pictureOf = [](const QString &name) {
            if (name == "logo")
                return FoundPicture{{"logo.png"}, QString()};
            return name == "twin" ? FoundPicture{{"twin-a.png", "twin-b.png"}, QString()}
                                  : FoundPicture{{}, "there is no picture \"" + name + '"'};
        };
        options.codeFault = [](CodeKind, const QByteArray &payload) {
            const bool isAscii = std::all_of(payload.cbegin(), payload.cend(),
                                             [](char c) { return static_cast<uchar>(c) < 128; });
            return isAscii ? QString() : QString("it isn't ASCII");
        };
        return options;
    }

    /// What a rule finds of one fault on the line behind this place; how often of all runs.
    static int timesFound(const char *rule, const QStringList &faults, bool needsData,
                          bool hasLargeFont)
    {
        RandomLines random(5);
        int found = 0;
        for (int run = 0; run < runs; ++run) {
            QStringList lines = soundBbText(random);
            const int place = 1 + random.below(lines.size() - 1);
            lines.insert(place, faults.at(random.below(faults.size())));
            const auto findings = lint(lines, bbOptions(needsData || run % 2 == 0, hasLargeFont));
            const bool isFound =
                std::any_of(findings.cbegin(), findings.cend(), [&](const Finding &finding) {
                    return finding.rule->name == QByteArray(rule) && finding.line == place + 1;
                });
            if (!isFound)
                qInfo() << lines << place;
            found += isFound ? 1 : 0;
        }
        return found;
    }

private Q_SLOTS:
    // The engine logs every tag that it fills.
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void nothingIsFoundInSoundTemplates_data()
    {
        QTest::addColumn<bool>("withData");
        QTest::newRow("with a document") << true;
        QTest::newRow("without one") << false;
    }
    void nothingIsFoundInSoundTemplates()
    {
        QFETCH(bool, withData);
        RandomLines random(1);
        for (int run = 0; run < 2 * runs; ++run) {
            const QStringList lines = soundTemplate(random);
            const QVector<Finding> findings = lint(lines, optionsFor(withData));
            if (!findings.isEmpty())
                qInfo() << lines << findings.first().message;
            QVERIFY(findings.isEmpty());
        }
    }

    void oneFaultIsFound_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QStringList>("faults");
        QTest::addColumn<bool>("needsData");
        const auto row = [](const char *name, const char *rule, const QStringList &faults,
                            bool needsData = false) {
            QTest::newRow(name) << QString(rule) << faults << needsData;
        };
        row("font at the end of a line", "lost-font-switch",
            {"<F4>four<F1>", "<C><F2>two<F1>", "[<F3><SHOP><F1>]", "a<F2>b<F1><:>"});
        row("font to the end of the receipt", "open-font",
            {"a <F2>small", "<F4><SHOP>", "<C>x<F3>y<F2>z"});
        row("format to the end of the receipt", "open-format",
            {"<U:>x", "a <W2:>b", "<Z:><SHOP>", "<N:>x<:U>"});
        row("font that doesn't exist", "unknown-font",
            {"<F5>five<F1> x", "x<F9>y<F1>z", "<F12><SHOP><F1> "});
        row("markup without text", "lost-markup",
            {"<LS3>", "<B>", "<C><H2>", "<R>", "<F2>", "[<C><U>]"});
        row("letters of a date", "date-letters",
            {"<SALE_DT,DD.MM.YYYY>", "<SALE_DT,Day dd>", "<SALE_DT,h:nn am>", "<SALE_DT,hh:mm>",
             "[at <SALE_DT,hh:nn Uhr>]", "<SALE_DT,dd.mm.YY>"});
        row("comma of a date", "comma-in-format",
            {"<SALE_DT,dd.mm.yyyy, hh:nn>", "[x <SALE_DT,dddd, dd.mm>]"});
        row("format of another kind", "value-format",
            {"<ORDER,0.00>", "<SALE_DT,0.00>", "<TOTAL,dd.mm>", "<OPENS,dd.mm.yyyy>",
             "<SHOP,dd.mm.yyyy>"},
            true);
        row("format without effect", "value-format", {"<SHOP,20>", "<NAME,0.00>", "<TRUE,0>"},
            true);
        row("format with more than digits", "value-format",
            {"<TOTAL,0.00 EUR>", "<TOTAL,+0.00>", "<TILL,20%>", "<TOTAL*2,0.00 EUR>",
             "<TOTAL,0.0000000000>"});
        row("several tabs", "repeated-tab", {"a<S>b<S>c", "[<SHOP><S><TILL><S><TOTAL>]"});
        row("group left open", "unmatched-bracket", {"[a <SHOP>", "x [b", "[a [b <TOTAL>]"});
        row("guessed name", "guessed-name",
            {"<BARCODE>", "<CUT>", "<LOGO>", "<HR>", "<L>left", "<FISCAL_HEAD>", "<BR>",
             "<CENTER>x", "<round(TOTAL)>", "<max(TOTAL,PRICE),0.00>", "[<min(TOTAL,2)>]"});
    }
    void oneFaultIsFound()
    {
        QFETCH(QString, rule);
        QFETCH(QStringList, faults);
        QFETCH(bool, needsData);
        constexpr double least = 0.95;
        RandomLines random(2);
        int found = 0;
        for (int run = 0; run < runs; ++run) {
            QStringList lines = soundTemplate(random);
            // What switches a font back keeps it from going on to the end.
            lines.removeAll("<F2>small print<F1> and large");
            const int place = 1 + random.below(lines.size() - 1);
            lines.insert(place, faults.at(random.below(faults.size())));
            const auto findings = lint(lines, optionsFor(needsData || run % 2 == 0));
            const bool isFound =
                std::any_of(findings.cbegin(), findings.cend(), [&](const Finding &finding) {
                    return finding.rule->name == rule && finding.line == place + 1;
                });
            found += isFound ? 1 : 0;
        }
        qInfo("found: %d of %d", found, runs);
        QVERIFY(found >= least * runs);
    }

    void nothingIsFoundInSoundBbTexts_data() { nothingIsFoundInSoundTemplates_data(); }
    void nothingIsFoundInSoundBbTexts()
    {
        QFETCH(bool, withData);
        RandomLines random(4);
        for (int run = 0; run < 2 * runs; ++run) {
            const QStringList lines = soundBbText(random);
            QVERIFY(isBbCode(lines));
            const QVector<Finding> findings = lint(lines, bbOptions(withData, true));
            if (!findings.isEmpty())
                qInfo() << lines << findings.first().message;
            QVERIFY(findings.isEmpty());
        }
    }

    void oneFaultOfBbCodeIsFound_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QStringList>("faults");
        QTest::addColumn<bool>("needsData");
        QTest::addColumn<bool>("hasLargeFont");
        const auto row = [](const char *name, const char *rule, const QStringList &faults,
                            bool needsData = false, bool hasLargeFont = true) {
            QTest::newRow(name) << QString(rule) << faults << needsData << hasLargeFont;
        };
        row("tag, key or value that there isn't", "bbcode-name",
            {"[bold]x[/bold]", "[size=huge]x[/size]", "[hr=double /]", "[img src=logo][/img]",
             "[field width=300]x[/field]", "[field align=middle]x[/field]", "[b width=3]x[/b]"});
        row("tag that prints as it stands", "bbcode-as-text",
            {"[img name=\"logo\"][/img]", "[ b]x", "x[/ i]", "[size=\"large]x"});
        row("tag that is left open", "bbcode-open",
            {"[b]x", "x[/i]", "[center]x", "[hr]", "x[qrcode]1", "[img name=logo]", "[/size]x"});
        row("crossed tags", "bbcode-crossed",
            {"[b][i]x[/b][/i]", "[b][center]x[/b][/center]", "[i]a[u]b[/i]c[/u]"});
        row("missing picture", "missing-picture", {"[img name=none][/img]", "[img][/img]"});
        row("picture of two files", "ambiguous-picture", {"[img name=twin][/img]"});
        row("code that can't be printed", "unencodable-code",
            {"[barcode][/barcode]", "[qrcode][/qrcode]", "[barcode]Ж[/barcode]"});
        row("large text that isn't", "small-large-text",
            {"[size=large]x[/size]", "a [size=middle]b[/size]"}, false, false);
        row("too long a line", "wide-line",
            {"Goods that were paid with a card are taken back within two weeks",
             "[size=large]" + QString(30, '=') + "[/size]"});
        row("name that the document hasn't", "unknown-attribute", {"[b]<SHPO>[/b]", "a <BONUS>"},
            true);
        row("value that acts as markup", "markup-in-value",
            {"<WILD>", "[b]<WILD>[/b]", "for <LINE>", "[center]<GIFT>[/center]", "<SPECIAL>"},
            true);
    }
    void oneFaultOfBbCodeIsFound()
    {
        QFETCH(QString, rule);
        QFETCH(QStringList, faults);
        QFETCH(bool, needsData);
        QFETCH(bool, hasLargeFont);
        constexpr double least = 0.95;
        const int found = timesFound(qPrintable(rule), faults, needsData, hasLargeFont);
        qInfo("found: %d of %d", found, runs);
        QVERIFY(found >= least * runs);
    }

    // A number with a format instead of the plain one.
    void lostCopyMarkIsFound()
    {
        RandomLines random(3);
        for (int run = 0; run < runs; ++run) {
            QStringList lines = soundTemplate(random);
            lines.replaceInStrings("<DOCNO>", "<TILL>");
            const int place = 1 + random.below(lines.size() - 1);
            lines.insert(place, "Receipt <DOCNO,0000>");
            Options options = optionsFor(run % 2 == 0);
            if (options.document)
                options.document->setIsCopy(run % 4 == 0);
            const auto findings = lint(lines, options);
            QCOMPARE(findings.size(), 1);
            QCOMPARE(findings.first().rule->name, "no-copy-mark");
            QCOMPARE(findings.first().line, place + 1);
            lines[place] += "<X:><DOCNO><:X>";
            QVERIFY(lint(lines, options).isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(TestLintFaults)
#include "tst_lint_faults.moc"
