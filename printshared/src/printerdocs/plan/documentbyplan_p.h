#pragma once

#include <QStringList>
#include <map>
#include <optional>
#include <utility>

#include "printerdocs/document/linepadding_p.h"
#include "printerdocs/plan/fallback_p.h"
#include "printerdocs/plan/linebyplan_p.h"
#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/plan/templateplan_p.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/charsearch_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/fillinglog_p.h"
#include "printerdocs/template/keyword_p.h"
#include "printerdocs/template/linefilling_p.h"
#include "printerdocs/template/preparation_p.h"
#include "printerdocs/template/removal_p.h"
#include "printerdocs/template/symbolsline_p.h"

namespace templates {

/// What the document adds to the lines of the template: the copy mark and the entries.
class AddedLines
{
public:
    AddedLines(const TemplatePlan &plan, const PrinterDocument &document);

    /// Whether the plan's lines are still those of the document: an added line names no file of
    /// special symbols and holds no entries.
    bool suitPlan() const { return m_suitPlan; }
    /// Those in the place of a line of the template with entries.
    const QStringList &entriesOf(std::size_t line) const { return m_entries.at(line); }
    /// Whether entries are more than names and values.
    bool entriesHoldTags() const { return m_entriesHoldTags; }
    /// The copy mark; empty: none.
    const QString &copyMark() const { return m_copyMark; }

private:
    bool m_suitPlan = true;
    bool m_entriesHoldTags = false;
    QString m_copyMark;
    std::map<std::size_t, QStringList> m_entries;  ///< by the number of their line
};

/// One document on its way through a plan to one output, which takes each line:
///
///   reserve(count)     so many lines will come, or about so many
///   blank()            a line without text
///   general(line)      a filled line whose markup hasn't been read
///   takes(look)        why the next line of this look can't come by plan; None: it can
///   planned(look, line)  a line by plan, whose markup has been read
///   isUpToDate()       whether the lines have been printed by the settings of now
template <typename Output>
class DocumentByPlan
{
public:
    DocumentByPlan(const TemplatePlan &plan, const AddedLines &added,
                   const PrinterDocument &document, int margin, Output &output)
        : m_plan(plan),
          m_document(document),
          m_added(added),
          m_line(plan, document.attributes(), margin),
          m_output(output)
    {}

    /// @return false: the document has to go the general way, whatever the output has already
    bool print()
    {
        m_output.reserve(static_cast<int>(m_plan.lines().size()));
        for (std::size_t at = 0; at < m_plan.lines().size(); ++at) {
            if (!printCopyMark(at) || !printLine(at))
                return false;
        }
        if (!printCopyMark(m_plan.lines().size()))
            return false;
        // A text without lines is a blank one.
        if (!m_hasLines)
            m_output.blank();
        return true;
    }

    /// How many lines have written to the log what they have to say.
    int linesFilled() const { return m_linesFilled; }

private:
    bool printCopyMark(std::size_t linesBefore)
    {
        return static_cast<int>(linesBefore) != m_plan.linesBeforeCopyMark() ||
               m_added.copyMark().isEmpty() || printGeneral(m_added.copyMark(), Fallback::CopyMark);
    }

    bool printLine(std::size_t at)
    {
        const TemplatePlan::Line &line = m_plan.lines()[at];
        switch (line.kind) {
            case TemplatePlan::LineKind::Blank:
                return printBlank();
            case TemplatePlan::LineKind::EntriesAlone:
                return m_added.entriesHoldTags() ? printEntries(at) : printEntriesAlone();
            case TemplatePlan::LineKind::Entries:
                return printEntries(at);
            case TemplatePlan::LineKind::General:
                return printGeneral(m_plan.text(at), line.fallback);
            case TemplatePlan::LineKind::OfShape:
                break;
        }
        Fallback fallback = m_output.takes(line.shape->look());
        if (fallback == Fallback::None)
            fallback = m_line.fill(line);
        if (fallback != Fallback::None)
            return printGeneral(m_plan.text(at), fallback);
        printPlanned(line.shape->look());
        return true;
    }

    bool printBlank()
    {
        m_output.blank();
        ++m_linesFilled;
        m_hasLines = true;
        return true;
    }

