#include <gtest/gtest.h>
#include <malloc.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <clocale>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <new>
#include <random>
#include <sstream>

#include "bbcpp/bbdocument.h"
#include "referencetree.h"
#include "treecases.h"

// Memory in use, for the test that looks at the size of a tree.
static std::atomic<std::size_t> usedBytes{0};

[[gnu::noinline]] void *operator new(std::size_t size)
{
    void *memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    usedBytes += malloc_usable_size(memory);
    return memory;
}

[[gnu::noinline]] void operator delete(void *memory) noexcept
{
    usedBytes -= malloc_usable_size(memory);
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void *memory, std::size_t) noexcept
{
    operator delete(memory);
}

namespace {

using DocumentPtr = std::shared_ptr<bbcpp::BBDocument>;

DocumentPtr parsed(const std::string &text)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    document->load(text);
    return document;
}

/// Takes what std::cout gets while it lives.
class OutputCapture
{
public:
    explicit OutputCapture(std::streambuf *target) : m_usual(std::cout.rdbuf(target)) {}
    ~OutputCapture() { std::cout.rdbuf(m_usual); }

private:
    std::streambuf *m_usual;
};

/// Counts bytes and keeps none.
class CountingBuffer : public std::streambuf
{
public:
    std::size_t count = 0;

protected:
    int_type overflow(int_type byte) override
    {
        ++count;
        return byte;
    }
    std::streamsize xsputn(const char *, std::streamsize size) override
    {
        count += static_cast<std::size_t>(size);
        return size;
    }
};

std::string printed(const bbcpp::BBDocument &document)
{
    std::stringbuf buffer;
    const OutputCapture capture(&buffer);
    bbcpp::printDocument(document);
    return buffer.str();
}

std::string repeated(const std::string &unit, std::size_t bytes)
{
    std::string text;
    while (text.size() < bytes)
        text += unit;
    return text;
}

std::size_t countNodes(const bbcpp::BBNode &root)
{
    std::size_t count = 0;
    bbcpp::walk(root, [&count](const bbcpp::BBNodePtr &, unsigned int) { ++count; });
    return count;
}

std::size_t depthOf(const bbcpp::BBNode &root)
{
    std::size_t deepest = 0;
    bbcpp::walk(root, [&deepest](const bbcpp::BBNodePtr &, unsigned int depth) {
        deepest = std::max<std::size_t>(deepest, depth + 1);
    });
    return deepest;
}

/// Runs a step on a thread with a stack of 256 KiB, far below what a call per level would take.
void runOnSmallStack(std::function<void()> step)
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
    pthread_t thread;
    const auto entry = [](void *argument) -> void * {
        (*static_cast<std::function<void()> *>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, entry, &step), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

void expectNeighboursAreNoTexts(const bbcpp::BBNode &root)
{
    const auto check = [](const bbcpp::BBNode &parent) {
        bool previous = false;
        for (const bbcpp::BBNodePtr &child : parent.getChildren()) {
            const bool text = child->getNodeType() == bbcpp::BBNode::NodeText;
            EXPECT_FALSE(previous && text);
            EXPECT_EQ(child->getParent().get(), &parent);
            previous = text;
        }
    };
    check(root);
    bbcpp::walk(root, [&](const bbcpp::BBNodePtr &child, unsigned int) { check(*child); });
}

}  // namespace

// The tree of a text

TEST(BBDocumentTree, everyTableRowPrintsItsTree)
{
    for (const TreeCase &row : treeCases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(*parsed(std::string(row.text))), "#document\n" + row.tree);
    }
}

TEST(BBDocumentTree, tableAgreesWithTheNaiveReading)
{
    for (const TreeCase &row : treeCases) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ReferenceTree(std::string(row.text)).print(), "#document\n" + row.tree);
    }
}

