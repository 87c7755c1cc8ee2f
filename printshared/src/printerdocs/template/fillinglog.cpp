#include "printerdocs/template/fillinglog_p.h"

#include <QDebug>
#include <QLoggingCategory>

#include "log/loghelper.h"

bool fillinglog::isOn()
{
    const QLoggingCategory *const category = QLoggingCategory::defaultCategory();
    return category && category->isWarningEnabled();
}

void fillinglog::write(const QString &text)
{
    constexpr char category[] = "default";
    qt_message_output(
        QtWarningMsg,
        QMessageLogContext(QT_MESSAGELOG_FILE, QT_MESSAGELOG_LINE, QT_MESSAGELOG_FUNC, category),
        text);
}

QString fillinglog::lineOf(const QStringList &items)
{
    QString line;
    QDebug(&line).noquote().nospace() << loglist(items);
    return line;
}
