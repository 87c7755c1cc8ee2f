// Writes what goes to each model for the examples, for codes, for pictures that printers obey, and
// for documents at random, so that programs which share nothing with the library can read it:
//   encode-examples FOLDER
// The folder gets "streams.bin", all of them one behind the other, and "streams.jsonl", a line of
// JSON for each: name, model, paper, font, offset, size, and what is known of it.
#include <rapidcheck.h>

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

#include "exampledocuments.h"
#include "printabledocuments.h"
#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/symbologydrawer.h"

using namespace printerslib::drivers;

namespace {

constexpr quint64 seed = 20260509;
constexpr int randomDocuments = 40;

class Streams
{
public:
    explicit Streams(const QDir &folder)
        : m_bytes(folder.filePath("streams.bin")), m_facts(folder.filePath("streams.jsonl"))
    {
        if (!m_bytes.open(QIODevice::WriteOnly) || !m_facts.open(QIODevice::WriteOnly))
            qFatal("%s can't be written", qPrintable(folder.path()));
    }

    void add(const QString &name, const PrintTarget &target, int font,
             const TextPrinterDocument &document, const PrintOptions &options = {},
             const QJsonObject &more = {})
    {
        static const SymbologyDrawer codes;
        const PrintLayout layout = PrintLayout::of(document, target, options, codes);
        const EncodedDocument encoded = DocumentEncoder(target, options).encode(document, layout);
        QJsonObject facts = more;
        if (encoded.isFaithful() && printabledocuments::isAllText(layout))
            facts.insert("text", exampledocuments::textForm(document, 0).join('\n'));
        facts.insert("name", name);
        facts.insert("model", target.profile().modelId());
        facts.insert("paper", target.paper().id());
        facts.insert("font", font);
        facts.insert("line", target.paper().pointsToLine());
        facts.insert("offset", double(m_bytes.pos()));
        facts.insert("size", encoded.bytes.size());
        facts.insert("error", encoded.error);
        facts.insert("reset", document.doInit());
        facts.insert("before", int(document.prevTicketAction()));
        facts.insert("after", int(document.currentTicketAction()));
        facts.insert("drawer", options.drawer != PrintOptions::Drawer::Shut);
        facts.insert("allowed", QString::fromLatin1(options.allowedRawCodes.toHex()));
        facts.insert("notes", encoded.notes.size());
        m_bytes.write(encoded.bytes);
        m_facts.write(QJsonDocument(facts).toJson(QJsonDocument::Compact) + '\n');
    }

private:
    QFile m_bytes;
    QFile m_facts;
};

void addExamples(Streams &streams)
{
    const auto examples = exampledocuments::madeExamples();
    for (const PrinterInfo &record : PrinterInfo::fromResources()) {
        const QList<int> papers = record.paperTypes().keys();
        const QList<FontInfo> fonts = record.fontTypes();
        for (const int paper : papers) {
            for (const FontInfo &font : fonts) {
                const auto target = *PrintTarget::forModel(record.id(), paper, font.id());
                for (const auto &example : examples)
                    streams.add(example.name, target, font.id(),
                                example.document(target.symbolsPerLine()));
            }
        }
    }
}

void addCodes(Streams &streams, const PrintTarget &target)
{
    for (const auto &code : papercodes::codeExamples()) {
        TextPrinterDocument document;
        document.appendBlock(papercodes::codeBlock(code.number, code.payload));
        document.setCurrentTicketAction(TicketActionEveryDocument);
        streams.add(
            QStringLiteral("code-%1").arg(code.number), target, 0, document, {},
            {{"symbology", code.symbology}, {"payload", QString::fromLatin1(code.payload)}});
    }
}

/// Pictures and codes whose bytes are commands.
void addHazards(Streams &streams, const PrintTarget &target)
{
    const QByteArray hazards[] = {QByteArray("\x10\x14\x01\x00\x01", 5), "\x10\x04\x01",
                                  "\x10\x05\x02", "\x1b\x06\x01", "\x10\x14\x08\x01\x03\x14"};
    int number = 0;
    for (const QByteArray &hazard : hazards) {
        ++number;
        for (const int width : {40, 64, 127, 384}) {
            constexpr int height = 60;
            TextPrinterDocument document;
            DocumentBlock picture;
            const int rowBytes = (width + 7) / 8;
            const QByteArray rows =
                hazard.repeated(rowBytes * height / hazard.size() + 1).left(rowBytes * height);
            picture.setImg(MonochromeImage(width, height, rows));
            picture.setType(DocumentBlock::BlockImage);
            document.appendBlock(picture);
            document.setCurrentTicketAction(TicketActionEveryDocument);
            streams.add(QStringLiteral("hazard-%1-%2").arg(number).arg(width), target, 0, document);
        }
        TextPrinterDocument document;
        document.appendBlock(papercodes::codeBlock(0, hazard.repeated(4)));
        document.appendBlock(papercodes::codeBlock(7, hazard));
        streams.add(QStringLiteral("hazard-%1-codes").arg(number), target, 0, document);
    }
    // Lengths that are 10 04, 10 05 and 10 14 in two bytes, with three bytes of the command or
    // without.
    for (const int size : {0x0410, 0x0410 - 3, 0x0510, 0x0510 - 3}) {
        TextPrinterDocument document;
        document.appendBlock(papercodes::codeBlock(0, QByteArray(size, '7')));
        streams.add(QStringLiteral("hazard-length-%1").arg(size), target, 0, document);
    }
}

void addRandom(Streams &streams, const PrintTarget &target)
{
    rc::Random random(seed);
    for (int i = 0; i < randomDocuments; ++i) {
        const auto pair = rc::gen::exec([&target] {
            const TextPrinterDocument document = *printabledocuments::document();
            return std::make_pair(document, printabledocuments::options(target));
        });
        constexpr int size = 60;
        const auto [document, options] = pair(random.split(), size).value();
        streams.add(QStringLiteral("random-%1").arg(i), target, 0, document, options);
    }
}

}  // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: encode-examples FOLDER\n", stderr);
        return 2;
    }
    QCoreApplication application(argc, argv);
    Streams streams{QDir(QFile::decodeName(argv[1]))};
    addExamples(streams);
    for (const QString &id : PrinterProfile::modelIds()) {
        const auto target = *PrintTarget::forModel(id, 0);
        addCodes(streams, target);
        addHazards(streams, target);
        addRandom(streams, target);
    }
    return 0;
}
