#include <QHash>
#include <QXmlStreamReader>
#include <limits>
#include <optional>

#include "commands.h"
#include "printerdocs/document/characterbytes_p.h"
#include "printerdocs/document/symbolfile_p.h"
#include "printerdocs/specialcharacters.h"
#include "support.h"

namespace {

// Rows of a symbol's drawing are aligned to whole bytes.
constexpr int rowAlignment = 8;
constexpr int smallestCode = -128;
constexpr int largestCode = 255;

/// Reads a symbol file beside the library, which stops at the first wrong symbol without a word,
/// and complains about everything that is wrong in it.
class SymbolFileCheck
{
public:
    SymbolFileCheck(const QString &fileName, const QByteArray &content)
        : m_fileName(fileName),
          m_lines(QString::fromUtf8(content).split(QLatin1Char('\n'))),
          m_reader(content)
    {}

    /// Whether nothing is wrong.
    bool run()
    {
        if (m_reader.readNextStartElement()) {
            if (m_reader.name() == QLatin1String("SpecialSymbolImages"))
                checkImages();
            else
                complain(tagPlace(),
                         QStringLiteral("the root element is \"%1\", not \"SpecialSymbolImages\"")
                             .arg(m_reader.name()));
        }
        while (!m_reader.atEnd())
            m_reader.readNext();
        if (m_reader.hasError())
            complain(place(m_reader.columnNumber()), m_reader.errorString());
        return m_good;
    }

private:
    struct Size
    {
        std::optional<int> width;
        std::optional<int> height;
    };

    void checkImages()
    {
        while (nextChild(QLatin1String("Font")))
            checkFont();
    }

    void checkFont()
    {
        const Size size{sideAttribute(QStringLiteral("Width")),
                        sideAttribute(QStringLiteral("Height"))};
        while (nextChild(QLatin1String("Symbol")))
            checkSymbol(size);
    }

    void checkSymbol(const Size &size)
    {
        const QString symbolPlace = tagPlace();
        const std::optional<int> code = codeAttribute();
        int lines = 0;
        while (nextChild(QLatin1String("Line"))) {
            checkLine(size);
            ++lines;
        }
        if (m_reader.hasError())
            return;
        if (size.height && lines != *size.height)
            complain(symbolPlace, QStringLiteral("the symbol has %1 lines instead of %2")
                                      .arg(lines)
                                      .arg(*size.height));
        if (code && size.width && size.height)
            checkDuplicate(symbolPlace, *code, *size.width, *size.height);
    }

    void checkLine(const Size &size)
    {
        const QString linePlace = tagPlace();
        const int length = m_reader.readElementText().size();
        if (!m_reader.hasError() && size.width && length != *size.width)
            complain(linePlace, QStringLiteral("the line has %1 characters instead of %2")
                                    .arg(length)
                                    .arg(*size.width));
    }

    void checkDuplicate(const QString &symbolPlace, int code, int width, int height)
    {
        // The library tells codes apart by their low 8 bits.
        const QString drawing = QStringLiteral("code %1 at %2 x %3")
                                    .arg(static_cast<signed char>(code))
                                    .arg(width)
                                    .arg(height);
        const auto first = m_drawings.constFind(drawing);
        if (first == m_drawings.constEnd())
            m_drawings.insert(drawing, symbolPlace);
        else
            complain(symbolPlace, QStringLiteral("%1 is drawn already at %2").arg(drawing, *first));
    }

    // Goes to the next child of this name; others are skipped, as the library does.
    bool nextChild(QLatin1String name)
    {
        while (m_reader.readNextStartElement()) {
            if (m_reader.name() == name)
                return true;
            tool::complain(QStringLiteral("%1: note: \"%2\" is skipped")
                               .arg(tagPlace(), m_reader.name().toString()));
            m_reader.skipCurrentElement();
        }
        return false;
    }

    std::optional<int> sideAttribute(const QString &name)
    {
        return numberAttribute(name, 1, std::numeric_limits<int>::max());
    }

