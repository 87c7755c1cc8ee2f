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

constexpr NamedValue rasterNames[] = {
    {"None", int(RasterCommand::None)},
    {"RasterBlock", int(RasterCommand::RasterBlock)},
    {"BitImage", int(RasterCommand::BitImage)},
    {"StarRows", int(RasterCommand::StarRows)},
    {"SwecoinRows", int(RasterCommand::SwecoinRows)},
};

constexpr NamedValue cutNames[] = {
    {"None", int(CutCommand::None)},
    {"GsV", int(CutCommand::GsV)},
    {"GsVPartial", int(CutCommand::GsVPartial)},
    {"EscI", int(CutCommand::EscI)},
    {"StarEscD", int(CutCommand::StarEscD)},
    {"SwecoinEscRs", int(CutCommand::SwecoinEscRs)},
};

constexpr NamedValue presenterNames[] = {
    {"None", int(Presenter::None)},       {"Custom", int(Presenter::Custom)},
    {"Citizen", int(Presenter::Citizen)}, {"Star", int(Presenter::Star)},
    {"Swecoin", int(Presenter::Swecoin)},
};

constexpr NamedValue handshakeNames[] = {
    {"None", int(Handshake::None)},
    {"RtsCts", int(Handshake::RtsCts)},
    {"DtrDsr", int(Handshake::DtrDsr)},
    {"XonXoff", int(Handshake::XonXoff)},
};

constexpr NamedValue confirmationNames[] = {
    {"None", int(Confirmation::None)},
    {"Processed", int(Confirmation::Processed)},
    {"ResponseId", int(Confirmation::ResponseId)},
    {"StarCounter", int(Confirmation::StarCounter)},
    {"SwecoinData", int(Confirmation::SwecoinData)},
};

using Symbology = Paper::Symbology;

constexpr NamedValue codeNames[] = {
    {"upcA", int(Symbology::UpcA)},
    {"upcE", int(Symbology::UpcE)},
    {"ean13", int(Symbology::Ean13)},
    {"ean8", int(Symbology::Ean8)},
    {"code39", int(Symbology::Code39)},
    {"itf", int(Symbology::Itf)},
    {"codabar", int(Symbology::Codabar)},
    {"code93", int(Symbology::Code93)},
    {"code128", int(Symbology::Code128)},
    {"gs1_128", int(Symbology::Gs1_128)},
    {"gs1DataBar", int(Symbology::GS1DataBar)},
    {"qrCode", int(Symbology::QrCode)},
};

template <size_t size>
QString namesOf(const NamedValue (&names)[size])
{
    QStringList known;
    for (const NamedValue &named : names)
        known.append(QLatin1String(named.name));
    return known.join(QStringLiteral(", "));
}

template <size_t size>
std::optional<int> valueOf(const QString &name, const NamedValue (&names)[size])
{
    for (const NamedValue &named : names) {
        if (name == QLatin1String(named.name))
            return named.value;
    }
    return std::nullopt;
}

template <size_t size>
QString nameOf(int value, const NamedValue (&names)[size])
{
    for (const NamedValue &named : names) {
        if (value == named.value)
            return QLatin1String(named.name);
    }
    return {};
}

// With their lengths, as compilers differ in whether they count in constants.
constexpr QLatin1String idKey("id", 2);
constexpr QLatin1String likeKey("like", 4);
constexpr QLatin1String sourcesKey("sources", 7);

constexpr int mostDots = 4096;
constexpr int mostUnitsPerInch = 1440;
constexpr int mostCodeBytes = 7089;
constexpr int mostModuleDots = 16;
constexpr int mostOwnCharacters = 95;
constexpr int mostBufferBytes = 16'777'216;

QJsonArray pairOf(QSize size)
{
    return {size.width(), size.height()};
}

}  // namespace

/// How a key's value gets into the data, and out of it. Reading returns what it had expected
/// instead.
struct ModelsFile::Fact
{
    const char *key;
    QString (*read)(const ModelsFile &file, const QJsonValue &value, Data &data);
    QJsonValue (*write)(const Data &data);

