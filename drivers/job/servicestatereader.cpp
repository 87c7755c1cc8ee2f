#include "printerslib/drivers/servicestatereader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <cmath>
#include <limits>

namespace printerslib::drivers {

namespace {

constexpr double most16 = std::numeric_limits<quint16>::max();
constexpr double most32 = std::numeric_limits<quint32>::max();

QString shownValue(const QJsonValue &value)
{
    constexpr int mostShown = 40;
    QString text =
        QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
    text = text.mid(1, text.size() - 2);
    return text.size() <= mostShown ? text : text.left(mostShown) + QStringLiteral("...");
}

QString numberFault(const QJsonValue &value, double most)
{
    if (!value.isDouble())
        return QStringLiteral("%1 isn't a number").arg(shownValue(value));
    const double number = value.toDouble();
    if (std::floor(number) != number || number < 0 || number > most)
        return QStringLiteral("%1 isn't a whole number from 0 to %2")
            .arg(shownValue(value))
            .arg(qint64(most));
    return {};
}

QString serviceFault(const QJsonValue &value)
{
    return numberFault(value, most16);
}

QString deviceFault(const QJsonValue &value)
{
    QString fault = numberFault(value, most16);
    if (!fault.isEmpty())
        return fault;
    const int state = value.toInt();
    return state <= PrintServiceState::DeviceFatal || state == PrintServiceState::DeviceInvalid
               ? QString()
               : QStringLiteral("%1 is no state of a device: 0 to 4, or 255 for none").arg(state);
}

QString codeFault(const QJsonValue &value)
{
    return numberFault(value, most32);
}

QString textFault(const QJsonValue &value)
{
    return value.isString() ? QString() : QStringLiteral("%1 isn't a text").arg(shownValue(value));
}

QString boolFault(const QJsonValue &value)
{
    return value.isBool() ? QString()
                          : QStringLiteral("%1 is neither true nor false").arg(shownValue(value));
}

/// A key of the record and what is wrong with a value; empty: nothing.
struct KeyRule
{
    const char *key;
    QString (*fault)(const QJsonValue &value);
};

constexpr KeyRule keyRules[] = {
    {"serviceState", serviceFault},  {"deviceState", deviceFault},  {"deviceErrorCode", codeFault},
    {"deviceNativeCode", codeFault}, {"deviceErrorMsg", textFault}, {"tapeAvailable", boolFault},
};

QString faultOf(const QJsonObject &record)
{
    for (const KeyRule &rule : keyRules) {
        const QString key = QString::fromLatin1(rule.key);
        const QString fault =
            record.contains(key) ? rule.fault(record.value(key)) : QStringLiteral("is missing");
        if (!fault.isEmpty())
            return QStringLiteral("%1: %2").arg(key, fault);
    }
    return {};
}

QString faultOf(const QJsonDocument &document, const QJsonParseError &parsing)
{
    if (parsing.error != QJsonParseError::NoError)
        return QStringLiteral("not JSON: %1 at byte %2")
            .arg(parsing.errorString())
            .arg(parsing.offset);
    if (!document.isObject())
        return QStringLiteral("the JSON isn't an object");
    return faultOf(document.object());
}

}  // namespace

std::optional<PrintServiceState> ServiceStateReader::read(const corvid::ClientState &record,
                                                          QString *error)
{
    return readJson(record.state().toUtf8(), error);
}

std::optional<PrintServiceState> ServiceStateReader::readJson(const QByteArray &json,
                                                              QString *error)
{
    QJsonParseError parsing{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &parsing);
    const QString fault = faultOf(document, parsing);
    if (error != nullptr)
        *error = fault;
    if (!fault.isEmpty())
        return std::nullopt;
    PrintServiceState state;
    state.setMap(document.toVariant().toMap());
    return state;
}

}  // namespace printerslib::drivers