    std::optional<int> codeAttribute()
    {
        return numberAttribute(QStringLiteral("Code"), smallestCode, largestCode);
    }

    std::optional<int> numberAttribute(const QString &name, int smallest, int largest)
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        if (!attributes.hasAttribute(name)) {
            complain(tagPlace(), QStringLiteral("the attribute \"%1\" is missing").arg(name));
            return std::nullopt;
        }
        const QString text = attributes.value(name).toString();
        bool ok = false;
        const int number = text.toInt(&ok);
        if (ok && number >= smallest && number <= largest)
            return number;
        complain(tagPlace(),
                 QStringLiteral("%1=\"%2\" is no whole number from %3 to %4")
                     .arg(name, text, QString::number(smallest), QString::number(largest)));
        return std::nullopt;
    }

    // Where the reader stands; columns count from 1.
    QString place(qint64 column) const
    {
        return QStringLiteral("%1:%2:%3")
            .arg(m_fileName)
            .arg(m_reader.lineNumber())
            .arg(column + 1);
    }

    // Where the start tag begins that the reader has just read.
    QString tagPlace() const
    {
        const qint64 end = m_reader.columnNumber();
        const QString line = m_lines.value(static_cast<int>(m_reader.lineNumber()) - 1);
        const int start = line.leftRef(static_cast<int>(end)).lastIndexOf(QLatin1Char('<'));
        return place(start >= 0 ? start : end);
    }

    void complain(const QString &where, const QString &what)
    {
        tool::complain(QStringLiteral("%1: %2").arg(where, what));
        m_good = false;
    }

    QString m_fileName;
    QStringList m_lines;
    QXmlStreamReader m_reader;
    QHash<QString, QString> m_drawings;
    bool m_good = true;
};

// What the library reads from the file, up to the first fault.
SpecialCharacters loadedSymbols(const QByteArray &content)
{
    SpecialCharacters symbols;
    QXmlStreamReader reader(content);
    if (reader.readNextStartElement() && reader.name() == QLatin1String("SpecialSymbolImages"))
        symbols.parseImages(&reader);
    return symbols;
}

QString headOf(int code, const MonochromeImage &image)
{
    const bool printed = code >= documents::firstSymbol && code <= documents::lastSymbol;
    const QString note = QStringLiteral(" (never printed: symbols have the codes %1 to %2)")
                             .arg(documents::firstSymbol)
                             .arg(documents::lastSymbol);
    return QStringLiteral("code %1, %2 x %3%4")
        .arg(code)
        .arg(image.width())
        .arg(image.height())
        .arg(printed ? QString() : note);
}

void draw(const MonochromeImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        QString row(image.width(), QLatin1Char('.'));
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y, rowAlignment))
                row[x] = QLatin1Char('#');
        }
        tool::print(row);
    }
    tool::print(QString());
}

}  // namespace

int runSymbols(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Draws the special symbols of a .ssi file as the library reads them, and "
                       "reports everything that is wrong in the file. Exit status 1 then."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The file; - is standard input."));
    const auto status = tool::parse(parser, QStringLiteral("symbols"), arguments, 1, 1);
    if (status)
        return *status;
    const QString fileName = parser.positionalArguments().constFirst();
    const std::optional<QByteArray> content = tool::readInput(fileName);
    if (!content)
        return tool::BadInput;
    const QString refusal = symbolfile::refusal(*content);
    if (!refusal.isEmpty()) {
        tool::complain(QStringLiteral("%1: %2").arg(fileName, refusal));
        return tool::BadInput;
    }
    const SpecialCharacters symbols = loadedSymbols(*content);
    for (auto symbol = symbols.cbegin(); symbol != symbols.cend(); ++symbol) {
        tool::print(headOf(symbol.key(), *symbol));
        draw(*symbol);
    }
    return SymbolFileCheck(fileName, *content).run() ? tool::Success : tool::BadInput;
}
