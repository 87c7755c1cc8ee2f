#pragma once

#include <string_view>

#include "bbcpp/bbreader_p.h"
#include "printerdocs/bbcodeparser.h"

/// Lets a text's pieces act on the parser in their order. No tree is made: what a tag means never
/// depends on the tags around it.
class Q_DECL_HIDDEN BbCodeParser::TextReader
{
public:
    using Position = const char16_t *;
    using Piece = bbcpp::Piece<Position>;

    explicit TextReader(BbCodeParser &parser) : m_parser(parser) {}

    void read(const QString &text);

    // What the pieces of a text are told to.
    void text(const Piece &piece);
    void open(const Piece &name);
    void close(const Piece &name);
    void parameters(const Piece &, const bbcpp::Pairs<Position> &pairs);

    // Names, keys and values are trimmed and in lower case.
    static void open(BbCodeParser &parser, const QString &name);
    static void close(BbCodeParser &parser, const QString &name);
    static void apply(BbCodeParser &parser, const QString &key, const QString &value);

private:
    static std::u16string_view viewOf(const Piece &piece);
    static QString lowerCased(const Piece &piece);
    void addPendingText();

    BbCodeParser &m_parser;
    QString m_pendingText;
};
