#include <QtTest>

#include "analysis.h"
#include "differential/generator.h"
#include "markingtranslator.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/templatetags_p.h"
#include "randomlines.h"
#include "tags.h"
#include "templatelint.h"

using namespace templatelint;

namespace {

/// Lines as the engine prints them one after the other.
struct EnginePrinting
{
    const PrinterDocumentFormatter formatter{0, nullptr};
    unsigned char format = 0;
    unsigned char font = 0;
    ETextAlignment alignment = AlignLeft;

    DocumentBlock print(const QString &line)
    {
        return formatter.formatPrintStr(line, format, font, alignment, 0);
    }
};

}  // namespace

// The checker follows a template on its road through the engine. Whatever it is given, both must
// come to the same end.
class TestTemplateLint : public QObject
{
    Q_OBJECT

private:
    static constexpr int runs = 3000;

    static QStringList parts()
    {
        return {"<",           ">",
                "[",           "]",
                "<B:>",        "<:B>",
                "<B>",         "<W2>",
                "<:W2>",       "<W2:>",
                "<U:>",        "<:U>",
                "<Z>",         "<S>",
                "<C>",         "<R>",
                "<L1>",        "<LS2>",
                "<LS5>",       "<:>",
                "<65>",        "<#1>",
                "<#60>",       "<1x>",
                "<F2>",        "<F0>",
                "<F 1>",       "<X>",
                "<X:>",        "<:X>",
                "<I>",         "</I>",
                "<ENTRIES>",   "<DOCNO>",
                "a",           " ",
                "text",        "<ZERO>",
                "<NAME>",      "<TAGGED>",
                "<OPEN>",      "<CLOSE>",
                "<A + B>",     "<QTY*2,0.00>",
                "<QTY*>",      "<NAME2>",
                "<MULTILINE>", "<entries>",
                "<H",          "<SPECSYMBOLS=shop>",
                "\u0416",      "\U0001F600",
                "<ncr(5,2)>",  "<BRACKET>",
                ":>",          "\u00DF",
                "\uFB01",      "<ENTR",
                "IES>",        "I>",
                "X:>"};
    }

    static PrinterDocument document()
    {
        PrinterDocument result;
        result.setAttributes({{"ZERO", 0},
                              {"NAME", "Tea"},
                              {"TAGGED", "<B:>x<NAME>y<S>"},
                              {"OPEN", "<X:>"},
                              {"CLOSE", "<:X>"},
                              {"QTY", 3},
                              {"A", 1},
                              {"B", 2.5},
                              {"MULTILINE", "one\ntwo<:B>"},
                              {"BRACKET", "]["},
                              {"DOCNO", 7}});
        result.setEntries("Cash=10\tChange=<NAME>\tlast[\u00DF<ENT");
        return result;
    }

private Q_SLOTS:
    // The engine logs every tag that it fills.
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void everyTagOfTheLanguageIsMarkup()
    {
        using namespace templates;
        for (const PlainTag &tag : plainTags)
            QVERIFY2(templatelint::isMarkup(innerOf(tag.text)), tag.text.data());
        for (const FormatTag &tag : rangeOrder) {
            for (const QLatin1String text : {tag.wholeLine, tag.open, tag.close})
                QVERIFY2(templatelint::isMarkup(innerOf(text)), text.data());
            QVERIFY(isFormatSwitch(innerOf(tag.open)) && isFormatSwitch(innerOf(tag.close)));
            QVERIFY(!isFormatSwitch(innerOf(tag.wholeLine)));
        }
        for (const QLatin1String text :
             {blankLineTag, removalBegin, removalEnd, imageBegin, imageEnd, qrTag, entriesTag})
            QVERIFY2(templatelint::isMarkup(innerOf(text)), text.data());
        QVERIFY(!templatelint::isMarkup("copy") && !templatelint::isMarkup("") &&
                !templatelint::isMarkup("S ") && !templatelint::isMarkup(":B:"));
    }

