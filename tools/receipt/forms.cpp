#include "forms.h"

namespace tool {

QCommandLineOption choiceOption(const QString &name, const QString &what, const QString &value,
                                const QVector<Choice> &choices)
{
    QStringList shown;
    for (const Choice &choice : choices) {
        QStringList notes;
        if (!choice.note.isEmpty())
            notes.append(choice.note);
        if (shown.isEmpty())
            notes.append(QStringLiteral("default"));
        shown.append(notes.isEmpty() ? choice.name
                                     : QStringLiteral("%1 (%2)").arg(
                                           choice.name, notes.join(QStringLiteral("; "))));
    }
    const QString last = shown.takeLast();
    return {name, QStringLiteral("%1: %2 or %3.").arg(what, shown.join(QStringLiteral(", ")), last),
            value, choices.constFirst().name};
}

void complainOfChoice(const QString &option, const QString &value, const QStringList &names)
{
    complain(QStringLiteral("--%1: \"%2\" is none of %3")
                 .arg(option, value, names.join(QStringLiteral(", "))));
}

QCommandLineOption unescapedOption()
{
    return {
        QStringLiteral("unescaped"),
        QStringLiteral("Leave the receipt's text in HTML as it is, so that tags in it are tags of "
                       "the page. Without this option \"&\", \"<\", \">\" and the double quote "
                       "are escaped.")};
}

QCommandLineOption jsonOption()
{
    return {QStringLiteral("json"), QStringLiteral("Print the result as JSON.")};
}

QCommandLineOption prettyOption()
{
    return {QStringLiteral("pretty"), QStringLiteral("Indent the JSON text.")};
}

}  // namespace tool