TEST(BBDocumentTree, randomTextsAgreeWithTheNaiveReading)
{
    const std::vector<std::string> alphabet{"[", "[",  "]", "/",  "=", "=", " ",     "a",
                                            "b", "\"", "-", "\n", "é", "«", "[a=b ", " /]"};
    std::mt19937 random(20210511);
    std::uniform_int_distribution<std::size_t> letter(0, alphabet.size() - 1);
    std::uniform_int_distribution<int> length(0, 16);
    for (int run = 0; run < 150000; ++run) {
        std::string text;
        for (int left = length(random); left > 0; --left)
            text += alphabet[letter(random)];
        const DocumentPtr document = parsed(text);
        ASSERT_EQ(printed(*document), ReferenceTree(text).print()) << "text: " << text;
        ASSERT_NO_FATAL_FAILURE(expectNeighboursAreNoTexts(*document));
    }
}

TEST(BBDocumentTree, randomBytesAgreeWithTheNaiveReading)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int run = 0; run < 20000; ++run) {
        std::string text = "[a=b ";
        for (int left = run % 24; left > 0; --left)
            text += static_cast<char>(byte(random));
        ASSERT_EQ(printed(*parsed(text)), ReferenceTree(text).print()) << "run " << run;
    }
}

TEST(BBDocumentTree, slashWithoutNameIsLost)
{
    EXPECT_EQ(bbcpp::getRawString(*parsed("[/ x]")), "[ x]");
    EXPECT_EQ(bbcpp::getRawString(*parsed("[/abc")), "[abc");
    EXPECT_EQ(bbcpp::getRawString(*parsed("[/b!]")), "[/b!]");
}

TEST(BBDocumentTree, everyByteIsClassedInNamesAndValues)
{
    const std::string name = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";
    const std::string value = name + "#$&()*+,-./:?";
    for (int code = 0; code < 256; ++code) {
        SCOPED_TRACE(code);
        const char byte = static_cast<char>(code);
        const bool inName = name.find(byte) != std::string::npos;
        const bool inValue = value.find(byte) != std::string::npos;
        EXPECT_EQ(bbcpp::IsAlpha(byte) || bbcpp::IsDigit(byte), inName);
        EXPECT_EQ(bbcpp::IsDigit(byte), byte >= '0' && byte <= '9');

        const DocumentPtr named = parsed(std::string("[") + byte + "]");
        EXPECT_EQ(named->getChildren().front()->getNodeType() == bbcpp::BBNode::NodeElement,
                  inName);
        const DocumentPtr valued = parsed(std::string("[x=a") + byte + "b]");
        EXPECT_EQ(valued->getChildren().front()->getNodeType() == bbcpp::BBNode::NodeElement,
                  inValue || byte == ']');
    }
}

class BBDocumentInLocale : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        if (std::setlocale(LC_ALL, GetParam()) == nullptr)
            GTEST_SKIP() << "the locale " << GetParam() << " isn't installed";
    }
    void TearDown() override { std::setlocale(LC_ALL, m_usual.c_str()); }

private:
    const std::string m_usual = std::setlocale(LC_ALL, nullptr);
};

// The bytes A0 and 85 are spaces in some 8-bit locales.
TEST_P(BBDocumentInLocale, spaceIsThatOfTheCLocale)
{
    EXPECT_EQ(bbcpp::getRawString(*parsed("[t \xa0"
                                          "a=b]")),
              "[t \xa0"
              "a=b]");
    EXPECT_EQ(bbcpp::getRawString(*parsed("[t \x85"
                                          "a=b]")),
              "[t \x85"
              "a=b]");
    EXPECT_EQ(bbcpp::getRawString(*parsed("[t \t\n\v\f\r a=b]")), "");
}

INSTANTIATE_TEST_SUITE_P(Locales, BBDocumentInLocale,
                         testing::Values("C", "C.UTF-8", "en_US.ISO-8859-1", "ru_RU.KOI8-R",
                                         "de_DE"));

