#include <QFileInfo>
#include <QJsonDocument>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <optional>

#include "commands.h"
#include "dataschema.h"
#include "dataskeleton.h"
#include "documentfile.h"
#include "outputfile.h"
#include "support.h"
#include "templatefile.h"
#include "wordwrap.h"

namespace {

using templatelint::NeededValue;
using templatelint::Needs;

constexpr int widest = 1000;

struct Options
{
    const QCommandLineOption from{
        QStringLiteral("from"),
        QStringLiteral("A document whose values are taken over, a JSON file; - is standard input. "
                       "What the template hasn't stays behind the rest."),
        QStringLiteral("OLD.json")};
    const QCommandLineOption wrap{
        QStringLiteral("wrap"),
        QStringLiteral(
            "Cut the text of the attribute NAME of --from at word ends into pieces of up "
            "to WIDTH characters, 1 to 1000: NAME_1, NAME_2 and so on, as many as the "
            "template has. May be given several times."),
        QStringLiteral("NAME=WIDTH")};
    const QCommandLineOption schema{
        QStringLiteral("schema"),
        QStringLiteral("Write a JSON Schema of the template's documents instead, for "
                       "--data-schema of other commands and for editors.")};
    const QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral("The file, written whole or not at all; default: standard output."),
        QStringLiteral("FILE")};
    const QCommandLineOption comments{
        QStringLiteral("comments"),
        QStringLiteral("A second file, a text that says of each name what it is to be, and where "
                       "the template has it."),
        QStringLiteral("FILE")};
};

/// What the command line asks for.
struct Task
{
    QString templateFile;
    QString oldFile;
    QMap<QString, int> widths;  ///< of the attributes to be cut
    QString output;
    QString comments;
    const QTextCodec *codec = nullptr;
    bool isSchema = false;
};

/// Takes over which attributes are to be cut. Complains and gives false for what is none.
bool readWidths(const QStringList &wishes, Task &task)
{
    for (const QString &wish : wishes) {
        const QString name = wish.section(QLatin1Char('='), 0, -2);
        bool isNumber = false;
        const int width = wish.section(QLatin1Char('='), -1).toInt(&isNumber);
        if (name.isEmpty() || !isNumber || width < 1 || width > widest) {
            tool::complain(QStringLiteral("--wrap: \"%1\" is no NAME=WIDTH with a width from 1 to "
                                          "%2")
                               .arg(wish)
                               .arg(widest));
            return false;
        }
        if (task.widths.contains(name)) {
            tool::complain(QStringLiteral("--wrap: \"%1\" is given twice").arg(name));
            return false;
        }
        task.widths.insert(name, width);
    }
    return true;
}

/// The attributes of a document and what of them is cut.
class OldData
{
public:
    /// Complains and gives false on failure.
    bool read(const QString &fileName)
    {
        const auto json = tool::readDocumentJson(fileName);
        if (!json || !tool::documentOf(fileName, *json) || !tool::fitsDataSchema(fileName, *json))
            return false;
        m_document = json->object();
        m_attributes = m_document.value(QStringLiteral("attributes")).toObject();
        return true;
    }

    /// Complains and gives false if something can't be cut.
    bool cutTexts(const Task &task, const Needs &needs)
    {
        for (auto width = task.widths.begin(); width != task.widths.end(); ++width) {
            if (!cutText(task, needs, width.key(), width.value()))
                return false;
        }
        return true;
    }

    const QJsonObject &attributes() const { return m_attributes; }
    QJsonValue entries() const { return m_document.value(QStringLiteral("entries")); }
    QJsonValue isCopy() const { return m_document.value(QStringLiteral("isCopy")); }
    /// What is taken over for a name; undefined: nothing.
    QJsonValue value(const QString &name) const
    {
        const QString whole = wholeOf(name);
        return whole.isEmpty() ? m_attributes.value(name) : QJsonValue(m_pieces.value(name));
    }
    bool isCut(const QString &name) const { return m_cut.contains(name); }

private:
    /// The attribute that this name is a piece of; empty if it is none.
    QString wholeOf(const QString &name) const
    {
        static const QRegularExpression piece(QStringLiteral("^(.+)_[1-9][0-9]*$"));
        const QString whole = piece.match(name).captured(1);
        return isCut(whole) ? whole : QString();
    }

