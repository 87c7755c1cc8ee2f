#pragma once

#include <QCoreApplication>
#include <memory>

namespace receiptpreview {

/// The application object of a program that draws, or perhaps doesn't: one that draws gets fonts,
/// and works without a display; the others don't pay for it.
std::unique_ptr<QCoreApplication> makeApplication(int &argc, char *argv[], bool draws);

}  // namespace receiptpreview
