#pragma once

#include <printerslib/drivers/documentencoder.h>
#include <printerslib/drivers/paper.h>
#include <printerslib/drivers/printerprofile.h>

#include <QString>
#include <QStringList>

namespace chaos {

/// A receipt whose lines say which job they belong to, and which they are.
struct Receipt
{
    int job = 0;
    int lines = 1;
    int pictures = 0;     ///< among the lines
    int pictureRows = 0;  ///< dots

    /// As a process is told of it.
    QString toString() const;
    static Receipt fromString(const QString &text);
};

printerslib::drivers::EncodedDocument encodedReceipt(const Receipt &receipt, const QString &model);

/// What stands on a piece of paper, from top to bottom: texts of lines, and pictures by their dots.
QStringList itemsOf(const printerslib::drivers::Paper &paper);
/// What a receipt puts on paper where nothing happens.
QStringList itemsOf(const Receipt &receipt, const printerslib::drivers::PrinterProfile &profile);

/// The job of an item; 0: it is a picture, or no line of a receipt.
int jobOf(const QString &item);
/// Whether it is the first line of a receipt.
bool isFirstLine(const QString &item);

}  // namespace chaos
