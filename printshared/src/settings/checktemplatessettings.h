#pragma once

#include <QList>
#include <QMap>
#include <QMutex>
#include <QString>
#include <QVariant>

#include "printerslib_export.h"

/// Where receipt templates lie, and which one is the default.
///
/// The values belong to the class: every object is a view on the one set of values of the process.
/// Any thread may use any operation. The item lists have the form of PrinterSettings.
class PRINTERSLIB_EXPORT CheckTemplatesSettings
{
public:
    /// Group of the items: "CHECK_TEMPLATES".
    static const QString SECTION;

    /// Keys of the items.
    static const QString CHECK_TEMPLATES_PATH;
    static const QString DEFAULT_CHECK_TEMPLATE;
    /// Keys for clients; the library doesn't use them.
    static const QString SPEC_SYMBOLS_PATH;
    static const QString Z_TEMPLATES_PATH;
    static const QString FISCAL_TEMPLATES_PATH;

    CheckTemplatesSettings() = default;
    virtual ~CheckTemplatesSettings();

    /// Folder of the templates. While none is set it is "templates" in the work folder, worked out
    /// at each call from the system's configuration file, /opt/tarnwick/etc/tarn.conf. That also
    /// creates the print service's folders "printsrv" and "png" there, writable for all users, as
    /// PrintSrvSettings does; "templates" isn't created.
    /// A folder that can't be created is logged; nothing is locked then, so a message handler may
    /// use all settings.
    QString checkTemplatesPath() const;
    /// Sets the folder; an empty path means the default again.
    void setCheckTemplatesPath(const QString &path);

    /// File name of the default template: "default.cpt" while none is set.
    QString defaultCheckTemplate() const;
    void setDefaultCheckTemplate(const QString &fileName);

    /// Takes one item.
    /// @return false, with nothing changed, for another group or an unknown key
    bool setValue(const QMap<QString, QVariant> &item);
    /// Takes a list of items in its order; what isn't known is passed over.
    void setList(const QList<QVariant> &list);
    /// Both values as items. The folder is exported as it was set, so empty for the default.
    QList<QVariant> toList() const;

private:
    static QMutex _settingsMutex;
    static QString _checkTemplatesPath;
    static QString _defaultCheckTemplate;

    static bool setLocked(const QMap<QString, QVariant> &item);
};
