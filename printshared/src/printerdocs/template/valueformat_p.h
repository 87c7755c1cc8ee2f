#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

#include "printerdocs/template/textbuffer_p.h"

/// Texts of values by the format of a tag. All are pure functions; the meaning of a format is told
/// with the operations of the same names in PrinterDocumentFormatter.
namespace valueformat {

/// What a format says of numbers. Those of a template are read once.
class NumberPattern
{
public:
    explicit NumberPattern(QStringView format);

    /// The numbers go behind what the text has already: a receipt has thousands of them.
    void appendInteger(TextBuffer &text, qint64 value) const;
    void appendReal(TextBuffer &text, double value) const;

private:
    /// How a real number is written.
    enum class Kind : unsigned char { Whole, Exponent, SixDecimals, Decimals, ManyDecimals };

    Q_NEVER_INLINE void appendOther(TextBuffer &text, double value) const;

    int m_fewestDigits;  ///< of a whole number
    Kind m_kind = Kind::Whole;
    int m_fewestWhole = 0;  ///< digits in front of a real number's point
    int m_decimals = 0;
    bool m_isUsual = false;  ///< as that of most amounts
    quint32 m_unit = 0;      ///< what a real number is counted in: 10 to the power of the decimals
};

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
