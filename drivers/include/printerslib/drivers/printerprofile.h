#pragma once

#include <QMap>
#include <QSharedDataPointer>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

#include "printerslib/drivers/drivers_export.h"

namespace printerslib::drivers {

/// The set of commands that a printer understands.
enum class Dialect { EscPos, StarLine, Swecoin };

/// Whose variant of a dialect a printer speaks, where manuals differ.
enum class Vendor { General, Epson, Custom, Citizen, Star, Swecoin };

/// What the driver knows of a model beside the catalogue: facts of its manual and firmware.
///
/// An implicitly shared value; any thread may use its own copy.
class PRINTERSLIB_DRIVERS_EXPORT PrinterProfile
{
public:
    /// Identifiers of the models that have data here: all of the catalogue.
    static QStringList modelIds();
    /// The data of a model of the catalogue. Nothing for an identifier that isn't in it.
    static std::optional<PrinterProfile> forModel(const QString &modelId);

    /// A general Epson printer for 80 mm paper.
    PrinterProfile();
    PrinterProfile(const PrinterProfile &other);
    PrinterProfile &operator=(const PrinterProfile &other);  ///< shares the data
    ~PrinterProfile();

    QString modelId() const;  ///< as in the catalogue
    Dialect dialect() const;  ///< the set of its commands
    Vendor vendor() const;    ///< whose variant of it
    /// Dots across that the head can burn.
    int headDots() const;
    /// Resolution of head and feed, in dots per inch.
    int dotsPerInch() const;
    /// Units of horizontal and of vertical motion per inch, until GS P or its like says otherwise.
    QSize motionUnitsPerInch() const;
    /// Units per inch of ESC 3 n, or 0 where they are those of vertical motion, and so follow GS P.
    int lineSpacingUnitsPerInch() const;
    /// Dots from the top of a line to that of the next after a reset.
    int lineSpacing() const;
    /// Dots of the cells of the printer's own fonts, in the order of ESC M n (0: font A).
    QVector<QSize> fontCells() const;
    /// The number of the font that is chosen after a reset.
    int initialFont() const;
    /// Character sets by the number that selects them: names that CodePage::forName() knows.
    QMap<int, QString> codePages() const;
    /// The number that is in force after a reset.
    int initialCodePage() const;
    /// The set of two-byte characters of a printer that begins in that mode; else empty.
    QString kanjiSet() const;
    /// Dots from head to cutter; 0 where there is no cutter.
    int dotsToCutter() const;
    /// Where a fact is from, by its name in the data, such as "headDots"; empty if it is the
    /// general Epson one.
    QString sourceOf(const QString &fact) const;
    /// What a reader of the facts should know, such as that the model has no public manual.
    QString note() const;

private:
    friend class ModelsFile;
    struct Data;
    explicit PrinterProfile(Data *data);
    QSharedDataPointer<Data> d;
};

}  // namespace printerslib::drivers
