#include "paperfolder.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include "paper.h"
#include "picture.h"

namespace {

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamInterpreter;

StreamInterpreter::Options optionsOf(const PrinterInfo &model, int paper,
                                     const printerslib::drivers::CodeDrawer &codes,
                                     const printerslib::drivers::LetterReader &letters)
{
    StreamInterpreter::Options options;
    options.paperDots = model.paperType(paper).pointsToLine();
    options.codes = &codes;
    options.letters = &letters;
    return options;
}

/// Only a new file: what somebody else puts there under such a name is not written over. Gives
/// false with a message on failure.
bool writeNew(const QString &fileName, const QByteArray &content, QString *error)
{
    QFile file(fileName);
    bool isWritten = file.open(QIODevice::NewOnly | QIODevice::WriteOnly | QIODevice::Unbuffered);
    // A disk that gets full takes a part, and says why only when it is asked again.
    for (qint64 done = 0; isWritten && done < content.size();) {
        const qint64 taken = file.write(content.constData() + done, content.size() - done);
        isWritten = taken > 0;
        done += taken;
    }
    if (!isWritten)
        *error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
    return isWritten;
}

}  // namespace

PaperFolder::PaperFolder(const PrinterProfile &profile, const QString &folder)
    : m_letters(profile),
      m_model(receiptpreview::catalogueModel(profile.catalogueId()).value_or(PrinterInfo())),
      m_paper(receiptpreview::widestPaperOf(m_model)),
      m_interpreter(profile, optionsOf(m_model, m_paper, m_codes, m_letters)),
      m_folder(folder)
{}

bool PaperFolder::open(QString *error)
{
    if (m_folder.isEmpty() || !QDir().mkpath(m_folder)) {
        *error = QStringLiteral("%1: the folder can't be made").arg(m_folder);
        return false;
    }
    QTemporaryFile probe(QDir(m_folder).filePath(QStringLiteral(".paper-XXXXXX")));
    if (!probe.open()) {
        *error = QStringLiteral("%1: %2").arg(m_folder, probe.errorString());
        return false;
    }
    return m_typeface.load(receiptpreview::Typeface::defaultFolder(), error);
}

StreamInterpreter::Options PaperFolder::options() const
{
    return optionsOf(m_model, m_paper, m_codes, m_letters);
}

PaperReport PaperFolder::take(const QByteArray &bytes)
{
    return write(m_interpreter.read(bytes));
}

PaperReport PaperFolder::finish()
{
    return write(m_interpreter.finish());
}

PaperReport PaperFolder::write(const QVector<Print> &pieces)
{
    PaperReport report;
    for (const Print &piece : pieces) {
        for (const Print::Event &event : piece.events) {
            if (event.kind == Print::Event::Note)
                report.lines.append(
                    QStringLiteral("note: byte %1: %2").arg(event.offset).arg(event.text));
        }
        if (!piece.isBlankEnd())
            write(piece, report);
    }
    return report;
}

/// Without the suffix.
QString PaperFolder::freeName()
{
    constexpr int digits = 4;
    const QDir folder(m_folder);
    QString name;
    do {
        ++m_number;
        name =
            folder.filePath(QStringLiteral("paper-%1").arg(m_number, digits, 10, QLatin1Char('0')));
    } while (QFile::exists(name + QStringLiteral(".png")) ||
             QFile::exists(name + QStringLiteral(".txt")));
    return name;
}

void PaperFolder::write(const Print &piece, PaperReport &report)
{
    const QString name = freeName();
    const QString pictureName = name + QStringLiteral(".png");
    QString error;
    if (!writeNew(name + QStringLiteral(".txt"), piece.toText().toUtf8(), &error)) {
        report.failures.append(error);
        return;
    }
    const receiptpreview::Layout layout({piece}, receiptpreview::Paper(m_model, m_paper));
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    if (!receiptpreview::writePng(
            layout, m_typeface, 1, picture, [](int, int) {}, &error)) {
        report.failures.append(QStringLiteral("%1: %2").arg(pictureName, error));
        return;
    }
    if (!writeNew(pictureName, picture.data(), &error)) {
        report.failures.append(error);
        return;
    }
    report.lines.append(QStringLiteral("paper: %1, %2 x %3 dots, %4")
                            .arg(pictureName)
                            .arg(layout.size().width())
                            .arg(layout.size().height())
                            .arg(piece.isCut ? QLatin1String("cut") : QLatin1String("not cut")));
}
