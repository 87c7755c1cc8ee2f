#pragma once

#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// What a run of the command-line tool gave: -1 is the status of a program that didn't end well.
struct ReceiptRun
{
    int status = -1;
    QString output;
    QString errors;
};

/// Waits for the end of a program that has got its standard input.
inline ReceiptRun finished(QProcess &process)
{
    process.closeWriteChannel();
    ReceiptRun run;
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.output = QString::fromUtf8(process.readAllStandardOutput());
    run.errors = QString::fromUtf8(process.readAllStandardError());
    return run;
}

/// Runs the tool, with these bytes as standard input.
inline ReceiptRun runReceipt(const QStringList &arguments, const QByteArray &input = QByteArray())
{
    QProcess process;
    // Paths of temporary files are part of the HTML output.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("TMPDIR");
    process.setProcessEnvironment(environment);
    process.start(RECEIPT_PROGRAM, arguments);
    process.write(input);
    return finished(process);
}

/// A folder for the files of one test.
class WorkFolder
{
public:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// Writes a file and gives its path.
    QString file(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s can't be written", qPrintable(file.fileName()));
        return file.fileName();
    }

    /// The content of a file; null if there is none.
    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
};

/// The path of an example.
inline QString example(const QString &name)
{
    return QStringLiteral(PRINTERSLIB_EXAMPLES "/") + name;
}
