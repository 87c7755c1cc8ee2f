// BBCode to blocks, over receipts of 10 kB to 10 MB. The yardstick is QXmlStreamReader, reading the
// same texts and tags written as XML; it makes no blocks.
//
//   parse        BbCodeParser::parseText()
//   read_as_xml  QXmlStreamReader to the end, taking each tag's name, attributes and text

#include <QXmlStreamReader>
#include <algorithm>
#include <memory>

#include "bbcpp/bbdocument.h"
#include "frame.h"
#include "printerdocs/bbcodeparser.h"
#include "receipt/sale.h"

namespace {

constexpr int kilobyte = 1000;

/// One text in both languages.
class Markup
{
public:
    explicit Markup(int bytes)
    {
        const receipt::Sale sale = receipt::makeSale(100);
        m_xml += "<receipt>";
        for (size_t i = 0; m_bbCode.size() < bytes; ++i)
            addItem(sale.items[i % sale.items.size()]);
        m_xml += "</receipt>";
    }

    QString bbCode() const { return QString::fromUtf8(m_bbCode); }
    const QByteArray &bbCodeBytes() const { return m_bbCode; }
    const QByteArray &xml() const { return m_xml; }

private:
    using Attributes = std::initializer_list<std::pair<const char *, const char *>>;

    void addItem(const receipt::Item &item)
    {
        add("field", {{"width", "14"}}, item.name);
        add("field", {{"width", "6"}, {"align", "right"}}, QString::number(item.quantity, 'f', 3));
        addText(" x ");
        add("field", {{"width", "7"}, {"align", "right"}}, QString::number(item.price, 'f', 2));
        add("b", {}, QString::number(item.sum, 'f', 2));
        addText("\n");
    }
    void add(const char *name, Attributes attributes, const QString &text)
    {
        m_bbCode += '[' + QByteArray(name);
        m_xml += '<' + QByteArray(name);
        for (const auto &[key, value] : attributes) {
            m_bbCode += ' ' + QByteArray(key) + '=' + value;
            m_xml += ' ' + QByteArray(key) + "=\"" + value + '"';
        }
        m_bbCode += ']';
        m_xml += '>';
        addText(text.toUtf8());
        m_bbCode += "[/" + QByteArray(name) + ']';
        m_xml += "</" + QByteArray(name) + '>';
    }
    void addText(const QByteArray &text)
    {
        m_bbCode += text;
        m_xml += text;
    }

    QByteArray m_bbCode;
    QByteArray m_xml;
};

QByteArray textOf(const QByteArray &bbCode)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    document->load(bbCode.toStdString());
    return QByteArray::fromStdString(bbcpp::getRawString(*document));
}

/// The text of an XML document; what reading it costs at the least.
QString textOfXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    QString text;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                benchmark::DoNotOptimize(reader.name().size());
                benchmark::DoNotOptimize(reader.attributes().size());
                break;
            case QXmlStreamReader::EndElement:
                benchmark::DoNotOptimize(reader.name().size());
                break;
            case QXmlStreamReader::Characters:
                text += reader.text();
                break;
            default:
                break;
        }
    }
    return reader.hasError() ? reader.errorString() : text;
}

void addSize(int bytes, int repetitions)
{
    const auto markup = std::make_shared<const Markup>(bytes);
    const std::string suffix = '/' + std::to_string(bytes / kilobyte);
    frame::add("parse" + suffix, [markup](benchmark::State &state) {
        const QString text = markup->bbCode();
        BbCodeParser parser;
        for (auto _ : state)
            parser.parseText(text);
    })->Repetitions(repetitions);
    frame::add("read_as_xml" + suffix, [markup](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(textOfXml(markup->xml()));
    })->Repetitions(repetitions);
}

}  // namespace

int main(int argc, char **argv)
{
    for (const int bytes : {10 * kilobyte, 100 * kilobyte, 1000 * kilobyte, 10000 * kilobyte})
        addSize(bytes, frame::repetitions(argc, argv, bytes < 1000 * kilobyte ? 41 : 5));
    const Markup sample(10 * kilobyte);
    return frame::run(
        argc, argv,
        {{"the text of BBCode", textOfXml(sample.xml()).toUtf8(), textOf(sample.bbCodeBytes())}});
}
