#include "selftestfindings.h"

#include <printerslib/drivers/codepage.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <optional>

namespace tool {

using printerslib::drivers::CodePage;
using printerslib::drivers::PrinterModels;

namespace {

constexpr double millimetresOfInch = 25.4;

// Facts, as files of models have them.
const QString headKey = QStringLiteral("headDots");
const QString resolutionKey = QStringLiteral("dotsPerInch");
const QString fontsKey = QStringLiteral("fonts");
const QString pagesKey = QStringLiteral("codePages");
const QString initialPageKey = QStringLiteral("initialCodePage");
const QString rasterKey = QStringLiteral("rasterCommand");
const QString drawnKey = QStringLiteral("drawnCodes");
const QString distanceKey = QStringLiteral("dotsToCutter");
const QString cutKey = QStringLiteral("cutCommand");
const QString drawersKey = QStringLiteral("drawers");

// Of numbers that facts follow from together.
const QString rulerAnswer = QStringLiteral("ruler");
const QString charactersAnswer = QStringLiteral("characters");

QString noneText()
{
    return QStringLiteral("None");
}

/// The last number that the ruler has.
int lastMark(const SelfTestPlan &plan)
{
    return plan.rulerDots() / SelfTestPlan::numberStep * SelfTestPlan::numberStep;
}

double millimetresTo(int mark, int dotsPerInch)
{
    return mark * millimetresOfInch / dotsPerInch;
}

QStringList textsOf(const QVector<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts;
}

QStringList pageNumbersOf(const SelfTestPlan &plan)
{
    QStringList texts;
    for (auto page = plan.pages.begin(); page != plan.pages.end(); ++page)
        texts.append(QString::number(page.key()));
    return texts;
}

/// A whole number within bounds. Nothing with a fault else.
std::optional<int> wholeNumber(const QString &text, int least, int most, QString &fault)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= least && number <= most)
        return number;
    fault = QStringLiteral("\"%1\" is no number from %2 to %3").arg(text).arg(least).arg(most);
    return std::nullopt;
}

bool isWord(const QString &text, const char *word)
{
    return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
}

/// The words of a list, as they are written in what is known. Nothing with a fault for another one.
std::optional<QStringList> wordsAmong(const QString &text, const QStringList &known, QString &fault)
{
    static const QRegularExpression gap(QStringLiteral("[\\s,]+"));
    const QStringList words = text.split(gap, Qt::SkipEmptyParts);
    if (words.size() == 1 && isWord(words.constFirst(), "all"))
        return known;
    QStringList found;
    if (words.size() == 1 && isWord(words.constFirst(), "none"))
        return found;
    for (const QString &word : words) {
        const auto same = std::find_if(known.begin(), known.end(), [&word](const QString &name) {
            return name.compare(word, Qt::CaseInsensitive) == 0;
        });
        if (same == known.end()) {
            fault = QStringLiteral("\"%1\" is none of all, none, %2")
                        .arg(word, known.join(QStringLiteral(", ")));
            return std::nullopt;
        }
        if (!found.contains(*same))
            found.append(*same);
    }
    return found;
}

/// The letters from 80 to FF as they should be, 32 a row.
QStringList lettersOfSet(const QString &set)
{
    constexpr int row = 32;
    const auto page = CodePage::forName(set);
    QStringList rows;
    for (int byte = 0x80; page && byte < 0x100; byte += row) {
        QString text;
        for (int i = byte; i < byte + row; ++i) {
            const QChar letter(page->character(static_cast<unsigned char>(i)));
            text += letter.isPrint() ? letter : QLatin1Char('.');
        }
        rows.append(QStringLiteral("    ") + text);
    }
    return rows;
}

}  // namespace

/// What the answers to questions mean: each takes one, and gives what is wrong with it.
struct SelfTestReaders
{
    using Findings = SelfTestFindings;

