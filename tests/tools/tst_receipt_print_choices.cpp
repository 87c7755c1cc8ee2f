// What decides how the tool prints a receipt: options, settings, a file of models, the document.
#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "receiptprogram.h"

namespace {

const QString usualModel = "GENERAL_EPSON_PROTOCOL";

}  // namespace

class TestReceiptPrintChoices : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    ReceiptRun dryRun(const QStringList &arguments) const
    {
        return runReceipt(QStringList("print") + arguments + QStringList("--dry-run"));
    }

    /// What is printed, read back.
    QString printed(const QStringList &arguments, const QString &model) const
    {
        const QString file = m_folder.path("printed.bin");
        const ReceiptRun run =
            runReceipt(QStringList("print") + arguments + QStringList{"--to", "file:" + file});
        return run.status == 0 ? runReceipt({"decode", file, "--model", model}).output : run.errors;
    }

    QStringList plain(const QString &text) const
    {
        return {"--plain", m_folder.file("text.txt", text.toUtf8())};
    }

    /// A saved document of one line, with other members of its map.
    QString document(const QByteArray &members) const
    {
        const QByteArray json =
            "{\"blocks\":[{\"align\":0,\"fmt\":[\"AA==\"],\"fnt\":[\"AA==\"],\"ls\":[0],"
            "\"txt\":[\"x\"],\"type\":0}],\"init\":true,\"loop\":0," +
            members + "}";
        m_folder.file(
            "saved.sha1",
            QCryptographicHash::hash(json, QCryptographicHash::Sha1).toHex() + "  saved\n");
        return m_folder.file("saved", json);
    }

    /// Settings of a VKP-80, of which one of its own group or of all printers' is as told.
    QString settings(const char *key, int value, const char *group = "PRINTER") const
    {
        QJsonArray items;
        const auto add = [&items](const char *of, const char *name, const QJsonValue &what) {
            items.append(QJsonObject{{"group", of}, {"key", name}, {"value", what}});
        };
        add("PRINTER", "printerType", 1);
        add("PRINTER", "printerName", "CUSTOM_VKP_80");
        add(group, key, value);
        return m_folder.file("settings.json", QJsonDocument(items).toJson());
    }

    QByteArray bytesOf(const QStringList &arguments) const
    {
        runReceipt(QStringList("print") + arguments +
                   QStringList{"--to", "file:" + m_folder.path("bytes.bin")});
        return m_folder.content("bytes.bin");
    }

