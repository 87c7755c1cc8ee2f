#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>
#include <algorithm>

#include "logcatcher.h"
#include "peakmemory.h"
#include "printerdocs/bbcodeparser.h"

namespace {

QString digits(const QList<QByteArray> &lists)
{
    QStringList lines;
    for (const QByteArray &bytes : lists) {
        QString line;
        for (const char byte : bytes)
            line += QString::number(static_cast<unsigned char>(byte), 16);
        lines.append(line);
    }
    return lines.join('|');
}

/// A block in one line: kind and barcode type, alignment, lines, font bytes, format bytes. Lines
/// are parted by "|".
QString described(const DocumentBlock &block)
{
    return QString("%1%2%3 \"%4\" %5 %6")
        .arg(QString("TIBQ").at(block.type()))
        .arg(int(block.barCodeType()))
        .arg(QString("LRCJ").at(block.alignment()))
        .arg(block.text().join('|'), digits(block.font()), digits(block.format()));
}

QStringList described(const QList<DocumentBlock> &blocks)
{
    QStringList lines;
    for (const DocumentBlock &block : blocks)
        lines.append(described(block));
    return lines;
}

QList<DocumentBlock> parsed(const QString &text)
{
    BbCodeParser parser;
    parser.parseText(text);
    return parser.blocks();
}

/// A text block in the first font without format.
QString plain(const QString &text, const QString &kind = "T0L")
{
    const QString zeros = QString(text).replace(QRegularExpression("[^|]"), "0");
    return QString("%1 \"%2\" %3 %3").arg(kind, text, zeros);
}

const QString blankLine = "T0L \"\"  ";

/// The image of a picture, pixel by pixel.
MonochromeImage expectedImage(const QString &fileName)
{
    QImage picture(fileName);
    picture = picture.convertToFormat(QImage::Format_Mono);
    if (picture.height() > 384)
        picture = picture.scaledToWidth(384, Qt::SmoothTransformation);
    MonochromeImage image = MonochromeImage::createEmpty(picture.width(), picture.height(), 32);
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            const QColor colour(picture.pixel(x, y));
            image.setPixel(x, y, colour.red() == 0 && colour.green() == 0 && colour.blue() == 0,
                           32);
        }
    }
    image.setFileName(QFileInfo(fileName).absoluteFilePath());
    return image;
}

/// A GIF of 8 by 8 pixels whose codes stand for 8,370,186 pixels, and for 4091 more each time.
QByteArray gifOfLongCodes(int more, const QByteArray &extension)
{
    constexpr int clear = 4;
    constexpr int first = 6;
    constexpr int last = 4095;
    QByteArray bytes;
    uint bits = 0;
    int count = 0;
    const auto add = [&](int code, int size) {
        bits |= uint(code) << count;
        for (count += size; count >= 8; count -= 8, bits >>= 8)
            bytes.append(char(bits));
    };
    add(clear, 3);
    add(0, 3);
    int size = 3;
    for (int code = first; code <= last; ++code) {
        add(code, size);
        if (code + 1 == 1 << size && size < 12)
            ++size;
    }
    for (int i = 0; i < more; ++i)
        add(last, 12);
    add(clear + 1, 12);
    add(0, 8);
    QByteArray gif = QByteArray::fromHex("474946383961 0800 0800 80 00 00 000000 ffffff") +
                     extension + QByteArray::fromHex("2c 0000 0000 0800 0800 00 02");
    for (int at = 0; at < bytes.size(); at += 255)
        gif += char(qMin(255, bytes.size() - at)) + bytes.mid(at, 255);
    return gif + QByteArray("\0;", 2);
}

/// A picture with slanted stripes in black, white and grey.
QImage striped(int width, int height, QImage::Format format = QImage::Format_RGB32)
{
    const QVector<QRgb> colours{qRgb(0, 0, 0), qRgb(255, 255, 255), qRgb(90, 90, 90),
                                qRgb(255, 255, 255)};
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, colours.at((x / 3 + y / 2) % colours.size()));
    }
    return picture.convertToFormat(format);
}

QImage withPalette(int width, int height, QRgb first, QRgb second)
{
    QImage picture(width, height, QImage::Format_Mono);
    picture.setColorTable({first, second});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, uint(x + y) % 3 == 0 ? 1 : 0);
    }
    return picture;
}

