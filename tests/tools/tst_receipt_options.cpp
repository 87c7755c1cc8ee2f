// Options that several commands have: each is the same one everywhere, in the help and in what is
// refused.
#include <QtTest>

#include "receiptprogram.h"

namespace {

struct HelpRow
{
    QString value;
    QString description;
};

/// The options in a help text, by name.
QMap<QString, HelpRow> optionsIn(const QString &help)
{
    static const QRegularExpression beginning("^  (?:-\\w, )?--([\\w-]+)(?: <([^>]*)>)? +(.*)$");
    QMap<QString, HelpRow> options;
    QString name;
    for (const QString &line : help.mid(help.indexOf("\nOptions:")).split('\n')) {
        const auto match = beginning.match(line);
        if (match.hasMatch()) {
            name = match.captured(1);
            options.insert(name, {match.captured(2), match.captured(3)});
        } else if (!name.isEmpty() && line.startsWith("   ")) {
            options[name].description += ' ' + line.trimmed();
        } else {
            name.clear();
        }
    }
    return options;
}

/// What a description says of all commands: not the default and the limit, which are one's own.
QString withoutOwn(QString description)
{
    return description.replace(QRegularExpression("\\bdefault: [^.;]*"), "default")
        .replace(QRegularExpression("\\b1 to \\d+"), "1 to N");
}

}  // namespace

class TestReceiptOptions : public QObject
{
    Q_OBJECT

private:
    WorkFolder m_folder;

    /// A command with good files and no options.
    QStringList call(const QString &command) const
    {
        if (command == "document save")
            return {"document",
                    "save",
                    m_folder.path("saved"),
                    example("kiosk.json"),
                    "--from",
                    example("kiosk.cpt")};
        if (command == "document show")
            return {"document", "show", m_folder.path("saved")};
        if (command == "bbcode")
            return {command, m_folder.path("a.txt")};
        if (command == "data" || command == "lint" || command == "split")
            return {command, example("kiosk.cpt")};
        QStringList arguments{command, example("kiosk.cpt"), example("kiosk.json")};
        if (command == "preview")
            arguments += {"--output", m_folder.path("a.png")};
        if (command == "print")
            arguments += "--dry-run";
        return arguments;
    }

    /// Names of the commands, and of the actions of those that have some with an own help.
    QStringList commandNames() const
    {
        const QRegularExpression row("^  ([a-z]+) +\\S", QRegularExpression::MultilineOption);
        QStringList names;
        auto commands = row.globalMatch(runReceipt({"--help"}).output);
        while (commands.hasNext())
            names.append(commands.next().captured(1));
        auto actions = row.globalMatch(runReceipt({"document", "--help"}).output);
        while (actions.hasNext())
            names.append("document " + actions.next().captured(1));
        return names;
    }

private Q_SLOTS:
    void initTestCase() { m_folder.file("a.txt", "x\n"); }

    void optionOfSeveralCommandsIsDescribedInTheSameWords()
    {
        // These have other values, or write something else, in each command.
        const QStringList ofOneCommand{"all-models", "as",    "code-page", "fiscal", "from",
                                       "output",     "plain", "strict",    "to"};
        QMap<QString, QStringList> commandsOf;
        QMap<QString, HelpRow> first;
        const QStringList commands = commandNames();
        QVERIFY(commands.size() > 12);
        for (const QString &command : commands) {
            const auto options =
                optionsIn(runReceipt(command.split(' ') + QStringList("-h")).output);
            for (auto option = options.begin(); option != options.end(); ++option) {
                commandsOf[option.key()].append(command);
                if (ofOneCommand.contains(option.key()))
                    continue;
                if (!first.contains(option.key()))
                    first.insert(option.key(), *option);
                const HelpRow &known = first[option.key()];
                QCOMPARE(option->value, known.value);
                QCOMPARE(withoutOwn(option->description), withoutOwn(known.description));
            }
        }
        QCOMPARE(commandsOf["symbols"],
                 (QStringList{"lint", "preview", "print", "render", "document save"}));
        QCOMPARE(commandsOf["images"], (QStringList{"bbcode", "lint", "preview", "print"}));
        QCOMPARE(commandsOf["model"], (QStringList{"decode", "drawer", "lint", "preview", "print",
                                                   "render", "selftest", "status"}));
        QCOMPARE(commandsOf["width"], (QStringList{"bbcode", "lint", "render"}));
        QCOMPARE(commandsOf["clean"],
                 (QStringList{"fill", "preview", "print", "render", "document save"}));
        QCOMPARE(commandsOf["data-schema"], (QStringList{"data", "fill", "lint", "preview", "print",
                                                         "render", "document save"}));
        QCOMPARE(commandsOf["json"],
                 (QStringList{"drawer", "find", "lint", "models", "print", "status"}));
        QCOMPARE(commandsOf["as"],
                 (QStringList{"bbcode", "decode", "lint", "render", "document show"}));
    }

