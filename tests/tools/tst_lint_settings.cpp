#include <dlfcn.h>

#include <QtTest>

#include "printerdocs/printerdocumentformatter.h"
#include "settings/iprintdevicesettings.h"
#include "settings/textprintersettings.h"
#include "templatelint.h"

// Linked as the tool is: the checker, which has the engine's rules, beside the shared library. Each
// static of the library is there once, or settings would be set that nobody reads.
class TestLintSettings : public QObject
{
    Q_OBJECT

private:
    using Settings = QSharedPointer<IPrintDeviceSettings>;

    // A function as it is in the shared library, whatever this program calls by its name.
    template <typename Function>
    static Function inLibrary(const char *name)
    {
        void *const library = dlopen(PRINTERSLIB_SONAME, RTLD_NOW | RTLD_NOLOAD);
        if (library == nullptr)
            return nullptr;
        dlclose(library);  // the program keeps it
        return reinterpret_cast<Function>(dlsym(library, name));
    }

    static QStringList printed()
    {
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate("<NAME>");
        PrinterDocument document;
        document.setAttributes({{"NAME", "Tea"}});
        return formatter.toPlainText(document, 3);
    }

    static int findings()
    {
        static const templatelint::Options options = [] {
            templatelint::Options made;
            made.document.emplace();
            return made;
        }();
        return templatelint::lint({"[<NONE>]<ENTRIES><ABC><X:>a<:X>"}, options).size();
    }

private Q_SLOTS:
    // The engine logs every tag that it fills.
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }
    void cleanup() { IPrintDeviceSettings::setPrintDeviceSettings({}); }

    void settingsOfTheProgramAreThoseOfTheLibrary()
    {
        const auto settingsOfLibrary =
            inLibrary<Settings (*)()>("_ZN20IPrintDeviceSettings19printDeviceSettingsEv");
        QVERIFY(settingsOfLibrary != nullptr);
        const int before = findings();
        QVERIFY(before > 0);
        QCOMPARE(printed(), QStringList("Tea"));
        const Settings settings(new TextPrinterSettings());
        settings->setCharactersMode(IPrintDeviceSettings::CharactersUpperCase);
        IPrintDeviceSettings::setPrintDeviceSettings(settings);
        QCOMPARE(settingsOfLibrary(), settings);
        QCOMPARE(printed(), QStringList("TEA"));
        QCOMPARE(findings(), before);
        QCOMPARE(settingsOfLibrary(), settings);
        settings->setCharactersMode(IPrintDeviceSettings::CharactersAsWritten);
    }

    void settingsOfTheLibraryAreThoseOfTheProgram()
    {
        const auto setInLibrary = inLibrary<void (*)(const Settings &)>(
            "_ZN20IPrintDeviceSettings22setPrintDeviceSettingsERK14QSharedPointerIS_E");
        QVERIFY(setInLibrary != nullptr);
        QVERIFY(IPrintDeviceSettings::printDeviceSettings().isNull());
        const Settings settings(new TextPrinterSettings());
        setInLibrary(settings);
        QCOMPARE(IPrintDeviceSettings::printDeviceSettings(), settings);
        QVERIFY(findings() > 0);
        QCOMPARE(IPrintDeviceSettings::printDeviceSettings(), settings);
    }
};

QTEST_GUILESS_MAIN(TestLintSettings)
#include "tst_lint_settings.moc"
