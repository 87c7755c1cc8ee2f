#pragma once

#include <QString>

class DocumentValues;

/// PrinterDocumentFormatter::processDocAttributes() over values that several lines share.
QString lineWithValues(const QString &line, DocumentValues &values);

/// Upper case character by character, so that a place in it is the same place in the line: a sharp
/// s stays one letter.
QString upperCased(const QString &line);
