#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>
#include <optional>

#include "job/queuedjob_p.h"
#include "transport/turns_p.h"

namespace printerslib::drivers {

/// The files of a queue, each a job: what waits lies in the folder itself, what is at its end in
/// "journal", what can't be read in "damaged". A name is a number and stays one job's for ever.
///
/// A job that lies in the journal is at its end, also if a power cut has left it in front, too.
/// Files of other names are left alone.
class QueueFolder
{
public:
    enum class Place { Queue, Journal, Damaged };
    /// Tells each step on the disk, for tests that end the process there.
    static void (*_atStep)();

    explicit QueueFolder(const QString &path);
    static QString nameOf(qint64 id);

    const QString &path() const { return m_path; }
    QString fault() const { return m_fault; }

    /// Makes what there isn't.
    bool make();
    /// Whether this user may look into it, where ids() would else be none; also if it isn't there.
    bool canList();
    /// Until the result goes no other program changes the folder; null, with a fault, if that can't
    /// be had in so many milliseconds.
    std::unique_ptr<Turns> lock(int milliseconds);
    /// The right to print. Null if another one has it; then the fault says so. Under lock().
    std::unique_ptr<Turns> printingRight();

    /// From the lowest on; of the queue those that aren't in the journal.
    QVector<qint64> ids(Place place) const;
    /// One that was never in use; 0, with a fault, if there is none left. Under lock().
    qint64 freeId();
    /// Nothing, with a fault, if it can't be read.
    std::optional<QueuedJob> read(Place place, qint64 id);
    std::optional<QueuedJob> readHead(Place place, qint64 id);
    bool exists(Place place, qint64 id) const;

    // All below under lock(); durable when they return.
    bool write(Place place, const QueuedJob &job);
    bool moveToJournal(const QueuedJob &job);
    bool removeAll(Place place, const QVector<qint64> &ids);
    bool putAside(qint64 id);
    /// Takes away what processes that were ended have left.
    void tidy();

    QStringList damagedNames() const;
    /// Whether what read() couldn't read is damaged for good, and not just another version's, or
    /// kept from this user.
    bool isDamage() const { return m_isDamage; }

private:
    QVector<qint64> allIds(Place place) const;
    QString folderOf(Place place) const;
    QString pathOf(Place place, qint64 id) const;
    bool open(QFile &file, Place place, qint64 id);
    std::optional<QByteArray> contentOf(Place place, qint64 id, qint64 most);
    bool reportsDamage(Place place, qint64 id, const QueuedFault &fault);
    bool makeOne(const QString &path);
    bool replace(const QString &path, const QByteArray &bytes);
    void takeBack(const QString &path, bool isNew, QFile &before);
    bool sync(const QString &folder);
    bool fail(const QString &what, const QString &path);
    bool failOfSystem(const QString &path);

    const QString m_path;
    QString m_fault;
    bool m_isDamage = false;
};

}  // namespace printerslib::drivers
