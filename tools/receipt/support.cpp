#include "support.h"

#include <unistd.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonParseError>
#include <QLoggingCategory>
#include <QTextCodec>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "jsonmistakes.h"
#include "outputfile.h"
#include "terminaltext.h"

namespace tool {

void print(const QString &line)
{
    terminaltext::writeLine(stdout, line);
}

void printRow(const QStringList &fields)
{
    QStringList shown;
    for (const QString &field : fields)
        shown.append(terminaltext::shown(field));
    terminaltext::writeRaw(stdout, shown.join(QLatin1Char('\t')));
}

void printContent(const QStringList &lines)
{
    for (const QString &line : lines)
        terminaltext::writeContent(stdout, line);
}

void printOwn(const QString &text)
{
    terminaltext::writeRaw(stdout, text);
}

void complain(const QString &message, const QStringList &below)
{
    QStringList lines(QStringLiteral("receipt: ") + terminaltext::shown(message));
    for (const QString &line : below)
        lines.append(terminaltext::shown(line));
    terminaltext::writeRaw(stderr, lines.join(QLatin1Char('\n')));
}

bool flushOutput()
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return true;
    complain(QStringLiteral("standard output: %1").arg(qt_error_string(errno)));
    std::clearerr(stdout);
    return false;
}

int finished(int status)
{
    return flushOutput() ? status : int(BadInput);
}

bool writeLines(const QString &fileName, const QStringList &lines)
{
    if (fileName.isEmpty()) {
        printContent(lines);
        return true;
    }
    return writeFile(fileName, lines.join(QLatin1Char('\n')).toUtf8() + '\n');
}

QString jsonText(const QJsonValue &value)
{
    const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(json.mid(1, json.size() - 2));
}

QStringList linesOf(const QByteArray &json)
{
    return QString::fromUtf8(json).trimmed().split(QLatin1Char('\n'));
}

std::optional<int> numberOf(const QCommandLineParser &parser, const QCommandLineOption &option,
                            int minimum, int maximum)
{
    const QString name = option.names().constFirst();
    const QString text = parser.value(option);
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= minimum && number <= maximum)
        return number;
    complain(QStringLiteral("--%1: \"%2\" is no number from %3 to %4")
                 .arg(name, text, QString::number(minimum), QString::number(maximum)));
    return std::nullopt;
}

const QTextCodec *encodingOf(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    const QString name = parser.value(option);
    const QTextCodec *codec = QTextCodec::codecForName(name.toUtf8());
    if (codec == nullptr)
        complain(QStringLiteral("--%1: there is no encoding \"%2\"")
                     .arg(option.names().constFirst(), name));
    return codec;
}

std::optional<int> parse(QCommandLineParser &parser, const QString &usage,
                         const QStringList &arguments, int minimum, int maximum)
{
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser.addOption(help);
    parser.addOption(verboseOption());
    const QString program = QStringLiteral("receipt ") + usage;
    if (!parser.parse(QStringList(program) + arguments)) {
        complain(parser.errorText());
        return WrongUsage;
    }
    if (parser.isSet(help)) {
        // QCommandLineParser names the program in the first line; the command belongs to it.
        QString text = parser.helpText();
        const int lineEnd = text.indexOf(QLatin1Char('\n'));
        const QString positional = text.mid(text.indexOf(QLatin1String("[options]")),
                                            lineEnd - text.indexOf(QLatin1String("[options]")));
        printOwn(
            QStringLiteral("Usage: %1 %2%3").arg(program, positional, text.mid(lineEnd)).trimmed());
        return Success;
    }
    const int count = parser.positionalArguments().size();
    if (count < minimum || (maximum >= 0 && count > maximum)) {
        complain(QStringLiteral("%1: wrong number of arguments; see \"%1 --help\"").arg(program));
        return WrongUsage;
    }
    setVerbose(parser.isSet(verboseOption()));
    return std::nullopt;
}

namespace {

constexpr std::size_t pieceSize = 65536;

bool openInput(QFile &file, const QString &fileName)
{
    if (fileName == QLatin1String("-"))
        return file.open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Unbuffered);
    file.setFileName(fileName);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

/// What there is, up to a piece: QFile would wait for all of it. Below 0 on failure.
ssize_t readPiece(const QFile &file, char *piece)
{
    ssize_t count = 0;
    do {
        count = ::read(file.handle(), piece, pieceSize);
    } while (count < 0 && errno == EINTR);
    return count;
}

}  // namespace

