#pragma once

#include <QString>

class DocumentValues;

/// PrinterDocumentFormatter::processDocAttributes() over values that several lines share.
QString lineWithValues(const QString &line, DocumentValues &values);
