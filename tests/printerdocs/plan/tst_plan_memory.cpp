#include <malloc.h>

#include <QLoggingCategory>
#include <QtTest>
#include <atomic>

#include "../template/formatterbench.h"
#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/templatelines_p.h"

using namespace formatterbench;
using namespace templates;

namespace {

// What all that was allocated has at the moment, by Qt and by the standard library too.
std::atomic<long long> usedBytes{0};

void *counted(void *memory)
{
    usedBytes += static_cast<long long>(malloc_usable_size(memory));
    return memory;
}

}  // namespace

// glibc's own functions behind the ones that are replaced here.
extern "C" {
void *__libc_malloc(size_t size);                // NOLINT(bugprone-reserved-identifier)
void *__libc_calloc(size_t count, size_t size);  // NOLINT(bugprone-reserved-identifier)
void *__libc_realloc(void *old, size_t size);    // NOLINT(bugprone-reserved-identifier)
void __libc_free(void *memory);                  // NOLINT(bugprone-reserved-identifier)

__attribute__((visibility("default"))) void *malloc(size_t size)
{
    return counted(__libc_malloc(size));
}
__attribute__((visibility("default"))) void *calloc(size_t count, size_t size)
{
    return counted(__libc_calloc(count, size));
}
__attribute__((visibility("default"))) void *realloc(void *old, size_t size)
{
    usedBytes -= static_cast<long long>(malloc_usable_size(old));
    return counted(__libc_realloc(old, size));
}
__attribute__((visibility("default"))) void free(void *memory)
{
    usedBytes -= static_cast<long long>(malloc_usable_size(memory));
    __libc_free(memory);
}
}

namespace {

constexpr int lineCount = 1000;

QStringList numbered(const QString &line, int count)
{
    QStringList lines;
    for (int number = 0; number < count; ++number)
        lines.append(QString(line).replace('#', QString::number(number)));
    return lines;
}

/// No two lines have a shape together.
QStringList unlikeLines()
{
    return numbered(
        "#: <NAME#> <QTY#,0.000> x <PRICE#,0.00>[ -<DISC#,0.00>][ (<CODE#>)]"
        "<S><QTY#*PRICE#-DISC#,0.00>",
        lineCount);
}

/// A document that has a number for each name, and many that no template asks for.
PrinterDocument documentFor(const QStringList &lines)
{
    Attributes attributes;
    static const QRegularExpression name("\\b\\p{Lu}\\w+",
                                         QRegularExpression::UseUnicodePropertiesOption);
    for (auto found = name.globalMatch(lines.join('\n')); found.hasNext();)
        attributes.insert(found.next().captured(), 12.5);
    for (int number = 0; number < 20000; ++number)
        attributes.insert(QString("OTHER%1").arg(number), number);
    return documentOf(attributes, "a=1\tb=2");
}

struct Use
{
    long long bytes;  ///< that stay
    long long byPlan;
    long long beyondMemory;
    QStringList text;
};

/// What a formatter has more of after its use by plan than after one without.
Use useOf(const QStringList &lines)
{
    const PlanTally &tally = PlanTally::instance();
    const PrinterDocument document = documentFor(lines);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(lines.join('\n'));
    TemplateLines::setPlanUse(PlanUse::Never);
    formatter.toPlainText(document, 40);
    TemplateLines::setPlanUse(PlanUse::AtOnce);
    Use use{};
    const auto beyondMemory = static_cast<std::size_t>(Fallback::Memory);
    use.bytes = -usedBytes;
    use.byPlan = -tally.lines[0];
    use.beyondMemory = -tally.lines[beyondMemory];
    formatter.toPlainText(document, 40);
    use.bytes += usedBytes;
    use.byPlan += tally.lines[0];
    use.beyondMemory += tally.lines[beyondMemory];
    use.text = formatter.toPlainText(document, 40);
    TemplateLines::setPlanUse(PlanUse::Never);
    if (use.text != formatter.toPlainText(document, 40))
        use.text.clear();
    return use;
}

}  // namespace