    bool cutText(const Task &task, const Needs &needs, const QString &name, int width)
    {
        const auto fails = [&](const QString &fault) {
            tool::complain(QStringLiteral("%1: attributes.%2: %3").arg(task.oldFile, name, fault));
            return false;
        };
        const QJsonValue text = m_attributes.value(name);
        if (!text.isString())
            return fails(text.isUndefined() ? QStringLiteral("is missing, and can't be cut")
                                            : QStringLiteral("is no text, and can't be cut"));
        m_cut.append(name);
        const QStringList names = m_attributes.keys();
        for (const QString &other : names) {
            if (wholeOf(other) == name)
                return fails(QStringLiteral("can't be cut, as there is \"%1\"").arg(other));
        }
        const QStringList pieces = tool::wrappedAtWords(text.toString(), width);
        const int places = placesOf(needs, name);
        if (pieces.size() > places)
            return fails(QStringLiteral("makes %1 pieces of up to %2 characters, and the template "
                                        "has %3")
                             .arg(pieces.size())
                             .arg(width)
                             .arg(placesText(name, places)));
        for (int i = 0; i < pieces.size(); ++i) {
            if (pieces.size() > 1 && tool::readsAsNumber(pieces.at(i)))
                return fails(QStringLiteral("the piece \"%1\" would be read as a number; another "
                                            "width is needed")
                                 .arg(pieces.at(i)));
            m_pieces.insert(pieceName(name, i), pieces.at(i));
        }
        return true;
    }

    static QString pieceName(const QString &name, int index)
    {
        return QStringLiteral("%1_%2").arg(name).arg(index + 1);
    }

    static QString placesText(const QString &name, int places)
    {
        const QString first = pieceName(name, 0);
        if (places < 2)
            return (places == 0 ? QStringLiteral("no <%1>") : QStringLiteral("<%1> only"))
                .arg(first);
        return QStringLiteral("<%1> to <%2> only").arg(first, pieceName(name, places - 1));
    }

    /// How many pieces the template has a tag for, without a gap.
    static int placesOf(const Needs &needs, const QString &name)
    {
        QSet<QString> names;
        for (const NeededValue &value : needs.values)
            names.insert(value.name);
        int count = 0;
        while (names.contains(pieceName(name, count)))
            ++count;
        return count;
    }

    QJsonObject m_document;
    QJsonObject m_attributes;
    QStringList m_cut;
    QMap<QString, QString> m_pieces;
};

void tellNames(const QString &fileName, const QString &what, const QStringList &names)
{
    if (!names.isEmpty())
        tool::complain(
            QStringLiteral("%1: %2: %3").arg(fileName, what, names.join(QStringLiteral(", "))));
}

/// The document that the template needs, with the values that are known.
tool::DataText dataOf(const Task &task, const Needs &needs, const OldData &old)
{
    tool::DataText data;
    QSet<QString> needed;
    QStringList missing;
    for (const NeededValue &value : needs.values) {
        const QJsonValue known = old.value(value.name);
        needed.insert(value.name);
        if (known.isUndefined())
            missing.append(value.name);
        data.attributes.append({value.name, known.isUndefined() ? tool::sampleOf(value) : known});
    }
    QStringList others;
    const QJsonObject &attributes = old.attributes();
    for (auto other = attributes.begin(); other != attributes.end(); ++other) {
        if (needed.contains(other.key()) || old.isCut(other.key()))
            continue;
        others.append(other.key());
        data.attributes.append({other.key(), other.value()});
    }
    const QJsonValue undefined(QJsonValue::Undefined);
    data.entries = old.entries();
    if (data.entries.isUndefined() && needs.entries)
        data.entries = tool::sampleEntries();
    data.isCopy = old.isCopy();
    if (data.isCopy.isUndefined() && needs.copyMark)
        data.isCopy = false;
    if (!task.oldFile.isEmpty()) {
        tellNames(task.oldFile, QStringLiteral("not there, and made up"), missing);
        tellNames(task.oldFile, QStringLiteral("not in the template, and kept"), others);
    }
    return data;
}

