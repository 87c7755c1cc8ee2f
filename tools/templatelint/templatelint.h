#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>
#include <optional>

#include "printerdocs/printerdocument.h"

class QTextCodec;

/// A checker of receipt templates. The library reports no mistake in a template, it prints what is
/// left of it; this says beforehand what the author won't like.
namespace templatelint {

enum class Severity {
    Error,    ///< something doesn't print, or prints wrong, with this document or with any
    Warning,  ///< something prints in a way that hardly anybody wants
    Note,     ///< worth knowing; depends on how the template is used
};

/// "error", "warning" or "note".
QString nameOf(Severity severity);

/// The form in which a template is rendered.
enum class Form { Document, Text, Html };

/// A font of a model.
struct PaperFont
{
    QSize cell;     ///< of a character, as wide as the units of the paper say
    QSize drawing;  ///< the largest of a special symbol in it; empty: it takes none
    QString name;   ///< for messages
};

/// What a line has to fit into, in units of its own: dots, or characters.
struct Paper
{
    int width = 0;
    QVector<PaperFont> fonts;  ///< the first is also that of a number which the model lacks
    QString name;              ///< for messages; empty: only the width is known
    bool hasDoubleWidth = true;
};

/// What a name in a BBCode text finds.
struct FoundPicture
{
    QStringList files;  ///< all that it fits, the one that is taken first
    QString fault;      ///< why it isn't printed; empty if it is
};

enum class CodeKind { Barcode, QrCode };

/// How a template is used. What isn't known here isn't checked.
struct Options
{
    std::optional<PrinterDocument> document;
    Form form = Form::Document;
    bool splitsFiscalParts = false;  ///< the client cuts the template at its fiscal markers first
    QString symbolFolder = QStringLiteral(".");
    std::optional<Paper> paper;
    const QTextCodec *codePage = nullptr;                   ///< the printer's character set
    std::function<void(qint64 done, qint64 all)> progress;  ///< told now and then, if there is one
    /// Finds the picture of a name in small letters.
    std::function<FoundPicture(const QString &name)> pictureOf;
    /// Why a code can't be printed; empty if it can.
    std::function<QString(CodeKind kind, const QByteArray &payload)> codeFault;
};

class Analysis;
class BbCode;
class Report;

struct Rule
{
    const char *name;
    Severity severity;  ///< the worst of its findings
    const char *summary;
    const char *why;
    const char *wrong;      ///< a template on which the rule speaks
    const char *right;      ///< the same without the mistake
    const char *document;   ///< JSON text of the document for both, empty if none is needed
    const char *arguments;  ///< further options of the command for both
    void (*check)(const Analysis &analysis, Report &report);  ///< of templates; null: none
    /// Of BBCode texts; null: none.
    void (*checkBbCode)(const BbCode &text, Report &report) = nullptr;
    /// Also speaks on the tags for values in a BBCode text, as `check` has it.
    bool isOfValues = false;
};

/// All rules, in the order in which people meet them.
const QVector<Rule> &rules();
/// Null if there is no such rule.
const Rule *findRule(const QString &name);
/// The nearest of these names, if any is near.
std::optional<QString> nearestName(const QString &name, const QStringList &names);

/// A function that people look for in expressions and that there isn't.
struct MissingFunction
{
    int index;  ///< where its name begins in the expression
    QString name;
    QString instead;  ///< what there is instead
};

/// The first in the order of a list; nothing if an expression calls none of these.
std::optional<MissingFunction> missingFunctionIn(const QString &expression);

struct Finding
{
    int line;    ///< from 1
    int column;  ///< from 1, in UTF-16 units as editors count
    const Rule *rule;
    Severity severity;  ///< that of the rule, or a lesser one
    QString message;
};

/// Whether lines are a BBCode text and no template: they have its tags, and none of the markup.
bool isBbCode(const QStringList &lines);
/// Whether lines are a template and no BBCode text: they have markup, and no tags of BBCode.
bool isTemplate(const QStringList &lines);

/// All findings, by line, column and rule. A BBCode text is recognised by its tags.
QVector<Finding> lint(const QStringList &lines, const Options &options);

/// The file of special symbols that a template names.
struct NamedSymbolFile
{
    int line;    ///< of the tag that counts, from 1
    int column;  ///< from 1
    QString path;
    QString fault;  ///< why it can't be used; empty if it can
};

/// Nothing if the template names none.
std::optional<NamedSymbolFile> symbolFileOf(const QStringList &lines, const QString &folder);

/// A file that filling a receipt would open for special symbols, and that must not be opened: a
/// FIFO stops the program, and a device never ends. Line and column are 0 where none of the
/// template's characters names it. Nothing if there is none.
std::optional<NamedSymbolFile> forbiddenSymbolFile(const QStringList &lines,
                                                   const PrinterDocument &document,
                                                   const QString &folder);

/// How a template is filled.
enum class Filling {
    Receipt,   ///< with the mark of a copy, the entries and the file of special symbols
    EachLine,  ///< each line as it stands, and nothing else
};

/// A value that never comes to an end, at the place in the template where it is put in.
struct EndlessValue
{
    int line;    ///< from 1
    int column;  ///< from 1
    QString message;
};

/// The first such value. The library fills on and on then, as it is meant to.
std::optional<EndlessValue> endlessValueOf(const QStringList &lines,
                                           const PrinterDocument &document, Filling filling);

}  // namespace templatelint
