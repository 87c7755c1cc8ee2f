#include "printermodel.h"

#include <QTextCodec>
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

const QTextCodec *findCodePage(const QString &name)
{
    const QTextCodec *codec = QTextCodec::codecForName(name.toUtf8());
    if (codec == nullptr)
        complain(QStringLiteral("--code-page: there is no encoding \"%1\"").arg(name));
    return codec;
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
