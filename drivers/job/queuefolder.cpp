#include "job/queuefolder_p.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QThread>
#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace printerslib::drivers {

namespace {

constexpr int digitsOfId = 10;
constexpr int decimal = 10;
// Files keep them as JSON's numbers, which are exact up to 15 digits.
constexpr qint64 greatestId = 999'999'999'999'999;
constexpr int lockStepMilliseconds = 2;
constexpr mode_t modeOfQueue = S_IRWXU;
// Beyond the largest document with its head.
constexpr qint64 mostFile = qint64(1) << 28;

const QString jobSuffix = QStringLiteral(".job");

/// 0 for the name of something else.
qint64 idOfName(const QString &name)
{
    bool isNumber = false;
    const qint64 id = name.chopped(std::min(jobSuffix.size(), name.size())).toLongLong(&isNumber);
    const bool isId = isNumber && id > 0 && id <= greatestId;
    return isId && QueueFolder::nameOf(id) == name ? id : 0;
}

void atStep()
{
    if (QueueFolder::_atStep != nullptr)
        QueueFolder::_atStep();
}

}  // namespace

void (*QueueFolder::_atStep)() = nullptr;

QueueFolder::QueueFolder(const QString &path) : m_path(QDir(path).absolutePath()) {}

QString QueueFolder::nameOf(qint64 id)
{
    return QStringLiteral("%1").arg(id, digitsOfId, decimal, QLatin1Char('0')) + jobSuffix;
}

bool QueueFolder::fail(const QString &what, const QString &path)
{
    m_fault = QStringLiteral("%1: %2").arg(path, what);
    return false;
}

bool QueueFolder::failOfSystem(const QString &path)
{
    return fail(qt_error_string(errno), path);
}

QString QueueFolder::folderOf(Place place) const
{
    switch (place) {
        case Place::Journal:
            return m_path + QStringLiteral("/journal");
        case Place::Damaged:
            return m_path + QStringLiteral("/damaged");
        case Place::Queue:
            break;
    }
    return m_path;
}

QString QueueFolder::pathOf(Place place, qint64 id) const
{
    return folderOf(place) + QLatin1Char('/') + nameOf(id);
}

// ---- Folder and locks

bool QueueFolder::makeOne(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), modeOfQueue) != 0 && errno != EEXIST)
        return failOfSystem(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return failOfSystem(path);
    return S_ISDIR(status.st_mode) || fail(QStringLiteral("this is no folder"), path);
}

bool QueueFolder::make()
{
    const QString above = QFileInfo(m_path).path();
    if (!QFileInfo::exists(above) && !QDir().mkpath(above))
        return fail(QStringLiteral("the folder can't be made"), above);
    const bool isNew = !QFileInfo::exists(m_path);
    for (const Place place : {Place::Queue, Place::Journal, Place::Damaged}) {
        if (!makeOne(folderOf(place)))
            return false;
    }
    return !isNew || (sync(above) && sync(m_path));
}

bool QueueFolder::canList()
{
    for (const Place place : {Place::Queue, Place::Journal, Place::Damaged}) {
        const QString path = folderOf(place);
        DIR *const folder = ::opendir(QFile::encodeName(path).constData());
        if (folder == nullptr && errno != ENOENT)
            return failOfSystem(path);
        if (folder != nullptr)
            ::closedir(folder);
    }
    return true;
}

std::unique_ptr<Turns> QueueFolder::lock(int milliseconds)
{
    const QString path = m_path + QStringLiteral("/.lock");
    auto turns = std::make_unique<Turns>(path);
    const QDeadlineTimer end(milliseconds);
    while (true) {
        const Turns::Outcome outcome = turns->attempt();
        if (outcome == Turns::Outcome::Taken)
            return turns;
        if (outcome == Turns::Outcome::Failed) {
            m_fault = turns->fault();
            return nullptr;
        }
        if (end.hasExpired()) {
            fail(QStringLiteral("another program has held the folder for %1 s")
                     .arg(double(milliseconds) / 1000),
                 m_path);
            return nullptr;
        }
        QThread::msleep(lockStepMilliseconds);
    }
}

