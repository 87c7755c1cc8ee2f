#include "printerdocs/template/linefilling_p.h"

#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/substitutiontext_p.h"

namespace templates {

QString lineWithValues(const QString &line, DocumentValues &values)
{
    if (AttributeTag::find(line.constData(), 0, line.size()).begin < 0)
        return line;
    SubstitutionText text(line);
    for (QStringView tag = text.takeTag(); !tag.isNull(); tag = text.takeTag()) {
        const TagParts parts = TagParts::of(tag);
        const QStringView value = values.text(parts.name, parts.format);
        text.insert(value);
        if (vanishesWithItsGroup(value))
            text.dropGroup();
    }
    return text.toString();
}

}  // namespace templates
