#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

/// The models that the driver knows: those of the catalogue, and what a user's files say of them or
/// add, since firmwares differ.
///
/// A file is a JSON array of records, each with an "id" and the facts that are to change, by the
/// keys of PrinterProfile::toJson(). An id that isn't known yet is a new model: its record names a
/// known one under "like", which it is the same as in all else. Facts may have sources; those
/// without are from the file.
///
/// A value; any thread may use its own copy.
class PRINTERSLIB_DRIVERS_EXPORT PrinterModels
{
public:
    /// The models of the catalogue as they are compiled in.
    PrinterModels();

    /// Takes what a file says; of several the later prevails. A record with a fault is left out.
    ///
    /// @return the faults, each with file, model and key; none if all was taken
    QStringList addFile(const QString &fileName);
    /// The same of a text that was read already.
    /// @param fileName what the faults and sources name
    QStringList add(const QByteArray &json, const QString &fileName);

    /// Those of the catalogue, as PrinterProfile has them, and behind them those that files add.
    QStringList modelIds() const;
    /// Nothing for an identifier that isn't known.
    std::optional<PrinterProfile> profile(const QString &modelId) const;

private:
    QVector<PrinterProfile> m_profiles;
};

}  // namespace printerslib::drivers
