#include "printsrvstate/txtprintererror.h"

#include "latin1text_p.h"

namespace {

using printshared::latin1Text;

constexpr QLatin1String codeKey = latin1Text("code");
constexpr QLatin1String writtenTextKey = latin1Text("msg");
constexpr QLatin1String readTextKey = latin1Text("text");

}  // namespace

TxtPrinterError::TxtPrinterError(EError errorCode, const QString &errorText)
    : m_errorCode(errorCode), m_errorText(errorText)
{}

TxtPrinterError::TxtPrinterError(QFlags<EError> errorCode, const QString &errorText)
    : m_errorCode(errorCode), m_errorText(errorText)
{}

QFlags<TxtPrinterError::EError> TxtPrinterError::errorCode() const
{
    return m_errorCode;
}

void TxtPrinterError::setErrorCode(const QFlags<EError> &errorCode)
{
    m_errorCode = errorCode;
}

QString TxtPrinterError::errorText() const
{
    return m_errorText;
}

void TxtPrinterError::setErrorText(const QString &errorText)
{
    m_errorText = errorText;
}

bool TxtPrinterError::operator==(const TxtPrinterError &other) const
{
    return m_errorCode == other.m_errorCode && m_errorText == other.m_errorText;
}

bool TxtPrinterError::operator!=(const TxtPrinterError &other) const
{
    return !(*this == other);
}

TxtPrinterError::operator bool() const
{
    return (m_errorCode & RealErrorMask) != 0;
}

QMap<QString, QVariant> TxtPrinterError::toMap() const
{
    return {{codeKey, static_cast<int>(m_errorCode)}, {writtenTextKey, m_errorText}};
}

void TxtPrinterError::setMap(const QMap<QString, QVariant> &map)
{
    m_errorCode = QFlags<EError>(QFlag(map.value(codeKey).toInt()));
    m_errorText = map.value(readTextKey).toString();
}
