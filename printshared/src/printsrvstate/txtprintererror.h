#pragma once

#include <QFlags>
#include <QMap>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"

/// An error of a text printer: a set of error flags with a message.
///
/// A plain value; one object is used by one thread at a time. No operation fails.
class PRINTERSLIB_EXPORT TxtPrinterError
{
public:
    /// The flags that make up a real error, named by their value; the printer drivers give each its
    /// meaning. The print service sets other bits too; they are kept, and are no error by
    /// themselves.
    enum EError : int {
        ErrorNone = 0,
        Error001 = 0x001,
        Error002 = 0x002,
        Error020 = 0x020,
        Error200 = 0x200,
        RealErrorMask = Error001 | Error002 | Error020 | Error200,
    };

    /// No flags and no message.
    TxtPrinterError() = default;
    /// An error of these flags, with a message for the user.
    TxtPrinterError(EError errorCode, const QString &errorText);
    TxtPrinterError(QFlags<EError> errorCode, const QString &errorText);

    /// All flags as they were set, those outside RealErrorMask included.
    QFlags<EError> errorCode() const;
    void setErrorCode(const QFlags<EError> &errorCode);

    /// The error in words, for the user.
    QString errorText() const;
    void setErrorText(const QString &errorText);

    /// Compares all fields.
    bool operator==(const TxtPrinterError &other) const;
    bool operator!=(const TxtPrinterError &other) const;

    /// Whether a flag of RealErrorMask is set.
    operator bool() const;

    /// The map form: "code", an int, and "msg".
    QMap<QString, QVariant> toMap() const;
    /// Reads "code" and "text"; what is missing becomes 0 and the empty text.
    /// Intended: toMap() writes the message under "msg", which is not read here, so a record that
    /// is written and read again has lost its message. The records that come in are those of the
    /// printer drivers, which write "text"; readers of our records look for "msg". See
    /// tst_txtprintererror, roundTripKeepsTheCodeAndLosesTheText.
    void setMap(const QMap<QString, QVariant> &map);

private:
    QFlags<EError> m_errorCode;
    QString m_errorText;
};
