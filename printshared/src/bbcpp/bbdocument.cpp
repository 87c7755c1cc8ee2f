#include "bbcpp/bbdocument.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <locale>
#include <string_view>
#include <utility>

namespace bbcpp {

namespace {

bool isNameByte(char byte)
{
    return IsAlpha(byte) || IsDigit(byte);
}

bool isValueByte(char byte)
{
    static constexpr std::string_view symbols = "#$&()*+,-./:?";
    return isNameByte(byte) || symbols.find(byte) != std::string_view::npos;
}

/// Always by the rules of the C locale, whatever the process has set: a receipt reads the same in
/// every country.
bool isSpaceByte(char byte)
{
    return std::isspace(byte, std::locale::classic());
}

/// One further, but never past the end: a tag that is cut off right behind a pair has its stop
/// there.
template <class Iterator>
Iterator following(Iterator position, Iterator end)
{
    return position == end ? end : position + 1;
}

template <class Iterator>
bool isSlashBracket(Iterator position, Iterator end)
{
    return position != end && *position == '/' && position + 1 != end && *(position + 1) == ']';
}

/// Where the next pair begins behind a value that a space ended, or where the pairs stop.
template <class Iterator>
struct Separator
{
    Iterator position;
    bool stops;
};

template <class Iterator>
Separator<Iterator> readSeparator(Iterator space, Iterator end)
{
    const Iterator next = space + 1;
    if (next == end)
        return {end, true};
    if (*next == '/')
        return {space, true};
    if (*next == ']')
        return {next, true};
    return {*next == ' ' ? next + 1 : next, false};
}

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
    auto cursor = text.cbegin();
    const auto end = text.cend();
    while (cursor != end) {
        if (*cursor == '[') {
            cursor = parseElement(cursor, end);
        } else {
            const auto runEnd = std::find(cursor, end, '[');
            newText(std::string(cursor, runEnd));
            cursor = runEnd;
        }
    }
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
    const Iterator inside = begin + 1;
    const bool closing = inside != end && *inside == '/';
    const Iterator nameBegin = closing ? inside + 1 : inside;
    const Iterator nameEnd = std::find_if_not(nameBegin, end, isNameByte);

    // Intended: the slash of "[/" without a name is lost, templates were written with that in view;
    // see the test BBDocumentTree.slashWithoutNameIsLost.
    if (nameEnd == end || nameEnd == nameBegin) {
        newText("[");
        return nameBegin;
    }
    switch (*nameEnd) {
        case ']':
            if (closing)
                newClosingElement(std::string(nameBegin, nameEnd));
            else
                newElement(std::string(nameBegin, nameEnd));
            return nameEnd + 1;
        case '=':
            return parseNameValueTag(begin, nameBegin, nameEnd, end);
        case ' ':
            return parseSpacedTag(begin, nameBegin, nameEnd, end);
        default:
            newText(std::string(begin, nameEnd));
            return nameEnd;
    }
}

/// "[size=large]": the tag's name is the first key.
template <class Iterator>
Iterator BBDocument::parseNameValueTag(Iterator begin, Iterator nameBegin, Iterator nameEnd,
                                       Iterator end)
{
    BBElement::Parameters pairs;
    const Iterator stop = parseKeyValuePairs(nameBegin, end, pairs);
    if (pairs.empty()) {
        newText(std::string(begin, stop));
        return stop;
    }
    const std::string name(nameBegin, nameEnd);
    newElement(name);
    newKeyValueElement(name, pairs);
    if (stop == end || *stop != ' ')
        return following(stop, end);

    // The pairs stop on a space only where a slash follows it, so no pair can follow either.
    const Iterator slash = stop + 1;
    if (isSlashBracket(slash, end)) {
        newClosingElement(name);
        return slash + 2;
    }
    newText(std::string(stop, slash));
    return slash;
}

/// "[column width=10]", or "[hr /]", which closes itself.
template <class Iterator>
Iterator BBDocument::parseSpacedTag(Iterator begin, Iterator nameBegin, Iterator nameEnd,
                                    Iterator end)
{
    const std::string name(nameBegin, nameEnd);
    BBElement::Parameters pairs;
    const Iterator stop = parseKeyValuePairs(nameEnd, end, pairs);
    if (!pairs.empty()) {
        newElement(name);
        newKeyValueElement(name, pairs);
        return following(stop, end);
    }
    if (isSlashBracket(stop, end)) {
        newElement(name);
        newClosingElement(name);
        return stop + 2;
    }
    newText(std::string(begin, stop));
    return stop;
}

template <class Iterator>
Iterator BBDocument::parseKeyValuePairs(Iterator begin, Iterator end, BBElement::Parameters &pairs)
{
    while (begin != end) {
        const Iterator keyBegin = std::find_if_not(begin, end, isSpaceByte);
        const Iterator keyEnd = std::find_if_not(keyBegin, end, isNameByte);
        if (keyEnd == end || keyEnd == keyBegin || *keyEnd != '=') {
            pairs.clear();
            return keyEnd;
        }
        const Iterator valueBegin = std::find_if_not(keyEnd + 1, end, isSpaceByte);
        const Iterator valueEnd = std::find_if_not(valueBegin, end, isValueByte);
        const bool ended = valueEnd != end && (*valueEnd == ']' || *valueEnd == ' ');
        if (!ended || valueEnd == valueBegin) {
            pairs.clear();
            return valueEnd;
        }
        pairs.emplace(std::string(keyBegin, keyEnd), std::string(valueBegin, valueEnd));
        if (*valueEnd == ']')
            return valueEnd;
        const Separator<Iterator> separator = readSeparator(valueEnd, end);
        if (separator.stops)
            return separator.position;
        begin = separator.position;
    }
    return end;
}

template std::string::const_iterator BBDocument::parseElement(std::string::const_iterator,
                                                              std::string::const_iterator);
template std::string::const_iterator BBDocument::parseKeyValuePairs(std::string::const_iterator,
                                                                    std::string::const_iterator,
                                                                    BBElement::Parameters &);

bool IsAlpha(char byte)
{
    static constexpr std::string_view alpha =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
    return alpha.find(byte) != std::string_view::npos;
}

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
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
