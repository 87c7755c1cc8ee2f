// Where faults are looked for, in the builds "debug", "asan" and "tsan", a broken promise to Qt or
// to the standard library ends the program instead of passing unseen.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QVarLengthArray>
#include <QtTest>
#include <csignal>
#include <vector>

namespace {

void appendsNullText()
{
    QVarLengthArray<QChar> text;
    text.append(nullptr, 0);
}

void looksAtTheFirstCharacterOfNone()
{
    const QString none;
    (void)none.at(0);
}

void looksAtTheFirstElementOfNone()
{
    const std::vector<int> none;
    (void)none[0];
}

/// Ends the process, by a signal if the action breaks a promise that is watched.
[[noreturn]] void runInChild(void (*action)())
{
    const rlimit noCore = {0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    std::signal(SIGABRT, SIG_DFL);
    qInstallMessageHandler(nullptr);
    ::close(STDERR_FILENO);
    action();
    ::_exit(0);
}

}  // namespace

using Action = void (*)();
Q_DECLARE_METATYPE(Action)

class TestAssertions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenPromiseEndsTheProgram_data()
    {
        QTest::addColumn<Action>("action");
        QTest::newRow("Qt's containers") << &appendsNullText;
        QTest::newRow("Qt's texts") << &looksAtTheFirstCharacterOfNone;
        QTest::newRow("standard library") << &looksAtTheFirstElementOfNone;
    }

    void brokenPromiseEndsTheProgram()
    {
        QFETCH(Action, action);
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0)
            runInChild(action);
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY2(WIFSIGNALED(status), "it went on");
        QCOMPARE(WTERMSIG(status), SIGABRT);
    }
};

QTEST_APPLESS_MAIN(TestAssertions)
#include "tst_assertions.moc"
