#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include "printers/fontinfo.h"
#include "printers/paperinfo.h"
#include "printerslib_export.h"

/// What one printer model can do: a record of the catalogue. Plain value, cheap to copy; one object
/// is used by one thread at a time, and the static operations by any thread.
class PRINTERSLIB_EXPORT PrinterInfo
{
public:
    /// Path of the compiled-in catalogue. It comes into being when the library loads; code that
    /// runs earlier must not use it.
    static const QString RC_INFO_FILENAME;

    /// Identifier of the model, one of TextPrinterModels.
    QString id() const;
    void setId(const QString &id);

    /// Name shown to a user.
    QString name() const;
    void setName(const QString &name);

    /// Kind of connection: "serial" in a new record, empty after a map without the key.
    QString interface() const;
    void setInterface(const QString &interface);

    /// Whether the model prints characters of double width.
    bool doubleWidth() const;
    void setDoubleWidth(bool doubleWidth);
    /// Whether it prints characters of double height.
    bool doubleHeight() const;
    void setDoubleHeight(bool doubleHeight);
    /// Whether it prints bold.
    bool bold() const;
    void setBold(bool bold);
    /// Whether it prints italic.
    bool italic() const;
    void setItalic(bool italic);
    /// Whether it underlines.
    bool underline() const;
    void setUnderline(bool underline);
    /// Whether it prints white on black.
    bool inversion() const;
    void setInversion(bool inversion);

    /// Whether the model centres lines by itself.
    bool alignCenter() const;
    void setAlignCenter(bool alignCenter);
    /// Whether it puts lines to the right edge by itself.
    bool alignRight() const;
    void setAlignRight(bool alignRight);
    /// Whether it puts lines to the left edge by itself.
    bool alignLeft() const;
    void setAlignLeft(bool alignLeft);
    /// Whether it justifies lines by itself.
    bool alignJustify() const;
    void setAlignJustify(bool alignJustify);

    /// Whether the model takes user-defined characters.
    bool customSymbols() const;
    void setCustomSymbols(bool customSymbols);
    /// Whether the model stores images.
    bool customImages() const;
    void setCustomImages(bool customImages);

    /// Whether the line spacing can be set.
    bool lineSpacing() const;
    void setLineSpacing(bool lineSpacing);

    /// Whether the model can pull a ticket back.
    bool retraction() const;
    void setRetraction(bool retraction);
    /// Whether the model can eject a ticket.
    bool ejection() const;
    void setEjection(bool ejection);
    /// Whether the model pulls a ticket back after a time.
    bool retractTimeout() const;
    void setRetractTimeout(bool retractTimeout);

    /// Dots per inch.
    int resolution() const;
    void setResolution(int resolution);

    /// Whether the model can form a paper loop.
    bool paperLoopSupported() const;
    void setPaperLoopSupported(bool paperLoopSupported);

    /// Whether the movement of a receipt can be set.
    bool checkMoveSettingsSupported() const;
    void setCheckMoveSettingsSupported(bool checkMoveSettingsSupported);

    /// The paper types under their ids.
    QMap<int, PaperInfo> paperTypes() const;
    void setPaperTypes(const QMap<int, PaperInfo> &paperTypes);
    /// Inserts a paper type under its id, in place of one with the same id.
    void addPaperType(const PaperInfo &paperType);
    /// The paper type of that id, or of the nearest end when the id lies outside the range of ids.
    /// @return a default record where there are no paper types, or the id falls into a gap
    PaperInfo paperType(int id) const;

    /// The fonts, in the order of reading.
    QList<FontInfo> fontTypes() const;
    void setFontTypes(const QList<FontInfo> &fontTypes);
    /// Adds a font behind the others, whatever its id.
    void addFontType(const FontInfo &fontType);

    /// Assigns every field from a record of the catalogue; a missing key gives 0, false or an empty
    /// text, and an unknown key is ignored.
    /// Intended: "customImages" sets both customSymbols and customImages, and ejection is read from
    /// "ejection_", which the catalogue doesn't hold. Clients know the models by what results, so
    /// reader and writer keep their difference; test `writtenMapLosesEjectionAndCustomSymbols`.
    void setMap(const QMap<QString, QVariant> &map);
    /// The record as a map, fonts and paper types included.
    QMap<QString, QVariant> toMap() const;

    /// Replaces the fonts by those of a map from decimal ids; their order is that of the keys as
    /// text, so "10" precedes "2".
    void fontFromMap(const QMap<QString, QVariant> &map);
    /// Replaces the paper types by those of a map from decimal ids.
    void paperFromMap(const QMap<QString, QVariant> &map);
    /// The fonts as a map from decimal ids.
    QMap<QString, QVariant> fontToMap() const;
    /// The paper types as a map from decimal ids.
    QMap<QString, QVariant> paperToMap() const;

    /// One record for each element, which is taken as a map.
    static QList<PrinterInfo> fromList(const QList<QVariant> &list);
    /// The records of a JSON array. Text that is no JSON gives none and a critical log line; JSON
    /// that is no array gives none.
    static QList<PrinterInfo> fromJson(const QByteArray &json);
    /// The records of a JSON file. A file that can't be read gives none and a critical log line.
    static QList<PrinterInfo> fromFile(const QString &path);
    /// The compiled-in catalogue, which is parsed once in a process.
    static QList<PrinterInfo> fromResources();

    /// Intended: compares all fields but the paper types and the fonts, for clients take a record
    /// as the same model then; test `paperAndFontsDontTakePartInTheComparison`.
    bool operator==(const PrinterInfo &other) const;
    bool operator!=(const PrinterInfo &other) const;

private:
    struct Flag;
    static const Flag flags[];

    QString m_id;
    QString m_name;
    QString m_interface = QStringLiteral("serial");
    bool m_doubleWidth = false;
    bool m_doubleHeight = false;
    bool m_bold = false;
    bool m_italic = false;
    bool m_underline = false;
    bool m_inversion = false;
    bool m_alignCenter = false;
    bool m_alignRight = false;
    bool m_alignLeft = false;
    bool m_alignJustify = false;
    bool m_customSymbols = false;
    bool m_customImages = false;
    bool m_lineSpacing = false;
    bool m_retraction = false;
    bool m_ejection = false;
    bool m_retractTimeout = false;
    int m_resolution = 0;
    bool m_paperLoopSupported = false;
    bool m_checkMoveSettingsSupported = false;
    QMap<int, PaperInfo> m_paperTypes;
    QList<FontInfo> m_fontTypes;
};
