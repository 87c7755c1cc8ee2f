// What it costs to ask for the catalogue of models, which every settings object does.
//
//   parsedOnce           reading and parsing the catalogue's JSON, the yardstick
//   fromResources        all models, second and later time
//   settingsObject       a TextPrinterSettings, which fills its map of models twice
//   defSymbolsPerLine    characters per line by an object that exists
//   getDefSymbolsPerLine the same by way of an object made for it

#include <QFile>

#include "frame.h"
#include "printers/printerinfo.h"
#include "settings/textprintersettings.h"

namespace {

constexpr unsigned int textPrinter = 1;

QByteArray catalogueText()
{
    QFile file(PrinterInfo::RC_INFO_FILENAME);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void chooseModel()
{
    TextPrinterSettings settings;
    settings.setPrinterType(textPrinter);
    settings.setPrinterId(QStringLiteral("CUSTOM_VKP_80"));
}

void parsedOnce(benchmark::State &state)
{
    const QByteArray text = catalogueText();
    for (auto _ : state)
        benchmark::DoNotOptimize(PrinterInfo::fromJson(text));
}

void fromResources(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(PrinterInfo::fromResources());
}

void settingsObject(benchmark::State &state)
{
    for (auto _ : state) {
        const TextPrinterSettings settings;
        benchmark::DoNotOptimize(&settings);
    }
}

void defSymbolsPerLine(benchmark::State &state)
{
    chooseModel();
    TextPrinterSettings settings;
    for (auto _ : state)
        benchmark::DoNotOptimize(settings.defSymbolsPerLine());
}

void getDefSymbolsPerLine(benchmark::State &state)
{
    chooseModel();
    TextPrinterSettings settings;
    for (auto _ : state)
        benchmark::DoNotOptimize(settings.getDefSymbolsPerLine());
}

}  // namespace

int main(int argc, char **argv)
{
    frame::add("parsedOnce", parsedOnce);
    frame::add("fromResources", fromResources);
    frame::add("settingsObject", settingsObject);
    frame::add("defSymbolsPerLine", defSymbolsPerLine);
    frame::add("getDefSymbolsPerLine", getDefSymbolsPerLine);
    return frame::run(argc, argv);
}
