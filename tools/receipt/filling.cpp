#include "filling.h"

#include <QStringList>

#include "documentfile.h"
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
    if (!text || !read)
        return std::nullopt;
    const PrinterDocument document = DocumentCleaner::cleanedDocument(*read, rules);
    const Silence silence;
    const auto endless =
        templatelint::endlessValueOf(text->split(QLatin1Char('\n')), document, filling);
    if (!endless)
        return TemplateAndDocument{*text, document};
    complain(QStringLiteral("%1:%2:%3: %4 (values: %5)")
                 .arg(templateFile)
                 .arg(endless->line)
                 .arg(endless->column)
                 .arg(endless->message, dataFile));
    return std::nullopt;
}

}  // namespace tool
