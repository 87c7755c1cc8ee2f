#include "printerdocs/linemarkup_p.h"
#include "printerdocs/printerdocumentformatter.h"

namespace {

DocumentBlock blockOfLine(const QString &line, const QByteArray &formats, const QByteArray &fonts,
                          ETextAlignment alignment, int lineSpacing)
{
    DocumentBlock block;
    block.setText({line});
    block.setFormat(QList<QByteArray>{formats});
    block.setFont(QList<QByteArray>{fonts});
    block.setAlignment(alignment);
    block.setLineSpacing(QList<int>{lineSpacing});
    return block;
}

}  // namespace

DocumentBlock PrinterDocumentFormatter::formatPrintStr(const QString &line, unsigned char &format,
                                                       unsigned char &font,
                                                       ETextAlignment &alignment,
                                                       int lineSpacing) const
{
    if (line.isEmpty())
        return blockOfLine(line, {}, {}, alignment, lineSpacing);
    LineMarkup markup(line, format);
    const ETextAlignment ownAlignment = markup.takeAlignment();
    markup.takeObsolete();
    markup.wrapWholeLine();
    const int ownSpacing = markup.takeSpacing(lineSpacing);
    markup.takeBrackets();
    markup.placeCodes();
    markup.applyFormats(format);
    markup.applyFonts(font);
    markup.trimFormats();
    if (markup.text().isEmpty())
        return DocumentBlock();
    markup.addMargin(m_leftMargin);
    alignment = ownAlignment;
    return blockOfLine(markup.text(), markup.formats(), markup.fonts(), ownAlignment, ownSpacing);
}
