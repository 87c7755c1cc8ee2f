#include "decodesink.h"

#include <printerslib/drivers/streamlisting.h>
#include <printerslib/drivers/streamreader.h>

#include <QHash>
#include <QJsonDocument>

#include "outputfile.h"
#include "paperjson.h"
#include "support.h"

namespace decoding {

namespace {

using printerslib::drivers::StreamCommand;
using printerslib::drivers::StreamInterpreter;
using printerslib::drivers::StreamListing;
using printerslib::drivers::StreamReader;
using receiptpreview::Layout;
using Print = printerslib::drivers::Paper;

class WritingSink : public Sink
{
protected:
    explicit WritingSink(const Request &request) : m_request(request) {}

    const Request &request() const { return m_request; }

    /// Writes whole lines at once to standard output, and keeps those for a file.
    void write(const QString &text)
    {
        if (m_request.output.isEmpty())
            tool::printContent(text.chopped(1).split(QLatin1Char('\n')));
        else
            m_content += text.toUtf8();
    }
    int writeFile() const
    {
        const bool isWritten =
            m_request.output.isEmpty() || tool::writeFile(m_request.output, m_content);
        return isWritten ? tool::Success : tool::BadInput;
    }

private:
    const Request &m_request;
    QByteArray m_content;
};

class ListingSink : public WritingSink
{
public:
    explicit ListingSink(const Request &request)
        : WritingSink(request),
          m_reader(request.profile),
          m_listing(request.profile, request.options.codePage)
    {}

    void take(const QByteArray &bytes) override { list(m_reader.read(bytes)); }
    int finish() override
    {
        list(m_reader.finish());
        return writeFile();
    }

private:
    void list(const QVector<StreamCommand> &commands)
    {
        QString text;
        for (const StreamCommand &command : commands)
            text += m_listing.linesOf(command);
        if (!text.isEmpty())
            write(text);
    }

    StreamReader m_reader;
    StreamListing m_listing;
};

/// What the printer doesn't do as the stream asks: each thing once.
class Notes
{
public:
    void add(const QVector<Print> &pieces)
    {
        for (const Print &piece : pieces) {
            for (const Print::Event &event : piece.events) {
                if (event.kind == Print::Event::Note)
                    add(event);
            }
        }
    }
    void print(const QString &fileName) const
    {
        for (const Row &row : m_rows)
            tool::complain(
                QStringLiteral("%1: byte %2%3: %4")
                    .arg(fileName)
                    .arg(row.offset)
                    .arg(row.count > 1 ? QStringLiteral(", %1 times").arg(row.count) : QString(),
                         row.text));
        if (m_more > 0)
            tool::complain(QStringLiteral("%1: %2 notes more").arg(fileName).arg(m_more));
    }

private:
    static constexpr int mostRows = 100;

    struct Row
    {
        qint64 offset;
        int count;
        QString text;
    };

    void add(const Print::Event &event)
    {
        const auto known = m_indices.constFind(event.text);
        if (known != m_indices.constEnd()) {
            ++m_rows[*known].count;
        } else if (m_rows.size() < mostRows) {
            m_indices.insert(event.text, m_rows.size());
            m_rows.append({event.offset, 1, event.text});
        } else {
            ++m_more;
        }
    }

    QVector<Row> m_rows;
    QHash<QString, int> m_indices;  ///< in the rows
    int m_more = 0;
};

/// What needs the paper.
class PaperSink : public WritingSink
{
public:
    explicit PaperSink(const Request &request)
        : WritingSink(request), m_interpreter(request.profile, request.options)
    {}

    void take(const QByteArray &bytes) override { takeAll(m_interpreter.read(bytes)); }
    int finish() override
    {
        takeAll(m_interpreter.finish());
        m_notes.print(request().file);
        if (m_hasPrint || !needsPrint())
            return finishPieces();
        tool::complain(QStringLiteral("%1: nothing is printed by it").arg(request().file));
        return tool::BadInput;
    }

protected:
    virtual void takePiece(const Print &piece) = 0;
    virtual int finishPieces() = 0;
    virtual bool needsPrint() const { return true; }

private:
    void takeAll(const QVector<Print> &pieces)
    {
        m_notes.add(pieces);
        for (const Print &piece : pieces) {
            m_hasPrint = m_hasPrint || !piece.isBlankEnd();
            takePiece(piece);
        }
    }