std::unique_ptr<Turns> QueueFolder::printingRight()
{
    auto turns = std::make_unique<Turns>(m_path + QStringLiteral("/.printing"));
    const Turns::Outcome outcome = turns->attempt();
    if (outcome == Turns::Outcome::Taken)
        return turns;
    if (outcome == Turns::Outcome::Failed)
        m_fault = turns->fault();
    else
        fail(QStringLiteral("another program prints what is in it"), m_path);
    return nullptr;
}

// ---- What there is

QVector<qint64> QueueFolder::allIds(Place place) const
{
    QVector<qint64> found;
    const QStringList names =
        QDir(folderOf(place))
            .entryList({QLatin1Char('*') + jobSuffix},
                       QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString &name : names) {
        const qint64 id = idOfName(name);
        if (id > 0)
            found.append(id);
    }
    std::sort(found.begin(), found.end());
    return found;
}

QVector<qint64> QueueFolder::ids(Place place) const
{
    QVector<qint64> found = allIds(place);
    if (place == Place::Queue)
        found.erase(std::remove_if(found.begin(), found.end(),
                                   [this](qint64 id) { return exists(Place::Journal, id); }),
                    found.end());
    return found;
}

qint64 QueueFolder::freeId()
{
    qint64 greatest = 0;
    for (const Place place : {Place::Queue, Place::Journal, Place::Damaged}) {
        const QVector<qint64> used = allIds(place);
        greatest = used.isEmpty() ? greatest : std::max(greatest, used.constLast());
    }
    if (greatest < greatestId)
        return greatest + 1;
    fail(QStringLiteral("a file has the greatest number that a job may have"), m_path);
    return 0;
}

bool QueueFolder::exists(Place place, qint64 id) const
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(pathOf(place, id)).constData(), &status) == 0;
}

QStringList QueueFolder::damagedNames() const
{
    QStringList names = QDir(folderOf(Place::Damaged))
                            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (QString &name : names)
        name.prepend(QStringLiteral("damaged/"));
    return names;
}

// ---- Reading

bool QueueFolder::open(QFile &file, Place place, qint64 id)
{
    const QString path = pathOf(place, id);
    m_isDamage = false;
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        m_isDamage = errno == ELOOP;
        return failOfSystem(path);
    }
    struct stat status = {};
    const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle) || !isFile) {
        m_isDamage = !isFile;
        return fail(QStringLiteral("this is no file"), path);
    }
    return true;
}

std::optional<QByteArray> QueueFolder::contentOf(Place place, qint64 id, qint64 most)
{
    QFile file;
    if (!open(file, place, id))
        return std::nullopt;
    const QByteArray bytes = file.read(std::min(most, file.size()));
    if (file.error() == QFileDevice::NoError)
        return bytes;
    fail(file.errorString(), pathOf(place, id));
    return std::nullopt;
}

bool QueueFolder::reportsDamage(Place place, qint64 id, const QueuedFault &fault)
{
    m_isDamage = fault.isDamage;
    return fail(fault.text, pathOf(place, id));
}

std::optional<QueuedJob> QueueFolder::read(Place place, qint64 id)
{
    QueuedFault fault;
    const auto bytes = contentOf(place, id, mostFile);
    auto job = bytes ? QueuedJob::fromBytes(*bytes, id, &fault) : std::nullopt;
    if (bytes && !job)
        reportsDamage(place, id, fault);
    return job;
}

std::optional<QueuedJob> QueueFolder::readHead(Place place, qint64 id)
{
    QueuedFault fault;
    const auto bytes = contentOf(place, id, QueuedJob::mostHead);
    auto job = bytes ? QueuedJob::fromHead(*bytes, id, &fault) : std::nullopt;
    if (bytes && !job)
        reportsDamage(place, id, fault);
    return job;
}

