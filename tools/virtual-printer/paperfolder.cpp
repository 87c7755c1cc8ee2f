#include "paperfolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryFile>
#include <algorithm>

#include "paper.h"
#include "picture.h"

namespace {

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamInterpreter;

PrinterInfo modelOf(const QString &id)
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    const auto model = std::find_if(models.begin(), models.end(),
                                    [&id](const PrinterInfo &info) { return info.id() == id; });
    return model == models.end() ? PrinterInfo() : *model;
}

StreamInterpreter::Options optionsOf(const PrinterInfo &model, int paper,
                                     const printerslib::drivers::CodeDrawer &codes)
{
    StreamInterpreter::Options options;
    options.paperDots = model.paperType(paper).pointsToLine();
    options.codes = &codes;
    return options;
}

}  // namespace

PaperFolder::PaperFolder(const QString &modelId, const QString &folder)
    : m_model(modelOf(modelId)),
      m_paper(receiptpreview::widestPaperOf(m_model)),
      m_interpreter(PrinterProfile::forModel(modelId).value_or(PrinterProfile()),
                    optionsOf(m_model, m_paper, m_codes)),
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

QStringList PaperFolder::take(const QByteArray &bytes)
{
    return write(m_interpreter.read(bytes));
}

QStringList PaperFolder::finish()
{
    return write(m_interpreter.finish());
}

QStringList PaperFolder::write(const QVector<Print> &pieces)
{
    QStringList lines;
    for (const Print &piece : pieces) {
        for (const Print::Event &event : piece.events) {
            if (event.kind == Print::Event::Note)
                lines.append(QStringLiteral("note: byte %1: %2").arg(event.offset).arg(event.text));
        }
        if (!piece.isBlankEnd())
            lines.append(write(piece));
    }
    return lines;
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

QString PaperFolder::write(const Print &piece)
{
    const QString name = freeName();
    // Only new files: what somebody else puts there under such a name is not written over.
    QFile picture(name + QStringLiteral(".png"));
    QFile text(name + QStringLiteral(".txt"));
    const receiptpreview::Layout layout({piece}, receiptpreview::Paper(m_model, m_paper, 0));
    QString error;
    bool isWritten = text.open(QIODevice::NewOnly | QIODevice::WriteOnly) &&
                     text.write(piece.toText().toUtf8()) >= 0 && text.flush();
    if (!isWritten)
        error = QStringLiteral("%1: %2").arg(text.fileName(), text.errorString());
    isWritten = isWritten && picture.open(QIODevice::NewOnly | QIODevice::WriteOnly) &&
                receiptpreview::writePng(
                    layout, m_typeface, 1, picture, [](int, int) {}, &error) &&
                picture.flush();
    if (!isWritten)
        return error.isEmpty()
                   ? QStringLiteral("%1: %2").arg(picture.fileName(), picture.errorString())
                   : error;
    return QStringLiteral("paper: %1, %2 x %3 dots, %4")
        .arg(picture.fileName())
        .arg(layout.size().width())
        .arg(layout.size().height())
        .arg(piece.isCut ? QLatin1String("cut") : QLatin1String("not cut"));
}
