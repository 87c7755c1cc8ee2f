#pragma once

#include <QJsonObject>
#include <QMap>
#include <QSharedDataPointer>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// The set of commands that a printer understands.
enum class Dialect { EscPos, StarLine, Swecoin };

/// Whose variant of a dialect a printer speaks, where manuals differ.
enum class Vendor { General, Epson, Custom, Citizen, Star, Swecoin };

/// The command that takes pictures.
enum class RasterCommand {
    None,         ///< the printer takes none
    RasterBlock,  ///< GS v 0
    BitImage,     ///< ESC *, 24 dots high
    StarRows,     ///< ESC k: 24 rows
    SwecoinRows,  ///< ESC s or ESC l: a row
};

/// The command that cuts.
enum class CutCommand {
    None,          ///< there is no cutter
    GsV,           ///< GS V 0
    EscI,          ///< ESC i
    StarEscD,      ///< ESC d
    SwecoinEscRs,  ///< ESC RS
    GsVPartial,    ///< GS V 1, a bridge left: of printers that don't know GS V 0
};

/// What hands tickets out.
enum class Presenter {
    None,     ///< they hang where they are cut
    Custom,   ///< GS e
    Citizen,  ///< GS R
    Star,     ///< ESC SYN
    Swecoin,  ///< RS, ESC FF, EM, ENQ
};

/// How a printer says that it takes no more bytes.
enum class Handshake { None, RtsCts, DtrDsr, XonXoff };

/// What a printer can confirm.
enum class Confirmation {
    None,         ///< nothing: bytes are sent, no more
    Processed,    ///< GS r behind the last byte, then DLE EOT
    ResponseId,   ///< GS ( H: printed
    StarCounter,  ///< ETB in the automatic status: printed
    SwecoinData,  ///< ESC ENQ 6, "print data exists": printed
};

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
    /// Id of the catalogue's record that goes with it: its own, or for a model that a user's file
    /// adds that of the model which it is like.
    QString catalogueId() const;
    RasterCommand rasterCommand() const;  ///< how it takes pictures
    /// How many characters can be defined at a time, from 0x20 on; 0: none.
    int ownCharacters() const;
    /// Codes that the printer draws by itself, and how many bytes of data each takes at most.
    QMap<Paper::Symbology, int> drawnCodes() const;
    /// Dots of a barcode's module, and of a two-dimensional code's, the least and the greatest that
    /// can be chosen.
    int leastModule() const;
    int mostModule() const;         ///< the greatest of them
    CutCommand cutCommand() const;  ///< how it cuts
    Presenter presenter() const;    ///< how it hands out
    /// Milliseconds of a step of the timer behind which the presenter itself takes a ticket back,
    /// which has nine steps; 0: it has none.
    int presenterTimerStep() const;
    int drawers() const;          ///< connectors for them, 0 to 2
    int bufferBytes() const;      ///< that it takes before it says that it is busy; 0: unknown
    Handshake handshake() const;  ///< as it is delivered
    Confirmation confirmation() const;  ///< what it can tell of a job
    /// Whether GS ( D switches the commands off that act at once, even inside pictures.
    bool switchesRealTime() const;
    /// Whether it has macros (GS : and GS ^) that ESC @ leaves and power off takes: by one, a job
    /// learns whether the printer was off meanwhile.
    bool keepsMacro() const;
    /// All facts, as a file of models has them in one record.
    QJsonObject toJson() const;
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