    /// The line that was filled last.
    void printPlanned(const LineLook &look)
    {
        m_count.add(Fallback::None);
        if (m_line.isLogged())
            m_line.log(values());
        ++m_linesFilled;
        m_hasLines = m_hasLines || !m_line.isGone();
        if (m_line.hasText())
            m_output.planned(look, m_line);
    }

    bool printGeneral(const QString &line, Fallback reason)
    {
        m_count.add(reason);
        const QString filled = lineWithValues(line, values());
        ++m_linesFilled;
        if (holdsRemovals(filled)) {
            m_count.addRestart();
            return false;
        }
        if (filled.isEmpty())
            return true;
        m_hasLines = true;
        m_output.general(filled);
        return true;
    }

    DocumentValues &values() { return m_values ? *m_values : m_values.emplace(m_document); }

    /// The entries in the place of a line that has nothing else.
    bool printEntriesAlone()
    {
        const QString entries = m_document.entries();
        for (int begin = 0; begin <= entries.size();) {
            const int next = placeOf(documents::tab, entries, begin);
            const int end = next < 0 ? entries.size() : next;
            if (!printEntry(QStringView(entries).mid(begin, end - begin)))
                return false;
            begin = end + 1;
        }
        return true;
    }

    bool printEntry(QStringView entry)
    {
        if (entry.isEmpty())
            return printBlank();
        LineLook look;
        Fallback fallback = m_output.takes(look);
        if (fallback == Fallback::None)
            fallback = m_line.takeEntry(entry, look);
        if (fallback != Fallback::None)
            return printGeneral(entry.toString().replace(QLatin1Char('='), tabTag), fallback);
        printPlanned(look);
        return true;
    }

    bool printEntries(std::size_t at)
    {
        for (const QString &entry : m_added.entriesOf(at)) {
            if (!(entry.isEmpty() ? printBlank() : printGeneral(entry, Fallback::EntryOfMarkup)))
                return false;
        }
        return true;
    }

    const TemplatePlan &m_plan;
    const PrinterDocument &m_document;
    const AddedLines &m_added;
    LineByPlan m_line;
    Output &m_output;
    std::optional<DocumentValues> m_values;
    int m_linesFilled = 0;
    bool m_hasLines = false;
    PlanCount m_count;
};

/// Prints a document by its template's plan.
/// @param document    nothing may change it: not even a client who is told lines of the log
/// @param linesFilled becomes how many lines have written to the log what they have to say
/// @return the output's result(); nothing: the document has to go the general way
template <typename Output, typename... Arguments>
auto printedByPlan(const TemplatePlan &plan, const AddedLines &added,
                   const PrinterDocument &document, int margin, int &linesFilled,
                   const Arguments &...arguments)
{
    Output output(arguments...);
    DocumentByPlan byPlan(plan, added, document, margin, output);
    const bool isPrinted = byPlan.print() && output.isUpToDate();
    linesFilled = byPlan.linesFilled();
    return isPrinted ? std::optional(output.result()) : std::nullopt;
}

/// Prints a document, by the template's plan where it can be.
/// @param arguments of the output
/// @return the output's result()
template <typename Output, typename... Arguments>
auto printed(const PrinterDocumentFormatter &formatter, TemplateLines &lines,
             const PrinterDocument &document, int margin, const Arguments &...arguments)
{
    // The log may be a client's code, which changes what is being printed.
    const auto plan = lines.plan();
    const QStringList templateLines = lines.lines();
    PrinterDocument unchanged = document;
    int linesFilled = 0;
    if (plan) {
        const AddedLines added(*plan, unchanged);
        if (added.suitPlan()) {
            QStringList symbolsLines = plan->symbolsLines();
            formatter.loadSpecSymbols(symbolsLines);
            unchanged.setAttributes(document.attributes());
            auto result =
                printedByPlan<Output>(*plan, added, unchanged, margin, linesFilled, arguments...);
            if (result)
                return *result;
        }
    }
    const QStringList prepared = preparedLines(formatter, templateLines,
                                               linesFilled > 0 ? unchanged : document, linesFilled);
    Output output(arguments...);
    output.take(prepared);
    return output.result();
}

}  // namespace templates
