#pragma once

#include <QTranslator>

/// Translates each text into "CONTEXT: TEXT".
class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        return QString::fromLatin1(context) + QLatin1String(": ") + QString::fromUtf8(sourceText);
    }
};
