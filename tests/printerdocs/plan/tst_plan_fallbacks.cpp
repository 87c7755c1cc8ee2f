#include <QLoggingCategory>
#include <QtTest>
#include <functional>
#include <utility>

#include "../template/formatterbench.h"
#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/plan/templateplan_p.h"
#include "stepbystep.h"

using namespace formatterbench;
using namespace templates;

namespace {

/// A value whose text is a client's code.
struct Weight
{
    int grams = 0;
};

const char marked[] = u8"\uFDD0";

Attributes values()
{
    return {{"NAME", "Tea to go"},
            {"ITALY", "Inbus key"},
            {"PRICE", 12.5},
            {"SOLD", "7,50"},
            {"COUNT", 3},
            {"ZERO", 0.0},
            {"NONE", QString()},
            {"DEBT", -3.25},
            {"NIL", -0.0},
            {"NILS", "-0,00"},
            {"PAID", true},
            {"DATE", QDate(2026, 5, 9)},
            {"HOUR", QTime(18, 5)},
            {"WHEN", QDateTime(QDate(2026, 5, 9), QTime(18, 5), Qt::UTC)},
            {"TAGS", "<COUNT>"},
            {"LESS", "a<b"},
            {"MORE", "a>b"},
            {"OPEN", "a[b"},
            {"SHUT", "a]b"},
            {"TABS", "a\tb"},
            {"MANY", 18446744073709551615ULL},
            {"FEW", 7U},
            {"LONG", -9000000000LL},
            {"FEED", "a\nb"},
            {"MASS", QVariant::fromValue(Weight{250})}};
}

struct Counts
{
    long long byPlan = PlanTally::instance().lines[0];
    long long restarts = PlanTally::instance().restarts;
    long long of(Fallback reason) const
    {
        return PlanTally::instance().lines[static_cast<std::size_t>(reason)];
    }
};

QString printedBySteps(const PrinterDocumentFormatter &formatter, const PrinterDocument &document)
{
    StepByStep steps(formatter, document);
    return steps.plainText(30).join('|') + '\n' + steps.html(true);
}

QString printedByPlan(const PrinterDocumentFormatter &formatter, const PrinterDocument &document)
{
    return formatter.toPlainText(document, 30).join('|') + '\n' + formatter.toHtml(document, true);
}

}  // namespace

Q_DECLARE_METATYPE(Weight)

/// Which lines go by plan, and why others don't.
class TestPlanFallbacks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { TemplateLines::setPlanUse(PlanUse::AtOnce); }
    void cleanup() { TemplateLines::setPlanUse(PlanUse::WhenItPays); }

    void linesGoTheirWay_data();
    void linesGoTheirWay();
    void planIsMadeWhenItPays_data();
    void planIsMadeWhenItPays();
    void linesOfAnyLengthArePadded();
    void namesThatStandElsewhere_data();
    void namesThatStandElsewhere();
    void namesOfAnotherDocumentDontStandAnywhere();
    void linesAreNotTakenForOthers_data();
    void linesAreNotTakenForOthers();
    void namesOfAllLettersAreFound();
    void formatsWithinALine_data();
    void formatsWithinALine();
    void foldedAndIndentedLinesGoByPlan_data();
    void foldedAndIndentedLinesGoByPlan();
    void entries_data();
    void entries();
    void entriesThatNameSymbolsKeepThoseOfTheTemplateOut();
    void copyMark();
    void copyMarkOfALanguage_data();
    void copyMarkOfALanguage();
    void aTemplateThatRemovesHasNoPlan();
    void aRemovalInAValueSendsTheWholeDocumentTheGeneralWay();
    void anotherTemplateHasAnotherPlan();
    void formattersOfOneTemplateShareThePlan();
    void aDocumentLeavesNothingBehind();
    void aDocumentIsPrintedInTheMidstOfAnother();
    void whatALogLineChangesIsTooLate_data();
    void whatALogLineChangesIsTooLate();
    void aLogThatIsTurnedOffIsSilent();
    void symbolsThatCantBeReadAreTriedOnce();
    void mostLinesOfTheExamplesHaveAShape_data();
    void mostLinesOfTheExamplesHaveAShape();
};

