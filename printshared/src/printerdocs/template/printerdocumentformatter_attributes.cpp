#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/linefilling_p.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace {

using namespace templates;

double summandOf(const QVariant &value)
{
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::LongLong:
        case QVariant::Double:
            return value.toDouble();
        case QVariant::String: {
            bool isNumber = false;
            const double number = value.toString().toDouble(&isNumber);
            return isNumber ? number : 0;
        }
        default:
            return 0;
    }
}

}  // namespace

QString PrinterDocumentFormatter::processDocAttributes(const QString &line,
                                                       const PrinterDocument &document) const
{
    if (!line.contains(QLatin1Char('<')))
        return line;
    DocumentValues values(document);
    return lineWithValues(line, values);
}

QString PrinterDocumentFormatter::extractAttr(QString &text, int &position) const
{
    const int begin = text.indexOf(QLatin1Char('<'), position);
    const int end = begin < 0 ? -1 : text.indexOf(QLatin1Char('>'), begin);
    if (end < 0) {
        position = text.size();
        return QString();
    }
    if (AttributeTag::find(text.constData(), begin, end + 1).begin < 0) {
        position = end + 1;
        return QString();
    }
    position = begin;
    QString inner = text.mid(begin + 1, end - begin - 1);
    text.remove(begin, end + 1 - begin);
    return inner;
}

void PrinterDocumentFormatter::extractFormat(QString &attribute, QString &format) const
{
    const TagParts parts = TagParts::of(attribute);
    format = parts.format.isNull() ? QString() : parts.format.toString();
    attribute.truncate(static_cast<int>(parts.name.size()));
}

QString PrinterDocumentFormatter::nameToVal(const QString &name, const PrinterDocument &document,
                                            QString &format) const
{
    return DocumentValues(document).text(name, format).toString();
}

int PrinterDocumentFormatter::scanL(const QString &text, int from) const
{
    int depth = 0;
    for (int i = qMin(from, text.size() - 1); i >= 0; --i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char(']'))
            ++depth;
        else if (c == QLatin1Char('[') && depth-- == 0)
            return i;
    }
    return -1;
}

int PrinterDocumentFormatter::scanR(const QString &text, int from) const
{
    int depth = 0;
    for (int i = qMax(from, 0); i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('['))
            ++depth;
        else if (c == QLatin1Char(']') && depth-- == 0)
            return i;
    }
    return -1;
}

void PrinterDocumentFormatter::removeGroupIfZero(int position, QString &text,
                                                 const QString &value) const
{
    if (!vanishesWithItsGroup(value))
        return;
    const int left = scanL(text, qMax(position, 0) - 1);
    const int right = scanR(text, position);
    if (left >= 0 && right >= 0)
        text.remove(left, right + 1 - left);
}

QString PrinterDocumentFormatter::intToString(const QString &format, long long value) const
{
    return valueformat::ofInteger(format, value);
}

QString PrinterDocumentFormatter::floatToString(const QString &format, double value) const
{
    return valueformat::ofReal(format, value);
}

QString PrinterDocumentFormatter::dtToString(const QString &format, const QDateTime &value) const
{
    return valueformat::ofDateTime(format, value);
}

QString PrinterDocumentFormatter::dateToString(const QString &format, const QDate &value) const
{
    return valueformat::ofDate(format, value);
}

QString PrinterDocumentFormatter::timeToString(const QString &format, const QTime &value) const
{
    return valueformat::ofTime(format, value);
}

bool PrinterDocumentFormatter::summAttributes(QString &name, const PrinterDocument &document,
                                              QString &format) const
{
    const QStringList parts = name.split(QLatin1Char('+'));
    if (parts.size() < 2)
        return false;
    double sum = 0;
    for (const QString &part : parts)
        sum +=
            summandOf(document.hasAttribute(part) ? document.attributeValue(part) : QVariant(part));
    name = floatToString(format, sum);
    return true;
}
