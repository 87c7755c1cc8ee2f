#include <QDirIterator>
#include <QXmlStreamReader>
#include <algorithm>

#include "lintrun.h"
#include "templatelint.h"

using lintrun::lint;

namespace {

/// A text of the program with its translation, in each of the forms for a number.
struct Translated
{
    QString context;
    QString source;
    QStringList forms;
    bool isCounted = false;
};

QVector<Translated> wordsOf(const QString &file)
{
    QFile words(example("../translations/" + file));
    if (!words.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&words);
    QVector<Translated> result;
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            const bool isCounted = xml.attributes().hasAttribute("numerus");
            result.append({context, QString(), {}, isCounted});
        } else if (xml.name() == QLatin1String("source")) {
            result.last().source = xml.readElementText();
        } else if (xml.name() == QLatin1String("numerusform") ||
                   (xml.name() == QLatin1String("translation") && !result.last().isCounted)) {
            result.last().forms.append(xml.readElementText());
        }
    }
    return xml.hasError() ? QVector<Translated>() : result;
}

/// All that a pattern finds, sorted.
QStringList found(const QString &text, const QString &pattern)
{
    QStringList parts;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        parts.append(matches.next().captured());
    parts.sort();
    return parts;
}

QString told(const Translated &words, const QString &form)
{
    return words.source + "\n" + form;
}

QStringList formsOfLanguage(const QString &file)
{
    return file.endsWith("_ru.ts") ? QStringList{"1", "2", "3"} : QStringList{"1", "2"};
}

/// What stands in a finding in front of its message, and behind it.
QString frameOf(const QString &line)
{
    const QRegularExpression finding(
        "^(t\\.cpt:\\d+:\\d+: (?:error|warning|note): ).*( \\[[a-z-]+\\])$");
    const auto match = finding.match(line);
    return match.captured(1) + match.captured(2);
}

}  // namespace