TEST(BBDocumentTree, parametersAreReadFromTheirElement)
{
    const DocumentPtr document = parsed("[column width=10 align=right]x");
    const auto tag = bbcpp::downcast<bbcpp::BBElement>(document->getChildren().at(0));
    EXPECT_EQ(tag->getElementType(), bbcpp::BBElement::ElementSimple);
    EXPECT_TRUE(tag->getParameters().empty());
    const auto pairs = bbcpp::downcast<bbcpp::BBElement>(tag->getChildren().at(0));
    EXPECT_EQ(pairs->getElementType(), bbcpp::BBElement::ElementParameter);
    EXPECT_EQ(pairs->getNodeName(), "column");
    EXPECT_EQ(pairs->getParameters(),
              (std::map<std::string, std::string>{{"align", "right"}, {"width", "10"}}));
    EXPECT_EQ(pairs->getParameter("width"), "10");
    EXPECT_EQ(pairs->getParameter("height"), "");
    EXPECT_TRUE(pairs->hasParameter("align"));
    EXPECT_FALSE(pairs->hasParameter("Align"));
    EXPECT_EQ(pairs->getParent(), tag);
    EXPECT_EQ(tag->getParent(), document);
}

// Building a tree by hand

TEST(BBDocument, startsEmpty)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    EXPECT_EQ(document->getNodeName(), "#document");
    EXPECT_EQ(document->getNodeType(), bbcpp::BBNode::NodeDocument);
    EXPECT_EQ(document->getParent(), nullptr);
    EXPECT_TRUE(document->getChildren().empty());
    document->load("");
    EXPECT_TRUE(document->getChildren().empty());
}

TEST(BBDocument, textGrowsInTheNodeBeforeIt)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    const auto first = document->newText("a");
    EXPECT_EQ(document->newText("b"), first);
    EXPECT_EQ(first->getText(), "ab");
    EXPECT_EQ(first->getNodeName(), "ab");
    EXPECT_EQ(first->getNodeType(), bbcpp::BBNode::NodeText);

    const auto element = document->newElement("t");
    const auto second = document->newText("c");
    EXPECT_NE(second, first);
    EXPECT_EQ(second->getParent(), element);
    EXPECT_EQ(document->newText("d"), second);

    document->newClosingElement("other");
    const auto third = document->newText("e");
    EXPECT_EQ(third->getParent(), document);
    EXPECT_EQ(bbcpp::getRawString(*document), "abcde");
}

TEST(BBDocument, closingElementPopsOneNode)
{
    const auto document = std::make_shared<bbcpp::BBDocument>();
    const auto element = document->newElement("t");
    const auto pairs = document->newKeyValueElement("t", {{"a", "b"}});
    EXPECT_EQ(pairs->getParent(), element);
    EXPECT_EQ(document->newClosingElement("t")->getParent(), pairs);
    EXPECT_EQ(document->newClosingElement("t")->getParent(), element);
    EXPECT_EQ(document->newClosingElement("t")->getParent(), document);
    EXPECT_EQ(document->newClosingElement("t")->getParent(), document);
}

TEST(BBDocument, elementReadingNeverLeavesTheText)
{
    const std::string text = "[a=b ";
    const auto document = std::make_shared<bbcpp::BBDocument>();
    EXPECT_EQ(document->parseElement(text.begin(), text.end()), text.end());
    EXPECT_EQ(document->getChildren().size(), 1u);
}

TEST(BBDocument, emptyListOfPairsLeavesTheMapAlone)
{
    const std::string text;
    std::map<std::string, std::string> pairs{{"a", "1"}};
    const auto document = std::make_shared<bbcpp::BBDocument>();
    EXPECT_EQ(document->parseKeyValuePairs(text.begin(), text.end(), pairs), text.end());
    EXPECT_EQ(pairs.size(), 1u);
    const std::string more = "a=2 b=3]";
    EXPECT_EQ(document->parseKeyValuePairs(more.begin(), more.end(), pairs), more.end() - 1);
    EXPECT_EQ(pairs, (std::map<std::string, std::string>{{"a", "1"}, {"b", "3"}}));
    const std::string bad = "c=4 d";
    EXPECT_EQ(document->parseKeyValuePairs(bad.begin(), bad.end(), pairs), bad.end());
    EXPECT_TRUE(pairs.empty());
}

