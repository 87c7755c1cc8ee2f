// Item lists for all settings classes, from a known state on.
#include <QGuiApplication>
#include <limits>

#include "fuzzing.h"
#include "printers/textprintermodels.h"
#include "settings/checktemplatessettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "support/othersettings.h"
#include "support/settingsitems.h"

using fuzzing::equal;

namespace {

/// The platform without a display: fonts need an application.
void startApplication()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz_settings";
    static char *arguments[] = {name, nullptr};
    // Never destroyed: the order of the end of static objects isn't ours.
    static auto *const application = new QGuiApplication(count, arguments);
    Q_UNUSED(application)
}

/// The process's settings as they were before the first input.
void reset()
{
    static const QVariantList text = TextPrinterSettings().toList();
    static const QVariantList system = SystemPrinterSettings().toList();
    TextPrinterSettings settings;
    settings.setList(system);
    settings.setList(text);
    SystemPrinterSettings().setList(system);
    settings.setCodec("cp866");
    settings.setDefaultFont(QString());
    settings.setPrintAsImage(false);
    settings.setCodePage(0);
    CheckTemplatesSettings().setCheckTemplatesPath(fuzzing::scratchFolder());
    CheckTemplatesSettings().setDefaultCheckTemplate("default.cpt");
}

QVariantMap takeItem(FuzzedDataProvider &input)
{
    static const QStringList keys = keysOf(TextPrinterSettings().toList()) +
                                    keysOf(SystemPrinterSettings().toList()) +
                                    keysOf(CheckTemplatesSettings().toList()) +
                                    QStringList{"codec", "printAsImage", "defaultFont"};
    static const QStringList groups{PrinterSettings::SECTION,
                                    CheckTemplatesSettings::SECTION,
                                    QString(),
                                    TextPrinterModels::MODEL_GENERAL_EPSON,
                                    TextPrinterModels::MODEL_CUSTOM_VKP_80,
                                    "any"};
    const auto take = [&input](const QStringList &usual) {
        const int index = input.ConsumeIntegralInRange<int>(0, usual.size());
        return index < usual.size() ? QVariant(usual.at(index)) : fuzzing::takeValue(input);
    };
    QVariantMap item;
    if (input.ConsumeIntegralInRange<int>(0, 15) > 0)
        item.insert("group", take(groups));
    if (input.ConsumeIntegralInRange<int>(0, 15) > 0)
        item.insert("key", take(keys));
    if (input.ConsumeIntegralInRange<int>(0, 15) > 0)
        item.insert("value", input.ConsumeBool() ? fuzzing::takeValue(input) : take(groups));
    return item;
}

/// Items as bytes, in which an empty text and none are the same.
QByteArray bytesOf(const QVariantList &list)
{
    QVariantList items;
    for (const QVariant &each : list) {
        QVariantMap item = each.toMap();
        for (QVariant &part : item) {
            if (part.type() == QVariant::String && part.toString().isEmpty())
                part = QString("");
        }
        items.append(item);
    }
    return fuzzing::bytesOf(items);
}

/// An exported list leads from other settings back to those that it was exported from.
template <class Settings>
void listLeadsBack(const QVariantList &list)
{
    Settings settings;
    othersettings::set();
    const QByteArray expected = bytesOf(othersettings::afterTheirReturn(list));
    settings.setList(list);
    equal("an exported list leads back", bytesOf(settings.toList()), expected);
    othersettings::set();
    for (const QVariant &item : list)
        settings.setValue(item.toMap());
    equal("so do its items one by one", bytesOf(settings.toList()), expected);
}

template <class... Settings>
void exportsLeadBack()
{
    const QList<QVariantList> lists{Settings().toList()...};
    auto list = lists.begin();
    (listLeadsBack<Settings>(*list++), ...);
}

void everythingCanBeRead()
{
    TextPrinterSettings text;
    text.getDefSymbolsPerLine();
    text.moveCheckTo();
    text.paperLoopFlag();
    text.paper();
    text.port();
    SystemPrinterSettings system;
    system.getDefSymbolsPerLine();
    system.defaultFont(QString());
    system.pageLayoutUnit(QString());
    system.pageLayoutOrientation(QString());
    CheckTemplatesSettings().checkTemplatesPath();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    startApplication();
    FuzzedDataProvider input(data, size);
    reset();
    QVariantList list;
    while (input.remaining_bytes() > 0)
        list.append(input.ConsumeIntegralInRange<int>(0, 31) > 0 ? QVariant(takeItem(input))
                                                                 : fuzzing::takeValue(input));
    const int from = list.size() / 2;
    TextPrinterSettings().setList(list);
    SystemPrinterSettings().setList(list);
    CheckTemplatesSettings().setList(list);
    for (const QVariant &item : list.mid(from)) {
        TextPrinterSettings().setValue(item.toMap());
        SystemPrinterSettings().setValue(item.toMap());
        CheckTemplatesSettings().setValue(item.toMap());
    }
    everythingCanBeRead();
    // Item lists hold the type as a signed number: a greater one, which is no type, comes back as
    // 0.
    if (PrinterSettings().printerType() > unsigned(std::numeric_limits<int>::max()))
        PrinterSettings().setPrinterType(0);
    exportsLeadBack<PrinterSettings, TextPrinterSettings, SystemPrinterSettings,
                    CheckTemplatesSettings>();
    return 0;
}
