// Says where the library doesn't use the libraries of the other system.
#include <QTextStream>

#include "hearth/appversionmanager.h"
#include "hearth/dircreator.h"
#include "printdevicefinder/printershelper.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerslib.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "settings/printersettings.h"
#include "settings/printsrvsettings.h"

namespace {

int failures = 0;

void expect(const char *what, const QString &actual, const QString &expected)
{
    if (actual == expected)
        return;
    ++failures;
    QTextStream(stderr) << what << ": " << actual << " instead of " << expected << '\n';
}

QString lastWarning;

void keepWarning(QtMsgType, const QMessageLogContext &, const QString &text)
{
    lastWarning = text;
}

void checkNumbers()
{
    PrinterDocument document;
    document.setAttributes({{"PRICE", 1.999}});
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<PRICE>");
    expect("number", formatter.toFormattedText(document).join('|'), "1.99");
}

void checkFolders()
{
    const PrintSrvSettings settings;
    expect("data folder", settings.serviceDataPath(), "/other/tarn.conf/printsrv");
    expect("created", hearth::DirCreator::asked().join('|'),
           "/other/tarn.conf/printsrv|/other/tarn.conf/png");
}

void checkSerialSettings()
{
    PrinterSettings settings;
    settings.setPrinterId("printer");
    settings.setValue({{"group", "printer"}, {"key", "line"}, {"value", "ttyS7"}});
    expect("port", settings.port()->portSettings().portName(), "ttyS7");
    expect("item", settings.toList().constLast().toMap().value("value").toString(), "ttyS7");
}

void checkBusRecord()
{
    corvid::ClientState record;
    record.setStateType(corvid::ClientState::StateNormal);
    record.setState("{}");
    PrintServiceStateCorvidWrapper wrapper;
    expect("valid without a time", wrapper.setClientState(record) ? "yes" : "no", "yes");
    expect("description", wrapper.stateDescription(), "other system");
}

void checkLog()
{
    corvid::ClientState record;
    record.setState("no JSON");
    qInstallMessageHandler(keepWarning);
    PrintServiceStateCorvidWrapper().setClientState(record);
    qInstallMessageHandler(nullptr);
    expect("log line", lastWarning, "JSON PARSING ERROR: illegal value (other tab) no JSON");
}

}  // namespace

int main()
{
    expect("version", PrintersLib::version().version(), "other 5.0.28");
    expect("entered", hearth::AppVersionManager::entered().join('|'),
           "printerslib|texts of printerslib");
    checkFolders();
    checkNumbers();
    checkSerialSettings();
    checkBusRecord();
    checkLog();
    return failures == 0 ? 0 : 1;
}
