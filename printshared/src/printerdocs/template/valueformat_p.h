#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

/// Texts of values by the format of a tag. All are pure functions; the meaning of a format is told
/// with the operations of the same names in PrinterDocumentFormatter.
namespace valueformat {

/// The numbers go behind what the text has already: a receipt has thousands of them.
void appendInteger(QString &text, QStringView format, qint64 value);
void appendReal(QString &text, QStringView format, double value);

/// The shortest text that reads back as the same number, as QVariant::toString() gives it.
void appendShortest(QString &text, double value);

QString ofInteger(QStringView format, qint64 value);
QString ofReal(QStringView format, double value);
QString ofDateTime(QStringView format, const QDateTime &value);
QString ofDate(QStringView format, const QDate &value);
QString ofTime(QStringView format, const QTime &value);

}  // namespace valueformat
