// The record in which the print service publishes its state.
#include <QJsonDocument>

#include "fuzzing.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "printsrvstate/txtprintererror.h"

using corvid::ClientState;
using fuzzing::equal;
using fuzzing::holds;

namespace {

const QStringList keys{"serviceState",     "deviceState",    "deviceErrorCode",
                       "deviceNativeCode", "deviceErrorMsg", "tapeAvailable"};

QString takeStateText(FuzzedDataProvider &input)
{
    if (input.ConsumeBool())
        return fuzzing::takeRest(input);
    QVariantMap map = fuzzing::takeMap(input, keys);
    for (const QString &key : keys) {
        if (input.ConsumeBool())
            map.insert(key, input.ConsumeBool() ? input.ConsumeIntegralInRange<int>(0, 5)
                                                : input.ConsumeIntegral<int>());
    }
    return QString::fromUtf8(QJsonDocument::fromVariant(map).toJson());
}

void mapFormKeepsTheState(const PrintServiceState &state)
{
    PrintServiceState read;
    read.setMap(state.toMap());
    equal("the map form keeps the state", read == state, true);
    PrintServiceState same = state;
    same.setMap({});
    equal("an empty map changes nothing", same == state, true);
}

void recordKeepsTheState(const PrintServiceStateCorvidWrapper &wrapper)
{
    const ClientState record = wrapper.toClientState();
    const PrintServiceStateCorvidWrapper read(record);
    equal("a record keeps the state", read.state() == wrapper.state(), true);
    equal("what is workable is valid", read.isWorkable() && !read.isValid(), false);
    equal("a state that isn't set is invalid", read.isValid(),
          read.stateType() != ClientState::StateInvalid &&
              read.state().deviceState() != PrintServiceState::DeviceInvalid);
}

void mapTellsTheState(const PrintServiceStateCorvidWrapper &wrapper)
{
    const QVariantMap map = wrapper.toMap();
    equal("nine entries", map.size(), 9);
    equal("the service's state", map.value("serviceState").toInt(),
          int(wrapper.state().serviceState()));
    equal("the paper", map.value("tapeAvailablle").toBool(), wrapper.state().tapeAvailable());
    const bool isKnown = wrapper.stateType() <= ClientState::StateFatal ||
                         wrapper.stateType() == ClientState::StateInvalid;
    equal("a text for each type", !map.value("stateDescription").toString().isEmpty(), isKnown);
}

void errorKeepsItsCode(int code)
{
    const TxtPrinterError error(QFlags<TxtPrinterError::EError>(QFlag(code)), "text");
    TxtPrinterError read;
    read.setMap(error.toMap());
    equal("the map form keeps the code", int(read.errorCode()), code);
    equal("and loses the text", read.errorText(), QString());
    equal("a real error", bool(error), (code & 0x223) != 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    ClientState record;
    record.setStateType(static_cast<ClientState::EStateType>(input.ConsumeIntegral<quint8>()));
    if (input.ConsumeBool())
        record.setDt(QDateTime::fromMSecsSinceEpoch(input.ConsumeIntegral<qint64>()));
    errorKeepsItsCode(input.ConsumeIntegral<int>());
    record.setState(takeStateText(input));

    PrintServiceStateCorvidWrapper wrapper;
    const bool taken = wrapper.setClientState(record);
    QJsonParseError error{};
    QJsonDocument::fromJson(record.state().toUtf8(), &error);
    const bool isJson = error.error == QJsonParseError::NoError;
    equal("a valid record with JSON is taken", taken, isJson && record.isValid());
    if (!isJson)
        equal("nothing else is taken", wrapper == PrintServiceStateCorvidWrapper(), true);
    holds("what is workable is valid", wrapper.isValid() || !wrapper.isWorkable());
    mapFormKeepsTheState(wrapper.state());
    recordKeepsTheState(wrapper);
    mapTellsTheState(wrapper);
    return 0;
}
