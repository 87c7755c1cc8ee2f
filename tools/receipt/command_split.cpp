#include <algorithm>

#include "commands.h"
#include "printerdocs/printerdocumentformatter.h"
#include "support.h"
#include "templatefile.h"

namespace {

QString markerOf(CheckBlockType type)
{
    const auto &parts = PrinterDocumentFormatter::PARTS;
    const auto part = std::find_if(parts.cbegin(), parts.cend(),
                                   [type](const auto &row) { return row.first == type; });
    return part == parts.cend() ? QString() : part->second;
}

void printLines(const QStringList &lines)
{
    tool::print(QStringLiteral("== text, lines: %1").arg(lines.size()));
    tool::printContent(lines);
}

}  // namespace

int runSplit(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows where a fiscal template is cut: pieces of text, and the sections "
                       "that the fiscal printer fills in."));
    parser.addOption(tool::codecOption());
    parser.addPositionalArgument(QStringLiteral("TEMPLATE"),
                                 QStringLiteral("The template; - is standard input."));
    if (const auto status = tool::parse(parser, QStringLiteral("split"), arguments, 1, 1))
        return *status;
    const QTextCodec *codec = tool::codecOf(parser);
    if (codec == nullptr)
        return tool::WrongUsage;
    const QString fileName = parser.positionalArguments().constFirst();
    const auto text = tool::readTemplate(fileName, *codec);
    if (!text)
        return tool::BadInput;
    tool::useSymbolFolder(QStringLiteral("."));
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(*text);
    bool found = false;
    const auto pieces = formatter.splitByFiscalParts(found, PrinterDocumentFormatter::PARTS);
    for (const auto &piece : pieces) {
        if (piece.second)
            printLines(piece.second->getTemplate());
        else
            tool::print(QStringLiteral("== %1").arg(markerOf(piece.first)));
    }
    if (!found)
        tool::complain(QStringLiteral("%1: note: there is no fiscal marker").arg(fileName));
    return tool::Success;
}