    template <auto member, int least, int most>
    static QString readNumber(const ModelsFile & /*file*/, const QJsonValue &value, Data &data)
    {
        return setNumber(value, least, most, data.*member);
    }
    template <auto member, const auto &names>
    static QString readNamed(const ModelsFile & /*file*/, const QJsonValue &value, Data &data)
    {
        const auto known = valueOf(value.toString(), names);
        if (!known)
            return QStringLiteral("one of ") + namesOf(names);
        data.*member = std::decay_t<decltype(data.*member)>(*known);
        return {};
    }
    template <auto member, const auto &names>
    static QJsonValue writeNamed(const Data &data)
    {
        return nameOf(int(data.*member), names);
    }
    /// Of numbers, texts and truth values.
    template <auto member>
    static QJsonValue writePlain(const Data &data)
    {
        return data.*member;
    }

    template <auto member, int least, int most>
    static constexpr Fact number(const char *key)
    {
        return {key, &readNumber<member, least, most>, &writePlain<member>};
    }
    template <auto member, const auto &names>
    static constexpr Fact named(const char *key)
    {
        return {key, &readNamed<member, names>, &writeNamed<member, names>};
    }

    static QString readId(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readMotionUnits(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QJsonValue writeMotionUnits(const Data &data);
    static QString readFonts(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QJsonValue writeFonts(const Data &data);
    static QString readPages(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QJsonValue writePages(const Data &data);
    static QString readKanjiSet(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readCodes(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QJsonValue writeCodes(const Data &data);
    template <auto Member>
    static QString readSwitch(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readNote(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QString readSources(const ModelsFile &file, const QJsonValue &value, Data &data);
    static QJsonValue writeSources(const Data &data);
};

QString ModelsFile::Fact::readId(const ModelsFile & /*file*/, const QJsonValue &value, Data &data)
{
    data.modelId = value.toString();
    return {};
}

QString ModelsFile::Fact::readMotionUnits(const ModelsFile & /*file*/, const QJsonValue &value,
                                          Data &data)
{
    return setSize(value, mostUnitsPerInch, data.motionUnits);
}

QJsonValue ModelsFile::Fact::writeMotionUnits(const Data &data)
{
    return pairOf(data.motionUnits);
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

QJsonValue ModelsFile::Fact::writeFonts(const Data &data)
{
    QJsonArray cells;
    for (const QSize &cell : data.fonts)
        cells.append(pairOf(cell));
    return cells;
}

QString ModelsFile::Fact::readPages(const ModelsFile &file, const QJsonValue &value, Data &data)
{
    return file.readCodePages(value, data);
}

QJsonValue ModelsFile::Fact::writePages(const Data &data)
{
    QJsonObject pages;
    for (auto it = data.codePages.begin(); it != data.codePages.end(); ++it)
        pages.insert(QString::number(it.key()), it.value());
    return pages;
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

QString ModelsFile::Fact::readCodes(const ModelsFile & /*file*/, const QJsonValue &value,
                                    Data &data)
{
    if (!value.isObject())
        return QStringLiteral("an object of codes and the bytes that each takes");
    data.drawnCodes.clear();
    const QJsonObject codes = value.toObject();
    for (auto it = codes.begin(); it != codes.end(); ++it) {
        const auto code = valueOf(it.key(), codeNames);
        if (!code)
            return QStringLiteral("of codes among %1; \"%2\" isn't one")
                .arg(namesOf(codeNames), it.key());
        const auto bytes = numberIn(it.value(), 1, mostCodeBytes);
        if (!bytes)
            return QStringLiteral(
                       "of codes with numbers of bytes from 1 to %1; that of \"%2\" "
                       "isn't one")
                .arg(mostCodeBytes)
                .arg(it.key());
        data.drawnCodes.insert(Symbology(*code), *bytes);
    }
    return {};
}

QJsonValue ModelsFile::Fact::writeCodes(const Data &data)
{
    QJsonObject codes;
    for (auto it = data.drawnCodes.begin(); it != data.drawnCodes.end(); ++it)
        codes.insert(nameOf(int(it.key()), codeNames), it.value());
    return codes;
}

template <auto Member>
QString ModelsFile::Fact::readSwitch(const ModelsFile & /*file*/, const QJsonValue &value,
                                     Data &data)
{
    data.*Member = value.toBool();
    return value.isBool() ? QString() : QStringLiteral("true or false");
}

QString ModelsFile::Fact::readNote(const ModelsFile & /*file*/, const QJsonValue &value, Data &data)
{
    data.note = value.toString();
    return value.isString() ? QString() : QStringLiteral("a text");
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

QJsonValue ModelsFile::Fact::writeSources(const Data &data)
{
    QJsonObject sources;
    for (auto it = data.sources.begin(); it != data.sources.end(); ++it)
        sources.insert(it.key(), it.value());
    return sources;
}

const ModelsFile::Fact ModelsFile::facts[] = {
    {"id", &Fact::readId, &Fact::writePlain<&Data::modelId>},
    Fact::named<&Data::dialect, dialectNames>("dialect"),
    Fact::named<&Data::vendor, vendorNames>("vendor"),
    Fact::number<&Data::headDots, 8, mostDots>("headDots"),
    Fact::number<&Data::dotsPerInch, 50, 1200>("dotsPerInch"),
    {"motionUnits", &Fact::readMotionUnits, &Fact::writeMotionUnits},
    Fact::number<&Data::lineSpacingUnits, 0, mostUnitsPerInch>("lineSpacingUnits"),
    Fact::number<&Data::lineSpacing, 1, 1000>("lineSpacing"),
    {"fonts", &Fact::readFonts, &Fact::writeFonts},
    Fact::number<&Data::initialFont, 0, 255>("initialFont"),
    {"codePages", &Fact::readPages, &Fact::writePages},
    Fact::number<&Data::initialCodePage, 0, 255>("initialCodePage"),
    {"kanjiSet", &Fact::readKanjiSet, &Fact::writePlain<&Data::kanjiSet>},
    Fact::named<&Data::rasterCommand, rasterNames>("rasterCommand"),
    Fact::number<&Data::ownCharacters, 0, mostOwnCharacters>("ownCharacters"),
    {"drawnCodes", &Fact::readCodes, &Fact::writeCodes},
    Fact::number<&Data::leastModule, 1, mostModuleDots>("leastModule"),
    Fact::number<&Data::mostModule, 1, mostModuleDots>("mostModule"),
    Fact::named<&Data::cutCommand, cutNames>("cutCommand"),
    Fact::number<&Data::dotsToCutter, 0, 2000>("dotsToCutter"),
    Fact::named<&Data::presenter, presenterNames>("presenter"),
    Fact::number<&Data::presenterTimerStep, 0, 60000>("presenterTimerStep"),
    Fact::number<&Data::drawers, 0, 2>("drawers"),
    Fact::number<&Data::bufferBytes, 0, mostBufferBytes>("bufferBytes"),
    Fact::named<&Data::handshake, handshakeNames>("handshake"),
    Fact::named<&Data::confirmation, confirmationNames>("confirmation"),
    {"switchesRealTime", &Fact::readSwitch<&Data::switchesRealTime>,
     &Fact::writePlain<&Data::switchesRealTime>},
    {"keepsMacro", &Fact::readSwitch<&Data::keepsMacro>, &Fact::writePlain<&Data::keepsMacro>},
    {"note", &Fact::readNote, &Fact::writePlain<&Data::note>},
    {"sources", &Fact::readSources, &Fact::writeSources},
};

QJsonObject ModelsFile::recordOf(const PrinterProfile &profile)
{
    QJsonObject record;
    for (const Fact &fact : facts)
        record.insert(QLatin1String(fact.key), fact.write(*profile.d));
    return record;
}

/// A value that printers of one dialect alone may have.
struct ModelsFile::DialectChoice
{
    const char *key;
    int (*of)(const Data &data);
    int value;
    Dialect dialect;

    template <auto member, typename Enum>
    static constexpr DialectChoice row(const char *key, Enum value, Dialect dialect)
    {
        return {key, [](const Data &data) { return int(data.*member); }, int(value), dialect};
    }
    static constexpr DialectChoice raster(RasterCommand value, Dialect dialect)
    {
        return row<&Data::rasterCommand>("rasterCommand", value, dialect);
    }
    static constexpr DialectChoice cut(CutCommand value, Dialect dialect)
    {
        return row<&Data::cutCommand>("cutCommand", value, dialect);
    }
    static constexpr DialectChoice presents(Presenter value, Dialect dialect)
    {
        return row<&Data::presenter>("presenter", value, dialect);
    }
    static constexpr DialectChoice confirms(Confirmation value, Dialect dialect)
    {
        return row<&Data::confirmation>("confirmation", value, dialect);
    }
};

const ModelsFile::DialectChoice ModelsFile::dialectChoices[] = {
    DialectChoice::raster(RasterCommand::RasterBlock, Dialect::EscPos),
    DialectChoice::raster(RasterCommand::BitImage, Dialect::EscPos),
    DialectChoice::raster(RasterCommand::StarRows, Dialect::StarLine),
    DialectChoice::raster(RasterCommand::SwecoinRows, Dialect::Swecoin),
    DialectChoice::cut(CutCommand::GsV, Dialect::EscPos),
    DialectChoice::cut(CutCommand::GsVPartial, Dialect::EscPos),
    DialectChoice::cut(CutCommand::EscI, Dialect::EscPos),
    DialectChoice::cut(CutCommand::StarEscD, Dialect::StarLine),
    DialectChoice::cut(CutCommand::SwecoinEscRs, Dialect::Swecoin),
    DialectChoice::presents(Presenter::Custom, Dialect::EscPos),
    DialectChoice::presents(Presenter::Citizen, Dialect::EscPos),
    DialectChoice::presents(Presenter::Star, Dialect::StarLine),
    DialectChoice::presents(Presenter::Swecoin, Dialect::Swecoin),
    DialectChoice::confirms(Confirmation::Processed, Dialect::EscPos),
    DialectChoice::confirms(Confirmation::ResponseId, Dialect::EscPos),
    DialectChoice::confirms(Confirmation::StarCounter, Dialect::StarLine),
    DialectChoice::confirms(Confirmation::SwecoinData, Dialect::Swecoin),
};

const ModelsFile::Fact *ModelsFile::factOf(const QString &key)
{
    const auto *const fact =
        std::find_if(std::begin(facts), std::end(facts),
                     [&key](const Fact &f) { return key == QLatin1String(f.key); });
    return fact == std::end(facts) ? nullptr : fact;
}

ModelsFile::ModelsFile(const QByteArray &json, const QString &fileName)
    : ModelsFile(json, fileName, {})
{}

ModelsFile::ModelsFile(const QByteArray &json, const QString &fileName,
                       const QVector<PrinterProfile> &known)
    : m_fileName(fileName), m_known(known)
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

/// What a record begins with: the model that it changes or that it is like; of the models that are
/// compiled in the first.
ModelsFile::Data *ModelsFile::beginning(const QJsonObject &record, QString &fault) const
{
    if (!isUsers())
        return beginningOfOwn();
    const auto same = profileIn(m_known, record.value(idKey).toString());
    const QString like = record.value(likeKey).toString();
    const auto model = same ? same : profile(like);
    const bool hasLike = record.contains(likeKey);
    if (fault.isEmpty() && same && hasLike)
        fault = QStringLiteral("\"like\" is for new models; this one is known");
    else if (fault.isEmpty() && !same && !hasLike)
        fault = QStringLiteral("\"like\" is missing: a new model needs the id of a known one");
    else if (fault.isEmpty() && !model)
        fault = QStringLiteral("\"like\" has to be the id of a known model; \"%1\" isn't one")
                    .arg(like);
    auto *const data = model ? new Data(*model->d) : new Data;
    if (model)
        data->catalogueId = model->catalogueId();
    if (!same)
        data->note.clear();
    return data;
}

ModelsFile::Data *ModelsFile::beginningOfOwn() const
{
    auto *const data = m_profiles.isEmpty() ? new Data : new Data(*m_profiles.first().d);
    data->sources.clear();
    data->note.clear();
    return data;
}

void ModelsFile::readRecord(const QJsonValue &value, int number)
{
    const QJsonObject record = value.toObject();
    const QString id = record.value(idKey).toString();
    QString fault = value.isObject() ? QString() : QStringLiteral("not an object");
    if (fault.isEmpty())
        fault = checkId(record);
    QScopedPointer<Data> data(beginning(record, fault));
    const QStringList keys = record.keys();
    for (const QString &key : keys) {
        if (fault.isEmpty())
            fault = readFact(key, record, *data);
    }
    if (fault.isEmpty())
        fault = checkWhole(*data);
    if (fault.isEmpty())
        fault = giveSources(record, *data);
    if (fault.isEmpty()) {
        m_profiles.append(PrinterProfile(data.take()));
        return;
    }
    const QString model = id.isEmpty() ? QStringLiteral("model %1").arg(number) : id;
    m_errors.append(QStringLiteral("%1: %2: %3").arg(m_fileName, model, fault));
}

QString ModelsFile::readFact(const QString &key, const QJsonObject &record, Data &data) const
{
    if (isUsers() && key == likeKey)
        return {};
    const Fact *fact = factOf(key);
    if (fact == nullptr)
        return QStringLiteral("\"%1\" is no known key").arg(key);
    const QString expected = fact->read(*this, record.value(key), data);
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

QString ModelsFile::checkId(const QJsonObject &record) const
{
    if (!record.contains(idKey))
        return QStringLiteral("\"id\" is missing");
    const QString id = record.value(idKey).toString();
    if (id.isEmpty())
        return QStringLiteral("\"id\" has to be a text");
    return profileIn(m_profiles, id) ? QStringLiteral("\"id\" stands there twice") : QString();
}

/// What single values can't tell.
QString ModelsFile::checkWhole(const Data &data)
{
    if (data.headDots == 0 || data.dotsPerInch == 0 || data.motionUnits.isEmpty() ||
        data.lineSpacing == 0 || data.fonts.isEmpty() || data.codePages.isEmpty())
        return QStringLiteral("the first model has to have all facts");
    if (data.initialFont >= data.fonts.size())
        return QStringLiteral("\"initialFont\" is none of \"fonts\"");
    if (!data.codePages.contains(data.initialCodePage))
        return QStringLiteral("\"initialCodePage\" is none of \"codePages\"");
    const bool hasTooWide =
        std::any_of(data.fonts.begin(), data.fonts.end(),
                    [&data](const QSize &cell) { return cell.width() > data.headDots; });
    if (hasTooWide)
        return QStringLiteral("\"fonts\" has one that is wider than \"headDots\"");
    if (data.leastModule > data.mostModule)
        return QStringLiteral("\"leastModule\" is more than \"mostModule\"");
    return checkDialect(data);
}

/// Commands of another dialect would print as text, or do who knows what.
QString ModelsFile::checkDialect(const Data &data)
{
    for (const DialectChoice &choice : dialectChoices) {
        const bool isChosen = choice.of(data) == choice.value;
        if (isChosen && data.dialect != choice.dialect)
            return QStringLiteral("\"%1\" isn't one of \"dialect\" %2")
                .arg(QLatin1String(choice.key), nameOf(int(data.dialect), dialectNames));
    }
    const bool isCustoms = data.presenter == Presenter::Custom;
    const bool isCitizens = data.presenter == Presenter::Citizen;
    if ((isCustoms && data.vendor != Vendor::Custom) ||
        (isCitizens && data.vendor != Vendor::Citizen))
        return QStringLiteral("\"presenter\" isn't one of \"vendor\" %1")
            .arg(nameOf(int(data.vendor), vendorNames));
    return {};
}

/// Each fact of a model that is compiled in has its source. What a user says without one is from
/// his file.
QString ModelsFile::giveSources(const QJsonObject &record, Data &data) const
{
    const QStringList besides = {idKey, likeKey, QStringLiteral("note"), sourcesKey};
    const QJsonObject given = record.value(sourcesKey).toObject();
    const QStringList keys = record.keys();
    for (const QString &key : keys) {
        if (besides.contains(key) || given.contains(key))
            continue;
        if (!isUsers())
            return QStringLiteral("\"%1\" has no source").arg(key);
        data.sources.insert(key, m_fileName);
    }
    return {};
}

std::optional<PrinterProfile> ModelsFile::profileIn(const QVector<PrinterProfile> &profiles,
                                                    const QString &modelId)
{
    const auto *const found =
        std::find_if(profiles.begin(), profiles.end(),
                     [&modelId](const auto &profile) { return profile.modelId() == modelId; });
    return found == profiles.end() ? std::nullopt : std::make_optional(*found);
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
    const auto own = profileIn(m_profiles, modelId);
    return own ? own : profileIn(m_known, modelId);
}

}  // namespace printerslib::drivers
