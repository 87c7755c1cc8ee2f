#pragma once

#include <QTranslator>

#include "settings/printersettings.h"

/// What a formatter finds beside its template and its document.
namespace differential {

/// Translates the mark of a copy alone. A null one: there is no translation.
class MarkTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *, const char *, int) const override
    {
        return qstrcmp(context, "PrinterDocumentFormatter") == 0 ? m_mark : QString();
    }
    void setMark(const QString &mark) { m_mark = mark; }

private:
    QString m_mark;
};

/// @param mode an IPrintDeviceSettings::ECharactersMode
inline void setCharactersMode(int mode)
{
    const auto settings = QSharedPointer<PrinterSettings>::create();
    settings->setCharactersMode(static_cast<IPrintDeviceSettings::ECharactersMode>(mode));
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
}

}  // namespace differential
