#include "documentforms.h"

#include <printerslib/drivers/documentjson.h>
#include <printerslib/drivers/escapedhtml.h>

#include <QJsonDocument>

#include "printerdocs/specialcharacters.h"
#include "support.h"

namespace tool {

QStringList textLines(const TextPrinterDocument &document, int width)
{
    QStringList lines;
    const QList<DocumentBlock> blocks = document.blocks();
    for (DocumentBlock block : blocks)
        lines += block.toStringList(width);
    return lines;
}

QStringList htmlLines(const TextPrinterDocument &document)
{
    return printerslib::drivers::EscapedHtml::toHtml(document, true, SpecialCharacters())
        .split(QLatin1Char('\n'));
}

QStringList unescapedHtmlLines(const TextPrinterDocument &document)
{
    return document.toHtml(true, SpecialCharacters()).split(QLatin1Char('\n'));
}

QStringList jsonLines(const TextPrinterDocument &document, bool indented)
{
    const auto form = indented ? QJsonDocument::Indented : QJsonDocument::Compact;
    return linesOf(printerslib::drivers::DocumentJson::toJson(document, form));
}

}  // namespace tool