/// The lines of what is asked for. Complains and gives nothing where that can't be made.
std::optional<QStringList> linesFor(const Task &task, const Needs &needs, OldData &old)
{
    if (task.isSchema) {
        const QString title = QFileInfo(task.templateFile).fileName();
        return tool::linesOf(QJsonDocument(tool::schemaOf(needs, title)).toJson());
    }
    if (!old.cutTexts(task, needs))
        return std::nullopt;
    return tool::linesOf(dataOf(task, needs, old));
}

int run(const Task &task)
{
    OldData old;
    const auto text = tool::readTemplate(task.templateFile, *task.codec);
    const bool isOldRead = task.oldFile.isEmpty() || old.read(task.oldFile);
    if (!text || !isOldRead)
        return tool::BadInput;
    tool::useSymbolFolder(QStringLiteral("."));
    const Needs needs =
        templatelint::needsOf(text->split(QLatin1Char('\n')), old.attributes().keys());
    const auto lines = linesFor(task, needs, old);
    const bool isWritten =
        lines && tool::writeLines(task.output, *lines) &&
        (task.comments.isEmpty() || tool::writeLines(task.comments, tool::commentsOn(needs)));
    return isWritten ? tool::Success : tool::BadInput;
}

/// Whether the files that are to be written are others than those that are read.
bool keepsFiles(const Task &task)
{
    QStringList outputs{task.output, task.comments};
    outputs.removeAll(QString());
    if (outputs.size() == 2 && !tool::keepsSources({task.comments}, {task.output}))
        return false;
    return tool::keepsSources(
        outputs, QStringList{task.templateFile, task.oldFile} + tool::dataSchemaFiles());
}

}  // namespace

int runData(const QStringList &arguments)
{
    QCommandLineParser parser;
    const Options options;
    parser.setApplicationDescription(
        QStringLiteral("Writes the document that a template needs, as JSON: each name once, with a "
                       "value of the kind that its format asks for, to be replaced by real ones."));
    parser.addOptions({options.from, options.wrap, options.schema, options.output, options.comments,
                       tool::dataSchemaOption(), tool::codecOption()});
    parser.addPositionalArgument(QStringLiteral("TEMPLATE"),
                                 QStringLiteral("The template; - is standard input."));
    if (const auto status = tool::parse(parser, QStringLiteral("data"), arguments, 1, 1))
        return *status;
    Task task;
    task.templateFile = parser.positionalArguments().constFirst();
    task.oldFile = parser.value(options.from);
    task.output = parser.value(options.output);
    task.comments = parser.value(options.comments);
    task.isSchema = parser.isSet(options.schema);
    task.codec = tool::codecOf(parser);
    if (task.codec == nullptr || !readWidths(parser.values(options.wrap), task) ||
        !tool::readsInputOnce({task.templateFile, task.oldFile}) ||
        !tool::useDataSchema(parser, !task.oldFile.isEmpty()))
        return tool::WrongUsage;
    if (!task.widths.isEmpty() && task.oldFile.isEmpty()) {
        tool::complain(QStringLiteral("--wrap needs --from"));
        return tool::WrongUsage;
    }
    if (task.isSchema && !task.oldFile.isEmpty()) {
        tool::complain(QStringLiteral("--schema and --from exclude each other"));
        return tool::WrongUsage;
    }
    return keepsFiles(task) ? run(task) : int(tool::BadInput);
}
