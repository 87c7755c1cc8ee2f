#include "printerdocs/template/documentvalues_p.h"

#include <QDebug>
#include <QStringList>

#include "printerdocs/expressionevaluator.h"
#include "printerdocs/template/fillinglog_p.h"
#include "printerdocs/template/numbertext_p.h"
#include "printerdocs/template/valueformat_p.h"

namespace templates {

DocumentValues::DocumentValues(const PrinterDocument &document)
    : m_attributes(document.attributes())
{
    constexpr int usualLength = 64;
    m_name.reserve(usualLength);
    m_value.reserve(usualLength);
}

bool DocumentValues::logs() const
{
    return !m_isMute && fillinglog::isOn();
}

QStringView DocumentValues::text(QStringView name, QStringView format)
{
    m_name.resize(0);
    m_name.append(name.data(), static_cast<int>(name.size()));
    if (logs())
        fillinglog::write(m_name);
    return m_name.isEmpty() ? QStringView() : textOfName(format);
}

QStringView DocumentValues::textOfName(QStringView format)
{
    const auto attribute = m_attributes.constFind(m_name);
    if (attribute == m_attributes.cend()) {
        const std::optional<double> value = evaluate(m_name);
        return value ? textOfNumber(*value, format) : QStringView();
    }
    if (attribute->type() != QVariant::String)
        return textOf(*attribute, format);
    const QString &text = *static_cast<const QString *>(attribute->constData());
    return beginsLikeAWord(text) ? QStringView(text) : textOf(numberOrText(*attribute), format);
}

QStringView DocumentValues::textOf(const QVariant &value, QStringView format)
{
    m_value.resize(0);
    switch (static_cast<int>(value.type())) {
        case QVariant::Int:
        case QVariant::UInt:
        case QVariant::LongLong:
        case QVariant::ULongLong:
            valueformat::appendInteger(m_value, format, value.toLongLong());
            break;
        case QVariant::Double:
            valueformat::appendReal(m_value, format, value.toDouble());
            break;
        case QVariant::Date:
            m_value += valueformat::ofDate(format, value.toDate());
            break;
        case QVariant::Time:
            m_value += valueformat::ofTime(format, value.toTime());
            break;
        case QVariant::DateTime:
            m_value += valueformat::ofDateTime(format, value.toDateTime());
            break;
        default:
            m_value += value.toString();
            break;
    }
    return m_value;
}

QStringView DocumentValues::textOfNumber(double value, QStringView format)
{
    m_value.resize(0);
    valueformat::appendReal(m_value, format, value);
    return m_value;
}

std::optional<double> DocumentValues::evaluate(const QString &expression)
{
    if (!m_insertion)
        m_insertion.emplace(m_attributes);
    const bool isLogged = logs();
    if (isLogged)
        logKeys();
    int error = 0;
    const double value = te_interp(m_insertion->inserted(expression).toUtf8().constData(), &error);
    if (isLogged)
        logResult(value, error);
    return error == 0 ? std::optional<double>(value) : std::nullopt;
}

void DocumentValues::logExpression(const QString &expression, double value)
{
    if (logs())
        fillinglog::write(expression);
    if (!logs())
        return;
    if (!m_insertion)
        m_insertion.emplace(m_attributes);
    logKeys();
    logResult(value, 0);
}

void DocumentValues::logResult(double value, int error)
{
    qWarning().noquote() << value;
    qWarning().noquote() << error;
}

void DocumentValues::logKeys()
{
    if (!m_hasKeyLines) {
        const KeyTable &keys = m_insertion->keys();
        QStringList ranked;
        ranked.reserve(keys.size());
        for (int rank = 0; rank < keys.size(); ++rank)
            ranked.append(keys.keyOfRank(rank));
        m_keyLine = fillinglog::lineOf(m_attributes.keys());
        m_rankedKeyLine = fillinglog::lineOf(ranked);
        m_hasKeyLines = true;
    }
    fillinglog::write(m_keyLine);
    fillinglog::write(m_rankedKeyLine);
}

}  // namespace templates
