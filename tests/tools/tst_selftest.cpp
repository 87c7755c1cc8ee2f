// What a printer's self test prints, read back as each model would print it, and what answers to
// its questions say of the model.
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>
#include <algorithm>

#include "paper.h"
#include "printerslib/drivers/codepage.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/streamreader.h"
#include "printerslib/drivers/symbologydrawer.h"
#include "selftest.h"
#include "selftestfindings.h"

using namespace printerslib::drivers;
using tool::SelfTestFindings;
using tool::SelfTestPlan;

namespace {

const QString general = "GENERAL_EPSON_PROTOCOL";
const QString vkp = "CUSTOM_VKP_80";
const QString star = "TSP-TUP";
const QString swecoin = "SWECOIN_TM_20XX";

SelfTestPlan planOf(const QString &model, const PrinterModels &models = PrinterModels())
{
    const PrinterInfo record =
        *receiptpreview::catalogueModel(models.profile(model)->catalogueId());
    const int paper = receiptpreview::widestPaperOf(record);
    return SelfTestPlan(models, *PrintTarget::forModel(models, model, paper), paper);
}

SelfTestPlan planOf(const QString &model, const QStringList &parts)
{
    SelfTestPlan plan = planOf(model);
    plan.keepOnly(parts);
    return plan;
}

QVector<Paper> papersOf(const EncodedDocument &document, const PrinterProfile &profile)
{
    static const SymbologyDrawer codes;
    StreamInterpreter::Options options;
    options.codes = &codes;
    return StreamInterpreter::papersOf(document.bytes, profile, options);
}

QVector<Paper> papersOf(const SelfTestPlan &plan)
{
    return papersOf(tool::selfTestOf(plan), plan.profile());
}

QString textOf(const QVector<Paper> &papers)
{
    QString text;
    for (const Paper &paper : papers)
        text += paper.toText();
    return text;
}

/// All lines, without their blanks at the ends.
QStringList linesOf(const QVector<Paper> &papers)
{
    QStringList lines;
    const QStringList all = textOf(papers).split('\n');
    for (const QString &line : all)
        lines.append(line.trimmed());
    return lines;
}

int countOf(const QVector<Paper> &papers, Paper::Event::Kind kind)
{
    int count = 0;
    for (const Paper &paper : papers)
        count += int(std::count_if(paper.events.begin(), paper.events.end(),
                                   [kind](const auto &event) { return event.kind == kind; }));
    return count;
}

int cutsOf(const QVector<Paper> &papers)
{
    return countOf(papers, Paper::Event::Cut) + countOf(papers, Paper::Event::PartialCut);
}

/// The letters of cells of one line, in their order.
QString lettersOf(const Paper &paper, const Paper::Line &line)
{
    QString letters;
    for (int i = 0; i < line.cellCount; ++i)
        letters += QChar(paper.cells.at(line.firstCell + i).character);
    return letters;
}

/// The letters behind the line that begins so, as many as a set's upper half has.
QString lettersBehind(const QVector<Paper> &papers, const QString &head)
{
    constexpr int half = 128;
    QString letters;
    bool isBehind = false;
    for (const Paper &paper : papers) {
        for (const Paper::Line &line : paper.lines) {
            const QString text = lettersOf(paper, line);
            if (isBehind && letters.size() < half)
                letters += text;
            isBehind = isBehind || text.trimmed() == head;
        }
    }
    return letters.left(half);
}

/// What the upper half of a set shows.
QString upperHalf(const QString &set)
{
    const CodePage page = *CodePage::forName(set);
    QString letters;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const char16_t letter = page.character(static_cast<unsigned char>(byte));
        letters += letter == 0 ? QChar(QChar::ReplacementCharacter) : QChar(letter);
    }
    return letters;
}

void addModels()
{
    QTest::addColumn<QString>("model");
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids)
        QTest::newRow(qPrintable(id)) << id;
}

