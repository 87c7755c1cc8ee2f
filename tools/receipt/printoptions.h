#pragma once

#include <printerslib/drivers/printoptions.h>
#include <printerslib/drivers/printtarget.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QStringList>
#include <optional>

#include "previewsource.h"
#include "printermodel.h"

/// What commands share that print or draw a receipt for a model.
namespace tool {

/// The options that say which receipt it is, beside a template and a document: --bbcode, --document
/// and --plain, and how these are read.
QList<QCommandLineOption> sourceOptions();

/// One receipt, and what it is read from.
struct ChosenSource
{
    PreviewSource read;
    QStringList files;
};
/// What the options and the positional arguments say. Complains and gives nothing unless that is
/// exactly one receipt. The library takes the folder of symbols and the language from then on.
/// @param isFiscal whether a template is cut at its fiscal markers; what isn't one is refused then
std::optional<ChosenSource> sourceOf(const QCommandLineParser &parser, bool isFiscal = false);

/// What a receipt is printed on.
printerslib::drivers::PrintTarget targetOf(const PrinterInfo &model, const ChosenPaper &paper);

/// The option --code-page, the character set that text begins with.
QCommandLineOption characterSetOption();
/// That option, and --as-picture.
QList<QCommandLineOption> printOptions();
/// What these say. Complains and gives nothing for a character set that the model lacks.
/// @param otherwise what the options don't say
std::optional<printerslib::drivers::PrintOptions> printOptionsOf(
    const QCommandLineParser &parser, const printerslib::drivers::PrinterProfile &profile,
    const printerslib::drivers::PrintOptions &otherwise = {});
/// The same for one of all models: one that lacks the character set begins with its own. Complains
/// and gives nothing for what can't be one at all.
std::optional<printerslib::drivers::PrintOptions> printOptionsOfEach(
    const QCommandLineParser &parser, const printerslib::drivers::PrinterProfile &profile);

/// The pin of a drawer's connector that an option names, 2 or 5. Complains and gives nothing for
/// another one.
std::optional<int> pinOf(const QCommandLineParser &parser, const QCommandLineOption &option);

/// Complains of a character set that a model lacks, and names those that it has.
/// @param place where it is asked for
void complainOfCharacterSet(const QString &place, const QString &set,
                            const QMap<int, QString> &known);

}  // namespace tool
