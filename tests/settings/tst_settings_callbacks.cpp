// A client's own code may run inside a call of the settings: its message handler where something is
// logged, and the conversions of its types where items hold them. It may use the settings there, so
// nothing of that runs under their locks. Where it does, a test here never ends.
#include <QtTest>
#include <functional>

#include "cataloguemodels.h"
#include "othersettings.h"
#include "printers/printerinfo.h"
#include "settings/checktemplatessettings.h"
#include "settings/systemprintersettings.h"
#include "settings/textprintersettings.h"
#include "settingsitems.h"

namespace {

/// A value of a client's type, as which it has a text and a number.
struct ClientValue
{
    QString text;
    double number = 0;
};

/// An item of a client's type.
struct ClientItem
{
    QMap<QString, QVariant> item;
};

/// How often the client's code has run since it was last asked.
int callbacks = 0;
bool insideCallback = false;

/// Uses each lock of the settings: that of the values, those of port and pointer, that of the
/// templates and that of the catalogue.
void useSettings()
{
    if (insideCallback)
        return;
    insideCallback = true;
    ++callbacks;
    const PrinterSettings printer;
    printer.port()->toList();
    printer.toList();
    IPrintDeviceSettings::printDeviceSettings();
    TextPrinterSettings().toList();
    SystemPrinterSettings().defaultFont(QString());
    CheckTemplatesSettings templates;
    templates.setDefaultCheckTemplate(templates.defaultCheckTemplate());
    PrinterInfo::fromResources();
    insideCallback = false;
}

int callbacksOf(const std::function<void()> &call)
{
    callbacks = 0;
    call();
    return callbacks;
}

/// As long as it lives the process's log lines go to a handler that uses the settings.
class UsingHandler
{
public:
    UsingHandler()
    {
        m_previous =
            qInstallMessageHandler([](auto, const auto &, const auto &) { useSettings(); });
    }
    ~UsingHandler() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY(UsingHandler)

private:
    QtMessageHandler m_previous;
};

QVariant clientText(const QString &text)
{
    return QVariant::fromValue(ClientValue{text, 0});
}

QVariant clientNumber(double number)
{
    return QVariant::fromValue(ClientValue{QString::number(number), number});
}

QMap<QString, QVariant> clientItem(const QString &group, const QString &key, const QVariant &value)
{
    return item(group, key, value);
}

}  // namespace

Q_DECLARE_METATYPE(ClientValue)
Q_DECLARE_METATYPE(ClientItem)

