#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/formattedline_p.h"
#include "printerdocs/template/linemarkup_p.h"

DocumentBlock FormattedLine::toBlock() const
{
    DocumentBlock block;
    if (!isValid)
        return block;
    block.setText({text});
    block.setFormat(QList<QByteArray>{formats});
    block.setFont(QList<QByteArray>{fonts});
    block.setAlignment(alignment);
    block.setLineSpacing(QList<int>{spacing});
    return block;
}

FormattedLine formattedLine(const QString &line, LineFormat &carried, int lineSpacing,
                            int leftMargin, LineParts wanted)
{
    if (line.isEmpty())
        return {true, line, {}, {}, carried.alignment, lineSpacing};
    LineMarkup markup(line, carried.format);
    const ETextAlignment alignment = markup.takeAlignment();
    markup.takeObsolete();
    markup.wrapWholeLine();
    const int spacing = markup.takeSpacing(lineSpacing);
    markup.takeBrackets();
    if (wanted == LineParts::All || markup.mayHoldCharacterTags()) {
        markup.placeCodes();
        markup.applyFormats(carried.format);
        markup.applyFonts(carried.font);
        markup.trimFormats();
    }
    if (markup.text().isEmpty())
        return {};
    markup.addMargin(leftMargin);
    carried.alignment = alignment;
    return {true, markup.text(), markup.formats(), markup.fonts(), alignment, spacing};
}

DocumentBlock PrinterDocumentFormatter::formatPrintStr(const QString &line, unsigned char &format,
                                                       unsigned char &font,
                                                       ETextAlignment &alignment,
                                                       int lineSpacing) const
{
    LineFormat carried{format, font, alignment};
    const FormattedLine formatted = formattedLine(line, carried, lineSpacing, m_leftMargin);
    format = carried.format;
    font = carried.font;
    alignment = carried.alignment;
    return formatted.toBlock();
}
