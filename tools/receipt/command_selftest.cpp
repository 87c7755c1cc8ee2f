#include <QDate>
#include <QFileInfo>
#include <QRegularExpression>

#include "answerinput.h"
#include "commands.h"
#include "interrupt.h"
#include "jobreport.h"
#include "jobrunner.h"
#include "outputfile.h"
#include "paper.h"
#include "printermodel.h"
#include "printeroption.h"
#include "selftest.h"
#include "selftestfindings.h"
#include "streamdestination.h"
#include "support.h"
#include "terminaltext.h"

namespace {

using printerslib::drivers::EncodedDocument;
using printerslib::drivers::PrinterAddress;
using printerslib::drivers::PrintJobResult;
using printerslib::drivers::PrintNote;
using printerslib::drivers::PrintTarget;

// In lines of up to 79 characters, as a terminal shows them.
const char description[] =
    R"(Prints all that a printer's model is known for: a ruler, the printer's fonts
and formats, its code pages with the letters from 80 to FF, a picture and codes
in each way in which it may take them, a ladder through which the cutter cuts,
and each cut; or writes that to the file of "--to file:PATH". Then it asks what
the paper shows. What is other than in the model's data becomes a file of
models, for --models, of which --output gives the name; without that it goes to
standard output. Questions are asked on standard error, and an empty answer
says nothing.

A file of --answers has a line "question: answer" for each question that is to
be answered, such as "ruler: 512"; "#" begins a comment. With it nothing is
asked.

Exit status: 0 printed, and the answers make sense; 1 a file or an answer is
wrong; 2 wrong usage; 3 the printer didn't confirm it; 4 it isn't printed; 5
only in part.)";

struct Options
{
    const QCommandLineOption paper{
        QStringLiteral("paper"),
        QStringLiteral("The model's paper type, from 0; default: the widest."),
        QStringLiteral("N")};
    const QCommandLineOption only{
        QStringLiteral("only"),
        QStringLiteral("Parts of the test, with commas between them: %1. "
                       "Default: all.")
            .arg(tool::SelfTestPlan::partNames().join(QStringLiteral(", "))),
        QStringLiteral("PARTS")};
    const QCommandLineOption pages{
        QStringLiteral("pages"),
        QStringLiteral("Numbers of code pages to print instead of those that the model is known "
                       "to have, such as 0,16-19 or 0-255: firmwares have others."),
        QStringLiteral("NUMBERS")};
    const QCommandLineOption drawer{
        QStringLiteral("open-drawer"),
        QStringLiteral("Open the drawer at this pin, too, 2 or 5; may be given twice. Default: "
                       "none is opened."),
        QStringLiteral("PIN")};
    const QCommandLineOption answers{QStringLiteral("answers"),
                                     QStringLiteral("A file of answers; - is standard input."),
                                     QStringLiteral("FILE")};
    const QCommandLineOption noQuestions{QStringLiteral("no-questions"),
                                         QStringLiteral("Print, and ask nothing.")};
    const QCommandLineOption noPrint{
        QStringLiteral("no-print"),
        QStringLiteral("Print nothing, and ask what the paper of a test before shows.")};
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral("The file of models that is written, if anything differs."),
        QStringLiteral("FILE")};
    const QCommandLineOption force{QStringLiteral("force"),
                                   QStringLiteral("Replace a file that is there.")};
};

/// Numbers of code pages; nothing if they are none.
std::optional<QVector<int>> numbersOf(const QString &text)
{
    constexpr int last = 255;
    static const QRegularExpression form(QStringLiteral("\\A([0-9]{1,3})(?:-([0-9]{1,3}))?\\z"));
    QVector<int> numbers;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString &part : parts) {
        const QRegularExpressionMatch match = form.match(part.trimmed());
        const int first = match.captured(1).toInt();
        const int end = match.captured(2).isEmpty() ? first : match.captured(2).toInt();
        if (!match.hasMatch() || end < first || end > last)
            return std::nullopt;
        for (int number = first; number <= end; ++number)
            numbers.append(number);
    }
    return numbers;
}

bool choosePages(const QCommandLineParser &parser, const Options &options, tool::SelfTestPlan &plan)
{
    if (!parser.isSet(options.pages))
        return true;
    const auto numbers = numbersOf(parser.value(options.pages));
    if (!numbers) {
        tool::complain(QStringLiteral("--pages: \"%1\" is none of numbers from 0 to 255, such as "
                                      "0,16-19")
                           .arg(parser.value(options.pages)));
        return false;
    }
    plan.choosePages(*numbers);
    return true;
}

