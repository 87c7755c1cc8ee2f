#pragma once

#include <QJsonObject>
#include <QJsonValue>

#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// A file of printer models: a JSON array of records. The first is complete; what another doesn't
/// say is as in the first. Each fact has its source under "sources".
///
/// A record with a fault is left out, and an error names file, model and key.
class ModelsFile
{
public:
    ModelsFile(const QByteArray &json, const QString &fileName);

    /// In the order of the file.
    QStringList modelIds() const;
    std::optional<PrinterProfile> profile(const QString &modelId) const;
    QStringList errors() const { return m_errors; }

private:
    using Data = PrinterProfile::Data;
    struct Fact;
    static const Fact facts[];
    static const Fact *factOf(const QString &key);

    void readRecord(const QJsonValue &value, int number);
    QString readFact(const QString &key, const QJsonObject &record, Data &data) const;
    QString readCodePages(const QJsonValue &value, Data &data) const;
    QString checkWhole(const Data &data, const QJsonObject &record) const;

    QString m_fileName;
    QVector<PrinterProfile> m_profiles;
    QStringList m_errors;
};

}  // namespace printerslib::drivers