void TestPlanFallbacks::linesGoTheirWay_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("reason");
    const auto row = [](const char *name, const QString &line, Fallback reason = Fallback::None) {
        QTest::newRow(name) << line << static_cast<int>(reason);
    };
    row("no tags", "just text");
    row("a text", "<NAME>");
    row("numbers", "<PRICE,0.000> <COUNT,000> <SOLD> <DEBT,0.0>");
    row("times", "<DATE> <HOUR,hh> <WHEN,dd.mm.yyyy hh:nn>");
    row("yes and no", "<PAID>");
    row("two edges", "<NAME><S><PRICE,0.00>");
    row("centred", "<C><NAME>");
    row("right", "<R><NAME>");
    row("whole line in bold", "<B><NAME>");
    row("ranges", "<B:><NAME><:B> <U:><COUNT,00><:U>");
    row("fonts", "<F2><NAME><F1>");
    row("group that stays", "<NAME>[ -<PRICE>]<S><PRICE>");
    row("group that goes", "<NAME>[ -<ZERO>]<S><PRICE>");
    row("empty text takes its group", "<NAME>[ <NONE>]<S><PRICE>");
    row("inner group that goes", "<NAME>[ x[ -<ZERO>] y ]<S><PRICE>");
    row("group and what is in front of it in it", "[a<NAME> <ZERO>]            <PRICE>");
    row("group that is the line", "[Discount<S>-<ZERO>]");
    row("group in ranges that is the line", "[<B:>Discount<:B> <ZERO> <PRICE>]");
    row("empty text", "<NONE>");
    row("empty text beside tags", "<C><NONE>");
    row("tab in a group that goes", "<NAME>[\t<ZERO>]and so on up to the end of the line");
    row("tab in front of a group that goes", "<NAME>\t[ -<ZERO>] and so on up to the end of it");
    row("tab behind a group that goes", "<NAME>[ -<ZERO>] and so on up to the end of it\t<COUNT>");
    row("tab in a line that goes", "[<NAME>\t<ZERO>]");
    row("edges and a group that goes", "<NAME>[ -<ZERO>]<S><PRICE>");
    row("long line with edges", "<NAME> <NAME> <NAME><S><NAME> <NAME>");
    row("right line that is too long", "<R><NAME> <NAME> <NAME>\t<NAME> <NAME>");
    row("whole numbers of all kinds", "<FEW,00> <LONG> <MANY> <COUNT,000>");
    row("expression of whole numbers", "<FEW+COUNT,0.00> <MANY-LONG,0.E>");
    row("piece as long as is copied at once", "<NAME>1234567890123456<PRICE>");
    row("piece longer than that", "<NAME>12345678901234567<PRICE>");
    row("line longer than most", manyLines("<NAME> and ", 20).remove('\n'));
    row("unmatched brackets", "<NAME> ] [ <ZERO>");
    row("one value twice", "<NAME> <NAME>");
    row("name like an image", "<ITALY>");
    row("sum", "Sum<S><PRICE*COUNT-ZERO,0.00>");
    row("expression with a negative value", "<PRICE-DEBT*2^DEBT> <-DEBT+PRICE>");
    row("expression with a text that is a number", "<SOLD*(COUNT+1.5),0.000>");
    row("functions", "<sqrt(PRICE)+abs DEBT>");
    row("expression that is 0 takes its group", "<NAME>[ <PRICE-PRICE>]<S>x");
    row("division by nothing", "<PRICE/ZERO>");
    row("nothing has no sign", "<2^(COUNT/NIL)> <2^(COUNT/NILS),0>");
    row("name of a function beside an operator", "<pi*COUNT>");
    row("loose opening bracket", "<NAME> <PRICE> <", Fallback::LooseBracket);
    row("loose closing bracket", "<NAME> > <PRICE>", Fallback::LooseBracket);
    row("unknown short tag", "<NAME><L>", Fallback::LooseBracket);
    row("code", "<NAME><65>", Fallback::CodeTag);
    row("two tabs", "<NAME><S>x<S><PRICE>", Fallback::TwoTabs);
    row("a tab beside another", "<NAME>\t<S><PRICE>", Fallback::TwoTabs);
    row("bracket in a tag", "<NA[ME>", Fallback::BracketInTag);
    row("bracket in a format", "<DATE,d]d>", Fallback::BracketInTag);
    row("tag in a tag", "<NA<NAME>", Fallback::BracketInTag);
    row("no name", "<NAME><,0.00>", Fallback::NamelessTag);
    row("mark of a value", QString::fromUtf8(marked) + "<NAME>", Fallback::MarkCharacter);
    row("nothing but tags", "<C><LS3>", Fallback::NoText);
    row("line that takes up too much memory", QString("<NAME> ").repeated(1000), Fallback::Memory);
    row("unknown name", "<NAME><GONE>", Fallback::MissingName);
    row("client's type", "<NAME><MASS>", Fallback::ForeignValue);
    row("unknown name in an expression", "<PRICE*GONE>", Fallback::MissingName);
    row("broken expression", "<PRICE*COUNT*>", Fallback::MissingName);
    row("number beside a name", "<2PRICE+COUNT>", Fallback::MissingName);
    row("exponent in the expression", "<PRICE*1e3>", Fallback::MissingName);
    row("64 operands", "<" + QString("PRICE+").repeated(63) + "PRICE>");
    row("65 operands", "<" + QString("PRICE+").repeated(64) + "PRICE>", Fallback::MissingName);
    row("text in an expression", "<PRICE*NAME>", Fallback::TextInExpression);
    row("date in an expression", "<PRICE*DATE>", Fallback::TextInExpression);
    row("tag in a value", "<TAGS>", Fallback::MarkupInValue);
    row("opening bracket in a value", "<LESS>", Fallback::MarkupInValue);
    row("closing bracket in a value", "<MORE>", Fallback::MarkupInValue);
    row("group's begin in a value", "<OPEN>", Fallback::MarkupInValue);
    row("group's end in a value", "<SHUT>", Fallback::MarkupInValue);
    row("tab in a value", "<TABS><S>x", Fallback::MarkupInValue);
    row("group with a tab goes", "<NAME>[<S><ZERO>]", Fallback::GroupOfMarkup);
    row("group among ranges goes", "<B:>x<:B>[ <ZERO>]", Fallback::GroupOfMarkup);
    row("group in front of a tag goes", "<NAME>[ -<ZERO>]<PRICE>", Fallback::GroupNearTag);
    row("nothing between ranges", "<B:>a<:B><NONE><B:>b<:B>", Fallback::EmptyAmongRanges);
}

