#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>
#include <memory>

#include "bbcodepictures.h"
#include "commands.h"
#include "dataschema.h"
#include "documentfile.h"
#include "folderoptions.h"
#include "forms.h"
#include "language.h"
#include "lineoptions.h"
#include "lintpaper.h"
#include "modeltable.h"
#include "needs.h"
#include "printoptions.h"
#include "progressline.h"
#include "support.h"
#include "templatefile.h"
#include "templatelint.h"
#include "watch.h"

namespace {

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrintTarget;
using templatelint::CodeKind;
using templatelint::Finding;
using templatelint::Form;
using templatelint::Rule;
using templatelint::Severity;

struct NamedForm
{
    const char *name;
    const char *note;
    Form form;
};
constexpr NamedForm forms[] = {
    {"document", "for a printer", Form::Document},
    {"text", "", Form::Text},
    {"html", "", Form::Html},
};

struct Options
{
    const QCommandLineOption data{
        QStringLiteral("data"),
        QStringLiteral("The document that fills the templates, a JSON file; - is standard input. "
                       "Without it figures, sums and what else depends on values aren't checked; "
                       "standard error says so."),
        QStringLiteral("DATA.json")};
    const QCommandLineOption codePage = tool::codePageOption();
    const QCommandLineOption symbols = tool::symbolsOption();
    const QCommandLineOption images = tool::imagesOption(QStringLiteral("that of the text"));
    const QCommandLineOption fiscal{
        QStringLiteral("fiscal"),
        QStringLiteral("The client cuts the templates at their fiscal markers; each piece is "
                       "checked by itself.")};
    const QCommandLineOption allModels{
        QStringLiteral("all-models"),
        QStringLiteral("Instead of findings print a table of what each paper of each model makes "
                       "of the template: the lines that wrap, and what is lost. With --strict exit "
                       "status 1 if anything does or is. Without --data all values are empty.")};
    const QCommandLineOption json = tool::jsonOption();
    const QCommandLineOption strict{QStringLiteral("strict"),
                                    QStringLiteral("Exit status 1 for warnings, too.")};
    const QCommandLineOption explain{
        QStringLiteral("explain"),
        QStringLiteral("Explain a rule, with an example that is wrong and one that is right; with "
                       "--language also in German or Russian."),
        QStringLiteral("RULE")};
};

QString translated(const char *text)
{
    return QCoreApplication::translate("LintRule", text);
}

QString description()
{
    QString text = QStringLiteral(
        "Says what is wrong in templates and in texts in BBCode, as \"file:line:column: "
        "error|warning|note: message "
        "[rule]\". Lines and columns count from 1, columns in UTF-16 units as editors do. Files "
        "keep their order, and their findings are sorted. With --language, messages and rules are "
        "in "
        "German or Russian; severities and rules keep their names. Exit status: 0 without errors, "
        "1 with "
        "errors (--strict: or warnings) and for files that can't be read, 2 for wrong "
        "usage.\n\nRules:");
    for (const Rule &rule : templatelint::rules())
        text += QStringLiteral("\n  %1 %2 %3")
                    .arg(QLatin1String(rule.name), -22)
                    .arg(nameOf(rule.severity), -8)
                    .arg(translated(rule.summary));
    return text;
}

QString indented(const char *text)
{
    QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("    "))
        .join(QLatin1Char('\n'));
}

/// The severity in an explanation. In findings it stays English: programs read them.
constexpr const char *severities[] = {
    QT_TRANSLATE_NOOP("LintRule", "error"),
    QT_TRANSLATE_NOOP("LintRule", "warning"),
    QT_TRANSLATE_NOOP("LintRule", "note"),
};

int explain(const QString &name)
{
    const Rule *rule = templatelint::findRule(name);
    if (rule == nullptr) {
        QStringList names;
        for (const Rule &row : templatelint::rules())
            names.append(QLatin1String(row.name));
        const auto nearest = templatelint::nearestName(name, names);
        tool::complain(QStringLiteral("--explain: there is no rule \"%1\"; %2")
                           .arg(name, nearest ? QStringLiteral("did you mean \"%1\"?").arg(*nearest)
                                              : QStringLiteral("see \"receipt lint --help\"")));
        return tool::WrongUsage;
    }
    tool::printOwn(QStringLiteral("%1 (%2): %3\n\n%4\n")
                       .arg(QLatin1String(rule->name),
                            translated(severities[static_cast<int>(rule->severity)]),
                            translated(rule->summary), translated(rule->why)));
    QString conditions;
    if (*rule->document != '\0')
        conditions += translated(QT_TRANSLATE_NOOP("LintRule", ", with --data %1"))
                          .arg(QLatin1String(rule->document));
    if (*rule->arguments != '\0')
        conditions += translated(QT_TRANSLATE_NOOP("LintRule", ", with %1"))
                          .arg(QLatin1String(rule->arguments));
    tool::printOwn(translated(QT_TRANSLATE_NOOP("LintRule", "Wrong%1:")).arg(conditions));
    tool::printOwn(indented(rule->wrong));
    tool::printOwn(translated(QT_TRANSLATE_NOOP("LintRule", "Right:")));
    tool::printOwn(indented(rule->right));
    return tool::Success;
}