    static QString ruler(Findings &findings, const QString &text)
    {
        return number(findings, rulerAnswer, text, SelfTestPlan::step, findings.m_plan.rulerDots());
    }
    static QString characters(Findings &findings, const QString &text)
    {
        return number(findings, charactersAnswer, text, 1, findings.m_plan.charactersOfRow());
    }
    static QString number(Findings &findings, const QString &key, const QString &text, int least,
                          int most)
    {
        QString fault;
        if (const auto value = wholeNumber(text, least, most, fault))
            findings.m_numbers.insert(key, *value);
        return fault;
    }
    static QString millimetres(Findings &findings, const QString &text);
    static QString fonts(Findings &findings, const QString &text);
    static QString pages(Findings &findings, const QString &text);
    static QString page(const SelfTestPlan &plan, const QString &word, QJsonObject &pages);
    static QString pictures(Findings &findings, const QString &text)
    {
        return chosen(findings, text, findings.m_plan.rasters, rasterKey);
    }
    static QString codes(Findings &findings, const QString &text);
    static QString cutter(Findings &findings, const QString &text);
    static QString cuts(Findings &findings, const QString &text)
    {
        return chosen(findings, text, findings.m_plan.cuts, cutKey);
    }
    static QString drawers(Findings &findings, const QString &text);
    static QString chosen(Findings &findings, const QString &text, const QStringList &known,
                          const QString &key);
};

QString SelfTestReaders::millimetres(Findings &findings, const QString &text)
{
    constexpr double most = 1000;
    // What a ruler of paper and an eye tell.
    constexpr double tolerance = 0.02;
    bool isNumber = false;
    const double length =
        QString(text).replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    if (!isNumber || !(length > 0) || length > most)
        return QStringLiteral("\"%1\" is no length in millimetres").arg(text);
    const SelfTestPlan &plan = findings.m_plan;
    const int known = plan.profile().dotsPerInch();
    // No whole number yet: of a tiny length it is none.
    const double resolution = std::round(lastMark(plan) * millimetresOfInch / length);
    constexpr double least = 50;
    constexpr double mostResolution = 1200;
    if (resolution < least || resolution > mostResolution)
        return QStringLiteral("no printer has %1 dots per inch, which that would be")
            .arg(resolution);
    const int measured = static_cast<int>(resolution);
    if (std::abs(measured - known) > known * tolerance)
        findings.m_facts.insert(resolutionKey, measured);
    return {};
}

QString SelfTestReaders::fonts(Findings &findings, const QString &text)
{
    QString fault;
    const auto words = wordsAmong(text, textsOf(findings.m_plan.fonts), fault);
    if (!words)
        return fault;
    QJsonArray cells = findings.m_plan.fact(fontsKey).toArray();
    for (int font = 0; font < words->size(); ++font) {
        if (!words->contains(QString::number(font)))
            return QStringLiteral("a file can't say that font %1 is missing below another")
                .arg(font);
    }
    if (words->isEmpty())
        return QStringLiteral("a printer has one font at least");
    while (cells.size() > words->size())
        cells.removeLast();
    findings.m_facts.insert(fontsKey, cells);
    return {};
}

/// "17", "17=CP866"
QString SelfTestReaders::page(const SelfTestPlan &plan, const QString &word, QJsonObject &pages)
{
    const QString number = word.section(QLatin1Char('='), 0, 0);
    const QString given = word.section(QLatin1Char('='), 1);
    bool isNumber = false;
    const int value = number.toInt(&isNumber);
    if (!isNumber || !plan.pages.contains(value))
        return QStringLiteral("\"%1\" is none of the code pages %2")
            .arg(number, pageNumbersOf(plan).join(QStringLiteral(", ")));
    if (given.isEmpty() && plan.pages.value(value).isEmpty())
        return QStringLiteral("which set is code page %1? Say it as %1=CP866").arg(value);
    const auto set = CodePage::forName(given.isEmpty() ? plan.pages.value(value) : given);
    if (!set)
        return QStringLiteral("there is no character set \"%1\"").arg(given);
    pages.insert(QString::number(value), set->name());
    return {};
}

