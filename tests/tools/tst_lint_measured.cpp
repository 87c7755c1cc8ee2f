#include <QtTest>
#include <algorithm>
#include <cmath>

#include "printerdocs/printerdocumentformatter.h"
#include "receiptmodel.h"
#include "templatelint.h"

// How many of the mistakes in receipts the checker finds, and whether it is silent on those that
// print what the shop wants. The program takes a number of receipts, such as --receipts 20000.

namespace {

int _receipts = 600;
constexpr int faultsPerReceipt = 10;  // one of so many receipts is made once for each mistake
constexpr double leastFound = 0.95;
constexpr int paperWidth = 64;

using Receipt = ReceiptModel;

void putText(Receipt &receipt, const QString &label, const QString &name, const QVariant &value,
             const QString &format = QString())
{
    receipt.set(name, value);
    receipt.lines.insert(receipt.lines.size() - 1, QString("%1 <%2%3>").arg(label, name, format));
    receipt.expected.insert(receipt.expected.size() - 1, label + ' ' + value.toString());
}

void putLine(Receipt &receipt, const QString &line, const QString &expected)
{
    receipt.lines.insert(receipt.lines.size() - 1, line);
    receipt.expected.insert(receipt.expected.size() - 1, expected);
}

/// A mistake that people make, with the rule that finds it.
struct Mistake
{
    const char *name;
    const char *rule;
    void (*put)(Receipt &receipt);
    bool isSeenInText;  ///< and not only in fonts or on other paper
};

constexpr Mistake mistakes[] = {
    {"sign of a small number", "lost-sign",
     [](Receipt &r) {
         const int missing = 1 + r.below(99);
         const int counted = 10000 + r.below(100000);
         r.set("COUNTED", Receipt::amount(counted));
         r.set("EXPECTED", Receipt::amount(counted + missing));
         putLine(r, "Difference<S><COUNTED-EXPECTED,0.00>",
                 "Difference " + Receipt::amount(-missing));
     },
     true},
    {"zeros in front", "text-as-number",
     [](Receipt &r) { putText(r, "Ticket", "TICKET", "00" + r.digits(1 + r.below(11))); }, true},
    {"too few zeros in the format", "text-as-number",
     [](Receipt &r) { putText(r, "Ticket", "TICKET", "00" + r.digits(5), ",000"); }, true},
    {"code with an exponent", "text-as-number",
     [](Receipt &r) {
         putText(r, "Gate", "GATE",
                 QString("%1%2%3").arg(1 + r.below(99)).arg(r.oneOf({"E", "e"})).arg(r.below(9)));
     },
     true},
    {"name that reads as a number", "text-as-number",
     [](Receipt &r) {
         putText(r, "Dear", "GUEST", r.oneOf({"Nan", "nan", "NAN", "Inf", "INF"}));
     },
     true},
    {"name that takes its group along", "text-as-number",
     [](Receipt &r) {
         r.set("GUEST", r.oneOf({"Nan", "nan", "INF"}));
         putLine(r, "[Dear <GUEST>]", "Dear " + r.attributes["GUEST"].toString());
     },
     true},
    {"plus", "text-as-number",
     [](Receipt &r) { putText(r, "Phone", "PHONE", "+49" + r.digits(6)); }, true},
    {"decimal comma", "text-as-number",
     [](Receipt &r) {
         putText(r, "Paid", "PAID", Receipt::amount(r.below(9999)).replace('.', ','));
     },
     true},
    {"more than 32 bits", "changed-figure",
     [](Receipt &r) {
         putText(r, "Turnover", "TURNOVER", QString("3%1.%2").arg(r.digits(9), r.digits(2)),
                 r.oneOf({"", ",0.00"}));
     },
     true},
    {"decimals cut", "changed-figure",
     [](Receipt &r) {
         putText(r, "Litre", "LITRE",
                 QString("%1%2").arg(Receipt::amount(r.below(300))).arg(1 + r.below(9)));
     },
     true},
    {"decimals of a number cut", "changed-figure",
     [](Receipt &r) {
         putText(r, "Litre", "LITRE", (10 * r.below(300) + 1 + r.below(9)) / 1000.0);
     },
     true},
    {"sum of what is rounded", "wrong-sum",
     [](Receipt &r) {
         const int grams = 1 + r.below(3000);
         const int price = 1 + r.below(3000);
         const int off = 1 + r.below(20);
         r.set("KG", QString::number(grams / 1000.0, 'f', 3));
         r.set("PRICE", Receipt::amount(price));
         r.set("OFF", Receipt::amount(off));
         const auto rounded = [](qint64 thousandths) { return (thousandths + 500) / 1000; };
         const qint64 sum = rounded(qint64(grams) * price);
         const qint64 less = rounded(qint64(grams) * off);
         r.lines =
             QStringList{"Fuel<S><KG*PRICE>", "[Off<S>-<KG*OFF>]", "Total<S><KG*PRICE-KG*OFF>"};
         r.expected = QStringList{"Fuel " + Receipt::amount(sum)};
         if (less > 0)
             r.expected.append("Off -" + Receipt::amount(less));
         r.expected.append("Total " + Receipt::amount(sum - less));
     },
     true},
    {"total of other entries", "wrong-sum",
     [](Receipt &r) {
         r.set("ITEMS", Receipt::amount(0));
         r.entries =
             QStringList{"Tea=3.15", "Bun=2.80", "Oat milk=" + Receipt::amount(1 + r.below(999))};
         qint64 sum = 595 + r.entries.last().section('=', 1).remove('.').toLongLong();
         const int wrong = 1 + r.below(250);
         r.set("TOTAL", Receipt::amount(sum + wrong));
         r.lines = QStringList{"<ENTRIES>", "Total<S><TOTAL,0.00>"};
         r.expected = QString(r.entries.join('\n')).replace('=', ' ').split('\n') +
                      QStringList("Total " + Receipt::amount(sum));
     },
     true},
    {"division by zero", "division-by-zero",
     [](Receipt &r) {
         r.set("GUESTS", 0);
         putLine(r, "Each<S><TOTAL/GUESTS,0.00>", "Each");
     },
     true},
    {"tag in a value", "markup-in-value",
     [](Receipt &r) {
         putText(
             r, "For", "ITEM",
             r.name() + r.oneOf({" <X> card", " <B>!", " <65> x", " <S>", " <C> x", " <Ann Lee>"}));
     },
     true},
    {"brackets in a value", "markup-in-value",
     [](Receipt &r) { putText(r, "For", "ITEM", "Cola [" + r.digits(2) + " l]"); }, true},
    {"equals sign in an entry", "markup-in-value",
     [](Receipt &r) {
         r.addUnprinted("<ENTRIES>");
         r.entries.append("A=B=3.00");
         r.lines.swapItemsAt(r.lines.size() - 1, r.lines.size() - 2);
         r.expected.insert(r.expected.size() - 1, "A=B 3.00");
     },
     true},
    {"brackets in an entry", "markup-in-value",
     [](Receipt &r) {
         r.addUnprinted("<ENTRIES>");
         r.entries.append("Cola [0.5 l]=3.00");
         r.lines.swapItemsAt(r.lines.size() - 1, r.lines.size() - 2);
         r.expected.insert(r.expected.size() - 1, "Cola [0.5 l] 3.00");
     },
     true},
    {"attribute that isn't there", "unknown-attribute",
     [](Receipt &r) { putLine(r, "Bonus <BONNUS>", "Bonus 5"); }, true},
    {"letters of a date", "date-letters",
     [](Receipt &r) {
         putLine(r,
                 "On " + r.oneOf({"<SALE_DT,DD.MM.YYYY>", "<SALE_DT,dd.mm.yyyy hh:mm>",
                                  "<SALE_DT,Day dd>"}),
                 "On the day");
     },
     true},
    {"comma in the format of a date", "comma-in-format",
     [](Receipt &r) { putLine(r, "On <SALE_DT,dd.mm.yyyy, hh:nn>", "On the day"); }, true},
    {"decimals of a whole number", "value-format",
     [](Receipt &r) {
         r.set("POINTS", 1 + r.below(99));
         putLine(r, "Points <POINTS,0.00>",
                 QString("Points %1.00").arg(r.attributes["POINTS"].toInt()));
     },
     true},
    {"several columns", "repeated-tab",
     [](Receipt &r) { putLine(r, "Cash<S>112<S>2210.35", "Cash 112 2210.35"); }, false},
    {"group that is left open", "unmatched-bracket",
     [](Receipt &r) { putLine(r, "[Table <TABLE>", QString()); }, false},
    {"tag of another language", "guessed-name",
     [](Receipt &r) {
         putLine(r, r.oneOf({"<HR>", "<CUT>", "<BARCODE>", "<LOGO>"}), "-----");
     },
     true},
    {"font that doesn't exist", "unknown-font",
     [](Receipt &r) {
         putLine(r, r.oneOf({"<F5>a<F1>b", "<F9>a<F1>b"}), "ab");
     },
     false},
    {"font switched at the end of a line", "lost-font-switch",
     [](Receipt &r) { putLine(r, "<F4>four<F1>", "four"); }, false},
    {"copy without its mark", "no-copy-mark",
     [](Receipt &r) {
         r.isCopy = true;
         r.lines.replaceInStrings("<DOCNO>", "<DOCNO,000000>");
     },
     true},
    {"line that is too long", "wide-line",
     [](Receipt &r) {
         putLine(r, QString(paperWidth / 2 + 1 + r.below(9), 'x').replace('x', "x "), QString());
     },
     false},
    {"word that breaks", "broken-word",
     [](Receipt &r) {
         putLine(r, "Take 1 " + QString(paperWidth - 9, 'x') + "/1000 IU", QString());
     },
     false},
};

QStringList printed(const Receipt &receipt, const PrinterDocument &document)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(receipt.lines.join('\n'));
    QStringList lines = formatter.toPlainText(document, paperWidth);
    for (QString &line : lines)
        line = line.simplified();
    return lines;
}

