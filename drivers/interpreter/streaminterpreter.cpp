#include "printerslib/drivers/streaminterpreter.h"

#include "interpreter/printer_p.h"
#include "printerslib/drivers/streamreader.h"

namespace printerslib::drivers {

class StreamInterpreter::State
{
public:
    State(const PrinterProfile &givenProfile, const Options &givenOptions)
        : profile(givenProfile), options(givenOptions), reader(givenProfile)
    {
        startPrinter();
    }

    void startPrinter()
    {
        printer.reset(new Printer(profile, options));
        end = 0;
    }
    void obey(const QVector<StreamCommand> &commands)
    {
        for (const StreamCommand &command : commands) {
            printer->obey(command);
            end = command.offset + command.bytes.size();
        }
    }

    const PrinterProfile profile;
    const Options options;
    qint64 end = 0;  ///< of what was obeyed
    StreamReader reader;
    QScopedPointer<Printer> printer;
};

StreamInterpreter::StreamInterpreter(const PrinterProfile &profile, const Options &options)
    : d(new State(profile, options))
{}

StreamInterpreter::~StreamInterpreter() = default;

QVector<Paper> StreamInterpreter::read(const QByteArray &bytes)
{
    d->obey(d->reader.read(bytes));
    return d->printer->roll.takePieces();
}

QVector<Paper> StreamInterpreter::finish()
{
    d->obey(d->reader.finish());
    d->printer->finish(d->end);
    const QVector<Paper> pieces = d->printer->roll.finish();
    d->startPrinter();
    return pieces;
}

qint64 StreamInterpreter::dotsFed() const
{
    return d->printer->roll.fed();
}

QVector<Paper> StreamInterpreter::papersOf(const QByteArray &stream, const PrinterProfile &profile,
                                           const Options &options)
{
    StreamInterpreter interpreter(profile, options);
    QVector<Paper> papers = interpreter.read(stream);
    papers += interpreter.finish();
    return papers;
}

}  // namespace printerslib::drivers
