#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <stack>
#include <stdexcept>
#include <string>
#include <vector>

#include "printerslib_export.h"

/// The tree of a BBCode text. It knows no tags: whatever reads as a tag becomes an element, and
/// everything else becomes text, so that a stray bracket prints instead of stopping a receipt.
///
/// Works on the bytes of a UTF-8 text and needs the standard library only. A tree belongs to one
/// thread. Depth is limited by memory alone: nothing here calls itself, whatever the text.
namespace bbcpp {

/// Base of all nodes. Nodes are held by std::shared_ptr; a parent owns its children, and a child
/// points back weakly.
class PRINTERSLIB_EXPORT BBNode : public std::enable_shared_from_this<BBNode>
{
public:
    /// What a node is, and so to which class tryDowncast() leads.
    enum NodeType : int {
        NodeDocument = 0,
        NodeElement = 1,
        NodeText = 2,
    };

    /// Releases the subtree level by level, so that a deep tree doesn't exhaust the stack.
    virtual ~BBNode();
    BBNode(const BBNode &) = delete;
    BBNode &operator=(const BBNode &) = delete;

    /// Adds a node behind the last child and makes this node its parent. A null node is ignored.
    /// @throws std::bad_weak_ptr if this node isn't held by a shared pointer; nothing is added then
    virtual void appendChild(std::shared_ptr<BBNode> node);

    /// The element's name, the text of a text node, "#document" for the document.
    const std::string &getNodeName() const { return m_nodeName; }
    /// Set for good when the node is made.
    NodeType getNodeType() const { return m_nodeType; }
    /// Null on the root, and on a node whose parent is gone.
    std::shared_ptr<BBNode> getParent() const { return m_parent.lock(); }
    /// In document order.
    const std::vector<std::shared_ptr<BBNode>> &getChildren() const { return m_children; }

protected:
    /// A node without parent and children.
    BBNode(std::string name, NodeType type);

    /// A text node keeps its text here.
    std::string m_nodeName;

private:
    NodeType m_nodeType;
    std::weak_ptr<BBNode> m_parent;
    std::vector<std::shared_ptr<BBNode>> m_children;
};

/// A run of text. The node's name is the text.
class PRINTERSLIB_EXPORT BBText : public BBNode
{
public:
    /// Takes any bytes, UTF-8 or not.
    explicit BBText(std::string text);

    /// The same as getNodeName().
    virtual std::string getText() const;
    /// Adds text behind the node's own.
    void append(const std::string &text);
};

/// A tag, or the parameters of a tag.
class PRINTERSLIB_EXPORT BBElement : public BBNode
{
public:
    /// What an element stands for.
    enum ElementType : int {
        ElementSimple = 0,     ///< an opening tag
        ElementValue = 1,      ///< reserved: nothing makes one, and its readers pass it over
        ElementParameter = 2,  ///< the parameters of the tag that is this element's parent
        ElementClosing = 3,    ///< a closing tag
    };
    /// Keys and values of a tag's parameters.
    using Parameters = std::map<std::string, std::string>;

    /// An element of this name; only one of the type ElementParameter has parameters.
    explicit BBElement(std::string name, ElementType type = ElementSimple,
                       Parameters parameters = Parameters());
    ~BBElement() override;

    /// What the element stands for.
    ElementType getElementType() const { return m_elementType; }
    /// Sorted by key. Empty unless this is a parameter element.
    const Parameters &getParameters() const { return m_parameters; }
    /// Empty if there is no such key.
    std::string getParameter(const std::string &key) const;
    /// Tells a key with an empty value from none.
    bool hasParameter(const std::string &key) const;

private:
    ElementType m_elementType;
    Parameters m_parameters;
};

/// A node as its parent holds it.
using BBNodePtr = std::shared_ptr<BBNode>;
/// What newText() gives.
using BBTextPtr = std::shared_ptr<BBText>;
/// What newElement() and its kin give.
using BBElementPtr = std::shared_ptr<BBElement>;

/// The root of a tree. Made on the heap and held by a shared pointer from the start, as its nodes
/// need one to their parent:
/// @code
/// const auto document = std::make_shared<bbcpp::BBDocument>();
/// document->load("[b]total[/b]");
/// @endcode
///
/// A tag with parameters makes two nodes, a simple element and its child, a parameter element. A
/// closing tag closes one node only, whatever its name. So the tree grows deeper than the text
/// nests; what counts is that a walk from the front meets everything in the order of the text.
class PRINTERSLIB_EXPORT BBDocument : public BBNode
{
public:
    BBDocument();
    ~BBDocument() override;