QVector<templatelint::Finding> findingsOf(const Receipt &receipt, const PrinterDocument &document)
{
    templatelint::Options options;
    options.document = document;
    options.paper = templatelint::Paper{paperWidth, {}, QString(), false};
    return templatelint::lint(receipt.lines, options);
}

bool hasError(const QVector<templatelint::Finding> &findings)
{
    return std::any_of(findings.cbegin(), findings.cend(),
                       [](const templatelint::Finding &finding) {
                           return finding.severity == templatelint::Severity::Error;
                       });
}

bool isTold(const char *rule, const QVector<templatelint::Finding> &findings)
{
    return std::any_of(findings.cbegin(), findings.cend(),
                       [rule](const templatelint::Finding &finding) {
                           return finding.rule->name == QByteArray(rule);
                       });
}

/// A decimal number without the zeros at its end, and without a sign if it is 0.
QString plainDecimal(const QString &text)
{
    const QRegularExpression decimal("^(-?)(0?|[1-9]\\d*)(?:\\.(\\d*?)0*)?$");
    const auto match = decimal.match(text);
    if (!match.hasMatch())
        return QString();
    const QString whole = match.captured(2).isEmpty() ? QString("0") : match.captured(2);
    const QString number = whole + '.' + match.captured(3);
    return number == "0." ? number : match.captured(1) + number;
}

