#include <gtest/gtest.h>

#include "bbtree.h"

using namespace bbtree;

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
