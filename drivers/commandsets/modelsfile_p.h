#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QVector>

#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// A file of printer models: a JSON array of records. A record with a fault is left out, and an
/// error names file, model and key.
class ModelsFile
{
public:
    /// Of the models that are compiled in: the first is complete; what another doesn't say is as in
    /// the first. Each fact has its source under "sources".
    ModelsFile(const QByteArray &json, const QString &fileName);
    /// Of a user: a record changes a known model, or adds one that is "like" another.
    ModelsFile(const QByteArray &json, const QString &fileName,
               const QVector<PrinterProfile> &known);

    /// In the order of the file.
    QStringList modelIds() const;
    const QVector<PrinterProfile> &profiles() const { return m_profiles; }
    /// Of this file, else of the known ones.
    std::optional<PrinterProfile> profile(const QString &modelId) const;
    QStringList errors() const { return m_errors; }

    static std::optional<PrinterProfile> profileIn(const QVector<PrinterProfile> &profiles,
                                                   const QString &modelId);
    /// All facts of a model as a record.
    static QJsonObject recordOf(const PrinterProfile &profile);

private:
    using Data = PrinterProfile::Data;
    struct Fact;
    struct DialectChoice;
    static const Fact facts[];
    static const DialectChoice dialectChoices[];
    static const Fact *factOf(const QString &key);

    bool isUsers() const { return !m_known.isEmpty(); }
    Data *beginning(const QJsonObject &record, QString &fault) const;
    Data *beginningOfOwn() const;
    void readRecord(const QJsonValue &value, int number);
    QString readFact(const QString &key, const QJsonObject &record, Data &data) const;
    QString readCodePages(const QJsonValue &value, Data &data) const;
    QString checkId(const QJsonObject &record) const;
    static QString checkWhole(const Data &data);
    static QString checkDialect(const Data &data);
    QString giveSources(const QJsonObject &record, Data &data) const;

    QString m_fileName;
    QVector<PrinterProfile> m_known;
    QVector<PrinterProfile> m_profiles;
    QStringList m_errors;
};

}  // namespace printerslib::drivers
