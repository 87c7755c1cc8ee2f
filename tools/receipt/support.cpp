#include "support.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTextCodec>
#include <QTextStream>
#include <cstdio>

namespace tool {

void print(const QString &line)
{
    QByteArray bytes = line.toUtf8();
    bytes.append('\n');
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
}

void complain(const QString &message)
{
    const QByteArray bytes = QStringLiteral("receipt: %1\n").arg(message).toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
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
        print(
            QStringLiteral("Usage: %1 %2%3").arg(program, positional, text.mid(lineEnd)).trimmed());
        return Success;
    }
    const int count = parser.positionalArguments().size();
    if (count < minimum || (maximum >= 0 && count > maximum)) {
        complain(QStringLiteral("%1: wrong number of arguments; see \"%1 --help\"").arg(program));
        return WrongUsage;
    }
    setVerbose(parser.isSet(verboseOption().names().constFirst()));
    return std::nullopt;
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

std::optional<QString> readText(const QString &fileName)
{
    const std::optional<QByteArray> bytes = readInput(fileName);
    if (!bytes)
        return std::nullopt;
    const QTextCodec *utf8 = QTextCodec::codecForName("UTF-8");
    QString text;
    int lineNumber = 0;
    for (int begin = 0; begin < bytes->size();) {
        const int lineEnd = bytes->indexOf('\n', begin);
        const int end = lineEnd < 0 ? bytes->size() : lineEnd + 1;
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        ++lineNumber;
        text += utf8->toUnicode(bytes->constData() + begin, end - begin, &state);
        if (state.invalidChars != 0 || state.remainingChars != 0) {
            complain(QStringLiteral("%1:%2: this line isn't UTF-8").arg(fileName).arg(lineNumber));
            return std::nullopt;
        }
        begin = end;
    }
    return text.startsWith(QChar::ByteOrderMark) ? text.mid(1) : text;
}

QString placeOf(const QString &fileName, const QByteArray &text, int offset)
{
    const QByteArray before = text.left(offset);
    const int line = before.count('\n') + 1;
    const int column = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size() + 1;
    return QStringLiteral("%1:%2:%3").arg(fileName).arg(line).arg(column);
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
