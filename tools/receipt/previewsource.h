#pragma once

#include <printerslib/drivers/documentcleaner.h>
#include <printerslib/drivers/printtarget.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "places.h"
#include "printerdocs/textprinterdocument.h"

class QTextCodec;

namespace tool {

/// A receipt of files that were read.
struct PreviewedReceipt
{
    std::function<TextPrinterDocument(const printerslib::drivers::PrintTarget &)> documentFor;
    QStringList companions;         ///< what the files name; see WatchedRun
    bool isWhole = true;            ///< all of these could be read, and values put in
    Places places;                  ///< for messages
    QMap<int, QString> sections{};  ///< of the fiscal printer, by the number of their empty block
};

/// Complains and gives false if one of the files that are to be written would be taken for one that
/// the receipt names, or is one: that is written over, or part of the next run.
bool keepsCompanions(const QStringList &outputs, const PreviewedReceipt &receipt);

/// Reads the files as they are now. Complains and gives nothing on failure; complains, too, about
/// files that the receipt names and that are missing or can't be read, without which it is drawn.
using PreviewSource = std::function<std::optional<PreviewedReceipt>()>;

/// @param rules  by which the document's texts are cleaned
/// @param margin   blanks in front of each line
/// @param isFiscal whether the template is cut at its fiscal markers
PreviewSource templateSource(const QString &fileName, const QString &data, const QTextCodec &codec,
                             printerslib::drivers::DocumentCleaner::Rules rules,
                             const QString &symbolFolder, int margin, bool isFiscal = false);
PreviewSource plainSource(const QString &fileName, const QTextCodec &codec, int margin);
PreviewSource bbCodeSource(const QString &fileName, const QString &imageFolder);
PreviewSource documentSource(const QString &fileName);

}  // namespace tool
