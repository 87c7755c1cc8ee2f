#include "printers/printerinfo.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <algorithm>
#include <iterator>
#include <mutex>

const QString PrinterInfo::RC_INFO_FILENAME = QStringLiteral(":/printinfo/printers.info");

/// A truth value of the record, and its keys in the two directions of the map form.
struct PrinterInfo::Flag
{
    bool PrinterInfo::*member;
    const char *readKey;
    const char *writtenKey;
};

constexpr PrinterInfo::Flag PrinterInfo::flags[] = {
    {&PrinterInfo::m_doubleWidth, "doubleWidth", "doubleWidth"},
    {&PrinterInfo::m_doubleHeight, "doubleHeight", "doubleHeight"},
    {&PrinterInfo::m_bold, "bold", "bold"},
    {&PrinterInfo::m_italic, "italic", "italic"},
    {&PrinterInfo::m_underline, "underline", "underline"},
    {&PrinterInfo::m_inversion, "inversion", "inversion"},
    {&PrinterInfo::m_alignCenter, "alignCenter", "alignCenter"},
    {&PrinterInfo::m_alignRight, "alignRight", "alignRight"},
    {&PrinterInfo::m_alignLeft, "alignLeft", "alignLeft"},
    {&PrinterInfo::m_alignJustify, "alignJustify", "alignJustify"},
    {&PrinterInfo::m_customSymbols, "customImages", "customSymbols"},
    {&PrinterInfo::m_customImages, "customImages", "customImages"},
    {&PrinterInfo::m_lineSpacing, "lineSpacing", "lineSpacing"},
    {&PrinterInfo::m_retraction, "retraction", "retraction"},
    {&PrinterInfo::m_ejection, "ejection_", "ejection"},
    {&PrinterInfo::m_retractTimeout, "retractTimeout", "retractTimeout"},
    {&PrinterInfo::m_paperLoopSupported, "paperLoopSupported", "paperLoopSupported"},
    {&PrinterInfo::m_checkMoveSettingsSupported, "checkMoveSettings", "checkMoveSettings"},
};

QString PrinterInfo::id() const
{
    return m_id;
}

void PrinterInfo::setId(const QString &id)
{
    m_id = id;
}

QString PrinterInfo::name() const
{
    return m_name;
}

void PrinterInfo::setName(const QString &name)
{
    m_name = name;
}

QString PrinterInfo::interface() const
{
    return m_interface;
}

void PrinterInfo::setInterface(const QString &interface)
{
    m_interface = interface;
}

bool PrinterInfo::doubleWidth() const
{
    return m_doubleWidth;
}

void PrinterInfo::setDoubleWidth(bool doubleWidth)
{
    m_doubleWidth = doubleWidth;
}

bool PrinterInfo::doubleHeight() const
{
    return m_doubleHeight;
}

void PrinterInfo::setDoubleHeight(bool doubleHeight)
{
    m_doubleHeight = doubleHeight;
}

bool PrinterInfo::bold() const
{
    return m_bold;
}

void PrinterInfo::setBold(bool bold)
{
    m_bold = bold;
}

bool PrinterInfo::italic() const
{
    return m_italic;
}

void PrinterInfo::setItalic(bool italic)
{
    m_italic = italic;
}

bool PrinterInfo::underline() const
{
    return m_underline;
}

void PrinterInfo::setUnderline(bool underline)
{
    m_underline = underline;
}

bool PrinterInfo::inversion() const
{
    return m_inversion;
}

void PrinterInfo::setInversion(bool inversion)
{
    m_inversion = inversion;
}

bool PrinterInfo::alignCenter() const
{
    return m_alignCenter;
}

void PrinterInfo::setAlignCenter(bool alignCenter)
{
    m_alignCenter = alignCenter;
}

bool PrinterInfo::alignRight() const
{
    return m_alignRight;
}

