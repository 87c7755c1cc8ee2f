// What the programs refuse before they do anything: rights that aren't their user's, and names that
// aren't text.
#include <sys/stat.h>
#include <unistd.h>

#include <QtTest>

#include "programstart.h"
#include "receiptprogram.h"

namespace {

constexpr uid_t nobody = 65534;

/// Runs a program through the shell, whose text has it as "$0" and the arguments as "$@".
ReceiptRun runByShell(const QString &script, const QString &program,
                      const QStringList &arguments = QStringList())
{
    QProcess process;
    process.start("/bin/sh", QStringList{"-c", script, program} + arguments);
    return finished(process);
}

/// Starts programs as the kernel does those that belong to somebody else and are setuid or setgid:
/// with rights that aren't those of the user who called them.
class ForeignRights : public QProcess
{
public:
    explicit ForeignRights(uint bit) : m_bit(bit) {}

protected:
    void setupChildProcess() override
    {
        const int status = m_bit == S_ISUID ? ::setresuid(nobody, 0, 0) : ::setresgid(nobody, 0, 0);
        if (status != 0)
            ::_exit(EXIT_FAILURE);
    }

private:
    const uint m_bit;
};

/// The loader that this process was started with. With foreign rights it goes by no path that is
/// relative to a program, as those of a build tree are, so it is told the folder of the libraries.
QString loader()
{
    QFile maps("/proc/self/maps");
    if (!maps.open(QIODevice::ReadOnly))
        return QString();
    const QRegularExpression path("^.* (/\\S*/ld-linux\\S*)$", QRegularExpression::MultilineOption);
    return path.match(QString::fromLocal8Bit(maps.readAll())).captured(1);
}

}  // namespace

class TestProgramStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rightsOfOthersAreRefused_data()
    {
        QTest::addColumn<uint>("effectiveUser");
        QTest::addColumn<uint>("effectiveGroup");
        QTest::addColumn<QString>("refusal");
        const QString setuid = "this program must not run setuid, with the rights of another user";
        const QString setgid = "this program must not run setgid, with the rights of another group";
        QTest::newRow("own") << 1000u << 100u << QString();
        QTest::newRow("root's") << 0u << 100u << setuid;
        QTest::newRow("another user's") << 1001u << 100u << setuid;
        QTest::newRow("another group's") << 1000u << 101u << setgid;
        QTest::newRow("both") << 0u << 0u << setuid;
    }

    void rightsOfOthersAreRefused()
    {
        QFETCH(const uint, effectiveUser);
        QFETCH(const uint, effectiveGroup);
        QFETCH(const QString, refusal);
        QCOMPARE(QString(programstart::refusalOf({1000, effectiveUser, 100, effectiveGroup})),
                 refusal);
    }

    void programsWithForeignRightsRefuseInWords_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<uint>("bit");
        QTest::addColumn<QString>("refusal");
        for (const QString program : {RECEIPT_PROGRAM, VIRTUAL_PRINTER_PROGRAM}) {
            const QString name = QFileInfo(program).fileName();
            QTest::addRow("setuid %s", qPrintable(name))
                << program << uint(S_ISUID)
                << name + ": this program must not run setuid, with the rights of another user\n";
            QTest::addRow("setgid %s", qPrintable(name))
                << program << uint(S_ISGID)
                << name + ": this program must not run setgid, with the rights of another group\n";
        }
    }

    void programsWithForeignRightsRefuseInWords()
    {
        QFETCH(const QString, program);
        QFETCH(const uint, bit);
        QFETCH(const QString, refusal);
        if (::geteuid() != 0)
            QSKIP("needs root");
        const QString libraries = QFileInfo(program).path() + "/../lib";
        ForeignRights process(bit);
        process.start(loader(), {"--library-path", libraries, program, "--help"});
        const ReceiptRun run = finished(process);
        QCOMPARE(run.errors, refusal);
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void namesThatAreNoTextAreRefused_data()
    {
        QTest::addColumn<QString>("bytes");  // as printf writes them
        QTest::addColumn<QString>("shown");
        QTest::newRow("byte that begins nothing") << "a\\377"
                                                  << "a\\xff";
        QTest::newRow("another one") << "a\\376"
                                     << "a\\xfe";
        QTest::newRow("cut-off letter") << "\\320"
                                        << "\\xd0";
        QTest::newRow("half of a pair") << "\\355\\240\\200"
                                        << "\\xed\\xa0\\x80";
        QTest::newRow("longer than it needs") << "\\300\\257"
                                              << "\\xc0\\xaf";
        QTest::newRow("with an escape in it") << "\\033[1m\\377"
                                              << "\\x1b[1m\\xff";
    }

    void namesThatAreNoTextAreRefused()
    {
        QFETCH(const QString, bytes);
        QFETCH(const QString, shown);
        const WorkFolder folder;
        const QString refusal =
            "the argument \"" + shown + "\" isn't UTF-8, so it can't name a file\n";
        const QString script =
            "cd '" + folder.path(".") + "' && exec \"$0\" \"$@\" \"$(printf '" + bytes + "')\"";
        const ReceiptRun run =
            runByShell(script, RECEIPT_PROGRAM,
                       {"render", example("cafe.cpt"), example("cafe.json"), "--output"});
        QCOMPARE(run.errors, "receipt: " + refusal);
        QCOMPARE(run.status, 2);
        QVERIFY(QDir(folder.path(".")).isEmpty());
        const ReceiptRun printer =
            runByShell(script, VIRTUAL_PRINTER_PROGRAM, {"--model", "CUSTOM_VKP_80", "--link"});
        QCOMPARE(printer.errors, "virtual-printer: " + refusal);
        QCOMPARE(printer.status, 2);
        QVERIFY(QDir(folder.path(".")).isEmpty());
    }

    void namesOfAllLettersAreTaken_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("locale");
        for (const char *locale : {"C.UTF-8", "C", "POSIX"}) {
            QTest::addRow("Cyrillic, %s", locale) << QString::fromUtf8("чек") << locale;
            QTest::addRow("beyond 16 bits, %s", locale) << QString::fromUtf8("🧾") << locale;
            QTest::addRow("replacement, %s", locale) << QString(QChar(0xFFFD)) << locale;
        }
    }

    void namesOfAllLettersAreTaken()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, locale);
        const WorkFolder folder;
        const ReceiptRun run = runByShell(
            "LC_ALL=" + locale + " exec \"$0\" \"$@\"", RECEIPT_PROGRAM,
            {"render", example("cafe.cpt"), example("cafe.json"), "--output", folder.path(name)});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(QFile::exists(folder.path(name)));
    }

    void closedStandardStreamsSpoilNoFile_data()
    {
        QTest::addColumn<QString>("closings");
        QTest::newRow("input") << "<&-";
        QTest::newRow("output") << ">&-";
        QTest::newRow("errors") << "2>&-";
        QTest::newRow("input and output") << "<&- >&-";
        QTest::newRow("input and errors") << "<&- 2>&-";
        QTest::newRow("output and errors") << ">&- 2>&-";
        QTest::newRow("all") << "<&- >&- 2>&-";
    }

    void closedStandardStreamsSpoilNoFile()
    {
        QFETCH(const QString, closings);
        const WorkFolder folder;
        const auto save = [&folder](const QString &name) {
            return QStringList{
                "document",          "save", folder.path(name), "-v", "--from", example("cafe.cpt"),
                example("cafe.json")};
        };
        QCOMPARE(runReceipt(save("ordinary")).status, 0);
        const ReceiptRun saved =
            runByShell("exec \"$0\" \"$@\" " + closings, RECEIPT_PROGRAM, save("saved"));
        QCOMPARE(saved.status, 0);
        QCOMPARE(runReceipt({"document", "check", folder.path("saved")}).status, 0);
        QCOMPARE(folder.content("saved"), folder.content("ordinary"));
        QCOMPARE(folder.content("saved.bak"), folder.content("ordinary"));
    }

    void closedStandardOutputIsAFailureWhereItIsNeeded()
    {
        const ReceiptRun run = runByShell("exec \"$0\" eval 1 >&-", RECEIPT_PROGRAM);
        QCOMPARE(run.errors, QString("receipt: standard output: Bad file descriptor\n"));
        QCOMPARE(run.status, 1);
    }
};

QTEST_GUILESS_MAIN(TestProgramStart)
#include "tst_programstart.moc"