void TestPlanFallbacks::linesGoTheirWay()
{
    QFETCH(QString, line);
    QFETCH(int, reason);
    PrinterDocumentFormatter formatter(2, nullptr);
    formatter.setTemplate("first <COUNT>\n" + line + "\nlast <COUNT>");
    const PrinterDocument document = documentOf(values());
    const QStringList lines = formatter.prepareDocument(document);
    const Counts before;
    const auto ofReason = before.of(static_cast<Fallback>(reason));
    const QStringList text = formatter.toPlainText(document, 30);
    const Counts after;
    QCOMPARE(text.join('|'), StepByStep(formatter, document).plainText(30).join('|'));
    QCOMPARE(printedByPlan(formatter, document), printedBySteps(formatter, document));
    const bool isPlanned = static_cast<Fallback>(reason) == Fallback::None;
    QCOMPARE(after.byPlan - before.byPlan, isPlanned ? 3 : 2);
    if (!isPlanned)
        QVERIFY(after.of(static_cast<Fallback>(reason)) > ofReason);
}

void TestPlanFallbacks::linesOfAnyLengthArePadded()
{
    constexpr int width = 30;
    PrinterDocumentFormatter formatter(0, nullptr);
    for (const char *const line : {"<HEAD>", "<C><HEAD>", "<R><HEAD>", "<HEAD><S><TAIL>",
                                   "[<HEAD>]<S>[<TAIL>]", "<HEAD>\t<TAIL>", "<R><HEAD>\t<TAIL>"}) {
        formatter.setTemplate(line);
        for (int head = 0; head < width + 3; ++head) {
            for (int tail = 0; tail < width + 3; ++tail) {
                const PrinterDocument document =
                    documentOf({{"HEAD", QString(head, 'h')},
                                {"TAIL", QString("t%1").arg(tail).repeated(tail).left(tail)}});
                QCOMPARE(formatter.toPlainText(document, width),
                         StepByStep(formatter, document).plainText(width));
            }
        }
    }
    for (const int narrow : {-1, 0, 1, 500})
        QCOMPARE(
            formatter.toPlainText(documentOf({{"HEAD", "h"}, {"TAIL", "t"}}), narrow),
            StepByStep(formatter, documentOf({{"HEAD", "h"}, {"TAIL", "t"}})).plainText(narrow));
}

