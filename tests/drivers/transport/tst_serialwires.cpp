// What a serial line is asked to be, and which of its wires is looked at: on a pseudo terminal that
// keeps the form of the characters, and has pins.
#include <dlfcn.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <QtTest>
#include <cstdarg>

#include "pseudoterminal.h"
#include "transport/serialtransport_p.h"
#include "transportwatch.h"

using namespace transportwatch;
using printerslib::drivers::SerialTransport;

namespace {

/// What the system doesn't keep of a pseudo terminal.
constexpr tcflag_t formFlags = CSIZE | PARENB | CMSPAR;

tcflag_t form = CS8;  ///< of the characters, as it was asked for last
int pins = 0;         ///< that are up
int looks = 0;        ///< at them

template <typename Function>
Function *systemsOwn(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

// These stand in front of the system's for all that is in this process, QSerialPort too.

extern "C" Q_DECL_EXPORT int tcsetattr(int descriptor, int when, const termios *line) noexcept
{
    static const auto own = systemsOwn<int(int, int, const termios *)>("tcsetattr");
    form = line->c_cflag & formFlags;
    return own(descriptor, when, line);
}

extern "C" Q_DECL_EXPORT int tcgetattr(int descriptor, termios *line) noexcept
{
    static const auto own = systemsOwn<int(int, termios *)>("tcgetattr");
    const int result = own(descriptor, line);
    line->c_cflag = (line->c_cflag & ~formFlags) | form;
    return result;
}

extern "C" Q_DECL_EXPORT int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    static const auto own = systemsOwn<int(int, unsigned long, ...)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void *const argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request != TIOCMGET)
        return own(descriptor, request, argument);
    ++looks;
    *static_cast<int *>(argument) = pins;
    return 0;
}

class TestSerialWires : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        form = CS8;
        pins = 0;
        looks = 0;
    }

    void lineIsSetAsTheAddressSays_data()
    {
        QTest::addColumn<QString>("settings");
        QTest::addColumn<uint>("controlFlags");
        QTest::addColumn<uint>("speed");
        const auto row = [](const char *settings, uint flags, uint speed = B9600) {
            QTest::newRow(settings) << QString(settings) << flags << speed;
        };
        row("", CS8);
        row("data=5", CS5);
        row("data=6", CS6);
        row("data=7", CS7);
        row("data=8", CS8);
        row("parity=none", CS8);
        row("parity=even", CS8 | PARENB);
        row("parity=odd", CS8 | PARENB | PARODD);
        row("parity=mark", CS8 | PARENB | PARODD | CMSPAR);
        row("parity=space", CS8 | PARENB | CMSPAR);
        row("stop=1", CS8);
        row("stop=2", CS8 | CSTOPB);
        row("flow=none", CS8);
        row("flow=hardware", CS8 | CRTSCTS);
        row("flow=dtr", CS8);
        row("baud=1200", CS8, B1200);
        row("baud=115200&parity=odd", CS8 | PARENB | PARODD, B115200);
        row("baud=19200&parity=even&data=7&stop=2&flow=hardware", CS7 | PARENB | CSTOPB | CRTSCTS,
            B19200);
    }
    void lineIsSetAsTheAddressSays()
    {
        QFETCH(QString, settings);
        QFETCH(uint, controlFlags);
        QFETCH(uint, speed);
        PseudoTerminal terminal;
        const auto transport =
            Transport::make(addressOf("serial:" + terminal.path() + "?" + settings));
        Watch watch(*transport);
        transport->open();
        TRY_COMPARE(watch.told, QStringList("opened"));
        const termios line = terminal.settings();
        QCOMPARE(line.c_cflag & (CSTOPB | PARODD | CRTSCTS | formFlags), controlFlags);
        QCOMPARE(uint(::cfgetospeed(&line)), speed);
        QCOMPARE(uint(::cfgetispeed(&line)), speed);
    }

    // A printer's DTR comes to our DSR, whatever the other pins say.
    void ofAllPinsOnlyDsrHoldsTheLine()
    {
        PseudoTerminal terminal;
        SerialTransport transport(addressOf("serial:" + terminal.path() + "?flow=dtr&baud=115200"),
                                  {});
        Watch watch(transport);
        pins = TIOCM_CTS | TIOCM_CD | TIOCM_RI | TIOCM_RTS | TIOCM_DTR;
        transport.open();
        QVERIFY(transport.write("held"));
        TRY_VERIFY(looks > 20);
        QCOMPARE(transport.bytesWritten(), 0);
        QCOMPARE(terminal.read(), QByteArray());
        pins = TIOCM_DSR;
        QByteArray printed;
        TRY_COMPARE((printed += terminal.read()), QByteArray("held"));
        TRY_COMPARE(transport.bytesWritten(), 4);
        QCOMPARE(watch.told, QStringList("opened"));
    }
};

QTEST_GUILESS_MAIN(TestSerialWires)
#include "tst_serialwires.moc"
