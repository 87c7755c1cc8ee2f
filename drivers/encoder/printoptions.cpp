#include "printerslib/drivers/printoptions.h"

#include <algorithm>

#include "settings/textprintersettings.h"

namespace printerslib::drivers {

PrintOptions PrintOptions::fromSettings(TextPrinterSettings &settings)
{
    PrintOptions options;
    options.codePage = settings.codePage();
    options.codec = settings.codec();
    options.isPicture = settings.printAsImage();
    options.emptyLinesAtEnd = settings.emptyStringsAtEnd();
    options.spacesInFront = settings.spacessBeforeString();
    options.paperLoop = settings.paperLoopFlag();
    options.ticketMove =
        static_cast<unsigned char>(std::max<signed char>(0, settings.moveCheckTo()));
    return options;
}

}  // namespace printerslib::drivers
