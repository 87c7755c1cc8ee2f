// What a printer obeys at once, wherever it stands in a stream.
#include <QtTest>

#include "streamreading.h"

using namespace streamreading;

class TestStreamReaderRealtime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void realTimeCommandsAreFoundInPayloads();
    void realTimeCommandsAreNotFoundAcrossPayloads();
    void realTimeCommandsAreFoundInTheIncomplete();
    void pulsesAreSwitchedByGsD();
    void powerOffIsOffUntilSwitchedOn();
    void initializeSwitchesBack();
    void resetSwitchesBack();
    void whatIsForTheNeighbourSwitchesNothing();
};

void TestStreamReaderRealtime::realTimeCommandsAreFoundInPayloads()
{
    const auto commands =
        commandsOf("'A' 1d763000 0800 0200 1004 01 100501 101401000100 0000 100409");
    QCOMPARE(commands.size(), 3);
    const QVector<StreamCommand::RealTime> &found = commands.at(1).realTime;
    QCOMPARE(found.size(), 3);
    QCOMPARE(found.at(0).row->mnemonic, "DLE EOT");
    QCOMPARE(found.at(0).offset, qint64(9));
    QCOMPARE(found.at(0).bytes.toHex(), QByteArray("100401"));
    QCOMPARE(found.at(1).row->mnemonic, "DLE ENQ");
    QCOMPARE(found.at(1).offset, qint64(12));
    QCOMPARE(found.at(2).row->mnemonic, "DLE DC4");
    QCOMPARE(found.at(2).bytes.toHex(), QByteArray("1014010001"));
    QVERIFY(!found.at(2).isSwitchedOff);
    QCOMPARE(commands.at(1).payload().size(), 16);
}

void TestStreamReaderRealtime::realTimeCommandsAreNotFoundAcrossPayloads()
{
    const auto commands = commandsOf("1d763000 0200 0100 1004 01");
    QCOMPARE(told(commands), QByteArray("GS v 0 00020001001004; unknown 01"));
    QVERIFY(commands.first().realTime.isEmpty());
}

void TestStreamReaderRealtime::realTimeCommandsAreFoundInTheIncomplete()
{
    const auto commands = commandsOf("1d763000 0200 0800 100402 00");
    QCOMPARE(told(commands), QByteArray("incomplete GS v 0 12/24"));
    QCOMPARE(commands.first().realTime.size(), 1);
}

void TestStreamReaderRealtime::pulsesAreSwitchedByGsD()
{
    const auto commands = commandsOf(
        "1014010101 1d284403001401 00 1014010101 1d763000 0500 0100 1014010101"
        "1d28440300140131 1014010101");
    QCOMPARE(commands.size(), 6);
    QVERIFY(!commands.at(0).isSwitchedOff);
    QVERIFY(commands.at(2).isSwitchedOff);
    QVERIFY(commands.at(3).realTime.first().isSwitchedOff);
    QVERIFY(!commands.at(5).isSwitchedOff);
}

void TestStreamReaderRealtime::powerOffIsOffUntilSwitchedOn()
{
    const auto commands = commandsOf("1014020108 1d2844050014013002 31 1014020108 1014010001");
    QCOMPARE(commands.size(), 4);
    QVERIFY(commands.at(0).isSwitchedOff);
    QVERIFY(!commands.at(2).isSwitchedOff);
    QVERIFY(commands.at(3).isSwitchedOff);
}

void TestStreamReaderRealtime::initializeSwitchesBack()
{
    const auto commands = commandsOf("1d28440300140100 1b40 1014010001");
    QVERIFY(!commands.last().isSwitchedOff);
}

void TestStreamReaderRealtime::resetSwitchesBack()
{
    const auto commands =
        commandsOf("1d28440300140100 1cc01810141a 1014010001", profileOf("CUSTOM_VKP_80"));
    QVERIFY(!commands.last().isSwitchedOff);
    QCOMPARE(told("1b2a7241 1b3f0a00 'bA'", "TSP-TUP"),
             QByteArray("ESC * r A; ESC ? LF NUL; 'bA'"));
}

// A display behind the printer is initialized by the same command.
void TestStreamReaderRealtime::whatIsForTheNeighbourSwitchesNothing()
{
    const auto commands = commandsOf("1d28440300140100 1b3d02 1b40 1b3d01 1014010001");
    QVERIFY(commands.last().isSwitchedOff);
}

QTEST_APPLESS_MAIN(TestStreamReaderRealtime)
#include "tst_streamreader_realtime.moc"
