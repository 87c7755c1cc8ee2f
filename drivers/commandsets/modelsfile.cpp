#include "commandsets/modelsfile_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <limits>

#include "commandsets/codepage_p.h"
#include "commandsets/printerprofile_p.h"
#include "printerslib/drivers/codepage.h"

namespace printerslib::drivers {

namespace {

/// A whole number within bounds, or what was expected instead.
std::optional<int> numberIn(const QJsonValue &value, int least, int most)
{
    const int number = value.toInt(std::numeric_limits<int>::min());
    if (number < least || number > most)
        return std::nullopt;
    return number;
}

QString setNumber(const QJsonValue &value, int least, int most, int &target)
{
    const auto number = numberIn(value, least, most);
    if (!number)
        return QStringLiteral("a whole number from %1 to %2").arg(least).arg(most);
    target = *number;
    return {};
}

QString setSize(const QJsonValue &value, int most, QSize &target)
{
    const QJsonArray pair = value.toArray();
    const auto width = pair.size() == 2 ? numberIn(pair.at(0), 1, most) : std::nullopt;
    const auto height = pair.size() == 2 ? numberIn(pair.at(1), 1, most) : std::nullopt;
    if (!width || !height)
        return QStringLiteral("two whole numbers from 1 to %1").arg(most);
    target = {*width, *height};
    return {};
}

struct NamedValue
{
    const char *name;
    int value;
};

constexpr NamedValue dialectNames[] = {
    {"EscPos", int(Dialect::EscPos)},
    {"StarLine", int(Dialect::StarLine)},
    {"Swecoin", int(Dialect::Swecoin)},
};

constexpr NamedValue vendorNames[] = {
    {"General", int(Vendor::General)}, {"Epson", int(Vendor::Epson)},
    {"Custom", int(Vendor::Custom)},   {"Citizen", int(Vendor::Citizen)},
    {"Star", int(Vendor::Star)},       {"Swecoin", int(Vendor::Swecoin)},
};

template <typename Enum, size_t size>
QString setNamed(const QJsonValue &value, const NamedValue (&names)[size], Enum &target)
{
    QStringList known;
    for (const NamedValue &named : names) {
        if (value.toString() == QLatin1String(named.name)) {
            target = Enum(named.value);
            return {};
        }
        known.append(QLatin1String(named.name));
    }
    return QStringLiteral("one of ") + known.join(QStringLiteral(", "));
}

constexpr int mostDots = 4096;
constexpr int mostUnitsPerInch = 1440;

}  // namespace

/// How a key's value gets into the data: a number by its bounds, all else by a function, which
/// returns what it had expected instead.
struct ModelsFile::Fact
{
    const char *key;
    int Data::*number;
    int least;
    int most;
    QString (*read)(const ModelsFile &file, const QJsonValue &value, Data &data);

    static Fact of(const char *key, int Data::*number, int least, int most)
    {
        return {key, number, least, most, nullptr};
    }
    static Fact of(const char *key, QString (*read)(const ModelsFile &, const QJsonValue &, Data &))
    {
        return {key, nullptr, 0, 0, read};
    }