QString SelfTestReaders::pages(Findings &findings, const QString &text)
{
    static const QRegularExpression gap(QStringLiteral("[\\s,]+"));
    const SelfTestPlan &plan = findings.m_plan;
    const QStringList words = text.split(gap, Qt::SkipEmptyParts);
    const bool areAll = isWord(words.value(0), "all");
    const QStringList named = words.mid(areAll ? 1 : 0);
    QJsonObject pages;
    QString fault;
    for (auto word = named.begin(); word != named.end() && fault.isEmpty(); ++word)
        fault = page(plan, *word, pages);
    const QStringList printed = areAll ? pageNumbersOf(plan) : QStringList();
    for (auto number = printed.begin(); number != printed.end() && fault.isEmpty(); ++number) {
        if (!pages.contains(*number))
            fault = page(plan, *number, pages);
    }
    if (!fault.isEmpty())
        return fault;
    // What wasn't printed isn't judged.
    const QJsonObject known = plan.fact(pagesKey).toObject();
    for (auto it = known.begin(); it != known.end(); ++it) {
        if (!plan.pages.contains(it.key().toInt()))
            pages.insert(it.key(), it.value());
    }
    const QString initial = QString::number(plan.profile().initialCodePage());
    if (!pages.contains(initial))
        return QStringLiteral(
                   "code page %1 is the one after a reset, so it has to be known; if it "
                   "is another set, say %1=NAME")
            .arg(initial);
    findings.m_facts.insert(pagesKey, pages);
    return {};
}

QString SelfTestReaders::codes(Findings &findings, const QString &text)
{
    QString fault;
    const auto words = wordsAmong(text, findings.m_plan.codes, fault);
    if (!words)
        return fault;
    QJsonObject drawn;
    for (const QString &code : *words)
        drawn.insert(code, findings.m_plan.drawnCode(code));
    findings.m_facts.insert(drawnKey, drawn);
    return {};
}

/// Of several that work the model's own, if it does.
QString SelfTestReaders::chosen(Findings &findings, const QString &text, const QStringList &known,
                                const QString &key)
{
    QString fault;
    const auto words = wordsAmong(text, known, fault);
    if (!words)
        return fault;
    const QString own = findings.m_plan.fact(key).toString();
    findings.m_facts.insert(key, words->contains(own) ? own
                                 : words->isEmpty()   ? noneText()
                                                      : words->constFirst());
    return {};
}

QString SelfTestReaders::cutter(Findings &findings, const QString &text)
{
    QString fault;
    const auto dots = wholeNumber(text, 0, findings.m_plan.ladderDots(), fault);
    if (!dots)
        return fault;
    // Between two rungs nobody reads it.
    if (std::abs(*dots - findings.m_plan.profile().dotsToCutter()) >= SelfTestPlan::step)
        findings.m_facts.insert(distanceKey, *dots);
    return {};
}

QString SelfTestReaders::drawers(Findings &findings, const QString &text)
{
    constexpr int first = 2;
    constexpr int second = 5;
    QString fault;
    const auto words = wordsAmong(text, textsOf(findings.m_plan.pins), fault);
    if (!words)
        return fault;
    const int known = findings.m_plan.profile().drawers();
    const bool isFirstTried = findings.m_plan.pins.contains(first);
    const bool isSecondTried = findings.m_plan.pins.contains(second);
    int drawers = words->contains(QString::number(second)) ? 2 : words->isEmpty() ? 0 : 1;
    if (!isSecondTried && drawers > 0)
        drawers = std::max(drawers, known);
    // Of the other one nothing is said.
    if (!isFirstTried && drawers == 0)
        drawers = std::min(known, 1);
    findings.m_facts.insert(drawersKey, drawers);
    return {};
}

