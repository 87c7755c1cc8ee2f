#pragma once

#include <QDateTime>
#include <QString>

/// Texts of values by the format of a tag. All are pure functions; the meaning of a format is told
/// with the operations of the same names in PrinterDocumentFormatter.
namespace valueformat {

QString ofInteger(const QString &format, qint64 value);
QString ofReal(const QString &format, double value);
QString ofDateTime(const QString &format, const QDateTime &value);
QString ofDate(const QString &format, const QDate &value);
QString ofTime(const QString &format, const QTime &value);

}  // namespace valueformat
