#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

/// Texts of values by the format of a tag. All are pure functions; the meaning of a format is told
/// with the operations of the same names in PrinterDocumentFormatter.
namespace valueformat {

QString ofInteger(QStringView format, qint64 value);
QString ofReal(QStringView format, double value);
QString ofDateTime(QStringView format, const QDateTime &value);
QString ofDate(QStringView format, const QDate &value);
QString ofTime(QStringView format, const QTime &value);

}  // namespace valueformat
