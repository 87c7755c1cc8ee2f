#include <QtTest>

#include "arbitrary.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "printsrvstate/txtprintererror.h"

using corvid::ClientState;

namespace {

template <class State>
State anyState()
{
    // Known numbers mostly, and any that the record's 16 bits hold.
    return static_cast<State>(
        *rc::gen::weightedOneOf<quint16>({{4, rc::gen::element<quint16>(0, 1, 2, 3, 4, 5, 255)},
                                          {1, rc::gen::arbitrary<quint16>()}}));
}

PrintServiceState anyRecord()
{
    PrintServiceState state;
    state.setServiceState(anyState<PrintServiceState::EServiceState>());
    state.setDeviceState(anyState<PrintServiceState::EDeviceState>());
    state.setDeviceErrorCode(*rc::gen::arbitrary<unsigned int>());
    state.setDeviceNativeCode(*rc::gen::arbitrary<unsigned int>());
    state.setDeviceErorMsg(*rc::gen::arbitrary<QString>());
    state.setTapeAvailable(*rc::gen::arbitrary<bool>());
    return state;
}

}  // namespace

class TestStateLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stateKeepsThroughItsMapForm()
    {
        VERIFY_LAW([] {
            const PrintServiceState state = anyRecord();
            PrintServiceState read = anyRecord();
            read.setMap(state.toMap());
            RC_ASSERT(read == state);
        });
    }

    void keyThatIsMissingLeavesItsField()
    {
        VERIFY_LAW([] {
            const PrintServiceState before = anyRecord();
            const PrintServiceState other = anyRecord();
            QVariantMap half = other.toMap();
            for (const QString &key : other.toMap().keys()) {
                if (*rc::gen::arbitrary<bool>())
                    half.remove(key);
            }
            PrintServiceState read = before;
            read.setMap(half);
            const QVariantMap after = read.toMap();
            for (auto field = after.begin(); field != after.end(); ++field)
                RC_ASSERT(*field ==
                          (half.contains(field.key()) ? half : before.toMap())[field.key()]);
        });
    }

    void stateKeepsThroughTheBus()
    {
        VERIFY_LAW([] {
            const PrintServiceStateCorvidWrapper sent(anyRecord());
            const ClientState record = sent.toClientState();
            PrintServiceStateCorvidWrapper read;
            RC_ASSERT(read.setClientState(record) == record.isValid());
            RC_ASSERT(read.state() == sent.state());
            RC_ASSERT(read.stateType() == record.stateType());
            RC_ASSERT(read.stateDt() == record.dt());
        });
    }

    void whatIsWorkableIsValidAndNotWorseThanAWarning()
    {
        VERIFY_LAW([] {
            const PrintServiceStateCorvidWrapper read(
                PrintServiceStateCorvidWrapper(anyRecord()).toClientState());
            if (read.isWorkable())
                RC_ASSERT(read.isValid() && read.stateType() <= ClientState::StateWarning);
            RC_ASSERT(read.toMap().value("serviceState").toInt() ==
                      int(read.state().serviceState()));
        });
    }

    void errorKeepsItsCodeThroughItsMapForm()
    {
        VERIFY_LAW([](int code, const QString &text) {
            const TxtPrinterError error(QFlags<TxtPrinterError::EError>(QFlag(code)), text);
            TxtPrinterError read;
            read.setMap(error.toMap());
            RC_ASSERT(read.errorCode() == error.errorCode());
            RC_ASSERT(bool(read) == bool(error));
            RC_ASSERT(read.errorText().isEmpty());
            QVariantMap map = error.toMap();
            map.insert("text", map.take("msg"));
            read.setMap(map);
            RC_ASSERT(read == error);
        });
    }
};

QTEST_APPLESS_MAIN(TestStateLaws)
#include "tst_state_laws.moc"
