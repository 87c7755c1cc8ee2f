// Jobs of the models, printed by the played printer: what is told is true of its paper.
#include <QtTest>
#include <numeric>

#include "jobparts.h"
#include "printerdevice.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/documentblock.h"
#include "printerdocs/eprinterticketaction.h"
#include "printerdocs/monochromeimage.h"
#include "printerfault.h"

using namespace jobparts;

#define TRY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

namespace {

/// The line to a played printer, whose clock goes on a millisecond with each turn.
class PlayedLine : public Transport
{
public:
    PlayedLine(const PrinterAddress &printer, PrinterDevice &device)
        : m_address(printer), m_device(device)
    {
        m_timer.setInterval(0);
        connect(&m_timer, &QTimer::timeout, this, &PlayedLine::turn);
    }
    std::function<void(qint64)> onTaken;

    PrinterAddress address() const override { return m_address; }
    State state() const override { return m_state; }
    TransportError error() const override { return {}; }
    void open() override
    {
        m_state = State::Opening;
        m_timer.start();
    }
    void close() override
    {
        m_state = State::Closed;
        m_timer.stop();
    }
    bool write(const QByteArray &bytes) override
    {
        m_queue += bytes;
        return true;
    }
    void discard() override { m_queue.clear(); }
    qint64 bytesToWrite() const override { return m_queue.size(); }
    qint64 bytesWritten() const override { return m_taken; }

private:
    void turn()
    {
        if (m_state == State::Opening) {
            m_state = State::Open;
            Q_EMIT opened();
            return;
        }
        constexpr int perTurn = 64;
        constexpr int turn = 1000;  // microseconds
        m_device.advanceTo(m_device.now() + turn);
        const int count = std::min({perTurn, m_queue.size(), m_device.room()});
        m_device.take(m_queue.left(count));
        m_queue.remove(0, count);
        m_taken += count;
        if (count > 0 && onTaken)
            onTaken(m_taken);
        const QByteArray answers = m_device.takeAnswers();
        const QPointer<PlayedLine> self(this);
        if (!answers.isEmpty())
            Q_EMIT received(answers);
        if (self && m_state == State::Open && count > 0)
            Q_EMIT written(m_taken);
    }

    PrinterAddress m_address;
    PrinterDevice &m_device;
    State m_state = State::Closed;
    QByteArray m_queue;
    qint64 m_taken = 0;
    QTimer m_timer;
};

constexpr int lineCount = 40;

QString lineOf(int number)
{
    return QString("line %1 of it").arg(number);
}

TextPrinterDocument linesOf(int first, int last)
{
    QStringList lines;
    for (int i = first; i <= last; ++i)
        lines.append(lineOf(i));
    BbCodeParser parser(nullptr);
    parser.parseText(lines.join('\n'));
    return parser.document();
}

/// A black one, of more bytes than all the lines.
DocumentBlock picture()
{
    constexpr int width = 256;
    constexpr int height = 40;
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setImg(MonochromeImage(width, height, QByteArray(width / 8 * height, '\xFF')));
    return block;
}

/// Lines with a picture in their middle.
EncodedDocument receiptOf(const QString &model)
{
    const auto target = PrintTarget::forModel(model, 0);
    TextPrinterDocument document = linesOf(1, lineCount / 2);
    document.appendBlock(picture());
    const QList<DocumentBlock> rest = linesOf(lineCount / 2 + 1, lineCount).blocks();
    for (const DocumentBlock &block : rest)
        document.appendBlock(block);
    document.setDoInit(true);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
    return DocumentEncoder(*target, {}).encode(document);
}

/// Black dots of pictures.
int blackDots(const Paper &paper)
{
    int dots = 0;
    for (const Paper::Picture &one : paper.pictures) {
        const QSize pixel = one.dotsPerPixel;
        for (const char byte : one.rows)
            dots += int(qPopulationCount(quint8(byte))) * pixel.width() * pixel.height();
    }
    return dots;
}

int blackDots(const QVector<Paper> &papers)
{
    return std::accumulate(papers.begin(), papers.end(), 0,
                           [](int dots, const Paper &paper) { return dots + blackDots(paper); });
}

struct Played
{
    explicit Played(const QString &model, double speed = 0)
        : profile(PrinterProfile::forModel(model).value()),
          device(profile, optionsOf(speed)),
          document(receiptOf(model)),
          dots(blackDots(StreamInterpreter::papersOf(document.bytes, profile)))
    {
        options = soon();
        options.statusMilliseconds = 500;
        options.confirmMilliseconds = 500;
        options.transport.writeMilliseconds = 500;
    }
    static PrinterDevice::Options optionsOf(double speed)
    {
        PrinterDevice::Options played;
        played.millimetresPerSecond = speed;
        return played;
    }
    void befall(const char *text)
    {
        QString error;
        const auto fault = printerFault(text, &error);
        QVERIFY2(fault, qPrintable(error));
        device.apply(*fault);
    }
    /// Where each question has its answer, however slow the machine is.
    void isToAnswer()
    {
        constexpr int longTime = 60000;
        options.statusMilliseconds = longTime;
        options.confirmMilliseconds = longTime;
        options.transport.writeMilliseconds = longTime;
    }
    /// How often each part of the receipt stands on paper; -1 if that differs.
    int timesOn(const QVector<Paper> &papers) const
    {
        QString text;
        for (const Paper &paper : papers)
            text += paper.toText();
        const int times = text.count(lineOf(1));
        for (int i = 2; i <= lineCount; ++i) {
            if (text.count(lineOf(i)) != times)
                return -1;
        }
        return blackDots(papers) == times * dots ? times : -1;
    }
    int timesOnPaper()
    {
        QVector<Paper> papers = device.takePapers();
        papers += device.finish();
        return timesOn(papers);
    }
    std::unique_ptr<PrintJob> job()
    {
        struct Opened : PrintJob
        {
            using PrintJob::PrintJob;
            Opened(const EncodedDocument &d, const PrinterProfile &p, std::unique_ptr<Transport> t,
                   std::unique_ptr<DeviceLock> l, const PrintJobOptions &o)
                : PrintJob(d, p, std::move(t), std::move(l), o, 1)
            {}
        };
        auto played = std::make_unique<PlayedLine>(address(), device);
        line = played.get();
        return std::make_unique<Opened>(document, profile, std::move(played),
                                        std::make_unique<Lock>(address(), folder.path()), options);
    }
    static PrintJobResult run(PrintJob &job)
    {
        job.start();
        [&job] { TRY(job.isFinished()); }();
        return job.result();
    }

