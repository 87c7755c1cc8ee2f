#include "filling.h"

#include <QStringList>

#include "documentfile.h"
#include "printedlines.h"
#include "settings/checktemplatessettings.h"
#include "support.h"
#include "templatefile.h"

using printerslib::drivers::DocumentCleaner;

namespace {

/// Keeps the library's log lines back for as long as the object lives.
class Silence
{
public:
    Silence() : m_previous(qInstallMessageHandler(drop)) {}
    ~Silence() { qInstallMessageHandler(m_previous); }
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

private:
    static void drop(QtMsgType, const QMessageLogContext &, const QString &) {}

    const QtMessageHandler m_previous;
};

/// Complains and gives false if the library would open what is no regular file for symbols.
bool mayLoadSymbols(const QString &templateFile, const QStringList &lines,
                    const PrinterDocument &document)
{
    const auto file = templatelint::forbiddenSymbolFile(
        lines, document, CheckTemplatesSettings().checkTemplatesPath());
    if (!file)
        return true;
    const QString place =
        file->line > 0 ? QStringLiteral(":%1:%2").arg(file->line).arg(file->column) : QString();
    tool::complain(QStringLiteral("%1%2: %3").arg(templateFile, place, file->fault));
    return false;
}

/// Complains and gives false if a text in BBCode stands in the place of a receipt's template.
bool isOfItsKind(const QString &templateFile, const QString &text, templatelint::Filling filling)
{
    if (filling != templatelint::Filling::Receipt ||
        !templatelint::isBbCode(text.split(QLatin1Char('\n'))))
        return true;
    tool::complain(QStringLiteral("%1: this is a text in BBCode, where a template is expected; "
                                  "\"receipt fill\" puts values into it")
                       .arg(templateFile));
    return false;
}

}  // namespace

namespace tool {

std::optional<TemplateAndDocument> readTemplateAndDocument(const QString &templateFile,
                                                           const QString &dataFile,
                                                           const QTextCodec &codec,
                                                           DocumentCleaner::Rules rules,
                                                           templatelint::Filling filling)
{
    const auto text = readTemplate(templateFile, codec);
    const auto read = readDocument(dataFile);
    if (!text || !read || !isOfItsKind(templateFile, *text, filling))
        return std::nullopt;
    const PrinterDocument document = DocumentCleaner::cleanedDocument(*read, rules);
    const QStringList lines = text->split(QLatin1Char('\n'));
    if (filling == templatelint::Filling::Receipt && !mayLoadSymbols(templateFile, lines, document))
        return std::nullopt;
    const Silence silence;
    const auto endless = templatelint::endlessValueOf(lines, document, filling);
    if (!endless)
        return TemplateAndDocument{*text, document};
    complain(QStringLiteral("%1:%2:%3: %4 (values: %5)")
                 .arg(templateFile)
                 .arg(endless->line)
                 .arg(endless->column)
                 .arg(endless->message, dataFile));
    return std::nullopt;
}

QVector<int> printedLinesOf(const TemplateAndDocument &source, bool isFiscal)
{
    const Silence silence;
    const QStringList lines = source.text.split(QLatin1Char('\n'));
    return isFiscal ? templatelint::printedLinesOfPieces(lines, source.document)
                    : templatelint::printedLinesOf(lines, source.document);
}

}  // namespace tool