TEST(BBNode, appendingNeedsASharedParent)
{
    bbcpp::BBElement loose("t");
    const auto child = std::make_shared<bbcpp::BBText>("x");
    EXPECT_THROW(loose.appendChild(child), std::bad_weak_ptr);
    EXPECT_TRUE(loose.getChildren().empty());
    EXPECT_EQ(child->getParent(), nullptr);

    bbcpp::BBDocument looseDocument;
    EXPECT_THROW(looseDocument.load("x"), std::bad_weak_ptr);
}

TEST(BBNode, appendingSetsTheParent)
{
    const auto parent = std::make_shared<bbcpp::BBElement>("t");
    const auto child = std::make_shared<bbcpp::BBText>("x");
    parent->appendChild(child);
    parent->appendChild(nullptr);
    EXPECT_EQ(child->getParent(), parent);
    ASSERT_EQ(parent->getChildren().size(), 1u);
    EXPECT_EQ(parent->getChildren().front(), child);
}

TEST(BBNode, childOutlivesItsParentWithoutIt)
{
    bbcpp::BBNodePtr kept;
    {
        const DocumentPtr document = parsed("[a][b][c]x[/c]y");
        kept = document->getChildren().front()->getChildren().front();
        EXPECT_NE(kept->getParent(), nullptr);
    }
    EXPECT_EQ(kept->getParent(), nullptr);
    EXPECT_EQ(kept->getNodeName(), "b");
    EXPECT_EQ(bbcpp::getRawString(*kept), "xy");
}

// Downcasts

template <class Derived>
static std::string downcastError(const bbcpp::BBNodePtr &node)
{
    try {
        bbcpp::downcast<Derived>(node);
    } catch (const std::invalid_argument &error) {
        return error.what();
    }
    return "no error";
}

TEST(Downcast, nullNodeIsRefused)
{
    EXPECT_EQ(downcastError<bbcpp::BBText>(nullptr), "Cannot downcast BBNode, object is null");
    EXPECT_EQ(downcastError<bbcpp::BBElement>(nullptr), "Cannot downcast BBNode, object is null");
}

TEST(Downcast, nodeOfAnotherClassIsRefused)
{
    const char *message = "Cannot downcast, object is not correct type";
    EXPECT_EQ(downcastError<bbcpp::BBText>(std::make_shared<bbcpp::BBElement>("t")), message);
    EXPECT_EQ(downcastError<bbcpp::BBElement>(std::make_shared<bbcpp::BBText>("t")), message);
    EXPECT_EQ(downcastError<bbcpp::BBDocument>(std::make_shared<bbcpp::BBText>("t")), message);
    EXPECT_EQ(downcastError<bbcpp::BBText>(std::make_shared<bbcpp::BBDocument>()), message);
}

TEST(Downcast, nodeOfTheClassIsGiven)
{
    const bbcpp::BBNodePtr node = std::make_shared<bbcpp::BBText>("t");
    EXPECT_EQ(bbcpp::downcast<bbcpp::BBText>(node), node);
    EXPECT_EQ(downcastError<bbcpp::BBText>(node), "no error");
}

TEST(Downcast, uncheckedFormGivesNullOnAMismatch)
{
    EXPECT_EQ(bbcpp::tryDowncast<bbcpp::BBText>(nullptr), nullptr);
    EXPECT_EQ(bbcpp::tryDowncast<bbcpp::BBText>(std::make_shared<bbcpp::BBElement>("t")), nullptr);
}

// Diagnosis

