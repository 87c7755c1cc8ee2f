#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/printedline_p.h"

DocumentBlock PrinterDocumentFormatter::formatPrintStr(const QString &line, unsigned char &format,
                                                       unsigned char &font,
                                                       ETextAlignment &alignment,
                                                       int lineSpacing) const
{
    templates::CarriedStyle carried{format, font, alignment};
    const templates::PrintedLine printed =
        templates::printedLine(line, carried, lineSpacing, m_leftMargin);
    format = carried.format;
    font = carried.font;
    alignment = carried.alignment;
    return printed.toBlock();
}