    PrinterProfile profile;
    PrinterDevice device;
    EncodedDocument document;
    int dots;  ///< black ones of the receipt's picture
    PrintJobOptions options;
    QTemporaryDir folder;
    PlayedLine *line = nullptr;
};

/// A model of each.
void addDialects()
{
    QTest::addColumn<QString>("model");
    for (const char *model : {"GENERAL_EPSON_PROTOCOL", "TSP-TUP", "SWECOIN_TM_20XX"})
        QTest::newRow(model) << QString(model);
}

}  // namespace

class TestPlayedJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachModelConfirmsItsReceipt_data();
    void eachModelConfirmsItsReceipt();
    void whatIsToldIsTrueWithPaperOutAtEachPlace_data();
    void whatIsToldIsTrueWithPaperOutAtEachPlace();
    void whatIsToldIsTrueWithPowerOffAtEachPlace_data();
    void whatIsToldIsTrueWithPowerOffAtEachPlace();
    void aReceiptIsWholeWhenPaperIsWaitedFor_data();
    void aReceiptIsWholeWhenPaperIsWaitedFor();
    void aReceiptBehindOneThatWasCutOffIsWhole_data();
    void aReceiptBehindOneThatWasCutOffIsWhole();
};

void TestPlayedJob::eachModelConfirmsItsReceipt_data()
{
    QTest::addColumn<QString>("model");
    const QStringList ids = PrinterProfile::modelIds();
    for (const QString &id : ids)
        QTest::newRow(qPrintable(id)) << id;
}

void TestPlayedJob::eachModelConfirmsItsReceipt()
{
    QFETCH(QString, model);
    Played played(model);
    played.isToAnswer();
    const auto job = played.job();
    const PrintJobResult result = Played::run(*job);
    const Confirmation confirmation = played.profile.confirmation();
    QVERIFY2(result.outcome ==
                 (confirmation == Confirmation::Processed ? Outcome::Processed : Outcome::Printed),
             qPrintable(result.text));
    QVERIFY(played.dots > 0);
    QCOMPARE(played.timesOnPaper(), 1);
}

void TestPlayedJob::whatIsToldIsTrueWithPaperOutAtEachPlace_data()
{
    addDialects();
}