TEST(Diagnosis, nodeTypesHaveNames)
{
    EXPECT_EQ(bbcpp::nodeTypeToString(bbcpp::BBNode::NodeDocument), "Document");
    EXPECT_EQ(bbcpp::nodeTypeToString(bbcpp::BBNode::NodeElement), "Element");
    EXPECT_EQ(bbcpp::nodeTypeToString(bbcpp::BBNode::NodeText), "Text");
    EXPECT_EQ(bbcpp::nodeTypeToString(static_cast<bbcpp::BBNode::NodeType>(3)), "Unknown");
    EXPECT_EQ(bbcpp::nodeTypeToString(static_cast<bbcpp::BBNode::NodeType>(-1)), "Unknown");
}

TEST(Diagnosis, valuesOfTheTypesAreFixed)
{
    EXPECT_EQ(int(bbcpp::BBNode::NodeDocument), 0);
    EXPECT_EQ(int(bbcpp::BBNode::NodeElement), 1);
    EXPECT_EQ(int(bbcpp::BBNode::NodeText), 2);
    EXPECT_EQ(int(bbcpp::BBElement::ElementSimple), 0);
    EXPECT_EQ(int(bbcpp::BBElement::ElementValue), 1);
    EXPECT_EQ(int(bbcpp::BBElement::ElementParameter), 2);
    EXPECT_EQ(int(bbcpp::BBElement::ElementClosing), 3);
}

TEST(Diagnosis, indentGrowsWithTheLevel)
{
    EXPECT_EQ(bbcpp::getIndentString(0), "|-- ");
    EXPECT_EQ(bbcpp::getIndentString(1), "|   |-- ");
    EXPECT_EQ(bbcpp::getIndentString(3), "|   |   |   |-- ");
}

TEST(Diagnosis, printingGoesToStandardOutput)
{
    const DocumentPtr document = parsed("[a=b c=d]x[/a]");
    testing::internal::CaptureStdout();
    bbcpp::printDocument(*document);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "#document\n"
              "|-- [a]\n"
              "|   |-- [a]\n"
              "|   |   |-- { {a=b}, {c=d} }\n"
              "|   |   |-- @\"x\"\n"
              "|   |   |-- [/a]\n");
}

TEST(Diagnosis, childrenPrintAtTheGivenIndent)
{
    const auto element = std::make_shared<bbcpp::BBElement>("t");
    element->appendChild(std::make_shared<bbcpp::BBElement>("v", bbcpp::BBElement::ElementValue));
    element->appendChild(
        std::make_shared<bbcpp::BBElement>("p", bbcpp::BBElement::ElementParameter));
    element->getChildren().front()->appendChild(std::make_shared<bbcpp::BBText>("x"));
    std::stringbuf buffer;
    {
        const OutputCapture capture(&buffer);
        bbcpp::printChildren(*element, 1);
    }
    EXPECT_EQ(buffer.str(),
              "|   |-- [v]\n"
              "|   |   |-- @\"x\"\n"
              "|   |-- [p]\n"
              "|   |   |-- {  }\n");
}

TEST(Diagnosis, rawStringLeavesTagsOut)
{
    const DocumentPtr document = parsed("a[b]c[i x=y]d[/i]e[/b]f[bad!]");
    EXPECT_EQ(bbcpp::getRawString(*document), "acdef[bad!]");
    EXPECT_EQ(bbcpp::getRawString(*document->getChildren().at(1)), "cdef[bad!]");
    EXPECT_EQ(bbcpp::getRawString(*parsed("")), "");
}

// Hostile texts

struct HostileCase
{
    const char *unit;
    std::size_t nodesPerUnit;   // in a long run of units
    std::size_t levelsPerUnit;  // in a long run of units
};

