#include "pipelinemodel.h"

#include <QDateTime>
#include <algorithm>

#include "fuzzing.h"
#include "printerdocs/expressionevaluator.h"

namespace {

constexpr int mostTags = 1000;
constexpr int longestText = 1 << 14;

void removePairs(QString &text, const QString &open, const QString &close)
{
    for (int begin = text.indexOf(open); begin >= 0; begin = text.indexOf(open)) {
        const int end = text.indexOf(close, begin);
        if (end < 0)
            return;
        text.remove(begin, end + close.size() - begin);
    }
}

/// What unpackEntries() does where entries don't hold the tag themselves.
QStringList unpacked(QStringList lines, const PrinterDocument &document)
{
    const QString tag = QStringLiteral("<ENTRIES>");
    QString text = document.entries();
    const QStringList entries = text.replace('=', "<S>").split('\t');
    for (int i = 0; i < lines.size(); ++i) {
        QString upper = lines.at(i);
        std::transform(upper.begin(), upper.end(), upper.begin(),
                       [](QChar c) { return c.toUpper(); });
        const int hit = upper.indexOf(tag);
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
        QString name = m_formatter.extractAttr(line, position);
        if (name.isEmpty()) {
            if (position >= line.size())
                return line;
            continue;
        }
        QString format;
        m_formatter.extractFormat(name, format);
        const std::optional<QString> value = valueOf(name, format);
        if (++m_tags > mostTags || !value || line.size() + value->size() > longestText)
            return std::nullopt;
        line.insert(position, *value);
        m_formatter.removeGroupIfZero(position, line, *value);
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
    m_formatter.addCopyInfo(lines, m_document);
    const QStringList copied = lines;
    m_formatter.unpackEntries(lines, m_document);
    if (!m_document.entries().contains("<ENTRIES>", Qt::CaseInsensitive))
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
    // A list without lines becomes one empty line; a text can't tell the two apart.
    QString text = full.join('\n');
    const bool wasEmpty = full.isEmpty();
    removePairs(text, "<X:>", "<:X>");
    QStringList result;
    for (QString line : wasEmpty ? QStringList() : text.split('\n')) {
        const int size = line.size();
        removePairs(line, "<I>", "</I>");
        if (line.isEmpty() && size > 0)
            continue;
        result.append(line.contains("<X>") ? QString() : line);
    }
    return result;
}
