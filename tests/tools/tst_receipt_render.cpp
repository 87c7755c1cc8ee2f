#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include "receiptprogram.h"

class TestReceiptRender : public QObject
{
    Q_OBJECT

private:
    static QStringList tagsWith(const QStringList &options)
    {
        return QStringList{"render", example("tags.cpt"), example("tags.json")} + options;
    }

    /// The text that a template gives with an empty document.
    static QString rendered(const QByteArray &templateText, const QStringList &options)
    {
        const WorkFolder folder;
        return runReceipt(QStringList{"render", "-", folder.file("data.json", "{}")} + options,
                          templateText)
            .output;
    }

private Q_SLOTS:
    void fiscalSectionsAreFramed()
    {
        const WorkFolder folder;
        const QString receipt = folder.file(
            "a.cpt", "<fiscal_header>\nShop\n<FISCAL_BODY>\nBill <DOCNO>\n<FISCAL_FOOTER>\n");
        const QString data = folder.file("d.json", "{\"attributes\": {\"DOCNO\": 7}}");
        const auto frame = [](const QString &text) {
            return '+' + QString(48, '-') + "+\n|" + text + "|\n+" + QString(48, '-') + "+\n";
        };
        const ReceiptRun run = runReceipt({"render", receipt, data, "--fiscal", "--width", "50"});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, frame("  FISCAL_HEADER: printed by the fiscal printer  ") + "Shop\n" +
                                 frame("   FISCAL_BODY: printed by the fiscal printer   ") +
                                 "Bill 7\n" +
                                 frame("  FISCAL_FOOTER: printed by the fiscal printer  "));
        QCOMPARE(run.status, 0);
        const ReceiptRun narrow = runReceipt({"render", receipt, data, "--fiscal", "--width", "9"});
        QVERIFY(narrow.output.startsWith("+-------+\n|FISCAL_|\n+-------+\n"));
        // For printers nothing stands in their place.
        const ReceiptRun json = runReceipt({"render", receipt, data, "--fiscal", "--as", "json"});
        QCOMPARE(json.errors,
                 QString("receipt: --fiscal needs a template and a document, and excludes --as "
                         "json, in which nothing stands for a section\n"));
        QCOMPARE(json.status, 2);
        const ReceiptRun plain = runReceipt({"render", receipt, "--fiscal", "--plain"});
        QCOMPARE(plain.status, 2);
    }

    void fiscalSectionsAreFramedInHtml_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("html") << QStringList{"--as", "html"};
        QTest::newRow("unescaped html") << QStringList{"--as", "html", "--unescaped"};
        QTest::newRow("fragment") << QStringList{"--as", "html-fragment"};
        QTest::newRow("unescaped fragment") << QStringList{"--as", "html-fragment", "--unescaped"};
    }
    void fiscalSectionsAreFramedInHtml()
    {
        QFETCH(QStringList, options);
        const WorkFolder folder;
        const QString data = folder.file("d.json", "{\"attributes\": {\"DOCNO\": 7}}");
        const auto rendered = [&](const QByteArray &text, bool isFiscal) {
            const QStringList command{"render", folder.file("a.cpt", text), data};
            const ReceiptRun run = runReceipt(command + options +
                                              (isFiscal ? QStringList("--fiscal") : QStringList()));
            [&run] { QCOMPARE(run.errors, QString()); }();
            return run.output.split('\n');
        };
        const QByteArray text = "<fiscal_header>\nA & B\n<FISCAL_BODY>\nBill <DOCNO>\n";
        QStringList lines = rendered(text, true);
        const auto frame = [](const QString &name) {
            return "<tr><td colspan=\"2\" align = \"center\" style=\"border: 1px solid\"> <font "
                   "size = 1>" +
                   name + ": printed by the fiscal printer</font> </td></tr>";
        };
        QCOMPARE(lines.value(1), frame("FISCAL_HEADER"));
        QCOMPARE(lines.value(3), frame("FISCAL_BODY"));
        // All else is as without the sections.
        lines.removeAt(3);
        lines.removeAt(1);
        QCOMPARE(lines, rendered("A & B\nBill <DOCNO>\n", false));
        QCOMPARE(rendered("A\n", true), rendered("A\n", false));
        QCOMPARE(rendered("<FISCAL_QR>", true).size(), 4);
    }

    // The four files were checked by hand against the rules of the template language. A change in
    // them is a change of what clients get.
    void allTagsRenderAsKept_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("kept");
        QTest::newRow("text") << QStringList{} << "tags.txt";
        QTest::newRow("html") << QStringList{"--as", "html", "--unescaped"} << "tags.html";
        QTest::newRow("html-fragment")
            << QStringList{"--as", "html-fragment", "--unescaped"} << "tags.fragment.html";
        QTest::newRow("json") << QStringList{"--as", "json", "--pretty"} << "tags.json";
    }
    void allTagsRenderAsKept()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, kept);
        const ReceiptRun run = runReceipt(tagsWith(options));
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QFile file(PRINTERSLIB_TEST_DATA "/golden/" + kept);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray expected = file.readAll();
        if (run.output.toUtf8() == expected)
            return;
        QFile actual(kept + ".actual");
        QVERIFY(actual.open(QIODevice::WriteOnly));
        actual.write(run.output.toUtf8());
        QFAIL(qPrintable(QString("the output is kept in %1; compare it with %2")
                             .arg(QFileInfo(actual).absoluteFilePath(), file.fileName())));
    }

    void compactJsonIsOneLineOfTheSameDocument()
    {
        const ReceiptRun compact = runReceipt(tagsWith({"--as", "json"}));
        const ReceiptRun pretty = runReceipt(tagsWith({"--as", "json", "--pretty"}));
        QCOMPARE(compact.output.count('\n'), 1);
        const QJsonDocument document = QJsonDocument::fromJson(compact.output.toUtf8());
        QVERIFY(document.isObject());
        QCOMPARE(document, QJsonDocument::fromJson(pretty.output.toUtf8()));
    }

    void readmeShowsWhatTheToolPrints_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("text") << QStringList{"--width", "30"};
        QTest::newRow("html-fragment") << QStringList{"--as", "html-fragment"};
    }
    void readmeShowsWhatTheToolPrints()
    {
        QFETCH(QStringList, options);
        const QString files[] = {example("kiosk.cpt"), example("kiosk.json")};
        QFile readme(example("../README.md"));
        QVERIFY(readme.open(QIODevice::ReadOnly));
        const QString shown = QString::fromUtf8(readme.readAll());
        for (const QString &name : files) {
            QFile file(name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY2(shown.contains('\n' + QString::fromUtf8(file.readAll()) + "```\n"),
                     qPrintable(name));
        }
        const ReceiptRun run = runReceipt(QStringList{"render", files[0], files[1]} + options);
        QCOMPARE(run.status, 0);
        QVERIFY2(shown.contains('\n' + run.output + "```\n"), qPrintable(run.output));
    }

    void groceryReceipt()
    {
        const ReceiptRun run =
            runReceipt({"render", example("grocery.cpt"), example("grocery.json")});
        QCOMPARE(run.errors, QString());
        // 0.346 * 749.90 = 259.4654 and 1.285 * 129.90 = 166.9215; a tenth off 259.47 is 25.95.
        // Total: 179.80 + 54.50 + 259.47 - 25.95 + 166.92 + 299.97 + 219.90 = 1154.61.
        // Taxes: 634.74 * 10 / 110 = 57.7036..., and 519.87 / 6 = 86.645, a half that goes up.
        const QString blank(42, ' ');
        const QStringList lines{
            QString::fromUtf8("            Магазин \"Родничок\""),
            QString::fromUtf8("       г. Тверь, ул. Садовая, д. 14"),
            QString::fromUtf8("              ИНН 6950123456"),
            QString::fromUtf8("           КАССОВЫЙ ЧЕК. ПРИХОД"),
            QString::fromUtf8("Чек № 1482                14.03.2025 18:05"),
            QString::fromUtf8("Кассир Белова О. И.               Касса 03"),
            "------------------------------------------",
            QString::fromUtf8("Молоко 3,2%, 930 мл"),
            QString::fromUtf8("  2.000 шт x 89.90                  179.80"),
            QString::fromUtf8("Хлеб \"Дарницкий\", 650 г"),
            QString::fromUtf8("  1.000 шт x 54.50                   54.50"),
            QString::fromUtf8("Сыр \"Российский\", весовой"),
            QString::fromUtf8("  0.346 кг x 749.90                 259.47"),
            QString::fromUtf8("  скидка                            -25.95"),
            QString::fromUtf8("Яблоки \"Гала\", весовые"),
            QString::fromUtf8("  1.285 кг x 129.90                 166.92"),
            QString::fromUtf8("Шоколад горький, 90 г"),
            QString::fromUtf8("  3.000 шт x 99.99                  299.97"),
            QString::fromUtf8("Чай чёрный, 100 пакетиков"),
            QString::fromUtf8("  1.000 шт x 219.90                 219.90"),
            "------------------------------------------",
            QString::fromUtf8("ИТОГ                              =1154.61"),
            QString::fromUtf8("в т.ч. НДС 10%                       57.70"),
            QString::fromUtf8("в т.ч. НДС 20%                       86.65"),
            QString::fromUtf8("Наличными                          1200.00"),
            QString::fromUtf8("Сдача                                45.39"),
            "------------------------------------------",
            QString::fromUtf8("ФН                        7380440801234567"),
            QString::fromUtf8("ФД                                   21904"),
            QString::fromUtf8("ФП                              2871450396"),
            blank,
            QString::fromUtf8("           Спасибо за покупку!"),
            QString(),
        };
        QCOMPARE(run.output.split('\n'), lines);
        QCOMPARE(run.status, 0);
    }

    void cafeBill_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<bool>("isCopy");
        QTest::newRow("first print") << "cafe.json" << false;
        QTest::newRow("copy") << "cafe-copy.json" << true;
    }
    void cafeBill()
    {
        QFETCH(QString, document);
        QFETCH(bool, isCopy);
        const ReceiptRun run = runReceipt({"render", example("cafe.cpt"), example(document)});
        QCOMPARE(run.errors, QString());
        // 9.45 + 12.80 + 9.85 + 9.30 = 41.40; an eighth of it is 5.175; a third of 46.575 is
        // 15.525; all three are halves that go up.
        const QString blank(42, ' ');
        QStringList lines{
            "            The Copper Kettle",
            "        12 Harbour Street, Whitby",
            blank,
            "Bill 318                          Table 7a",
            "21.06.2025, 12:40 to 13:55        Guests 3",
            "Served by Maya",
            "==========================================",
            "3 Breakfast tea, pot                  9.45",
            "2 Soup of the day                    12.80",
            "1 Smoked salmon bagel                 9.85",
            "2 Carrot cake, slice                  9.30",
            "==========================================",
            "Subtotal                             41.40",
            "Service 12.5%                         5.18",
            "Total GBP                            46.58",
            "Each of 3                            15.53",
            blank,
            "        Thank you, and come again!",
            "",
        };
        if (isCopy)
            lines.insert(4, "                CHECK_COPY");
        QCOMPARE(run.output.split('\n'), lines);
        QCOMPARE(run.status, 0);
    }

    void fiscalMarkersPrintNothing()
    {
        const ReceiptRun run =
            runReceipt({"render", example("fiscal.cpt"), example("fiscal.json")});
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, QString::fromUtf8("             Аптека \"Ромашка\"\n"
                                               "            Смена 0087, чек 52\n"
                                               "Вам начислено бонусов                  114\n"
                                               "Оплата принята 01.09.2025 09:12\n"
                                               "Проверьте чек, не отходя от кассы: \n"
                                               "             Ждём вас снова!\n"));
    }

    void widthMarginAndCase_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("output");
        QTest::newRow("width 10") << QStringList{"--width", "10"} << "Ab      cD\n          \nEf\n";
        QTest::newRow("width below the line") << QStringList{"--width", "1"} << "Ab cD\n \nEf\n";
        QTest::newRow("margin 3, on lines with text")
            << QStringList{"--width", "10", "--margin", "3"} << "   Ab   cD\n          \n   Ef\n";
        QTest::newRow("as is") << QStringList{"--width", "6", "--case", "as-is"}
                               << "Ab  cD\n      \nEf\n";
        QTest::newRow("upper") << QStringList{"--width", "6", "--case", "upper"}
                               << "AB  CD\n      \nEF\n";
        QTest::newRow("lower") << QStringList{"--width", "6", "--case", "lower"}
                               << "ab  cd\n      \nef\n";
    }
    void widthMarginAndCase()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, output);
        QCOMPARE(rendered("Ab<S>cD\n\nEf\n", options), output);
    }

    void wrongCaseIsWrongUsage()
    {
        const ReceiptRun run =
            runReceipt({"render", example("cafe.cpt"), example("cafe.json"), "--case", "title"});
        QCOMPARE(run.errors,
                 QString("receipt: --case: \"title\" is none of as-is, upper, lower\n"));
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void badInputIsNamed()
    {
        const ReceiptRun missing = runReceipt({"render", "/nowhere/a.cpt", example("cafe.json")});
        QCOMPARE(missing.errors, QString("receipt: /nowhere/a.cpt: No such file or directory\n"));
        QCOMPARE(missing.status, 1);
        const ReceiptRun document = runReceipt({"render", example("cafe.cpt"), "-"}, "{\n]");
        QVERIFY2(document.errors.startsWith("receipt: -:2:"), qPrintable(document.errors));
        QCOMPARE(document.status, 1);
        const ReceiptRun empty = runReceipt({"render", "-", example("cafe.json")});
        QCOMPARE(empty.errors, QString("receipt: -: the template is empty\n"));
        QCOMPARE(empty.status, 1);
        const ReceiptRun bytes = runReceipt({"render", "--plain", "-"}, "a\n\xFF\n");
        QCOMPARE(bytes.errors,
                 QString("receipt: -:2: this line isn't UTF-8; --codec names another encoding\n"));
        QCOMPARE(bytes.status, 1);
    }

    void symbolsComeFromTheTemplatesFolderUnlessNamed()
    {
        const WorkFolder folder;
        QVERIFY(QFile::copy(example("symbols/shop.ssi"), folder.path("shop.ssi")));
        const QString receipt = folder.file("a.cpt", "<SPECSYMBOLS=shop>\n<#1>\n");
        const QString data = folder.file("a.json", "{}");
        const auto codes = [](const QStringList &arguments) {
            const ReceiptRun run = runReceipt(QStringList{"render", "--as", "json"} + arguments);
            const QJsonObject map = QJsonDocument::fromJson(run.output.toUtf8()).object();
            return map.value("cis").toObject().keys();
        };
        const QStringList all{"ci_1", "ci_2", "ci_3", "ci_4", "ci_5", "ci_6", "ci_7"};
        QCOMPARE(codes({receipt, data}), all);
        QVERIFY(QFile::remove(folder.path("shop.ssi")));
        QCOMPARE(codes({receipt, data}), QStringList());
        QCOMPARE(codes({receipt, data, "--symbols", example("symbols")}), all);
    }

    void plainTextHasMarkupAndNoAttributes_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("output");
        QTest::newRow("text") << QStringList{"--width", "12"}
                              << "  <NAME,0>\n            \nx          y\n";
        QTest::newRow("upper case") << QStringList{"--width", "12", "--case", "upper"}
                                    << "  <NAME,0>\n            \nX          Y\n";
        QTest::newRow("html-fragment")
            << QStringList{"--as", "html-fragment"}
            << "<p><table width=\"100%\" cellspacing=0 cellpadding=0>\n"
               "<tr><td colspan=\"2\" align = \"center\"> <font size = 1>&lt;NAME,0&gt;</font> "
               "</td></tr>\n"
               "<br>\n"
               "<tr><td align = \"left\" width=\"50%\"> <font size = 1>x</font> </td>"
               "<td align = \"right\" width=\"50%\"> <font size = 1>y</font> </td></tr>\n"
               "</table></p>\n";
        QTest::newRow("html")
            << QStringList{"--as", "html"}
            << "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; "
               "charset=UTF-8\"></head><body><table width=\"100%\" cellspacing=0 cellpadding=0>\n"
               "<tr><td colspan=\"2\" align = \"center\"> <font size = 1>&lt;NAME,0&gt;</font> "
               "</td></tr>\n"
               "<br>\n"
               "<tr><td align = \"left\" width=\"50%\"> <font size = 1>x</font> </td>"
               "<td align = \"right\" width=\"50%\"> <font size = 1>y</font> </td></tr>\n"
               "</table></body></html>\n";
        QTest::newRow("json")
            << QStringList{"--as", "json"}
            << "{\"blocks\":[{\"align\":2,\"fmt\":[\"AAAAAAAAAAA=\",\"\"],\"fnt\":[\"AAAAAAAAAAA="
               "\","
               "\"\"],\"ls\":[0,0],\"txt\":[\"<NAME,0>\",\"\"],\"type\":0},{\"align\":3,\"fmt\":["
               "\"AAAA\"],\"fnt\":[\"AAAA\"],\"ls\":[0],\"txt\":[\"x\\ty\"],\"type\":0}],\"cta\":9,"
               "\"init\":true,\"loop\":0,\"pta\":0}\n";
    }
    void plainTextHasMarkupAndNoAttributes()
    {
        QFETCH(QStringList, options);
        QFETCH(QString, output);
        const ReceiptRun run =
            runReceipt(QStringList{"render", "--plain", "-"} + options, "<C><NAME,0>\n\nx<S>y\n");
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.output, output);
        QCOMPARE(run.status, 0);
    }

    void plainTextMayBeInAnotherEncoding()
    {
        const ReceiptRun run =
            runReceipt({"render", "--plain", "-", "--codec", "windows-1251"}, "\xC8\xD2\xCE\xC3");
        QCOMPARE(run.output, QString::fromUtf8("ИТОГ\n"));
    }

    void outputFileIsWrittenWholeOrNotAtAll()
    {
        const WorkFolder folder;
        const QString file = folder.file("out.txt", "old");
        const ReceiptRun good = runReceipt({"render", "--plain", "-", "--output", file}, "new\n");
        QCOMPARE(good.errors, QString());
        QCOMPARE(good.output, QString());
        QCOMPARE(good.status, 0);
        QCOMPARE(folder.content("out.txt"), QByteArray("new\n"));

        const ReceiptRun bad =
            runReceipt({"render", example("cafe.cpt"), "-", "--output", file}, "{");
        QCOMPARE(bad.status, 1);
        QCOMPARE(folder.content("out.txt"), QByteArray("new\n"));

        const ReceiptRun nowhere =
            runReceipt({"render", "--plain", "-", "--output", "/nowhere/out.txt"}, "x\n");
        QVERIFY2(nowhere.errors.startsWith("receipt: /nowhere/out.txt: "),
                 qPrintable(nowhere.errors));
        QCOMPARE(nowhere.status, 1);
    }

    void ownFilesAreNotReplaced()
    {
        const WorkFolder folder;
        const QString text = folder.file("own.cpt", "word\n");
        const QString data = folder.file("own.json", "{}");
        for (const QString &file : {text, data, folder.path("./own.cpt")}) {
            const ReceiptRun run = runReceipt({"render", text, data, "--output", file});
            QCOMPARE(run.errors, "receipt: " + file +
                                     ": what is written is made of this file; choose another "
                                     "name\n");
            QCOMPARE(run.status, 1);
        }
        QCOMPARE(runReceipt({"render", "--plain", text, "--output", text}).status, 1);
        QCOMPARE(folder.content("own.cpt"), QByteArray("word\n"));
        QCOMPARE(folder.content("own.json"), QByteArray("{}"));
    }

    void fileThatIsNamedLikeStandardInputIsReplaced()
    {
        const WorkFolder folder;
        folder.file("-", "old");
        QProcess process;
        process.setWorkingDirectory(folder.path(""));
        process.start(RECEIPT_PROGRAM, {"render", "--plain", "-", "--output", "-"});
        process.write("new\n");
        const ReceiptRun run = finished(process);
        QCOMPARE(run.errors, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(folder.content("-"), QByteArray("new\n"));
    }

    void widthComesFromTheModel_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("width");
        QTest::newRow("first paper and font") << QStringList{"--model", "CUSTOM_VKP_80"} << 51;
        QTest::newRow("font") << QStringList{"--model", "CUSTOM_VKP_80", "--font", "3"} << 28;
        QTest::newRow("paper") << QStringList{"--model", "CUSTOM_VKP_80", "--paper", "1"} << 40;
        QTest::newRow("both") << QStringList{"--model", "EPSON_EU_4XX", "--paper",
                                             "3",       "--font",       "2"}
                              << 36;
        // 69 in the catalogue.
        QTest::newRow("no wider than the head") << QStringList{"--model", "CITIZEN_CBM_1000"} << 64;
    }
    void widthComesFromTheModel()
    {
        QFETCH(QStringList, options);
        QFETCH(int, width);
        QCOMPARE(rendered("<R>x", options), QString(width - 1, ' ') + "x\n");
    }

    void renderingMakesNoFoldersOnTheMachine()
    {
        const WorkFolder folder;
        const QString configuration = folder.path("site/etc/tarn.conf");
        const QByteArray before = qgetenv("TARN_CONF");
        qputenv("TARN_CONF", configuration.toUtf8());
        const ReceiptRun run = runReceipt({"render", example("cafe.cpt"), example("cafe.json")});
        qputenv("TARN_CONF", before);
        QCOMPARE(run.status, 0);
        QVERIFY(!QFile::exists(folder.path("site")));
    }

    void logLinesComeWithVerboseOnly()
    {
        const QStringList files{example("cafe.cpt"), example("cafe.json")};
        QCOMPARE(runReceipt(QStringList{"render"} + files).errors, QString());
        QVERIFY(
            runReceipt(QStringList{"render", "--verbose"} + files).errors.contains("\nDOCNO\n"));
    }
};

QTEST_GUILESS_MAIN(TestReceiptRender)
#include "tst_receipt_render.moc"
