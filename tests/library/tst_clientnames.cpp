// A client that has, in clientnames.cpp, functions and classes of its own under names of the
// library, which the linker takes for one another: the library goes on with its own, and the
// client's own stay unused. What is meant to be one for both, as signals and constants, is one.
#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>
#include <memory>

#include "bbcpp/bbdocument.h"
#include "clientnames.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printers/printerinfo.h"
#include "printers/textprintermodels.h"

class TestClientNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { clientnames::used().clear(); }

    void functionOfTheClientIsLeftAlone()
    {
        int error = -1;
        QCOMPARE(te_interp("2+3*4", &error), 14.0);
        QCOMPARE(error, 0);
        QCOMPARE(clientnames::used(), QStringList());
    }

    void staticMemberOfTheClientIsLeftAlone()
    {
        const PrinterDocumentFormatter formatter(0, nullptr);
        QVERIFY(formatter.specCharsPath().endsWith("/templates"));
        QCOMPARE(clientnames::used(), QStringList());
    }

    void virtualFunctionsOfTheClientAreLeftAlone()
    {
        const auto tree = std::make_shared<bbcpp::BBDocument>();
        tree->load("[b]Thank[/b] you [i]all[/i]");
        QCOMPARE(QString::fromStdString(bbcpp::getRawString(*tree)), QString("Thank you all"));
        QCOMPARE(clientnames::used(), QStringList());
    }

    void clientUsesItsOwn()
    {
        clientnames::useAll();
        QCOMPARE(clientnames::used(),
                 (QStringList{"next_token", "checkTemplatesPath", "~CheckTemplatesSettings",
                              "appendChild", "~BBElement"}));
    }

    void metaObjectsAreTheClassesOwn()
    {
        const PrintDeviceFinder finder;
        QCOMPARE(finder.metaObject(), &PrintDeviceFinder::staticMetaObject);
        const PrinterDocumentFormatter formatter(0, nullptr);
        QCOMPARE(formatter.metaObject(), &PrinterDocumentFormatter::staticMetaObject);
        const BbCodeParser parser;
        QCOMPARE(parser.metaObject(), &BbCodeParser::staticMetaObject);
        QVERIFY(finder.metaObject()->cast(&finder) == &finder);
        QVERIFY(qobject_cast<const PrinterDocumentFormatter *>(
                    static_cast<const QObject *>(&formatter)) == &formatter);
    }

    void signalsConnectedByPointerFire()
    {
        QVERIFY(QMetaMethod::fromSignal(&PrintDeviceFinder::needCancel).isValid());
        QStringList heard;  // outlives the finder, which says that it has finished when it dies
        PrintDeviceFinder finder;
        connect(&finder, &PrintDeviceFinder::noDevices, this,
                [&heard] { heard.append("noDevices"); });
        connect(&finder, &PrintDeviceFinder::needCancel, this,
                [&heard] { heard.append("needCancel"); });
        connect(&finder, &PrintDeviceFinder::finished, this,
                [&heard] { heard.append("finished"); });
        QSignalSpy spy(&finder, &PrintDeviceFinder::finished);
        finder.start(QStringList());
        QCOMPARE(heard, QStringList{"noDevices"});
        heard.clear();
        finder.cancel();
        QVERIFY(heard.contains("needCancel"));
        QVERIFY(heard.contains("finished"));
        QCOMPARE(spy.count(), heard.count("finished"));
    }

    void slotConnectedByPointerIsDisconnectedByPointer()
    {
        PrintDeviceFinder finder;
        QObject other;
        connect(&other, &QObject::objectNameChanged, &finder, &PrintDeviceFinder::cancel);
        QVERIFY(
            disconnect(&other, &QObject::objectNameChanged, &finder, &PrintDeviceFinder::cancel));
    }

    void constantsAreTheSameObjects()
    {
        QCOMPARE(PrinterDocumentFormatter::PARTS.size(), 6);
        bool isInCatalogue = false;
        const QList<PrinterInfo> models = PrinterInfo::fromResources();
        for (const PrinterInfo &model : models)
            isInCatalogue = isInCatalogue || model.id() == TextPrinterModels::MODEL_CUSTOM_VKP_80;
        QVERIFY(isInCatalogue);
    }
};

QTEST_GUILESS_MAIN(TestClientNames)
#include "tst_clientnames.moc"
