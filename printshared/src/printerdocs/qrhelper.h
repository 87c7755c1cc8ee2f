#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include "printerslib_export.h"

/// The payload of a QR code, as a placeholder: nothing here draws the code, which is the printer's
/// or the print service's business. In a document a QR code is a DocumentBlock of its payload.
///
/// A plain value; one object is used by one thread at a time.
class PRINTERSLIB_EXPORT QrHelper
{
public:
    /// Shares the bytes as payload.
    QrHelper(const QByteArray &payload);
    /// The payload is the text in UTF-8.
    QrHelper(const QString &text);

    /// Intended: always a null image, whatever the payload; clients test for it.
    operator QImage() const;

    /// Compares the payloads.
    bool operator==(const QrHelper &other) const;
    bool operator!=(const QrHelper &other) const;

private:
    QByteArray m_payload;
};
