#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>

#include "commands.h"
#include "documentfile.h"
#include "language.h"
#include "printermodel.h"
#include "progressline.h"
#include "support.h"
#include "templatefile.h"
#include "templatelint.h"
#include "watch.h"

namespace {

using templatelint::Finding;
using templatelint::Form;
using templatelint::Rule;
using templatelint::Severity;

constexpr int mostCharacters = 1000;

struct NamedForm
{
    const char *name;
    Form form;
};
constexpr NamedForm forms[] = {
    {"document", Form::Document},
    {"text", Form::Text},
    {"html", Form::Html},
};

struct Options
{
    const QCommandLineOption data{
        QStringLiteral("data"),
        QStringLiteral("The document that fills the templates, a JSON file; - is standard input. "
                       "Without it what depends on values isn't checked."),
        QStringLiteral("DATA.json")};
    const QCommandLineOption as{
        QStringLiteral("as"),
        QStringLiteral("What the templates are rendered to: document (for a printer; default), "
                       "text or html."),
        QStringLiteral("FORM"), QStringLiteral("document")};
    const QCommandLineOption model{
        QStringLiteral("model"),
        QStringLiteral("The printer: its paper, fonts and characters; see \"receipt models\"."),
        QStringLiteral("ID")};
    const QCommandLineOption paper{QStringLiteral("paper"),
                                   QStringLiteral("The model's paper type; default 0."),
                                   QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption font{
        QStringLiteral("font"),
        QStringLiteral("The model's font of text that chooses none (or font 0, which is the same); "
                       "default 0."),
        QStringLiteral("N"), QStringLiteral("0")};
    const QCommandLineOption width{
        QStringLiteral("width"),
        QStringLiteral("Characters that a line may have, instead of a model's paper."),
        QStringLiteral("N")};
    const QCommandLineOption codePage{
        QStringLiteral("code-page"),
        QStringLiteral("The printer's character set, such as cp437; default with --model: cp866."),
        QStringLiteral("NAME"), QStringLiteral("cp866")};
    const QCommandLineOption symbols{
        QStringLiteral("symbols"),
        QStringLiteral("Folder of the special symbol files; default: that of the template."),
        QStringLiteral("DIR")};
    const QCommandLineOption fiscal{
        QStringLiteral("fiscal"),
        QStringLiteral("The client cuts the templates at their fiscal markers; each piece is "
                       "checked by itself.")};
    const QCommandLineOption json{QStringLiteral("json"),
                                  QStringLiteral("Print the findings as a JSON array.")};
    const QCommandLineOption strict{QStringLiteral("strict"),
                                    QStringLiteral("Exit status 1 for warnings, too.")};
    const QCommandLineOption explain{
        QStringLiteral("explain"),
        QStringLiteral("Explain a rule, with an example that is wrong and one that is right."),
        QStringLiteral("RULE")};
};

QString description()
{
    QString text = QStringLiteral(
        "Says what is wrong in templates, as \"file:line:column: error|warning|note: message "
        "[rule]\". Lines and columns count from 1, columns in UTF-16 units as editors do. Files "
        "keep their order, and their findings are sorted. Exit status: 0 without errors, 1 with "
        "errors (--strict: or warnings) and for files that can't be read, 2 for wrong "
        "usage.\n\nRules:");
    for (const Rule &rule : templatelint::rules())
        text += QStringLiteral("\n  %1 %2 %3")
                    .arg(QLatin1String(rule.name), -22)
                    .arg(nameOf(rule.severity), -8)
                    .arg(QLatin1String(rule.summary));
    return text;
}

QString indented(const char *text)
{
    QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("^")), QStringLiteral("    "))
        .join(QLatin1Char('\n'));
}

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
                       .arg(QLatin1String(rule->name), nameOf(rule->severity),
                            QLatin1String(rule->summary), QLatin1String(rule->why)));
    QStringList conditions;
    if (*rule->document != '\0')
        conditions.append(QStringLiteral(", with --data ") + QLatin1String(rule->document));
    if (*rule->arguments != '\0')
        conditions.append(QStringLiteral(", with ") + QLatin1String(rule->arguments));
    tool::printOwn(
        QStringLiteral("Wrong%1:\n%2\nRight:\n%3")
            .arg(conditions.join(QString()), indented(rule->wrong), indented(rule->right)));
    return tool::Success;
}