private Q_SLOTS:
    // Lines of 51, 36, 36 and 28.
    void fontIsTheOneThatIsTold_data()
    {
        QTest::addColumn<int>("setting");
        QTest::addColumn<int>("option");
        QTest::addColumn<int>("line");
        QTest::newRow("none") << -1 << -1 << 51;
        QTest::newRow("option") << -1 << 3 << 28;
        QTest::newRow("setting, which counts from 1") << 1 << -1 << 51;
        QTest::newRow("third by the setting") << 3 << -1 << 36;
        QTest::newRow("last by the setting") << 4 << -1 << 28;
        QTest::newRow("option over the setting") << 4 << 1 << 36;
        QTest::newRow("first over the setting") << 4 << 0 << 51;
        QTest::newRow("setting below the first") << 0 << -1 << 51;
        QTest::newRow("setting beyond the last") << 9 << -1 << 28;
    }
    void fontIsTheOneThatIsTold()
    {
        QFETCH(int, setting);
        QFETCH(int, option);
        QFETCH(int, line);
        QStringList call = plain(QString(60, 'w') + '\n');
        call += setting < 0 ? QStringList{"--model", "CUSTOM_VKP_80"}
                            : QStringList{"--settings", settings("baseFiscFont", setting)};
        if (option >= 0)
            call += QStringList{"--font", QString::number(option)};
        const QString text = printed(call, "CUSTOM_VKP_80");
        QVERIFY2(text.startsWith(QString(line, 'w') + '\n'), qPrintable(text));
    }

    void codePageIsThatOfTheSettingUnlessItIsTold()
    {
        const QStringList call =
            plain("a\n") + QStringList{"--settings", settings("cpage", 19, "CUSTOM_VKP_80")};
        QVERIFY(bytesOf(call).contains("\x1Bt\x13"));
        const QByteArray told = bytesOf(call + QStringList{"--code-page", "cp437"});
        QVERIFY(told.contains(QByteArray("\x1Bt\0", 3)));
        QVERIFY(!told.contains("\x1Bt\x13"));
    }

    void textIsDotsIfTheSettingSaysSo()
    {
        const QStringList call = plain("word\n") + QStringList("--settings");
        QVERIFY(bytesOf(call + QStringList(settings("printAsImage", 0, "CUSTOM_VKP_80")))
                    .contains("word"));
        const QByteArray dots =
            bytesOf(call + QStringList(settings("printAsImage", 1, "CUSTOM_VKP_80")));
        QVERIFY(!dots.isEmpty() && !dots.contains("word"));
    }

    void emptyLinesAreThoseOfTheSettingUnlessTheyAreTold()
    {
        const QStringList call =
            plain("a\n") + QStringList{"--settings", settings("emptyStringsAtEnd", 30)};
        const QByteArray set = bytesOf(call);
        QCOMPARE(bytesOf(call + QStringList{"--empty-lines", "30"}), set);
        const QByteArray none = bytesOf(call + QStringList{"--empty-lines", "0"});
        QVERIFY(none.count("\x1BJ") < set.count("\x1BJ"));
        // A shop that sets none gets five.
        const QStringList usual =
            plain("a\n") + QStringList{"--settings", settings("spacesBeforeString", 0)};
        QCOMPARE(bytesOf(usual), bytesOf(usual + QStringList{"--empty-lines", "5"}));
    }

    void fileMayOverrideOneFieldOfAModel()
    {
        const QString models =
            m_folder.file("models.json", R"([{"id": "GENERAL_EPSON_PROTOCOL", "headDots": 240}])");
        const QStringList call =
            plain(QString(32, 'w') + '\n') + QStringList{"--model", usualModel};
        const QString usual = printed(call, usualModel);
        QVERIFY2(usual.startsWith(QString(32, 'w') + '\n'), qPrintable(usual));
        const QString changed = printed(call + QStringList{"--models", models}, usualModel);
        QVERIFY2(changed.startsWith(QString(20, 'w') + '\n'), qPrintable(changed));
    }

    void pictureIsRefusedWhereTheModelPrintsNone()
    {
        const QString models =
            m_folder.file("models.json", R"([{"id": "CUSTOM_VKP_80", "rasterCommand": "None"}])");
        QVERIFY(QFile::copy(example("images/logo.png"), m_folder.path("logo.png")));
        const QStringList call{"--bbcode", m_folder.file("ad.bb", "a[img name=logo][/img]"),
                               "--model", "CUSTOM_VKP_80"};
        QCOMPARE(dryRun(call + QStringList("--strict")).status, 0);
        const QStringList without = call + QStringList{"--models", models};
        const ReceiptRun told = dryRun(without);
        QCOMPARE(told.status, 0);
        QVERIFY2(told.errors.contains("Picture: The model prints none"), qPrintable(told.errors));
        QCOMPARE(dryRun(without + QStringList("--strict")).status, 1);
        const ReceiptRun dots =
            dryRun(plain("a\n") + QStringList{"--model", "CUSTOM_VKP_80", "--models", models,
                                              "--as-picture", "--strict"});
        QCOMPARE(dots.status, 1);
        QVERIFY2(dots.errors.contains("the model prints no text as dots"), qPrintable(dots.errors));
    }

    // The text is all there, on more lines.
    void documentForLongerLinesIsPrintedEvenStrictly()
    {
        const ReceiptRun run = dryRun({"--document", document(R"("cta":1,"pta":0,"spl":69)"),
                                       "--model", "CITIZEN_CBM_1000", "--strict"});
        QVERIFY2(run.errors.endsWith("the document is for lines of 69 symbols, and 64 fit the "
                                     "paper\n"),
                 qPrintable(run.errors));
        QCOMPARE(run.status, 0);
    }

    void dryRunCountsThePreviousTicket_data()
    {
        QTest::addColumn<QByteArray>("members");
        QTest::addColumn<QString>("pieces");
        QTest::newRow("none") << QByteArray(R"("cta":0,"pta":0)") << " 0 pieces of paper,";
        QTest::newRow("one") << QByteArray(R"("cta":0,"pta":1)") << " 1 piece of paper,";
        QTest::newRow("two") << QByteArray(R"("cta":1,"pta":1)") << " 2 pieces of paper,";
    }
    void dryRunCountsThePreviousTicket()
    {
        QFETCH(QByteArray, members);
        QFETCH(QString, pieces);
        const ReceiptRun run = dryRun({"--document", document(members), "--model", usualModel});
        QVERIFY2(run.output.contains(pieces), qPrintable(run.output + run.errors));
    }
};

QTEST_GUILESS_MAIN(TestReceiptPrintChoices)
#include "tst_receipt_print_choices.moc"