    void valuesStandInCapitals()
    {
        for (const QString &command : commandNames()) {
            for (const HelpRow &row :
                 optionsIn(runReceipt(command.split(' ') + QStringList("-h")).output))
                QVERIFY2(row.value == row.value.toUpper() || row.value == "DATA.json" ||
                             row.value == "OLD.json",
                         qPrintable(command + ' ' + row.value));
        }
    }

    void wrongValueIsRefusedInTheSameWords_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("complaint");
        const auto rows = [](const QStringList &commands, const char *name,
                             const QStringList &options, const QString &complaint) {
            for (const QString &command : commands)
                QTest::addRow("%s: %s", qPrintable(command), name)
                    << command << options << complaint;
        };
        const auto folder = [&](const QStringList &commands, const QString &option) {
            for (const QString &name : {QString("/nowhere"), example("kiosk.cpt"), QString()})
                rows(commands, qPrintable(option + " \"" + name + '"'), {option, name},
                     QString("%1: \"%2\" is no folder").arg(option, name));
        };
        folder({"lint", "preview", "print", "render", "document save"}, "--symbols");
        folder({"bbcode", "preview", "print"}, "--images");

        const QStringList haveModels{"lint", "preview", "print", "render"};
        rows(haveModels, "unknown model", {"--model", "X"},
             "there is no model \"X\"; see \"receipt models\"");
        rows(haveModels, "paper that the model lacks", {"--model", "AV_268", "--paper", "1"},
             "--paper: \"1\" is no number from 0 to 0");
        rows(haveModels, "paper below the first", {"--model", "CUSTOM_VKP_80", "--paper", "-1"},
             "--paper: \"-1\" is no number from 0 to 3");
        rows(haveModels, "font that the model lacks", {"--model", "CUSTOM_VKP_80", "--font", "4"},
             "--font: \"4\" is no number from 0 to 3");
        rows({"preview"}, "paper of the default model", {"--paper", "4"},
             "--paper: \"4\" is no number from 0 to 3");
        const QStringList haveWidths{"lint", "render"};
        rows(haveWidths, "paper of no model", {"--paper", "0"}, "--paper and --font need --model");
        rows(haveWidths, "font of no model", {"--width", "40", "--font", "1"},
             "--paper and --font need --model");
        rows(haveWidths, "width and model", {"--model", "AV_268", "--width", "30"},
             "--width and --model exclude each other");
        for (const QString &width : QStringList{"0", "1001", "42x", "4294967338", "-5", ""})
            rows(haveWidths, qPrintable("width \"" + width + '"'), {"--width", width},
                 "--width: \"" + width + "\" is no number from 1 to 1000");
        for (const QString &width : QStringList{"0", "256", "42x", "4294967298", "-5", ""})
            rows({"bbcode"}, qPrintable("width \"" + width + '"'), {"--width", width},
                 "--width: \"" + width + "\" is no number from 1 to 255");
        for (const QString &margin : QStringList{"-1", "1001", ""})
            rows({"preview", "print", "render"}, qPrintable("margin \"" + margin + '"'),
                 {"--margin", margin}, "--margin: \"" + margin + "\" is no number from 0 to 1000");
        rows({"lint", "preview"}, "code page", {"--code-page", "cp9999"},
             "--code-page: there is no encoding \"cp9999\"");
        rows({"data", "fill", "lint", "preview", "print", "render", "split", "document save"},
             "encoding", {"--codec", "none"}, "--codec: there is no encoding \"none\"");
        const QString rules = "all, tags, brackets, controls, bidirectional, invisible, equals";
        for (const QString &value : QStringList{"tag", "tags,tag", ""})
            rows({"fill", "preview", "print", "render", "document save"},
                 qPrintable("rule of \"" + value + '"'), {"--clean", value},
                 QString("--clean: \"%1\" is none of %2").arg(value.section(',', -1), rules));
        for (const QString &value : QStringList{"pdf", "TEXT", ""}) {
            const auto form = [&](const QString &command, const QString &forms) {
                rows({command}, qPrintable("form \"" + value + '"'), {"--as", value},
                     QString("--as: \"%1\" is none of %2").arg(value, forms));
            };
            form("bbcode", "text, html, json, tree");
            form("document show", "text, html, json");
            form("lint", "document, text, html");
            form("render", "text, html, html-fragment, json");
        }
    }
    void wrongValueIsRefusedInTheSameWords()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, options);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(call(command) + options);
        QCOMPARE(run.errors, "receipt: " + complaint + '\n');
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void optionWithoutWhatItIsAboutIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("complaint");
        const QString file = m_folder.path("a.txt");
        const QString cleaning = "--clean needs a template and a document";
        QTest::newRow("rendering a text has nothing to clean")
            << QStringList{"render", "--plain", file, "--clean", "all"} << cleaning;
        QTest::newRow("drawing a text has nothing to clean")
            << QStringList{"preview", "--plain", file, "--clean", "all"} << cleaning;
        QTest::newRow("drawing BBCode has nothing to clean")
            << QStringList{"preview", "--bbcode", file, "--clean", "tags"} << cleaning;
        const QString margin = "--margin needs a template or --plain";
        QTest::newRow("BBCode has no margin")
            << QStringList{"preview", "--bbcode", file, "--margin", "1"} << margin;
        QTest::newRow("a saved document has no margin")
            << QStringList{"preview", "--document", file, "--margin", "1"} << margin;
        const QString images = "--images needs --bbcode";
        const QStringList folder{"--images", example("images")};
        QTest::newRow("a text has no pictures")
            << QStringList{"preview", "--plain", file} + folder << images;
        QTest::newRow("a template has no pictures") << call("print") + folder << images;
        QTest::newRow("a saved document has its pictures")
            << QStringList{"print", "--document", file, "--dry-run"} + folder << images;
        // Without a model the greatest numbers of any model hold.
        const QStringList all{"preview", "--plain", file, "--all-models", m_folder.path("all")};
        QTest::newRow("paper of all models")
            << all + QStringList{"--paper", "128"} << "--paper: \"128\" is no number from 0 to 127";
        QTest::newRow("font of all models")
            << all + QStringList{"--font", "4"} << "--font: \"4\" is no number from 0 to 3";
    }
    void optionWithoutWhatItIsAboutIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, complaint);
        const ReceiptRun run = runReceipt(arguments);
        QCOMPARE(run.errors, "receipt: " + complaint + '\n');
        QCOMPARE(run.output, QString());
        QCOMPARE(run.status, 2);
    }

    void limitsAreTaken_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("options");
        for (const char *command : {"lint", "render"}) {
            QTest::addRow("%s: narrowest", command) << command << QStringList{"--width", "1"};
            QTest::addRow("%s: widest", command) << command << QStringList{"--width", "1000"};
            QTest::addRow("%s: last paper and font", command)
                << command
                << QStringList{"--model", "CUSTOM_VKP_80", "--paper", "3", "--font", "3"};
        }
        QTest::newRow("bbcode: narrowest") << "bbcode" << QStringList{"--width", "1"};
        QTest::newRow("bbcode: widest") << "bbcode" << QStringList{"--width", "255"};
        QTest::newRow("render: widest margin") << "render" << QStringList{"--margin", "1000"};
        QTest::newRow("preview: last paper and font")
            << "preview" << QStringList{"--paper", "3", "--font", "3"};
    }
    void limitsAreTaken()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, options);
        const ReceiptRun run = runReceipt(call(command) + options);
        QVERIFY2(!run.errors.contains("receipt: --"), qPrintable(run.errors));
        QVERIFY(run.status != 2);
    }

    void firstFormIsTheDefault_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("form");
        QTest::newRow("bbcode") << "bbcode"
                                << "text";
        QTest::newRow("document show") << "document show"
                                       << "text";
        QTest::newRow("lint") << "lint"
                              << "document";
        QTest::newRow("render") << "render"
                                << "text";
    }
    void firstFormIsTheDefault()
    {
        QFETCH(QString, command);
        QFETCH(QString, form);
        QCOMPARE(runReceipt(call("document save")).status, 0);
        const ReceiptRun without = runReceipt(call(command));
        const ReceiptRun with = runReceipt(call(command) + QStringList{"--as", form});
        QVERIFY(without.status != 2);
        QCOMPARE(with.output, without.output);
        QCOMPARE(with.status, without.status);
        const QString help = runReceipt(command.split(' ') + QStringList("-h")).output;
        QVERIFY2(optionsIn(help)["as"].description.contains(
                     QRegularExpression("^The form: " + form + " \\((.*; )?default\\)")),
                 qPrintable(help));
    }
};

QTEST_GUILESS_MAIN(TestReceiptOptions)
#include "tst_receipt_options.moc"
