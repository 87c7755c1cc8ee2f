#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <optional>

#include "printermodel.h"

namespace tool {

/// The greatest width and margin that a template's lines may be given.
constexpr int mostCharacters = 1000;
/// The default width of commands that make lines of text.
constexpr int usualWidth = 42;

/// The option --width.
/// @param byDefault the width without it, as the help calls it
/// @param value     the same as a number; empty: none
QCommandLineOption widthOption(int most, const QString &byDefault, const QString &value);

/// What a line has to fit into: this many characters, or a model's paper; or nothing is known.
struct ChosenLine
{
    std::optional<int> width;
    std::optional<ChosenPaper> paper;
};

/// The option --width and those of paperOptions(), of which a command line has one or the other.
/// @param defaultWidth without any of them; empty: none
QList<QCommandLineOption> lineOptions(const QString &defaultWidth = QString());
/// What these options say. Complains and gives nothing for what a model doesn't have, and for
/// options that contradict each other.
std::optional<ChosenLine> lineOf(const QCommandLineParser &parser);

/// The option --margin.
QCommandLineOption marginOption();
/// What that option says. Complains and gives nothing for blanks in front of lines that there
/// aren't, unless they are none.
/// @param hasLines whether the lines of a template or a plain text are read
std::optional<int> marginOf(const QCommandLineParser &parser, bool hasLines);

}  // namespace tool