    void preparedLinesAreThoseOfTheEngine()
    {
        PrinterDocument values = document();
        Values texts(values);
        RandomLines random(1);
        for (int run = 0; run < runs; ++run) {
            const QStringList lines = random.lines(parts());
            PrinterDocumentFormatter formatter(0, nullptr);
            formatter.setTemplate(lines.join('\n'));
            values.setIsCopy(run % 2 == 1);
            const Road road = travel(
                Source(lines).lines(), values,
                [&texts](const QString &inner) { return texts.ofTag(inner); }, Form::Text);
            const QStringList prepared = charactersOf(road.prepared);
            if (prepared != formatter.prepareDocument(values))
                qInfo() << lines;
            QCOMPARE(prepared, formatter.prepareDocument(values));
        }
    }

    // The checker says nothing of a piece of which it doesn't come by the lines of the engine.
    void checkerIsHardlyEverSilent()
    {
        constexpr double mostSilent = 0.01;
        int pieces = 0;
        int silent = 0;
        int joined = 0;  // templates in which removals bring tags together
        RandomLines random(10);
        for (int run = 0; run < 2 * runs; ++run) {
            Options options;
            QStringList lines;
            if (run % 2 == 0) {
                const auto kept = differential::Generator(1, differential::Generator::Template,
                                                          static_cast<unsigned>(run))
                                      .templateCase();
                // Words of the generator have line feeds in them.
                lines = kept.lines.join('\n').split('\n');
                options.document = kept.document;
            } else {
                lines = random.lines(parts() + QStringList{"<<X:>a<:X>X:>", "<<I>a</I>I>"});
                options.document = document();
            }
            joined += lines.join('\n').contains(QRegularExpression("<<X:>a<:X>X:>|<<I>a</I>I>"));
            options.document->setIsCopy(run % 3 == 0);
            options.splitsFiscalParts = run % 5 == 0;
            Progress progress({}, 0);
            const Analysis analysis(lines, options, progress);
            for (const Piece &piece : analysis.pieces()) {
                ++pieces;
                silent += piece.isSilent ? 1 : 0;
                if (piece.isSilent)
                    qInfo() << lines;
            }
        }
        qInfo("silent: %d of %d pieces, %d templates with joined tags", silent, pieces, joined);
        QVERIFY(pieces > runs && joined > runs / 10);
        QVERIFY(silent <= mostSilent * pieces);
    }

    // A program that changes the language in the midst of it: the library's mark of a copy isn't
    // the one that was followed.
    void checkerIsSilentWhereTheLibraryPreparesOtherLines()
    {
        constexpr int lineCount = 600;
        QStringList lines{"<DOCNO>", "<OPENS>", "<ABC>"};
        while (lines.size() < lineCount)
            lines.append("x");
        Options options;
        options.document = PrinterDocument();
        options.document->setAttributes({{"DOCNO", 7}, {"OPENS", "<B:>x"}});
        options.document->setIsCopy(true);
        const auto placesOf = [&] {
            QStringList places;
            for (const Finding &finding : lint(lines, options))
                places.append(QString("%1 %2").arg(finding.line).arg(finding.rule->name));
            return places;
        };
        QCOMPARE(placesOf(), QStringList({"2 open-format", "3 short-tag"}));
        MarkingTranslator translator;
        options.progress = [&translator](qint64 done, qint64) {
            // Three steps of a line are done before its values are filled in.
            if (done > 3 * lineCount)
                QCoreApplication::installTranslator(&translator);
        };
        QCOMPARE(placesOf(), QStringList("3 short-tag"));
        QCoreApplication::removeTranslator(&translator);
    }

    void printedLinesAreTraced()
    {
        RandomLines random(2);
        for (int run = 0; run < runs; ++run) {
            const QStringList lines = random.lines(parts());
            EnginePrinting engine;
            Markup markup;
            for (const Text &line : Source(lines).lines()) {
                const Printed printed = markup.print(line);
                const DocumentBlock block = engine.print(line.characters);
                if (printed.text.characters != block.text().value(0))
                    qInfo() << lines;
                QCOMPARE(printed.text.characters, block.text().value(0));
                QCOMPARE(printed.formats, block.format().value(0));
                QCOMPARE(printed.fonts, block.font().value(0));
                QCOMPARE(printed.text.origins.size(), printed.text.size());
            }
        }
    }

