#pragma once

#include <printerslib/drivers/printoptions.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QSharedPointer>
#include <optional>

#include "printermodel.h"

class TextPrinterSettings;

namespace tool {

/// How a shop prints: the models that it knows, and the settings of its printer, which options of
/// the command line prevail over.
class ShopSettings
{
public:
    /// No settings.
    explicit ShopSettings(const printerslib::drivers::PrinterModels &models);
    /// @param hasBaudRate whether they say how fast the line is
    ShopSettings(const printerslib::drivers::PrinterModels &models,
                 const QSharedPointer<TextPrinterSettings> &settings, bool hasBaudRate);

    /// Whether there are any.
    bool areSet() const { return !m_settings.isNull(); }
    /// Model, paper and font. Complains and gives nothing for what isn't there.
    /// @param defaultModel where neither settings nor options say one; empty: that is a fault
    std::optional<ChosenPaper> paperOf(const QCommandLineParser &parser,
                                       const QString &defaultModel = QString()) const;
    printerslib::drivers::PrintOptions printOptions() const;
    std::optional<int> baudRate() const;

private:
    printerslib::drivers::PrinterModels m_models;
    QSharedPointer<TextPrinterSettings> m_settings;  ///< null: none
    bool m_hasBaudRate = false;
};

/// The options --settings, --model, --paper, --font and --models.
/// @param defaultModel without the first two; empty: one of them is needed
QList<QCommandLineOption> shopOptions(const QString &defaultModel = QString());
/// What --settings and --models say. The library takes these settings from then on. Complains and
/// gives nothing if a file can't be read or isn't taken whole.
std::optional<ShopSettings> shopSettingsOf(const QCommandLineParser &parser);

}  // namespace tool
