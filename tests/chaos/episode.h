#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

#include "deviceline.h"
#include "judge.h"
#include "plan.h"
#include "playing.h"
#include "queueclient.h"

namespace chaos {

/// A printer that tells of bytes that it has been sent.
class WatchedDevice : public PrinterDevice
{
public:
    using PrinterDevice::PrinterDevice;
    /// Has something happen behind so many bytes.
    void watch(qint64 byte, std::function<void()> happening);
    void take(const QByteArray &bytes) override;

private:
    struct Watched
    {
        qint64 byte = 0;
        std::function<void()> happening;
    };
    QVector<Watched> m_watched;
};

/// One printer in this process, with the processes that print on it.
class Episode : public QObject
{
    Q_OBJECT

public:
    /// @param folder an empty one, for its locks
    Episode(const EpisodePlan &plan, const QString &folder);
    ~Episode() override;

    void start();
    const EpisodePlan &plan() const { return m_plan; }
    /// Valid behind finished().
    const QVector<JobEnd> &ends() const { return m_ends; }
    const QVector<printerslib::drivers::Paper> &papers() const { return m_papers; }
    bool comesToRest() const { return m_looks < mostLooks; }
    /// What the printer has of a command that isn't whole in the end.
    int openBytes() const { return m_openBytes; }
    bool hasHung() const { return m_hasHung; }
    const QVector<QueueReport> &queue() const { return m_queue; }
    const QStringList &events() const { return m_events; }

Q_SIGNALS:
    void finished();

private:
    static constexpr int mostLooks = 700;  ///< at a printer that is to come to rest

    bool openLine();
    QString address() const;
    void planTrouble(const Trouble &trouble);
    void befall(const Trouble &trouble);
    void apply(const PrinterFault &fault);
    void startJobs();
    void startJob(int number);
    void jobHasEnded(int number);
    std::shared_ptr<QProcess> startProcess(const QStringList &arguments,
                                           std::function<void()> ended);
    void startHelper(const QStringList &arguments);
    void helperHasEnded();
    void startPrinter();
    void settleQueue();
    void endTroubles();
    void waitForQuiet();
    void end();
    void note(const QString &text);

    const EpisodePlan m_plan;
    const QString m_folder;
    const printerslib::drivers::PrinterProfile m_profile;
    WatchedDevice m_device;
    std::unique_ptr<VirtualPrinter> m_terminal;
    std::unique_ptr<DeviceLine> m_line;
    std::unique_ptr<Playing> m_playing;
    QVector<JobEnd> m_ends;
    QVector<std::shared_ptr<QProcess>> m_processes;
    QVector<printerslib::drivers::Paper> m_papers;
    QStringList m_events;
    QElapsedTimer m_clock;
    QTimer m_quietTimer;
    QVector<QueueReport> m_queue;
    std::shared_ptr<QProcess> m_helper;  ///< that prints a queue, or decides what becomes of it
    int m_printers = 0;                  ///< that were started
    int m_settlings = 0;
    int m_openBytes = 0;
    int m_started = 0;
    int m_running = 0;
    int m_inForce = 0;       ///< troubles
    bool m_hasHung = false;  ///< of a queue
    bool m_isOver = false;   ///< what befalls it
    int m_quietLooks = 0;
    int m_looks = 0;
    qint64 m_seenBytes = -1;
};

}  // namespace chaos
