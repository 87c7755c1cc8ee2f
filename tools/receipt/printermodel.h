#pragma once

#include <printerslib/drivers/printermodels.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <optional>

#include "printers/printerinfo.h"

class QTextCodec;

namespace tool {

/// The option --models, a file in which a user changes and adds models; it may be given several
/// times.
QCommandLineOption modelsFileOption();
/// The models with what that option says, where a command has it. Complains of each fault, and
/// gives nothing if there is one.
std::optional<printerslib::drivers::PrinterModels> modelsOf(const QCommandLineParser &parser);

/// The catalogue's record that goes with a model. That of a model which a file adds has its id, and
/// says in its name what it is like.
PrinterInfo recordOf(const printerslib::drivers::PrinterProfile &profile);
/// The record of a model. Complains and gives nothing for an unknown one.
std::optional<PrinterInfo> findModel(const printerslib::drivers::PrinterModels &models,
                                     const QString &id);

/// Characters per line of a model's font (from 0) on one of its papers, as the library works them
/// out.
int charactersPerLine(const PrinterInfo &model, int paper, int font);

/// What a receipt is printed on.
struct ChosenPaper
{
    printerslib::drivers::PrinterModels models;  ///< those that are known
    std::optional<PrinterInfo> model;            ///< nothing: every model
    int paper = 0;
    int font = 0;  ///< of text that chooses none
};

/// The option --model.
/// @param byDefault the model without it; empty: none
QCommandLineOption modelOption(const QString &byDefault = QString());
/// The same option of a command that can't do without.
QCommandLineOption neededModelOption();
/// The options --model, --paper and --font.
QList<QCommandLineOption> paperOptions(const QString &defaultModel = QString());
/// The same of a command that takes from elsewhere what isn't given.
/// @param otherwise    where from, as the help calls it
/// @param defaultModel what it is without that; empty: none
QList<QCommandLineOption> paperOptionsOr(const QString &otherwise,
                                         const QString &defaultModel = QString());
/// Whether one of --paper and --font is given.
bool choosesPaper(const QCommandLineParser &parser);
/// What these options say of the model. Complains and gives nothing for what isn't there.
std::optional<ChosenPaper> paperOf(const QCommandLineParser &parser);
/// What --paper and --font say of a model that was found elsewhere; what isn't given is as there.
std::optional<ChosenPaper> paperOf(const QCommandLineParser &parser, const ChosenPaper &otherwise);
/// The same for a command that takes all models, whatever --model says.
std::optional<ChosenPaper> paperOfEveryModel(const QCommandLineParser &parser);

/// The options --model, which is needed, and --paper of a command that reads what one printer has
/// printed. Without the second it is the widest.
QList<QCommandLineOption> printedPaperOptions();
/// What these say. Complains and gives nothing for what isn't there.
std::optional<ChosenPaper> printedPaperOf(const QCommandLineParser &parser);

/// The option --code-page, the character set of a printer.
QCommandLineOption codePageOption();
/// What that option says. Complains and gives null if there is no such set.
const QTextCodec *codePageOf(const QCommandLineParser &parser);

}  // namespace tool
