#include "printerdocs/template/printedline_p.h"

#include "printerdocs/template/linemarkup_p.h"

namespace templates {

DocumentBlock PrintedLine::toBlock() const
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

template <typename Edits>
PrintedLine printedLine(const QString &line, CarriedStyle &carried, int lineSpacing, int leftMargin,
                        LineDetail wanted, Edits edits)
{
    if (line.isEmpty())
        return {true, line, {}, {}, carried.alignment, lineSpacing};
    LineMarkup<Edits> markup(line, carried.format, edits);
    const ETextAlignment alignment = markup.takeAlignment();
    markup.takeObsolete();
    markup.wrapWholeLine();
    const int spacing = markup.takeSpacing(lineSpacing);
    markup.takeBrackets();
    if (wanted == LineDetail::WithBytes || markup.mayHoldCharacterTags()) {
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

template PrintedLine printedLine(const QString &, CarriedStyle &, int, int, LineDetail, NoEdits);
template PrintedLine printedLine(const QString &, CarriedStyle &, int, int, LineDetail, HeardEdits);

}  // namespace templates
