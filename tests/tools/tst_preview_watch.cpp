#include <signal.h>
#include <sys/stat.h>

#include <QImage>
#include <QRegularExpression>
#include <QtTest>

#include "previewbench.h"
#include "receiptprogram.h"

using namespace previewbench;

namespace {

/// A run that goes on until it is told to end.
class Watcher
{
public:
    explicit Watcher(const QStringList &arguments) { m_process.start(RECEIPT_PROGRAM, arguments); }
    ~Watcher() { m_process.kill(), m_process.waitForFinished(); }

    bool says(const QByteArray &text)
    {
        return QTest::qWaitFor(
            [&] {
                m_errors += m_process.readAllStandardError();
                return m_errors.contains(text);
            },
            patience);
    }
    void forget() { m_errors.clear(); }

    /// Ends it as Ctrl+C does, not in the middle of a run, which that would kill, and gives its
    /// exit status.
    int end()
    {
        if (!QTest::qWaitFor([this] { return takesInterrupts(); }, patience))
            return -1;
        ::kill(static_cast<pid_t>(m_process.processId()), SIGINT);
        if (!m_process.waitForFinished(patience) || m_process.exitStatus() != QProcess::NormalExit)
            return -1;
        return m_process.exitCode();
    }

private:
    /// Whether the signal is kept for the event loop.
    bool takesInterrupts() const
    {
        QFile status(QString("/proc/%1/status").arg(m_process.processId()));
        if (!status.open(QIODevice::ReadOnly))
            return false;
        const QRegularExpression blocked("SigBlk:\\s*([0-9a-f]+)");
        const QString mask = blocked.match(QString::fromLatin1(status.readAll())).captured(1);
        return (mask.toULongLong(nullptr, 16) >> (SIGINT - 1) & 1U) != 0;
    }

    QProcess m_process;
    QByteArray m_errors;
};

}  // namespace

