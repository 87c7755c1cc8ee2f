#include <QFileInfo>

#include "cleaning.h"
#include "commands.h"
#include "dataschema.h"
#include "documentcopy.h"
#include "documentforms.h"
#include "filling.h"
#include "folderoptions.h"
#include "forms.h"
#include "language.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/documentfiles.h"
#include "support.h"
#include "templatefile.h"

namespace {

using printerslib::drivers::DocumentFiles;

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
    parser.addOptions({from, tool::symbolsOption(), tool::cleanOption(), tool::dataSchemaOption(),
                       tool::codecOption(), tool::languageOption()});
    if (const auto status = parseAction(parser, QStringLiteral("document save"), arguments, 2))
        return *status;
    const QString path = absolutePath(parser.positionalArguments().at(0));
    const QString data = parser.positionalArguments().at(1);
    const QString templateFile = parser.value(from);
    const QTextCodec *codec = tool::codecOf(parser);
    const auto rules = tool::cleaningRulesOf(parser, true);
    if (templateFile.isEmpty())
        tool::complain(QStringLiteral("document save: --from is missing"));
    const bool hasSymbols = tool::isFolder(parser, tool::symbolsOption());
    if (templateFile.isEmpty() || codec == nullptr || !rules || !hasSymbols || !isSavable(path) ||
        !tool::useDataSchema(parser, true) || !tool::readsInputOnce({templateFile, data}) ||
        !tool::useLanguage(parser))
        return tool::WrongUsage;

    tool::useSymbolFolder(tool::folderOf(parser, tool::symbolsOption(), templateFile));
    const auto source = tool::readTemplateAndDocument(templateFile, data, *codec, *rules);
    if (!source)
        return tool::BadInput;
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(source->text);
    return saveAndLoad(formatter.toTextPrinterDocument(source->document), path) ? tool::Success
                                                                                : tool::BadInput;
}

QStringList asText(const TextPrinterDocument &document)
{
    return tool::textLines(
        document, document.symbolsPerLine() > 0 ? document.symbolsPerLine() : defaultWidth);
}

QStringList asJson(const TextPrinterDocument &document)
{
    return tool::jsonLines(document, false);
}

constexpr tool::WrittenForm<TextPrinterDocument> forms[] = {
    {"text", "", asText, nullptr},
    {"html", "", tool::htmlLines, tool::unescapedHtmlLines},
    {"json", tool::jsonNote, asJson, nullptr},
};

int showDocument(const QStringList &arguments)
{
    QCommandLineParser parser;
    describeDocumentFile(parser, QStringLiteral("Shows the document that a load gives."));
    parser.addOptions({tool::formOption(forms), tool::unescapedOption()});
    if (const auto status = parseAction(parser, QStringLiteral("document show"), arguments, 1))
        return *status;
    const QString fileName = parser.positionalArguments().constFirst();
    const auto *form = tool::formOf(parser, forms);
    if (form == nullptr)
        return tool::WrongUsage;
    const auto linesOf = tool::chosenWriter(parser, *form);
    if (linesOf == nullptr)
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
    tool::printContent(linesOf(document));
    return tool::Success;
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

const char about[] =
    "Works on document files: a document in two copies, FILE and FILE.bak, with a\n"
    "checksum file beside each. They and their folder must be the user's own, and nobody\n"
    "else may be able to write to the folder; links, FIFOs and devices are refused.";

}  // namespace

int runDocument(const QStringList &arguments)
{
    return tool::runAction(QStringLiteral("document"), QString::fromLatin1(about), actions,
                           arguments);
}
