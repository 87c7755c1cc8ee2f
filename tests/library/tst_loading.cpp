// Loads the library as a client's plugin would, again and again.
#include <dlfcn.h>

#include <QFile>
#include <QtTest>

#include "cataloguemodels.h"
// Only types and inline functions: this program isn't linked to the library.
#include "printers/printerinfo.h"

namespace {

/// A function of the loaded library, under its name for the linker; null if there is none.
template <typename Function>
Function *functionOf(void *library, const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(library, name));
}

/// Runs code that makes statics of functions, allocates and reads the resource, so that an unload
/// has to undo it. Empty when all went well.
QString useLibrary(void *library)
{
    const auto evaluate = functionOf<double(const char *, int *)>(library, "te_interp");
    int error = -1;
    if (evaluate == nullptr || evaluate("2+3*4", &error) != 14.0 || error != 0)
        return "te_interp";

    const auto fromResources =
        functionOf<QList<PrinterInfo>()>(library, "_ZN11PrinterInfo13fromResourcesEv");
    if (fromResources == nullptr)
        return "PrinterInfo::fromResources";
    // Twice, as the first call may keep what it read. The lists are gone before the library is.
    for (int call = 0; call < 2; ++call) {
        if (fromResources().size() != cataloguemodels::modelCount)
            return "the catalogue";
    }
    return QString();
}

}  // namespace

class TestLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingOfTheLibraryIsThereBeforeIt()
    {
        QCOMPARE(::dlopen(PRINTERSLIB_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
        QVERIFY(!QFile::exists(":/printinfo/printers.info"));
    }

    void loadsAndUnloadsAgainAndAgain()
    {
        for (int round = 0; round < 20; ++round) {
            void *const library = ::dlopen(PRINTERSLIB_LIBRARY, RTLD_NOW | RTLD_LOCAL);
            QVERIFY2(library != nullptr, ::dlerror());
            QVERIFY(::dlsym(library, "_ZN11PrintersLib7versionEv") != nullptr);
            QVERIFY(QFile::exists(":/printinfo/printers.info"));
            const QString failed = useLibrary(library);
            QVERIFY2(failed.isEmpty(), qPrintable(failed));
            QCOMPARE(::dlclose(library), 0);
            QVERIFY(!QFile::exists(":/printinfo/printers.info"));
            QCOMPARE(::dlopen(PRINTERSLIB_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
        }
    }
};

QTEST_APPLESS_MAIN(TestLoading)
#include "tst_loading.moc"
