#pragma once

#include <QtTest>

#include "job/jobrecord_p.h"
#include "jobparts.h"

#define TRY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)

/// A printer, its line, its lock, and a receipt for it.
namespace jobparts {

inline PrinterProfile profileOf(const QString &id)
{
    return PrinterProfile::forModel(id).value();
}

/// A general printer that answers GS ( H.
inline PrinterProfile respondingPrinter()
{
    PrinterModels models;
    const QStringList faults = models.add(
        R"([{"id": "SHOP", "like": "GENERAL_EPSON_PROTOCOL", "confirmation": "ResponseId"}])",
        "models.json");
    if (!faults.isEmpty())
        qFatal("%s", qPrintable(faults.join('\n')));
    return PrintTarget::forModel(models, "SHOP", 0)->profile();
}

/// A reset, two lines with a picture between them, and a cut.
inline EncodedDocument receipt()
{
    EncodedDocument document;
    document.bytes = "\x1B@";
    document.marks.append({0, 0, 0});
    const auto mark = [&document](int block, int line) {
        document.marks.append({document.bytes.size(), block, line});
    };
    mark(1, 1);
    document.bytes += "Total 1\n";
    mark(2, 0);
    document.bytes += QByteArray("\x1Dv0\0\x02\0\x08\0", 8) + QByteArray(16, 'X');
    mark(3, 1);
    document.bytes += "Thanks\n";
    mark(0, 0);
    document.bytes += QByteArray("\x1DV\x01", 3);
    return document;
}

struct Setting
{
    PrinterProfile profile = profileOf("GENERAL_EPSON_PROTOCOL");
    EncodedDocument document = receipt();
    PrintJobOptions options = soon();
    PrinterAddress where = address();
    QTemporaryDir folder;
    std::unique_ptr<Printer> printer = std::make_unique<Printer>(profile);
    Line *line = nullptr;

    explicit Setting(const PrinterProfile &model = profileOf("GENERAL_EPSON_PROTOCOL"))
        : profile(model), printer(std::make_unique<Printer>(model))
    {}
    std::unique_ptr<Job> job()
    {
        line = new Line(where, printer.get());
        return std::make_unique<Job>(document, profile, line, new Lock(where, folder.path()),
                                     options);
    }
    std::unique_ptr<Job> run()
    {
        auto one = job();
        one->start();
        finish(*one);
        return one;
    }
    static void finish(Job &one)
    {
        TRY(one.ends > 0);
        QTest::qWait(2);
        QCOMPARE(one.ends, 1);
        QVERIFY(one.isFinished());
    }
    JobRecord record()
    {
        Lock lock(where, folder.path());
        if (!lock.waitFor(500))
            qFatal("no lock");
        return JobRecord::fromBytes(lock.record());
    }
    /// Whether all that is printed of the document stands behind `from`, whole.
    bool hasWhole(int from = 0) const
    {
        const QByteArray behindReset = document.bytes.mid(2);
        return printer->got.indexOf(behindReset, from) >= 0;
    }
};

/// The commands that a printer makes of bytes, but for texts and for what it ignores.
inline QVector<QByteArray> commandsIn(const QByteArray &bytes, const PrinterProfile &profile)
{
    QVector<QByteArray> found;
    for (const StreamCommand &command : StreamReader::commandsOf(bytes, profile)) {
        if (command.kind != StreamCommand::Text && command.bytes != QByteArray(1, '\0'))
            found.append(command.bytes);
    }
    return found;
}

}  // namespace jobparts