/// Takes over what a line has to fit into. Complains and gives false if that can't be told.
bool readPaper(const QCommandLineParser &parser, templatelint::Options &result)
{
    const auto line = tool::lineOf(parser);
    if (!line)
        return false;
    result.codeFault = tool::drawingFaultOf;
    if (line->paper) {
        result.paper = tool::lintPaperOf(*line->paper);
        const PrintTarget target = tool::targetOf(*line->paper->model, *line->paper);
        result.codeFault = [target](CodeKind kind, const QByteArray &payload) {
            return tool::codeFaultOf(kind, payload, target);
        };
    } else if (line->width)
        result.paper = templatelint::Paper{*line->width, {}, QString(), true};
    return true;
}

/// Takes over the printer's character set. Complains and gives false if there is none of that name.
bool readCodePage(const QCommandLineParser &parser, const Options &options,
                  templatelint::Options &result)
{
    if (!parser.isSet(tool::modelOption()) && !parser.isSet(options.codePage))
        return true;
    result.codePage = tool::codePageOf(parser);
    return result.codePage != nullptr;
}

/// Prints the findings of all templates, and keeps in mind how bad they are.
class FindingPrinter
{
public:
    FindingPrinter(bool json, bool hasData) : m_json(json), m_hasData(hasData) {}

    void add(const QString &file, const QStringList &lines, const QVector<Finding> &findings)
    {
        m_lacksData = m_lacksData || (!m_hasData && haveValues(lines));
        m_count += findings.size();
        for (const Finding &finding : findings) {
            m_worst = std::min(m_worst, finding.severity);
            if (m_json)
                m_array.append(jsonOf(file, finding));
            else
                tool::print(lineOf(file, finding));
        }
    }
    void add(const QString &file, const QVector<tool::PaperVerdict> &verdicts, bool hasTitle)
    {
        if (hasTitle && !m_json)
            tool::print(file + QLatin1Char(':'));
        if (!m_json)
            tool::printVerdicts(verdicts);
        for (const tool::PaperVerdict &verdict : verdicts) {
            if (m_json)
                m_array.append(tool::jsonOf(file, verdict));
            if (verdict.isClean())
                continue;
            ++m_count;
            m_worst = std::min(m_worst, Severity::Warning);
        }
    }
    int count() const { return m_count; }
    /// @return the exit status
    int finish(bool strict) const
    {
        if (m_json)
            tool::printContent(tool::linesOf(QJsonDocument(m_array).toJson()));
        else if (m_lacksData)
            tool::complain(translated(QT_TRANSLATE_NOOP(
                "LintRule", "figures and sums aren't checked without data: --data DATA.json")));
        return m_worst <= (strict ? Severity::Warning : Severity::Error) ? tool::BadInput
                                                                         : tool::Success;
    }

private:
    static bool haveValues(const QStringList &lines)
    {
        const templatelint::Needs needs = templatelint::needsOf(lines, {});
        return needs.entries || !needs.values.isEmpty();
    }
    static QString lineOf(const QString &file, const Finding &finding)
    {
        return QStringLiteral("%1:%2:%3: ").arg(file).arg(finding.line).arg(finding.column) +
               nameOf(finding.severity) + QStringLiteral(": ") + finding.message +
               QStringLiteral(" [%1]").arg(QLatin1String(finding.rule->name));
    }
    static QJsonObject jsonOf(const QString &file, const Finding &finding)
    {
        return {{QStringLiteral("file"), file},
                {QStringLiteral("line"), finding.line},
                {QStringLiteral("column"), finding.column},
                {QStringLiteral("severity"), nameOf(finding.severity)},
                {QStringLiteral("rule"), QLatin1String(finding.rule->name)},
                {QStringLiteral("message"), finding.message}};
    }

