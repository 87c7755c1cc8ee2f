// Prints a line for each case of the generator: its kind, number, and a digest of all that the
// library makes of it, log lines included. Two versions of the library that print the same lines
// do the same. The program needs the public headers alone, so that one program runs with either.

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QJsonDocument>
#include <QTextStream>
#include <cmath>
#include <memory>

#include "generator.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"
#include "surroundings.h"

using namespace differential;

namespace {

QByteArray *_log = nullptr;

MarkTranslator *_translator = nullptr;

void keepLog(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (_log != nullptr)
        *_log += QByteArray::number(type) + ' ' + text.toUtf8() + '\n';
}

QByteArray shown(const QStringList &lines)
{
    return lines.join(QLatin1Char('\n')).toUtf8() + '\n';
}

QByteArray shown(const TextPrinterDocument &document)
{
    return QJsonDocument::fromVariant(document.toMap()).toJson(QJsonDocument::Compact) + '\n';
}

void addSections(const PrinterDocumentFormatter &formatter, const TemplateCase &input,
                 QByteArray &result)
{
    PrinterDocumentFormatter whole(input.leftMargin, nullptr);
    whole.setTemplate(formatter.getTemplate().join(QLatin1Char('\n')));
    bool found = false;
    const auto parts = whole.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
    result += "split " + QByteArray::number(found) + '\n';
    for (const auto &part : parts)
        result += QByteArray::number(static_cast<int>(part.first)) + ' ' +
                  (part.second ? shown(part.second->getTemplate()) : QByteArray("-\n"));
}

/// All forms of a document. A formatter may know more of its template at its second use.
QByteArray formsOf(const PrinterDocumentFormatter &formatter, const TemplateCase &input,
                   const PrinterDocument &document)
{
    QByteArray result;
    result += shown(formatter.toFormattedText(document));
    result += shown(formatter.prepareDocument(document));
    result += shown(formatter.toPlainText(document, input.width));
    result += formatter.toHtml(document, input.rightAlign).toUtf8() + '\n';
    result += formatter.toHtmlDocument(document, input.rightAlign).toUtf8() + '\n';
    result += shown(formatter.toTextPrinterDocument(document));
    return result;
}

QByteArray outcome(const TemplateCase &input, const PrinterDocument &other, const QString &symbols)
{
    setCharactersMode(input.charactersMode);
    _translator->setMark(input.copyMark);
    PrinterDocumentFormatter formatter(input.leftMargin, nullptr);
    formatter.setSpecCharsPath(symbols);
    formatter.setTemplate(input.lines.join(QLatin1Char('\n')));
    const QString plain = input.lines.join(QLatin1Char('\n'));
    QByteArray result = formsOf(formatter, input, input.document);
    result += formsOf(formatter, input, other);
    result += shown(formatter.toPlainText(input.document, input.width));
    result += shown(formatter.plainTextToFormattedPlainText(plain, input.width));
    result += formatter.plainTextToHtml(plain, input.rightAlign).toUtf8() + '\n';
    result += shown(formatter.plainTextToTextPrinterDocument(plain));
    addSections(formatter, input, result);
    return result;
}

QByteArray outcome(const BbcodeCase &input, const QString &images)
{
    BbCodeParser parser;
    parser.setImagesPath(images);
    parser.setSymbolsPerLine(input.symbolsPerLine);
    parser.parseText(input.text);
    const TextPrinterDocument document = parser.document();
    return shown(document) + document.toHtml(true, SpecialCharacters()).toUtf8() +
           document.toHtml(false, SpecialCharacters()).toUtf8();
}

QByteArray outcome(const QByteArray &expression)
{
    int error = 0;
    const double interpreted = te_interp(expression.constData(), &error);
    double a = 2.5;
    double b = -3;
    const te_variable variables[] = {{"a", &a, 0, nullptr}, {"b", &b, 0, nullptr}};
    const QByteArray withNames = QByteArray(expression).replace("10", "a").replace("2", "b");
    int compileError = 0;
    const std::unique_ptr<te_expr, void (*)(te_expr *)> compiled(
        te_compile(withNames.constData(), variables, 2, &compileError), te_free);
    // The sign of what is no number is the machine's.
    const auto number = [](double value) {
        return std::isnan(value) ? QByteArray("nan") : QByteArray::number(value, 'g', 17);
    };
    return number(interpreted) + ' ' + QByteArray::number(error) + ' ' +
           (compiled ? number(te_eval(compiled.get())) : QByteArray("-")) + ' ' +
           QByteArray::number(compileError);
}

QByteArray outcomeOf(Generator::Kind kind, Generator &generator, const QString &examples)
{
    if (kind == Generator::Template) {
        const TemplateCase input = generator.templateCase();
        return outcome(input, generator.templateCase().document,
                       examples + QLatin1String("/symbols"));
    }
    if (kind == Generator::Receipt) {
        const TemplateCase input = generator.receiptCase();
        return outcome(input, generator.receiptCase().document,
                       examples + QLatin1String("/symbols"));
    }
    if (kind == Generator::Bbcode)
        return outcome(generator.bbcodeCase(), examples + QLatin1String("/images"));
    return outcome(generator.expression());
}

struct KindOption
{
    Generator::Kind kind;
    const char *name;
    const char *fallback;
};
constexpr KindOption kinds[] = {{Generator::Template, "templates", "120000"},
                                {Generator::Receipt, "receipts", "120000"},
                                {Generator::Bbcode, "bbcode", "120000"},
                                {Generator::Expression, "expressions", "400000"}};

}  // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Prints a digest of what the library makes of each generated case."));
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("seed"), QStringLiteral("Of the generator."), QStringLiteral("number"),
          QStringLiteral("1")},
         {QStringLiteral("from"), QStringLiteral("Number of the first case."),
          QStringLiteral("number"), QStringLiteral("0")},
         {QStringLiteral("show"), QStringLiteral("Print all of it instead of a digest.")}});
    for (const KindOption &kind : kinds)
        parser.addOption({QLatin1String(kind.name), QStringLiteral("Number of such cases."),
                          QStringLiteral("count"), QLatin1String(kind.fallback)});
    parser.process(application);

    MarkTranslator translator;
    _translator = &translator;
    QCoreApplication::installTranslator(&translator);
    qInstallMessageHandler(keepLog);
    QTextStream output(stdout);
    const unsigned first = parser.value(QStringLiteral("from")).toUInt();
    for (const KindOption &kind : kinds) {
        const unsigned count = parser.value(QLatin1String(kind.name)).toUInt();
        for (unsigned number = first; number < first + count; ++number) {
            Generator generator(parser.value(QStringLiteral("seed")).toUInt(), kind.kind, number);
            QByteArray log;
            _log = &log;
            QByteArray result =
                outcomeOf(kind.kind, generator, QStringLiteral(PRINTERSLIB_EXAMPLES));
            _log = nullptr;
            result += log;
            if (parser.isSet(QStringLiteral("show")))
                result.replace('\0', "\\0");  // behind which the text would end
            else
                result = QCryptographicHash::hash(result, QCryptographicHash::Md5).toHex();
            output << kind.name << ' ' << number << ' ' << QString::fromUtf8(result) << '\n';
        }
    }
    qInstallMessageHandler(nullptr);
    return 0;
}
