// A BBCode text: its tree against a plain reading of the grammar, and its blocks.
#include <QLoggingCategory>
#include <iostream>
#include <sstream>

#include "bbcpp/bbdocument.h"
#include "bbcpp/referencetree.h"
#include "documentlaws.h"
#include "fuzzing.h"
#include "printerdocs/bbcodeparser.h"

using fuzzing::equal;

namespace {

// The printed tree grows with the square of the tags that are left open.
constexpr size_t longestPrinted = 600;

/// Takes what the library writes to standard output.
class OutputCatcher
{
public:
    OutputCatcher() : m_previous(std::cout.rdbuf(m_text.rdbuf())) {}
    ~OutputCatcher() { std::cout.rdbuf(m_previous); }
    OutputCatcher(const OutputCatcher &) = delete;
    OutputCatcher &operator=(const OutputCatcher &) = delete;
    std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf *m_previous;
};

void treeIsThatOfTheGrammar(const std::string &text)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    document->load(text);
    bbcpp::getRawString(*document);
    if (text.size() > longestPrinted)
        return;
    OutputCatcher output;
    bbcpp::printDocument(*document);
    equal("the tree is that of the grammar", QByteArray::fromStdString(output.text()),
          QByteArray::fromStdString(ReferenceTree(text).print()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto width = input.ConsumeIntegral<unsigned char>();
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    treeIsThatOfTheGrammar(bytes);

    const QString text = QString::fromStdString(bytes);
    BbCodeParser parser;
    BbCodeParser other;
    for (BbCodeParser *each : {&parser, &other}) {
        each->setSymbolsPerLine(width);
        each->setImagesPath(QStringLiteral(PRINTERSLIB_EXAMPLES "/images"));
        each->parseText(text);
    }
    equal("two parsers agree", parser.document(), other.document());
    documentlaws::check(parser.document());
    documentlaws::bytesAreInStep(parser.document());
    parser.parseText(text);
    other.parseText(text);
    equal("two parsers agree on what goes on", parser.document(), other.document());
    return 0;
}