    bool m_json;
    bool m_hasData;
    Severity m_worst = Severity::Note;
    int m_count = 0;
    bool m_lacksData = false;  ///< and who reads the findings has to know
    QJsonArray m_array;
};

/// What the command line asks for.
struct Task
{
    QStringList templates;
    const QTextCodec *codec = nullptr;
    QString data;
    QString symbols;
    QString images;
    templatelint::Options options;
    std::optional<printerslib::drivers::PrinterModels> models;        ///< a table of all these
    QHash<QString, printerslib::drivers::PrintOptions> printOptions;  ///< of these, by their ids
    bool json = false;
    bool strict = false;
    bool watches = false;
};

/// Looks for the pictures of a BBCode text, each once.
void findPictures(const QString &text, const QString &folder, Task &task, QStringList &companions)
{
    if (!templatelint::isBbCode(text.split(QLatin1Char('\n'))))
        return;
    const QVector<tool::BbCodePicture> pictures = tool::picturesOf(text, folder);
    const auto found = std::make_shared<QHash<QString, templatelint::FoundPicture>>();
    for (const tool::BbCodePicture &picture : pictures) {
        companions.append(picture.pattern);
        found->insert(picture.name, {picture.files, picture.fault});
    }
    task.options.pictureOf = [folder, found](const QString &name) {
        if (!found->contains(name)) {
            const tool::BbCodePicture picture = tool::pictureOf(name, folder);
            found->insert(name, {picture.files, picture.fault});
        }
        return found->value(name);
    };
}

/// Complains and gives false for what can't be printed: the library would hang on it.
bool canBePrinted(const QString &file, const QStringList &lines, const Task &task)
{
    const PrinterDocument document = task.options.document.value_or(PrinterDocument());
    const auto complain = [&file](int line, int column, const QString &message) {
        tool::complain(QStringLiteral("%1:%2:%3: %4").arg(file).arg(line).arg(column).arg(message));
        return false;
    };
    if (const auto endless =
            templatelint::endlessValueOf(lines, document, templatelint::Filling::Receipt))
        return complain(endless->line, endless->column, endless->message);
    const auto symbols =
        templatelint::forbiddenSymbolFile(lines, document, task.options.symbolFolder);
    return !symbols || complain(symbols->line, symbols->column, symbols->fault);
}

/// Prints a template's table. Complains and gives false if there is none.
bool tryModels(const QString &file, const QStringList &lines, const Task &task,
               FindingPrinter &printer)
{
    if (!canBePrinted(file, lines, task))
        return false;
    tool::ProgressLine line(QStringLiteral("trying all models"));
    const QString images = task.images.isEmpty() ? QFileInfo(file).path() : task.images;
    const auto verdicts =
        tool::verdictsOf(lines, task.options, *task.models, images, task.printOptions,
                         [&line](qint64 done, qint64 all) { line.show(done, all); });
    line.clear();
    printer.add(file, verdicts, task.templates.size() > 1);
    return true;
}

tool::WatchedRun run(Task task)
{
    QStringList companions;
    if (!task.data.isEmpty()) {
        task.options.document = tool::readDocument(task.data);
        if (!task.options.document)
            return {tool::BadInput, companions};
    }
    FindingPrinter printer(task.json, task.options.document.has_value());
    tool::ProgressLine line(QStringLiteral("checking"));
    qint64 fileNumber = 0;
    bool isRead = true;
    for (const QString &file : qAsConst(task.templates)) {
        const auto text = tool::readTemplate(file, *task.codec);
        isRead = isRead && text;
        if (!text)
            continue;
        const QString folder = task.symbols.isEmpty() ? QFileInfo(file).path() : task.symbols;
        task.options.symbolFolder = folder;
        tool::useSymbolFolder(folder);
        task.options.progress = [&](qint64 done, qint64 all) {
            line.show(fileNumber * all + done, task.templates.size() * all);
        };
        const QStringList lines = text->split(QLatin1Char('\n'));
        if (const auto symbols = templatelint::symbolFileOf(lines, folder))
            companions.append(symbols->path);
        findPictures(*text, task.images.isEmpty() ? QFileInfo(file).path() : task.images, task,
                     companions);
        if (task.models) {
            line.clear();
            isRead = tryModels(file, lines, task, printer) && isRead;
            continue;
        }
        const auto findings = templatelint::lint(lines, task.options);
        ++fileNumber;
        line.clear();
        printer.add(file, lines, findings);
    }
    const int status = printer.finish(task.strict);
    // Who watches has to see that a template is clean now.
    if (task.watches && isRead)
        tool::complain(QStringLiteral("findings: %1").arg(printer.count()));
    std::fflush(stdout);
    companions.removeDuplicates();
    return {isRead ? status : tool::BadInput, companions};
}