void TestPlayedJob::whatIsToldIsTrueWithPaperOutAtEachPlace()
{
    QFETCH(QString, model);
    int unsure = 0;
    int sure = 0;
    const int size = receiptOf(model).bytes.size();
    const int behindAll = 2 * size;
    QVector<int> places{behindAll};
    for (int at = 1; at < size + 40; at += 97)
        places.append(at);
    for (const int at : qAsConst(places)) {
        Played played(model, 100);
        if (at == behindAll)
            played.isToAnswer();
        const auto job = played.job();
        bool isOut = false;
        played.line->onTaken = [&](qint64 taken) {
            if (taken >= at && !isOut) {
                isOut = true;
                played.befall("paper out");
            }
        };
        const PrintJobResult result = Played::run(*job);
        const int times = played.timesOnPaper();
        if (result.outcome >= Outcome::Processed)
            QVERIFY2(times == 1, QByteArray::number(at));
        if (result.outcome == Outcome::NotBegun)
            QCOMPARE(times, 0);
        if (at == behindAll)
            QVERIFY(!isOut);
        (result.outcome < Outcome::Processed ? unsure : sure)++;
    }
    QVERIFY(unsure > 0);
    QVERIFY(sure > 0);
}

/// Off for a while, in which all that is left of the line gets lost; or only for so long that it
/// loses what it holds.
void TestPlayedJob::whatIsToldIsTrueWithPowerOffAtEachPlace_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<bool>("isBackAtOnce");
    for (const char *model :
         {"CITIZEN_CTS_2000", "CITIZEN_PPU_231", "TSP-TUP", "SWECOIN_TM_20XX"}) {
        QTest::addRow("%s, for a while", model) << QString(model) << false;
        QTest::addRow("%s, for a moment", model) << QString(model) << true;
    }
}

void TestPlayedJob::whatIsToldIsTrueWithPowerOffAtEachPlace()
{
    QFETCH(QString, model);
    QFETCH(bool, isBackAtOnce);
    const int size = receiptOf(model).bytes.size();
    for (int at = 1; at < size + 40; at += 281) {
        Played played(model, 100);
        played.options.confirmMilliseconds = 300;
        played.options.statusMilliseconds = 100;
        const auto job = played.job();
        bool wasOff = false;
        played.line->onTaken = [&](qint64 taken) {
            if (taken < at || wasOff)
                return;
            wasOff = true;
            played.befall("power off");
            if (isBackAtOnce)
                played.befall("power on");
            else
                QTimer::singleShot(3, played.line, [&played] { played.befall("power on"); });
        };
        const PrintJobResult result = Played::run(*job);
        const int times = played.timesOnPaper();
        if (result.outcome >= Outcome::Processed)
            QVERIFY2(times == 1, QByteArray::number(at));
        if (result.outcome == Outcome::NotBegun)
            QCOMPARE(times, 0);
    }
}

void TestPlayedJob::aReceiptIsWholeWhenPaperIsWaitedFor_data()
{
    addDialects();
}

void TestPlayedJob::aReceiptIsWholeWhenPaperIsWaitedFor()
{
    QFETCH(QString, model);
    Played played(model, 100);
    played.isToAnswer();
    played.options.waitMilliseconds = PrintJobOptions::forEver;
    const auto job = played.job();
    bool isOut = false;
    played.line->onTaken = [&](qint64 taken) {
        if (taken < 300 || isOut)
            return;
        isOut = true;
        played.befall("paper out");
        QTimer::singleShot(50, played.line, [&played] { played.befall("paper back"); });
    };
    const PrintJobResult result = Played::run(*job);
    QVERIFY2(result.outcome >= Outcome::Processed, qPrintable(result.text));
    QCOMPARE(played.timesOnPaper(), 1);
}

void TestPlayedJob::aReceiptBehindOneThatWasCutOffIsWhole_data()
{
    addDialects();
}

void TestPlayedJob::aReceiptBehindOneThatWasCutOffIsWhole()
{
    QFETCH(QString, model);
    const int size = receiptOf(model).bytes.size();
    for (int at = 20; at < size - 64; at += 89) {
        Played played(model);
        played.isToAnswer();
        auto job = played.job();
        bool isGone = false;
        played.line->onTaken = [&](qint64 taken) {
            if (taken >= at && !isGone) {
                isGone = true;
                QTimer::singleShot(0, played.line, [&job] { job.reset(); });
            }
        };
        job->start();
        TRY(job == nullptr);
        const auto next = played.job();
        const PrintJobResult result = Played::run(*next);
        const QByteArray context = "byte " + QByteArray::number(at) + ": " + result.text.toUtf8();
        QVERIFY2(result.outcome >= Outcome::Processed, context);
        const QVector<Paper> papers = played.device.takePapers();
        QVERIFY2(!papers.isEmpty(), context);
        QVERIFY2(played.timesOn({papers.last()}) == 1, context);
    }
}

QTEST_GUILESS_MAIN(TestPlayedJob)
#include "tst_playedjob.moc"