void TestPlanFallbacks::namesThatStandElsewhere_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("isPlanned");
    const auto row = [](const char *title, const QString &name, const QString &expression,
                        bool isPlanned) {
        QTest::newRow(title) << name << expression << isPlanned;
    };
    row("small letter", "price", "PRICE*COUNT", true);
    row("Cyrillic letters", QString::fromUtf8("Цена"), "PRICE*COUNT", true);
    row("blanks", "Unit price", "PRICE*COUNT", true);
    row("part of a name", "RICE", "PRICE*COUNT", true);
    row("longer than a name", "PRICE1", "PRICE*COUNT", true);
    row("the empty name", "", "PRICE*COUNT", false);
    row("a digit", "2", "PRICE*COUNT", false);
    row("an operator", "*", "PRICE*COUNT", false);
    row("name with an operator", "PRICE*", "PRICE*COUNT", false);
    row("the expression", "PRICE*COUNT", "PRICE*COUNT", true);
    row("small letter and a function", "q", "sqrt(PRICE)", false);
    row("capital letter and a function", "Q", "sqrt(PRICE)", true);
    row("the letter of an exponent", "e", "GREAT*2", false);
    row("the letter of a round number's exponent", "e", "MILLION*2", false);
    row("the letter of a small number's exponent", "e", "SMALL*2", false);
    row("an exponent and its sign", "e+", "GREAT*2", false);
    row("another small letter", "n", "PRICE*2", true);
    row("another small letter and a great value", "n", "GREAT*2", true);
    row("no name and a great value", "Z", "GREAT*2", true);
}

void TestPlanFallbacks::namesThatStandElsewhere()
{
    QFETCH(QString, name);
    QFETCH(QString, expression);
    QFETCH(bool, isPlanned);
    Attributes attributes = values();
    attributes["GREAT"] = 1e20;
    attributes["MILLION"] = 1e6;
    attributes["SMALL"] = 1e-5;
    attributes[name] = 4;
    const PrinterDocument document = documentOf(attributes);
    const QString line = '<' + expression + ",0.E>";
    for (const QString &lines : {line, line + "\nb<" + name + ",0>"}) {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(lines);
        const Counts before;
        const long long elsewhere = before.of(Fallback::NamesElsewhere);
        const QStringList text = formatter.toPlainText(document, 30);
        QCOMPARE(Counts().of(Fallback::NamesElsewhere) - elsewhere, isPlanned ? 0 : 1);
        QVERIFY(!isPlanned || Counts().byPlan > before.byPlan);
        QCOMPARE(text, StepByStep(formatter, document).plainText(30));
    }
}

void TestPlanFallbacks::namesOfAnotherDocumentDontStandAnywhere()
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<PRICE*COUNT,0.00>\nb<q*,0>");
    Attributes odd = values();
    odd["*"] = 4;
    odd["q*"] = 5;
    for (const Attributes &attributes : {values(), odd, values()}) {
        const PrinterDocument document = documentOf(attributes);
        const long long elsewhere = Counts().of(Fallback::NamesElsewhere);
        QCOMPARE(formatter.toPlainText(document, 30),
                 StepByStep(formatter, document).plainText(30));
        QCOMPARE(Counts().of(Fallback::NamesElsewhere) - elsewhere,
                 attributes.contains("*") ? 1 : 0);
    }
}

/// Lines share a shape by what they have alike, and that may be put on.
void TestPlanFallbacks::linesAreNotTakenForOthers_data()
{
    QTest::addColumn<QString>("lines");
    QTest::newRow("bracket in a tag") << "[<ZERO> <NAME>\n[<ZERO> <NA]ME>";
    QTest::newRow("tag without a name") << "<NAME,0.00>\n<,0.00>";
    QTest::newRow("marks in a text") << QString::fromUtf8(u8"x<NAME>\nx\uFDD0\uFDD3\uFDD3");
    QTest::newRow("a word like a variable") << "<a0+PRICE>\n<PRICE+a0>";
    QTest::newRow("such a word behind operands") << "<PRICE+COUNT,0>\n<PRICE+a1,0>";
    QTest::newRow("such a word in front of operands") << "<PRICE+a1,0>\n<PRICE+COUNT,0>";
    QTest::newRow("a variable beyond all") << "<PRICE+a9,0>";
}

void TestPlanFallbacks::linesAreNotTakenForOthers()
{
    QFETCH(QString, lines);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(lines);
    Attributes attributes = values();
    attributes["NA]ME"] = "closed";
    // That name stands everywhere in expressions.
    if (!lines.contains("a"))
        attributes[""] = "nameless";
    const PrinterDocument document = documentOf(attributes);
    QCOMPARE(printedByPlan(formatter, document), printedBySteps(formatter, document));
}

