#pragma once

#include <printerslib/drivers/documentcleaner.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <optional>

namespace tool {

/// The option that names the rules by which a document's texts are cleaned.
QCommandLineOption cleanOption();
/// What that option says; without it, no rule. Complains and gives nothing for a rule that there
/// isn't, and for any where no document is filled in.
std::optional<printerslib::drivers::DocumentCleaner::Rules> cleaningRulesOf(
    const QCommandLineParser &parser, bool fillsDocument);

}  // namespace tool
