#pragma once

#include <printerslib/drivers/printerprofile.h>
#include <printerslib/drivers/streaminterpreter.h>

#include <QByteArray>
#include <QString>
#include <memory>

#include "picturefile.h"
#include "printers/printerinfo.h"

/// What "receipt decode" makes of a stream.
namespace decoding {

struct Request
{
    QString file;
    printerslib::drivers::PrinterProfile profile;
    PrinterInfo model;
    int paper = 0;  ///< of the model
    printerslib::drivers::StreamInterpreter::Options options;
    const tool::PictureForm *picture = nullptr;  ///< null: none is asked for
    int scale = 1;
    QString output;  ///< empty: standard output
    bool isPretty = false;
};

/// Takes a stream piece by piece.
class Sink
{
public:
    Sink() = default;
    virtual ~Sink() = default;
    Sink(const Sink &) = delete;
    Sink &operator=(const Sink &) = delete;

    virtual void take(const QByteArray &bytes) = 0;
    /// The end of the stream. Gives the exit status.
    virtual int finish() = 0;
};

// They refer to the request.
std::unique_ptr<Sink> makeTextSink(const Request &request);
std::unique_ptr<Sink> makeListingSink(const Request &request);
std::unique_ptr<Sink> makeJsonSink(const Request &request);
std::unique_ptr<Sink> makePictureSink(const Request &request);

}  // namespace decoding