/// What a plan takes up of the memory, with all that it keeps for documents.
class TestPlanMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }
    void cleanup() { TemplateLines::setPlanUse(PlanUse::WhenItPays); }

    void allocationsAreCounted()
    {
        const long long before = usedBytes;
        const QByteArray bytes(100000, 'a');
        QVERIFY(usedBytes - before >= 100000);
    }

    void aLineTakesUpAtMostAKilobyte_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<bool>("allFit");
        for (const QString name : {"cafe", "fiscal", "grocery", "kiosk"}) {
            PrinterDocumentFormatter formatter(0, nullptr);
            formatter.loadTemplate(PRINTERSLIB_EXAMPLES "/" + name + ".cpt", "UTF-8");
            QTest::newRow(qPrintable(name)) << formatter.getTemplate() << true;
        }
        const auto row = [](const char *title, const QString &line, bool allFit,
                            int count = lineCount) {
            QTest::newRow(title) << numbered(line, count) << allFit;
        };
        row("lines alike",
            "<NAME#> <QTY#,0.000> x <PRICE#,0.00>[ -<DISC#,0.00>]<S><QTY#*PRICE#-DISC#,0.00>",
            true);
        row("names alone", "#<NAME#>", true);
        row("texts alone", "text #", true);
        row("blank lines", "", true);
        row("entries", "<ENTRIES>", true);
        row("symbols", "<SPECSYMBOLS=none>", true);
        row("lines without a shape", "#<NAME#> <", true);
        row("lines of nothing but tags", "<LS#>", true);
        row("long texts", "#" + QString("text ").repeated(1000), false);
        row("long names", "<" + QString("NAME").repeated(1000) + "#>", false);
        row("long formats", "<PRICE#,0." + QString("0").repeated(3000) + "#>", false);
        row("many tags", "#" + QString("<NAME#> ").repeated(100), false);
        row("many tags of one name", QString("<NAME#> ").repeated(100), true);
        row("many tags in lines alike", numbered("<NAME#OF%> ", 100).join(' ').replace('%', '#'),
            false);
        row("many groups", "#" + QString("[<NAME#>]").repeated(100), false);
        row("many operands", "#<" + QString("PRICE#+").repeated(63) + "PRICE#>", false);
        row("long expressions", "#<PRICE#" + QString("+abs(-PRICE#)").repeated(20) + ">", false);
        row("one line", "<NAME#>[ -<DISC#,0.00>]<S><QTY#*PRICE#-DISC#,0.00>", true, 1);
        row("one line of many tags", QString("<NAME#> ").repeated(5000), false, 1);
        QTest::newRow("unlike lines") << unlikeLines() << false;
    }

    void aLineTakesUpAtMostAKilobyte()
    {
        QFETCH(const QStringList, lines);
        QFETCH(const bool, allFit);
        const Use use = useOf(lines);
        qInfo("%lld bytes a line, %lld by plan, %lld for their size not", use.bytes / lines.size(),
              use.byPlan, use.beyondMemory);
        QVERIFY(!use.text.isEmpty());
        // A short template may have what one of 16 lines has.
        QVERIFY(use.bytes <= 1024LL * qMax(16, lines.size()));
        QCOMPARE(use.beyondMemory == 0, allFit);
    }

    void whatFitsGoesByPlan()
    {
        const Use use = useOf(unlikeLines());
        QCOMPARE(use.byPlan + use.beyondMemory, 1LL * lineCount);
        QVERIFY(use.byPlan > lineCount * 2 / 5);
    }

    void whatADocumentHasBesideIsntKept()
    {
        const Use use = useOf({"<PRICE1*PRICE2>"});
        QCOMPARE(use.byPlan, 1LL);
        QVERIFY(use.bytes < 4096);
    }
};

QTEST_GUILESS_MAIN(TestPlanMemory)
#include "tst_plan_memory.moc"
