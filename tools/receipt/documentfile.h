#pragma once

#include <QJsonDocument>
#include <QString>
#include <optional>

#include "printerdocs/printerdocument.h"

namespace tool {

/// Reads a document from a JSON file, "-" being standard input:
///
///     {"attributes": {"NAME": value, ...}, "entries": "Name=value\tName=value", "isCopy": false}
///
/// All three keys may be missing. A value is a number (LongLong if it is whole, else Double), a
/// text, true or false, or {"date": "2026-03-14"}, {"time": "18:05:30"} or
/// {"datetime": "2026-03-14T18:05:30"}.
///
/// Complains about everything that is wrong, naming the line of a syntax error and the key path of
/// a bad value, and of what the schema of --data-schema doesn't allow, and then gives nothing.
std::optional<PrinterDocument> readDocument(const QString &fileName);

/// The JSON of such a file. Complains and gives nothing if it is none.
std::optional<QJsonDocument> readDocumentJson(const QString &fileName);
/// The document of that JSON, as readDocument() has it, but without the schema.
std::optional<PrinterDocument> documentOf(const QString &fileName, const QJsonDocument &json);

}  // namespace tool
