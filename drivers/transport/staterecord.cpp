#include "transport/staterecord_p.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryFile>

namespace printerslib::drivers {

namespace {

constexpr quint32 magic = 0x50525331;  // "PRS1"
constexpr int greatestFile = StateRecord::greatestSize + 1024;
const char recordSuffix[] = ".state";

QByteArray checksumOf(quint64 number, const QByteArray &bytes)
{
    return QCryptographicHash::hash(QByteArray::number(number) + ':' + bytes,
                                    QCryptographicHash::Sha256);
}

/// Of a file that the user has made who stands in its name; nothing of any other.
QByteArray contentOf(const QString &path, uid_t user)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != user)
        return {};
    return file.read(greatestFile);
}

void syncFolder(const QString &folder)
{
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace

struct StateRecord::Version
{
    quint64 number = 0;
    QByteArray bytes;
};

StateRecord::StateRecord(const QString &folder, const QString &name)
    : m_folder(folder), m_name(name)
{}

StateRecord::Version StateRecord::newest() const
{
    Version found;
    const QString suffix = QLatin1String(recordSuffix);
    const QStringList files =
        QDir(m_folder).entryList({m_name + QStringLiteral(".*") + suffix}, QDir::Files);
    for (const QString &file : files) {
        const QString user = file.mid(m_name.size() + 1).chopped(suffix.size());
        bool isNumber = false;
        const uid_t number = user.toUInt(&isNumber);
        QDataStream stream(isNumber ? contentOf(m_folder + QLatin1Char('/') + file, number)
                                    : QByteArray());
        stream.setVersion(QDataStream::Qt_5_15);
        quint32 start = 0;
        Version version;
        QByteArray checksum;
        stream >> start >> version.number >> version.bytes >> checksum;
        const bool isWhole = stream.status() == QDataStream::Ok && start == magic &&
                             checksum == checksumOf(version.number, version.bytes);
        if (isWhole && version.number > found.number)
            found = version;
    }
    return found;
}

QByteArray StateRecord::read() const
{
    return newest().bytes;
}

// Not by QSaveFile, which writes where a link leads that somebody else has put at the name.
bool StateRecord::write(const QByteArray &bytes) const
{
    if (bytes.size() > greatestSize)
        return false;
    const QString path = m_folder + QLatin1Char('/') + m_name + QLatin1Char('.') +
                         QString::number(::geteuid()) + QLatin1String(recordSuffix);
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    if (!file.open())
        return false;
    const quint64 number = newest().number + 1;
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << magic << number << bytes << checksumOf(number, bytes);
    const bool isKept = stream.status() == QDataStream::Ok && file.flush() &&
                        ::fsync(file.handle()) == 0 &&
                        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                            QFileDevice::ReadGroup | QFileDevice::ReadOther) &&
                        ::rename(QFile::encodeName(file.fileName()).constData(),
                                 QFile::encodeName(path).constData()) == 0;
    file.setAutoRemove(!isKept);
    syncFolder(m_folder);
    return isKept;
}

}  // namespace printerslib::drivers
