#include "statusreport.h"

#include "support.h"

namespace tool {

using printerslib::drivers::PrinterStatus;

namespace {

/// What a line says where a flag is set. The first that is set counts; the row without a flag is
/// what the line says if none is.
struct LineRow
{
    const char *name;
    int flag;
    const char *word;
};

constexpr LineRow lineRows[] = {
    {"On line", PrinterStatus::OffLine, "no"},
    {"On line", 0, "yes"},
    {"Paper", PrinterStatus::PaperOut, "out"},
    {"Paper", PrinterStatus::PaperNearEnd, "there, but nearly used up"},
    {"Paper", 0, "there"},
    {"Cover", PrinterStatus::CoverOpen, "open"},
    {"Cover", 0, "closed"},
    {"Cutter", PrinterStatus::CutterError, "stuck"},
    {"Cutter", 0, "no error"},
    {"Errors", PrinterStatus::UnrecoverableError, "one that stays"},
    {"Errors", PrinterStatus::RecoverableError, "one that can be mended, or goes by itself"},
    {"Errors", PrinterStatus::DataLost, "data got lost"},
    {"Errors", 0, "none"},
};

/// A thing that is so, or isn't.
struct KeyRow
{
    const char *key;
    PrinterStatus::Flag flag;
    bool ifSet;
};

constexpr KeyRow keyRows[] = {
    {"onLine", PrinterStatus::OffLine, false},
    {"paperOut", PrinterStatus::PaperOut, true},
    {"paperNearEnd", PrinterStatus::PaperNearEnd, true},
    {"paperInPresenter", PrinterStatus::PaperInPresenter, true},
    {"coverOpen", PrinterStatus::CoverOpen, true},
    {"cutterError", PrinterStatus::CutterError, true},
    {"recoverableError", PrinterStatus::RecoverableError, true},
    {"unrecoverableError", PrinterStatus::UnrecoverableError, true},
    {"dataLost", PrinterStatus::DataLost, true},
    {"printDataExists", PrinterStatus::PrintDataExists, true},
};

void printLine(const QString &name, const QString &value)
{
    print(QStringLiteral("%1 %2").arg(name + QLatin1Char(':'), -9).arg(value));
}

QString nativeText(const PrinterStatus &status)
{
    return QString::fromLatin1(status.native().toHex(' ').toUpper());
}

QString printingText(const PrinterStatus &status)
{
    if (status.canPrint())
        return QStringLiteral("possible");
    return status.isKnown() ? QStringLiteral("not possible") : QStringLiteral("not known");
}

}  // namespace

void printStatus(const PrinterStatus &status)
{
    printLine(QStringLiteral("Printing"), printingText(status));
    const char *done = "";
    for (const LineRow &row : lineRows) {
        if (qstrcmp(row.name, done) == 0 || (row.flag != 0 && (status.flags() & row.flag) == 0))
            continue;
        const bool isTold = row.flag != 0 || status.isKnown();
        printLine(QLatin1String(row.name),
                  isTold ? QString::fromLatin1(row.word) : QStringLiteral("not told"));
        done = row.name;
    }
    if (!status.native().isEmpty())
        printLine(QStringLiteral("Answer"), nativeText(status));
    print(status.text());
}

QJsonObject statusJson(const PrinterStatus &status)
{
    QJsonObject json;
    for (const KeyRow &row : keyRows) {
        const bool isSet = status.has(row.flag);
        json.insert(QLatin1String(row.key), isSet || status.isKnown()
                                                ? QJsonValue(isSet == row.ifSet)
                                                : QJsonValue(QJsonValue::Null));
    }
    json.insert(QStringLiteral("canPrint"), status.canPrint());
    json.insert(QStringLiteral("answer"), nativeText(status));
    json.insert(QStringLiteral("text"), status.text());
    const PrintServiceState state = status.toServiceState(PrintServiceState::ServiceWorkableFirst);
    json.insert(QStringLiteral("state"), QJsonObject::fromVariantMap(state.toMap()));
    return json;
}

}  // namespace tool