class TestSettingsCallbacks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QMetaType::registerConverter<ClientValue, QString>([](const ClientValue &value) {
            useSettings();
            return value.text;
        });
        QMetaType::registerConverter<ClientValue, double>([](const ClientValue &value) {
            useSettings();
            return value.number;
        });
        QMetaType::registerConverter<ClientValue, int>([](const ClientValue &value) {
            useSettings();
            return int(value.number);
        });
        QMetaType::registerConverter<ClientValue, bool>([](const ClientValue &value) {
            useSettings();
            return value.number != 0;
        });
        QMetaType::registerConverter<ClientItem, QVariantMap>([](const ClientItem &element) {
            useSettings();
            return element.item;
        });
    }

    // Has to stay the first: a catalogue that was read is kept.
    void unreadableCatalogueIsLoggedOutsideTheLocks()
    {
        Q_CLEANUP_RESOURCE(devinfo);
        const UsingHandler handler;
        int logged = callbacksOf([] { QVERIFY(PrinterInfo::fromResources().isEmpty()); });
        QVERIFY(logged > 0);
        logged = callbacksOf([] { QVERIFY(TextPrinterSettings().availablePrinters().isEmpty()); });
        QVERIFY(logged > 0);
        Q_INIT_RESOURCE(devinfo);
        QCOMPARE(PrinterInfo::fromResources().size(), cataloguemodels::modelCount);
        QCOMPARE(TextPrinterSettings().availablePrinters().size(), cataloguemodels::modelCount);
    }

    void fontThatCannotBeReadIsLoggedOutsideTheLocks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("too many fields") << "a,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17";
        QTest::newRow("commas") << ",,";
    }

    void fontThatCannotBeReadIsLoggedOutsideTheLocks()
    {
        QFETCH(const QString, text);
        SystemPrinterSettings settings;
        settings.setPrinterId("till");
        QVERIFY(settings.setValue(item("till", "defaultFont", text)));
        const UsingHandler handler;
        QFont font;
        const int logged =
            callbacksOf([&settings, &font] { font = settings.defaultFont(QString()); });
        QVERIFY(logged > 0);
        QCOMPARE(font, SystemPrinterSettings::prepareDefaultFont());
        QCOMPARE(valueOf(addedItems(settings.toList()), "defaultFont"), QVariant(text));
        QVERIFY(settings.setValue(item("till", "defaultFont", QString())));
    }

    void folderThatCannotBeMadeIsLoggedOutsideTheLocks()
    {
        const QByteArray configuration = qgetenv("TARN_CONF");
        qputenv("TARN_CONF", "/dev/null/of tst_settings_callbacks/etc/tarn.conf");
        QString path;
        const UsingHandler handler;
        const int logged = callbacksOf([&path] {
            CheckTemplatesSettings settings;
            settings.setCheckTemplatesPath(QString());
            path = settings.checkTemplatesPath();
        });
        qputenv("TARN_CONF", configuration);
        QVERIFY(logged > 0);
        QCOMPARE(path, QString("/dev/null/of tst_settings_callbacks/templates"));
    }

    void valuesOfAClientsTypeAreConvertedOutsideTheLocks()
    {
        PrinterSettings settings;
        settings.setPrinterId("till");
        const int ran = callbacksOf([&settings] {
            QVERIFY(settings.setValue(clientItem("PRINTER", "emptyStringsAtEnd", clientText("7"))));
            QVERIFY(settings.setValue(clientItem("till", "baudRate", clientNumber(1200))));
            QVERIFY(settings.setValue(clientItem("till", "portName", clientText("/dev/ttyS7"))));
            QVERIFY(!settings.setValue(clientItem("till", "baudRate", clientText("fast"))));
            QVERIFY(!settings.setValue(clientItem("PRINTER", "unknown", clientText("x"))));
        });
        QVERIFY(ran > 0);
        QCOMPARE(settings.emptyStringsAtEnd(), 7);
        QCOMPARE(settings.port()->portSettings().baudRate(), 1200);
        QCOMPARE(settings.port()->portSettings().portName(), QString("/dev/ttyS7"));
    }

    void groupsAndKeysOfAClientsTypeAreConvertedOutsideTheLocks()
    {
        PrinterSettings settings;
        settings.setPrinterId("till");
        const QMap<QString, QVariant> odd{{"group", clientText("PRINTER")},
                                          {"key", clientText("baseFiscFont")},
                                          {"value", clientText("3")}};
        QVERIFY(callbacksOf([&] { QVERIFY(settings.setValue(odd)); }) > 0);
        QCOMPARE(settings.baseFiscalFont(), 3);
        QMap<QString, QVariant> own = odd;
        own["group"] = clientText("till");
        own["key"] = clientText("portText");
        QVERIFY(callbacksOf([&] { settings.setList({own}); }) > 0);
        QCOMPARE(settings.port()->text(), QString("3"));
    }

    void elementsOfAClientsTypeAreConvertedOutsideTheLocks()
    {
        const auto element = [](const QString &group, const QString &key, const QVariant &value) {
            return QVariant::fromValue(ClientItem{item(group, key, value)});
        };
        const QList<QVariant> list{element("PRINTER", "printerName", "bench"),
                                   element("bench", "baudRate", 2400),
                                   element("bench", "pageWidth", 80.5),
                                   element("CHECK_TEMPLATES", "checkTemplatesPath", "/srv/t")};
        SystemPrinterSettings system;
        QVERIFY(callbacksOf([&] { system.setList(list); }) > 0);
        QCOMPARE(system.printerId(), QString("bench"));
        QCOMPARE(system.port()->portSettings().baudRate(), 2400);
        QCOMPARE(system.pageWidgth(QString()), 80.5);
        CheckTemplatesSettings templates;
        QVERIFY(callbacksOf([&] { templates.setList(list); }) > 0);
        QCOMPARE(templates.checkTemplatesPath(), QString("/srv/t"));
        TextPrinterSettings text;
        QVERIFY(callbacksOf([&] { text.setList(list); }) > 0);
    }

    void systemPrintersValuesOfAClientsTypeAreConvertedAsTheKeyAsks()
    {
        SystemPrinterSettings settings;
        settings.setPrinterId("till");
        // Their text is none of the numbers that they convert to.
        const QVariant number = QVariant::fromValue(ClientValue{"a text", 2.5});
        const int ran = callbacksOf([&settings, &number] {
            QVERIFY(settings.setValue(item("till", "pageWidth", number)));
            QVERIFY(settings.setValue(item("till", "unit", number)));
            QVERIFY(settings.setValue(item("till", "autoPageHeight", number)));
            QVERIFY(settings.setValue(item("till", "pageSizeKey", number)));
            QVERIFY(!settings.setValue(item("other", "pageSizeKey", clientText("wrong"))));
        });
        QVERIFY(ran > 0);
        QCOMPARE(settings.pageWidgth(QString()), 2.5);
        QCOMPARE(settings.unit(QString()), ISystemPrinterSettings::Inch);
        QCOMPARE(settings.autoPageHeight(QString()), true);
        QCOMPARE(settings.pageSizeKey(QString()), QString("a text"));
    }

    void templatesValuesOfAClientsTypeAreConvertedOutsideTheLocks()
    {
        CheckTemplatesSettings settings;
        QVERIFY(callbacksOf([&settings] {
                    QVERIFY(settings.setValue(
                        item("CHECK_TEMPLATES", "defaultCheckTemplate", clientText("a.cpt"))));
                }) > 0);
        QCOMPARE(settings.defaultCheckTemplate(), QString("a.cpt"));
    }

    void portsOwnValuesOfAClientsTypeAreConvertedOutsideItsLock()
    {
        PrinterSettings settings;
        settings.setPrinterId("till");
        const auto port = settings.port();
        const int ran = callbacksOf([&port] {
            QVERIFY(port->setValue(item("till", "portText", clientText("by the door"))));
            QVERIFY(!port->setValue({{"group", clientText("other")}, {"key", "portText"}}));
        });
        QVERIFY(ran > 0);
        QCOMPARE(port->text(), QString("by the door"));
    }

    void enumerationsStayNumbersToThePort()
    {
        PrinterSettings settings;
        settings.setPrinterId("till");
        QVERIFY(
            settings.setValue(item("till", "dataBits", QVariant::fromValue(QSerialPort::Data7))));
        QCOMPARE(settings.port()->portSettings().dataBits(), QSerialPort::Data7);
    }
};

QTEST_MAIN(TestSettingsCallbacks)
#include "tst_settings_callbacks.moc"