namespace {

struct QuestionRow
{
    const char *key;
    bool (*isAsked)(const SelfTestPlan &plan);
    QStringList (*text)(const SelfTestPlan &plan);
    QString (*read)(SelfTestFindings &findings, const QString &text);
};

QStringList listText(const QString &question, const QStringList &names)
{
    return {question, QStringLiteral("    all, none, or some of: ") + names.join(QLatin1Char(' '))};
}

QStringList rulerText(const SelfTestPlan &plan)
{
    return {QStringLiteral("Ruler: the number of the last mark at its right end, from mark to mark "
                           "%1.")
                .arg(SelfTestPlan::step),
            QStringLiteral("    It should be %1.")
                .arg(plan.rulerDots() / SelfTestPlan::step * SelfTestPlan::step)};
}

QStringList millimetresText(const SelfTestPlan &plan)
{
    return {QStringLiteral("Ruler: the millimetres from its left end to the mark %1.")
                .arg(lastMark(plan)),
            QStringLiteral("    It should be %1.")
                .arg(millimetresTo(lastMark(plan), plan.profile().dotsPerInch()), 0, 'f', 1)};
}

QStringList charactersText(const SelfTestPlan &plan)
{
    return {QStringLiteral("Characters: how many stand in the first line; each number ends at its "
                           "place."),
            QStringLiteral("    It should be %1.").arg(plan.charactersOfRuler())};
}

QStringList fontsText(const SelfTestPlan &plan)
{
    return listText(QStringLiteral("Fonts: which came out, each in letters of its own size?"),
                    textsOf(plan.fonts));
}

QStringList pagesText(const SelfTestPlan &plan)
{
    QStringList text = {
        QStringLiteral("Code pages: which came out right? One that is another set as 17=CP866."),
        QStringLiteral("    all, or some of: ") + pageNumbersOf(plan).join(QLatin1Char(' '))};
    for (auto page = plan.pages.begin(); page != plan.pages.end(); ++page) {
        text.append(QStringLiteral("  %1 %2")
                        .arg(page.key())
                        .arg(*page)
                        .trimmed()
                        .prepend(QStringLiteral("  ")));
        text.append(lettersOfSet(*page));
    }
    return text;
}

QStringList picturesText(const SelfTestPlan &plan)
{
    return listText(QStringLiteral("Pictures: which are clean, of squares black and grey?"),
                    plan.rasters);
}

QStringList codesText(const SelfTestPlan &plan)
{
    return listText(QStringLiteral("Codes: which did the printer draw, so that a scanner reads "
                                   "them?"),
                    plan.codes);
}

QStringList cutterText(const SelfTestPlan &plan)
{
    return {QStringLiteral("Ladder: the number at which it is cut, from rung to rung %1.")
                .arg(SelfTestPlan::step),
            QStringLiteral("    It should be %1.").arg(plan.profile().dotsToCutter())};
}

QStringList cutsText(const SelfTestPlan &plan)
{
    return listText(QStringLiteral("Cuts: behind which lines is the paper cut?"), plan.cuts);
}

QStringList drawersText(const SelfTestPlan &plan)
{
    return listText(QStringLiteral("Drawer: at which pins did it open?"), textsOf(plan.pins));
}

using Readers = SelfTestReaders;

const QuestionRow questionRows[] = {
    {"ruler", [](const SelfTestPlan &plan) { return plan.hasRuler; }, rulerText, Readers::ruler},
    {"millimetres", [](const SelfTestPlan &plan) { return plan.hasRuler; }, millimetresText,
     Readers::millimetres},
    {"characters", [](const SelfTestPlan &plan) { return plan.hasRow; }, charactersText,
     Readers::characters},
    {"fonts", [](const SelfTestPlan &plan) { return plan.fonts.size() > 1; }, fontsText,
     Readers::fonts},
    {"pages", [](const SelfTestPlan &plan) { return !plan.pages.isEmpty(); }, pagesText,
     Readers::pages},
    {"pictures", [](const SelfTestPlan &plan) { return !plan.rasters.isEmpty(); }, picturesText,
     Readers::pictures},
    {"codes", [](const SelfTestPlan &plan) { return !plan.codes.isEmpty(); }, codesText,
     Readers::codes},
    {"drawers", [](const SelfTestPlan &plan) { return !plan.pins.isEmpty(); }, drawersText,
     Readers::drawers},
    {"cutter", [](const SelfTestPlan &plan) { return plan.hasLadder; }, cutterText,
     Readers::cutter},
    {"cuts", [](const SelfTestPlan &plan) { return !plan.cuts.isEmpty(); }, cutsText,
     Readers::cuts},
};

}  // namespace

QVector<SelfTestQuestion> questionsOf(const SelfTestPlan &plan)
{
    QVector<SelfTestQuestion> questions;
    for (const QuestionRow &row : questionRows) {
        if (row.isAsked(plan))
            questions.append({QLatin1String(row.key), row.text(plan)});
    }
    return questions;
}