/// What answers to questions say of a model, as JSON; or the fault of one of them.
QString foundIn(const SelfTestPlan &plan, const QMap<QString, QString> &answers)
{
    SelfTestFindings findings(plan);
    for (auto it = answers.begin(); it != answers.end(); ++it) {
        const QString fault = findings.answer(it.key(), it.value());
        if (!fault.isEmpty())
            return fault;
    }
    return QJsonDocument(findings.changes()).toJson(QJsonDocument::Compact);
}

QString foundIn(const QString &model, const QString &question, const QString &answer)
{
    return foundIn(planOf(model), {{question, answer}});
}

QStringList keysOf(const SelfTestPlan &plan)
{
    QStringList keys;
    const auto questions = tool::questionsOf(plan);
    for (const auto &question : questions)
        keys.append(question.key);
    return keys;
}

}  // namespace

class TestSelfTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyModelPrintsItWithoutLoss_data() { addModels(); }
    void everyModelPrintsItWithoutLoss()
    {
        QFETCH(QString, model);
        const EncodedDocument document = tool::selfTestOf(planOf(model));
        QCOMPARE(document.error, QString());
        for (const PrintNote &note : document.notes)
            QVERIFY2(!note.isLoss, qPrintable(note.toString()));
        QVERIFY(!document.bytes.isEmpty());
        QCOMPARE(tool::selfTestOf(planOf(model)).bytes, document.bytes);
    }

    void marksLeadThroughSectionsThatBeginWithAReset_data() { addModels(); }
    void marksLeadThroughSectionsThatBeginWithAReset()
    {
        QFETCH(QString, model);
        const EncodedDocument document = tool::selfTestOf(planOf(model));
        int offset = -1;
        int block = 0;
        const QByteArray reset = document.bytes.left(2);
        for (const EncodedDocument::Mark &mark : document.marks) {
            QVERIFY(mark.offset > offset);
            QVERIFY(mark.offset < document.bytes.size());
            QVERIFY(mark.block == block || mark.block == block + 1);
            if (mark.block != block)
                QCOMPARE(document.bytes.mid(mark.offset, 2), reset);
            offset = mark.offset;
            block = mark.block;
        }
        QVERIFY(block > 5);
    }

    void nothingIsUnknownToTheModel_data() { addModels(); }
    void nothingIsUnknownToTheModel()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model);
        const auto commands =
            StreamReader::commandsOf(tool::selfTestOf(plan).bytes, plan.profile());
        for (const StreamCommand &command : commands)
            QVERIFY2(command.kind == StreamCommand::Text || command.kind == StreamCommand::Command,
                     command.bytes.toHex(' ').constData());
    }

    void eachCodePageShowsAllItsLetters_data() { addModels(); }
    void eachCodePageShowsAllItsLetters()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model, {"pages"});
        const QVector<Paper> papers = papersOf(plan);
        const QMap<int, QString> pages = plan.profile().codePages();
        QCOMPARE(plan.pages, pages);
        for (auto page = pages.begin(); page != pages.end(); ++page)
            QCOMPARE(
                lettersBehind(papers, QString("Code page %1 %2").arg(page.key()).arg(page.value())),
                upperHalf(*page));
    }

    void codePagesThatNobodyKnowsAreSelectedByTheirNumbers()
    {
        SelfTestPlan plan = planOf(vkp, {"pages"});
        plan.choosePages({17, 0, 255});
        const EncodedDocument document = tool::selfTestOf(plan);
        const QStringList lines = linesOf(papersOf(document, plan.profile()));
        QVERIFY(lines.contains("Code page 0 CP437"));
        QVERIFY(lines.contains("Code page 17"));
        QVERIFY(lines.contains("Code page 255"));
        QVERIFY(!lines.join(' ').contains("CP850"));
        QVERIFY(document.bytes.contains(QByteArray("\x1Bt\x11", 3)));
        QVERIFY(document.bytes.contains(QByteArray("\x1Bt\xFF", 3)));
        QVERIFY(document.bytes.contains("\x80\x81\x82"));
    }

    void eachFontPrintsItsOwnCells_data() { addModels(); }
    void eachFontPrintsItsOwnCells()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model, {"fonts"});
        const QVector<QSize> cells = plan.profile().fontCells();
        const QVector<Paper> papers = papersOf(plan);
        for (int font = 0; font < cells.size(); ++font) {
            const QString head = QString("Font %1, %2 x %3")
                                     .arg(font)
                                     .arg(cells.at(font).width())
                                     .arg(cells.at(font).height());
            bool isFound = false;
            for (const Paper::Line &line : papers.constFirst().lines) {
                if (lettersOf(papers.constFirst(), line) != head)
                    continue;
                const Paper::Cell &cell = papers.constFirst().cells.at(line.firstCell);
                QCOMPARE(QSize(cell.width, cell.height), cells.at(font));
                isFound = true;
            }
            QVERIFY2(isFound, qPrintable(head));
        }
    }

    void rulerIsAsLongAsTheHead_data() { addModels(); }
    void rulerIsAsLongAsTheHead()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model, {"ruler"});
        const int head = plan.profile().headDots();
        const QVector<Paper> papers = papersOf(plan);
        QCOMPARE(plan.rulerDots(), head);
        int right = 0;
        for (const Paper::Picture &picture : papers.constFirst().pictures)
            right = std::max(right, picture.place.right() + 1);
        // Rows go as whole bytes.
        QCOMPARE((right + 7) / 8, (head + 7) / 8);
    }

    void rowOfDigitsIsBrokenByThePrinter_data() { addModels(); }
    void rowOfDigitsIsBrokenByThePrinter()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model, {"ruler"});
        const QVector<Paper> papers = papersOf(plan);
        const Paper &paper = papers.constFirst();
        const auto broken = std::find_if(paper.lines.begin(), paper.lines.end(),
                                         [](const Paper::Line &line) { return line.isWrapped; });
        QVERIFY(broken != paper.lines.end());
        QCOMPARE((broken - 1)->cellCount, plan.charactersOfRuler());
        const QString digits = lettersOf(paper, *(broken - 1)) + lettersOf(paper, *broken);
        for (int ten = 10; ten <= digits.size(); ten += 10)
            QCOMPARE(digits.left(ten).right(QString::number(ten).size()), QString::number(ten));
    }

    void chosenPaperLimitsTheRuler()
    {
        const PrinterInfo record = *receiptpreview::catalogueModel(vkp);
        SelfTestPlan plan(PrinterModels(), *PrintTarget::forModel(vkp, 0), 0);
        plan.isPaperChosen = true;
        QCOMPARE(plan.rulerDots(), std::min(640, record.paperType(0).pointsToLine()));
    }

    void eachWayOfPicturesIsTried()
    {
        const SelfTestPlan plan = planOf(general, {"pictures"});
        const EncodedDocument document = tool::selfTestOf(plan);
        QCOMPARE(plan.rasters, QStringList({"RasterBlock", "BitImage"}));
        QVERIFY(document.bytes.contains(QByteArray("\x1Dv0\0", 4)));
        QVERIFY(document.bytes.contains("\x1B*!"));
        const QVector<Paper> papers = papersOf(document, plan.profile());
        QVERIFY(textOf(papers).contains("Picture by RasterBlock\n[picture 576 x 96]"));
        QVERIFY(textOf(papers).contains("Picture by BitImage\n[picture 576 x 96]"));
    }

    void modelsOwnWayOfPicturesComesFirst()
    {
        QCOMPARE(planOf(vkp).rasters, QStringList({"BitImage", "RasterBlock"}));
        QCOMPARE(planOf(star).rasters, QStringList("StarRows"));
        QCOMPARE(planOf(swecoin).rasters, QStringList("SwecoinRows"));
    }

    // A printer that doesn't know the command prints the dots as text.
    void picturesHoldNoBytesThatAPrinterObeys_data() { addModels(); }
    void picturesHoldNoBytesThatAPrinterObeys()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model, {"pictures"});
        const auto commands =
            StreamReader::commandsOf(tool::selfTestOf(plan).bytes, plan.profile());
        int pictures = 0;
        for (const StreamCommand &command : commands) {
            constexpr int leastPicture = 24;
            const QByteArray dots = command.payload();
            if (command.kind != StreamCommand::Command || dots.size() < leastPicture)
                continue;
            ++pictures;
            for (const char byte : dots)
                QVERIFY2(QByteArray("\x00\xFF\xAA\x55", 4).contains(byte),
                         command.bytes.left(32).toHex(' ').constData());
        }
        QVERIFY(pictures > 0);
    }

    void eachCodeIsDrawnByThePrinterAndAsAPicture_data() { addModels(); }
    void eachCodeIsDrawnByThePrinterAndAsAPicture()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model, {"codes"});
        const QVector<Paper> papers = papersOf(plan);
        const QString text = textOf(papers);
        int drawn = 0;
        for (const Paper &paper : papers)
            drawn += paper.codes.size();
        QCOMPARE(drawn, plan.codes.size());
        for (const QString &code : plan.codes) {
            QVERIFY2(text.contains(code + " by the printer\n"), qPrintable(code));
            const QString behind = text.section(code + " as a picture\n", 1).left(60);
            QVERIFY2(behind.trimmed().startsWith("[picture "), qPrintable(code + behind));
        }
        const QMap<Paper::Symbology, int> known = plan.profile().drawnCodes();
        QVERIFY(plan.codes.size() >= known.size());
    }

    void codesThatOnlyOthersDrawAreTriedToo()
    {
        QVERIFY(!planOf(vkp).fact("drawnCodes").toObject().contains("qrCode"));
        QVERIFY(planOf(vkp).codes.contains("qrCode"));
        QVERIFY(planOf(swecoin).codes.isEmpty());
    }

    void eachCutCutsAndTheLadderToo_data() { addModels(); }
    void eachCutCutsAndTheLadderToo()
    {
        QFETCH(QString, model);
        const SelfTestPlan plan = planOf(model);
        const QVector<Paper> papers = papersOf(plan);
        QCOMPARE(cutsOf(papers), plan.cuts.size() + 1);
        QCOMPARE(tool::selfTestOf(plan).pieces, plan.cuts.size() + 1);
        QCOMPARE(plan.cuts.constLast(), plan.fact("cutCommand").toString());
        for (const QString &cut : plan.cuts)
            QVERIFY(linesOf(papers).contains("Cut by " + cut));
    }

    void ladderIsCutWhereTheCutterIs()
    {
        const SelfTestPlan plan = planOf(swecoin, {"cuts"});
        const QVector<Paper> papers = papersOf(plan);
        QVERIFY(papers.at(2).isBlankEnd());
        QCOMPARE(plan.ladderDots(), 320);
        int upper = 0;
        for (const Paper::Picture &picture : papers.constFirst().pictures)
            upper += picture.place.height();
        QCOMPARE(upper, 320 - plan.profile().dotsToCutter());
    }

    void ladderIsLongerThanTheWayToTheCutter()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "TSP-TUP", "dotsToCutter": 300}])", "far"), QStringList());
        QCOMPARE(planOf(star, models).ladderDots(), 608);
        QCOMPARE(models.add(R"([{"id": "TSP-TUP", "dotsToCutter": 2000}])", "far"), QStringList());
        QCOMPARE(planOf(star, models).ladderDots(), 1024);
    }

    void modelWithoutCutterHasNeitherLadderNorCuts()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "TSP-TUP", "cutCommand": "None"}])", "torn"), QStringList());
        const SelfTestPlan plan = planOf(star, models);
        const QVector<Paper> papers = papersOf(plan);
        QCOMPARE(cutsOf(papers), 0);
        QVERIFY(linesOf(papers).contains("END"));
        QVERIFY(!keysOf(plan).contains("cuts"));
        QVERIFY(!keysOf(plan).contains("cutter"));
    }

    void modelWithoutPicturesHasNoRulerButTriesThem()
    {
        PrinterModels models;
        QCOMPARE(
            models.add(R"([{"id": "AV_268", "rasterCommand": "None", "drawnCodes": {}}])", "x"),
            QStringList());
        const SelfTestPlan plan = planOf("AV_268", models);
        const EncodedDocument document = tool::selfTestOf(plan);
        QCOMPARE(document.error, QString());
        const QString text = textOf(papersOf(document, plan.profile()));
        QVERIFY(!text.contains("Ruler"));
        QVERIFY(!text.contains("as a picture"));
        QVERIFY(text.contains("Picture by BitImage"));
        QVERIFY(text.contains("Characters of a line"));
        QVERIFY(!keysOf(plan).contains("ruler"));
        QVERIFY(keysOf(plan).contains("characters"));
    }

    void drawerStaysShutUnlessItIsAskedFor_data() { addModels(); }
    void drawerStaysShutUnlessItIsAskedFor()
    {
        QFETCH(QString, model);
        SelfTestPlan plan = planOf(model);
        QCOMPARE(countOf(papersOf(plan), Paper::Event::Pulse), 0);
        QVERIFY(!keysOf(plan).contains("drawers"));
        QCOMPARE(plan.opensDrawers(), plan.profile().dialect() != Dialect::Swecoin);
        if (!plan.opensDrawers())
            return;
        plan.pins = {2, 5};
        QCOMPARE(countOf(papersOf(plan), Paper::Event::Pulse), 2);
        QVERIFY(keysOf(plan).contains("drawers"));
    }

    void partsThatAreLeftOutAreNotAskedFor()
    {
        QCOMPARE(keysOf(planOf(general)),
                 QStringList({"ruler", "millimetres", "characters", "fonts", "pages", "pictures",
                              "codes", "cutter", "cuts"}));
        QCOMPARE(keysOf(planOf(general, {"codes"})), QStringList("codes"));
        QCOMPARE(keysOf(planOf(general, QStringList("formats"))), QStringList());
        QCOMPARE(cutsOf(papersOf(planOf(general, {"codes"}))), 1);
        const QVector<Paper> papers = papersOf(planOf(general, {"codes"}));
        QVERIFY(!textOf(papers).contains("Code page"));
        QVERIFY(!textOf(papers).contains("Ruler"));
        QVERIFY(!textOf(papers).contains("bold"));
    }

    void questionOfCodePagesShowsTheLetters()
    {
        const auto questions = tool::questionsOf(planOf("EPSON_EU_4XX", {"pages"}));
        QCOMPARE(questions.size(), 1);
        const QString text = questions.constFirst().text.join('\n');
        QVERIFY(text.contains("17 CP866\n"));
        QVERIFY(text.contains(QString::fromUtf8("АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ")));
        for (const QString &line : questions.constFirst().text)
            QVERIFY2(line.size() < 80, qPrintable(line));
    }

    // The printer is another one than its data say, and its paper is read as people do.
    void answersReadFromThePaperDescribeThePrinter()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "SWECOIN_TM_20XX", "headDots": 448, "dotsToCutter": 136}])",
                            "truth"),
                 QStringList());
        const SelfTestPlan plan = planOf(swecoin);
        const QVector<Paper> papers = papersOf(tool::selfTestOf(plan), *models.profile(swecoin));
        const Paper &first = papers.constFirst();
        int right = 0;
        int rungs = 0;
        bool isLadder = false;
        for (const Paper::Line &line : first.lines) {
            isLadder = isLadder || lettersOf(first, line).startsWith("Dots to the cutter");
            for (int i = 0; i < line.pictureCount; ++i) {
                const QRect place = first.pictures.at(line.firstPicture + i).place;
                right = std::max(right, std::min(place.right() + 1, first.width));
                rungs += isLadder ? place.height() : 0;
            }
        }
        const auto broken = std::find_if(first.lines.begin(), first.lines.end(),
                                         [](const Paper::Line &line) { return line.isWrapped; });
        const QString found =
            foundIn(plan, {{"ruler", QString::number(right)},
                           {"characters", QString::number((broken - 1)->cellCount)},
                           {"cutter", QString::number(plan.ladderDots() - rungs)}});
        QCOMPARE(found, QString(R"({"dotsToCutter":136,"headDots":448})"));
    }

    void answersBecomeFacts_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("found");
        const auto row = [](const char *name, const QString &model, const QString &question,
                            const QString &answer, const QString &found) {
            QTest::newRow(name) << model << question << answer << found;
        };
        row("no answer", general, "ruler", "", "{}");
        row("ruler as known", general, "ruler", "576", "{}");
        row("ruler shorter", general, "ruler", "512", R"({"headDots":512})");
        row("ruler shorter by a step", general, "ruler", " 568 ", R"({"headDots":568})");
        row("ruler longer than printed", general, "ruler", "584",
            "\"584\" is no number from 8 to 576");
        row("ruler too short", general, "ruler", "7", "\"7\" is no number from 8 to 576");
        row("ruler a word", general, "ruler", "wide", "\"wide\" is no number from 8 to 576");
        row("ruler narrower than a letter", general, "ruler", "8",
            "the answers: GENERAL_EPSON_PROTOCOL: \"fonts\" has one that is wider than "
            "\"headDots\"");
        row("millimetres as known", general, "millimetres", "72.1", "{}");
        row("millimetres nearly", general, "millimetres", "73", "{}");
        row("millimetres with a comma", general, "millimetres", "81,3", R"({"dotsPerInch":180})");
        row("millimetres none", general, "millimetres", "0", "\"0\" is no length in millimetres");
        row("millimetres not a number", general, "millimetres", "nan",
            "\"nan\" is no length in millimetres");
        row("millimetres of no printer", general, "millimetres", "5",
            "no printer has 2926 dots per inch, which that would be");
        row("millimetres next to none", general, "millimetres", "1e-300",
            "no printer has 1.46304e+304 dots per inch, which that would be");
        row("characters as known", general, "characters", "48", "{}");
        row("characters more", general, "characters", "64", R"({"headDots":768})");
        row("characters of the whole row", general, "characters", "80", R"({"headDots":960})");
        row("characters more than printed", general, "characters", "81",
            "\"81\" is no number from 1 to 80");
        row("characters fewer", general, "characters", "42", R"({"headDots":504})");
        row("characters of a paper narrower than the head", vkp, "characters", "64", "{}");
        row("fonts all", general, "fonts", "all", "{}");
        row("fonts fewer", general, "fonts", "0", R"({"fonts":[[12,24]]})");
        row("fonts twice", general, "fonts", "1, 0, 1", "{}");
        row("fonts with a gap", general, "fonts", "1",
            "a file can't say that font 0 is missing below another");
        row("fonts none", general, "fonts", "none", "a printer has one font at least");
        row("fonts unknown", general, "fonts", "0 2", "\"2\" is none of all, none, 0, 1");
        row("pages all", vkp, "pages", "all", "{}");
        row("pages fewer", vkp, "pages", "0 2", R"({"codePages":{"0":"CP437","2":"CP850"}})");
        row("pages another set", vkp, "pages", "0 19=cp866",
            R"({"codePages":{"0":"CP437","19":"CP866"}})");
        row("pages all but one", vkp, "pages", "ALL 19=CP866",
            R"({"codePages":{"0":"CP437","19":"CP866","2":"CP850","3":"CP860","4":"CP863",)"
            R"("5":"CP865"}})");
        row("pages none", vkp, "pages", "none",
            "\"none\" is none of the code pages 0, 2, 3, 4, 5, 19");
        row("pages without the first", vkp, "pages", "2",
            "code page 0 is the one after a reset, so it has to be known; if it is another set, "
            "say "
            "0=NAME");
        row("pages unknown number", vkp, "pages", "0 17",
            "\"17\" is none of the code pages 0, 2, 3, 4, 5, 19");
        row("pages unknown set", vkp, "pages", "0=CP123456",
            "there is no character set \"CP123456\"");
        row("pictures own", general, "pictures", "bitimage rasterblock", "{}");
        row("pictures other", general, "pictures", "bitimage", R"({"rasterCommand":"BitImage"})");
        row("pictures none", general, "pictures", "none", R"({"rasterCommand":"None"})");
        row("codes some", vkp, "codes", "QRCODE,ean13",
            R"({"drawnCodes":{"ean13":13,"qrCode":2953}})");
        row("codes none", general, "codes", "none", R"({"drawnCodes":{}})");
        row("cutter as known", general, "cutter", "120", "{}");
        row("cutter between two rungs", general, "cutter", "127", "{}");
        row("cutter elsewhere", general, "cutter", "128", R"({"dotsToCutter":128})");
        row("cutter beyond the ladder", general, "cutter", "321",
            "\"321\" is no number from 0 to 320");
        row("cuts own", general, "cuts", "all", "{}");
        row("cuts other", general, "cuts", "EscI", R"({"cutCommand":"EscI"})");
        row("cuts none", general, "cuts", "none", R"({"cutCommand":"None"})");
    }
    void answersBecomeFacts()
    {
        QFETCH(QString, model);
        QFETCH(QString, question);
        QFETCH(QString, answer);
        QFETCH(QString, found);
        QCOMPARE(foundIn(model, question, answer), found);
    }

    void wholeRulerLeavesTheWidthToTheCharacters()
    {
        const SelfTestPlan plan = planOf(general);
        QCOMPARE(foundIn(plan, {{"ruler", "576"}, {"characters", "64"}}),
                 QString(R"({"headDots":768})"));
        QCOMPARE(foundIn(plan, {{"ruler", "512"}, {"characters", "64"}}),
                 QString(R"({"headDots":512})"));
        QCOMPARE(foundIn(plan, {{"ruler", "576"}, {"characters", "42"}}), QString("{}"));
    }

    void drawersThatOpenedAreTheModels()
    {
        const auto found = [](const QVector<int> &pins, const QString &answer) {
            SelfTestPlan plan = planOf(general);
            plan.pins = pins;
            return foundIn(plan, {{"drawers", answer}});
        };
        QCOMPARE(found({2, 5}, "all"), QString("{}"));
        QCOMPARE(found({2, 5}, "2"), QString(R"({"drawers":1})"));
        QCOMPARE(found({2, 5}, "none"), QString(R"({"drawers":0})"));
        QCOMPARE(found({2}, "2"), QString("{}"));
        QCOMPARE(found({5}, "none"), QString(R"({"drawers":1})"));
        QCOMPARE(found({5}, "5"), QString("{}"));
        QCOMPARE(found({2}, "5"), QString("\"5\" is none of all, none, 2"));
    }

    void pagesOfWhichNobodyKnewTheSetNeedItsName()
    {
        SelfTestPlan plan = planOf(vkp);
        plan.choosePages({0, 17});
        QCOMPARE(foundIn(plan, {{"pages", "0 17"}}),
                 QString("which set is code page 17? Say it as 17=CP866"));
        // Those that weren't printed stay.
        QCOMPARE(foundIn(plan, {{"pages", "0 17=CP866"}}),
                 QString(R"({"codePages":{"0":"CP437","17":"CP866","19":"CP858","2":"CP850",)"
                         R"("3":"CP860","4":"CP863","5":"CP865"}})"));
    }

    void allPagesAreThoseThatArePrinted()
    {
        SelfTestPlan plan = planOf(vkp);
        plan.choosePages({0, 2});
        QCOMPARE(foundIn(plan, {{"pages", "all"}}), QString("{}"));
        plan.choosePages({0, 17});
        QCOMPARE(foundIn(plan, {{"pages", "all"}}),
                 QString("which set is code page 17? Say it as 17=CP866"));
        QCOMPARE(foundIn(plan, {{"pages", "all 17=CP866"}}),
                 QString(R"({"codePages":{"0":"CP437","17":"CP866","19":"CP858","2":"CP850",)"
                         R"("3":"CP860","4":"CP863","5":"CP865"}})"));
    }

    void pageAfterAResetNeedNotBePrinted()
    {
        SelfTestPlan plan = planOf("SWECOIN_TM_20XX");
        plan.choosePages({17});
        QCOMPARE(foundIn(plan, {{"pages", "17=CP866"}}),
                 QString(R"({"codePages":{"0":"CP437","17":"CP866"}})"));
    }

    void answerThatDoesNotGoWithOthersLeavesThose()
    {
        const SelfTestPlan plan = planOf(general);
        SelfTestFindings findings(plan);
        QCOMPARE(findings.answer("cutter", "80"), QString());
        QVERIFY(findings.answer("ruler", "8").contains("\"headDots\""));
        QCOMPARE(findings.changes(), QJsonObject({{"dotsToCutter", 80}}));
        QCOMPARE(findings.answer("ruler", "512"), QString());
        QCOMPARE(findings.changes(), QJsonObject({{"dotsToCutter", 80}, {"headDots", 512}}));
    }

    // Each is right, and together they aren't.
    void answersThatDoNotGoTogetherAreTold()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "CITIZEN_CTS_2000", "initialFont": 2}])", "x"),
                 QStringList());
        QCOMPARE(foundIn(planOf("CITIZEN_CTS_2000", models), {{"fonts", "0"}}),
                 QString("the answers: CITIZEN_CTS_2000: \"initialFont\" is none of \"fonts\""));
    }

    void fileIsTakenAsModels_data() { addModels(); }
    void fileIsTakenAsModels()
    {
        QFETCH(QString, model);
        const QJsonObject changes = {{"headDots", 400}, {"dotsToCutter", 7}};
        PrinterModels models;
        QCOMPARE(models.add(SelfTestFindings::fileOf(model, changes, "2026-11-22"), "own"),
                 QStringList());
        const PrinterProfile profile = *models.profile(model);
        QCOMPARE(profile.headDots(), 400);
        QCOMPARE(profile.dotsToCutter(), 7);
        QCOMPARE(profile.sourceOf("headDots"), QString("self test, 2026-11-22"));
        QCOMPARE(profile.codePages(), PrinterProfile::forModel(model)->codePages());
    }

    void modelOfAUsersFileIsTestedAndChanged()
    {
        PrinterModels models;
        QCOMPARE(models.add(R"([{"id": "SHOP", "like": "AV_268", "headDots": 300}])", "shop"),
                 QStringList());
        const SelfTestPlan plan = planOf("SHOP", models);
        QCOMPARE(tool::selfTestOf(plan).error, QString());
        QVERIFY(linesOf(papersOf(plan)).contains("300 dots at 203 dpi"));
        QCOMPARE(foundIn(plan, {{"ruler", "288"}}), QString(R"({"headDots":288})"));
        QCOMPARE(models.add(SelfTestFindings::fileOf("SHOP", {{"headDots", 288}}, "x"), "found"),
                 QStringList());
        QCOMPARE(models.profile("SHOP")->headDots(), 288);
    }

    void answersAreReadFromLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("error");
        const auto row = [](const char *name, const char *text, const char *error) {
            QTest::newRow(name) << QString(text) << QString(error);
        };
        row("nothing", "", "");
        row("comment", "# all is well\n\n  \n", "");
        row("answers", "ruler: 512\r\ncuts : none # torn\n", "");
        row("no answer", "ruler:\n", "");
        row("no question", "\n512", "2: \"512\" is no line \"question: answer\"");
        row("unknown", "colour: red",
            "1: \"colour\" is none of the questions ruler, millimetres, characters, fonts, pages, "
            "pictures, codes, cutter, cuts");
        row("not asked", "drawers: none",
            "1: \"drawers\" is none of the questions ruler, millimetres, characters, fonts, pages, "
            "pictures, codes, cutter, cuts");
        row("twice", "cutter: 1\ncutter: 1", "2: \"cutter\" is answered twice");
        row("wrong", "cutter: 1\nruler: long", "2: ruler: \"long\" is no number from 8 to 576");
    }
    void answersAreReadFromLines()
    {
        QFETCH(QString, text);
        QFETCH(QString, error);
        const SelfTestPlan plan = planOf(general);
        SelfTestFindings findings(plan);
        QString fault;
        QCOMPARE(tool::readAnswers(text, findings, tool::questionsOf(plan), &fault),
                 error.isEmpty());
        QCOMPARE(fault, error);
    }
};

QTEST_GUILESS_MAIN(TestSelfTest)
#include "tst_selftest.moc"
