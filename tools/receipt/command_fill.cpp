#include "commands.h"
#include "documentfile.h"
#include "printerdocs/printerdocumentformatter.h"
#include "support.h"
#include "templatefile.h"

int runFill(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Prints a template's lines with the document's values filled in; the other "
                       "tags stay as they are."));
    parser.addOption(tool::codecOption());
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("fill"), arguments, 2, 2))
        return *status;
    const auto codec = tool::codecOf(parser);
    if (!codec)
        return tool::WrongUsage;
    const QStringList files = parser.positionalArguments();
    if (!tool::readsInputOnce(files))
        return tool::WrongUsage;
    const auto text = tool::readTemplate(files.at(0), **codec);
    const auto document = tool::readDocument(files.at(1));
    if (!text || !document)
        return tool::BadInput;
    tool::useSymbolFolder(QStringLiteral("."));
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(*text);
    const QStringList lines = formatter.toFormattedText(*document);
    for (const QString &line : lines)
        tool::print(line);
    return tool::Success;
}