bool chooseParts(const QCommandLineParser &parser, const Options &options, tool::SelfTestPlan &plan)
{
    if (!parser.isSet(options.only))
        return true;
    const QStringList known = tool::SelfTestPlan::partNames();
    const QStringList parts = parser.value(options.only).split(QLatin1Char(','));
    for (const QString &part : parts) {
        if (known.contains(part))
            continue;
        tool::complain(QStringLiteral("--only: \"%1\" is none of %2")
                           .arg(part, known.join(QStringLiteral(", "))));
        return false;
    }
    plan.keepOnly(parts);
    return true;
}

bool chooseDrawers(const QCommandLineParser &parser, const Options &options,
                   tool::SelfTestPlan &plan)
{
    constexpr int knownPins[] = {2, 5};
    QStringList pins = parser.values(options.drawer);
    for (const int pin : knownPins) {
        if (pins.removeAll(QString::number(pin)) > 0)
            plan.pins.append(pin);
    }
    if (!pins.isEmpty())
        tool::complain(
            QStringLiteral("--open-drawer: \"%1\" is none of 2, 5").arg(pins.constFirst()));
    if (!plan.pins.isEmpty() && !plan.opensDrawers()) {
        tool::complain(QStringLiteral("--open-drawer: %1 has no command that opens one")
                           .arg(plan.profile().modelId()));
        return false;
    }
    return pins.isEmpty();
}

/// The target of the options. Complains, and gives nothing and the exit status, if there is none.
std::optional<tool::SelfTestPlan> planOf(const QCommandLineParser &parser, const Options &options,
                                         int &status)
{
    status = tool::BadInput;
    const auto models = tool::modelsOf(parser);
    if (!models)
        return std::nullopt;
    status = tool::WrongUsage;
    const auto model = tool::findModel(*models, parser.value(tool::modelOption()));
    if (!model)
        return std::nullopt;
    int paper = receiptpreview::widestPaperOf(*model);
    if (parser.isSet(options.paper)) {
        const auto chosen = tool::numberOf(parser, options.paper, 0, model->paperTypes().lastKey());
        if (!chosen)
            return std::nullopt;
        paper = *chosen;
    }
    tool::SelfTestPlan plan(*models, PrintTarget(*models->profile(model->id()), *model, paper),
                            paper);
    plan.isPaperChosen = parser.isSet(options.paper);
    if (!choosePages(parser, options, plan) || !chooseParts(parser, options, plan) ||
        !chooseDrawers(parser, options, plan))
        return std::nullopt;
    return plan;
}

/// What the test is printed on; nothing with --no-print. Complains, and gives false, if there is
/// none.
bool readPrinter(const QCommandLineParser &parser, const Options &options,
                 std::optional<PrinterAddress> &printer)
{
    if (parser.isSet(options.noPrint))
        return true;
    if (!parser.isSet(tool::printerOption())) {
        tool::complain(
            QStringLiteral("selftest needs --to URL, the printer, or a file of --config that names "
                           "it; or --no-print"));
        return false;
    }
    printer = tool::printerAddressOf(parser, tool::printerOption());
    return printer.has_value();
}

/// Complains and gives false for options that contradict each other.
bool areTogether(const QCommandLineParser &parser, const Options &options)
{
    for (const QCommandLineOption &other : {options.answers, options.noPrint, options.output}) {
        if (!parser.isSet(options.noQuestions) || !parser.isSet(other))
            continue;
        tool::complain(
            QStringLiteral("--no-questions doesn't go with --%1").arg(other.names().constFirst()));
        return false;
    }
    return true;
}

/// Complains and gives false if a file would be lost.
bool mayWrite(const QCommandLineParser &parser, const Options &options)
{
    const QString file = parser.value(options.output);
    if (file.isEmpty() || parser.isSet(options.force) || !QFileInfo::exists(file))
        return true;
    tool::complain(tool::isThereText(file));
    return false;
}

/// "self test of CUSTOM_VKP_80, 55324 bytes"
QString testText(const tool::JobOrder &order)
{
    return QStringLiteral("self test of %1, %2 bytes")
        .arg(order.profile.modelId())
        .arg(order.document.bytes.size());
}

/// Gives the exit status, and whether there is a paper to be asked about.
int deliver(const tool::JobOrder &order, bool &isOut)
{
    if (order.address.kind() == PrinterAddress::Kind::File) {
        isOut = tool::StreamDestination(order.address.path()).take(order.document.bytes);
        return isOut ? tool::Success : tool::BadInput;
    }
    const Interrupt interrupt;
    tool::JobRunner runner(order, interrupt);
    const PrintJobResult result = runner.run();
    isOut = result.isSent() && !interrupt.hasCome();
    return tool::reportJob(order, result, testText(order), false);
}