void PrinterInfo::setAlignRight(bool alignRight)
{
    m_alignRight = alignRight;
}

bool PrinterInfo::alignLeft() const
{
    return m_alignLeft;
}

void PrinterInfo::setAlignLeft(bool alignLeft)
{
    m_alignLeft = alignLeft;
}

bool PrinterInfo::alignJustify() const
{
    return m_alignJustify;
}

void PrinterInfo::setAlignJustify(bool alignJustify)
{
    m_alignJustify = alignJustify;
}

bool PrinterInfo::customSymbols() const
{
    return m_customSymbols;
}

void PrinterInfo::setCustomSymbols(bool customSymbols)
{
    m_customSymbols = customSymbols;
}

bool PrinterInfo::customImages() const
{
    return m_customImages;
}

void PrinterInfo::setCustomImages(bool customImages)
{
    m_customImages = customImages;
}

bool PrinterInfo::lineSpacing() const
{
    return m_lineSpacing;
}

void PrinterInfo::setLineSpacing(bool lineSpacing)
{
    m_lineSpacing = lineSpacing;
}

bool PrinterInfo::retraction() const
{
    return m_retraction;
}

void PrinterInfo::setRetraction(bool retraction)
{
    m_retraction = retraction;
}

bool PrinterInfo::ejection() const
{
    return m_ejection;
}

void PrinterInfo::setEjection(bool ejection)
{
    m_ejection = ejection;
}

bool PrinterInfo::retractTimeout() const
{
    return m_retractTimeout;
}

void PrinterInfo::setRetractTimeout(bool retractTimeout)
{
    m_retractTimeout = retractTimeout;
}

int PrinterInfo::resolution() const
{
    return m_resolution;
}

void PrinterInfo::setResolution(int resolution)
{
    m_resolution = resolution;
}

bool PrinterInfo::paperLoopSupported() const
{
    return m_paperLoopSupported;
}

void PrinterInfo::setPaperLoopSupported(bool paperLoopSupported)
{
    m_paperLoopSupported = paperLoopSupported;
}

bool PrinterInfo::checkMoveSettingsSupported() const
{
    return m_checkMoveSettingsSupported;
}

void PrinterInfo::setCheckMoveSettingsSupported(bool checkMoveSettingsSupported)
{
    m_checkMoveSettingsSupported = checkMoveSettingsSupported;
}

QMap<int, PaperInfo> PrinterInfo::paperTypes() const
{
    return m_paperTypes;
}

void PrinterInfo::setPaperTypes(const QMap<int, PaperInfo> &paperTypes)
{
    m_paperTypes = paperTypes;
}

void PrinterInfo::addPaperType(const PaperInfo &paperType)
{
    m_paperTypes.insert(paperType.id(), paperType);
}

PaperInfo PrinterInfo::paperType(int id) const
{
    if (m_paperTypes.isEmpty())
        return PaperInfo();
    return m_paperTypes.value(std::clamp(id, m_paperTypes.firstKey(), m_paperTypes.lastKey()));
}

QList<FontInfo> PrinterInfo::fontTypes() const
{
    return m_fontTypes;
}

void PrinterInfo::setFontTypes(const QList<FontInfo> &fontTypes)
{
    m_fontTypes = fontTypes;
}

void PrinterInfo::addFontType(const FontInfo &fontType)
{
    m_fontTypes.append(fontType);
}

void PrinterInfo::setMap(const QMap<QString, QVariant> &map)
{
    m_id = map.value(QStringLiteral("id")).toString();
    m_name = map.value(QStringLiteral("name")).toString();
    m_interface = map.value(QStringLiteral("interface")).toString();
    for (const Flag &flag : flags)
        this->*flag.member = map.value(QLatin1String(flag.readKey)).toBool();
    m_resolution = map.value(QStringLiteral("resolution")).toInt();
    paperFromMap(map.value(QStringLiteral("paperTypes")).toMap());
    fontFromMap(map.value(QStringLiteral("fontTypes")).toMap());
}

