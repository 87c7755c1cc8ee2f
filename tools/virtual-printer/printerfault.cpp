#include "printerfault.h"

#include <algorithm>
#include <iterator>

#include "clockunits.h"

namespace {

struct PrinterFaultRow
{
    PrinterFault::Kind kind;
    const char *name;
    const char *unit;  ///< of its number; null: it has none
    const char *does;
};

constexpr PrinterFaultRow printerFaultRows[] = {
    {PrinterFault::PaperOut, "paper out", nullptr, "the roll has ended"},
    {PrinterFault::PaperBack, "paper back", nullptr, "there is a new roll"},
    {PrinterFault::NearEnd, "near end", nullptr, "the roll is near its end; printing goes on"},
    {PrinterFault::CoverOpen, "cover open", nullptr, "the cover is open"},
    {PrinterFault::CoverClosed, "cover closed", nullptr, "the cover is closed"},
    {PrinterFault::CutterError, "cutter error", nullptr, "the cutter is jammed"},
    {PrinterFault::CutterRepaired, "cutter repaired", nullptr, "the cutter is free"},
    {PrinterFault::OffLine, "off line", nullptr, "it is switched off line"},
    {PrinterFault::OnLine, "on line", nullptr, "it is switched on line"},
    {PrinterFault::PowerOff, "power off", nullptr, "its buffer and state are lost"},
    {PrinterFault::PowerOn, "power on", nullptr, "it is as it was delivered"},
    {PrinterFault::ResetConnection, "reset connection", nullptr, "ends the connection of --listen"},
    {PrinterFault::AnswersLate, "answers late", "MS", "answers come so many milliseconds later"},
    {PrinterFault::AnswersNever, "answers never", nullptr, "answers are lost"},
    {PrinterFault::AnswersAgain, "answers again", nullptr, "answers come as they should"},
    {PrinterFault::Swallow, "swallow", "N", "the next N bytes are lost on the line"},
    {PrinterFault::Change, "change", "N", "the next N bytes are changed on the line"},
};

/// A number of decimal digits alone.
std::optional<int> countOf(const QString &text)
{
    const bool isPlain = !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isPlain && isNumber ? std::optional<int>(value) : std::nullopt;
}

std::optional<PrinterFault> faultOfRow(const PrinterFaultRow &row, const QString &rest,
                                       QString *error)
{
    const std::optional<int> value = countOf(rest);
    if (row.unit == nullptr ? !rest.isEmpty() : !value.has_value()) {
        *error =
            QStringLiteral("\"%1\" %2")
                .arg(QLatin1String(row.name),
                     row.unit == nullptr ? QStringLiteral("takes no number")
                                         : QStringLiteral("takes a number, not \"%1\"").arg(rest));
        return std::nullopt;
    }
    return PrinterFault{row.kind, value.value_or(0)};
}

}  // namespace

QString PrinterFault::toString() const
{
    const auto *const row =
        std::find_if(std::begin(printerFaultRows), std::end(printerFaultRows),
                     [this](const PrinterFaultRow &r) { return r.kind == kind; });
    QString text = QLatin1String(row->name);
    if (row->unit != nullptr)
        text += QStringLiteral(" %1").arg(value);
    return text;
}

std::optional<PrinterFault> printerFault(const QString &text, QString *error)
{
    const QString words = text.simplified();
    for (const PrinterFaultRow &row : printerFaultRows) {
        const QString name = QLatin1String(row.name);
        if (words == name || words.startsWith(name + QLatin1Char(' ')))
            return faultOfRow(row, words.mid(name.size()).trimmed(), error);
    }
    *error = QStringLiteral("\"%1\" is no command; \"help\" lists them").arg(words);
    return std::nullopt;
}

QStringList printerFaultHelp()
{
    QStringList lines;
    for (const PrinterFaultRow &row : printerFaultRows) {
        QString name = QLatin1String(row.name);
        if (row.unit != nullptr)
            name += QLatin1Char(' ') + QLatin1String(row.unit);
        lines.append(QStringLiteral("%1 %2").arg(name, -18).arg(QLatin1String(row.does)));
    }
    return lines;
}

std::optional<PlannedFault> plannedFault(const QString &text, QString *error)
{
    const QString when = text.section(QLatin1Char(':'), 0, 0).simplified();
    const QString byte = QStringLiteral("byte ");
    PlannedFault planned;
    std::optional<qint64> at;
    if (when.startsWith(byte)) {
        planned.clock = PlannedFault::Bytes;
        at = countOf(when.mid(byte.size()));
    } else {
        at = clockunits::ofSeconds(when);
    }
    if (!at || !text.contains(QLatin1Char(':'))) {
        *error = QStringLiteral("\"%1\" is neither SECONDS:COMMAND nor byte N:COMMAND").arg(text);
        return std::nullopt;
    }
    planned.at = *at;
    const auto fault = printerFault(text.section(QLatin1Char(':'), 1), error);
    if (!fault)
        return std::nullopt;
    planned.fault = *fault;
    return planned;
}