/// Whether a person reads the same on paper as in the document.
bool readsAs(const QString &given, const QString &printed)
{
    const QString number = plainDecimal(given);
    return given == printed || (!number.isEmpty() && number == plainDecimal(printed));
}

/// An amount in a currency's smallest units; with zeros left out, as some programs write it.
QString amountOfCurrency(Receipt &receipt, qint64 units, int decimals)
{
    QString text = QString::number(units).rightJustified(decimals + 1, '0');
    if (decimals > 0)
        text.insert(text.size() - decimals, '.');
    if (decimals > 0 && receipt.oneIn(4))
        text.remove(QRegularExpression("\\.?0+$"));
    return text;
}

/// A list of goods and its sum in a currency with any decimals; whether the sum is rounded.
bool makeOfCurrency(Receipt &receipt)
{
    const int decimals = receipt.below(4);
    qint64 total = 0;
    for (int count = 2 + receipt.below(9); count > 0; --count) {
        const int units = 1 + receipt.below(receipt.oneIn(2) ? 20 : 20000);
        const int price = receipt.oneIn(3) ? units * 100 : units;
        receipt.entries.append("Tea=" + amountOfCurrency(receipt, price, decimals));
        total += price;
    }
    const int coin = receipt.oneOf({"1", "1", "5", "10", "100"}).toInt();
    const qint64 rounded = (total + coin / 2) / coin * coin;
    receipt.setTotal(0);
    receipt.set("TOTAL", QString::number(static_cast<double>(rounded) / std::pow(10, decimals), 'f',
                                         decimals));
    receipt.lines = QStringList{
        "Table<S>12", receipt.oneOf({"Guests<S>3", "Visit<S>1"}), "<ENTRIES>",
        receipt.oneOf({"---", "Pieces<S>3"}),
        decimals == 0 ? "Total<S><TOTAL,0>" : "Total<S><TOTAL,0." + QString(decimals, '0') + ">"};
    return rounded != total;
}

