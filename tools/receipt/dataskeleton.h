#pragma once

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVector>

#include "needs.h"

namespace tool {

/// A value of the kind that a template asks for, to be replaced.
QJsonValue sampleOf(const templatelint::NeededValue &value);

/// An attribute of a document.
struct DataRow
{
    QString name;
    QJsonValue value;
};

/// A document as its file has it, with its attributes in an order.
struct DataText
{
    QVector<DataRow> attributes;
    QJsonValue entries;  ///< undefined: the document has none
    QJsonValue isCopy;
};

/// The lines of its file.
QStringList linesOf(const DataText &data);

/// The entries of a document that has none yet.
QString sampleEntries();

/// What is to be known of each value: what it is to be, and where the template has it.
QStringList commentsOn(const templatelint::Needs &needs);

/// A JSON Schema of the documents that a template can be filled with.
QJsonObject schemaOf(const templatelint::Needs &needs, const QString &title);

}  // namespace tool
