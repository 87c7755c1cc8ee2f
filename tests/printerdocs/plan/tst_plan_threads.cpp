#include <QJsonDocument>
#include <QtConcurrent>
#include <QtTest>

#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/printerdocumentformatter.h"

namespace {

constexpr int lineCount = 80;

QString templateText()
{
    QString text;
    for (int line = 0; line < lineCount; ++line)
        text += QString(line % 8 == 0 ? "<B><NAME%1><S><DISC%1>\n"
                                      : "<NAME%1>[ -<DISC%1>]<S><QTY%1*PRICE%1-DISC%1,0.00>\n")
                    .arg(line);
    return text;
}

PrinterDocument documentOf(int thread)
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

QStringList printed(int thread)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(templateText());
    const PrinterDocument document = documentOf(thread);
    QStringList first = formsOf(formatter, document);
    for (int use = 0; use < 20; ++use) {
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
    void threadsThatShareAPlanDontMeet()
    {
        constexpr int threads = 8;
        templates::TemplateLines::setPlanUse(templates::PlanUse::Never);
        QVector<QStringList> expected;
        for (int thread = 0; thread < threads; ++thread)
            expected.append(printed(thread));
        templates::TemplateLines::setPlanUse(templates::PlanUse::WhenItPays);
        QThreadPool pool;
        pool.setMaxThreadCount(threads);
        QVector<QFuture<QStringList>> results;
        for (int thread = 0; thread < threads; ++thread)
            results.append(QtConcurrent::run(&pool, printed, thread));
        for (int thread = 0; thread < threads; ++thread)
            QCOMPARE(results[thread].result(), expected.at(thread));
    }
};

QTEST_GUILESS_MAIN(TestPlanThreads)
#include "tst_plan_threads.moc"