QString told(const Receipt &receipt, const QVector<templatelint::Finding> &findings)
{
    QStringList messages;
    for (const templatelint::Finding &finding : findings)
        messages.append(QString("%1: %2").arg(finding.line).arg(finding.message));
    return receipt.lines.join('\n') + "\n---\n" + receipt.expected.join('\n') + "\n---\n" +
           messages.join('\n');
}

}  // namespace

class TestLintMeasured : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The engine logs every tag that it fills.
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void nothingIsAnErrorThatPrintsAsWanted()
    {
        for (int i = 0; i < _receipts; ++i) {
            Receipt receipt(static_cast<unsigned>(i));
            receipt.make();
            const PrinterDocument document = receipt.document();
            const auto findings = findingsOf(receipt, document);
            QVERIFY2(printed(receipt, document) == receipt.expected,
                     qPrintable(told(receipt, findings) + "\n---\n" +
                                printed(receipt, document).join("\n")));
            QVERIFY2(!hasError(findings), qPrintable(told(receipt, findings)));
            // What only may be wrong isn't told of a sum that is right.
            QVERIFY2(!isTold("wrong-sum", findings), qPrintable(told(receipt, findings)));
        }
    }

    // Currencies without decimals and with three, coins that there are not, and amounts whose zeros
    // a program leaves out.
    void sumsOfAnyCurrencyAreFine()
    {
        for (int i = 0; i < _receipts; ++i) {
            Receipt receipt(static_cast<unsigned>(i));
            const bool isRounded = makeOfCurrency(receipt);
            const auto findings = findingsOf(receipt, receipt.document());
            QVERIFY2(!hasError(findings), qPrintable(told(receipt, findings)));
            QVERIFY2(isRounded || !isTold("wrong-sum", findings),
                     qPrintable(told(receipt, findings)));
        }
    }

    // Whatever a text is made of: if another figure stands on paper, it is told, and else not.
    void textsThatPrintOtherwiseAreErrors()
    {
        const QStringList parts{"0", "1", "7", "00", "25", "999999", "4294967296", "-", "+",
                                ".", ",", "e", "E",  "n",  "a",      "i",          "f", "x"};
        RandomLines random(11);
        int others = 0;
        for (int i = 0; i < 5 * _receipts; ++i) {
            Receipt receipt(0);
            const QString text = random.line(parts);
            receipt.set("CODE", text);
            receipt.lines = QStringList("<CODE>");
            const PrinterDocument document = receipt.document();
            const bool isOther = !readsAs(text, printed(receipt, document).join(QString()));
            const auto findings = findingsOf(receipt, document);
            if (hasError(findings) != isOther)
                qInfo("%s: %s", qPrintable(text), qPrintable(told(receipt, findings)));
            QCOMPARE(hasError(findings), isOther);
            others += isOther ? 1 : 0;
        }
        qInfo("%d of %d print otherwise", others, 5 * _receipts);
        QVERIFY(others > _receipts / 10);
    }

    void mistakesAreFound_data()
    {
        QTest::addColumn<int>("number");
        for (std::size_t i = 0; i < std::size(mistakes); ++i)
            QTest::newRow(mistakes[i].name) << static_cast<int>(i);
    }
    void mistakesAreFound()
    {
        QFETCH(int, number);
        const Mistake &mistake = mistakes[number];
        int made = 0;
        int found = 0;
        for (int i = 0; i < _receipts / faultsPerReceipt; ++i) {
            Receipt receipt(static_cast<unsigned>(i));
            receipt.make();
            mistake.put(receipt);
            const PrinterDocument document = receipt.document();
            const auto findings = findingsOf(receipt, document);
            if (mistake.isSeenInText && printed(receipt, document) == receipt.expected) {
                QVERIFY2(!hasError(findings), qPrintable(told(receipt, findings)));
                continue;
            }
            ++made;
            const bool isFound = isTold(mistake.rule, findings);
            found += isFound ? 1 : 0;
            if (!isFound)
                qInfo("%s", qPrintable(told(receipt, findings)));
        }
        qInfo("%d of %d found", found, made);
        QVERIFY(made > 0);
        QVERIFY(found >= leastFound * made);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    const int option = arguments.indexOf("--receipts");
    if (option > 0 && option + 1 < arguments.size()) {
        _receipts = arguments.value(option + 1).toInt();
        arguments.erase(arguments.begin() + option, arguments.begin() + option + 2);
    }
    TestLintMeasured test;
    return QTest::qExec(&test, arguments);
}

#include "tst_lint_measured.moc"