    StreamInterpreter m_interpreter;
    Notes m_notes;
    bool m_hasPrint = false;
};

class TextSink : public PaperSink
{
public:
    using PaperSink::PaperSink;

private:
    void takePiece(const Print &piece) override
    {
        if (!piece.isBlankEnd())
            write(piece.toText());
    }
    int finishPieces() override { return writeFile(); }
};

/// One object, of which each piece is written as soon as the next one is there, since only then it
/// is known what follows it: a line, unless it is indented.
class JsonSink : public PaperSink
{
public:
    using PaperSink::PaperSink;

private:
    void takePiece(const Print &piece) override
    {
        write(m_last.isEmpty() ? opening() : m_last + QLatin1String(",\n"));
        m_last = textOf(piece);
    }
    int finishPieces() override
    {
        write(m_last.isEmpty() ? opening() : m_last + QLatin1Char('\n'));
        write(QLatin1String(request().isPretty ? "    ]\n}\n" : "]}\n"));
        return writeFile();
    }
    bool needsPrint() const override { return false; }

    QString opening() const
    {
        const char *form = request().isPretty ? "{\n    \"model\": %1,\n    \"papers\": [\n"
                                              : "{\"model\":%1,\"papers\":[\n";
        return QString(QLatin1String(form)).arg(tool::jsonText(request().model.id()));
    }
    QString textOf(const Print &piece) const
    {
        const QJsonDocument json(paperjson::write(piece));
        if (!request().isPretty)
            return QString::fromUtf8(json.toJson(QJsonDocument::Compact));
        QStringList lines = tool::linesOf(json.toJson(QJsonDocument::Indented));
        for (QString &line : lines)
            line.prepend(QLatin1String("        "));
        return lines.join(QLatin1Char('\n'));
    }

    QString m_last;  ///< the text of the last piece, which isn't written yet
};

class PictureSink : public PaperSink
{
public:
    using PaperSink::PaperSink;

private:
    void takePiece(const Print &piece) override
    {
        if (!piece.isBlankEnd())
            m_pieces.append(piece);
    }
    int finishPieces() override
    {
        const auto typeface = tool::loadedTypeface();
        if (!typeface)
            return tool::BadInput;
        const receiptpreview::Paper paper(request().model, request().paper);
        const Layout layout(m_pieces, paper);
        if (layout.tooLong()) {
            tool::complain(QStringLiteral("%1: the paper is longer than %2 dots (125 m)")
                               .arg(request().file)
                               .arg(Layout::longestPaper));
            return tool::BadInput;
        }
        if (!tool::writePicture(*request().picture, layout, *typeface, request().scale,
                                request().output))
            return tool::BadInput;
        tool::print(QStringLiteral("%1: %2, paper %3, %4 x %5 dots, pieces: %6")
                        .arg(request().output, request().model.id(), paper.info().caption())
                        .arg(layout.size().width())
                        .arg(layout.size().height())
                        .arg(m_pieces.size()));
        return tool::Success;
    }

    QVector<Print> m_pieces;
};

}  // namespace

std::unique_ptr<Sink> makeTextSink(const Request &request)
{
    return std::make_unique<TextSink>(request);
}

std::unique_ptr<Sink> makeListingSink(const Request &request)
{
    return std::make_unique<ListingSink>(request);
}

std::unique_ptr<Sink> makeJsonSink(const Request &request)
{
    return std::make_unique<JsonSink>(request);
}

std::unique_ptr<Sink> makePictureSink(const Request &request)
{
    return std::make_unique<PictureSink>(request);
}

}  // namespace decoding