void TestPlanFallbacks::namesOfAllLettersAreFound()
{
    const QStringList names{"Жук2", "Фара1", "ЖЖЖB",     "ФФФA", "ÿAAA",      "ÿÿÿB",
                            "NAME", "NAMES", "NAMENAME", "name", "NAMENAMEB", "NAMENAMEA"};
    Attributes attributes;
    QString line;
    for (const QString &name : names) {
        attributes[name] = names.indexOf(name);
        line += '<' + name + ',' + "0> ";
    }
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(line);
    const long long before = Counts().byPlan;
    QCOMPARE(formatter.toPlainText(documentOf(attributes), 10),
             QStringList("0 1 2 3 4 5 6 7 8 9 10 11 "));
    QCOMPARE(Counts().byPlan - before, 1LL);
    for (int number = 0; number < 200; ++number)
        attributes["OTHER" + QString::number(number)] = number;
    QCOMPARE(formatter.toPlainText(documentOf(attributes), 10),
             QStringList("0 1 2 3 4 5 6 7 8 9 10 11 "));
    QCOMPARE(Counts().byPlan - before, 2LL);
}

void TestPlanFallbacks::formatsWithinALine_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<int>("reason");
    const auto row = [](const char *name, const QString &lines, Fallback reason = Fallback::None) {
        QTest::newRow(name) << lines << static_cast<int>(reason);
    };
    row("bold line", "<B><NAME>\n<COUNT>");
    row("font that ends behind the text", "<F2><NAME><F1>\n<COUNT>", Fallback::CarriedStyle);
    row("bold word", "a<B:><NAME><:B>b", Fallback::MixedFormats);
    row("two groups", "[a <NAME>][b <COUNT>]", Fallback::MixedFormats);
    row("tag that hits twice", "<C><NAME><C>", Fallback::MixedFormats);
    row("format of the line before", "<B:><NAME>\n<COUNT>", Fallback::CarriedStyle);
    row("font of the line before", "<F2><NAME>\n<COUNT>", Fallback::CarriedStyle);
}

void TestPlanFallbacks::formatsWithinALine()
{
    QFETCH(QString, lines);
    QFETCH(int, reason);
    PrinterDocumentFormatter formatter(3, nullptr);
    formatter.setTemplate(lines + "\n\nlast");
    const PrinterDocument document = documentOf(values());
    const Counts before;
    const auto ofReason = before.of(static_cast<Fallback>(reason));
    const QList<DocumentBlock> blocks = formatter.toTextPrinterDocument(document).blocks();
    QVERIFY(Counts().of(static_cast<Fallback>(reason)) > ofReason);
    QCOMPARE(blocks, StepByStep(formatter, document).blocks());
    QCOMPARE(formatter.toHtml(document, true), StepByStep(formatter, document).html(true));
}

void TestPlanFallbacks::foldedAndIndentedLinesGoByPlan_data()
{
    QTest::addColumn<int>("charactersMode");
    QTest::addColumn<int>("margin");
    for (const int mode : {0, 1, 2}) {
        for (const int margin : {0, 1, 5})
            QTest::addRow("mode %d, margin %d", mode, margin) << mode << margin;
    }
}

void TestPlanFallbacks::foldedAndIndentedLinesGoByPlan()
{
    QFETCH(int, charactersMode);
    QFETCH(int, margin);
    setCharactersMode(charactersMode);
    const auto clear = qScopeGuard(clearSettings);
    PrinterDocumentFormatter formatter(margin, nullptr);
    formatter.setTemplate("<NAME>\n<B><NAME><S><PRICE>\n<F2><C><NAME> Stra\u00DFe");
    const PrinterDocument document = documentOf(values());
    StepByStep steps(formatter, document);
    const auto linesByPlan = [](auto print) {
        const long long before = Counts().byPlan;
        print();
        return Counts().byPlan - before;
    };
    QCOMPARE(
        linesByPlan([&] { QCOMPARE(formatter.toPlainText(document, 30), steps.plainText(30)); }),
        3LL);
    QCOMPARE(linesByPlan([&] { QCOMPARE(formatter.toHtml(document, true), steps.html(true)); }),
             3LL);
    QCOMPARE(linesByPlan([&] {
                 QCOMPARE(formatter.toTextPrinterDocument(document).blocks(), steps.blocks());
             }),
             3LL);
}

