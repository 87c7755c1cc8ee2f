#pragma once

#include <cctype>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// A second, naive reading of the BBCode grammar, for comparison with the library's: step after
/// step as the grammar is told, with recursion and with positions that may lie one past the end of
/// the text. It shares no code with the library. Only for short texts.
class ReferenceTree
{
public:
    explicit ReferenceTree(std::string text) : m_text(std::move(text)) { load(); }

    std::string print() const { return "#document\n" + printChildren(m_document, 0); }

private:
    struct Node
    {
        char kind = 'd';  // document, simple, parameter, closing, text
        std::string name;
        std::map<std::string, std::string> pairs;
        std::vector<std::unique_ptr<Node>> children;
    };

    bool isName(std::size_t at) const
    {
        const char c = m_text[at];
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
               (c >= '0' && c <= '9');
    }
    bool isValue(std::size_t at) const
    {
        return isName(at) || std::string("#$&()*+,-./:?").find(m_text[at]) != std::string::npos;
    }
    bool isSpace(std::size_t at) const
    {
        return std::isspace(static_cast<unsigned char>(m_text[at])) != 0;
    }
    bool is(std::size_t at, char c) const { return at < m_text.size() && m_text[at] == c; }
    std::string part(std::size_t from, std::size_t to) const
    {
        return m_text.substr(from, to - from);
    }

    void load()
    {
        std::size_t cursor = 0;
        while (cursor < m_text.size()) {
            if (m_text[cursor] != '[') {
                std::size_t to = cursor;
                while (to < m_text.size() && m_text[to] != '[')
                    ++to;
                newText(part(cursor, to));
                cursor = to;
            } else {
                cursor = parseElement(cursor);
            }
        }
    }

    std::size_t parseElement(std::size_t begin)
    {
        const bool closing = is(begin + 1, '/');
        const std::size_t nameStart = closing ? begin + 2 : begin + 1;
        std::size_t nameEnd = nameStart;
        while (nameEnd < m_text.size() && isName(nameEnd))
            ++nameEnd;
        std::string name = part(nameStart, nameEnd);
        if (nameEnd >= m_text.size()) {
            name.clear();
            nameEnd = nameStart;
        }
        if (name.empty()) {
            newText("[");
            return nameStart;
        }
        if (is(nameEnd, ']')) {
            if (closing)
                newClosing(name);
            else
                push('s', name, {});
            return nameEnd + 1;
        }
        if (is(nameEnd, '='))
            return parseEqualsBranch(begin, nameStart, name);
        if (is(nameEnd, ' '))
            return parseSpaceBranch(begin, nameEnd, name);
        newText(part(begin, nameEnd));
        return nameEnd;
    }

    std::size_t parseEqualsBranch(std::size_t begin, std::size_t nameStart, const std::string &name)
    {
        std::map<std::string, std::string> first;
        const std::size_t firstStop = pairs(nameStart, first);
        if (first.empty()) {
            newText(part(begin, firstStop));
            return firstStop;
        }
        if (!is(firstStop, ' ')) {
            push('s', name, {});
            push('p', name, first);
            return firstStop + 1;
        }
        std::map<std::string, std::string> second;
        const std::size_t secondStop = pairs(firstStop, second);
        if (!second.empty()) {
            first.insert(second.begin(), second.end());
            push('s', name, {});
            push('p', name, first);
            return secondStop + 1;
        }
        push('s', name, {});
        push('p', name, first);
        if (is(secondStop, ']'))
            return secondStop + 1;
        if (is(secondStop, '/') && is(secondStop + 1, ']')) {
            newClosing(name);
            return secondStop + 2;
        }
        newText(part(firstStop, secondStop));
        return secondStop;
    }

    std::size_t parseSpaceBranch(std::size_t begin, std::size_t space, const std::string &name)
    {
        std::map<std::string, std::string> map;
        const std::size_t stop = pairs(space, map);
        if (!map.empty()) {
            push('s', name, {});
            push('p', name, map);
            return stop + 1;
        }
        if (is(stop, '/') && is(stop + 1, ']')) {
            push('s', name, {});
            newClosing(name);
            return stop + 2;
        }
        newText(part(begin, stop));
        return stop;
    }

    std::size_t pairs(std::size_t at, std::map<std::string, std::string> &map)
    {
        const std::size_t end = m_text.size();
        if (at == end)
            return end;
        while (at < end && isSpace(at))
            ++at;
        if (at == end) {
            map.clear();
            return end;
        }
        const std::size_t keyStart = at;
        while (at < end && isName(at))
            ++at;
        if (at == end) {
            map.clear();
            return end;
        }
        if (m_text[at] != '=' || at == keyStart) {
            map.clear();
            return at;
        }
        const std::string key = part(keyStart, at);
        ++at;
        while (at < end && isSpace(at))
            ++at;
        const std::size_t valueStart = at;
        while (at < end && isValue(at))
            ++at;
        if (at == end || (m_text[at] != ']' && m_text[at] != ' ') || at == valueStart) {
            map.clear();
            return at;
        }
        map.insert({key, part(valueStart, at)});
        if (m_text[at] == ']')
            return at;
        if (is(at + 1, '/'))
            return at;
        if (is(at + 1, ']'))
            return at + 1;
        return pairs(is(at + 1, ' ') ? at + 2 : at + 1, map);
    }

    Node *top() { return m_stack.empty() ? &m_document : m_stack.back(); }

    Node *append(char kind, const std::string &name,
                 const std::map<std::string, std::string> &pairs = {})
    {
        auto node = std::make_unique<Node>();
        node->kind = kind;
        node->name = name;
        node->pairs = pairs;
        top()->children.push_back(std::move(node));
        return top()->children.back().get();
    }

    void push(char kind, const std::string &name, const std::map<std::string, std::string> &pairs)
    {
        m_stack.push_back(append(kind, name, pairs));
    }

    void newClosing(const std::string &name)
    {
        append('c', name);
        if (!m_stack.empty())
            m_stack.pop_back();
    }

    void newText(const std::string &text)
    {
        Node *candidate = nullptr;
        if (!m_stack.empty() && !m_stack.back()->children.empty())
            candidate = m_stack.back()->children.back().get();
        else if (!m_document.children.empty())
            candidate = m_document.children.back().get();
        if (candidate != nullptr && candidate->kind == 't')
            candidate->name += text;
        else
            append('t', text);
    }

    static std::string indent(unsigned level)
    {
        std::string text;
        for (unsigned i = 0; i < level; ++i)
            text += "|   ";
        return text + "|-- ";
    }

    static std::string printChildren(const Node &node, unsigned level)
    {
        std::string text;
        for (const auto &child : node.children) {
            if (child->kind == 't') {
                text += indent(level) + "@\"" + child->name + "\"\n";
            } else {
                const std::string slash = child->kind == 'c' ? "/" : "";
                text += indent(level) + "[" + slash + child->name + "]\n";
            }
            if (child->kind == 'p') {
                std::string list;
                for (const auto &pair : child->pairs) {
                    if (!list.empty())
                        list += ", ";
                    list += "{" + pair.first + "=" + pair.second + "}";
                }
                text += indent(level + 1) + "{ " + list + " }\n";
            }
            text += printChildren(*child, level + 1);
        }
        return text;
    }

    std::string m_text;
    Node m_document;
    std::vector<Node *> m_stack;
};