// ---- Writing

bool QueueFolder::sync(const QString &folder)
{
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return failOfSystem(folder);
    // Some file systems have no fsync of folders, and do without.
    const bool isSynced = ::fsync(descriptor) == 0 || errno == EINVAL;
    if (!isSynced)
        failOfSystem(folder);
    ::close(descriptor);
    return isSynced;
}

// Not by QSaveFile, which tells neither of the folder's fsync nor where it stands between its
// steps.
bool QueueFolder::replace(const QString &path, const QByteArray &bytes)
{
    QTemporaryFile file(path + QStringLiteral(".XXXXXX"));
    atStep();
    if (!file.open())
        return fail(file.errorString(), path);
    atStep();
    if (file.write(bytes) != bytes.size() || !file.flush())
        return fail(file.errorString(), path);
    atStep();
    if (::fsync(file.handle()) != 0)
        return failOfSystem(path);
    atStep();
    if (::rename(QFile::encodeName(file.fileName()).constData(),
                 QFile::encodeName(path).constData()) != 0)
        return failOfSystem(path);
    file.setAutoRemove(false);
    atStep();
    return true;
}

bool QueueFolder::write(Place place, const QueuedJob &job)
{
    const QString path = pathOf(place, job.entry.id);
    const bool isNew = !exists(place, job.entry.id);
    // What has lost its name is there as long as it is open.
    QFile before;
    if (!isNew)
        open(before, place, job.entry.id);
    if (!replace(path, job.toBytes()))
        return false;
    const bool isDurable = sync(folderOf(place));
    if (!isDurable)
        takeBack(path, isNew, before);
    atStep();
    return isDurable;
}

/// What is refused isn't to be there after all: another one would read what wasn't done.
void QueueFolder::takeBack(const QString &path, bool isNew, QFile &before)
{
    const QString fault = m_fault;
    const QByteArray bytes = before.isOpen() ? before.readAll() : QByteArray();
    if (isNew)
        ::unlink(QFile::encodeName(path).constData());
    else if (!bytes.isEmpty() && before.error() == QFileDevice::NoError)
        replace(path, bytes);
    m_fault = fault;
}

bool QueueFolder::moveToJournal(const QueuedJob &job)
{
    return write(Place::Journal, job) && removeAll(Place::Queue, {job.entry.id});
}

bool QueueFolder::removeAll(Place place, const QVector<qint64> &ids)
{
    for (const qint64 id : ids) {
        const QString path = pathOf(place, id);
        if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT)
            return failOfSystem(path);
        atStep();
    }
    return ids.isEmpty() || sync(folderOf(place));
}

bool QueueFolder::putAside(qint64 id)
{
    const QString from = pathOf(Place::Queue, id);
    if (::rename(QFile::encodeName(from).constData(),
                 QFile::encodeName(pathOf(Place::Damaged, id)).constData()) != 0)
        return failOfSystem(from);
    return sync(folderOf(Place::Damaged)) && sync(m_path);
}

void QueueFolder::tidy()
{
    static const QRegularExpression unfinished(
        QStringLiteral("\\A[0-9]{10,}\\.job\\.[A-Za-z]{6}\\z"));
    for (const Place place : {Place::Queue, Place::Journal}) {
        const QDir folder(folderOf(place));
        const QStringList names = folder.entryList(QDir::Files | QDir::NoSymLinks);
        for (const QString &name : names) {
            if (unfinished.match(name).hasMatch())
                QFile::remove(folder.filePath(name));
        }
    }
    const QVector<qint64> queued = allIds(Place::Queue);
    for (const qint64 id : queued) {
        if (exists(Place::Journal, id))
            removeAll(Place::Queue, {id});
    }
}

}  // namespace printerslib::drivers
