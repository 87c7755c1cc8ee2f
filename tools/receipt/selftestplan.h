#pragma once

#include <printerslib/drivers/printermodels.h>
#include <printerslib/drivers/printtarget.h>

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace tool {

/// What the self test of a printer shows: all that its model's data say, and what else printers of
/// its dialect may have. A plain value.
class SelfTestPlan
{
public:
    /// @param models of which the target's is one
    SelfTestPlan(const printerslib::drivers::PrinterModels &models,
                 const printerslib::drivers::PrintTarget &target, int paperId);

    printerslib::drivers::PrinterModels models;
    printerslib::drivers::PrintTarget target;
    int paperId;
    bool isPaperChosen = false;

    bool hasRuler = false;
    bool hasRow = true;        ///< of digits, that the printer itself breaks
    bool hasLadder = false;    ///< that the cutter cuts through
    QVector<int> fonts;        ///< their numbers
    QMap<int, QString> pages;  ///< sets by their numbers; an empty name: nobody knows
    QStringList rasters;       ///< by their names in the data; the model's own is the first
    QStringList codes;         ///< likewise, those that the printer is to draw
    QStringList cuts;          ///< likewise; the model's own is the last
    QVector<int> pins;         ///< of drawers that are opened
    bool hasFormats = true;
    bool hasDrawings = true;  ///< codes as pictures

    const printerslib::drivers::PrinterProfile &profile() const { return target.profile(); }
    /// A fact of the model, as a file of models has it.
    QJsonValue fact(const QString &key) const { return profile().toJson().value(key); }
    /// The same printer, but for these facts.
    /// @param lineDots more than the paper has; 0: as the paper has
    printerslib::drivers::PrintTarget with(const QJsonObject &facts, int lineDots = 0) const;

    /// Dots of the ruler, from the left edge: of the head, whatever the paper is, unless one is
    /// chosen.
    int rulerDots() const { return isPaperChosen ? target.lineDots() : profile().headDots(); }
    /// Characters that are as long as that.
    int charactersOfRuler() const { return rulerDots() / target.font(0).cell.width(); }
    /// Characters of the row of digits: more than a line holds, so that the printer begins another.
    int charactersOfRow() const { return (charactersOfRuler() * 3 / 2 + 9) / 10 * 10; }
    /// Dots of the ladder, from where the head is when the cutter cuts.
    int ladderDots() const;
    /// Dots from one mark of ruler and ladder to the next.
    static constexpr int step = 8;
    /// Dots from one number of them to the next.
    static constexpr int numberStep = 32;

    /// How the printer draws a code, as a file of models has it: as the model's data say, or else
    /// as a general printer does.
    QJsonValue drawnCode(const QString &code) const;

    /// Whether the printer's commands have one that opens a drawer.
    bool opensDrawers() const;

    /// Names of the parts, for options: those that can be left out.
    static QStringList partNames();
    /// Shows these code pages, whether the model is known to have them or not.
    void choosePages(const QVector<int> &numbers);
    /// Leaves all parts out but these.
    void keepOnly(const QStringList &parts);
};

}  // namespace tool