void TestPlanFallbacks::entries_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("byPlan");
    const auto row = [](const char *name, const QString &line, const QString &text, int byPlan) {
        QTest::newRow(name) << line << text << byPlan;
    };
    row("none", "<ENTRIES>", "", 0);
    row("two", "<ENTRIES>", "Total=10\tTax=2", 2);
    row("small letters", "<entries>", "Total=10\tTax=2", 2);
    row("a name alone", "<ENTRIES>", "Total", 1);
    row("empty ones", "<ENTRIES>", "\t=\t\ta=1\t", 2);
    row("two edges in one", "<ENTRIES>", "a=b=c\td=1", 1);
    row("tags", "<ENTRIES>", "<NAME>=1\ta=1", 0);
    row("the tag itself", "<ENTRIES>", "a=1\t<ENTRIES>=2\tb=3", 0);
    row("brackets", "<ENTRIES>", "[a]=1\ta>b=2\tc=3", 1);
    row("a line feed", "<ENTRIES>", "a\nb=1\tc=3", 0);
    row("beside text", "x <ENTRIES> y", "a=1\tb=2", 0);
    row("twice", "<ENTRIES><ENTRIES>", "a=1\tb=2", 0);
    row("symbols", "<ENTRIES>", "<SPECSYMBOLS=none>\tb=2", 0);
    row("symbols beside it", "<SPECSYMBOLS=<ENTRIES>>", "none\tnone", 0);
}

void TestPlanFallbacks::entries()
{
    QFETCH(QString, line);
    QFETCH(QString, text);
    QFETCH(int, byPlan);
    PrinterDocumentFormatter formatter(1, nullptr);
    formatter.setTemplate("<C>\n" + line + "\n\n<B:>\n" + line);
    const PrinterDocument document = documentOf(values(), text);
    const Counts before;
    const QStringList lines = formatter.toPlainText(document, 30);
    const Counts after;
    QCOMPARE(lines, StepByStep(formatter, document).plainText(30));
    if (after.restarts == before.restarts)
        QCOMPARE(after.byPlan - before.byPlan, 2 * byPlan);
    QCOMPARE(printedByPlan(formatter, document), printedBySteps(formatter, document));
    QCOMPARE(formatter.toTextPrinterDocument(document).blocks(),
             StepByStep(formatter, document).blocks());
}

void TestPlanFallbacks::entriesThatNameSymbolsKeepThoseOfTheTemplateOut()
{
    for (const PlanUse use : {PlanUse::Never, PlanUse::AtOnce}) {
        TemplateLines::setPlanUse(use);
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setSpecCharsPath(PRINTERSLIB_EXAMPLES "/symbols");
        formatter.setTemplate("<SPECSYMBOLS=shop>\n<SPECSYMBOLS=<ENTRIES>>");
        const auto imagesOf = [&](const QString &entries) {
            return formatter.toTextPrinterDocument(documentOf({}, entries)).toMap();
        };
        const QVariantMap without = imagesOf("none");
        const QVariantMap with = imagesOf("none\tnone");
        QVERIFY(without["cis"] != with["cis"]);
        QCOMPARE(
            without,
            PrinterDocumentFormatter(0, nullptr).plainTextToTextPrinterDocument(QString()).toMap());
    }
}

void TestPlanFallbacks::copyMark()
{
    for (const char *const lines : {"<DOCNO>\n<NAME>", "<NAME>\na <docno> b", "<NAME>",
                                    "<SPECSYMBOLS=none><DOCNO>\n<NAME>"}) {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(lines);
        const PrinterDocument document = copyOf(documentOf(values()));
        const long long before = Counts().byPlan;
        QCOMPARE(printedByPlan(formatter, document), printedBySteps(formatter, document));
        QVERIFY(Counts().byPlan > before);
    }
}

void TestPlanFallbacks::copyMarkOfALanguage_data()
{
    QTest::addColumn<QString>("mark");
    for (const char *const mark :
         {"", "<C>COPY", "<ENTRIES>", "<SPECSYMBOLS=none>", "a\nb", "<GONE>"})
        QTest::addRow("\"%s\"", mark) << QString(mark);
}

void TestPlanFallbacks::copyMarkOfALanguage()
{
    QFETCH(QString, mark);
    differential::MarkTranslator translator;
    translator.setMark(mark);
    QCoreApplication::installTranslator(&translator);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<SPECSYMBOLS=other>\n<DOCNO>\n<NAME>\n<ENTRIES>");
    const PrinterDocument document = copyOf(documentOf(values(), "a=1\tb=2"));
    QCOMPARE(printedByPlan(formatter, document), printedBySteps(formatter, document));
}

void TestPlanFallbacks::planIsMadeWhenItPays_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("planned");
    QTest::newRow("one line: at the second use") << 1 << 2;
    QTest::newRow("59 lines: at the second use") << 59 << 2;
    QTest::newRow("60 lines: at once") << 60 << 3;
}

void TestPlanFallbacks::planIsMadeWhenItPays()
{
    QFETCH(int, lines);
    QFETCH(int, planned);
    TemplateLines::setPlanUse(PlanUse::WhenItPays);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(manyLines(QString("<NAME> of %1").arg(lines), lines));
    const Counts before;
    for (int use = 0; use < 3; ++use)
        formatter.toPlainText(documentOf(values()), 30);
    QCOMPARE(Counts().byPlan - before.byPlan, planned * lines);
}

