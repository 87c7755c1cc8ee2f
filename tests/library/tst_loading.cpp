// Loads the library as a client's plugin would, again and again.
#include <dlfcn.h>

#include <QFile>
#include <QtTest>

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
            QCOMPARE(::dlclose(library), 0);
            QVERIFY(!QFile::exists(":/printinfo/printers.info"));
            QCOMPARE(::dlopen(PRINTERSLIB_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
        }
    }
};

QTEST_APPLESS_MAIN(TestLoading)
#include "tst_loading.moc"
