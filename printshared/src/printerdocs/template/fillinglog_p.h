#pragma once

#include <QString>
#include <QStringList>

/// What filling a template's tags writes to the log.
namespace fillinglog {

/// Lines are written for every tag of every receipt: a client that switches the category's
/// warnings off must not pay for making them.
bool isOn();

/// What qWarning() would write of the text, without the cost of a stream for each of the lines.
void write(const QString &text);

/// A list as the log shows it.
QString lineOf(const QStringList &items);

}  // namespace fillinglog
