#include "paperjson.h"

#include <QJsonArray>

namespace paperjson {

namespace {

using printerslib::drivers::Paper;

template <typename Value>
struct Name
{
    Value value;
    const char *name;
};

constexpr Name<Paper::Effect> effects[] = {
    {Paper::Bold, "bold"},           {Paper::Italic, "italic"},
    {Paper::Underline, "underline"}, {Paper::ThickUnderline, "thickUnderline"},
    {Paper::Inverse, "inverse"},     {Paper::UpsideDown, "upsideDown"},
    {Paper::Turned, "turned"},       {Paper::SecondColour, "secondColour"},
};

constexpr Name<Paper::Line::Kind> lineKinds[] = {
    {Paper::Line::Text, "text"},
    {Paper::Line::Graphics, "graphics"},
    {Paper::Line::Page, "page"},
    {Paper::Line::Feed, "feed"},
};

constexpr Name<Paper::Event::Kind> eventKinds[] = {
    {Paper::Event::Cut, "cut"},         {Paper::Event::PartialCut, "partialCut"},
    {Paper::Event::Eject, "eject"},     {Paper::Event::Retract, "retract"},
    {Paper::Event::Present, "present"}, {Paper::Event::Pulse, "pulse"},
    {Paper::Event::Beep, "beep"},       {Paper::Event::Reset, "reset"},
    {Paper::Event::Status, "status"},   {Paper::Event::Note, "note"},
};

using Symbology = Paper::Symbology;
constexpr Name<Symbology> symbologies[] = {
    {Symbology::UpcA, "upcA"},
    {Symbology::UpcE, "upcE"},
    {Symbology::Ean13, "ean13"},
    {Symbology::Ean8, "ean8"},
    {Symbology::Code39, "code39"},
    {Symbology::Itf, "itf"},
    {Symbology::Codabar, "codabar"},
    {Symbology::Code93, "code93"},
    {Symbology::Code128, "code128"},
    {Symbology::Gs1_128, "gs1_128"},
    {Symbology::GS1DataBar, "gs1DataBar"},
    {Symbology::QrCode, "qrCode"},
    {Symbology::MicroQrCode, "microQrCode"},
    {Symbology::Pdf417, "pdf417"},
    {Symbology::DataMatrix, "dataMatrix"},
    {Symbology::Aztec, "aztec"},
    {Symbology::MaxiCode, "maxiCode"},
    {Symbology::Other, "other"},
};

constexpr Name<Paper::Code::Variant> variants[] = {
    {Paper::Code::Usual, "usual"},
    {Paper::Code::Limited, "limited"},
    {Paper::Code::Expanded, "expanded"},
    {Paper::Code::Stacked, "stacked"},
    {Paper::Code::StackedOmni, "stackedOmnidirectional"},
    {Paper::Code::ExpandedStacked, "expandedStacked"},
    {Paper::Code::Compact, "compact"},
    {Paper::Code::ModelOne, "modelOne"},
    {Paper::Code::Rectangular, "rectangular"},
    {Paper::Code::OnlySetB, "onlySetB"},
};

template <typename Value, std::size_t count>
QString nameOf(const Name<Value> (&names)[count], Value value)
{
    for (const Name<Value> &name : names) {
        if (name.value == value)
            return QLatin1String(name.name);
    }
    return QString::number(static_cast<int>(value));
}

QJsonArray pairOf(int one, int other)
{
    return {one, other};
}

QJsonArray sizeOf(const QSize &size)
{
    return pairOf(size.width(), size.height());
}

QString base64(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QJsonObject placed(const QRect &place)
{
    return {{QStringLiteral("left"), place.left()},
            {QStringLiteral("top"), place.top()},
            {QStringLiteral("width"), place.width()},
            {QStringLiteral("height"), place.height()}};
}

QJsonArray effectsOf(quint16 bits)
{
    QJsonArray result;
    for (const Name<Paper::Effect> &effect : effects) {
        if ((bits & effect.value) != 0)
            result.append(QLatin1String(effect.name));
    }
    return result;
}

/// Whether a cell stands right of the other, and looks like it.
bool goesOn(const Paper::Cell &cell, const Paper::Cell &before)
{
    return cell.left == before.left + before.width && cell.top == before.top &&
           cell.width == before.width && cell.height == before.height &&
           cell.widthScale == before.widthScale && cell.heightScale == before.heightScale &&
           cell.effects == before.effects && cell.drawing < 0 && before.drawing < 0;
}

QJsonObject runOf(const Paper::Cell &first, const QString &text)
{
    QJsonObject run = placed({first.left, first.top, first.width, first.height});
    run.insert(QStringLiteral("scale"), pairOf(first.widthScale, first.heightScale));
    run.insert(QStringLiteral("effects"), effectsOf(first.effects));
    if (first.drawing >= 0)
        run.insert(QStringLiteral("drawing"), first.drawing);
    run.insert(QStringLiteral("text"), text);
    return run;
}

QJsonArray cellsOf(const Paper &paper, const Paper::Line &line)
{
    QJsonArray runs;
    const int end = line.firstCell + line.cellCount;
    for (int i = line.firstCell; i < end;) {
        const Paper::Cell &first = paper.cells.at(i);
        QString text(QChar(first.character));
        for (++i; i < end && goesOn(paper.cells.at(i), paper.cells.at(i - 1)); ++i)
            text.append(QChar(paper.cells.at(i).character));
        runs.append(runOf(first, text));
    }
    return runs;
}

QJsonObject pictureOf(const Paper::Picture &picture)
{
    QJsonObject object = placed(picture.place);
    object.insert(QStringLiteral("pixels"), sizeOf(picture.size));
    object.insert(QStringLiteral("dotsPerPixel"), sizeOf(picture.dotsPerPixel));
    object.insert(QStringLiteral("rows"), base64(picture.rows));
    return object;
}

QJsonObject codeOf(const Paper::Code &code)
{
    QJsonObject object = placed(code.place);
    object.insert(QStringLiteral("symbology"), nameOf(symbologies, code.symbology));
    object.insert(QStringLiteral("variant"), nameOf(variants, code.variant));
    const QString text = QString::fromUtf8(code.payload);
    object.insert(QStringLiteral("text"),
                  text.toUtf8() == code.payload ? QJsonValue(text) : QJsonValue());
    object.insert(QStringLiteral("payload"), base64(code.payload));
    object.insert(QStringLiteral("sent"), base64(code.sent));
    object.insert(
        QStringLiteral("correctionLevel"),
        code.correctionLevel == 0 ? QString() : QString(QLatin1Char(code.correctionLevel)));
    object.insert(QStringLiteral("quarterTurns"), code.quarterTurns);
    object.insert(QStringLiteral("grid"), sizeOf(code.grid.expandedTo({0, 0})));
    object.insert(QStringLiteral("module"), sizeOf(code.module));
    object.insert(QStringLiteral("modules"),
                  sizeOf(code.modules.isEmpty() ? QSize(0, 0) : code.modules));
    object.insert(QStringLiteral("rows"), base64(code.rows));
    object.insert(QStringLiteral("fault"), code.fault);
    return object;
}

template <typename Item, typename Function>
QJsonArray arrayOf(const QVector<Item> &items, int first, int count, const Function &convert)
{
    QJsonArray array;
    for (int i = first; i < first + count; ++i)
        array.append(convert(items.at(i)));
    return array;
}

QJsonObject lineOf(const Paper &paper, const Paper::Line &line)
{
    return {
        {QStringLiteral("kind"), nameOf(lineKinds, line.kind)},
        {QStringLiteral("top"), line.top},
        {QStringLiteral("height"), line.height},
        {QStringLiteral("wrapped"), line.isWrapped},
        {QStringLiteral("blankLines"), line.blankLines},
        {QStringLiteral("cells"), cellsOf(paper, line)},
        {QStringLiteral("pictures"),
         arrayOf(paper.pictures, line.firstPicture, line.pictureCount, pictureOf)},
        {QStringLiteral("codes"), arrayOf(paper.codes, line.firstCode, line.codeCount, codeOf)},
    };
}

QJsonObject eventOf(const Paper::Event &event)
{
    QJsonObject object{{QStringLiteral("kind"), nameOf(eventKinds, event.kind)},
                       {QStringLiteral("offset"), event.offset},
                       {QStringLiteral("top"), event.top},
                       {QStringLiteral("text"), event.text}};
    if (event.kind == Paper::Event::Pulse) {
        object.insert(QStringLiteral("pin"), event.pin);
        object.insert(QStringLiteral("onMilliseconds"), event.onMilliseconds);
        object.insert(QStringLiteral("offMilliseconds"), event.offMilliseconds);
    }
    return object;
}

/// The characters that the stream draws itself, by the numbers that cells have.
QJsonObject drawingsOf(const Paper &paper)
{
    QJsonObject drawings;
    for (const Paper::Cell &cell : paper.cells) {
        if (cell.drawing < 0 || cell.drawing >= paper.pictures.size())
            continue;
        const QString key = QString::number(cell.drawing);
        if (!drawings.contains(key))
            drawings.insert(key, pictureOf(paper.pictures.at(cell.drawing)));
    }
    return drawings;
}

}  // namespace

QJsonObject write(const Paper &paper)
{
    QJsonArray lines;
    for (const Paper::Line &line : paper.lines)
        lines.append(lineOf(paper, line));
    return {
        {QStringLiteral("width"), paper.width},
        {QStringLiteral("length"), paper.length},
        {QStringLiteral("dotsPerInch"), paper.dotsPerInch},
        {QStringLiteral("cell"), sizeOf(paper.cell)},
        {QStringLiteral("firstByte"), paper.firstByte},
        {QStringLiteral("isCut"), paper.isCut},
        {QStringLiteral("isTooLong"), paper.isTooLong},
        {QStringLiteral("text"), paper.toText()},
        {QStringLiteral("lines"), lines},
        {QStringLiteral("drawings"), drawingsOf(paper)},
        {QStringLiteral("events"), arrayOf(paper.events, 0, paper.events.size(), eventOf)},
    };
}

}  // namespace paperjson
