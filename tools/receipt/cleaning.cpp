#include "cleaning.h"

#include <QStringList>
#include <algorithm>

#include "forms.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::DocumentCleaner;

struct NamedRules
{
    QString name;
    DocumentCleaner::Rules rules;
};

/// All rules under one name, and each under its own.
QList<NamedRules> allRules()
{
    QList<NamedRules> rows{{QStringLiteral("all"), DocumentCleaner::CleanAll}};
    const QList<DocumentCleaner::NamedRule> rules = DocumentCleaner::namedRules();
    for (const DocumentCleaner::NamedRule &rule : rules)
        rows.append({rule.name, rule.rule});
    return rows;
}

QStringList namesOf(const QList<NamedRules> &rows)
{
    QStringList names;
    for (const NamedRules &row : rows)
        names.append(row.name);
    return names;
}

QString optionName()
{
    return QStringLiteral("clean");
}

}  // namespace

QCommandLineOption cleanOption()
{
    QStringList effects;
    const QList<DocumentCleaner::NamedRule> rules = DocumentCleaner::namedRules();
    for (const DocumentCleaner::NamedRule &rule : rules)
        effects.append(QStringLiteral("%1: %2").arg(rule.name, rule.effect));
    return {
        optionName(),
        QStringLiteral("Clean the texts of the document before they are filled in, by these rules "
                       "with commas between them: %1. %2.")
            .arg(namesOf(allRules()).join(QStringLiteral(", ")),
                 effects.join(QStringLiteral("; "))),
        QStringLiteral("RULES")};
}

std::optional<DocumentCleaner::Rules> cleaningRulesOf(const QCommandLineParser &parser,
                                                      bool fillsDocument)
{
    DocumentCleaner::Rules rules;
    if (!parser.isSet(optionName()))
        return rules;
    const QStringList names = parser.value(optionName()).split(QLatin1Char(','));
    const QList<NamedRules> rows = allRules();
    for (const QString &name : names) {
        const auto row =
            std::find_if(rows.begin(), rows.end(),
                         [&name](const NamedRules &candidate) { return candidate.name == name; });
        if (row == rows.end()) {
            complainOfChoice(optionName(), name, namesOf(rows));
            return std::nullopt;
        }
        rules |= row->rules;
    }
    if (fillsDocument)
        return rules;
    complain(QStringLiteral("--clean needs a template and a document"));
    return std::nullopt;
}

}  // namespace tool
