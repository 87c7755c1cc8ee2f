#include "clientnames.h"

#include <QtTest>

extern "C" void next_token(void *);

extern "C" void next_token(void *)
{
    clientnames::used().append("next_token");
}

class CheckTemplatesSettings
{
public:
    virtual ~CheckTemplatesSettings();
    virtual QString checkTemplatesPath() const;

    static QString _checkTemplatesPath;
};

CheckTemplatesSettings::~CheckTemplatesSettings()
{
    clientnames::used().append("~CheckTemplatesSettings");
}

QString CheckTemplatesSettings::checkTemplatesPath() const
{
    clientnames::used().append("checkTemplatesPath");
    return _checkTemplatesPath;
}

QString CheckTemplatesSettings::_checkTemplatesPath = QStringLiteral("/client");

namespace bbcpp {

/// With the virtual functions where the library's class has them.
class BBElement
{
public:
    virtual ~BBElement();
    virtual void appendChild(void *node);
};

BBElement::~BBElement()
{
    clientnames::used().append("~BBElement");
}

void BBElement::appendChild(void *)
{
    clientnames::used().append("appendChild");
}

}  // namespace bbcpp

QStringList &clientnames::used()
{
    static QStringList names;
    return names;
}

void clientnames::useAll()
{
    next_token(nullptr);
    QCOMPARE(CheckTemplatesSettings().checkTemplatesPath(), QString("/client"));
    bbcpp::BBElement().appendChild(nullptr);
}
