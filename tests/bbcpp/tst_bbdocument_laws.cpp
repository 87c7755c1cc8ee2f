#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "bbtree.h"
#include "referencetree.h"

using namespace bbtree;

namespace {

rc::Gen<std::string> bbCode()
{
    const auto piece = rc::gen::weightedOneOf<std::string>(
        {{3, rc::gen::element<std::string>("[b]", "[/b]", "[a=b]", "[a b=c d=e]", "[hr /]",
                                           "[hr=x /]")},
         {3, rc::gen::element<std::string>("[", "]", "[/", "=", " ", "/", "  ", "a", "\"", "b1")},
         {1, rc::gen::arbitrary<std::string>()}});
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string> &pieces) {
                            std::string text;
                            for (const std::string &each : pieces)
                                text += each;
                            return text;
                        });
}

}  // namespace

RC_GTEST_PROP(BBDocumentLaws, treeIsThatOfTheGrammar, ())
{
    const std::string text = *bbCode();
    RC_ASSERT(printed(*parsed(text)) == ReferenceTree(text).print());
}

RC_GTEST_PROP(BBDocumentLaws, textWithoutBracketsIsOneNode, (std::string text))
{
    text.erase(std::remove(text.begin(), text.end(), '['), text.end());
    const auto document = parsed(text);
    RC_ASSERT(document->getChildren().size() == (text.empty() ? 0U : 1U));
    RC_ASSERT(bbcpp::getRawString(*document) == text);
}

RC_GTEST_PROP(BBDocumentLaws, textGoesOnBehindACompleteTag, ())
{
    const std::string before = *bbCode();
    std::string after = *rc::gen::arbitrary<std::string>();
    after.erase(std::remove(after.begin(), after.end(), '['), after.end());
    const std::string tag = *rc::gen::element<std::string>("[b]", "[/b]");
    RC_ASSERT(bbcpp::getRawString(*parsed(before + tag + after)) ==
              bbcpp::getRawString(*parsed(before + tag)) + after);
}

RC_GTEST_PROP(BBDocumentLaws, rawTextIsNoLongerThanTheSource, ())
{
    const std::string text = *bbCode();
    RC_ASSERT(bbcpp::getRawString(*parsed(text)).size() <= text.size());
}

RC_GTEST_PROP(BBDocumentLaws, everyNodeHasItsParentAndNoTextsTouch, ())
{
    const auto document = parsed(*bbCode());
    std::vector<bbcpp::BBNodePtr> nodes{document};
    while (!nodes.empty()) {
        const bbcpp::BBNodePtr node = nodes.back();
        nodes.pop_back();
        bool wasText = false;
        for (const bbcpp::BBNodePtr &child : node->getChildren()) {
            RC_ASSERT(child->getParent() == node);
            const bool isText = child->getNodeType() == bbcpp::BBNode::NodeText;
            RC_ASSERT(!(wasText && isText));
            wasText = isText;
            nodes.push_back(child);
        }
    }
}
