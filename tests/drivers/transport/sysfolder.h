#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "transport/usbprinters_p.h"

/// Folders that stand for /sys, /dev and /proc.
class SysFolder
{
public:
    printerslib::drivers::DeviceRoots roots() const
    {
        return {m_folder.filePath("sys"), m_folder.filePath("dev"), m_folder.filePath("proc")};
    }

    /// A printer at a plug such as "1-2". Without a device file the system's driver doesn't serve
    /// it.
    void plugIn(const QString &plug, const QByteArray &vendor, const QByteArray &product,
                const QByteArray &serialNumber, const QString &deviceFile, const QString &target,
                const QByteArray &interfaceClass = "07", const QString &driver = "usblp")
    {
        const QString device = "sys/bus/usb/devices/" + plug;
        const QString interface = device + ":1.0";
        write(device + "/idVendor", vendor + "\n");
        write(device + "/idProduct", product + "\n");
        if (!serialNumber.isEmpty())
            write(device + "/serial", serialNumber + "\n");
        write(interface + "/bInterfaceClass", interfaceClass + "\n");
        if (!driver.isEmpty())
            QFile::link("/nonexistent/drivers/" + driver, m_folder.filePath(interface + "/driver"));
        if (deviceFile.isEmpty())
            return;
        write(interface + "/usbmisc/" + QFileInfo(deviceFile).fileName() + "/uevent",
              "MAJOR=180\nDEVNAME=" + deviceFile.toLocal8Bit() + "\n");
        const QString path = m_folder.filePath("dev/" + deviceFile);
        QDir().mkpath(QFileInfo(path).path());
        QFile::link(target, path);
    }

    void pullOut(const QString &plug, const QString &deviceFile)
    {
        QDir(m_folder.filePath("sys/bus/usb/devices/" + plug)).removeRecursively();
        QDir(m_folder.filePath("sys/bus/usb/devices/" + plug + ":1.0")).removeRecursively();
        QFile::remove(m_folder.filePath("dev/" + deviceFile));
    }

    /// A process, by the name and arguments that it was started with.
    void start(int process, const QByteArray &commandLine)
    {
        write(QString("proc/%1/cmdline").arg(process), commandLine);
    }

private:
    void write(const QString &name, const QByteArray &content)
    {
        const QString path = m_folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s", qPrintable(path));
    }

    QTemporaryDir m_folder;
};
