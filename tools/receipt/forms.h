#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <QVector>
#include <cstddef>

#include "support.h"

namespace tool {

/// A value that an option may have.
struct Choice
{
    QString name;
    QString note;  ///< what it is, where the name doesn't say it
};

/// An option that has one of these values; the first one is the default.
/// @param what  what is chosen, as the help calls it: "The form"
/// @param value what stands for the value: "FORM"
QCommandLineOption choiceOption(const QString &name, const QString &what, const QString &value,
                                const QVector<Choice> &choices);
/// Complains of a value that an option can't have.
void complainOfChoice(const QString &option, const QString &value, const QStringList &names);

/// The values that a table has, whose rows have a name and a note.
template <typename Row, std::size_t count>
QVector<Choice> choicesOf(const Row (&rows)[count])
{
    QVector<Choice> choices;
    for (const Row &row : rows)
        choices.append({QLatin1String(row.name), QLatin1String(row.note)});
    return choices;
}

/// The row that an option names. Complains and gives null if there is none.
template <typename Row, std::size_t count>
const Row *chosenRow(const QCommandLineParser &parser, const QString &option,
                     const Row (&rows)[count])
{
    QStringList names;
    for (const Row &row : rows) {
        if (parser.value(option) == QLatin1String(row.name))
            return &row;
        names.append(QLatin1String(row.name));
    }
    complainOfChoice(option, parser.value(option), names);
    return nullptr;
}

/// The option --as, the form of what a command writes or checks.
template <typename Row, std::size_t count>
QCommandLineOption formOption(const Row (&rows)[count])
{
    return choiceOption(QStringLiteral("as"), QStringLiteral("The form"), QStringLiteral("FORM"),
                        choicesOf(rows));
}

/// The row that --as names. Complains and gives null if there is none.
template <typename Row, std::size_t count>
const Row *formOf(const QCommandLineParser &parser, const Row (&rows)[count])
{
    return chosenRow(parser, QStringLiteral("as"), rows);
}

/// A form in which a command writes what it has, a row of its table.
template <typename Source>
struct WrittenForm
{
    const char *name;
    const char *note;
    QStringList (*lines)(const Source &source);
    QStringList (*unescapedLines)(const Source &source);  ///< null: the form isn't HTML
};

/// The note of the form "json".
constexpr const char *jsonNote = "the map form";

/// The option to leave the receipt's text in HTML as it is.
QCommandLineOption unescapedOption();

/// The function of a form, the unescaped one if the option asks for it. Complains and gives null
/// where there is none.
template <typename Source>
auto chosenWriter(const QCommandLineParser &parser, const WrittenForm<Source> &form)
{
    if (!parser.isSet(unescapedOption()))
        return form.lines;
    if (form.unescapedLines == nullptr)
        complain(QStringLiteral("--unescaped needs HTML, see --as"));
    return form.unescapedLines;
}

/// The option --json.
QCommandLineOption jsonOption();
/// The option to indent a JSON text.
QCommandLineOption prettyOption();

}  // namespace tool