int print(const QCommandLineParser &parser, const tool::SelfTestPlan &plan,
          const PrinterAddress &printer, bool &isOut)
{
    const EncodedDocument document = tool::selfTestOf(plan);
    if (!document.error.isEmpty()) {
        tool::complain(document.error);
        return tool::BadInput;
    }
    for (const PrintNote &note : document.notes) {
        if (note.isLoss)
            tool::complain(QStringLiteral("section %1: %2").arg(note.block).arg(note.text));
    }
    return deliver({document, plan.profile(), printer, tool::jobOptionsOf(parser)}, isOut);
}

void say(const QString &line)
{
    terminaltext::writeLine(stderr, line);
}

/// Asks until an answer makes sense. Gives false at the end of the input.
bool ask(const tool::SelfTestQuestion &question, tool::AnswerInput &input,
         tool::SelfTestFindings &findings)
{
    say(QString());
    for (const QString &line : question.text)
        say(line);
    for (;;) {
        const auto answer = input.ask(question.key + QStringLiteral(": "));
        if (!answer)
            return false;
        const QString fault = findings.answer(question.key, *answer);
        if (fault.isEmpty())
            return true;
        say(fault);
    }
}

/// Gives false, after a message, behind an interrupt.
bool askAll(const QVector<tool::SelfTestQuestion> &questions, tool::SelfTestFindings &findings)
{
    tool::AnswerInput input;
    say(QStringLiteral("What does the paper show? An empty line says nothing."));
    for (const tool::SelfTestQuestion &question : questions) {
        if (!ask(question, input, findings))
            break;
    }
    if (input.isInterrupted())
        tool::complain(QStringLiteral("cancelled"));
    return !input.isInterrupted();
}

bool readAnswers(const QCommandLineParser &parser, const Options &options,
                 const QVector<tool::SelfTestQuestion> &questions, tool::SelfTestFindings &findings)
{
    const QString file = parser.value(options.answers);
    const auto text = tool::readText(file);
    QString error;
    if (!text)
        return false;
    if (tool::readAnswers(*text, findings, questions, &error))
        return true;
    tool::complain(QStringLiteral("%1:%2").arg(file, error));
    return false;
}

int writeFindings(const tool::SelfTestPlan &plan, const tool::SelfTestFindings &findings,
                  const QString &output)
{
    const QString model = plan.profile().modelId();
    const QJsonObject changes = findings.changes();
    if (changes.isEmpty()) {
        say(QStringLiteral("Nothing differs from what is known of %1.").arg(model));
        return tool::Success;
    }
    const QByteArray file =
        tool::SelfTestFindings::fileOf(model, changes, QDate::currentDate().toString(Qt::ISODate));
    if (!tool::writeLines(output, tool::linesOf(file)))
        return tool::BadInput;
    if (!output.isEmpty())
        say(QStringLiteral("%1: what differs from what is known of %2; use it by --models")
                .arg(output, model));
    return tool::Success;
}

}  // namespace

int runSelfTest(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions(tool::printerOptions());
    parser.addOptions(tool::printerModelOptions());
    parser.addOptions({options.paper, options.only, options.pages, options.drawer, options.answers,
                       options.noQuestions, options.noPrint, options.output, options.force});
    // What became of the job is told in words alone.
    constexpr int waitAndOneWay = 2;
    parser.addOptions(tool::jobOptions().mid(0, waitAndOneWay));
    if (const auto status =
            tool::parseForPrinter(parser, QStringLiteral("selftest"), arguments, 0, 0))
        return *status;
    int status = tool::Success;
    const auto plan = planOf(parser, options, status);
    if (!plan)
        return status;
    std::optional<PrinterAddress> printer;
    if (!areTogether(parser, options) || !readPrinter(parser, options, printer))
        return tool::WrongUsage;
    if (!mayWrite(parser, options))
        return tool::BadInput;
    const QVector<tool::SelfTestQuestion> questions = tool::questionsOf(*plan);
    tool::SelfTestFindings findings(*plan);
    // What is wrong with the answers is told before paper is spent.
    if (parser.isSet(options.answers) && !readAnswers(parser, options, questions, findings))
        return tool::BadInput;
    bool isOut = true;
    status = printer ? print(parser, *plan, *printer, isOut) : int(tool::Success);
    if (!isOut || parser.isSet(options.noQuestions))
        return status;
    if (!parser.isSet(options.answers) && !askAll(questions, findings))
        return tool::BadInput;
    const int written = writeFindings(*plan, findings, parser.value(options.output));
    return written == tool::Success ? status : written;
}
