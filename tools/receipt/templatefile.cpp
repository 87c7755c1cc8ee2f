#include "templatefile.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QTextStream>

#include "settings/checktemplatessettings.h"
#include "support.h"
#include "templatelint.h"

namespace tool {

QCommandLineOption codecOption()
{
    return QCommandLineOption(
        QStringLiteral("codec"),
        QStringLiteral("Encoding of the template, such as cp866 or windows-1251; default: UTF-8."),
        QStringLiteral("NAME"), QStringLiteral("UTF-8"));
}

const QTextCodec *codecOf(const QCommandLineParser &parser)
{
    return encodingOf(parser, codecOption());
}

void addTemplateAndDocument(QCommandLineParser &parser)
{
    parser.addPositionalArgument(QStringLiteral("TEMPLATE"),
                                 QStringLiteral("The template; - is standard input."));
    parser.addPositionalArgument(
        QStringLiteral("DATA.json"),
        QStringLiteral("The document: \"attributes\", \"entries\", \"isCopy\"; - is standard "
                       "input. Write amounts as text, such as \"100.00\": JSON doesn't tell "
                       "100.00 from 100."));
}

bool readsInputOnce(const QStringList &fileNames)
{
    if (fileNames.count(QStringLiteral("-")) < 2)
        return true;
    complain(QStringLiteral("standard input can be only one of the files"));
    return false;
}

void useSymbolFolder(const QString &folder)
{
    CheckTemplatesSettings().setCheckTemplatesPath(folder);
}

std::optional<QStringList> readLines(const QString &fileName, const QTextCodec &codec)
{
    std::optional<QString> text = readText(fileName, codec);
    if (!text)
        return std::nullopt;
    QStringList lines;
    QTextStream stream(&*text, QIODevice::ReadOnly);
    while (!stream.atEnd())
        lines.append(stream.readLine());
    return lines;
}

std::optional<QString> readTemplate(const QString &fileName, const QTextCodec &codec)
{
    const std::optional<QStringList> lines = readLines(fileName, codec);
    if (!lines)
        return std::nullopt;
    if (lines->isEmpty()) {
        complain(QStringLiteral("%1: the template is empty").arg(fileName));
        return std::nullopt;
    }
    const QString text = lines->join(QLatin1Char('\n'));
    if (!isDocumentText(text))
        return text;
    complain(QStringLiteral("%1: this is the JSON of a document, where a template is expected")
                 .arg(fileName));
    return std::nullopt;
}

std::optional<QString> readBbCode(const QString &fileName)
{
    std::optional<QString> text = readText(fileName);
    if (!text)
        return std::nullopt;
    const bool isDocument = isDocumentText(*text);
    if (!isDocument && !templatelint::isTemplate(text->split(QLatin1Char('\n'))))
        return text;
    const QString what =
        isDocument ? QStringLiteral("the JSON of a document") : QStringLiteral("a template");
    complain(
        QStringLiteral("%1: this is %2, where a text in BBCode is expected").arg(fileName, what));
    return std::nullopt;
}

bool isFilled(const QString &fileName, const QString &bbCode)
{
    // Names in small letters may well be text.
    static const QRegularExpression tag(QStringLiteral("<[A-Z_][A-Z0-9_]*(?:,[^<>\\n]*)?>"));
    const QStringList lines = bbCode.split(QLatin1Char('\n'));
    if (!bbCode.contains(tag) || !templatelint::isBbCode(lines))
        return true;
    QStringList tags;
    for (auto matches = tag.globalMatch(bbCode); matches.hasNext();)
        tags.append(matches.next().captured());
    tags.removeDuplicates();
    const int others = tags.size() - 1;
    const QString more =
        others == 0   ? QStringLiteral("\" prints as it stands")
        : others == 1 ? QStringLiteral("\" and another tag print as they stand")
                      : QStringLiteral("\" and %1 other tags print as they stand").arg(others);
    const int line = bbCode.leftRef(bbCode.indexOf(tag)).count(QLatin1Char('\n')) + 1;
    complain(QStringLiteral("%1: line %2: \"%3%4; \"receipt fill\" puts values in")
                 .arg(fileName)
                 .arg(line)
                 .arg(tags.constFirst(), more));
    return false;
}

bool isDocumentText(const QString &text)
{
    static const QRegularExpression beginning(
        QStringLiteral("^\\s*\\{\\s*\"(attributes|entries|isCopy)\"\\s*:"));
    return beginning.match(text).hasMatch();
}

bool isBbCodeText(const QString &text)
{
    const QStringRef trimmed = QStringRef(&text).trimmed();
    return !trimmed.startsWith(QLatin1Char('{')) &&
           templatelint::isBbCode(text.split(QLatin1Char('\n')));
}

bool isTemplateText(const QString &text)
{
    // U+FFFD stands for the letters of other encodings.
    static const QRegularExpression tag(QStringLiteral("<[\\p{L}\\p{N}_\\x{FFFD}][^<>\"\\n]*>"));
    const QString trimmed = text.trimmed();
    return !trimmed.startsWith(QLatin1Char('{')) && tag.match(trimmed).hasMatch();
}

}  // namespace tool
