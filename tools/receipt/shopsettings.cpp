#include "shopsettings.h"

#include <algorithm>

#include "printoptions.h"
#include "settings/textprintersettings.h"
#include "settingslist.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::PrinterModels;
using printerslib::drivers::PrintOptions;

QCommandLineOption settingsOption()
{
    return {QStringLiteral("settings"),
            QStringLiteral("A list of settings, as \"receipt settings\" takes it: which printer, "
                           "paper and font it is, and how it prints; other options prevail."),
            QStringLiteral("FILE")};
}

/// Without settings, what isn't given is the first.
std::optional<ChosenPaper> paperOfModel(const QCommandLineParser &parser,
                                        const PrinterModels &models, const QString &id)
{
    const auto model = findModel(models, id);
    return model ? paperOf(parser, {models, model, 0, 0}) : std::nullopt;
}

bool hasBaudRate(const QList<SettingsItem> &items)
{
    return std::any_of(items.begin(), items.end(), [](const SettingsItem &item) {
        return text(item, "key") == QLatin1String("baudRate");
    });
}

/// Complains and gives false if the settings name a model or a character set that isn't there.
bool suitModels(const QCommandLineParser &parser, TextPrinterSettings &settings,
                const PrinterModels &models)
{
    const QString file = parser.value(settingsOption());
    const auto profile = models.profile(settings.printerId());
    if (!profile) {
        complain(QStringLiteral("%1: the item \"printerName\": there is no model \"%2\"; see "
                                "\"receipt models\"")
                     .arg(file, settings.printerId()));
        return false;
    }
    const int set = settings.codePage();
    const QMap<int, QString> known = profile->codePages();
    if (set == 0 || known.contains(set) || parser.isSet(characterSetOption()))
        return true;
    complainOfCharacterSet(QStringLiteral("%1: the item \"cpage\"").arg(file), QString::number(set),
                           known);
    return false;
}

}  // namespace

ShopSettings::ShopSettings(const PrinterModels &models) : m_models(models) {}

ShopSettings::ShopSettings(const PrinterModels &models,
                           const QSharedPointer<TextPrinterSettings> &settings, bool hasBaudRate)
    : m_models(models), m_settings(settings), m_hasBaudRate(hasBaudRate)
{}

std::optional<ChosenPaper> ShopSettings::paperOf(const QCommandLineParser &parser,
                                                 const QString &defaultModel) const
{
    if (m_settings.isNull()) {
        const QString id = parser.isSet(modelOption()) ? parser.value(modelOption()) : defaultModel;
        if (!id.isEmpty() || parser.isSet(modelOption()))
            return paperOfModel(parser, m_models, id);
        complain(QStringLiteral("--model or --settings is needed: bytes depend on the printer"));
        return std::nullopt;
    }
    if (parser.isSet(modelOption())) {
        complain(QStringLiteral("--model and --settings exclude each other"));
        return std::nullopt;
    }
    const auto model = findModel(m_models, m_settings->printerId());
    if (!model)
        return std::nullopt;
    const int lastFont = model->fontTypes().size() - 1;
    // The first is 1, and one beyond the last counts as that.
    const int font = qBound(0, m_settings->baseFiscalFont() - 1, lastFont);
    return tool::paperOf(parser, {m_models, model, m_settings->paperTypeId(), font});
}

PrintOptions ShopSettings::printOptions() const
{
    return m_settings.isNull() ? PrintOptions() : PrintOptions::fromSettings(*m_settings);
}

std::optional<int> ShopSettings::baudRate() const
{
    if (!m_hasBaudRate)
        return std::nullopt;
    return m_settings->port()->portSettings().baudRate();
}

QList<QCommandLineOption> shopOptions(const QString &defaultModel)
{
    return QList<QCommandLineOption>{settingsOption()} +
           paperOptionsOr(QStringLiteral("that of --settings"), defaultModel) +
           QList<QCommandLineOption>{modelsFileOption()};
}

std::optional<ShopSettings> shopSettingsOf(const QCommandLineParser &parser)
{
    const auto models = modelsOf(parser);
    if (!models)
        return std::nullopt;
    if (!parser.isSet(settingsOption()))
        return ShopSettings(*models);
    const QString file = parser.value(settingsOption());
    const auto items = readSettingsItems(file);
    if (!items)
        return std::nullopt;
    const auto settings = settingsFor(*items).dynamicCast<TextPrinterSettings>();
    if (settings.isNull()) {
        complain(QStringLiteral("%1: these aren't the settings of a text printer: the item "
                                "\"printerType\" isn't 1")
                     .arg(file));
        return std::nullopt;
    }
    if (!takeSettingsItems(file, *items, *settings) || !suitModels(parser, *settings, *models))
        return std::nullopt;
    // The engine asks them for the case of texts.
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
    return ShopSettings(*models, settings, hasBaudRate(*items));
}

}  // namespace tool
