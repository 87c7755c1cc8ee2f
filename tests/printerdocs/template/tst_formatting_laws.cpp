#include <QLoggingCategory>
#include <QtTest>
#include <algorithm>
#include <cmath>

#include "arbitrary.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "settings/iprintdevicesettings.h"
#include "settings/systemprintersettings.h"

namespace {

/// A template's text: tags, groups and what looks like either.
rc::Gen<QString> markup()
{
    const auto piece = rc::gen::weightedOneOf<std::string>(
        {{3,
          rc::gen::element<std::string>("<S>", "<C>", "<R>", "<B>", "<B:>", "<:B>", "<U:>", "<:U>",
                                        "<F2>", "<F9>", "<LS3>", "<#3>", "<65>", "<H2>", "<W2:>")},
         {3, rc::gen::element<std::string>("<NAME>", "<PRICE>", "<PRICE*2>", "<ZERO>", "<GONE>",
                                           "<DAY!>", "<PRICE,000>", "[", "]", "<X:>", "<:X>")},
         {4, rc::gen::element<std::string>("a", "Bc", " ", "Ж", "<", ">", "ß", "12", ",", "  ")},
         {1, rc::gen::just<std::string>("\n")}});
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string> &pieces) {
                            std::string text;
                            for (const std::string &each : pieces)
                                text += each;
                            return QString::fromStdString(text);
                        });
}

PrinterDocument sale()
{
    PrinterDocument document;
    document.setAttributes(
        {{"NAME", "Tea"}, {"PRICE", 2.4}, {"ZERO", 0}, {"DAY!", QDate(2026, 5, 9)}});
    return document;
}

QString withoutTags(QString text)
{
    return text.remove('<').remove('[').remove(']');
}

PrinterDocumentFormatter *formatterOf(const QString &text)
{
    static PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(text);
    return &formatter;
}

QString mirrored(QString text)
{
    std::reverse(text.begin(), text.end());
    std::replace(text.begin(), text.end(), QChar('['), QChar('\1'));
    std::replace(text.begin(), text.end(), QChar(']'), QChar('['));
    std::replace(text.begin(), text.end(), QChar('\1'), QChar(']'));
    return text;
}

QList<QByteArray> bytesOf(const TextPrinterDocument &document, bool fonts)
{
    QList<QByteArray> bytes;
    for (const DocumentBlock &block : document.blocks())
        bytes += fonts ? block.font() : block.format();
    return bytes;
}

QStringList textOf(const TextPrinterDocument &document)
{
    QStringList text;
    for (const DocumentBlock &block : document.blocks())
        text += block.text();
    return text;
}

}  // namespace

class TestFormattingLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*.warning=false"); }

    void textWithoutTagsStays()
    {
        VERIFY_LAW([](const QString &any) {
            const QString text = withoutTags(any);
            const auto *formatter = formatterOf(text);
            RC_ASSERT(formatter->toFormattedText(sale()) == text.split('\n'));
            RC_ASSERT(formatter->prepareDocument(sale()) == text.split('\n'));
            const TextPrinterDocument document = formatter->toTextPrinterDocument(sale());
            RC_ASSERT(textOf(document) == text.split('\n'));
            for (const QByteArray &bytes : bytesOf(document, true) + bytesOf(document, false))
                RC_ASSERT(bytes == QByteArray(bytes.size(), '\0'));
        });
    }

    void linesAreFilledEachByItself()
    {
        VERIFY_LAW([] {
            const QString first = *markup();
            const QString second = *markup();
            const QStringList apart = formatterOf(first)->toFormattedText(sale()) +
                                      formatterOf(second)->toFormattedText(sale());
            RC_ASSERT(formatterOf(first + '\n' + second)->toFormattedText(sale()) == apart);
        });
    }

    void fillingWhatIsFilledChangesNothing()
    {
        VERIFY_LAW([] {
            // Where a group was removed, a tag may have been passed over: it is filled later.
            const QString line = withoutGroups(*markup());
            const auto *formatter = formatterOf(QString());
            const QString once = formatter->processDocAttributes(line, sale());
            RC_ASSERT(formatter->processDocAttributes(once, sale()) == once);
        });
    }

    void markupOfTheFilledLinesIsTheDocument()
    {
        VERIFY_LAW([] {
            const auto *formatter = formatterOf(*markup());
            const QStringList lines = formatter->prepareDocument(sale());
            RC_PRE(!lines.isEmpty());
            const QString text = lines.join('\n');
            RC_ASSERT(formatter->plainTextToTextPrinterDocument(text) ==
                      formatter->toTextPrinterDocument(sale()));
            const int width = *rc::gen::inRange(-2, 60);
            RC_ASSERT(formatter->plainTextToFormattedPlainText(text, width) ==
                      formatter->toPlainText(sale(), width));
            RC_ASSERT(formatter->plainTextToHtmlDocument(text, true) ==
                      formatter->toHtmlDocument(sale(), true));
        });
    }

    void bytesReachOverTheText()
    {
        VERIFY_LAW([] {
            const TextPrinterDocument document =
                formatterOf(*markup())->toTextPrinterDocument(sale());
            for (const DocumentBlock &block : document.blocks()) {
                for (int line = 0; line < block.text().size(); ++line) {
                    RC_ASSERT(block.format().at(line).size() >= block.text().at(line).size());
                    RC_ASSERT(block.font().at(line).size() >= block.text().at(line).size());
                }
            }
        });
    }

    void textGrowsWithTheWidth()
    {
        VERIFY_LAW([] {
            const auto *formatter = formatterOf(*markup());
            const int narrow = *rc::gen::inRange(0, 40);
            const int wide = narrow + *rc::gen::inRange(0, 40);
            const QStringList before = formatter->toPlainText(sale(), narrow);
            const QStringList after = formatter->toPlainText(sale(), wide);
            RC_ASSERT(before.size() == after.size());
            for (int line = 0; line < before.size(); ++line)
                RC_ASSERT(before.at(line).size() <= after.at(line).size());
        });
    }

    void marginStandsInFrontOfEveryLineWithText()
    {
        VERIFY_LAW([] {
            const QString text = *markup();
            const int margin = *rc::gen::inRange(1, 20);
            PrinterDocumentFormatter indented(margin, nullptr);
            const PrinterDocumentFormatter plain(0, nullptr);
            const QStringList with = textOf(indented.plainTextToTextPrinterDocument(text));
            const QStringList without = textOf(plain.plainTextToTextPrinterDocument(text));
            RC_ASSERT(with.size() == without.size());
            for (int line = 0; line < with.size(); ++line)
                RC_ASSERT(with.at(line) == (without.at(line).isEmpty()
                                                ? QString()
                                                : QString(margin, ' ') + without.at(line)));
        });
    }

    void caseIsFoldedBehindTheMarkup()
    {
        VERIFY_LAW([] {
            const QString text = *markup();
            const QSharedPointer<IPrintDeviceSettings> settings(new SystemPrinterSettings);
            const PrinterDocumentFormatter formatter(0, nullptr);
            TextPrinterDocument expected = formatter.plainTextToTextPrinterDocument(text);
            const bool upper = *rc::gen::arbitrary<bool>();
            upper ? expected.toUpper() : expected.toLower();
            settings->setCharactersMode(upper ? IPrintDeviceSettings::CharactersUpperCase
                                              : IPrintDeviceSettings::CharactersLowerCase);
            IPrintDeviceSettings::setPrintDeviceSettings(settings);
            const TextPrinterDocument folded = formatter.plainTextToTextPrinterDocument(text);
            IPrintDeviceSettings::setPrintDeviceSettings({});
            settings->setCharactersMode(IPrintDeviceSettings::CharactersAsWritten);
            RC_ASSERT(folded == expected);
        });
    }

    void bothScansMirrorEachOther()
    {
        VERIFY_LAW([] {
            const QString text = QString::fromStdString(
                *rc::gen::container<std::string>(rc::gen::elementOf(std::string("[]ab"))));
            const int from = *rc::gen::inRange(-3, text.size() + 3);
            const auto *formatter = formatterOf(QString());
            const int mirror = text.size() - 1 - from;
            const int left = formatter->scanL(mirrored(text), mirror);
            const int right = formatter->scanR(text, from);
            RC_ASSERT(right == (left < 0 ? -1 : text.size() - 1 - left));
        });
    }

    void integerIsReadBackFromItsText()
    {
        VERIFY_LAW([](qint64 number) {
            const QString format(*rc::gen::inRange(0, 25), '0');
            const QString text = formatterOf(QString())->intToString(format, number);
            bool ok = false;
            RC_ASSERT(text.toLongLong(&ok) == number);
            RC_ASSERT(ok);
            RC_ASSERT(text.size() >= format.size());
        });
    }

    void realIsReadBackToItsDecimals()
    {
        VERIFY_LAW([] {
            const int decimals = *rc::gen::inRange(1, 8);
            const qint64 units = *rc::gen::inRange<qint64>(-2000000000, 2000000000);
            const QString format = "0." + QString(decimals, '0');
            const double number = double(units) / std::pow(10, decimals);
            RC_PRE(std::abs(number) >= 1 || number >= 0);
            const QString text = formatterOf(QString())->floatToString(format, number);
            RC_ASSERT(text.size() - text.indexOf('.') - 1 == decimals);
            RC_ASSERT(std::llround(text.toDouble() * std::pow(10, decimals)) == units);
        });
    }

    void splitAndJoinedTemplateHasAllItsText()
    {
        VERIFY_LAW([] {
            QString text = *markup();
            const int places = *rc::gen::inRange(0, 4);
            for (int place = 0; place < places; ++place)
                text.insert(*rc::gen::inRange(0, text.size() + 1), "\n<FISCAL_BODY>\n");
            bool found = false;
            QString pieces;
            int sections = 0;
            const auto parts =
                formatterOf(text)->splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
            for (const auto &part : parts) {
                sections += part.second ? 0 : 1;
                if (part.second)
                    pieces += part.second->getTemplate().join("");
            }
            RC_ASSERT(found == (places > 0));
            RC_ASSERT(sections == (places > 0 ? 1 : 0));
            RC_ASSERT(pieces == text.remove("<FISCAL_BODY>").remove('\n'));
        });
    }

    void bbCodeTextWithoutTagsStays()
    {
        VERIFY_LAW([](const QString &any) {
            QString text = withoutTags(any);
            // What is normalised, and what stands at the front, is told elsewhere.
            text.remove('\r').remove(0xAB).remove(0xBB).remove(0x2014).remove(0x2013).prepend('x');
            BbCodeParser parser;
            parser.parseText(text);
            RC_ASSERT(textOf(parser.document()) == text.split('\n'));
        });
    }

    void bbCodeBytesAreInStep()
    {
        VERIFY_LAW([] {
            const auto piece = rc::gen::element<std::string>(
                "[b]", "[/b]", "[size=large]", "[/size]", "[center]", "[/center]", "[hr /]",
                "[column width=9 align=right]", "[/column]", "[field width=4 zerofill=3]",
                "[/field]", "[barcode]", "[/barcode]", "[/qrcode]", "7", "abc\n", " ", "Ж", "[",
                "]", "[img]", "[/img]");
            std::string text;
            for (const std::string &each : *rc::gen::container<std::vector<std::string>>(piece))
                text += each;
            BbCodeParser parser;
            parser.setSymbolsPerLine(*rc::gen::arbitrary<unsigned char>());
            parser.parseText(QString::fromStdString(text));
            for (const DocumentBlock &block : parser.blocks()) {
                for (int line = 0; block.isText() && line < block.text().size(); ++line) {
                    RC_ASSERT(block.format().at(line).size() == block.text().at(line).size());
                    RC_ASSERT(block.font().at(line).size() == block.text().at(line).size());
                }
            }
        });
    }

private:
    static QString withoutGroups(QString text) { return text.remove('[').remove(']'); }
};

QTEST_GUILESS_MAIN(TestFormattingLaws)
#include "tst_formatting_laws.moc"
