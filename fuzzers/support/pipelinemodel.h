#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "printerdocs/printerdocument.h"
#include "printerdocs/printerdocumentformatter.h"

/// The way from a template to its filled lines once more, as slow and plain as can be, tag by tag.
/// The texts of numbers, dates and times are the formatter's own, and so are a few other steps.
///
/// It also tells which inputs never end: a value that expands to its own tag is expanded for ever,
/// and values that name others over and over grow without bound. Both are intended, and clients
/// keep them out. The model stops counting at a thousand tags; such inputs are passed over.
class PipelineModel
{
public:
    PipelineModel(const PrinterDocumentFormatter &formatter, const PrinterDocument &document);

    /// PrinterDocumentFormatter::processDocAttributes(); nothing if it takes too many tags.
    std::optional<QString> filled(QString line);
    /// PrinterDocumentFormatter::prepareDocument(); nothing if it takes too many tags.
    std::optional<QStringList> prepared();

private:
    std::optional<QString> valueOf(const QString &name, const QString &format);
    std::optional<QString> expressionOf(const QString &name);
    QString textOf(const QVariant &value, const QString &format) const;

    const PrinterDocumentFormatter &m_formatter;
    const PrinterDocument &m_document;
    QStringList m_longestFirst;
    int m_tags = 0;
};