QString SelfTestFindings::answer(const QString &key, const QString &text)
{
    const auto *const row =
        std::find_if(std::begin(questionRows), std::end(questionRows),
                     [&key](const QuestionRow &r) { return key == QLatin1String(r.key); });
    const QString words = text.simplified();
    if (row == std::end(questionRows) || words.isEmpty())
        return {};
    const auto numbers = m_numbers;
    const auto facts = m_facts;
    QString fault = row->read(*this, words);
    if (fault.isEmpty())
        fault = contradiction();
    if (!fault.isEmpty()) {
        m_numbers = numbers;
        m_facts = facts;
    }
    return fault;
}

/// How many dots the head really has; nothing where the answers don't tell, or as the data do.
/// A ruler that is whole doesn't say what is beyond it; a longer row of characters does.
std::optional<int> SelfTestFindings::measuredHead() const
{
    const int step = SelfTestPlan::step;
    const int ruler = m_numbers.value(rulerAnswer, m_plan.rulerDots());
    const bool isMeasured = m_numbers.contains(rulerAnswer);
    if (isMeasured && ruler < m_plan.rulerDots() / step * step)
        return ruler;
    if (!m_numbers.contains(charactersAnswer))
        return std::nullopt;
    const int count = m_numbers.value(charactersAnswer);
    const int dots = count * m_plan.target.font(0).cell.width();
    const bool isLess = !isMeasured && count < m_plan.charactersOfRuler();
    if (dots <= m_plan.profile().headDots() && !isLess)
        return std::nullopt;
    return dots / step * step;
}

QJsonObject SelfTestFindings::changes() const
{
    QJsonObject facts = m_facts;
    if (const auto head = measuredHead())
        facts.insert(headKey, *head);
    QJsonObject changed;
    for (auto it = facts.begin(); it != facts.end(); ++it) {
        if (it.value() != m_plan.fact(it.key()))
            changed.insert(it.key(), it.value());
    }
    return changed;
}

/// Why the answers, each of which is right, can't be together; empty if they can.
QString SelfTestFindings::contradiction() const
{
    const QJsonObject changed = changes();
    if (changed.isEmpty())
        return {};
    PrinterModels models = m_plan.models;
    return models
        .add(fileOf(m_plan.profile().modelId(), changed, QStringLiteral("now")),
             QStringLiteral("the answers"))
        .value(0);
}

QByteArray SelfTestFindings::fileOf(const QString &model, const QJsonObject &changes,
                                    const QString &date)
{
    QJsonObject record = changes;
    QJsonObject sources;
    const QStringList keys = changes.keys();
    for (const QString &key : keys)
        sources.insert(key, QStringLiteral("self test, ") + date);
    record.insert(QStringLiteral("id"), model);
    record.insert(QStringLiteral("sources"), sources);
    return QJsonDocument(QJsonArray{record}).toJson();
}

namespace {

/// Of an answer, with the question's key in front; empty if there is none.
QString faultOfAnswer(SelfTestFindings &findings, const QString &key, const QString &answer)
{
    const QString fault = findings.answer(key, answer);
    return fault.isEmpty() ? fault : key + QStringLiteral(": ") + fault;
}

}  // namespace

bool readAnswers(const QString &text, SelfTestFindings &findings,
                 const QVector<SelfTestQuestion> &questions, QString *error)
{
    QStringList keys;
    for (const SelfTestQuestion &question : questions)
        keys.append(question.key);
    QStringList answered;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).section(QLatin1Char('#'), 0, 0).trimmed();
        if (line.isEmpty())
            continue;
        const QString key = line.section(QLatin1Char(':'), 0, 0).trimmed();
        QString fault;
        if (!line.contains(QLatin1Char(':')))
            fault = QStringLiteral("\"%1\" is no line \"question: answer\"").arg(line);
        else if (!keys.contains(key))
            fault = QStringLiteral("\"%1\" is none of the questions %2")
                        .arg(key, keys.join(QStringLiteral(", ")));
        else if (answered.contains(key))
            fault = QStringLiteral("\"%1\" is answered twice").arg(key);
        else
            fault = faultOfAnswer(findings, key, line.section(QLatin1Char(':'), 1));
        if (!fault.isEmpty()) {
            *error = QStringLiteral("%1: %2").arg(i + 1).arg(fault);
            return false;
        }
        answered.append(key);
    }
    return true;
}

}  // namespace tool
