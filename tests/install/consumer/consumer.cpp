// Calls something of each family of the library, and says what differs from what it expects. Its
// argument is the version that the package states.
#include <QTemporaryDir>
#include <QTextStream>
#include <memory>

#include "bbcpp/bbdocument.h"
#include "printdevicefinder/printdevicefinder.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printers/printerinfo.h"
#include "printers/textprintermodels.h"
#include "printerslib.h"
#include "printsrvstate/printservicestatecorvidwrapper.h"
#include "settings/textprintersettings.h"

namespace {

int failures = 0;

template <typename Value>
void expect(const char *what, const Value &actual, const Value &expected)
{
    if (actual == expected)
        return;
    ++failures;
    QTextStream(stderr) << what << ": " << actual << " instead of " << expected << '\n';
}

TextPrinterDocument receipt()
{
    PrinterDocument document;
    document.setAttributes({{"SHOP", "Harbour Kiosk"}, {"TOTAL", 6.65}});
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<C><SHOP>\nTotal<S><TOTAL>");
    expect("plain text", formatter.toPlainText(document, 20).join('|'),
           QString("   Harbour Kiosk|Total           6.65"));
    return formatter.toTextPrinterDocument(document);
}

void keepInAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("receipt");
    TextPrinterDocument document = receipt();
    expect("saved", document.saveToFile(path), true);
    TextPrinterDocument loaded;
    expect("loaded", loaded.loadFromFile(path), true);
    expect("the same", loaded.toStringList() == document.toStringList(), true);
}

void useBbCode()
{
    BbCodeParser parser;
    parser.parseText("[b]Thank you[/b]");
    expect("BBCode", parser.document().toStringList().join('|').trimmed(), QString("Thank you"));
    const auto tree = std::make_shared<bbcpp::BBDocument>();
    tree->load("[b]x[/b]");
    expect("text of the tree", QString::fromStdString(bbcpp::getRawString(*tree)), QString("x"));
}

void knowPrinters()
{
    expect("first model", PrinterInfo::fromResources().value(0).id(),
           TextPrinterModels::MODEL_CUSTOM_VKP_80);
    TextPrinterSettings settings;
    settings.setPrinterId(TextPrinterModels::MODEL_CUSTOM_VKP_80);
    expect("characters per line", settings.defSymbolsPerLine(), 51);
    const PrintDeviceFinder finder;
    expect("metaobject", QString(finder.metaObject()->className()), QString("PrintDeviceFinder"));
}

void publishState()
{
    PrintServiceState state;
    state.setServiceState(PrintServiceState::ServiceWorkableFirst);
    state.setDeviceState(PrintServiceState::DeviceNormalFirst);
    const PrintServiceStateCorvidWrapper wrapper(
        PrintServiceStateCorvidWrapper(state).toClientState());
    expect("workable", wrapper.isWorkable(), true);
}

}  // namespace

int main(int argc, char *argv[])
{
    expect("version", PrintersLib::version().version(), QString(argc > 1 ? argv[1] : "a version"));
    expect("expression", te_interp("2*3.5", nullptr), 7.0);
    keepInAFile();
    useBbCode();
    knowPrinters();
    publishState();
    return failures == 0 ? 0 : 1;
}
