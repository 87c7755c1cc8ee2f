#include "bbcpp/bbdocument.h"

#include <iostream>
#include <iterator>
#include <utility>

#include "bbcpp/bbreader_p.h"

namespace bbcpp {

namespace {

using TextIterator = std::string::const_iterator;

std::string textOf(const Piece<TextIterator> &piece)
{
    return std::string(piece.begin, piece.end);
}

/// A key that is there already keeps its value.
void addPairs(BBElement::Parameters &parameters, const Pairs<TextIterator> &pairs)
{
    for (const Pair<TextIterator> &pair : pairs)
        parameters.emplace(textOf(pair.key), textOf(pair.value));
}

/// Makes a tree of what is read.
class TreeBuilder
{
public:
    explicit TreeBuilder(BBDocument &document) : m_document(document) {}

    void text(const Piece<TextIterator> &piece) { m_document.newText(textOf(piece)); }
    void open(const Piece<TextIterator> &name) { m_document.newElement(textOf(name)); }
    void parameters(const Piece<TextIterator> &name, const Pairs<TextIterator> &pairs)
    {
        BBElement::Parameters parameters;
        addPairs(parameters, pairs);
        m_document.newKeyValueElement(textOf(name), parameters);
    }
    void close(const Piece<TextIterator> &name) { m_document.newClosingElement(textOf(name)); }

private:
    BBDocument &m_document;
};

}  // namespace

BBNode::BBNode(std::string name, NodeType type) : m_nodeName(std::move(name)), m_nodeType(type) {}

BBNode::~BBNode()
{
    std::vector<BBNodePtr> doomed = std::move(m_children);
    while (!doomed.empty()) {
        const BBNodePtr node = std::move(doomed.back());
        doomed.pop_back();
        if (node.use_count() == 1) {
            std::move(node->m_children.begin(), node->m_children.end(), std::back_inserter(doomed));
            node->m_children.clear();
        }
    }
}

void BBNode::appendChild(BBNodePtr node)
{
    const std::weak_ptr<BBNode> self = shared_from_this();
    if (!node)
        return;
    node->m_parent = self;
    m_children.push_back(std::move(node));
}

BBText::BBText(std::string text) : BBNode(std::move(text), NodeText) {}

std::string BBText::getText() const
{
    return m_nodeName;
}

void BBText::append(const std::string &text)
{
    m_nodeName += text;
}

BBElement::BBElement(std::string name, ElementType type, Parameters parameters)
    : BBNode(std::move(name), NodeElement), m_elementType(type), m_parameters(std::move(parameters))
{}

BBElement::~BBElement() = default;

std::string BBElement::getParameter(const std::string &key) const
{
    const auto found = m_parameters.find(key);
    return found == m_parameters.end() ? std::string() : found->second;
}

bool BBElement::hasParameter(const std::string &key) const
{
    return m_parameters.count(key) != 0;
}

BBDocument::BBDocument() : BBNode("#document", NodeDocument) {}

BBDocument::~BBDocument() = default;

void BBDocument::load(const std::string &text)
{
    TreeBuilder tree(*this);
    Reader<TextIterator, TreeBuilder>(text.cend(), tree).readAll(text.cbegin());
}

BBTextPtr BBDocument::newText(const std::string &text)
{
    BBNodePtr neighbour;
    if (!m_openNodes.empty() && !m_openNodes.top()->getChildren().empty())
        neighbour = m_openNodes.top()->getChildren().back();
    else if (!getChildren().empty())
        neighbour = getChildren().back();

    if (BBTextPtr last = tryDowncast<BBText>(neighbour)) {
        last->append(text);
        return last;
    }
    auto node = std::make_shared<BBText>(text);
    appendToOpenNode(node);
    return node;
}

BBElementPtr BBDocument::newElement(const std::string &name)
{
    auto element = std::make_shared<BBElement>(name);
    appendToOpenNode(element);
    m_openNodes.push(element);
    return element;
}

BBElementPtr BBDocument::newKeyValueElement(const std::string &name,
                                            const BBElement::Parameters &pairs)
{
    auto element = std::make_shared<BBElement>(name, BBElement::ElementParameter, pairs);
    appendToOpenNode(element);
    m_openNodes.push(element);
    return element;
}

BBElementPtr BBDocument::newClosingElement(const std::string &name)
{
    auto element = std::make_shared<BBElement>(name, BBElement::ElementClosing);
    appendToOpenNode(element);
    if (!m_openNodes.empty())
        m_openNodes.pop();
    return element;
}

void BBDocument::appendToOpenNode(const BBNodePtr &node)
{
    if (m_openNodes.empty())
        appendChild(node);
    else
        m_openNodes.top()->appendChild(node);
}

template <class Iterator>
Iterator BBDocument::parseElement(Iterator begin, Iterator end)
{
    TreeBuilder tree(*this);
    return Reader<Iterator, TreeBuilder>(end, tree).readElement(begin);
}

template <class Iterator>
Iterator BBDocument::parseKeyValuePairs(Iterator begin, Iterator end, BBElement::Parameters &pairs)
{
    Pairs<Iterator> found;
    const PairsEnd<Iterator> pairsEnd = readPairs(begin, end, found);
    if (pairsEnd.isMalformed)
        pairs.clear();
    else
        addPairs(pairs, found);
    return pairsEnd.position;
}

template std::string::const_iterator BBDocument::parseElement(std::string::const_iterator,
                                                              std::string::const_iterator);
template std::string::const_iterator BBDocument::parseKeyValuePairs(std::string::const_iterator,
                                                                    std::string::const_iterator,
                                                                    BBElement::Parameters &);

bool IsAlpha(char byte)
{
    return isOf(byte, LetterCharacter);
}

bool IsDigit(char byte)
{
    return isOf(byte, DigitCharacter);
}

std::string nodeTypeToString(BBNode::NodeType type)
{
    switch (type) {
        case BBNode::NodeDocument:
            return "Document";
        case BBNode::NodeElement:
            return "Element";
        case BBNode::NodeText:
            return "Text";
    }
    return "Unknown";
}

std::string getIndentString(unsigned int indent)
{
    std::string text;
    text.reserve((std::size_t(indent) + 1) * 4);
    for (unsigned int level = 0; level < indent; ++level)
        text += "|   ";
    return text + "|-- ";
}

namespace {

void printParameters(const BBElement &element, unsigned int indent)
{
    std::cout << getIndentString(indent) << "{ ";
    const char *separator = "";
    for (const auto &[key, value] : element.getParameters()) {
        std::cout << separator << '{' << key << '=' << value << '}';
        separator = ", ";
    }
    std::cout << " }\n";
}

void printElement(const BBElement &element, unsigned int indent)
{
    const char *slash = element.getElementType() == BBElement::ElementClosing ? "/" : "";
    std::cout << getIndentString(indent) << '[' << slash << element.getNodeName() << "]\n";
    if (element.getElementType() == BBElement::ElementParameter)
        printParameters(element, indent + 1);
}

}  // namespace

void printChildren(const BBNode &node, unsigned int indent)
{
    walk(node, [indent](const BBNodePtr &child, unsigned int depth) {
        if (const auto text = tryDowncast<BBText>(child))
            std::cout << getIndentString(indent + depth) << "@\"" << text->getText() << "\"\n";
        else if (const auto element = tryDowncast<BBElement>(child))
            printElement(*element, indent + depth);
    });
}

void printDocument(const BBDocument &document)
{
    std::cout << "#document\n";
    printChildren(document, 0);
}

std::string getRawString(const BBNode &node)
{
    std::string raw;
    walk(node, [&raw](const BBNodePtr &child, unsigned int) {
        if (const auto text = tryDowncast<BBText>(child))
            raw += text->getText();
    });
    return raw;
}

}  // namespace bbcpp