/// Drawing again whenever a file changes.
class TestPreviewWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void watchingDrawsAgainHoweverTheFileIsSaved()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.txt", "one");
        Watcher watcher({"preview", "--plain", text, "--output", folder.path("r.png"), "--watch"});
        QVERIFY(watcher.says("Watching " + text.toUtf8() + "; Ctrl+C ends.\n"));
        const auto heightBecomes = [&folder](int lines) {
            return QTest::qWaitFor(
                [&] { return QImage(folder.path("r.png")).height() == 74 + 24 * lines; }, patience);
        };
        QVERIFY(heightBecomes(1));
        folder.file("t.txt", "one\ntwo");  // written in place
        QVERIFY(heightBecomes(2));
        for (int lines = 3; lines < 6; ++lines) {  // replaced, as editors do, again and again
            folder.file("t.new", QByteArray("x\n").repeated(lines));
            QCOMPARE(::rename(qPrintable(folder.path("t.new")), qPrintable(text)), 0);
            QVERIFY(heightBecomes(lines));
        }
        QVERIFY(QFile::rename(text, folder.path("t.bak")));  // moved away and written anew
        QVERIFY(watcher.says("Waiting for " + text.toUtf8()));
        folder.file("t.txt", "x\nx\nx\nx\nx\nx\nx");
        QVERIFY(heightBecomes(7));
        QCOMPARE(watcher.end(), 0);
    }

    // Nobody ever writes into this pipe.
    void watchingEndsAlsoWhileADrawingNeverEnds()
    {
        const WorkFolder folder;
        const QString text = folder.path("r.txt");
        QCOMPARE(::mkfifo(qPrintable(text), 0600), 0);
        QProcess program;
        program.start(RECEIPT_PROGRAM,
                      {"preview", "--plain", text, "--output", folder.path("r.png"), "--watch"});
        QVERIFY(program.waitForStarted());
        QVERIFY(!program.waitForFinished(300));
        program.terminate();
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
    }

    void watchingOutlivesBadInput()
    {
        const WorkFolder folder;
        const QString data = folder.file("d.json", "{");
        Watcher watcher(
            {"preview", example("kiosk.cpt"), data, "--output", folder.path("r.png"), "--watch"});
        QVERIFY(watcher.says("d.json:1:"));
        folder.file("d.json", "{}");
        QVERIFY(QTest::qWaitFor([&] { return !QImage(folder.path("r.png")).isNull(); }, patience));
        watcher.forget();
        folder.file("d.json", "[");
        QVERIFY(watcher.says("d.json:1:"));
        QCOMPARE(watcher.end(), 1);
    }

    void watchingFollowsTheFileOfSymbols()
    {
        const WorkFolder folder;
        const WorkFolder symbols;
        const QString file = folder.file("t.cpt", "<SPECSYMBOLS=shop>\n<#1>");
        const QString data = folder.file("d.json", "{}");
        const QString picture = folder.path("r.png");
        Watcher watcher(
            {"preview", file, data, "--symbols", symbols.path(""), "--output", picture, "--watch"});
        QVERIFY(watcher.says("Watching " + file.toUtf8() + ", " + data.toUtf8() + ", " +
                             symbols.path("shop.ssi").toUtf8() + "; Ctrl+C ends.\n"));
        const auto drawn = [&picture] { return QImage(picture); };
        // A symbol without a drawing is a box.
        const QImage box = drawn();
        QVERIFY(!box.isNull());
        QVERIFY(QFile::copy(example("symbols/shop.ssi"), symbols.path("shop.ssi")));
        const auto isSymbol = [&](const QImage &image) { return !image.isNull() && image != box; };
        QVERIFY(QTest::qWaitFor([&] { return isSymbol(drawn()); }, patience));
        QVERIFY(QFile::remove(symbols.path("shop.ssi")));
        QVERIFY(QTest::qWaitFor([&] { return drawn() == box; }, patience));
        QCOMPARE(watcher.end(), 0);
    }

    // The first file whose name begins so is the picture. The model prints bands of 24 dots.
    void watchingFollowsTheSchema()
    {
        const WorkFolder folder;
        const QString schema = folder.file("s.json", "{\"required\": [\"entries\"]}");
        Watcher watcher({"preview", folder.file("t.cpt", "Total"), folder.file("d.json", "{}"),
                         "--data-schema", schema, "--output", folder.path("r.png"), "--watch"});
        QVERIFY(watcher.says("entries: is missing"));
        QVERIFY(watcher.says("/s.json; Ctrl+C ends.\n"));
        folder.file("s.json", "{}");
        QVERIFY(QTest::qWaitFor([&] { return !QImage(folder.path("r.png")).isNull(); }, patience));
        QCOMPARE(watcher.end(), 0);
    }

    void pictureIsNoSchema()
    {
        const WorkFolder folder;
        const QString schema = folder.file("s.png", "{}");
        const ReceiptRun run =
            runReceipt({"preview", folder.file("t.cpt", "Total"), folder.file("d.json", "{}"),
                        "--data-schema", schema, "--output", schema});
        QCOMPARE(run.status, 1);
        QCOMPARE(folder.content("s.png"), QByteArray("{}"));
    }

    void watchingFollowsPictures()
    {
        const WorkFolder folder;
        const QString text = folder.file("c.bbcode", "[img name=logo][/img]");
        Watcher watcher({"preview", "--bbcode", text, "--output", folder.path("r.png"), "--watch"});
        QVERIFY(watcher.says("/logo*; Ctrl+C ends.\n"));
        const auto save = [&folder](const QString &name, int height) {
            QImage picture(16, height, QImage::Format_Mono);
            picture.fill(0);
            picture.save(folder.path(name));
        };
        const auto heightBecomes = [&folder](int height) {
            return QTest::qWaitFor(
                [&] { return QImage(folder.path("r.png")).height() == 74 + height; }, patience);
        };
        save("logo_b.png", 48);
        QVERIFY(heightBecomes(48));
        save("logo_b.png", 72);
        QVERIFY(heightBecomes(72));
        save("logo_a.png", 96);
        QVERIFY(heightBecomes(96));
        QVERIFY(QFile::remove(folder.path("logo_a.png")));
        QVERIFY(heightBecomes(72));
        QCOMPARE(watcher.end(), 0);
    }
};

QTEST_GUILESS_MAIN(TestPreviewWatch)
#include "tst_preview_watch.moc"
