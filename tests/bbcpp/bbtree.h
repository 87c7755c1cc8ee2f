#pragma once

#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "bbcpp/bbdocument.h"

/// Trees of texts, and what they print.
namespace bbtree {

using DocumentPtr = std::shared_ptr<bbcpp::BBDocument>;

inline DocumentPtr parsed(const std::string &text)
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

inline std::string printed(const bbcpp::BBDocument &document)
{
    std::stringbuf buffer;
    const OutputCapture capture(&buffer);
    bbcpp::printDocument(document);
    return buffer.str();
}

}  // namespace bbtree