void TestPlanFallbacks::aTemplateThatRemovesHasNoPlan()
{
    const char *const removing[] = {"<X>a", "<X:>", "<:X>", "<I>1 2 x</I>"};
    for (const char *const line : removing) {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(QString("<NAME>\n%1\n<NAME>").arg(line));
        const Counts before;
        QCOMPARE(printedByPlan(formatter, documentOf(values())),
                 printedBySteps(formatter, documentOf(values())));
        QCOMPARE(Counts().byPlan, before.byPlan);
    }
}

void TestPlanFallbacks::aRemovalInAValueSendsTheWholeDocumentTheGeneralWay()
{
    const char *const removing[] = {"a\nb", "<X>", "<X:>", "<:X>", "<I>"};
    for (const char *const value : removing) {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("<NAME>\n<SOME>\n<NAME>");
        Attributes attributes = values();
        attributes["SOME"] = value;
        const Counts before;
        QCOMPARE(printedByPlan(formatter, documentOf(attributes)),
                 printedBySteps(formatter, documentOf(attributes)));
        QVERIFY(Counts().restarts > before.restarts);
    }
}

void TestPlanFallbacks::anotherTemplateHasAnotherPlan()
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("a <NAME>");
    QCOMPARE(formatter.toPlainText(documentOf(values()), 30), QStringList("a Tea to go"));
    formatter.setTemplate("b <NAME>");
    QCOMPARE(formatter.toPlainText(documentOf(values()), 30), QStringList("b Tea to go"));
}

void TestPlanFallbacks::formattersOfOneTemplateShareThePlan()
{
    TemplateLines one;
    one.setLines({"shared <NAME>", "<C><COUNT>"});
    TemplateLines other;
    other.setLines({"shared <NAME>", "<C><COUNT>"});
    QCOMPARE(one.plan(), other.plan());
    other.setLines({"shared <NAME>", "<C><PRICE>"});
    QVERIFY(one.plan() != other.plan());
}

void TestPlanFallbacks::aDocumentLeavesNothingBehind()
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<NAME> <COUNT> <PRICE>\n<PRICE*COUNT>\n[<NAME><S><SOLD>]");
    const Attributes others[] = {values(),
                                 {{"COUNT", "three"}},
                                 {{"NAME", 5}, {"PRICE", QVariant()}, {"COUNT", 2.5}},
                                 {},
                                 values()};
    for (const Attributes &attributes : others) {
        const PrinterDocument document = documentOf(attributes);
        QCOMPARE(printedByPlan(formatter, document), printedBySteps(formatter, document));
    }
}

namespace {

std::function<void()> _atNextLogLine;

}  // namespace

/// A client may print from a message handler, by the very plan that is being used.
void TestPlanFallbacks::aDocumentIsPrintedInTheMidstOfAnother()
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<NAME> <COUNT>\n<PRICE*COUNT>\n[<NAME><S><SOLD>]");
    const PrinterDocument outer = documentOf(values());
    Attributes others = values();
    others["NAME"] = "another";
    others["PRICE"] = 1.25;
    const PrinterDocument inner = documentOf(others);
    const QString ofOuter = printedBySteps(formatter, outer);
    const QString ofInner = printedBySteps(formatter, inner);
    int insides = 0;
    std::function<void()> print = [&] {
        QCOMPARE(printedByPlan(formatter, inner), ofInner);
        ++insides;
    };
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {
            if (const auto action = std::exchange(_atNextLogLine, {}))
                action();
        });
    for (int times = 0; times < 3; ++times) {
        _atNextLogLine = print;
        QCOMPARE(printedByPlan(formatter, outer), ofOuter);
    }
    qInstallMessageHandler(before);
    QCOMPARE(insides, 3);
}

namespace {

void writeNothing(QtMsgType, const QMessageLogContext &, const QString &)
{
    if (const auto action = std::exchange(_atNextLogLine, {}))
        action();
}

}  // namespace

/// The log is a client's code, which may change anything while a document is printed.
void TestPlanFallbacks::whatALogLineChangesIsTooLate_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<bool>("isUpperCase");
    for (const bool restarts : {false, true}) {
        const char *const way = restarts ? "general way" : "by plan";
        const QString last = restarts ? "\n<FEED>" : "";
        const auto row = [&](const char *what, const QString &lines, bool isUpperCase = false) {
            QTest::addRow("%s, %s", what, way) << lines << last << isUpperCase;
        };
        row("attributes", "<NAME>\n<PRICE>\n<GONE>\n<COUNT>");
        row("entries", "<NAME>\n<ENTRIES>");
        row("symbols", "<SPECSYMBOLS=broken>\n<NAME>\n<ENTRIES>");
        row("settings", "<NAME>\n<PRICE>\n<COUNT>", true);
    }
}

