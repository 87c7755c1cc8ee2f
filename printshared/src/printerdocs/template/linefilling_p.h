#pragma once

#include <QString>

namespace templates {

class DocumentValues;

/// PrinterDocumentFormatter::processDocAttributes() over values that several lines share.
QString lineWithValues(const QString &line, DocumentValues &values);

}  // namespace templates
