// Document files: two copies, each with a checksum file beside it, written so that a power cut
// during a save leaves a good copy. The order of the steps is the protection.
#include <QCryptographicHash>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QProcess>
#include <QProcessEnvironment>
#include <cstdlib>

#include "printerdocs/textprinterdocument.h"

namespace {

constexpr qint64 checksumDigits = 40;
constexpr int programTimeoutMs = 30000;

QString checksumFileOf(const QString &copy)
{
    return copy + QLatin1String(".sha1");
}

QString backupOf(const QString &path)
{
    return path + QLatin1String(".bak");
}

void forceToDisk()
{
    [[maybe_unused]] const int status = std::system("sync");
}

/// The program reads the file back, so the checksum says what is in the file, not what was meant to
/// be. Its success isn't examined: a copy without a right checksum is found out by the load.
void writeChecksumOf(const QString &copy)
{
    QProcess program;
    program.setWorkingDirectory(QFileInfo(copy).absolutePath());
    program.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
    program.setStandardOutputFile(checksumFileOf(copy), QIODevice::Truncate);
    program.start(QStringLiteral("sha1sum"), QStringList(copy));
    // A path that the program takes for standard input must not make it wait for any. Its input is
    // a pipe and no file: in a process without standard streams an input file takes descriptor 0
    // and the checksum file 1, and QProcess closes what has its final number already.
    program.closeWriteChannel();
    program.waitForStarted(programTimeoutMs);
    program.waitForFinished(programTimeoutMs);
    // One that hangs is ended here, silently; QProcess would complain of it in the log.
    program.kill();
    program.waitForFinished(programTimeoutMs);
}

bool writeCopy(const QString &copy, const QByteArray &json)
{
    QFile file(copy);
    if (!file.open(QIODevice::WriteOnly)) {
        qCritical().noquote() << copy << file.errorString();
        return false;
    }
    file.write(json);
    file.flush();
    file.close();
    writeChecksumOf(copy);
    forceToDisk();
    return true;
}

/// Whether the copy has the checksum that stands beside it. `bytes` becomes its content as soon as
/// both files could be opened.
bool readChecked(const QString &copy, QByteArray &bytes)
{
    if (!QFile::exists(copy))
        return false;
    QFile checksumFile(checksumFileOf(copy));
    if (!checksumFile.open(QIODevice::ReadOnly))
        return false;
    const QByteArray expected = QByteArray::fromHex(checksumFile.read(checksumDigits));
    checksumFile.close();

    QFile file(copy);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bytes = file.readAll();
    file.close();
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1) == expected;
}

}  // namespace

bool TextPrinterDocument::saveToFile(const QString &path) const
{
    if (path.isEmpty())
        return false;
    const QByteArray json = QJsonDocument::fromVariant(toMap()).toJson(QJsonDocument::Compact);
    // The backup is opened only after the primary is on the disk with its checksum.
    const bool primaryWritten = writeCopy(path, json);
    const bool backupWritten = writeCopy(backupOf(path), json);
    return primaryWritten && backupWritten;
}

bool TextPrinterDocument::loadFromFile(const QString &path)
{
    if (path.isEmpty())
        return false;
    QByteArray bytes;
    const QString copy = readChecked(path, bytes) ? path : backupOf(path);
    if (!readChecked(copy, bytes))
        return false;
    QJsonParseError error{};
    setMap(QJsonDocument::fromJson(bytes, &error).toVariant().toMap());
    return error.error == QJsonParseError::NoError;
}

void TextPrinterDocument::removeFile(const QString &path) const
{
    const QString backup = backupOf(path);
    for (const QString &file : {path, checksumFileOf(path), backup, checksumFileOf(backup)})
        QFile::remove(file);
    forceToDisk();
}
