#include "job/jobrecord_p.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace printerslib::drivers {

namespace {
constexpr int recordVersion = 1;
constexpr int starCounters = 32;
}  // namespace

QByteArray JobRecord::toBytes() const
{
    return QJsonDocument(QJsonObject{{QStringLiteral("version"), recordVersion},
                                     {QStringLiteral("open"), isOpen},
                                     {QStringLiteral("fill"), fill},
                                     {QStringLiteral("due"), due},
                                     {QStringLiteral("counter"), counter},
                                     {QStringLiteral("reading"), int(reading)},
                                     {QStringLiteral("last"), last}})
        .toJson(QJsonDocument::Compact);
}

JobRecord JobRecord::fromBytes(const QByteArray &bytes)
{
    JobRecord record;
    if (bytes.isEmpty())
        return record;
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    if (object.value(QStringLiteral("version")).toInt() != recordVersion) {
        record.isOpen = true;
        return record;
    }
    const auto number = [&object](const char *key, int least, int most, int usual) {
        return std::clamp(object.value(QLatin1String(key)).toInt(usual), least, most);
    };
    record.isOpen = object.value(QStringLiteral("open")).toBool();
    record.fill = number("fill", 0, mostFill, 0);
    record.due = number("due", 0, mostDue, 0);
    record.counter = number("counter", -1, starCounters - 1, -1);
    record.reading = JobRecord::Reading(number("reading", Reads, Deaf, Reads));
    record.last = object.value(QStringLiteral("last")).toString();
    return record;
}

}  // namespace printerslib::drivers
