#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/printerdocumentformatter_p.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace {

/// The two parts of a tag: the format stands behind the last comma, so an expression with commas
/// needs a trailing format.
struct TagParts
{
    QStringView name;
    QStringView format;
};

TagParts partsOf(QStringView tag)
{
    for (auto comma = tag.size() - 1; comma >= 0; --comma) {
        if (tag[comma] == QLatin1Char(','))
            return {tag.left(comma), tag.mid(comma + 1)};
    }
    return {tag, QStringView()};
}

bool isBracket(QChar c)
{
    return c == QLatin1Char('[') || c == QLatin1Char(']');
}

/// Fills the tags of a text that has groups, or whose values hold tags or groups.
QString withValuesAndGroups(SubstitutionText text, DocumentValues &values)
{
    for (QStringView tag = text.takeTag(); !tag.isNull(); tag = text.takeTag()) {
        const TagParts parts = partsOf(tag);
        const QStringView value = values.text(parts.name, parts.format);
        text.insert(value);
        if (vanishesWithItsGroup(value))
            text.dropGroup();
    }
    return text.toString();
}

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

QString lineWithValues(const QString &line, DocumentValues &values)
{
    const QChar *const text = line.constData();
    AttributeTag tag = AttributeTag::find(text, 0, line.size());
    if (tag.begin < 0)
        return line;
    values.beginLine();
    if (std::any_of(line.cbegin(), line.cend(), isBracket))
        return withValuesAndGroups(SubstitutionText(QStringView(), line), values);
    QString filled;
    filled.reserve(2 * line.size());
    int read = 0;
    for (; tag.begin >= 0; tag = AttributeTag::find(text, read, line.size())) {
        filled.append(text + read, tag.begin - read);
        const TagParts parts = partsOf(QStringView(text + tag.begin + 1, tag.end - tag.begin - 1));
        const QStringView value = values.text(parts.name, parts.format);
        read = tag.end + 1;
        const bool isPlain = std::none_of(value.begin(), value.end(), [](QChar c) {
            return c == QLatin1Char('<') || isBracket(c);
        });
        if (!isPlain) {
            const QString rest = value.toString() + line.midRef(read);
            return withValuesAndGroups(SubstitutionText(filled, rest), values);
        }
        filled.append(value.data(), static_cast<int>(value.size()));
    }
    return filled.append(text + read, line.size() - read);
}

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
    const TagParts parts = partsOf(attribute);
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