    static QString readId(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readDialect(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readVendor(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readMotionUnits(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readFonts(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readPages(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readKanjiSet(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readNote(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readSources(const ModelsFile &file, const QJsonValue &value, Data &data);
};

QString ModelsFile::Fact::readId(const ModelsFile & /*file*/, const QJsonValue &value, Data &data)
{
    data.modelId = value.toString();
    return data.modelId.isEmpty() ? QStringLiteral("a text") : QString();
}

QString ModelsFile::Fact::readDialect(const ModelsFile & /*file*/, const QJsonValue &value,
                                      Data &data)
{
    return setNamed(value, dialectNames, data.dialect);
}

QString ModelsFile::Fact::readVendor(const ModelsFile & /*file*/, const QJsonValue &value,
                                     Data &data)
{
    return setNamed(value, vendorNames, data.vendor);
}

QString ModelsFile::Fact::readMotionUnits(const ModelsFile & /*file*/, const QJsonValue &value,
                                          Data &data)
{
    return setSize(value, mostUnitsPerInch, data.motionUnits);
}

QString ModelsFile::Fact::readFonts(const ModelsFile & /*file*/, const QJsonValue &value,
                                    Data &data)
{
    QVector<QSize> cells;
    const QJsonArray list = value.toArray();
    for (const QJsonValue &item : list) {
        QSize cell;
        if (!setSize(item, 255, cell).isEmpty())
            return QStringLiteral("pairs of whole numbers from 1 to 255");
        cells.append(cell);
    }
    if (cells.isEmpty())
        return QStringLiteral("at least one pair of width and height");
    data.fonts = cells;
    return {};
}

QString ModelsFile::Fact::readSources(const ModelsFile & /*file*/, const QJsonValue &value,
                                      Data &data)
{
    if (!value.isObject())
        return QStringLiteral("an object of texts");
    const QJsonObject sources = value.toObject();
    for (auto it = sources.begin(); it != sources.end(); ++it) {
        if (it.value().toString().isEmpty() || factOf(it.key()) == nullptr)
            return QStringLiteral("facts' keys with texts; \"%1\" isn't so").arg(it.key());
        data.sources.insert(it.key(), it.value().toString());
    }
    return {};
}

QString ModelsFile::Fact::readKanjiSet(const ModelsFile & /*file*/, const QJsonValue &value,
                                       Data &data)
{
    data.kanjiSet = value.toString();
    const bool isKnown = data.kanjiSet.isEmpty() || TwoByteSet::forName(data.kanjiSet).has_value();
    return value.isString() && isKnown
               ? QString()
               : QStringLiteral("the name of a set of two-byte characters, or an empty text");
}

QString ModelsFile::Fact::readNote(const ModelsFile & /*file*/, const QJsonValue &value, Data &data)
{
    data.note = value.toString();
    return value.isString() ? QString() : QStringLiteral("a text");
}

QString ModelsFile::Fact::readPages(const ModelsFile &file, const QJsonValue &value, Data &data)
{
    return file.readCodePages(value, data);
}

const ModelsFile::Fact ModelsFile::facts[] = {
    Fact::of("id", &Fact::readId),
    Fact::of("dialect", &Fact::readDialect),
    Fact::of("vendor", &Fact::readVendor),
    Fact::of("headDots", &Data::headDots, 8, mostDots),
    Fact::of("dotsPerInch", &Data::dotsPerInch, 50, 1200),
    Fact::of("motionUnits", &Fact::readMotionUnits),
    Fact::of("lineSpacingUnits", &Data::lineSpacingUnits, 0, mostUnitsPerInch),
    Fact::of("lineSpacing", &Data::lineSpacing, 1, 1000),
    Fact::of("fonts", &Fact::readFonts),
    Fact::of("initialFont", &Data::initialFont, 0, 255),
    Fact::of("codePages", &Fact::readPages),
    Fact::of("initialCodePage", &Data::initialCodePage, 0, 255),
    Fact::of("kanjiSet", &Fact::readKanjiSet),
    Fact::of("dotsToCutter", &Data::dotsToCutter, 0, 2000),
    Fact::of("note", &Fact::readNote),
    Fact::of("sources", &Fact::readSources),
};

const ModelsFile::Fact *ModelsFile::factOf(const QString &key)
{
    const auto *const fact =
        std::find_if(std::begin(facts), std::end(facts),
                     [&key](const Fact &f) { return key == QLatin1String(f.key); });
    return fact == std::end(facts) ? nullptr : fact;
}

ModelsFile::ModelsFile(const QByteArray &json, const QString &fileName) : m_fileName(fileName)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isArray()) {
        const QString cause =
            document.isNull()
                ? QStringLiteral("%1, at byte %2").arg(error.errorString()).arg(error.offset)
                : QStringLiteral("not an array of models");
        m_errors.append(QStringLiteral("%1: %2").arg(fileName, cause));
        return;
    }
    const QJsonArray records = document.array();
    for (int i = 0; i < records.size(); ++i)
        readRecord(records.at(i), i + 1);
}

void ModelsFile::readRecord(const QJsonValue &value, int number)
{
    const QJsonObject record = value.toObject();
    const QString id = record.value(QStringLiteral("id")).toString();
    QScopedPointer<Data> data(m_profiles.isEmpty() ? new Data : new Data(*m_profiles.first().d));
    data->sources.clear();
    data->note.clear();
    QString fault = value.isObject() ? QString() : QStringLiteral("not an object");
    if (fault.isEmpty() && !record.contains(QStringLiteral("id")))
        fault = QStringLiteral("\"id\" is missing");
    const QStringList keys = record.keys();
    for (const QString &key : keys) {
        if (fault.isEmpty())
            fault = readFact(key, record, *data);
    }
    if (fault.isEmpty())
        fault = checkWhole(*data, record);
    if (fault.isEmpty()) {
        m_profiles.append(PrinterProfile(data.take()));
        return;
    }
    const QString model = id.isEmpty() ? QStringLiteral("model %1").arg(number) : id;
    m_errors.append(QStringLiteral("%1: %2: %3").arg(m_fileName, model, fault));
}

QString ModelsFile::readFact(const QString &key, const QJsonObject &record, Data &data) const
{
    const Fact *fact = factOf(key);
    if (fact == nullptr)
        return QStringLiteral("\"%1\" is no known key").arg(key);
    const QJsonValue value = record.value(key);
    const QString expected = fact->number != nullptr
                                 ? setNumber(value, fact->least, fact->most, data.*fact->number)
                                 : fact->read(*this, value, data);
    return expected.isEmpty() ? QString()
                              : QStringLiteral("\"%1\" has to be %2").arg(key, expected);
}

/// Either numbers with names, or the id of an earlier model that has the same.
QString ModelsFile::readCodePages(const QJsonValue &value, Data &data) const
{
    if (value.isString()) {
        const auto other = profile(value.toString());
        if (!other)
            return QStringLiteral("a model that stands before; \"%1\" doesn't")
                .arg(value.toString());
        data.codePages = other->codePages();
        return {};
    }
    data.codePages.clear();
    const QJsonObject pages = value.toObject();
    for (auto it = pages.begin(); it != pages.end(); ++it) {
        bool isNumber = false;
        const int number = it.key().toInt(&isNumber);
        if (!isNumber || number < 0 || number > 255)
            return QStringLiteral("numbers from 0 to 255 with names; \"%1\" isn't one")
                .arg(it.key());
        const auto page = CodePage::forName(it.value().toString());
        if (!page)
            return QStringLiteral("names of known character sets; \"%1\" isn't one")
                .arg(it.value().toString());
        data.codePages.insert(number, page->name());
    }
    return data.codePages.isEmpty() ? QStringLiteral("at least one number with its name")
                                    : QString();
}

/// What single values can't tell.
QString ModelsFile::checkWhole(const Data &data, const QJsonObject &record) const
{
    if (profile(data.modelId))
        return QStringLiteral("\"id\" stands there twice");
    if (data.headDots == 0 || data.dotsPerInch == 0 || data.motionUnits.isEmpty() ||
        data.lineSpacing == 0 || data.fonts.isEmpty() || data.codePages.isEmpty())
        return QStringLiteral("the first model has to have all facts");
    if (data.initialFont >= data.fonts.size())
        return QStringLiteral("\"initialFont\" is none of \"fonts\"");
    if (!data.codePages.contains(data.initialCodePage))
        return QStringLiteral("\"initialCodePage\" is none of \"codePages\"");
    const QStringList besides = {QStringLiteral("id"), QStringLiteral("note"),
                                 QStringLiteral("sources")};
    const QStringList keys = record.keys();
    for (const QString &key : keys) {
        if (!besides.contains(key) && !data.sources.contains(key))
            return QStringLiteral("\"%1\" has no source").arg(key);
    }
    return {};
}

QStringList ModelsFile::modelIds() const
{
    QStringList ids;
    for (const PrinterProfile &profile : m_profiles)
        ids.append(profile.modelId());
    return ids;
}

std::optional<PrinterProfile> ModelsFile::profile(const QString &modelId) const
{
    for (const PrinterProfile &profile : m_profiles) {
        if (profile.modelId() == modelId)
            return profile;
    }
    return std::nullopt;
}

}  // namespace printerslib::drivers
