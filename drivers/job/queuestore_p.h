#pragma once

#include <QVector>
#include <functional>
#include <memory>
#include <optional>

#include "job/queuefolder_p.h"

namespace printerslib::drivers {

/// What becomes of jobs in a folder: each operation takes the folder's lock, looks at how things
/// are, and leaves them durable, or as they were and with a fault.
class QueueStore
{
public:
    using Place = QueueFolder::Place;
    using State = PrintQueueEntry::State;

    explicit QueueStore(const QString &path) : m_folder(path) {}

    const QString &path() const { return m_folder.path(); }
    QString fault() const { return m_fault; }
    void setRetention(int days, int count);

    qint64 add(QueuedJob job);
    QVector<PrintQueueEntry> entries();
    QVector<PrintQueueEntry> journal(int most);
    std::optional<PrintQueueEntry> entry(qint64 id);
    std::optional<EncodedDocument> document(qint64 id);
    QStringList damagedFiles();
    bool repeat(qint64 id, const QString &line);
    bool drop(qint64 id);
    /// @param documentNumber null: the last of all that printed something
    qint64 reprint(const std::optional<QString> &documentNumber, const QString &line);

    // ---- Of the one that prints
    /// Takes the right to print. What is begun and without an end is Unknown from now on, as nobody
    /// prints it any more; what is damaged is put aside.
    /// @return what was put aside, one text for each; nothing if the right can't be had
    std::optional<QStringList> beginPrinting();
    void endPrinting();
    bool isPrinting() const { return m_right != nullptr; }
    /// The first that waits and that is wanted.
    std::optional<QueuedJob> next(const std::function<bool(const PrintQueueEntry &)> &isWanted);
    /// Whether somebody has given up what waits here.
    bool isDropped(qint64 id) const;
    /// False if it isn't to be printed, or that can't be written down.
    bool begin(QueuedJob &job);
    /// Keeps what has become of a job that was begun.
    bool end(const QueuedJob &job);

private:
    std::unique_ptr<Turns> lock(int milliseconds);
    bool fail(const QString &fault);
    bool failOfFolder() { return fail(m_folder.fault()); }
    bool settle();
    QString jobText(qint64 id) const;
    std::optional<QueuedJob> decidable(qint64 id);
    qint64 lastReceipt(const std::optional<QString> &documentNumber);
    std::optional<QueuedJob> original(const std::optional<QString> &documentNumber);
    int countOfOld(const QVector<qint64> &ids);
    void prune();
    QStringList putAsideWhatIsDamaged();

    QueueFolder m_folder;
    QString m_fault;
    int m_days = 0;
    int m_count = 0;
    std::unique_ptr<Turns> m_right;
    qint64 m_begun = 0;  ///< under way in this process
};

}  // namespace printerslib::drivers
