#include "cleaning.h"
#include "commands.h"
#include "dataschema.h"
#include "filling.h"
#include "printerdocs/printerdocumentformatter.h"
#include "support.h"
#include "templatefile.h"

int runFill(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Prints a template's lines with the document's values filled in; the other "
                       "tags stay as they are."));
    parser.addOptions({tool::cleanOption(), tool::dataSchemaOption(), tool::codecOption()});
    tool::addTemplateAndDocument(parser);
    if (const auto status = tool::parse(parser, QStringLiteral("fill"), arguments, 2, 2))
        return *status;
    const QTextCodec *codec = tool::codecOf(parser);
    const auto rules = tool::cleaningRulesOf(parser, true);
    if (codec == nullptr || !rules || !tool::useDataSchema(parser, true))
        return tool::WrongUsage;
    const QStringList files = parser.positionalArguments();
    if (!tool::readsInputOnce(files))
        return tool::WrongUsage;
    tool::useSymbolFolder(QStringLiteral("."));
    const auto source = tool::readTemplateAndDocument(files.at(0), files.at(1), *codec, *rules,
                                                      templatelint::Filling::EachLine);
    if (!source)
        return tool::BadInput;
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(source->text);
    tool::printContent(formatter.toFormattedText(source->document));
    return tool::Success;
}
