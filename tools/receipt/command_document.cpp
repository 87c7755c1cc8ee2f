#include <printerslib/drivers/escapedhtml.h>

#include <QFileInfo>
#include <QJsonDocument>

#include "cleaning.h"
#include "commands.h"
#include "documentcopy.h"
#include "filling.h"
#include "htmlescaping.h"
#include "language.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/specialcharacters.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/documentfiles.h"
#include "support.h"
#include "templatefile.h"

namespace {

using printerslib::drivers::DocumentFiles;
using printerslib::drivers::EscapedHtml;

constexpr int defaultWidth = 80;

// The library's checksum program looks in the file's own folder; only an absolute path is the same
// file there.
QString absolutePath(const QString &fileName)
{
    return QFileInfo(fileName).absoluteFilePath();
}

QString backupOf(const QString &path)
{
    return path + QLatin1String(".bak");
}

void describeDocumentFile(QCommandLineParser &parser, const QString &description)
{
    parser.setApplicationDescription(description);
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The document file."));
}

/// Parses an action's own arguments. The files beside a document without a name would be those of
/// nobody's, so such a FILE is wrong usage.
std::optional<int> parseAction(QCommandLineParser &parser, const QString &usage,
                               const QStringList &arguments, int count)
{
    const auto status = tool::parse(parser, usage, arguments, count, count);
    if (status || !QFileInfo(parser.positionalArguments().constFirst()).fileName().isEmpty())
        return status;
    tool::complain(QStringLiteral("%1: FILE names no file").arg(usage));
    return tool::WrongUsage;
}

/// Whether a save of this path can be loaded: sha1sum escapes some names, and writes another line
/// then than the load looks for.
bool isSavable(const QString &path)
{
    for (const char character : {'\\', '\n', '\r'}) {
        if (path.contains(QLatin1Char(character))) {
            tool::complain(QStringLiteral("%1: a document can't be saved under a name or in a "
                                          "folder with a backslash or a line break")
                               .arg(path));
            return false;
        }
    }
    return true;
}

/// Complains and gives false where the document's files or their folder aren't the user's own.
bool mayOpen(const QString &path, DocumentFiles::Use use)
{
    const QString fault = DocumentFiles::faultOf(path, use);
    if (!fault.isEmpty())
        tool::complain(fault);
    return fault.isEmpty();
}

/// Saves, and loads what was saved; the save alone doesn't notice a full disk. A load gives what
/// the map form keeps, so that is what is asked for.
bool saveAndLoad(const TextPrinterDocument &document, const QString &path)
{
    if (!mayOpen(path, DocumentFiles::ToSave))
        return false;
    TextPrinterDocument expected;
    expected.setMap(document.toMap());
    TextPrinterDocument loaded;
    const bool written = document.saveToFile(path);
    const bool good = written && readDocumentCopy(path).isGood() &&
                      readDocumentCopy(backupOf(path)).isGood() && loaded.loadFromFile(path) &&
                      loaded == expected;
    if (!good)
        tool::complain(QStringLiteral("%1: the document could not be saved; \"receipt document "
                                      "check\" says what is there")
                           .arg(path));
    return good;
}

int saveDocument(const QStringList &arguments)
{
    QCommandLineParser parser;
    describeDocumentFile(parser,
                         QStringLiteral("Saves the receipt that a template and a document give."));
    parser.addPositionalArgument(QStringLiteral("DATA.json"),
                                 QStringLiteral("The receipt's document; - is standard input."));
    const QCommandLineOption from(QStringLiteral("from"), QStringLiteral("The template."),
                                  QStringLiteral("TEMPLATE"));
    const QCommandLineOption symbols(QStringLiteral("symbols"),
                                     QStringLiteral("Folder of the special symbol files; default: "
                                                    "that of the template."),
                                     QStringLiteral("DIR"));
    parser.addOptions(
        {from, symbols, tool::cleanOption(), tool::codecOption(), tool::languageOption()});
    if (const auto status = parseAction(parser, QStringLiteral("document save"), arguments, 2))
        return *status;
    const QString path = absolutePath(parser.positionalArguments().at(0));
    const QString data = parser.positionalArguments().at(1);
    const QString templateFile = parser.value(from);
    const auto codec = tool::codecOf(parser);
    const auto rules = tool::cleaningRulesOf(parser);
    if (templateFile.isEmpty())
        tool::complain(QStringLiteral("document save: --from is missing"));
    if (templateFile.isEmpty() || !codec || !rules || !isSavable(path) ||
        !tool::readsInputOnce({templateFile, data}) || !tool::useLanguage(parser))
        return tool::WrongUsage;

    tool::useSymbolFolder(parser.isSet(symbols) ? parser.value(symbols)
                                                : QFileInfo(templateFile).absolutePath());
    const auto source = tool::readTemplateAndDocument(templateFile, data, **codec, *rules);
    if (!source)
        return tool::BadInput;
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(source->text);
    return saveAndLoad(formatter.toTextPrinterDocument(source->document), path) ? tool::Success
                                                                                : tool::BadInput;
}

void printText(const TextPrinterDocument &document)
{
    const int width = document.symbolsPerLine() > 0 ? document.symbolsPerLine() : defaultWidth;
    const QList<DocumentBlock> blocks = document.blocks();
    for (DocumentBlock block : blocks) {
        const QStringList lines = block.toStringList(width);
        tool::printContent(lines);
    }
}

void printHtml(const TextPrinterDocument &document)
{
    tool::printContent(
        EscapedHtml::toHtml(document, true, SpecialCharacters()).split(QLatin1Char('\n')));
}

void printUnescapedHtml(const TextPrinterDocument &document)
{
    tool::printContent(document.toHtml(true, SpecialCharacters()).split(QLatin1Char('\n')));
}

void printJson(const TextPrinterDocument &document)
{
    const QJsonDocument json = QJsonDocument::fromVariant(document.toMap());
    tool::printContent({QString::fromUtf8(json.toJson(QJsonDocument::Compact))});
}

struct Form
{
    const char *name;
    void (*print)(const TextPrinterDocument &document);
    void (*printUnescaped)(const TextPrinterDocument &document);  ///< null: there is no such form
};

constexpr Form forms[] = {
    {"text", printText, nullptr},
    {"html", printHtml, printUnescapedHtml},
    {"json", printJson, nullptr},
};

int showDocument(const QStringList &arguments)
{
    QCommandLineParser parser;
    describeDocumentFile(parser, QStringLiteral("Shows the document that a load gives."));
    const QCommandLineOption as(QStringLiteral("as"),
                                QStringLiteral("text (default), html, or json (the map form)."),
                                QStringLiteral("form"), QStringLiteral("text"));
    parser.addOptions({as, tool::unescapedOption()});
    if (const auto status = parseAction(parser, QStringLiteral("document show"), arguments, 1))
        return *status;
    const QString fileName = parser.positionalArguments().constFirst();
    for (const Form &form : forms) {
        if (parser.value(as) != QLatin1String(form.name))
            continue;
        const auto print = tool::chosenWriter(parser, form.print, form.printUnescaped);
        if (print == nullptr)
            return tool::WrongUsage;
        if (!mayOpen(absolutePath(fileName), DocumentFiles::ToLoad))
            return tool::BadInput;
        TextPrinterDocument document;
        if (!document.loadFromFile(absolutePath(fileName))) {
            tool::complain(QStringLiteral("%1: no copy can be loaded; \"receipt document check\" "
                                          "says why")
                               .arg(fileName));
            return tool::BadInput;
        }
        print(document);
        return tool::Success;
    }
    tool::complain(QStringLiteral("--as: there is no form \"%1\"").arg(parser.value(as)));
    return tool::WrongUsage;
}

void printFinding(const QString &fileName, const QString &fault)
{
    tool::print(fault.isEmpty() ? QStringLiteral("%1: good").arg(fileName)
                                : QStringLiteral("%1: bad, %2").arg(fileName, fault));
}

int checkDocument(const QStringList &arguments)
{
    QCommandLineParser parser;
    describeDocumentFile(
        parser, QStringLiteral("Says which of the document's four files are good, and why not."));
    if (const auto status = parseAction(parser, QStringLiteral("document check"), arguments, 1))
        return *status;
    const QString path = absolutePath(parser.positionalArguments().constFirst());
    const QString fault = DocumentFiles::faultOfFolder(path);
    if (!fault.isEmpty()) {
        tool::complain(fault);
        return tool::BadInput;
    }
    const DocumentCopy primary = readDocumentCopy(path);
    const DocumentCopy backup = readDocumentCopy(backupOf(path));
    for (const DocumentCopy &copy : {primary, backup}) {
        printFinding(copy.fileName, copy.contentFault);
        printFinding(copy.checksumFileName, copy.checksumFault);
    }
    if (!primary.isGood() || !backup.isGood())
        return tool::BadInput;
    if (primary.content != backup.content)
        tool::print(QStringLiteral("The copies differ: a save was cut short. The first is newer."));
    return tool::Success;
}

int repairDocument(const QStringList &arguments)
{
    QCommandLineParser parser;
    describeDocumentFile(parser, QStringLiteral("Rewrites both copies from the one that is good."));
    if (const auto status = parseAction(parser, QStringLiteral("document repair"), arguments, 1))
        return *status;
    const QString fileName = parser.positionalArguments().constFirst();
    const QString path = absolutePath(fileName);
    if (!mayOpen(path, DocumentFiles::ToSave))
        return tool::BadInput;
    const DocumentCopy primary = readDocumentCopy(path);
    const DocumentCopy backup = readDocumentCopy(backupOf(path));
    if (!primary.isGood() && !backup.isGood()) {
        tool::complain(QStringLiteral("%1: neither copy is good; \"receipt document check\" says "
                                      "why")
                           .arg(fileName));
        return tool::BadInput;
    }
    // The copy that is not the source goes first, so that a good one is on the disk at any moment.
    const DocumentCopy &source = primary.isGood() ? primary : backup;
    const DocumentCopy &other = primary.isGood() ? backup : primary;
    const bool rewritten = rewriteDocumentCopy(other.fileName, source.content) &&
                           rewriteDocumentCopy(source.fileName, source.content);
    return rewritten ? tool::Success : tool::BadInput;
}

int removeDocument(const QStringList &arguments)
{
    QCommandLineParser parser;
    describeDocumentFile(parser, QStringLiteral("Removes the document's four files."));
    if (const auto status = parseAction(parser, QStringLiteral("document remove"), arguments, 1))
        return *status;
    const QString path = absolutePath(parser.positionalArguments().constFirst());
    TextPrinterDocument().removeFile(path);
    bool removed = true;
    for (const char *suffix : {"", ".sha1", ".bak", ".bak.sha1"}) {
        const QString fileName = path + QLatin1String(suffix);
        if (QFileInfo::exists(fileName)) {
            tool::complain(QStringLiteral("%1: can't be removed").arg(fileName));
            removed = false;
        }
    }
    return removed ? tool::Success : tool::BadInput;
}

constexpr Command actions[] = {
    {"save", "save a receipt made from a template", saveDocument},
    {"show", "show the document", showDocument},
    {"check", "say which of the four files are good, and why not", checkDocument},
    {"repair", "rewrite both copies from the good one", repairDocument},
    {"remove", "remove the four files", removeDocument},
};

void printActions()
{
    tool::printOwn(QStringLiteral(
        "Usage: receipt document ACTION [ARGUMENT...]\n\n"
        "Works on document files: a document in two copies, FILE and FILE.bak, with "
        "a\nchecksum file beside each. They and their folder must be the user's own, "
        "and nobody\nelse may be able to write to the folder; links, FIFOs and "
        "devices are refused. Actions:"));
    for (const Command &action : actions)
        tool::print(QStringLiteral("  %1 %2")
                        .arg(QLatin1String(action.name), -8)
                        .arg(QLatin1String(action.summary)));
    tool::printOwn(QStringLiteral("\n\"receipt document ACTION --help\" says more."));
}

}  // namespace

int runDocument(const QStringList &arguments)
{
    const QString name = arguments.value(0);
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        printActions();
        return tool::Success;
    }
    for (const Command &action : actions) {
        if (name == QLatin1String(action.name))
            return action.run(arguments.mid(1));
    }
    tool::complain(QStringLiteral("document: there is no action \"%1\"; see \"receipt document "
                                  "--help\"")
                       .arg(name));
    return tool::WrongUsage;
}