TEST(HostileText, megabyteOfOneFormIsReadWalkedAndDestroyed)
{
    const HostileCase cases[] = {
        {"[b]", 1, 1},     {"[b]x", 2, 1},        {"[a=b]", 2, 2},   {"[t a=b]", 2, 2},
        {"[a=b /", 3, 2},  {"[/b]", 1, 0},        {"[b][/b]", 2, 0}, {"[hr /]", 2, 0},
        {"[a=b ", 0, 0},   {"[t ", 0, 0},         {"[", 0, 0},       {"[/", 0, 0},
        {"[x", 0, 0},      {"[a=", 0, 0},         {"[a=b", 0, 0},    {"[t a=b  ", 0, 0},
        {"]", 0, 0},       {" ", 0, 0},           {"[/x=", 0, 0},    {"[t a=b c=d e=f ", 0, 0},
        {"[a=b /]", 3, 1}, {"[t \n\n\n\n ", 0, 0}};
    for (const HostileCase &row : cases) {
        SCOPED_TRACE(row.unit);
        runOnSmallStack([&row] {
            const std::size_t units = (1024 * 1024) / std::string(row.unit).size();
            const std::string text =
                repeated(row.unit, units * std::string(row.unit).size()) + "\"";
            const std::size_t before = usedBytes;
            DocumentPtr document = parsed(text);
            const std::size_t taken = usedBytes - before;
            const std::size_t nodes = countNodes(*document);
            EXPECT_GE(nodes, units * row.nodesPerUnit);
            EXPECT_LE(nodes, units * row.nodesPerUnit + 4);
            EXPECT_GE(depthOf(*document), units * row.levelsPerUnit);
            EXPECT_LE(depthOf(*document), units * row.levelsPerUnit + 4);
            EXPECT_LE(taken, nodes * 400 + text.size() * 3);
            EXPECT_LE(bbcpp::getRawString(*document).size(), text.size());
            document.reset();
            EXPECT_EQ(usedBytes, before);
        });
    }
}

TEST(HostileText, nameToTheEndIsReadOnce)
{
    const std::string text = "[" + std::string(4 * 1024 * 1024, 'x');
    EXPECT_EQ(bbcpp::getRawString(*parsed(text)), text);
    const std::string closing = "[/" + std::string(4 * 1024 * 1024, 'x');
    EXPECT_EQ(bbcpp::getRawString(*parsed(closing)), "[" + closing.substr(2));
}

TEST(HostileText, tagWithManyPairsKeepsThemAll)
{
    runOnSmallStack([] {
        std::string text = "[t";
        for (int i = 0; i < 100000; ++i)
            text += " k" + std::to_string(i) + "=" + std::to_string(i);
        const DocumentPtr document = parsed(text + "]");
        const auto pairs = bbcpp::downcast<bbcpp::BBElement>(
            document->getChildren().front()->getChildren().front());
        EXPECT_EQ(pairs->getParameters().size(), 100000u);
        EXPECT_EQ(pairs->getParameter("k99999"), "99999");
        EXPECT_GT(printed(*document).size(), text.size());

        EXPECT_EQ(bbcpp::getRawString(*parsed(text + " !]")), text + " !]");
    });
}

TEST(HostileText, deepTreeIsPrinted)
{
    runOnSmallStack([] {
        constexpr std::size_t depth = 20000;
        const DocumentPtr document = parsed(repeated("[b]", depth * 3));
        CountingBuffer buffer;
        {
            const OutputCapture capture(&buffer);
            bbcpp::printDocument(*document);
        }
        // Line n, from 0, is n times "|   ", then "|-- [b]" and the line end.
        EXPECT_EQ(buffer.count, 10 + 4 * (depth * (depth - 1) / 2) + 8 * depth);
    });
}

TEST(HostileText, deepChainThatIsHeldElsewhereStaysWhole)
{
    runOnSmallStack([] {
        bbcpp::BBNodePtr middle;
        {
            const DocumentPtr document = parsed(repeated("[b]", 300000));
            middle = document;
            for (int level = 0; level < 50000; ++level)
                middle = middle->getChildren().front();
        }
        EXPECT_EQ(middle->getParent(), nullptr);
        EXPECT_EQ(countNodes(*middle), 50000u);
        middle.reset();
    });
}
