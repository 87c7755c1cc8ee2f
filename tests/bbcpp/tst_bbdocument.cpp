#include <gtest/gtest.h>

#include <clocale>
#include <random>

#include "bbtree.h"
#include "referencetree.h"
#include "treecases.h"

using namespace bbtree;

namespace {

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
