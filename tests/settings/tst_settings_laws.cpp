#include <QtTest>
#include <limits>

#include "arbitrary.h"
#include "othersettings.h"
#include "printers/textprintermodels.h"
#include "settings/checktemplatessettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "settingsitems.h"

namespace {

rc::Gen<QString> oneOf(const QStringList &list)
{
    return rc::gen::elementOf(std::vector<QString>(list.cbegin(), list.cend()));
}

QVariant anyValue()
{
    switch (*rc::gen::inRange(0, 4)) {
        case 0:
            return *rc::gen::inRange(-3, 300);
        case 1:
            return *rc::gen::arbitrary<int>();
        case 2:
            return *rc::gen::inRange(-1000, 1000) / 8.0;
        default:
            return *rc::gen::arbitrary<QString>();
    }
}

/// Items for the keys of a list, in any order, some of them for other groups.
template <class Settings>
QVariantList anyItems()
{
    const QStringList keys = keysOf(Settings().toList());
    QVariantList list;
    for (const QString &key : *rc::gen::container<std::vector<QString>>(oneOf(keys))) {
        const QString group = *oneOf({PrinterSettings::SECTION, CheckTemplatesSettings::SECTION,
                                      Settings::staticGroup(), "x"});
        // Item lists hold the type as a signed number; a greater one is none of the types.
        const QVariant value =
            key == PrinterSettings::PRINTER_TYPE ? QVariant(*rc::gen::inRange(0, 9)) : anyValue();
        list.append(item(group, key, value));
    }
    return list;
}

struct Text : TextPrinterSettings
{
    static QString staticGroup() { return TextPrinterSettings().printerId(); }
};

struct System : SystemPrinterSettings
{
    static QString staticGroup() { return SystemPrinterSettings().printerId(); }
};

struct Templates : CheckTemplatesSettings
{
    static QString staticGroup() { return SECTION; }
};

template <class Settings>
void exportLeadsBack()
{
    Settings settings;
    settings.setList(anyItems<Settings>());
    const QVariantList exported = settings.toList();
    othersettings::set();
    const QVariantList expected = othersettings::afterTheirReturn(exported);
    RC_ASSERT(settings.toList() != expected);
    settings.setList(exported);
    RC_ASSERT(settings.toList() == expected);
    othersettings::set();
    for (const QVariant &each : exported)
        settings.setValue(each.toMap());
    RC_ASSERT(settings.toList() == expected);
}

template <class Settings>
void itemsAreTakenOneByOne()
{
    othersettings::set();
    Settings settings;
    // A name among the items changes which group the others belong to.
    QVariantList list;
    for (const QVariant &each : anyItems<Settings>()) {
        if (keyOf(each) != PrinterSettings::PRINTER_ID)
            list.append(each);
    }
    settings.setList(list);
    const QVariantList atOnce = settings.toList();
    othersettings::set();
    for (const QVariant &each : list)
        settings.setValue(each.toMap());
    RC_ASSERT(settings.toList() == atOnce);
}

}  // namespace

class TestSettingsLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exportLeadsBackToTheSettings()
    {
        VERIFY_LAW([] {
            const auto leaveTheOthers = [] {
                TextPrinterSettings().setPrinterId(
                    *oneOf({TextPrinterModels::MODEL_GENERAL_EPSON,
                            TextPrinterModels::MODEL_CUSTOM_VKP_80, "any", ""}));
                CheckTemplatesSettings().setCheckTemplatesPath("templates");
            };
            leaveTheOthers();
            exportLeadsBack<Text>();
            leaveTheOthers();
            exportLeadsBack<System>();
            leaveTheOthers();
            exportLeadsBack<Templates>();
        });
    }

    void listTakesWhatItsItemsTake()
    {
        VERIFY_LAW([] {
            itemsAreTakenOneByOne<System>();
            itemsAreTakenOneByOne<Templates>();
        });
    }

    void anyNumberComesBackFromItsSetter()
    {
        VERIFY_LAW([](int number, bool on) {
            TextPrinterSettings settings;
            settings.setEmptyStringsAtEnd(number);
            RC_ASSERT(TextPrinterSettings().emptyStringsAtEnd() == number);
            settings.setSpacesBeforeString(number);
            RC_ASSERT(TextPrinterSettings().spacessBeforeString() == number);
            settings.setBaseFiscalFont(number);
            RC_ASSERT(TextPrinterSettings().baseFiscalFont() == number);
            settings.setPortLoggingEnabled(on);
            RC_ASSERT(SystemPrinterSettings().portLoggingEnabled() == on);
            settings.setPrinterType(static_cast<unsigned int>(number));
            RC_ASSERT(settings.printerType() ==
                      (number == 1 || number == 2 ? unsigned(number) : 0U));
            settings.setPrinterType(0);
        });
    }

    void charactersPerLineAreNeverNegative()
    {
        VERIFY_LAW([](int font, int paper) {
            TextPrinterSettings settings;
            settings.setPrinterId(*oneOf(settings.availablePrinters().keys()));
            settings.setDefSymbolsPerLine(*rc::gen::inRange(-5, 24));
            settings.setBaseFiscalFont(font);
            settings.setPaperTypeId(paper);
            const int symbols = settings.defSymbolsPerLine();
            RC_ASSERT(symbols > 0 && symbols <= settings.paper().pointsToLine());
        });
    }
};

QTEST_GUILESS_MAIN(TestSettingsLaws)
#include "tst_settings_laws.moc"
