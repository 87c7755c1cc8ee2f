#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <optional>

class QTextCodec;

namespace tool {

/// The option that names the encoding of a template.
QCommandLineOption codecOption();
/// What that option says. Complains and gives null if there is no such encoding.
const QTextCodec *codecOf(const QCommandLineParser &parser);

/// Adds the arguments TEMPLATE and DATA.json.
void addTemplateAndDocument(QCommandLineParser &parser);
/// Complains and gives false if more than one of these files is standard input.
bool readsInputOnce(const QStringList &fileNames);

/// Sets the folder of special symbol files for the formatters made from now on. Without it they
/// would look for the templates of the machine's point-of-sale system, and make its folders.
void useSymbolFolder(const QString &folder);

/// The lines of a text file, "-" being standard input, as the library reads templates: without
/// line ends, and an end of the last line makes no further one. Complains about bytes that don't
/// belong to the encoding, naming the line, and then gives nothing.
std::optional<QStringList> readLines(const QString &fileName, const QTextCodec &codec);

/// As readLines(), for a file that must have at least one line, and be no document's.
std::optional<QString> readTemplate(const QString &fileName, const QTextCodec &codec);

/// The text of a file in BBCode. Complains and gives nothing for what can't be read, and for a
/// document's JSON or a template.
std::optional<QString> readBbCode(const QString &fileName);
/// Tells of tags for values that a text in BBCode still has, and gives whether it has none.
bool isFilled(const QString &fileName, const QString &bbCode);

/// Whether a text begins as the JSON of a document does: it stands in a template's place by
/// mistake.
bool isDocumentText(const QString &text);
/// Whether a text that isn't JSON has tags: it stands in a document's place by mistake.
bool isTemplateText(const QString &text);
/// Whether a text that isn't JSON is one in BBCode; it may have tags for values, too.
bool isBbCodeText(const QString &text);

}  // namespace tool
