#pragma once

#include <QLoggingCategory>

/// The category "printers", under which discovery writes its detailed lines.
Q_DECLARE_LOGGING_CATEGORY(SEARCH_PRINTERS)
