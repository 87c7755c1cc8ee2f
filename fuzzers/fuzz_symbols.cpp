// A file of special symbols.
#include <QFile>
#include <QXmlStreamWriter>

#include "fuzzing.h"
#include "printerdocs/document/symbolfile_p.h"
#include "printerdocs/specialcharacters.h"
#include "symbolsmodel.h"

using fuzzing::equal;
using fuzzing::holds;

namespace {

QString fileWith(const QByteArray &content)
{
    static QFile file(fuzzing::scratchFolder() + QStringLiteral("/symbols.ssi"));
    holds("the scratch file opens", file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    return file.fileName();
}

/// The table as a file again, each drawing in a font of its own.
QByteArray fileOf(const SpecialCharacters &symbols)
{
    QByteArray content;
    QXmlStreamWriter xml(&content);
    xml.writeStartElement("SpecialSymbolImages");
    // From the back, as the reader puts each drawing of a code in front of the older ones.
    for (auto symbol = symbols.end(); symbol != symbols.begin();) {
        --symbol;
        const MonochromeImage &image = symbol.value();
        xml.writeStartElement("Font");
        xml.writeAttribute("Width", QString::number(image.width()));
        xml.writeAttribute("Height", QString::number(image.height()));
        xml.writeStartElement("Symbol");
        xml.writeAttribute("Code", QString::number(symbol.key()));
        for (int y = 0; y < image.height(); ++y) {
            QString line;
            for (int x = 0; x < image.width(); ++x)
                line += image.pixel(x, y, 8) ? '1' : '0';
            xml.writeTextElement("Line", line);
        }
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndElement();
    return content;
}

void drawingsAreInShape(const SpecialCharacters &symbols)
{
    for (const MonochromeImage &image : symbols) {
        holds("a drawing has pixels", image.width() > 0 && image.height() > 0);
        equal("rows of whole bytes", image.image().size(),
              (image.width() + 7) / 8 * image.height());
    }
}

void chosenDrawingFits(SpecialCharacters &symbols, int code, int width, int height)
{
    const MonochromeImage image = symbols.getImage(code, width, height);
    equal("two choices", symbols.getImage(code, width, height) == image, true);
    holds("a drawing no larger than its cell",
          image.width() <= qMax(0, width) && image.height() <= qMax(0, height));
    for (const MonochromeImage &other : symbols.values(static_cast<signed char>(code))) {
        if (other.width() <= width && other.height() <= height)
            holds("the largest that fits",
                  other.width() * other.height() <= image.width() * image.height());
    }
    const QImage picture = symbols.getPngImage(code, width, height);
    if (!picture.isNull())
        equal("a picture of the drawing's size", picture.size(),
              QSize(image.width(), image.height()));
}

/// The table of a file's drawings, which has to be that of a plain reading.
SpecialCharacters loaded(const QByteArray &content)
{
    SpecialCharacters symbols;
    const bool complete = symbols.load(fileWith(content));
    const SymbolsModel model(content);
    equal("a file is read like by the model", complete, model.complete());
    const QMultiMap<signed char, MonochromeImage> &drawings = symbols;
    equal("with the model's drawings", drawings == model.drawings(), true);
    return symbols;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const int code = input.ConsumeIntegralInRange<int>(-300, 300);
    const int width = input.ConsumeIntegralInRange<int>(0, 100);
    const int height = input.ConsumeIntegralInRange<int>(0, 100);
    const int cut = input.ConsumeIntegral<quint16>();
    const QByteArray content = QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());

    // Two bytes of UTF-16 can be three of UTF-8, in which tags are measured.
    if (3 * content.size() <= 2 * symbolfile::mostOpenCharacters && !content.contains("!") &&
        !content.contains("?"))
        equal("a small file is read", symbolfile::refusal(content), QString());
    SpecialCharacters symbols = loaded(content);
    equal("two readings", loaded(content) == symbols, true);
    drawingsAreInShape(symbols);
    chosenDrawingFits(symbols, code, width, height);
    if (!symbols.isEmpty())
        chosenDrawingFits(symbols, symbols.firstKey(), width, height);

    const QByteArray written = fileOf(symbols);
    equal("what was read can be written and reads the same", loaded(written) == symbols, true);
    loaded(written.left(cut));
    return 0;
}