/// The form that --as names. Complains and gives nothing if there is none.
std::optional<Form> formOf(const QCommandLineParser &parser, const Options &options)
{
    const auto form = std::find_if(std::begin(forms), std::end(forms), [&](const NamedForm &row) {
        return parser.value(options.as) == QLatin1String(row.name);
    });
    if (form != std::end(forms))
        return form->form;
    tool::complain(QStringLiteral("--as: \"%1\" is none of document, text, html")
                       .arg(parser.value(options.as)));
    return std::nullopt;
}

/// Takes over the paper and the fonts of a model. Complains and gives false if it lacks them.
bool readModel(const QCommandLineParser &parser, const Options &options,
               templatelint::Options &result)
{
    const auto model = tool::findModel(parser.value(options.model));
    if (!model)
        return false;
    const QList<FontInfo> types = model->fontTypes();
    const auto number = tool::numberOf(parser, options.paper, 0, model->paperTypes().lastKey());
    const auto baseFont = tool::numberOf(parser, options.font, 0, types.size() - 1);
    if (!number || !baseFont)
        return false;
    const PaperInfo paper = model->paperType(*number);
    QVector<templatelint::PaperFont> fonts;
    for (const FontInfo &font : types)
        fonts.append({QSize(font.width(), font.height()), font.customSymbols(), font.idAsString()});
    fonts.first() = fonts.at(*baseFont);
    result.paper = templatelint::Paper{
        paper.pointsToLine(), fonts,
        QStringLiteral("%1 with %2 paper").arg(model->id(), paper.caption()), true};
    return true;
}

/// Takes over what a line has to fit into. Complains and gives false if that can't be told.
bool readPaper(const QCommandLineParser &parser, const Options &options,
               templatelint::Options &result)
{
    const bool hasModel = parser.isSet(options.model);
    if (hasModel && parser.isSet(options.width)) {
        tool::complain(QStringLiteral("--width and --model exclude each other"));
        return false;
    }
    if (!hasModel && (parser.isSet(options.paper) || parser.isSet(options.font))) {
        tool::complain(QStringLiteral("--paper and --font need --model"));
        return false;
    }
    if (parser.isSet(options.width)) {
        const auto width = tool::numberOf(parser, options.width, 1, mostCharacters);
        if (width)
            result.paper = templatelint::Paper{*width, {}, QString(), false};
        return width.has_value();
    }
    if (!hasModel)
        return true;
    return readModel(parser, options, result);
}

/// Takes over the printer's character set. Complains and gives false if there is none of that name.
bool readCodePage(const QCommandLineParser &parser, const Options &options,
                  templatelint::Options &result)
{
    if (!parser.isSet(options.model) && !parser.isSet(options.codePage))
        return true;
    result.codePage = tool::findCodePage(parser.value(options.codePage));
    return result.codePage != nullptr;
}

bool readSymbolFolder(const QCommandLineParser &parser, const Options &options)
{
    const QString folder = parser.value(options.symbols);
    if (!parser.isSet(options.symbols) || QFileInfo(folder).isDir())
        return true;
    tool::complain(QStringLiteral("--symbols: \"%1\" is no folder").arg(folder));
    return false;
}

/// Prints the findings of all templates, and keeps in mind how bad they are.
class FindingPrinter
{
public:
    explicit FindingPrinter(bool json) : m_json(json) {}

