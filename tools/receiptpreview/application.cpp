#include "application.h"

#include <QGuiApplication>
#include <QLoggingCategory>

namespace receiptpreview {

std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[], bool draws)
{
    if (!draws)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt writes the fonts of a PDF in the order of a hash, which is to be the same on every run.
    qSetGlobalQHashSeed(0);
    // What Qt finds missing for a desktop is nothing to the user of a command.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    QLoggingCategory::setFilterRules(QString());
    return application;
}

}  // namespace receiptpreview
