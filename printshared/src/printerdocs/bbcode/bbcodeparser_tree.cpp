#include "bbcpp/bbdocument.h"
#include "printerdocs/bbcode/bbcodeparser_p.h"

// Nothing calls these five operations: a text acts on the parser while it is read, and no tree is
// made of it. They are names of the library's interface, which programs in the field are linked
// against, and so they stay, acting as they always did.

namespace {

QString readName(const std::string &name)
{
    return QString::fromStdString(name).trimmed().toLower();
}

}  // namespace

/// A tree acts like the text that it was made of.
void BbCodeParser::parseChildren(const bbcpp::BBNode &node)
{
    bbcpp::walk(node, [this](const bbcpp::BBNodePtr &child, unsigned int) { parseNode(child); });
}

void BbCodeParser::parseNode(const bbcpp::BBNodePtr &node)
{
    if (const auto text = bbcpp::tryDowncast<bbcpp::BBText>(node)) {
        addText(QString::fromStdString(text->getText()));
        return;
    }
    const auto element = bbcpp::downcast<bbcpp::BBElement>(node);
    switch (element->getElementType()) {
        case bbcpp::BBElement::ElementSimple:
            openElement(element);
            break;
        case bbcpp::BBElement::ElementParameter:
            processParams(element);
            break;
        case bbcpp::BBElement::ElementClosing:
            closeElement(element);
            break;
        case bbcpp::BBElement::ElementValue:
            break;
    }
}

void BbCodeParser::openElement(bbcpp::BBElementPtr element)
{
    TextReader::open(*this, readName(element->getNodeName()));
}

void BbCodeParser::closeElement(bbcpp::BBElementPtr element)
{
    TextReader::close(*this, readName(element->getNodeName()));
}

void BbCodeParser::processParams(bbcpp::BBElementPtr element)
{
    for (const auto &[key, value] : element->getParameters())
        TextReader::apply(*this, readName(key), readName(value));
}