    void add(const QString &file, const QVector<Finding> &findings)
    {
        m_count += findings.size();
        for (const Finding &finding : findings) {
            m_worst = std::min(m_worst, finding.rule->severity);
            if (m_json)
                m_array.append(jsonOf(file, finding));
            else
                tool::print(lineOf(file, finding));
        }
    }
    int count() const { return m_count; }
    /// @return the exit status
    int finish(bool strict) const
    {
        if (m_json)
            tool::printContent(tool::linesOf(QJsonDocument(m_array).toJson()));
        return m_worst <= (strict ? Severity::Warning : Severity::Error) ? tool::BadInput
                                                                         : tool::Success;
    }

private:
    static QString lineOf(const QString &file, const Finding &finding)
    {
        return QStringLiteral("%1:%2:%3: ").arg(file).arg(finding.line).arg(finding.column) +
               nameOf(finding.rule->severity) + QStringLiteral(": ") + finding.message +
               QStringLiteral(" [%1]").arg(QLatin1String(finding.rule->name));
    }
    static QJsonObject jsonOf(const QString &file, const Finding &finding)
    {
        return {{QStringLiteral("file"), file},
                {QStringLiteral("line"), finding.line},
                {QStringLiteral("column"), finding.column},
                {QStringLiteral("severity"), nameOf(finding.rule->severity)},
                {QStringLiteral("rule"), QLatin1String(finding.rule->name)},
                {QStringLiteral("message"), finding.message}};
    }

    bool m_json;
    Severity m_worst = Severity::Note;
    int m_count = 0;
    QJsonArray m_array;
};

/// What the command line asks for.
struct Task
{
    QStringList templates;
    const QTextCodec *codec = nullptr;
    QString data;
    QString symbols;
    templatelint::Options options;
    bool json = false;
    bool strict = false;
    bool watches = false;
};

tool::WatchedRun run(Task task)
{
    QStringList companions;
    if (!task.data.isEmpty()) {
        task.options.document = tool::readDocument(task.data);
        if (!task.options.document)
            return {tool::BadInput, companions};
    }
    FindingPrinter printer(task.json);
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
        const auto findings = templatelint::lint(lines, task.options);
        ++fileNumber;
        line.clear();
        printer.add(file, findings);
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

std::optional<Task> taskOf(const QCommandLineParser &parser, const Options &options)
{
    Task task;
    task.templates = parser.positionalArguments();
    task.data = parser.value(options.data);
    task.symbols = parser.value(options.symbols);
    task.options.splitsFiscalParts = parser.isSet(options.fiscal);
    task.json = parser.isSet(options.json);
    task.strict = parser.isSet(options.strict);
    task.watches = parser.isSet(tool::watchOption().names().constFirst());
    const auto codec = tool::codecOf(parser);
    const auto form = formOf(parser, options);
    if (!areTemplates(task.templates) || !codec || !form ||
        !readPaper(parser, options, task.options) || !readCodePage(parser, options, task.options) ||
        !readSymbolFolder(parser, options) ||
        !tool::readsInputOnce(task.templates + QStringList(task.data)) ||
        !tool::useLanguage(parser))
        return std::nullopt;
    task.codec = *codec;
    task.options.form = *form;
    return task;
}

}  // namespace

int runLint(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(description());
    parser.addOptions({options.data, options.as, options.model, options.paper, options.font,
                       options.width, options.codePage, options.symbols, options.fiscal,
                       options.json, options.strict, options.explain, tool::codecOption(),
                       tool::languageOption(), tool::watchOption()});
    parser.addPositionalArgument(QStringLiteral("TEMPLATE"),
                                 QStringLiteral("The templates; - is standard input."),
                                 QStringLiteral("TEMPLATE..."));
    if (const auto status = tool::parse(parser, QStringLiteral("lint"), arguments, 0, -1))
        return *status;
    if (parser.isSet(options.explain))
        return explain(parser.value(options.explain));
    if (parser.positionalArguments().isEmpty()) {
        tool::complain(QStringLiteral("lint: a template is expected; see \"receipt lint --help\""));
        return tool::WrongUsage;
    }
    const auto task = taskOf(parser, options);
    if (!task)
        return tool::WrongUsage;
    if (!task->watches)
        return run(*task).status;
    const QStringList files =
        task->data.isEmpty() ? task->templates : task->templates + QStringList(task->data);
    return tool::runAndWatch(files, [&task] { return run(*task); });
}
