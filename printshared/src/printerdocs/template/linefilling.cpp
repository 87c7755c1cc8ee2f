#include "printerdocs/template/linefilling_p.h"

#include <algorithm>

#include "printerdocs/template/attributetag_p.h"
#include "printerdocs/template/documentvalues_p.h"
#include "printerdocs/template/substitutiontext_p.h"

namespace templates {

namespace {

bool isBracket(QChar c)
{
    return c == QLatin1Char('[') || c == QLatin1Char(']');
}

/// Fills the tags of a text that has groups, or whose values hold tags or groups.
QString withValuesAndGroups(SubstitutionText text, DocumentValues &values)
{
    for (QStringView tag = text.takeTag(); !tag.isNull(); tag = text.takeTag()) {
        const TagParts parts = TagParts::of(tag);
        const QStringView value = values.text(parts.name, parts.format);
        text.insert(value);
        if (vanishesWithItsGroup(value))
            text.dropGroup();
    }
    return text.toString();
}

}  // namespace

QString lineWithValues(const QString &line, DocumentValues &values)
{
    const QChar *const text = line.constData();
    AttributeTag tag = AttributeTag::find(text, 0, line.size());
    if (tag.begin < 0)
        return line;
    values.beginLine();
    if (std::any_of(line.cbegin(), line.cend(), isBracket))
        return withValuesAndGroups(SubstitutionText(QStringView(), line), values);
    QString filled;
    filled.reserve(2 * line.size());
    int read = 0;
    for (; tag.begin >= 0; tag = AttributeTag::find(text, read, line.size())) {
        filled.append(text + read, tag.begin - read);
        const TagParts parts =
            TagParts::of(QStringView(text + tag.begin + 1, tag.end - tag.begin - 1));
        const QStringView value = values.text(parts.name, parts.format);
        read = tag.end + 1;
        const bool isPlain = std::none_of(value.begin(), value.end(), [](QChar c) {
            return c == QLatin1Char('<') || isBracket(c);
        });
        if (!isPlain) {
            const QString rest = value.toString() + line.midRef(read);
            return withValuesAndGroups(SubstitutionText(filled, rest), values);
        }
        filled.append(value.data(), static_cast<int>(value.size()));
    }
    return filled.append(text + read, line.size() - read);
}

}  // namespace templates
