#include "printerdocs/document/htmlwriter_p.h"
#include "printerdocs/documentblock.h"

namespace {

using namespace documents;

}  // namespace

QString DocumentBlock::toHtml(bool rightAlign, const SpecialCharacters &symbols, bool useTable,
                              int lineWidth) const
{
    Q_UNUSED(symbols)
    QString html;
    HtmlWriter writer(html);
    writer.reserve(HtmlWriter::roomFor(*this));
    writer.appendBlock(*this, rightAlign, useTable, lineWidth);
    return html;
}

QString DocumentBlock::toHtml(int line, bool rightAlign, const SpecialCharacters &symbols,
                              bool useTable, int lineWidth) const
{
    Q_UNUSED(symbols)
    QString html;
    HtmlWriter(html).appendLine(*this, line, rightAlign, useTable, lineWidth);
    return html;
}

QString DocumentBlock::toHtml(const QString &text, QByteArray font, QByteArray format,
                              const QString &attributes, int lineSpacing,
                              const SpecialCharacters &symbols, bool useTable, QString width) const
{
    Q_UNUSED(lineSpacing)
    Q_UNUSED(symbols)
    QString html;
    HtmlWriter writer(html);
    if (useTable)
        writer.appendCell(text, CharacterBytes(font), CharacterBytes(format), attributes, width);
    else
        writer.appendCharacters(text, CharacterBytes(font), CharacterBytes(format));
    return html;
}