void writeFile(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// A chunk of a PNG.
QByteArray chunk(const QByteArray &name, const QByteArray &content)
{
    quint32 checksum = ~0U;
    for (const char byte : name + content) {
        checksum ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            checksum = (checksum >> 1) ^ ((checksum & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return bigEndian(static_cast<quint32>(content.size())) + name + content + bigEndian(~checksum);
}

/// From now on memory that is taken or given back holds this byte, or its complement.
void fillHeap(int byte)
{
    mallopt(M_PERTURB, byte);
}

}  // namespace

class TestBbCodeParser : public QObject
{
    Q_OBJECT

private:
    MonochromeImage loaded(const QString &directory, const QString &name)
    {
        BbCodeParser parser;
        parser.setImagesPath(directory);
        parser.parseText(QString("[img name=%1][/img]").arg(name));
        return parser.blocks().value(0).img();
    }

private Q_SLOTS:
    void startsEmptyWithItsDefaults()
    {
        QObject parent;
        auto *parser = new BbCodeParser(&parent);
        QCOMPARE(parser->parent(), &parent);
        QVERIFY(parser->blocks().isEmpty());
        QCOMPARE(int(parser->symbolsPerLine()), 32);
        QVERIFY(parser->imagesPath().isEmpty());
        parser->setSymbolsPerLine(48);
        parser->setImagesPath("/pictures");
        QCOMPARE(int(parser->symbolsPerLine()), 48);
        QCOMPARE(parser->imagesPath(), QString("/pictures"));
    }

    void textBecomesBlocks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        row("empty text", "", {});
        row("one run", "abc", {"T0L \"abc\" 000 000"});
        row("non-ASCII text counts characters", "чай", {"T0L \"чай\" 000 000"});
        row("character outside the BMP counts as two", "😀", {"T0L \"😀\" 00 00"});
        row("lines", "a\n\nbc", {"T0L \"a||bc\" 0||00 0||00"});
        row("line end behind", "a\n", {"T0L \"a|\" 0| 0|"});
        row("bad tag is text", "[b!]x", {plain("[b!]x")});
        row("tags without text", "[b][/b][center][/center]", {});

        // Formats and fonts
        row("bold", "[b]a[/b]b", {"T0L \"a b\" 000 100"});
        row("italic", "[i]a[/i]b", {"T0L \"a b\" 000 200"});
        row("underlined", "[u]a[/u]b", {"T0L \"a b\" 000 800"});
        row("all three", "[b][i][u]a", {"T0L \"a\" 0 b"});
        row("crossed formats", "[b][i]a[/b]b[/i]c", {"T0L \"a b c\" 00000 32200"});
        row("closing a format that is off", "a[/b][/i][/u]b", {"T0L \"a b\" 000 000"});
        row("upper-case tag", "[B]a[/B]b", {"T0L \"a b\" 000 100"});
        row("size small", "[size=small]a", {"T0L \"a\" 0 0"});
        row("size normal", "[size=normal]a", {"T0L \"a\" 1 0"});
        row("size middle", "[size=middle]a", {"T0L \"a\" 2 0"});
        row("size large", "[SIZE=LARGE]x[/size]y", {"T0L \"x y\" 300 000"});
        row("size in another tag", "[b size=large]x[/b]y", {"T0L \"x y\" 333 100"});
        row("small again", "[size=large]x[size=small]y", {"T0L \"x y\" 300 000"});
        row("unknown size leaves the font", "[size=large]x[size=huge]y", {"T0L \"x y\" 333 000"});
        row("format and font together", "[b][size=normal]x[/size]y", {"T0L \"x y\" 100 111"});

        // Alignment
        row("center", "[center]x[/center]", {plain("x", "T0C")});
        row("right", "[right]x[/right]", {plain("x", "T0R")});
        row("left", "[left]x[/left]", {plain("x")});
        row("text before center joins its block", "x[center]y[/center]z",
            {plain("x y", "T0C"), plain("z")});
        row("center left open", "[center]x", {plain("x", "T0C")});
        row("closed by another alignment", "[right]x[/left]y", {plain("x", "T0R"), plain("y")});
        row("last alignment counts", "[center]x[right]y[/right]", {plain("x y", "T0R")});
        row("left again", "[right]x[left]y", {plain("x y")});
        row("closing alone cuts the block", "x[/center]y", {plain("x"), plain("y")});
        row("closing goes to left", "[right][center]x[/center]y", {plain("x", "T0C"), plain("y")});
        row("column keeps the alignment", "[right]x[column]y[/column]z",
            {plain("x", "T0R"), plain("y", "T0R"), plain("z", "T0R")});
        row("barcode keeps the alignment", "[right]x[barcode]1[/barcode]y",
            {plain("x", "T0R"), "B7R \"MQ==\" 0 0", "T0R \"\"  ", plain("y", "T0R")});
        row("QR code keeps the alignment", "[center]x[qrcode]1[/qrcode]y",
            {plain("x", "T0C"), "Q0C \"MQ==\" 0 0", "T0C \"\"  ", plain("y", "T0C")});
        row("picture keeps the alignment", "[right]x[img]y[/img]z",
            {plain("x", "T0R"), plain("y", "T0R"), plain("z", "T0R")});
        row("line end behind an aligned block", "[center]x[/center]\ny",
            {plain("x", "T0C"), plain("y")});

        // Blanks between pieces
        row("blank before", "a [b]b", {"T0L \"a b\" 000 001"});
        row("blank behind", "a[b] b", {"T0L \"a b\" 000 011"});
        row("line end before", "a\n[b]b", {"T0L \"a|b\" 0|0 0|1"});
        row("line end behind the tag", "a[b]\nb", {"T0L \"a|b\" 0|0 0|1"});
        row("no-break space is whitespace", QString("a\u00A0[b]b"),
            {QString("T0L \"a\u00A0b\" 000 001")});
        row("tab is whitespace", "a\t[b]b", {"T0L \"a\tb\" 000 001"});
        row("three pieces", "a[b]b[/b]c", {"T0L \"a b c\" 00000 01100"});

        // The first line end
        row("line end first", "\nx", {plain("x")});
        row("blank and line end first", " \nx", {plain("x")});
        row("tab and line end first", "\t\nx", {plain("x")});
        row("two blanks and line end first", "  \nx", {plain("x")});
        row("three blanks and line end first", "   \nx", {plain("   |x")});
        row("two tabs and line end first", "\t\t\nx", {"T0L \"\t\t|x\" 00|0 00|0"});
        row("only one line end is dropped", "\n\nx", {"T0L \"|x\" |0 |0"});
        row("carriage return first", "\rx", {plain("x")});
        row("line end alone", "\n", {});
        row("line end in each of two pieces", "[b]\n[/b]\nx", {plain("x")});
        row("line end first in a new block", "[center]x[/center]\n\ny",
            {plain("x", "T0C"), "T0L \"|y\" |0 |0"});

        // Unknown names
        row("unknown tag keeps its text", "[foo]x[/foo]y", {plain("x y")});
        row("unknown key", "[foo bar=1]x", {plain("x")});
    }

    void textBecomesBlocks()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        const QuietLog quiet;
        QCOMPARE(described(parsed(text)), blocks);
    }

    void halvesOfCharactersBecomeQuestionMarks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        const QString high(QChar(0xD83D)), low(QChar(0xDE00));
        QTest::newRow("first half") << "a" + high + "b"
                                    << "a?b";
        QTest::newRow("second half") << "a" + low + "b"
                                     << "a?b";
        QTest::newRow("first half at the end") << "a" + high << "a?";
        QTest::newRow("halves the wrong way round") << low + high + "z"
                                                    << "??z";
        QTest::newRow("whole behind a half") << high + high + low + "z"
                                             << "?" + high + low + "z";
        QTest::newRow("half that a tag follows") << high + "[b]" + low << "? ?";
    }

    void halvesOfCharactersBecomeQuestionMarks()
    {
        QFETCH(QString, text);
        QFETCH(QString, printed);
        QCOMPARE(parsed(text).first().text(), QStringList(printed));
    }

    /// Texts come from files, which begin with one.
    void byteOrderMarkBeginsNoText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        const QString mark(QChar(QChar::ByteOrderMark));
        QTest::newRow("at the start") << mark + "ab"
                                      << "ab";
        QTest::newRow("behind a tag") << "a[b]" + mark + "b"
                                      << "a b";
        QTest::newRow("one of two") << mark + mark + "b" << mark + "b";
        QTest::newRow("inside") << "a" + mark + "b"
                                << "a" + mark + "b";
    }

    void byteOrderMarkBeginsNoText()
    {
        QFETCH(QString, text);
        QFETCH(QString, printed);
        QCOMPARE(parsed(text).first().text(), QStringList(printed));
    }

    void quotesAndDashesBecomeAscii_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("all") << "«A» — B"
                             << "\"A\" - B";
        QTest::newRow("en dash") << "1–2"
                                 << "1-2";
        QTest::newRow("nested quotation marks") << "««A»»"
                                                << "\"\"A\"\"";
        QTest::newRow("other dashes and marks stay") << "‒―„“”’"
                                                     << "‒―„“”’";
        QTest::newRow("kinds of line ends") << "a\r\nb\rc\nd\n\re"
                                            << "a|b|c|d||e";
        QTest::newRow("two carriage returns and a line end") << "a\r\r\nb"
                                                             << "a||b";
    }

    void quotesAndDashesBecomeAscii()
    {
        QFETCH(QString, text);
        QFETCH(QString, line);
        QCOMPARE(described(parsed(text)), QStringList(plain(line)));
    }

    void fieldsPadTheirText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("width of its own") << "[field]x[/field]"
                                          << "x";
        QTest::newRow("padded behind") << "[field width=3]x[/field]"
                                       << "x  ";
        QTest::newRow("right") << "[field width=3 align=right]x[/field]"
                               << "  x";
        QTest::newRow("center, odd rest behind") << "[field width=6 align=center]abc[/field]"
                                                 << " abc  ";
        QTest::newRow("center, even rest") << "[field width=5 align=center]abc[/field]"
                                           << " abc ";
        QTest::newRow("left again") << "[field align=right][left align=left width=3]x"
                                    << "x  ";
        QTest::newRow("other alignment is left") << "[field width=3 align=justify]x"
                                                 << "x  ";
        QTest::newRow("upper-case value") << "[field WIDTH=3 ALIGN=RIGHT]x"
                                          << "  x";
        QTest::newRow("zeros and blanks") << "[field width=5 align=right zerofill=3]7[/field]"
                                          << "  007";
        QTest::newRow("nothing is cut") << "[field width=3]12345[/field]"
                                        << "12345";
        QTest::newRow("just as wide") << "[field width=3]123[/field]"
                                      << "123";
        QTest::newRow("zeros behind the sign") << "[field zerofill=3]-5[/field]"
                                               << "-005";
        QTest::newRow("sign and width") << "[field zerofill=3 width=6 align=right]-5"
                                        << "  -005";
        QTest::newRow("enough digits") << "[field zerofill=2]123[/field]"
                                       << "123";
        QTest::newRow("leading zeros go") << "[field zerofill=2]00007[/field]"
                                          << "07";
        QTest::newRow("plus sign goes") << "[field zerofill=3]+7[/field]"
                                        << "007";
        QTest::newRow("blanks around") << "[field zerofill=3] 7 [/field]"
                                       << "007";
        QTest::newRow("no number") << "[field zerofill=4]abc[/field]"
                                   << "0000";
        QTest::newRow("fraction is no number") << "[field zerofill=2]1.5[/field]"
                                               << "00";
        QTest::newRow("zerofill 0") << "[field zerofill=0]abc[/field]"
                                    << "abc";
        QTest::newRow("zerofill 0 again") << "[field zerofill=3][left zerofill=0]7"
                                          << "7";
        QTest::newRow("greatest number") << "[field zerofill=20]9223372036854775807"
                                         << "09223372036854775807";
        QTest::newRow("least number") << "[field zerofill=20]-9223372036854775808"
                                      << "-09223372036854775808";
        QTest::newRow("beyond 64 bits") << "[field zerofill=3]9223372036854775808"
                                        << "000";
        QTest::newRow("width above 8 bits") << "[field width=300]x"
                                            << "x" + QString(43, ' ');
        QTest::newRow("width 256") << "[field width=256]x"
                                   << "x";
        QTest::newRow("width 255") << "[field width=255]x"
                                   << "x" + QString(254, ' ');
        QTest::newRow("width is no number") << "[field width=wide]x"
                                            << "x";
        QTest::newRow("negative width") << "[field width=-3]x"
                                        << "x";
        QTest::newRow("fractional width") << "[field width=3.5]x"
                                          << "x";
        QTest::newRow("zerofill above 8 bits") << "[field zerofill=300]7" << QString(43, '0') + "7";
        QTest::newRow("without field") << "[b width=9 align=right zerofill=9]7[/b]"
                                       << "";
        QTest::newRow("blanks part from the next piece") << "[field width=3]a[/field]b"
                                                         << "a  b";
        QTest::newRow("blanks part from the piece before")
            << "x[field width=3 align=right]7[/field]"
            << "x  7";
        QTest::newRow("full field is parted") << "x[field width=1]7[/field]y"
                                              << "x 7 y";
        QTest::newRow("opening again forgets") << "[field width=9][field]x"
                                               << "x";
        QTest::newRow("closing forgets") << "[field width=9][/field]x"
                                         << "x";
        QTest::newRow("line end counts in a field") << "x[field width=4]a\nb[/field]"
                                                    << "x a|b ";
        QTest::newRow("keys are read in their order") << "[field width=5 WIDTH=3]x"
                                                      << "x    ";
        QTest::newRow("keys are read in their order, not in that of the text")
            << "[field WIDTH=3 width=5]x"
            << "x    ";
        QTest::newRow("quotation marks count once") << "[field width=4]«a»[/field]"
                                                    << "\"a\" ";
    }

    void fieldsPadTheirText()
    {
        QFETCH(QString, text);
        QFETCH(QString, line);
        const QList<DocumentBlock> blocks = parsed(text);
        QCOMPARE(blocks.size(), 1);
        if (line.isEmpty())
            QCOMPARE(described(blocks.first()), QString("T0L \"7\" 0 1"));
        else
            QCOMPARE(described(blocks.first()), plain(line));
    }

    void characterOutsideTheBmpCountsAsTwoInAField()
    {
        QCOMPARE(described(parsed("[field width=4]😀[/field]")),
                 QStringList("T0L \"😀  \" 0000 0000"));
    }

    void everyPieceOfAFieldIsPadded()
    {
        QCOMPARE(described(parsed("[field width=3]a[b]b[/b]c[/field]")),
                 QStringList("T0L \"a  b  c  \" 000000000 000111000"));
    }

    void columnsPadTheirLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &lines) {
            QStringList blocks;
            for (const QString &line : lines)
                blocks.append(plain(line));
            QTest::newRow(name) << text << blocks;
        };
        row("two lines", "[column width=4]a\nbc[/column]", {"a   |bc  "});
        row("right", "[column width=4 align=right]a\nbc[/column]", {"   a|  bc"});
        row("center", "[column width=4 align=center]a\nbc[/column]", {" a  | bc "});
        row("width of its own", "[column]a\n[/column]", {"a| "});
        row("wide line stays", "[column width=2]abc\nd[/column]", {"abc|d "});
        row("empty line is kept", "[column width=2]a\n\nb[/column]", {"a |  |b "});
        row("carriage returns end lines before the padding", "[column width=3]a\rb\r\nc\r[/column]",
            {"a  |b  |c  |   "});
        row("width above 8 bits", "[column width=300]a[/column]", {"a" + QString(43, ' ')});
        row("zerofill goes nowhere", "[column width=3 zerofill=3]7[/column]", {"7  "});
        row("block on both sides", "x[column]y[/column]z", {"x", "y", "z"});
        row("not closed", "[column width=2]a", {"a "});
        row("opening again forgets", "[column width=9][column]a", {"a"});
        row("first line is three blanks", "[column width=3]\na[/column]", {"   |a  "});
        row("first line is two blanks and goes", "[column width=2]\na[/column]", {"a "});
        row("first line is a blank and goes", "[column width=1]\na[/column]", {"a"});
        row("field in a column", "[column width=6][field width=3 align=right]7[/field][/column]",
            {"  7   "});
        row("keys go to the field", "[column width=5][field][b width=3][/b]a[/field][/column]",
            {"a    "});
        row("keys go to the column again",
            "[column][field][/field][left width=3 align=right]a[/column]", {"  a"});
    }

    void columnsPadTheirLines()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        QCOMPARE(described(parsed(text)), blocks);
    }

    // 65793 lines of 255 blanks are one character less than the 16 Mi that padding may add.
    void paddingOfOneTextIsLimited()
    {
        const QString lines = QString(65792, '\n');
        const QString column = "[column width=255]%1[/column]";
        BbCodeParser parser;
        parser.parseText(column.arg(lines) + "[field width=2]a[/field]");
        QCOMPARE(parser.blocks().size(), 2);
        QCOMPARE(parser.blocks().first().text().size(), 65793);
        for (const QString &line : parser.blocks().first().text())
            QCOMPARE(line.size(), 255);
        QCOMPARE(described(parser.blocks().last()), plain("a "));

        parser.parseText(column.arg(lines) + "[field width=3]a[/field][field zerofill=2]5[/field]" +
                         "[field width=2]c[/field][field zerofill=2]07[/field]" +
                         "[column width=2]d\ne[/column]");
        QCOMPARE(described(parser.blocks().mid(1)), QStringList({plain("a 05 c 7"), plain("d|e")}));

        // The first line end goes, as it isn't padded.
        parser.parseText(column.arg(lines + "\n"));
        QCOMPARE(parser.blocks().first().text().size(), 65793);
        for (const QString &line : parser.blocks().first().text())
            QVERIFY(line.isEmpty());

        // The next text has a limit of its own.
        parser.parseText("[field width=255]x");
        QCOMPARE(described(parser.blocks()), QStringList(plain("x" + QString(254, ' '))));
    }

    void columnOfMillionsOfLineEndsIsNotPadded()
    {
        const QList<DocumentBlock> blocks =
            parsed("[column width=255]" + QString(5000000, '\n') + "[/column]x");
        QCOMPARE(blocks.size(), 2);
        const QStringList lines = blocks.first().text();
        QCOMPARE(lines.size(), 5000000);
        QVERIFY(std::all_of(lines.begin(), lines.end(),
                            [](const QString &line) { return line.isEmpty(); }));
        QCOMPARE(described(blocks.last()), plain("x"));
    }

    // 66052 fields of 254 blanks are within 16 Mi characters, the next isn't.
    void paddingOfManyFieldsIsLimited_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QChar>("padding");
        QTest::addColumn<int>("blanksBetween");
        // Padded fields end in blanks; the others are parted from the next piece.
        QTest::newRow("blanks") << "[field width=255]7[/field]" << QChar(' ') << 33947;
        QTest::newRow("zeros") << "[field zerofill=255]7[/field]" << QChar('0') << 99999;
    }

    void paddingOfManyFieldsIsLimited()
    {
        QFETCH(QString, field);
        QFETCH(QChar, padding);
        QFETCH(int, blanksBetween);
        const QList<DocumentBlock> blocks = parsed(field.repeated(100000));
        QCOMPARE(blocks.size(), 1);
        const QString text = blocks.first().text().first();
        QCOMPARE(text.size(), 100000 + 66052 * 254 + blanksBetween);
        QCOMPARE(text.count('7'), 100000);
        QCOMPARE(text.count(padding), 66052 * 254 + (padding == QChar(' ') ? blanksBetween : 0));
        QVERIFY(text.endsWith("7 7 7"));
    }

    void linesAreDrawn_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto line = [](QChar character) { return plain(QString(32, character), "T0C"); };
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        row("pair of tags", "[hr][/hr]", {line('_')});
        row("closing itself", "[hr /]", {line('_')});
        row("dashed", "[hr=dashed][/hr]", {line('-')});
        row("dashed, closing itself", "[hr=dashed /]", {line('-')});
        row("dotted", "[hr=dotted][/hr]", {line('.')});
        row("upper case", "[HR=DOTTED][/HR]", {line('.')});
        row("other kind", "[hr=wavy /]", {line('_')});
        row("other kind after dashed", "[hr=dashed][b hr=wavy][/hr]", {line('_')});
        row("closing alone", "[/hr]", {line('_')});
        row("never closed", "[hr]", {});
        row("kind is forgotten", "[hr=dashed][/hr][/hr]", {line('-'), line('_')});
        row("opening again forgets", "[hr=dashed][hr][/hr]", {line('_')});
        row("key in another tag", "[left hr=dotted][/hr]", {line('.')});
        row("format and font don't count", "[b][size=large][hr][/hr]", {line('_')});
        row("alignment doesn't count and stays", "[right][hr][/hr]x",
            {line('_'), plain("x", "T0R")});
        row("text between the tags", "[hr]x[/hr]", {line('_'), plain("x")});
        row("value ends on the slash", "[hr=dashed/][/hr]", {line('_')});
    }

    void linesAreDrawn()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        QCOMPARE(described(parsed(text)), blocks);
    }

    void lineComesBeforeTheTextBeingGathered()
    {
        QCOMPARE(described(parsed("text[hr][/hr]")),
                 (QStringList{plain(QString(32, '_'), "T0C"), plain("text")}));
        QCOMPARE(
            described(parsed("[center]text[/center][hr][/hr]more")),
            (QStringList{plain("text", "T0C"), plain(QString(32, '_'), "T0C"), plain("more")}));
    }

    void lineIsAsLongAsTheReceiptIsWide()
    {
        BbCodeParser parser;
        for (const int width : {17, 42, 255}) {
            parser.setSymbolsPerLine(static_cast<unsigned char>(width));
            parser.parseText("[hr /]");
            QCOMPARE(parser.blocks().first().text(), QStringList(QString(width, '_')));
        }
        parser.setSymbolsPerLine(0);
        parser.parseText("[hr /]");
        QCOMPARE(described(parser.blocks()), QStringList("T0C \"\"  "));
    }

    void narrowReceiptIndentsItsBlocks()
    {
        BbCodeParser parser;
        parser.setSymbolsPerLine(3);
        parser.parseText("[b]x\ny[/b][hr /]");
        QCOMPARE(
            described(parser.blocks()),
            (QStringList{"T0C \"   ___\" 000000 000000", "T0L \"   x|   y\" 0000|0000 0001|0001"}));
        parser.setSymbolsPerLine(16);
        parser.parseText("[/b]x");
        QCOMPARE(parser.blocks().first().text(), QStringList(QString(16, ' ') + "x"));
        parser.setSymbolsPerLine(17);
        parser.parseText("x");
        QCOMPARE(parser.blocks().first().text(), QStringList("x"));
    }

    void narrowReceiptIndentsTheCodeToo()
    {
        BbCodeParser parser;
        parser.setSymbolsPerLine(2);
        parser.parseText("[barcode]1[/barcode]");
        QCOMPARE(parser.blocks().size(), 2);
        QCOMPARE(parser.blocks().first().barcode(), QByteArray("  1"));
        QCOMPARE(parser.blocks().last().text(), QStringList("  "));
    }

    void narrowReceiptIndentsThePictureToo()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n1 1\n1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.setSymbolsPerLine(3);
        parser.parseText("x[img]y[/img][img][/img][img name=logo]alt[/img]");
        QCOMPARE(described(parser.blocks()),
                 (QStringList{"T0L \"   x\" 0000 0000", "T0L \"   y\" 0000 0000",
                              "T0L \"   \" 000 000", "I0C \"   alt\" 000000 000000"}));
        parser.setSymbolsPerLine(16);
        parser.parseText("[img]y[/img]");
        QCOMPARE(parser.blocks().first().text(), QStringList(QString(16, ' ') + "y"));
    }

    void codesBecomeBlocks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        // "MTIz" is the Base64 text of "123".
        row("barcode", "[barcode]123[/barcode]", {"B7L \"MTIz\" 000 000", blankLine});
        row("QR code", "[qrcode]123[/qrcode]", {"Q0L \"MTIz\" 000 000", blankLine});
        row("upper case", "[BARCODE]123[/BARCODE]", {"B7L \"MTIz\" 000 000", blankLine});
        row("empty barcode", "[barcode][/barcode]x", {plain("x")});
        row("empty QR code", "[qrcode][/qrcode]x", {plain("x")});
        row("two lines", "[qrcode]a\nb[/qrcode]", {"Q0L \"YQpi\" 0|0 0|0", blankLine});
        row("first line end goes", "[qrcode]\n123[/qrcode]", {"Q0L \"MTIz\" 000 000", blankLine});
        row("UTF-8 payload", "[qrcode]ж[/qrcode]", {"Q0L \"0LY=\" 0 0", blankLine});
        row("centred", "[center][barcode]123[/barcode][/center]x",
            {"B7C \"MTIz\" 000 000", "T0C \"\"  ", plain("x")});
        row("present font and format", "[b][size=large][barcode]123[/barcode]",
            {"B7L \"MTIz\" 333 111", blankLine});
        row("style at the closing tag counts", "[barcode][b]1[/b]23[/barcode]",
            {"B7L \"MSAyMw==\" 0000 0000", blankLine});
        row("text before and behind", "x[barcode]123[/barcode]y",
            {plain("x"), "B7L \"MTIz\" 000 000", blankLine, plain("y")});
        row("barcode closed as a QR code", "[barcode]123[/qrcode]",
            {"B7L \"123\" 000 000", blankLine});
        row("QR code closed as a barcode", "[qrcode]123[/barcode]",
            {"Q0L \"123\" 000 000", blankLine});
        row("closing alone makes a blank line", "x[/barcode]y",
            {plain("x"), blankLine, plain("y")});
        row("closing alone without text", "[/barcode][/qrcode]", {});
        row("never closed", "[barcode]123", {"B7L \"123\" 000 000"});
        row("QR code in a barcode", "[barcode]1[qrcode]2[/qrcode]3",
            {"B7L \"1\" 0 0", "Q0L \"Mg==\" 0 0", blankLine, plain("3")});
        row("cut by an alignment", "[barcode]1[center]2[/center]3[/barcode]",
            {"B7C \"1 2\" 000 000", "B7L \"Mw==\" 0 0", blankLine});
        row("padded by a field", "[barcode][field zerofill=3]7[/field][/barcode]",
            {"B7L \"MDA3\" 000 000", blankLine});
        row("line in a barcode", "[barcode][hr /]1[/barcode]",
            {plain(QString(32, '_'), "T0C"), "B7L \"MQ==\" 0 0", blankLine});
        row("column in a barcode", "[barcode]1[column]2[/column][/barcode]",
            {"B7L \"1\" 0 0", "B7L \"2\" 0 0"});
    }

    void codesBecomeBlocks()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        QCOMPARE(described(parsed(text)), blocks);
    }

    void codesHandOutTheirPayload()
    {
        const QList<DocumentBlock> barcode = parsed("[barcode]4600000000017[/barcode]");
        QVERIFY(barcode.first().isBarcode());
        QCOMPARE(barcode.first().barcode(), QByteArray("4600000000017"));
        QVERIFY(barcode.last().isText());
        const QList<DocumentBlock> code = parsed("[qrcode]t=20260101\ns=1[/qrcode]");
        QVERIFY(code.first().isQrCode());
        QCOMPARE(code.first().qrCode(), QByteArray("t=20260101\ns=1"));
    }

    void codeClosedByTheOtherTagHasNoPayload()
    {
        const QList<DocumentBlock> blocks = parsed("[barcode]123[/qrcode]x");
        QCOMPARE(blocks.size(), 3);
        QCOMPARE(blocks.at(0).type(), DocumentBlock::BlockBarcode);
        QCOMPARE(blocks.at(0).text(), QStringList("123"));
        QCOMPARE(blocks.at(2).type(), DocumentBlock::BlockText);
        QCOMPARE(int(blocks.at(2).barCodeType()), 0);
    }

    // State

    void whatIsLeftOpenGoesOn_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &first, const QString &second,
                            const QStringList &blocks) {
            QTest::newRow(name) << first << second << blocks;
        };
        row("format", "[b]x", "y", {"T0L \"y\" 0 1"});
        row("font", "[size=large]x", "y", {"T0L \"y\" 3 0"});
        row("alignment doesn't", "[right]x", "y", {plain("y")});
        row("alignment doesn't without text", "[right]", "y", {plain("y")});
        row("barcode", "[barcode]", "1", {"B7L \"1\" 0 0"});
        row("QR code", "[qrcode]", "1[/qrcode]", {"Q0L \"MQ==\" 0 0", blankLine});
        row("field", "[field width=3]", "x", {plain("x  ")});
        row("column", "[column width=3]x", "y\nz", {plain("y  |z  ")});
        row("line", "[hr=dashed]", "[/hr]", {plain(QString(32, '-'), "T0C")});
        row("image", "[img]", "[/img]", {blankLine});
        row("text doesn't", "x", "y", {plain("y")});
        row("blocks don't", "[hr /]x", "", {});
    }

    void whatIsLeftOpenGoesOn()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QStringList, blocks);
        BbCodeParser parser;
        parser.parseText(first);
        parser.parseText(second);
        QCOMPARE(described(parser.blocks()), blocks);
    }

    void documentCarriesTheBlocksAndItsActions()
    {
        BbCodeParser parser;
        parser.parseText("[b]x[/b][barcode]1[/barcode]");
        const TextPrinterDocument document = parser.document();
        QCOMPARE(document.blocks(), parser.blocks());
        QCOMPARE(int(document.currentTicketAction()), 5);
        QCOMPARE(int(document.prevTicketAction()), 4);
        QCOMPARE(int(document.loopPolicy()), 0);
        QCOMPARE(document.doInit(), false);
        QCOMPARE(document.retractionTimeout(), 0);
        QCOMPARE(document.symbolsPerLine(), 0);
        QVERIFY(document.charImages().isEmpty());
    }

    // Log lines

    void unknownNamesAreLogged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<QStringList>>("words");
        using Words = QList<QStringList>;
        QTest::newRow("opening tag") << "[Foo]x" << Words{{"foo"}};
        QTest::newRow("closing tag") << "x[/Foo]" << Words{{"foo"}};
        QTest::newRow("both") << "[foo]x[/foo]" << Words{{"foo"}, {"foo"}};
        QTest::newRow("parameter") << "[b Foo=Bar]x" << Words{{"foo", "bar"}};
        QTest::newRow("two parameters") << "[b y=1 x=2]" << Words{{"x", "2"}, {"y", "1"}};
        QTest::newRow("unknown tag with its value") << "[foo=1]" << Words{{"foo"}, {"foo", "1"}};
        QTest::newRow("known key in an unknown tag") << "[foo size=large]x" << Words{{"foo"}};
        QTest::newRow("known tags are quiet")
            << "[center][left][right][b][i][u][hr][img][column][barcode][qrcode][field]"
               "[/field][/qrcode][/barcode][/column][/img][/hr][/u][/i][/b][/right][/left]"
               "[/center][/size]"
            << Words{};
        QTest::newRow("known keys are quiet")
            << "[b size=huge hr=x width=x align=x zerofill=x name=x]" << Words{};
        QTest::newRow("bad tag is quiet") << "[foo!]" << Words{};
    }

    void unknownNamesAreLogged()
    {
        QFETCH(QString, text);
        QFETCH(QList<QStringList>, words);
        const LogCatcher log;
        parsed(text);
        const QStringList lines = log.lines();
        QCOMPARE(lines.size(), words.size());
        for (int i = 0; i < lines.size(); ++i) {
            QVERIFY2(lines.at(i).startsWith("default warning "), qPrintable(lines.at(i)));
            for (const QString &word : words.at(i))
                QVERIFY2(lines.at(i).contains(word), qPrintable(lines.at(i)));
        }
    }

    void openingSizeLogsAWarning()
    {
        const LogCatcher log;
        const QList<DocumentBlock> blocks = parsed("[SIZE=LARGE]x[/size]");
        QCOMPARE(described(blocks), QStringList("T0L \"x\" 3 0"));
        QCOMPARE(log.lines().size(), 1);
        QVERIFY(log.lines().first().contains("size"));
    }

    // Pictures

    void missingPictureLeavesAnEmptyBlock_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("blocks");
        const auto row = [](const char *name, const QString &text, const QStringList &blocks) {
            QTest::newRow(name) << text << blocks;
        };
        row("absent", "[img name=absent][/img]", {blankLine});
        row("without a name", "[img][/img]", {blankLine});
        row("closing itself", "[img /]", {blankLine});
        row("text between the tags", "x[img name=absent]y[/img]z",
            {plain("x"), plain("y"), plain("z")});
        row("closing alone", "x[/img]y", {plain("x y")});
        row("in an aligned block", "[right][img][/img]x[/right]",
            {"T0R \"\"  ", plain("x", "T0R")});
        row("in a barcode", "[barcode][img][/img]", {"B7L \"\"  "});
        row("name outside an image", "[b name=absent]x[/b]", {"T0L \"x\" 0 1"});
        row("closed twice", "[img][/img][/img]", {blankLine});
        row("opened twice", "[img]x[img]", {plain("x")});
    }

    void missingPictureLeavesAnEmptyBlock()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, blocks);
        const QTemporaryDir directory;
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText(text);
        QCOMPARE(described(parser.blocks()), blocks);
    }

    /// One-bit pictures, for which 16 Mi pixels take 2 MiB.
    void picturesHaveAtMost16MiPixels_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("result");
        QTest::newRow("just as many") << QSize(16384, 1024) << QSize(384, 24);
        QTest::newRow("one row more") << QSize(16384, 1025) << QSize(0, 0);
        QTest::newRow("far more") << QSize(16384, 8193) << QSize(0, 0);
        QTest::newRow("just as many when scaled") << QSize(4, 455) << QSize(384, 43680);
        QTest::newRow("more when scaled") << QSize(4, 456) << QSize(0, 0);
        QTest::newRow("far more when scaled") << QSize(1, 32767) << QSize(0, 0);
    }

    void picturesHaveAtMost16MiPixels()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, result);
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("wild.pbm");
        const QByteArray head =
            QString("P4\n%1 %2\n").arg(size.width()).arg(size.height()).toLatin1();
        writeFile(fileName, head);
        QVERIFY(
            QFile::resize(fileName, head.size() + qint64(size.width() + 7) / 8 * size.height()));
        const MonochromeImage image = loaded(directory.path(), "wild");
        QCOMPARE(QSize(image.width(), image.height()), result);
    }

    /// A head alone, of few bytes, makes its reader ask for the memory of all pixels.
    void gifOfTooManyPixelsIsNotRead_data()
    {
        QTest::addColumn<QByteArray>("size");
        QTest::newRow("11585 by 11585") << QByteArray("412d 412d");
        QTest::newRow("left to its pictures") << QByteArray("0000 0000");
        QTest::newRow("without a width") << QByteArray("0000 0100");
    }

    void gifOfTooManyPixelsIsNotRead()
    {
        QFETCH(QByteArray, size);
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.gif"),
                  QByteArray::fromHex("474946383961" + size +
                                      "80 00 00 000000 ffffff"
                                      "2c 0000 0000 412d 412d 00 02 02 440a 00 3b"));
        const auto load = [&] { loaded(directory.path(), "logo"); };
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
        if (memoryCanBeMeasured) {
            const qint64 peak = peakMemoryOf(load);
            QVERIFY2(peak >= 0 && peak < (8 << 20), qPrintable(QString::number(peak)));
        }
    }

    /// A thousand of these would take 8 GB.
    void compressedTextsOfAPngAreNotRead()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.png");
        QVERIFY(striped(20, 10).save(fileName));
        const MonochromeImage expected = expectedImage(fileName);
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        constexpr int behindTheHead = 8 + 25;
        const QByteArray text =
            "k\0" + QByteArray(1, '\0') + qCompress(QByteArray(7900000, 'x')).mid(4);
        bytes.insert(behindTheHead, chunk("zTXt", text).repeated(40));
        writeFile(fileName, bytes);
        QCOMPARE(loaded(directory.path(), "logo"), expected);
        if (memoryCanBeMeasured) {
            const qint64 peak = peakMemoryOf([&] { loaded(directory.path(), "logo"); });
            QVERIFY2(peak >= 0 && peak < (8 << 20), qPrintable(QString::number(peak)));
        }
    }

    /// Some programs write such files.
    void pngWithoutItsLastChecksumIsRead()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.png");
        QVERIFY(striped(20, 10).save(fileName));
        const MonochromeImage expected = expectedImage(fileName);
        for (int missing = 1; missing <= 4; ++missing) {
            QVERIFY(QFile::resize(fileName, QFileInfo(fileName).size() - 1));
            QCOMPARE(loaded(directory.path(), "logo"), expected);
        }
        QVERIFY(QFile::resize(fileName, QFileInfo(fileName).size() - 1));
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
    }

    void jpegOfTooManyScansIsNotRead()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.jpg");
        QImageWriter writer(fileName);
        writer.setProgressiveScanWrite(true);
        if (!writer.write(striped(50, 20)))
            QSKIP("this Qt writes no JPEG");
        QCOMPARE(loaded(directory.path(), "logo").width(), 50);
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        file.close();
        const int end = bytes.lastIndexOf("\xFF\xD9");
        const int lastScan = bytes.lastIndexOf("\xFF\xDA");
        bytes.insert(end, bytes.mid(lastScan, end - lastScan).repeated(100));
        writeFile(fileName, bytes);
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
    }

    /// A reader of SVG opens other files, hangs on pipes and takes whatever memory the text asks
    /// for.
    void formatsBeyondTheListAreNotRead_data()
    {
        QTest::addColumn<QByteArray>("format");
        const QList<QByteArray> formats{"bmp", "gif", "jpeg", "jpg", "pbm",
                                        "pgm", "png", "ppm",  "xbm", "xpm"};
        const QList<QByteArray> writable = QImageWriter::supportedImageFormats();
        for (const QByteArray &format : writable) {
            if (!formats.contains(format))
                QTest::newRow(format) << format;
        }
        QTest::newRow("svg") << QByteArray("svg");
    }

    void formatsBeyondTheListAreNotRead()
    {
        QFETCH(QByteArray, format);
        QByteArray content =
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\">"
            "<rect width=\"9\" height=\"9\"/></svg>";
        if (format != "svg") {
            QBuffer buffer(&content);
            QVERIFY(striped(9, 9).save(&buffer, format));
        }
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo." + format), content);
        writeFile(directory.filePath("mark.png"), content);
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
        QCOMPARE(loaded(directory.path(), "mark").width(), 0);
    }

    void contentAndNotTheNameSaysTheFormat()
    {
        const QTemporaryDir directory;
        for (const char *format : {"png", "bmp", "pbm", "pgm", "ppm", "xbm", "xpm"}) {
            const QString fileName = directory.filePath("logo.svg");
            QVERIFY(striped(21, 8).save(fileName, format));
            QVERIFY2(loaded(directory.path(), "logo").width() == 21, format);
        }
    }

    /// The last pixels of a file that breaks off are white, whatever was in memory before.
    void whatACutPictureLacksIsBlank_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QList<QByteArray> formats = QImageWriter::supportedImageFormats();
        const QList<QImage::Format> kinds{QImage::Format_Mono, QImage::Format_Indexed8,
                                          QImage::Format_RGB32, QImage::Format_ARGB32};
        for (const QByteArray &format : formats) {
            for (const QImage::Format kind : kinds) {
                QByteArray content;
                QBuffer buffer(&content);
                if (striped(61, 40, kind).save(&buffer, format))
                    QTest::newRow(qPrintable(QString("%1, %2").arg(QString(format)).arg(kind)))
                        << content;
            }
        }
        QTest::newRow("gif") << QByteArray::fromHex(
            "474946383961 0200 0300 80 00 00 000000 ffffff"
            "2c 0000 0000 0200 0100 00 02 02 440a 00 3b");
        // Of 8 by 2, of which run lengths give three pixels.
        QTest::newRow("bmp in run lengths")
            << QByteArray::fromHex(
                   "424d 00000000 0000 0000 3e000000"
                   "28000000 08000000 02000000 0100 0800 01000000 00000000"
                   "00000000 00000000 02000000 00000000 00000000 ffffff00") +
                   QByteArray::fromHex("0300 0001");
    }

    void whatACutPictureLacksIsBlank()
    {
        QFETCH(QByteArray, content);
        const QuietLog quiet;
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo");
        const auto loadedOver = [&](int byte) {
            fillHeap(byte);
            return loaded(directory.path(), "logo");
        };
        const int step = qMax(1, content.size() / 25);
        for (int size = 1; size < content.size() + step; size += step) {
            // A new file each time: to write over one may wait for the disk.
            QVERIFY(QFile::remove(fileName) || size == 1);
            writeFile(fileName, content.left(size));
            const MonochromeImage image = loadedOver(0x5A);
            QVERIFY2(loadedOver(0xA5) == image, qPrintable(QString("%1 bytes").arg(size)));
        }
        fillHeap(0);
    }

    void rowsThatACutBmpLacksAreWhite_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<QRgb>("first");
        QTest::addColumn<int>("colours");
        QTest::addColumn<int>("bits");
        const QRgb black = qRgb(0, 0, 0);
        const QRgb white = qRgb(255, 255, 255);
        QTest::newRow("1 bit, black is 0") << QImage::Format_Mono << black << 2 << 1;
        QTest::newRow("1 bit, black is 1") << QImage::Format_Mono << white << 2 << 1;
        QTest::newRow("4 bits, black is 0") << QImage::Format_Indexed8 << black << 16 << 4;
        QTest::newRow("4 bits, black is 1") << QImage::Format_Indexed8 << white << 16 << 4;
        QTest::newRow("8 bits, black is 0") << QImage::Format_Indexed8 << black << 256 << 8;
        QTest::newRow("8 bits, black is 1") << QImage::Format_Indexed8 << white << 256 << 8;
        QTest::newRow("24 bits") << QImage::Format_RGB32 << black << 0 << 24;
    }

    void rowsThatACutBmpLacksAreWhite()
    {
        QFETCH(QImage::Format, format);
        QFETCH(QRgb, first);
        QFETCH(int, colours);
        QImage black(64, 20, format);
        QVector<QRgb> table(colours, first ^ RGB_MASK);
        if (colours > 0)
            table[0] = first;
        black.setColorTable(table);
        black.fill(colours > 0 && first != qRgb(0, 0, 0) ? 1U : 0U);
        QByteArray content;
        QBuffer buffer(&content);
        QVERIFY(black.save(&buffer, "bmp"));
        QFETCH(int, bits);
        const int rowBytes = 64 * bits / 8;
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.bmp"), content.chopped(5 * rowBytes));
        fillHeap(0xFF);
        const MonochromeImage image = loaded(directory.path(), "logo");
        fillHeap(0);
        // The rows of a BMP begin at the bottom.
        QCOMPARE(image.image(), QByteArray(8 * 5, '\0') + QByteArray(8 * 15, '\xFF'));
    }

    void bmpWhosePixelsBeginBehindItsEndIsWhite_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<quint32>("begin");
        for (const int bits : {1, 4, 8, 24, 32}) {
            for (const quint32 begin : {0x500U, 0x00040036U, 0x7FFFFFFFU})
                QTest::addRow("%d bits, at %u", bits, begin) << bits << begin;
        }
    }

    void bmpWhosePixelsBeginBehindItsEndIsWhite()
    {
        QFETCH(int, bits);
        QFETCH(quint32, begin);
        // Of 8 by 2, the first colour is black, and a byte is left behind the colours.
        QByteArray content = QByteArray::fromHex(
            "424d 00000000 0000 0000 00000000"
            "28000000 08000000 02000000 0100 0000 00000000 00000000"
            "00000000 00000000 02000000 00000000 00000000 ffffff00 00");
        constexpr int placeOfBegin = 10;
        constexpr int placeOfBits = 28;
        qToLittleEndian(begin, content.data() + placeOfBegin);
        content[placeOfBits] = static_cast<char>(bits);
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.bmp"), content);
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(QSize(image.width(), image.height()), QSize(8, 2));
        QCOMPARE(image.image(), QByteArray(8, '\0'));
    }

    /// Whatever the stack holds where Qt looks their colours up.
    void coloursThatABmpLacksAreWhite()
    {
        // Of 8 by 1 and two colours, black and white; the pixels name others, too.
        const QByteArray content = QByteArray::fromHex(
            "424d 00000000 0000 0000 3e000000"
            "28000000 08000000 01000000 0100 0800 00000000 00000000"
            "00000000 00000000 02000000 00000000 00000000 ffffff00"
            "00 02 7f 01 ff 00 80 03");
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.bmp"), content);
        QCOMPARE(loaded(directory.path(), "logo").image(), QByteArray::fromHex("84000000"));
        // One that is cut off before its last pixel, and so read in another way.
        writeFile(directory.filePath("logo.bmp"), content.chopped(1));
        QCOMPARE(loaded(directory.path(), "logo").image().left(1), QByteArray::fromHex("84"));
    }

    /// Images of one reading share their bytes.
    void pictureOfSeveralTagsIsReadOnce()
    {
        const QTemporaryDir directory;
        QVERIFY(striped(20, 10).save(directory.filePath("logo.png")));
        writeFile(directory.filePath("torn.png"), "none");
        QTest::qSleep(2100);
        QVERIFY(loaded(directory.path(), "logo").image().constData() ==
                loaded(directory.path(), "logo").image().constData());
        QCOMPARE(loaded(directory.path(), "logo"), expectedImage(directory.filePath("logo.png")));
        QCOMPARE(loaded(directory.path(), "torn").width(), 0);
        QCOMPARE(loaded(directory.path(), "torn").width(), 0);
    }

    /// Even if a file of the same size takes its place and its time.
    void pictureThatWasWrittenAnewIsReadAnew()
    {
        const QTemporaryDir directory;
        const QString fileName = directory.filePath("logo.pbm");
        writeFile(fileName, "P1\n2 1\n1 0\n");
        QTest::qSleep(2100);
        QCOMPARE(loaded(directory.path(), "logo").image().toHex(), QByteArray("80000000"));
        const QDateTime written = QFileInfo(fileName).lastModified();
        for (int i = 0; i < 20; ++i) {
            const bool isLeft = i % 2 == 1;
            writeFile(fileName, isLeft ? "P1\n2 1\n1 0\n" : "P1\n2 1\n0 1\n");
            QFile file(fileName);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(written, QFileDevice::FileModificationTime));
            file.close();
            QCOMPARE(loaded(directory.path(), "logo").image().toHex(),
                     QByteArray(isLeft ? "80000000" : "40000000"));
        }
    }

    void linkThatLeadsElsewhereIsReadAnew()
    {
        const QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir("pictures"));
        writeFile(directory.filePath("pictures/one.pbm"), "P1\n2 1\n1 0\n");
        writeFile(directory.filePath("pictures/two.pbm"), "P1\n2 1\n0 1\n");
        QTest::qSleep(2100);
        const QString link = directory.filePath("logo.pbm");
        for (const char *target : {"one", "two", "one"}) {
            QFile::remove(link);
            QVERIFY(QFile::link(directory.filePath(QString("pictures/%1.pbm").arg(target)), link));
            QCOMPARE(loaded(directory.path(), "logo").image().toHex(),
                     QByteArray(qstrcmp(target, "one") == 0 ? "80000000" : "40000000"));
            QCOMPARE(loaded(directory.path(), "logo").fileName(), link);
        }
    }

    /// Qt's reader of GIF goes over all pixels that codes stand for, also behind the last one.
    void gifOfLongCodesCountsAsUnreadable_data()
    {
        QTest::addColumn<int>("codes");
        QTest::addColumn<QByteArray>("extension");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("as many as 16 Mi pixels") << 2055 << QByteArray() << true;
        QTest::newRow("more") << 2056 << QByteArray() << false;
        QTest::newRow("more, behind a comment") << 2100
                                                << QByteArray(
                                                       "!\xFE\x03"
                                                       "abc\x01"
                                                       "d\0",
                                                       9)
                                                << false;
        // A picture for who takes the first 0 for the end; Qt takes it for the size of one.
        const QByteArray hidden = QByteArray(",\0\0\0\0\x08\0\x08\0\0\x02\0", 12);
        QTest::newRow("more, behind a picture that is none")
            << 2100
            << QByteArray("!\xF9\0", 3) + hidden + QByteArray(44 + 1 - 12, '\0') +
                   QByteArray(1, '\0')
            << false;
    }

    void gifOfLongCodesCountsAsUnreadable()
    {
        QFETCH(const int, codes);
        QFETCH(const QByteArray, extension);
        QFETCH(const bool, isRead);
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.gif"), gifOfLongCodes(codes, extension));
        QCOMPARE(loaded(directory.path(), "logo").width(), isRead ? 8 : 0);
    }

    /// With files of the same size and times, as they are unpacked side by side.
    void foldersThatChangePlacesAreReadAnew()
    {
        const QTemporaryDir directory;
        QDir folder(directory.path());
        const auto changed = [&](const QString &name) {
            return QFileInfo(directory.filePath(name)).metadataChangeTime();
        };
        QVERIFY(folder.mkdir("one"));
        QVERIFY(folder.mkdir("two"));
        do {
            writeFile(directory.filePath("one/logo.pbm"), "P1\n2 1\n1 0\n");
            writeFile(directory.filePath("two/logo.pbm"), "P1\n2 1\n0 1\n");
        } while (changed("one/logo.pbm") != changed("two/logo.pbm"));
        QTest::qSleep(2100);
        QCOMPARE(loaded(folder.filePath("one"), "logo").image().toHex(), QByteArray("80000000"));
        QVERIFY(folder.rename("one", "old"));
        QVERIFY(folder.rename("two", "one"));
        QCOMPARE(loaded(folder.filePath("one"), "logo").image().toHex(), QByteArray("40000000"));
    }

    void pictureThatCouldNotBeOpenedIsTriedAgain()
    {
        if (::geteuid() != 0)
            QSKIP("only root changes its user");
        constexpr uid_t nobody = 65534;
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n2 1\n1 0\n");
        QVERIFY(QFile::setPermissions(directory.path(), QFile::Permissions(0x7555)));
        QVERIFY(QFile::setPermissions(directory.filePath("logo.pbm"), QFile::ReadOwner));
        QTest::qSleep(2100);
        QCOMPARE(::seteuid(nobody), 0);
        const int width = loaded(directory.path(), "logo").width();
        QCOMPARE(::seteuid(0), 0);
        QCOMPARE(width, 0);
        QCOMPARE(loaded(directory.path(), "logo").width(), 2);
    }

    /// Nobody writes to the FIFO: whoever opens it waits.
    void fifoIsNoPicture()
    {
        const QTemporaryDir directory;
        const QString fifo = directory.filePath("logo.png");
        QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        QVERIFY(QFile::link(fifo, directory.filePath("mark.png")));
        QVERIFY(QFile::link("/dev/zero", directory.filePath("zero.png")));
        for (const char *name : {"logo", "mark", "zero"})
            QCOMPARE(loaded(directory.path(), name).width(), 0);
    }

    /// Where trying every way to share a name between the wildcards would never end.
    void manyWildcardsAreTriedInBoundedTime()
    {
        const QTemporaryDir directory;
        const QString name = QString("ab").repeated(120);
        for (int i = 0; i < 300; ++i)
            writeFile(directory.filePath(name + QString::number(i)), "P1\n1 1\n1\n");
        writeFile(directory.filePath(name + "0c"), "P1\n2 1\n1 1\n");
        const QString stars = QString("*a").repeated(100);
        QCOMPARE(loaded(directory.path(), stars + "*d").width(), 0);
        QCOMPARE(loaded(directory.path(), stars + "*c").width(), 2);
    }

    void wildcardsMatchAsInAFolder_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name :
             {"*",     "**",  "a",   "a*", "*a",  "*b*", "?",  "??",  "b?", "*?", "?*b", "ab*ab",
              "*ab*b", "a?b", "*.p", "*.", "?.?", "(a)", "a+", "a.c", "$",  "#",  "&"})
            QTest::newRow(name) << QString(name);
    }

    void wildcardsMatchAsInAFolder()
    {
        QFETCH(QString, name);
        const QTemporaryDir directory;
        QDir folder(directory.path());
        for (const char *file : {"a", "AB", "abab", "aab", "b", "bab.pbm", "(a)b", "a+b", "a.c",
                                 "x.p", "Ab.Png", "$", "#1", "&", "ч", "чa"})
            writeFile(directory.filePath(file), "P1\n1 1\n1\n");
        const QStringList files = folder.entryList({name + '*'}, QDir::Files, QDir::Name);
        QCOMPARE(loaded(directory.path(), name).fileName(),
                 files.isEmpty() ? QString() : folder.absoluteFilePath(files.first()));
    }

    void pictureBecomesABitmap()
    {
        const QTemporaryDir directory;
        // 10 by 2: the corners and the middle are black.
        writeFile(directory.filePath("logo.pbm"),
                  "P1\n10 2\n1 0 0 0 1 1 0 0 0 1\n0 0 0 0 0 0 0 0 0 1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[right]x[img name=Logo]alt[/img]y");
        QCOMPARE(parser.blocks().size(), 3);
        const DocumentBlock block = parser.blocks().at(1);
        QVERIFY(block.isImage());
        QCOMPARE(described(block), QString("I0C \"alt\" 000 000"));
        QCOMPARE(block.img().width(), 10);
        QCOMPARE(block.img().height(), 2);
        QCOMPARE(block.img().image().toHex(' '), QByteArray("8c 40 00 00 00 40 00 00"));
        QCOMPARE(block.img().fileName(), directory.filePath("logo.pbm"));
        QCOMPARE(described(parser.blocks().at(2)), plain("y", "T0R"));
    }

    void openingAgainForgetsThePicture()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n1 1\n1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[img name=logo][img][/img]");
        QCOMPARE(described(parser.blocks()), QStringList(blankLine));
    }

    void pictureInABarcodeHasNoBarcodeType()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n1 1\n1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[barcode][img name=logo][/img]");
        QCOMPARE(described(parser.blocks()), QStringList("I0C \"\"  "));
    }

    void everyFormatAndSizeIsConverted_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<QSize>("size");
        const auto row = [](const char *name, const QString &fileName, const QImage &picture,
                            QSize size = QSize()) {
            QTest::newRow(name) << fileName << picture << (size.isValid() ? size : picture.size());
        };
        row("grey PNG", "logo.png", striped(61, 40));
        row("PNG with 8 bits", "logo.png", striped(64, 9, QImage::Format_Indexed8));
        row("PNG with transparency", "logo.png", striped(33, 12, QImage::Format_ARGB32));
        row("one-bit PNG", "logo.png", striped(31, 12, QImage::Format_Mono));
        row("one-bit PNG, black and white", "logo.png",
            withPalette(35, 5, qRgb(0, 0, 0), qRgb(255, 255, 255)));
        row("one-bit PNG, white and black", "logo.png",
            withPalette(35, 5, qRgb(255, 255, 255), qRgb(0, 0, 0)));
        row("one-bit PNG without black", "logo.png",
            withPalette(9, 5, qRgb(255, 0, 0), qRgb(0, 0, 255)));
        row("one-bit PNG with black alone", "logo.png",
            withPalette(9, 5, qRgb(0, 0, 0), qRgb(0, 0, 0)));
        row("BMP", "logo.bmp", striped(17, 30));
        row("one-bit BMP", "logo.bmp", striped(17, 30, QImage::Format_Mono));
        row("PBM", "logo.pbm", striped(40, 8, QImage::Format_Mono));
        row("XBM", "logo.xbm", striped(21, 8, QImage::Format_MonoLSB));
        row("XPM", "logo.xpm", striped(21, 8));
        if (QImageWriter::supportedImageFormats().contains("jpg")) {
            row("JPEG", "logo.jpg", striped(50, 20));
            row("tall JPEG", "logo.jpg", striped(50, 400), QSize(384, 3072));
        }
        row("one pixel", "logo.png", striped(1, 1));
        row("32 pixels wide", "logo.png", striped(32, 3));
        row("384 high", "logo.png", striped(20, 384));
        row("wide", "logo.png", striped(900, 30));
        row("385 high", "logo.png", striped(300, 385), QSize(384, 493));
        row("tall and narrow", "logo.png", striped(100, 400), QSize(384, 1536));
        row("tall and wide", "logo.png", striped(800, 600), QSize(384, 288));
        row("tall, one bit, no black", "logo.png",
            withPalette(96, 400, qRgb(255, 0, 0), qRgb(0, 0, 255)), QSize(384, 1600));
    }

    void everyFormatAndSizeIsConverted()
    {
        QFETCH(QString, fileName);
        QFETCH(QImage, picture);
        QFETCH(QSize, size);
        const QTemporaryDir directory;
        const QString path = directory.filePath(fileName);
        QVERIFY(picture.save(path));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QVERIFY(image.isValid());
        QCOMPARE(QSize(image.width(), image.height()), size);
        QCOMPARE(image.image().size(), (size.width() + 31) / 32 * 4 * size.height());
        QCOMPARE(image, expectedImage(path));
    }

    void gifIsConverted()
    {
        if (!QImageReader::supportedImageFormats().contains("gif"))
            QSKIP("this Qt reads no GIF");
        const QTemporaryDir directory;
        // 2 by 1 of the colours black and white: a black pixel and a white one.
        writeFile(directory.filePath("logo.gif"),
                  QByteArray::fromHex("474946383961 0200 0100 80 00 00 000000 ffffff"
                                      "2c 0000 0000 0200 0100 00 02 02 440a 00 3b"));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(QSize(image.width(), image.height()), QSize(2, 1));
        QCOMPARE(image.image().toHex(' '), QByteArray("80 00 00 00"));
    }

    void colourMissingInTheTableIsNotBlack_data()
    {
        QTest::addColumn<QByteArray>("colour");
        QTest::addColumn<QByteArray>("row");
        QTest::newRow("black alone") << QByteArray("00000000") << QByteArray("50 00 00 00");
        QTest::newRow("white alone") << QByteArray("ffffff00") << QByteArray("00 00 00 00");
    }

    void colourMissingInTheTableIsNotBlack()
    {
        QFETCH(QByteArray, colour);
        QFETCH(QByteArray, row);
        const QTemporaryDir directory;
        // A one-bit BMP of 4 by 1 whose table has one entry; its pixels are 1, 0, 1, 0.
        const QByteArray fileHeader = "424d 3e000000 0000 0000 3a000000";
        const QByteArray header =
            "28000000 04000000 01000000 0100 0100 00000000 04000000"
            "00000000 00000000 01000000 01000000";
        writeFile(directory.filePath("logo.bmp"),
                  QByteArray::fromHex(fileHeader + header + colour + "a0000000"));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(QSize(image.width(), image.height()), QSize(4, 1));
        QCOMPARE(image.image().toHex(' '), row);
    }

    void tallPictureIsScaledToTheWidthOfThePaper()
    {
        const QTemporaryDir directory;
        QImage black(192, 400, QImage::Format_Mono);
        black.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
        black.fill(1);
        QVERIFY(black.save(directory.filePath("logo.png")));
        const MonochromeImage image = loaded(directory.path(), "logo");
        QCOMPARE(image.width(), 384);
        QCOMPARE(image.height(), 800);
        QCOMPARE(image.image(), QByteArray(48 * 800, '\xFF'));
    }

    void firstFileByNameIsTaken()
    {
        const QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir("logo0"));
        writeFile(directory.filePath("logo2.pbm"), "P1\n2 1\n1 1\n");
        writeFile(directory.filePath("logo1.pbm"), "P1\n1 1\n1\n");
        writeFile(directory.filePath("logo.txt.pbm"), "P1\n3 1\n1 1 1\n");
        writeFile(directory.filePath("a-logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        QCOMPARE(loaded(directory.path(), "logo").width(), 3);
        QCOMPARE(loaded(directory.path(), "logo1").width(), 1);
        QCOMPARE(loaded(directory.path(), "logo2.pbm").width(), 2);
        QCOMPARE(loaded(directory.path(), "a-").width(), 4);
        QCOMPARE(loaded(directory.path(), "logo0").width(), 0);
        QCOMPARE(loaded(directory.path(), "ogo").width(), 0);
    }

    void nameMayHoldWildcards()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("a-logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        writeFile(directory.filePath("b-logo.pbm"), "P1\n5 1\n1 1 1 1 1\n");
        QCOMPARE(loaded(directory.path(), "*").width(), 4);
        QCOMPARE(loaded(directory.path(), "?-logo").width(), 4);
        QCOMPARE(loaded(directory.path(), "b*pbm").width(), 5);
        QCOMPARE(loaded(directory.path(), "../*").width(), 0);
        QCOMPARE(loaded(directory.path(), "??????????????").width(), 0);
    }

    void fileNameInCapitalsIsFound()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("LOGO.PBM"), "P1\n4 1\n1 1 1 1\n");
        QCOMPARE(loaded(directory.path(), "Logo").width(), 4);
    }

    void unreadableFirstFileLeavesTheImageEmpty()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo1.png"), "no picture");
        writeFile(directory.filePath("logo2.pbm"), "P1\n4 1\n1 1 1 1\n");
        writeFile(directory.filePath("empty.png"), "");
        QCOMPARE(loaded(directory.path(), "logo").width(), 0);
        QCOMPARE(loaded(directory.path(), "logo2").width(), 4);
        QCOMPARE(loaded(directory.path(), "empty").width(), 0);
        QCOMPARE(loaded(directory.filePath("nowhere"), "logo").width(), 0);
    }

    void failedSecondNameKeepsTheFirstPicture()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        BbCodeParser parser;
        parser.setImagesPath(directory.path());
        parser.parseText("[img name=logo][b name=absent][/img]");
        QCOMPARE(parser.blocks().first().img().width(), 4);
    }

    void emptyPathIsTheCurrentDirectory()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("logo.pbm"), "P1\n4 1\n1 1 1 1\n");
        const QString usual = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory.path()));
        const MonochromeImage image = loaded(QString(), "logo");
        const QString current = QDir::currentPath();
        QVERIFY(QDir::setCurrent(usual));
        QCOMPARE(image.width(), 4);
        QCOMPARE(image.fileName(), current + "/logo.pbm");
    }

    void pictureOfAbsurdSizeCountsAsUnreadable()
    {
        const QTemporaryDir directory;
        writeFile(directory.filePath("vast.pbm"), "P4\n200000 200000\n");
        QVERIFY(withPalette(1, 3000, qRgb(0, 0, 0), qRgb(255, 255, 255))
                    .save(directory.filePath("needle.png")));
        QCOMPARE(loaded(directory.path(), "vast").width(), 0);
        QCOMPARE(loaded(directory.path(), "needle").width(), 0);
    }

    // Great inputs

    void greatTextsAreParsed_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("tags left open") << "[b]";
        QTest::newRow("pieces of text") << "[b]x[/b]";
        QTest::newRow("cut-off tags") << "[b a=b ";
        QTest::newRow("parameters that nest") << "[b size=large]x";
        QTest::newRow("brackets") << "[";
        QTest::newRow("blocks") << "[center]x[/center]";
        QTest::newRow("codes") << "[barcode]1[/barcode]";
        QTest::newRow("lines") << "[hr /]x";
        QTest::newRow("fields") << "[field width=255]x[/field]";
    }

    void greatTextsAreParsed()
    {
        QFETCH(QString, unit);
        const QuietLog quiet;
        BbCodeParser parser;
        parser.parseText(unit.repeated(500000 / unit.size()) + "end");
        QVERIFY(!parser.blocks().isEmpty());
        QVERIFY(parser.blocks().last().text().last().endsWith("end"));
    }
};

QTEST_GUILESS_MAIN(TestBbCodeParser)
#include "tst_bbcodeparser.moc"
