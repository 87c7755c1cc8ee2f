#include <QJsonObject>

#include "commands.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "support.h"

namespace {

/// Whether every field of the record is there, under its name and in its kind.
bool checkFields(const QString &fileName, const QJsonObject &record)
{
    bool good = true;
    const QJsonObject fields = QJsonObject::fromVariantMap(PrintServiceState().toMap());
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        const QJsonValue value = record.value(field.key());
        if (value.isUndefined()) {
            tool::complain(
                QStringLiteral("%1: note: \"%2\" is missing").arg(fileName, field.key()));
        } else if (value.type() != field.value().type()) {
            tool::complain(
                QStringLiteral("%1: \"%2\" is of the wrong kind").arg(fileName, field.key()));
            good = false;
        }
    }
    for (auto entry = record.begin(); entry != record.end(); ++entry) {
        if (!fields.contains(entry.key()))
            tool::complain(QStringLiteral("%1: note: \"%2\" is no field of a state")
                               .arg(fileName, entry.key()));
    }
    return good;
}

QString meaningOfService(int state)
{
    if (state == PrintServiceState::ServiceInvalid)
        return QStringLiteral("not set");
    if (state >= PrintServiceState::ServiceCritical)
        return QStringLiteral("critical, doesn't work");
    return state == PrintServiceState::ServiceUnworkable ? QStringLiteral("doesn't work")
                                                         : QStringLiteral("works");
}

QString meaningOfDevice(int state)
{
    switch (state) {
        case PrintServiceState::DeviceNormalFirst:
        case PrintServiceState::DeviceNormalSecond:
            return QStringLiteral("works");
        case PrintServiceState::DeviceWarning:
            return QStringLiteral("works, with a warning");
        case PrintServiceState::DeviceCritical:
            return QStringLiteral("critical, doesn't work");
        case PrintServiceState::DeviceFatal:
            return QStringLiteral("fatal, doesn't work");
        case PrintServiceState::DeviceInvalid:
            return QStringLiteral("not set");
        default:
            return QStringLiteral("has no meaning");
    }
}

void printLine(const QString &name, const QString &value)
{
    tool::print(QStringLiteral("%1 %2").arg(name + QLatin1Char(':'), -14).arg(value));
}

void printStateLine(const QString &name, int state, const QString &meaning)
{
    printLine(name, QStringLiteral("%1 (%2)").arg(state).arg(meaning));
}

void printCodeLine(const QString &name, unsigned int code)
{
    printLine(name, QStringLiteral("%1 (0x%2)").arg(code).arg(code, 8, 16, QLatin1Char('0')));
}

void explain(const PrintServiceState &state)
{
    // On its way over the bus the state gets its weight.
    const PrintServiceStateCorvidWrapper published(
        PrintServiceStateCorvidWrapper(state).toClientState());
    printStateLine(QStringLiteral("Service"), state.serviceState(),
                   meaningOfService(state.serviceState()));
    printStateLine(QStringLiteral("Device"), state.deviceState(),
                   meaningOfDevice(state.deviceState()));
    printCodeLine(QStringLiteral("Error code"), state.deviceErrorCode());
    printCodeLine(QStringLiteral("Device's code"), state.deviceNativeCode());
    printLine(QStringLiteral("Message"),
              state.deviceErrorMsg().isEmpty() ? QStringLiteral("none") : state.deviceErrorMsg());
    printLine(QStringLiteral("Paper"),
              state.tapeAvailable() ? QStringLiteral("there") : QStringLiteral("none"));
    printStateLine(QStringLiteral("On the bus"), published.stateType(),
                   published.toMap().value(QStringLiteral("stateDescription")).toString());
    printLine(QStringLiteral("Printing"),
              published.isWorkable() ? QStringLiteral("possible") : QStringLiteral("not possible"));
}

}  // namespace

int runState(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Explains the state text of a record on the message bus."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The record's JSON; - is standard input."));
    if (const auto status = tool::parse(parser, QStringLiteral("state"), arguments, 1, 1))
        return *status;
    const QString fileName = parser.positionalArguments().constFirst();
    const auto json = tool::readJson(fileName);
    if (!json)
        return tool::BadInput;
    if (!json->isObject()) {
        tool::complain(QStringLiteral("%1: a state is a JSON object").arg(fileName));
        return tool::BadInput;
    }
    if (!checkFields(fileName, json->object()))
        return tool::BadInput;
    PrintServiceState state;
    state.setMap(json->toVariant().toMap());
    explain(state);
    return tool::Success;
}
