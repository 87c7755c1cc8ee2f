#include <QProcess>
#include <QtTest>

#include "../../examples/client/shownlog.h"
#include "terminaltext.h"

namespace {

// What Unicode itself says of a character, beside our table of ranges.
bool steersByUnicode(QChar character)
{
    switch (character.direction()) {
        case QChar::DirLRE:
        case QChar::DirLRO:
        case QChar::DirRLE:
        case QChar::DirRLO:
        case QChar::DirPDF:
        case QChar::DirLRI:
        case QChar::DirRLI:
        case QChar::DirFSI:
        case QChar::DirPDI:
            return true;
        default:
            break;
    }
    constexpr ushort marks[] = {0x061C, 0x200E, 0x200F};
    return character.category() == QChar::Other_Control ||
           character.category() == QChar::Separator_Line ||
           character.category() == QChar::Separator_Paragraph ||
           std::find(std::begin(marks), std::end(marks), character.unicode()) != std::end(marks);
}

}  // namespace

// How the programs show what a terminal or a reader of a log would be led astray by.
class TestTerminalText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void controlsAreShown_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << QString("") << QString("");
        QTest::newRow("plain") << QString("a b~") << QString("a b~");
        QTest::newRow("letters of all scripts")
            << QString::fromUtf8("ß КОПИЯ 写し שלום \xF0\x9F\xA7\xBE")
            << QString::fromUtf8("ß КОПИЯ 写し שלום \xF0\x9F\xA7\xBE");
        QTest::newRow("line feed") << QString("a\nb") << QString("a\\nb");
        QTest::newRow("carriage return") << QString("a\rb") << QString("a\\rb");
        QTest::newRow("tabulator") << QString("a\tb") << QString("a\\tb");
        QTest::newRow("escape") << QString("\x1B[2J") << QString("\\u001b[2J");
        QTest::newRow("nothing at all") << QString(QChar(0)) << QString("\\u0000");
        QTest::newRow("delete") << QString("a\x7F") << QString("a\\u007f");
        QTest::newRow("one that begins a sequence by itself")
            << QString(QChar(0x9B)) + "31m" << QString("\\u009b31m");
        QTest::newRow("last control") << QString(QChar(0x9F)) << QString("\\u009f");
        QTest::newRow("blank that doesn't break") << QString(QChar(0xA0)) << QString(QChar(0xA0));
        QTest::newRow("override of the direction")
            << QString("0.01") + QChar(0x202E) << QString("0.01\\u202e");
        QTest::newRow("separator of lines") << QString(QChar(0x2028)) << QString("\\u2028");
        QTest::newRow("separator of paragraphs") << QString(QChar(0x2029)) << QString("\\u2029");
        QTest::newRow("backslash stays") << QString("C:\\new") << QString("C:\\new");
        QTest::newRow("beyond the first plane, beside a control")
            << QString::fromUtf8("\xF0\x9F\xA7\xBE\x1B")
            << QString::fromUtf8("\xF0\x9F\xA7\xBE\\u001b");
    }
    void controlsAreShown()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(terminaltext::shown(text), expected);
    }

    void exactlyWhatUnicodeCallsControlsAndMarksIsShown()
    {
        for (int code = 0; code <= 0xFFFF; ++code) {
            const QChar character(code);
            const bool changes = terminaltext::shown(QString(character)) != QString(character);
            QVERIFY2(changes == steersByUnicode(character), qPrintable(QString::number(code, 16)));
        }
    }

    void whatIsShownIsNotShownAgain()
    {
        QString all;
        for (int code = 0; code <= 0xFFFF; ++code)
            all += QChar(code);
        const QString shown = terminaltext::shown(all);
        QCOMPARE(terminaltext::shown(shown), shown);
    }

    void theExampleForClientsShowsTheSame()
    {
        for (int code = 0; code <= 0xFFFF; ++code) {
            const QString text = QString("a") + QChar(code) + "b";
            QCOMPARE(shownText(text), terminaltext::shown(text));
        }
    }
};

QTEST_APPLESS_MAIN(TestTerminalText)
#include "tst_terminaltext.moc"
