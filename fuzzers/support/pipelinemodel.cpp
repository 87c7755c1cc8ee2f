#include "pipelinemodel.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>

#include "fuzzing.h"
#include "printerdocs/expressionevaluator.h"

namespace {

constexpr int mostTags = 1000;
constexpr int longestText = 1 << 14;
// From its "<" to its ">"; shorter tags are markup.
constexpr int longestShortTag = 4;
constexpr double leastNumber = 1e-12;

void removePairs(QString &text, const QString &open, const QString &close)
{
    for (int begin = text.indexOf(open); begin >= 0; begin = text.indexOf(open)) {
        const int end = text.indexOf(close, begin);
        if (end < 0)
            return;
        text.remove(begin, end + close.size() - begin);
    }
}

/// Takes the next tag out of the line, if it is long enough for an attribute; the position goes to
/// its place, or else behind what was looked at.
QString takeTag(QString &line, int &position)
{
    const int begin = line.indexOf('<', position);
    const int end = begin < 0 ? -1 : line.indexOf('>', begin);
    const bool isTag = end >= 0 && end - begin > longestShortTag;
    if (!isTag) {
        position = end < 0 ? line.size() : end + 1;
        return QString();
    }
    position = begin;
    const QString inner = line.mid(begin + 1, end - begin - 1);
    line.remove(begin, end + 1 - begin);
    return inner;
}

/// The bracket that isn't closed again on the way there; -1: none.
int openBracket(const QString &line, int from, int step, QChar bracket, QChar opposite)
{
    int depth = 0;
    for (int i = from; i >= 0 && i < line.size(); i += step) {
        if (line.at(i) == opposite)
            ++depth;
        else if (line.at(i) == bracket && depth-- == 0)
            return i;
    }
    return -1;
}

/// A value that is empty, nothing or not a number takes the innermost group around it away.
void removeEmptyGroup(QString &line, int position, const QString &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (isNumber ? std::abs(number) > leastNumber : !value.isEmpty())
        return;
    const int left = openBracket(line, position - 1, -1, '[', ']');
    const int right = openBracket(line, position, 1, ']', '[');
    if (left >= 0 && right >= 0)
        line.remove(left, right + 1 - left);
}

/// What unpackEntries() does where entries don't hold the tag themselves.
QStringList unpacked(QStringList lines, const PrinterDocument &document)
{
    const QString tag = QStringLiteral("<ENTRIES>");
    QString text = document.entries();
    const QStringList entries = text.replace('=', "<S>").split('\t');
    for (int i = 0; i < lines.size(); ++i) {
        const int hit = lines.at(i).toUpper().indexOf(tag);
        if (hit < 0)
            continue;
        const QString line = lines.takeAt(i);
        QStringList put = entries;
        put.first().prepend(line.left(hit));
        put.last().append(line.mid(hit + tag.size()));
        for (int k = 0; k < put.size(); ++k)
            lines.insert(i + k, put.at(k));
    }
    return lines;
}

}  // namespace

PipelineModel::PipelineModel(const PrinterDocumentFormatter &formatter,
                             const PrinterDocument &document)
    : m_formatter(formatter), m_document(document), m_longestFirst(document.attributes().keys())
{
    std::stable_sort(m_longestFirst.begin(), m_longestFirst.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
}

std::optional<QString> PipelineModel::filled(QString line)
{
    int position = 0;
    while (true) {
        QString name = takeTag(line, position);
        if (name.isEmpty()) {
            if (position >= line.size())
                return line;
            continue;
        }
        const int comma = name.lastIndexOf(',');
        const QString format = comma < 0 ? QString() : name.mid(comma + 1);
        if (comma >= 0)
            name.truncate(comma);
        const std::optional<QString> value = valueOf(name, format);
        if (++m_tags > mostTags || !value || line.size() + value->size() > longestText)
            return std::nullopt;
        line.insert(position, *value);
        removeEmptyGroup(line, position, *value);
    }
}

std::optional<QString> PipelineModel::valueOf(const QString &name, const QString &format)
{
    if (name.isEmpty())
        return QString();
    if (!m_document.hasAttribute(name)) {
        const std::optional<QString> expression = expressionOf(name);
        if (!expression)
            return std::nullopt;
        int error = 0;
        const double value = te_interp(expression->toUtf8().constData(), &error);
        if (error == 0)
            return m_formatter.floatToString(format, value);
    }
    return textOf(m_document.attributeValue(name), format);
}

std::optional<QString> PipelineModel::expressionOf(const QString &name)
{
    QString expression = name;
    for (const QString &key : m_longestFirst) {
        const QString value = m_document.attributeValue(key).toString();
        if (expression.size() + qint64(expression.count(key)) * value.size() > longestText)
            return std::nullopt;
        expression.replace(key, value);
    }
    return expression;
}

QString PipelineModel::textOf(const QVariant &value, const QString &format) const
{
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
            return m_formatter.intToString(format, value.toLongLong());
        case QVariant::Double:
            return m_formatter.floatToString(format, value.toDouble());
        case QVariant::Date:
            return m_formatter.dateToString(format, value.toDate());
        case QVariant::Time:
            return m_formatter.timeToString(format, value.toTime());
        case QVariant::DateTime:
            return m_formatter.dtToString(format, value.toDateTime());
        default:
            return value.toString();
    }
}

std::optional<QStringList> PipelineModel::prepared()
{
    QStringList lines = m_formatter.getTemplate();
    if (lines.isEmpty())
        return lines;
    m_formatter.addCopyInfo(lines, m_document);
    const QStringList copied = lines;
    m_formatter.unpackEntries(lines, m_document);
    if (!m_document.entries().toUpper().contains("<ENTRIES>"))
        fuzzing::equal("entries are unpacked", lines, unpacked(copied, m_document));
    m_formatter.loadSpecSymbols(lines);
    QStringList full;
    for (const QString &line : qAsConst(lines)) {
        const std::optional<QString> text = filled(line);
        if (!text)
            return std::nullopt;
        if (line.isEmpty() || !text->isEmpty())
            full.append(*text);
    }
    // Lines of which none is left are one empty line.
    QString text = full.join('\n');
    removePairs(text, "<X:>", "<:X>");
    QStringList result;
    for (QString line : text.split('\n')) {
        const int size = line.size();
        removePairs(line, "<I>", "</I>");
        if (line.isEmpty() && size > 0)
            continue;
        result.append(line.contains("<X>") ? QString() : line);
    }
    return result;
}