bool readInPieces(const QString &fileName,
                  const std::function<void(const QByteArray &, qint64, qint64)> &take)
{
    QFile file;
    if (!openInput(file, fileName)) {
        complain(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
        return false;
    }
    const qint64 all = file.isSequential() ? 0 : file.size();
    std::vector<char> buffer(pieceSize);
    qint64 done = 0;
    ssize_t count = 0;
    while ((count = readPiece(file, buffer.data())) > 0) {
        done += count;
        take(QByteArray(buffer.data(), static_cast<int>(count)), done, all);
    }
    if (count < 0)
        complain(QStringLiteral("%1: %2").arg(fileName, qt_error_string(errno)));
    return count == 0;
}

std::optional<QByteArray> readInput(const QString &fileName)
{
    QFile file;
    bool open = false;
    if (fileName == QLatin1String("-")) {
        open = file.open(stdin, QIODevice::ReadOnly);
    } else {
        file.setFileName(fileName);
        open = file.open(QIODevice::ReadOnly);
    }
    QByteArray bytes;
    if (open)
        bytes = file.readAll();
    if (!open || file.error() != QFileDevice::NoError) {
        complain(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
        return std::nullopt;
    }
    return bytes;
}

namespace {

/// Decodes piece by piece and watches for bytes that don't belong to the encoding.
class StrictDecoder
{
public:
    explicit StrictDecoder(const QTextCodec &codec)
        : m_codec(codec), m_canBeReplacement(codec.canEncode(QChar(QChar::ReplacementCharacter)))
    {}

    /// @return false if something in the bytes doesn't belong to the encoding
    bool add(const char *bytes, int count)
    {
        const QString piece = m_codec.toUnicode(bytes, count, &m_state);
        m_text += piece;
        return m_state.invalidChars == 0 &&
               (m_canBeReplacement || !piece.contains(QChar(QChar::ReplacementCharacter)));
    }
    bool isComplete() const { return m_state.remainingChars == 0; }
    const QString &text() const { return m_text; }

private:
    const QTextCodec &m_codec;
    const bool m_canBeReplacement;
    QTextCodec::ConverterState m_state;
    QString m_text;
};

/// Line and column, both from 1, of a byte offset in a UTF-8 text.
QString placeOf(const QString &fileName, const QByteArray &text, int offset)
{
    const QByteArray before = text.left(offset);
    const int line = before.count('\n') + 1;
    const int column = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size() + 1;
    return QStringLiteral("%1:%2:%3").arg(fileName).arg(line).arg(column);
}

/// The line, from 1, of the first bytes that don't belong to the encoding.
int firstBadLine(const QByteArray &bytes, const QTextCodec &codec)
{
    StrictDecoder decoder(codec);
    int good = 0;
    for (const char &byte : bytes) {
        good = decoder.text().size();
        if (!decoder.add(&byte, 1))
            break;
    }
    return decoder.text().leftRef(good).count(QLatin1Char('\n')) + 1;
}

/// @param cure what to do about a line that isn't of the encoding
std::optional<QString> decodedText(const QString &fileName, const QTextCodec &codec,
                                   const QString &cure)
{
    const std::optional<QByteArray> bytes = readInput(fileName);
    if (!bytes)
        return std::nullopt;
    StrictDecoder decoder(codec);
    if (!decoder.add(bytes->constData(), bytes->size()) || !decoder.isComplete()) {
        complain(QStringLiteral("%1:%2: this line isn't %3%4")
                     .arg(fileName)
                     .arg(firstBadLine(*bytes, codec))
                     .arg(QString::fromLatin1(codec.name()), cure));
        return std::nullopt;
    }
    return decoder.text();
}

/// Of the first byte of a line.
int offsetOfLine(const QByteArray &text, int line)
{
    int offset = 0;
    for (int i = 1; i < line; ++i)
        offset = text.indexOf('\n', offset) + 1;
    return offset;
}

/// What is wrong in a text that isn't JSON.
JsonMistake mistakeOf(const QByteArray &text, const QJsonParseError &error)
{
    const QTextCodec &utf8 = *QTextCodec::codecForName("UTF-8");
    StrictDecoder decoder(utf8);
    if (!decoder.add(text.constData(), text.size()) || !decoder.isComplete())
        return {offsetOfLine(text, firstBadLine(text, utf8)),
                QStringLiteral("this line isn't UTF-8, which JSON is written in")};
    return jsonMistakeIn(text).value_or(JsonMistake{error.offset, error.errorString()});
}

}  // namespace

std::optional<QString> readText(const QString &fileName)
{
    return decodedText(fileName, *QTextCodec::codecForName("UTF-8"),
                       QStringLiteral("; save it in that encoding"));
}

std::optional<QString> readText(const QString &fileName, const QTextCodec &codec)
{
    return decodedText(fileName, codec, QStringLiteral("; --codec names another encoding"));
}

std::optional<QJsonDocument> readJson(const QString &fileName)
{
    const std::optional<QByteArray> text = readInput(fileName);
    return text ? jsonOf(fileName, *text) : std::nullopt;
}

std::optional<QJsonDocument> jsonOf(const QString &fileName, const QByteArray &text)
{
    QJsonParseError error{};
    const QJsonDocument json = QJsonDocument::fromJson(text, &error);
    const bool isJson = error.error == QJsonParseError::NoError;
    const QVector<JsonMistake> mistakes =
        isJson ? lossesIn(text) : QVector<JsonMistake>{mistakeOf(text, error)};
    for (const JsonMistake &mistake : mistakes)
        complain(
            QStringLiteral("%1: %2").arg(placeOf(fileName, text, mistake.offset), mistake.what));
    return mistakes.isEmpty() ? std::make_optional(json) : std::nullopt;
}

QCommandLineOption verboseOption()
{
    return QCommandLineOption(QStringList{QStringLiteral("v"), QStringLiteral("verbose")},
                              QStringLiteral("Show the library's log lines on standard error."));
}

void setVerbose(bool verbose)
{
    if (!verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
}

}  // namespace tool
