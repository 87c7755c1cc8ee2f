#include <QJsonDocument>
#include <QtConcurrent>
#include <QtTest>

#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/plan/templateplan_p.h"
#include "printerdocs/printerdocumentformatter.h"

using namespace templates;

namespace {

QStringList templateOf(int lineCount)
{
    QStringList lines;
    for (int line = 0; line < lineCount; ++line)
        lines += QString(line % 8 == 0 ? "<B><NAME%1><S><DISC%1>"
                                       : "<NAME%1>[ -<DISC%1>]<S><QTY%1*PRICE%1-DISC%1,0.00>")
                     .arg(line);
    return lines;
}

PrinterDocument documentOf(int thread, int lineCount)
{
    QMap<QString, QVariant> attributes;
    for (int line = 0; line < lineCount; ++line) {
        const QString number = QString::number(line);
        attributes["NAME" + number] = QString("Item %1 of %2").arg(line).arg(thread);
        attributes["QTY" + number] = thread + 1;
        attributes["PRICE" + number] = line / 4.0;
        attributes["DISC" + number] = line % 2 == 0 ? 0.0 : 0.25;
    }
    PrinterDocument document;
    document.setAttributes(attributes);
    return document;
}

QStringList formsOf(const PrinterDocumentFormatter &formatter, const PrinterDocument &document)
{
    const QVariantMap blocks = formatter.toTextPrinterDocument(document).toMap();
    return formatter.toPlainText(document, 40) +
           QStringList{formatter.toHtml(document, true),
                       QString::fromUtf8(QJsonDocument::fromVariant(blocks).toJson())};
}

constexpr int formCount = 3;
constexpr int useCount = 21;

QStringList printed(int thread, int lineCount)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(templateOf(lineCount).join('\n'));
    const PrinterDocument document = documentOf(thread, lineCount);
    QStringList first = formsOf(formatter, document);
    for (int use = 1; use < useCount; ++use) {
        if (formsOf(formatter, document) != first)
            return {};
    }
    return first;
}

}  // namespace

/// Formatters in several threads share one template's plan and its compiled expressions, and their
/// documents the bytes of lines without formats.
class TestPlanThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threadsThatShareAPlanDontMeet_data()
    {
        QTest::addColumn<int>("lineCount");
        QTest::addColumn<bool>("planIsThere");
        QTest::newRow("all make it") << 80 << false;
        // Too short for a plan at its first use: it goes by that of the others.
        QTest::newRow("all find it") << 40 << true;
    }

    void threadsThatShareAPlanDontMeet()
    {
        QFETCH(const int, lineCount);
        QFETCH(const bool, planIsThere);
        constexpr int threads = 8;
        TemplateLines::setPlanUse(PlanUse::Never);
        QVector<QStringList> expected;
        for (int thread = 0; thread < threads; ++thread)
            expected.append(printed(thread, lineCount));
        TemplateLines::setPlanUse(PlanUse::WhenItPays);
        const auto plan = planIsThere ? TemplatePlan::shared(templateOf(lineCount)) : nullptr;
        const long long before = PlanTally::instance().lines[0];
        QThreadPool pool;
        pool.setMaxThreadCount(threads);
        QVector<QFuture<QStringList>> results;
        for (int thread = 0; thread < threads; ++thread)
            results.append(QtConcurrent::run(&pool, printed, thread, lineCount));
        for (int thread = 0; thread < threads; ++thread)
            QCOMPARE(results[thread].result(), expected.at(thread));
        QCOMPARE(PlanTally::instance().lines[0] - before,
                 1LL * threads * useCount * formCount * lineCount);
    }
};

QTEST_GUILESS_MAIN(TestPlanThreads)
#include "tst_plan_threads.moc"
