#pragma once

#include <QByteArray>
#include <QScopedPointer>
#include <QVector>

#include "printerslib/drivers/codedrawer.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/letterreader.h"
#include "printerslib/drivers/paper.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// A printer without mechanics: takes its stream and gives the papers that come out.
///
/// One thread at a time. Input may be anything; memory is bounded by 50 MiB and 500 times the
/// bytes that belong to the paper at hand or define characters and pictures.
class PRINTERSLIB_DRIVERS_EXPORT StreamInterpreter
{
public:
    /// What is chosen beside the model.
    struct Options
    {
        int paperDots = 0;  ///< of the paper's line; 0, or more than the head's: the head's
        int columns = 0;    ///< of the first font; 0: as many as fit
        int codePage = -1;  ///< number that is in force after a reset; -1: the model's
        const CodeDrawer *codes = nullptr;      ///< outlives the interpreter
        const LetterReader *letters = nullptr;  ///< outlives the interpreter
    };

    explicit StreamInterpreter(const PrinterProfile &profile)
        : StreamInterpreter(profile, Options())
    {}                                                                         ///< without options
    StreamInterpreter(const PrinterProfile &profile, const Options &options);  ///< as chosen
    ~StreamInterpreter();
    StreamInterpreter(const StreamInterpreter &) = delete;
    StreamInterpreter &operator=(const StreamInterpreter &) = delete;

    /// Takes bytes and gives the pieces of paper that were cut off by them.
    QVector<Paper> read(const QByteArray &bytes);
    /// The end of the stream: what still hangs in the printer, and a line or page that it would
    /// wait to print, with a note. Nothing, if nothing came since the last cut; the paper has
    /// events but no lines if only a pulse or an ejection did. The next read() begins with a
    /// printer that was just switched on.
    QVector<Paper> finish();

    /// Dots that the paper has moved since the printer was switched on, what was fed back taken
    /// off: what a printer needs time for.
    qint64 dotsFed() const;

    /// All papers of a whole stream, the last one perhaps not cut.
    static QVector<Paper> papersOf(const QByteArray &stream, const PrinterProfile &profile)
    {
        return papersOf(stream, profile, Options());
    }  ///< the same without options
    static QVector<Paper> papersOf(const QByteArray &stream, const PrinterProfile &profile,
                                   const Options &options);  ///< the same as chosen

private:
    class State;
    QScopedPointer<State> d;
};

}  // namespace printerslib::drivers
