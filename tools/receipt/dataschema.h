#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QJsonDocument>
#include <QString>
#include <QStringList>

namespace tool {

/// The option that names a JSON Schema for documents.
QCommandLineOption dataSchemaOption();
/// Has documents checked against that schema from now on, if there is one. Complains and gives
/// false where no document is read.
bool useDataSchema(const QCommandLineParser &parser, bool fillsDocument);

/// The file of that schema, if there is one.
QStringList dataSchemaFiles();

/// Complains of everything in a document that the schema in use doesn't allow, by its key path, and
/// gives false then; also of a schema that can't be read.
bool fitsDataSchema(const QString &fileName, const QJsonDocument &json);

}  // namespace tool
