#pragma once

#include <printerslib/drivers/glyphreader.h>
#include <printerslib/drivers/streaminterpreter.h>
#include <printerslib/drivers/symbologydrawer.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "printers/printerinfo.h"
#include "typeface.h"

/// What there is to say of pieces of paper.
struct PaperReport
{
    QStringList lines;
    QStringList failures;  ///< pieces that couldn't be written
};

/// What a virtual printer prints, in a folder: a picture and the text of each piece of paper. Files
/// that are there already stay; the numbers go on behind them.
class PaperFolder
{
public:
    /// The paper is the widest that the catalogue has for the model.
    PaperFolder(const printerslib::drivers::PrinterProfile &profile, const QString &folder);

    /// Makes the folder, tries to write into it, and loads the fonts. Gives false with a message on
    /// failure.
    bool open(QString *error);

    /// What its interpreter is told, or another one whose paper goes here.
    printerslib::drivers::StreamInterpreter::Options options() const;

    /// Writes pieces that were printed elsewhere.
    PaperReport write(const QVector<printerslib::drivers::Paper> &pieces);
    /// Takes what the printer is sent, and gives a line for each piece that is cut by it, behind
    /// one for each thing that the printer doesn't do as it is asked.
    PaperReport take(const QByteArray &bytes);
    /// The end: what hangs in the printer is written, too.
    PaperReport finish();

private:
    using Print = printerslib::drivers::Paper;

    void write(const Print &piece, PaperReport &report);
    QString freeName();

    const printerslib::drivers::SymbologyDrawer m_codes;
    const printerslib::drivers::GlyphReader m_letters;
    PrinterInfo m_model;
    int m_paper = 0;
    printerslib::drivers::StreamInterpreter m_interpreter;
    const QString m_folder;
    receiptpreview::Typeface m_typeface;
    int m_number = 0;  ///< of the last piece
};
