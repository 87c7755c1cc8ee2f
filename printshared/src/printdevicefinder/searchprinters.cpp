#include "printdevicefinder/searchprinters_p.h"

Q_LOGGING_CATEGORY(SEARCH_PRINTERS, "printers")
