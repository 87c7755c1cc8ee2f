#include <QJsonDocument>
#include <QtTest>

#include "differential/generator.h"
#include "differential/surroundings.h"
#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/templatelines_p.h"
#include "stepbystep.h"

using namespace differential;
using namespace templates;

namespace {

QStringList *_log = nullptr;

void keepLog(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (_log)
        _log->append(text);
}

MarkTranslator *_translator = nullptr;

TemplateCase caseOf(unsigned seed, int kind, unsigned number)
{
    const auto wanted = static_cast<Generator::Kind>(kind);
    Generator generator(seed, wanted, number);
    return wanted == Generator::Receipt ? generator.receiptCase() : generator.templateCase();
}

/// The lines that something writes to the log.
template <typename Action>
QStringList logOf(Action action)
{
    QStringList lines;
    _log = &lines;
    const QtMessageHandler before = qInstallMessageHandler(keepLog);
    action();
    qInstallMessageHandler(before);
    _log = nullptr;
    return lines;
}

/// How many cases a run takes: more of them by hand, by this variable.
unsigned caseCount()
{
    const unsigned wanted = qEnvironmentVariableIntValue("PLAN_CASES");
    return wanted > 0 ? wanted : 3000;
}

QString shown(const QList<DocumentBlock> &blocks)
{
    QString result;
    for (const DocumentBlock &block : blocks)
        result += QString::fromUtf8(
            QJsonDocument::fromVariant(block.toMap()).toJson(QJsonDocument::Compact) + '\n');
    return result;
}

/// What a generated case prints by plan and step by step.
class Comparison
{
public:
    explicit Comparison(const TemplateCase &input)
        : m_input(input), m_formatter(input.leftMargin, nullptr)
    {
        setCharactersMode(input.charactersMode);
        _translator->setMark(input.copyMark);
        m_formatter.setSpecCharsPath(PRINTERSLIB_EXAMPLES "/symbols");
        m_formatter.setTemplate(input.lines.join('\n'));
    }

    void compare(const PrinterDocument &document)
    {
        QScopedPointer<StepByStep> steps;
        const QStringList stepLog =
            logOf([&] { steps.reset(new StepByStep(m_formatter, document)); });
        QStringList text;
        QCOMPARE(logOf([&] { text = m_formatter.toPlainText(document, m_input.width); }), stepLog);
        QCOMPARE(text, steps->plainText(m_input.width));
        QString html;
        QCOMPARE(logOf([&] { html = m_formatter.toHtml(document, m_input.rightAlign); }), stepLog);
        QCOMPARE(html, steps->html(m_input.rightAlign));
        TextPrinterDocument printed;
        QCOMPARE(logOf([&] { printed = m_formatter.toTextPrinterDocument(document); }), stepLog);
        QCOMPARE(shown(printed.blocks()), shown(steps->blocks()));
    }

private:
    const TemplateCase m_input;
    PrinterDocumentFormatter m_formatter;
};

}  // namespace

/// Generated templates with two documents each, by plans that are made at the first use, against
/// the operations for single steps. A short cut that is never taken proves nothing: the ways of all
/// lines are counted.
class TestPlanDifferential : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        TemplateLines::setPlanUse(PlanUse::AtOnce);
        _translator = &m_translator;
        QCoreApplication::installTranslator(&m_translator);
    }
    void cleanupTestCase() { IPrintDeviceSettings::setPrintDeviceSettings({}); }

    void plansPrintWhatTheStepsDo_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("templates") << static_cast<int>(Generator::Template);
        QTest::newRow("receipts") << static_cast<int>(Generator::Receipt);
    }

    void plansPrintWhatTheStepsDo()
    {
        QFETCH(const int, kind);
        const unsigned seed = qMax(1, qEnvironmentVariableIntValue("PLAN_SEED"));
        const unsigned first = qMax(0, qEnvironmentVariableIntValue("PLAN_FROM"));
        for (unsigned number = first; number < first + caseCount(); ++number) {
            const TemplateCase input = caseOf(seed, kind, number);
            Comparison comparison(input);
            for (const PrinterDocument &document :
                 {input.document, caseOf(seed + 1, kind, number).document}) {
                comparison.compare(document);
                if (QTest::currentTestFailed())
                    QFAIL(qPrintable(
                        QString("case %1:\n%2").arg(number).arg(input.lines.join('\n'))));
            }
        }
    }

    void bothWaysWereTaken()
    {
        const PlanTally &tally = PlanTally::instance();
        qInfo("documents %lld, restarts %lld, lines by plan %lld", tally.documents.load(),
              tally.restarts.load(), tally.lines[0].load());
        for (std::size_t reason = 1; reason < PlanTally::reasons; ++reason) {
            qInfo("reason %zu: %lld", reason, tally.lines[reason].load());
            QVERIFY(tally.lines[reason] > 0);
        }
        QVERIFY(tally.lines[0] > caseCount());
        QVERIFY(tally.restarts > 0);
    }

private:
    MarkTranslator m_translator;
};

QTEST_GUILESS_MAIN(TestPlanDifferential)
#include "tst_plan_differential.moc"