QMap<QString, QVariant> PrinterInfo::toMap() const
{
    QMap<QString, QVariant> map{
        {QStringLiteral("id"), m_id},
        {QStringLiteral("name"), m_name},
        {QStringLiteral("interface"), m_interface},
        {QStringLiteral("resolution"), m_resolution},
        {QStringLiteral("paperTypes"), paperToMap()},
        {QStringLiteral("fontTypes"), fontToMap()},
    };
    for (const Flag &flag : flags)
        map.insert(QLatin1String(flag.writtenKey), this->*flag.member);
    return map;
}

void PrinterInfo::fontFromMap(const QMap<QString, QVariant> &map)
{
    m_fontTypes.clear();
    for (auto entry = map.constBegin(); entry != map.constEnd(); ++entry) {
        QMap<QString, QVariant> fields = entry->toMap();
        fields.insert(QStringLiteral("id"), entry.key().toUInt());
        FontInfo font;
        font.setMap(fields);
        addFontType(font);
    }
}

void PrinterInfo::paperFromMap(const QMap<QString, QVariant> &map)
{
    m_paperTypes.clear();
    for (auto entry = map.constBegin(); entry != map.constEnd(); ++entry) {
        QMap<QString, QVariant> fields = entry->toMap();
        fields.insert(QStringLiteral("id"), entry.key().toUInt());
        PaperInfo paper;
        paper.setMap(fields);
        addPaperType(paper);
    }
}

QMap<QString, QVariant> PrinterInfo::fontToMap() const
{
    QMap<QString, QVariant> map;
    for (const FontInfo &font : m_fontTypes)
        map.insert(font.idAsString(), font.toMap());
    return map;
}

QMap<QString, QVariant> PrinterInfo::paperToMap() const
{
    QMap<QString, QVariant> map;
    for (const PaperInfo &paper : m_paperTypes)
        map.insert(paper.idAsString(), paper.toMap());
    return map;
}

QList<PrinterInfo> PrinterInfo::fromList(const QList<QVariant> &list)
{
    QList<PrinterInfo> records;
    PrinterInfo record;
    for (const QVariant &element : list) {
        record.setMap(element.toMap());
        records.append(record);
    }
    return records;
}

QList<PrinterInfo> PrinterInfo::fromJson(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        qCritical().noquote() << error.errorString();
        return {};
    }
    return fromList(document.toVariant().toList());
}

QList<PrinterInfo> PrinterInfo::fromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCritical().noquote() << file.errorString();
        return {};
    }
    return fromJson(file.readAll());
}

// At file scope, so that they outlive the static objects of clients.
static std::mutex catalogueMutex;
static QList<PrinterInfo> catalogue;  // clazy:exclude=non-pod-global-static

QList<PrinterInfo> PrinterInfo::fromResources()
{
    // Every object of the text printer's settings asks twice. The resource can't change; a failure
    // isn't kept, so that it is logged each time.
    {
        const std::lock_guard<std::mutex> lock(catalogueMutex);
        if (!catalogue.isEmpty())
            return catalogue;
    }
    // Not under the lock: a client's message handler may ask for the catalogue.
    const QList<PrinterInfo> read = fromFile(RC_INFO_FILENAME);
    const std::lock_guard<std::mutex> lock(catalogueMutex);
    if (catalogue.isEmpty())
        catalogue = read;
    return catalogue;
}

bool PrinterInfo::operator==(const PrinterInfo &other) const
{
    return m_id == other.m_id && m_name == other.m_name && m_interface == other.m_interface &&
           m_resolution == other.m_resolution &&
           std::all_of(std::begin(flags), std::end(flags), [this, &other](const Flag &flag) {
               return this->*flag.member == other.*flag.member;
           });
}

bool PrinterInfo::operator!=(const PrinterInfo &other) const
{
    return !(*this == other);
}
