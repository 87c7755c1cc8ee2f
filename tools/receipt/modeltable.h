#pragma once

#include <printerslib/drivers/printermodels.h>
#include <printerslib/drivers/printoptions.h>

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>

#include "templatelint.h"

namespace tool {

/// What becomes of a receipt on one paper of a model.
struct PaperVerdict
{
    QString model;
    QString paper;
    int characters = 0;    ///< of the usual font, side by side
    QVector<int> wrapped;  ///< lines of the template, from 1
    QStringList losses;    ///< what isn't printed as the receipt has it

    bool isClean() const { return wrapped.isEmpty() && losses.isEmpty(); }
};

/// On each paper of each model. Without a document in the options all values are empty.
/// @param images folder of a BBCode text's pictures
/// @param printOptions of the models, by their ids; the usual ones for others
QVector<PaperVerdict> verdictsOf(
    const QStringList &lines, const templatelint::Options &options,
    const printerslib::drivers::PrinterModels &models, const QString &images,
    const QHash<QString, printerslib::drivers::PrintOptions> &printOptions,
    const std::function<void(qint64 done, qint64 all)> &progress);

void printVerdicts(const QVector<PaperVerdict> &verdicts);
QJsonObject jsonOf(const QString &file, const PaperVerdict &verdict);

}  // namespace tool
