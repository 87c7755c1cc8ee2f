#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>
#include <memory>

#include "deviceline.h"

/// A pseudo terminal that hears its client however that sets the line: what it is set to counts for
/// nobody.
class OpenLine : public DeviceLine
{
    Q_OBJECT

public:
    OpenLine();
    ~OpenLine() override;

    /// Makes the terminal, and a symbolic link to it unless the path is empty, which is removed in
    /// the end. Gives false with a message on failure.
    bool open(const QString &link, QString *error);

    void setObserver(Observer observer) override { m_observer = std::move(observer); }
    QString name() const override { return m_path; }
    QByteArray read(int most) override;
    void write(const QByteArray &bytes) override;
    void setListening(bool isListening) override;
    bool waits() const override { return true; }
    void setBusy(bool /*isBusy*/) override {}
    bool reset() override { return false; }
    void setPowered(bool /*isPowered*/) override {}

private:
    bool openTerminal();
    void tell(bool fromPrinter, const QByteArray &bytes);

    int m_master = -1;
    int m_slave = -1;  ///< held open, so that a client's end isn't that of the line
    QString m_path;
    QByteArray m_link;
    std::unique_ptr<QSocketNotifier> m_notifier;
    Observer m_observer;
};