void TestPlanFallbacks::whatALogLineChangesIsTooLate()
{
    QFETCH(QString, lines);
    QFETCH(QString, lastLine);
    QFETCH(bool, isUpperCase);
    QStringList printed;
    for (const PlanUse use : {PlanUse::Never, PlanUse::AtOnce}) {
        TemplateLines::setPlanUse(use);
        setCharactersMode(IPrintDeviceSettings::CharactersAsWritten);
        QTemporaryDir folder;
        QFile symbols(folder.filePath("broken.ssi"));
        QVERIFY(symbols.open(QIODevice::WriteOnly) && symbols.write("<SpecialSymbolImages><x") > 0);
        symbols.close();
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setSpecCharsPath(folder.path());
        formatter.setTemplate(lines + lastLine);
        PrinterDocument document = documentOf(values(), "a=1\tb=2");
        _atNextLogLine = [&] {
            document =
                documentOf({{"NAME", "Milk"}, {"PRICE", 99}, {"GONE", "<COUNT>"}}, "<NAME>=3");
            formatter.setTemplate("another");
            setCharactersMode(isUpperCase ? IPrintDeviceSettings::CharactersUpperCase
                                          : IPrintDeviceSettings::CharactersAsWritten);
        };
        const QtMessageHandler before = qInstallMessageHandler(writeNothing);
        printed.append(formatter.toHtml(document, true));
        qInstallMessageHandler(before);
        QVERIFY(!_atNextLogLine);
    }
    IPrintDeviceSettings::setPrintDeviceSettings({});
    QCOMPARE(printed.at(1), printed.at(0));
    QCOMPARE(printed.at(0).contains("TEA"), isUpperCase);
}

void TestPlanFallbacks::aLogThatIsTurnedOffIsSilent()
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<NAME> <COUNT> <PRICE*COUNT>\n<SOLD>");
    static int lines;
    lines = 0;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {
            if (++lines == 1)
                QLoggingCategory::setFilterRules("default.warning=false");
        });
    formatter.toPlainText(documentOf(values()), 30);
    qInstallMessageHandler(before);
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(lines, 1);
}

void TestPlanFallbacks::symbolsThatCantBeReadAreTriedOnce()
{
    QTemporaryDir folder;
    QFile symbols(folder.filePath("broken.ssi"));
    QVERIFY(symbols.open(QIODevice::WriteOnly) && symbols.write("<SpecialSymbolImages><x") > 0);
    symbols.close();
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setSpecCharsPath(folder.path());
    formatter.setTemplate("<SPECSYMBOLS=broken>\n<NAME>\n<FEED>");
    static int criticals;
    criticals = 0;
    const long long restarts = Counts().restarts;
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &) {
            criticals += type == QtCriticalMsg ? 1 : 0;
        });
    formatter.toPlainText(documentOf(values()), 30);
    qInstallMessageHandler(before);
    QCOMPARE(Counts().restarts - restarts, 1LL);
    QCOMPARE(criticals, 1);
}

void TestPlanFallbacks::mostLinesOfTheExamplesHaveAShape_data()
{
    QTest::addColumn<QString>("file");
    for (const char *const name : {"cafe", "fiscal", "grocery", "kiosk"})
        QTest::newRow(name) << QString(PRINTERSLIB_EXAMPLES "/%1.cpt").arg(name);
}

void TestPlanFallbacks::mostLinesOfTheExamplesHaveAShape()
{
    QFETCH(QString, file);
    PrinterDocumentFormatter formatter(0, nullptr);
    QVERIFY(formatter.loadTemplate(file, "UTF-8"));
    const TemplatePlan plan(formatter.getTemplate());
    const auto general = std::count_if(plan.lines().cbegin(), plan.lines().cend(),
                                       [](const TemplatePlan::Line &line) {
                                           return line.kind == TemplatePlan::LineKind::General;
                                       });
    qInfo("%d of %d lines go the general way%s", int(general), int(plan.lines().size()),
          plan.isUsable() ? "" : ", and the document with them");
    QVERIFY(general * 4 <= int(plan.lines().size()));
}

QTEST_GUILESS_MAIN(TestPlanFallbacks)
#include "tst_plan_fallbacks.moc"