/// What the checker says in other languages.
class TestLintWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachTranslationHasThePlaceholders_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file : {"receipt/receipt_de.ts", "receipt/receipt_ru.ts",
                                 "printerslib_de.ts", "printerslib_en.ts", "printerslib_ru.ts"})
            QTest::newRow(file) << QString(file);
    }
    void eachTranslationHasThePlaceholders()
    {
        QFETCH(QString, file);
        const QVector<Translated> all = wordsOf(file);
        QVERIFY(all.size() > (file.startsWith("receipt/") ? 200 : 3));
        for (const Translated &words : all) {
            QVERIFY2(!words.forms.isEmpty(), qPrintable(words.source));
            for (const QString &form : words.forms) {
                QVERIFY2(!form.isEmpty(), qPrintable(words.source));
                const QString placeholder = "%(?:L?\\d+|n)";
                QVERIFY2(found(words.source, placeholder) == found(form, placeholder),
                         qPrintable(told(words, form)));
            }
        }
    }

    /// Parts of a sentence are put together as they are.
    void eachTranslationKeepsWhatBindsItsParts_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file : {"receipt/receipt_de.ts", "receipt/receipt_ru.ts"})
            QTest::newRow(file) << QString(file);
    }
    void eachTranslationKeepsWhatBindsItsParts()
    {
        QFETCH(QString, file);
        for (const Translated &words : wordsOf(file)) {
            if (words.context != "LintFinding")
                continue;
            for (const QString &form : words.forms) {
                const QString last = "[ :,]+$";
                QVERIFY2(found(words.source, last) == found(form, last),
                         qPrintable(told(words, form)));
                const QString first = "^[ ;:,]";
                QVERIFY2(found(words.source, first).isEmpty() == found(form, first).isEmpty(),
                         qPrintable(told(words, form)));
                // What is quoted is to be typed, or is a value.
                const QString quoted = "\"[^\"]*\"|\\[[^\\]]*\\]|<[^>]*>|--[a-z-]+";
                QVERIFY2(found(words.source, quoted) == found(form, quoted),
                         qPrintable(told(words, form)));
            }
        }
    }

    void numbersHaveTheFormsOfTheirLanguage_data() { eachTranslationKeepsWhatBindsItsParts_data(); }
    void numbersHaveTheFormsOfTheirLanguage()
    {
        QFETCH(QString, file);
        int counted = 0;
        for (const Translated &words : wordsOf(file)) {
            if (!words.isCounted)
                continue;
            ++counted;
            QVERIFY2(words.forms.size() == formsOfLanguage(file).size(), qPrintable(words.source));
        }
        QVERIFY(counted > 0);
    }

    void numbersAreCountedAsInTheirLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("characters");
        QTest::addColumn<QString>("words");
        QTest::newRow("one in Russian") << "ru" << 31 << " занимает 31 знак из 30 ";
        QTest::newRow("two in Russian") << "ru" << 32 << " занимает 32 знака из 30 ";
        QTest::newRow("five in Russian") << "ru" << 35 << " занимает 35 знаков из 30 ";
        QTest::newRow("German") << "de" << 35 << " braucht 35 Zeichen bei Platz für 30 ";
        QTest::newRow("English") << "en" << 35 << " takes 35 characters of 30 ";
    }
    void numbersAreCountedAsInTheirLanguage()
    {
        QFETCH(QString, language);
        QFETCH(int, characters);
        QFETCH(QString, words);
        const ReceiptRun run =
            lint(QByteArray(characters, '='), {"--width", "30", "--language", language});
        QVERIFY2(run.output.contains(words), qPrintable(run.output));
    }

    void everyRuleSpeaksInEachLanguage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("language");
        for (const templatelint::Rule &rule : templatelint::rules()) {
            for (const char *language : {"de", "ru"})
                QTest::addRow("%s, %s", rule.name, language) << QString(rule.name) << language;
        }
    }
    void everyRuleSpeaksInEachLanguage()
    {
        QFETCH(QString, name);
        QFETCH(QString, language);
        const templatelint::Rule *rule = templatelint::findRule(name);
        const QStringList options = QString(rule->arguments).split(' ', Qt::SkipEmptyParts);
        const ReceiptRun english = lint(rule->wrong, options, rule->document);
        const ReceiptRun run =
            lint(rule->wrong, options + QStringList{"--language", language}, rule->document);
        // Programs go by these.
        QCOMPARE(frameOf(run.output.trimmed()), frameOf(english.output.trimmed()));
        QVERIFY(!frameOf(run.output.trimmed()).isEmpty());
        QCOMPARE(run.status, english.status);
        QVERIFY2(run.output != english.output, qPrintable(run.output));
        const bool isCyrillic = run.output.contains(QRegularExpression("[а-я]{2}"));
        QVERIFY2(isCyrillic == (language == "ru"), qPrintable(run.output));
        QVERIFY2(!run.output.contains(QRegularExpression("%(?:\\d|n)")), qPrintable(run.output));
    }

    /// Sentences are texts of Words::tr(), also those that no example shows.
    void noSentenceOfTheCheckerIsLeftOut()
    {
        const QRegularExpression literal("QStringLiteral\\(\\s*\"((?:[^\"\\\\]|\\\\.)*)\"");
        const QRegularExpression sentence("[A-Za-z]{2,} [A-Za-z]{2,}");
        // Lists of names and a text for the reader.
        const QStringList others{"b i u size left", "size hr width", "[field "};
        int sources = 0;
        QDirIterator files(example("../tools/templatelint"), {"*.cpp"}, QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            ++sources;
            auto matches = literal.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext()) {
                const QString text = matches.next().captured(1);
                const bool isOther =
                    text.contains("\\\\") ||
                    std::any_of(others.cbegin(), others.cend(),
                                [&text](const QString &begin) { return text.startsWith(begin); });
                QVERIFY2(isOther || !text.contains(sentence),
                         qPrintable(file.fileName() + ": " + text));
            }
        }
        QVERIFY(sources > 20);
    }

    void jsonSpeaksItToo()
    {
        const ReceiptRun run = lint("<HR>", {"--json", "--language", "de"});
        QVERIFY2(run.output.contains("druckt, wie es dasteht"), qPrintable(run.output));
        QVERIFY2(run.output.contains("\"severity\": \"warning\""), qPrintable(run.output));
        QVERIFY2(run.output.contains("\"rule\": \"guessed-name\""), qPrintable(run.output));
    }

    /// Their option is for what stands on the receipt.
    void otherCommandsStayEnglish()
    {
        const WorkFolder folder;
        const QString text = folder.file("t.cpt", "<SPECSYMBOLS=none>\n<#1><LOOP>");
        const QString data = folder.file("d.json", "{\"attributes\": {\"LOOP\": \"<LOOP>\"}}");
        for (const char *command : {"render", "preview"}) {
            QStringList call{command, text, data};
            if (call.first() == "preview")
                call += {"--output", folder.path("r.png")};
            const ReceiptRun english = runReceipt(call);
            QVERIFY(english.errors.contains("hang"));
            QCOMPARE(runReceipt(call + QStringList{"--language", "ru"}).errors, english.errors);
        }
    }
};

QTEST_GUILESS_MAIN(TestLintWords)
#include "tst_lint_words.moc"
