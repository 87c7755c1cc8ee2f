#include "printerdocs/template/linefilling_p.h"

#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/substitutiontext_p.h"

namespace templates {

QString lineWithValues(const QString &line, DocumentValues &values)
{
    return filledLine(line, [&values](QStringView tag) {
        const TagParts parts = TagParts::of(tag);
        return values.text(parts.name, parts.format);
    });
}

}  // namespace templates