/// Whether none of the templates is a document in the place that other commands have for it.
bool areTemplates(const QStringList &files)
{
    const auto document = std::find_if(files.cbegin(), files.cend(), [](const QString &file) {
        return file.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
    });
    if (document == files.cend())
        return true;
    tool::complain(QStringLiteral("lint: \"%1\" is no template; a document is named with --data")
                       .arg(*document));
    return false;
}

/// Takes over the models of a table. Complains and gives false for options that choose another
/// paper, or none.
bool readModels(const QCommandLineParser &parser, const Options &options, Task &task)
{
    if (!parser.isSet(options.allModels))
        return true;
    if (task.options.paper || task.options.form != Form::Document) {
        tool::complain(QStringLiteral("--all-models excludes --model, --width and --as"));
        return false;
    }
    task.models = tool::modelsOf(parser);
    if (!task.models || !parser.isSet(options.codePage))
        return task.models.has_value();
    const QStringList ids = task.models->modelIds();
    for (const QString &id : ids) {
        const auto printOptions =
            tool::printOptionsOfEach(parser, task.models->profile(id).value_or(PrinterProfile()));
        if (!printOptions)
            return false;
        task.printOptions.insert(id, *printOptions);
    }
    return true;
}

std::optional<Task> taskOf(const QCommandLineParser &parser, const Options &options)
{
    Task task;
    task.templates = parser.positionalArguments();
    task.data = parser.value(options.data);
    task.symbols = parser.value(options.symbols);
    task.images = parser.value(options.images);
    task.options.splitsFiscalParts = parser.isSet(options.fiscal);
    task.json = parser.isSet(options.json);
    task.strict = parser.isSet(options.strict);
    task.watches = parser.isSet(tool::watchOption());
    const QTextCodec *codec = tool::codecOf(parser);
    const NamedForm *form = tool::formOf(parser, forms);
    if (!areTemplates(task.templates) || codec == nullptr || form == nullptr ||
        !readPaper(parser, task.options) || !readCodePage(parser, options, task.options) ||
        !tool::isFolder(parser, options.symbols) || !tool::isFolder(parser, options.images) ||
        !tool::readsInputOnce(task.templates + QStringList(task.data)) ||
        !tool::useDataSchema(parser, !task.data.isEmpty()) || !tool::useLanguage(parser))
        return std::nullopt;
    task.codec = codec;
    task.options.form = form->form;
    if (!readModels(parser, options, task))
        return std::nullopt;
    return task;
}

/// The status where the command ends with it.
std::optional<int> parseCommandLine(QCommandLineParser &parser, const Options &options,
                                    const QStringList &arguments)
{
    parser.setApplicationDescription(description());
    parser.addOptions({options.data, tool::formOption(forms)});
    parser.addOptions(tool::lineOptions());
    parser.addOptions({tool::modelsFileOption(), options.codePage, options.symbols, options.images,
                       options.fiscal, options.allModels, options.json, options.strict,
                       options.explain, tool::dataSchemaOption(), tool::codecOption(),
                       tool::languageOption(), tool::watchOption()});
    parser.addPositionalArgument(QStringLiteral("TEMPLATE"),
                                 QStringLiteral("The templates; - is standard input."),
                                 QStringLiteral("TEMPLATE..."));
    if (const auto status = tool::parse(parser, QStringLiteral("lint"), arguments, 0, -1))
        return status;
    if (parser.isSet(options.explain))
        return tool::useLanguage(parser) ? explain(parser.value(options.explain))
                                         : tool::WrongUsage;
    if (!parser.positionalArguments().isEmpty())
        return std::nullopt;
    tool::complain(QStringLiteral("lint: a template is expected; see \"receipt lint --help\""));
    return tool::WrongUsage;
}

}  // namespace

int runLint(const QStringList &arguments)
{
    tool::useLanguageOfRules(arguments);
    QCommandLineParser parser;
    const Options options;
    if (const auto status = parseCommandLine(parser, options, arguments))
        return *status;
    const auto task = taskOf(parser, options);
    if (!task)
        return tool::WrongUsage;
    if (!task->watches)
        return run(*task).status;
    QStringList files = task->templates;
    if (!task->data.isEmpty())
        files += QStringList(task->data) + tool::dataSchemaFiles();
    return tool::runAndWatch(files, [&task] { return run(*task); });
}
