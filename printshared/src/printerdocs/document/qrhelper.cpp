#include "printerdocs/qrhelper.h"

QrHelper::QrHelper(const QByteArray &payload) : m_payload(payload) {}

QrHelper::QrHelper(const QString &text) : m_payload(text.toUtf8()) {}

QrHelper::operator QImage() const
{
    return QImage();
}

bool QrHelper::operator==(const QrHelper &other) const
{
    return m_payload == other.m_payload;
}

bool QrHelper::operator!=(const QrHelper &other) const
{
    return !(*this == other);
}
