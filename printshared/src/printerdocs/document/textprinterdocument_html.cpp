#include "printerdocs/document/htmlwriter_p.h"
#include "printerdocs/textprinterdocument.h"

QString TextPrinterDocument::toHtml(bool useTable, const SpecialCharacters &symbols) const
{
    Q_UNUSED(symbols)
    QString html = QStringLiteral(
        "<html><head>\n"
        "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
        "</head><body>\n");
    documents::HtmlWriter writer(html);
    qint64 room = 0;
    for (const DocumentBlock &block : m_blocks)
        room += documents::HtmlWriter::roomFor(block);
    writer.reserve(room);
    // Intended: no blank before "cellspacing"; clients compare pages with this line. See
    // tst_document_html, documentIsATableOrASequence.
    if (useTable)
        html += QLatin1String("<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n");
    for (const DocumentBlock &block : m_blocks) {
        writer.appendBlock(block, false, useTable, 0);
        html += QLatin1Char('\n');
    }
    if (useTable)
        html += QLatin1String("</table></p>\n");
    html += QLatin1String("</body></html>");
    return html;
}