    // The formats that are on at the end are those that the engine has on.
    void openFormatsAreThoseOfTheEngine()
    {
        RandomLines random(3);
        for (int run = 0; run < runs; ++run) {
            const QStringList lines = random.lines(parts());
            EnginePrinting engine;
            Markup markup;
            for (const Text &line : Source(lines).lines()) {
                markup.print(line);
                engine.print(line.characters);
            }
            int bits = 0;
            for (unsigned char rest = engine.format; rest != 0; rest = rest & (rest - 1))
                ++bits;
            if (markup.openFormats().size() != bits)
                qInfo() << lines;
            QCOMPARE(markup.openFormats().size(), bits);
        }
    }

    void piecesOfAFiscalTemplateAreThoseOfTheEngine()
    {
        const QStringList parts{
            "<FISCAL_BODY>",      "<fiscal_qr>", "<FISCAL_HEADER>", " ",      "x",
            "<FISCAL_FOOTER>",    "<FISCAL_",    "<NAME>",          "\u00DF", "<\uFB01scal_qr>",
            "<f\u0131scal_body>", "\u0390"};
        RandomLines random(4);
        for (int run = 0; run < runs; ++run) {
            const QStringList lines = random.lines(parts);
            PrinterDocumentFormatter formatter(0, nullptr);
            formatter.setTemplate(lines.join('\n'));
            bool found = false;
            QList<QStringList> expected;
            for (const auto &part :
                 formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS)) {
                if (part.second)
                    expected.append(part.second->getTemplate());
            }
            QList<QStringList> actual;
            const Source source(lines);
            for (const QVector<Text> &piece : fiscalPieces(source.lines())) {
                QStringList texts;
                for (const Text &line : piece) {
                    texts.append(line.characters);
                    for (int i = 0; i < line.size(); ++i) {
                        const Place place = source.place(line.origins.at(i));
                        QCOMPARE(lines.at(place.line - 1).at(place.column - 1),
                                 line.characters.at(i));
                    }
                }
                actual.append(texts);
            }
            QCOMPARE(actual, expected);
        }
    }

    // Every tag that the engine left as it stands has a finding at its place, whatever else is on
    // the line; a tag that isn't printed has none of these.
    void whatStaysAsTextIsFound()
    {
        const QStringList parts{"<B:>", "<:B>", "<B>", "<S>",  "<C>",  "<R>",   "<LS2>", "<LS5>",
                                "x",    "y ",   "<b>", "<:X>", "<W3>", "<ABC>", "<C:>",  "</C>"};
        RandomLines random(5);
        for (int run = 0; run < runs; ++run) {
            const QString line = random.line(parts);
            Options options;
            const QVector<Finding> findings = lint({line}, options);
            const auto staysAsText = [](const Finding &finding) {
                return !QByteArrayList{"open-format", "lost-markup", "repeated-tab"}.contains(
                    finding.rule->name);
            };
            const auto reported = std::count_if(findings.cbegin(), findings.cend(), staysAsText);
            const DocumentBlock block = EnginePrinting().print(line);
            if (reported != block.text().value(0).count('<'))
                qInfo() << line << block.text();
            QCOMPARE(int(reported), block.text().value(0).count('<'));
        }
    }

    // A tag that the engine fills with nothing, though it is no attribute, has a finding, at a
    // place inside the tag; one that it fills has none but those that say what is calculated
    // instead.
    void tagsThatPrintNothingAreFound()
    {
        const QStringList parts{"QTY", "PRICE", "A1",   "A10",   "+",    "-",   "*",
                                "(",   ")",     ",",    ",0.00", "pow(", "sin", "2",
                                ".5",  " ",     "NOPE", "e",     "^",    "Сум", "E"};
        PrinterDocument values;
        values.setAttributes(
            {{"QTY", 2}, {"PRICE", 1.5}, {"A1", "3"}, {"EMPTY", ""}, {"TEXT", "a b"}});
        Options options;
        options.document = values;
        const PrinterDocumentFormatter formatter(0, nullptr);
        RandomLines random(7);
        for (int run = 0; run < runs; ++run) {
            QString inner = random.line(parts);
            if (inner.size() < 4 || inner.trimmed().isEmpty())
                continue;
            const bool printsNothing =
                formatter.processDocAttributes('<' + inner + '>', values).isEmpty();
            int serious = 0;
            for (const Finding &finding : lint({"ab<" + inner + '>'}, options)) {
                QVERIFY(finding.column >= 3 && finding.column <= 4 + inner.size());
                const QByteArray rule = finding.rule->name;
                const bool prints = rule == "cut-expression" || rule == "unknown-attribute" ||
                                    rule == "value-format" || rule == "division-by-zero" ||
                                    rule == "lost-sign" || rule == "changed-figure";
                serious += printsNothing || !prints ? 1 : 0;
            }
            if (serious != (printsNothing ? 1 : 0))
                qInfo() << inner;
            QCOMPARE(serious, printsNothing ? 1 : 0);
        }
    }

    // A font switch at the end of a line has a finding if it would do something in front of the
    // next.
    void lostFontSwitchesAreFound()
    {
        const QStringList parts{"<F1>", "<F2>", "<F4>", "<F6>", "a", " ", "<:>", "[x]", "<B>"};
        const QString next = "b";
        const auto fontsOf = [](const QStringList &lines) {
            EnginePrinting engine;
            QByteArray fonts;
            for (const QString &line : lines)
                fonts = engine.print(line).font().value(0);
            return fonts;
        };
        RandomLines random(11);
        int lost = 0;
        for (int run = 0; run < runs; ++run) {
            const QString line = "x" + random.line(parts);
            const int tag = line.lastIndexOf("<F");
            QString without = line;
            const QString moved = tag < 0 ? QString() : line.mid(tag, 4);
            if (tag >= 0)
                without.remove(tag, 4);
            const bool isAtEnd = EnginePrinting().print(line.left(qMax(tag, 0))).text().value(0) ==
                                 EnginePrinting().print(line).text().value(0);
            const bool expected =
                tag >= 0 && isAtEnd && fontsOf({line, next}) != fontsOf({without, moved + next});
            bool actual = false;
            for (const Finding &finding : lint({line, next}, Options()))
                actual = actual || finding.rule->name == QByteArray("lost-font-switch");
            if (actual != expected)
                qInfo() << line;
            QCOMPARE(actual, expected);
            lost += actual ? 1 : 0;
        }
        QVERIFY(lost > runs / 50);
    }

    // Of the format of a date of which nothing is said no word prints letters beside those parts
    // that it has: all of it is put in, or nothing.
    void silentDateFormatsPrintNoStrayLetters()
    {
        const QStringList parts{"d",  "dd", "m", "mm", "yy", "yyyy", "h", "hh", "n",  "nn", "s",
                                "ss", "D",  "Y", "YY", "T",  "x",    "U", "ap", ".",  ":",  " ",
                                " ",  ".",  "/", "MM", "hh", "dd",   "y", "N",  "yy", "-",  "."};
        PrinterDocument values;
        values.setAttributes({{"WHEN", QDateTime(QDate(2026, 5, 9), QTime(14, 30, 7))}});
        Options options;
        options.document = values;
        const PrinterDocumentFormatter formatter(0, nullptr);
        const QRegularExpression names("d{3}|[mM]{3}");
        const QRegularExpression letters("[A-Za-z]+");
        RandomLines random(12);
        int silent = 0;
        for (int run = 0; run < runs; ++run) {
            const QString format = random.line(parts);
            if (!lint({"<WHEN," + format + '>'}, options).isEmpty() || format.contains(names))
                continue;
            ++silent;
            const QString printed = formatter.processDocAttributes("<WHEN," + format + '>', values);
            for (auto match = letters.globalMatch(printed); match.hasNext();) {
                const QString word = match.next().captured();
                const bool isOfFormat =
                    QStringList{"T", "pm"}.contains(word) ||
                    format.contains(QRegularExpression("(?<![A-Za-z])" + word + "(?![A-Za-z])"));
                QVERIFY2(isOfFormat, qPrintable(format + " -> " + printed));
            }
        }
        QVERIFY(silent > runs / 10);
    }

    // Of a line whose values are all there: let one after the other be empty, and see which tags
    // the engine leaves unfilled then.
    void tagsThatAGroupHidesAreFound()
    {
        const QStringList parts{"[", "]", "[", "]", "x", "some text ", "<S>", "%", "%", "%"};
        RandomLines random(6);
        for (int run = 0; run < runs; ++run) {
            QString line = random.line(parts);
            QMap<QString, QVariant> values;
            for (int tag = line.indexOf('%'); tag >= 0; tag = line.indexOf('%')) {
                const QString name = QString("TAG%1").arg(values.size());
                line.replace(tag, 1, '<' + name + '>');
                values.insert(name, QString(1 + random.below(6), 'v'));
            }
            const PrinterDocumentFormatter formatter(0, nullptr);
            PrinterDocument filled;
            QSet<int> expected;
            for (const QString &name : values.keys()) {
                QMap<QString, QVariant> oneEmpty = values;
                oneEmpty[name] = QString();
                filled.setAttributes(oneEmpty);
                const QString text = formatter.processDocAttributes(line, filled);
                for (const QString &other : values.keys()) {
                    if (text.contains('<' + other + '>'))
                        expected.insert(line.indexOf('<' + other + '>') + 1);
                }
            }
            filled.setAttributes(values);
            Options options;
            options.document = filled;
            QSet<int> actual;
            for (const Finding &finding : lint({line}, options)) {
                if (finding.rule->name == QByteArray("hidden-tag"))
                    actual.insert(finding.column);
            }
            if (actual != expected)
                qInfo() << line << values;
            QCOMPARE(actual, expected);
        }
    }

    // Many of one thing on one line: work that isn't linear would take minutes.
    void hugeLinesAreChecked_data()
    {
        QTest::addColumn<QString>("part");
        for (const QString &part : parts())
            QTest::newRow(qPrintable(part)) << part;
        QTest::newRow("groups") << "[<ZERO>]<NAME>";
        QTest::newRow("nested groups") << "[<ZERO> ";
        QTest::newRow("reversed") << "]<ZERO>[";
    }
    void hugeLinesAreChecked()
    {
        QFETCH(QString, part);
        Options options;
        options.document = document();
        options.codePage = QTextCodec::codecForName("cp866");
        options.paper = Paper{42, {}, QString(), false};
        QVERIFY(lint({part.repeated(40000 / part.size())}, options).size() >= 0);
    }

    void progressGoesOnToTheEnd_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("fiscal");
        QTest::newRow("one line") << QByteArray("a") << 1 << false;
        QTest::newRow("many lines") << QByteArray("<NAME> <ENTRIES>") << 2000 << false;
        QTest::newRow("many pieces") << QByteArray("<NAME><FISCAL_QR>x") << 2000 << true;
        QTest::newRow("endless") << QByteArray("<LOOP>") << 2000 << false;
    }
    void progressGoesOnToTheEnd()
    {
        QFETCH(QByteArray, line);
        QFETCH(int, count);
        QFETCH(bool, fiscal);
        QStringList lines;
        for (int i = 0; i < count; ++i)
            lines.append(line);
        Options options;
        options.splitsFiscalParts = fiscal;
        options.document = document();
        options.document->setAttributes({{"NAME", "Tea"}, {"LOOP", "<LOOP>"}});
        QVector<qint64> steps{0};
        qint64 last = 0;
        options.progress = [&](qint64 done, qint64 all) {
            steps.append(done);
            last = all;
        };
        lint(lines, options);
        QVERIFY(std::is_sorted(steps.cbegin(), steps.cend()));
        QVERIFY(steps.size() > count / 100);
        QVERIFY(steps.constLast() > 0 && steps.constLast() <= last);
    }

    void nearestNameIsNear()
    {
        const QStringList names{"SHOP", "SHOP_INN", "TOTAL"};
        QCOMPARE(nearestName("SHPO", names).value_or(QString()), QString("SHOP"));
        QCOMPARE(nearestName("shop", names).value_or(QString()), QString("SHOP"));
        QCOMPARE(nearestName("TOTALS", names).value_or(QString()), QString("TOTAL"));
        QVERIFY(!nearestName("ADDRESS", names));
        QVERIFY(!nearestName("", names));
        QVERIFY(!nearestName("X", {}));
        QVERIFY(!nearestName(QString(100, 'S'), {QString(100, 'S')}));
    }
};

QTEST_GUILESS_MAIN(TestTemplateLint)
#include "tst_templatelint.moc"
