#include "printermodel.h"

#include <algorithm>

#include "settings/textprintersettings.h"
#include "support.h"

namespace tool {

std::optional<PrinterInfo> findModel(const QString &id)
{
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    const auto model = std::find_if(models.begin(), models.end(),
                                    [&id](const PrinterInfo &info) { return info.id() == id; });
    if (model != models.end())
        return *model;
    complain(QStringLiteral("there is no model \"%1\"; see \"receipt models\"").arg(id));
    return std::nullopt;
}

int charactersPerLine(const PrinterInfo &model, int paper, int font)
{
    TextPrinterSettings settings;
    settings.setPrinterId(model.id());
    settings.setPaperTypeId(paper);
    settings.setDefSymbolsPerLine(0);
    settings.setBaseFiscalFont(font + 1);
    return settings.defSymbolsPerLine();
}

}  // namespace tool