    /// Fills the document; called once per document. Never fails: a bad tag is text, and a tag left
    /// open stays open. Takes time in proportion to the length of the text.
    void load(const std::string &text);

    /// Appends to the text node that the new text would stand behind, or makes a new one: two text
    /// nodes never stand side by side.
    BBTextPtr newText(const std::string &text);
    /// Opens an element: what follows becomes its children.
    BBElementPtr newElement(const std::string &name);
    /// Adds the parameters of a tag as an element of their own, and opens that as well.
    BBElementPtr newKeyValueElement(const std::string &name, const BBElement::Parameters &pairs);
    /// Adds a closing element and closes the element opened last, whatever its name.
    BBElementPtr newClosingElement(const std::string &name);

    /// Reads what begins with the "[" at `begin`, a tag or not.
    /// @return where to go on, behind `begin` and at most `end`
    /// This and parseKeyValuePairs() are there for the const iterator of a text.
    template <class Iterator>
    Iterator parseElement(Iterator begin, Iterator end);
    /// Reads "key=value" pairs up to the closing bracket. A malformed pair clears the map.
    /// @param pairs takes the pairs; a key that it has already keeps its value
    /// @return the byte that ended the pairs
    template <class Iterator>
    Iterator parseKeyValuePairs(Iterator begin, Iterator end, BBElement::Parameters &pairs);

private:
    void appendToOpenNode(const BBNodePtr &node);

    std::stack<BBNodePtr, std::deque<BBNodePtr>> m_openNodes;
};

extern template PRINTERSLIB_EXPORT std::string::const_iterator BBDocument::parseElement(
    std::string::const_iterator, std::string::const_iterator);
extern template PRINTERSLIB_EXPORT std::string::const_iterator BBDocument::parseKeyValuePairs(
    std::string::const_iterator, std::string::const_iterator, BBElement::Parameters &);

/// Whether a byte may stand in a name as a letter: a-z, A-Z or an underscore. Digits are apart.
PRINTERSLIB_EXPORT bool IsAlpha(char byte);
/// Whether a byte is a digit 0-9.
PRINTERSLIB_EXPORT bool IsDigit(char byte);

/// "Document", "Element", "Text", or "Unknown" for any other value.
PRINTERSLIB_EXPORT std::string nodeTypeToString(BBNode::NodeType type);

/// "|   " once per level, then "|-- ".
PRINTERSLIB_EXPORT std::string getIndentString(unsigned int indent);
/// Writes the nodes below a node to standard output, one line each, parameters on a line of their
/// own. Every line is indented by its depth, so the output of tags that are all left open grows
/// with the square of their count.
PRINTERSLIB_EXPORT void printChildren(const BBNode &node, unsigned int indent);
/// Writes "#document" and the document's nodes to standard output.
PRINTERSLIB_EXPORT void printDocument(const BBDocument &document);
/// The texts below a node, one behind the other, without the tags.
PRINTERSLIB_EXPORT std::string getRawString(const BBNode &node);

/// The node as a derived class, or null if it isn't one.
template <class Derived>
std::shared_ptr<Derived> tryDowncast(const BBNodePtr &node)
{
    return std::dynamic_pointer_cast<Derived>(node);
}

/// The node as a derived class.
/// @throws std::invalid_argument if the node is null or of another class
template <class Derived>
std::shared_ptr<Derived> downcast(const BBNodePtr &node)
{
    if (!node)
        throw std::invalid_argument("Cannot downcast BBNode, object is null");
    std::shared_ptr<Derived> derived = tryDowncast<Derived>(node);
    if (!derived)
        throw std::invalid_argument("Cannot downcast, object is not correct type");
    return derived;
}

/// Calls `visit(child, depth)` for every node below `root`, each before its own children, in the
/// order of the text. The children of `root` have depth 0.
template <class Visitor>
void walk(const BBNode &root, Visitor visit)
{
    struct Level
    {
        const BBNode *node;
        std::size_t nextChild;
    };
    std::vector<Level> path{{&root, 0}};
    while (!path.empty()) {
        Level &level = path.back();
        if (level.nextChild == level.node->getChildren().size()) {
            path.pop_back();
            continue;
        }
        const BBNodePtr child = level.node->getChildren()[level.nextChild++];
        visit(child, static_cast<unsigned int>(path.size() - 1));
        path.push_back({child.get(), 0});
    }
}

}  // namespace bbcpp
