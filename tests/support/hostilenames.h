#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <algorithm>

#include "printerdocs/printerdocument.h"

/// Attribute names, values and expressions that somebody chose to make the filling of a template
/// slow: of each family any number of names, and a hundred characters of expression for each.
namespace hostilenames {

using Attributes = QMap<QString, QVariant>;

struct Input
{
    Attributes attributes;
    QString expression;
};

struct Family
{
    const char *name;
    Input (*make)(int names);
};

inline QString times(const QString &text, int count)
{
    return text.repeated(count);
}

/// A sum that begins so, as long as the expressions of so many names are.
inline QString lengthened(QString text, int names)
{
    while (text.size() < 100 * names)
        text += "+1";
    return text;
}

inline QString inBase(int number, int digits, const QString &alphabet)
{
    QString text;
    for (int i = 0; i < digits; ++i, number /= alphabet.size())
        text.prepend(alphabet.at(number % alphabet.size()));
    return text;
}

/// "AB", "AAB", ...: at each place each of them nearly stands.
inline Input staircase(int names)
{
    Input input;
    for (int i = 1; i <= names; ++i)
        input.attributes.insert(times("A", i) + 'B', 1);
    input.expression = times("A", 100 * names) + "+1";
    return input;
}

/// Names whose first letter is everywhere and their rest nowhere.
inline Input longAndAbsent(int names)
{
    Input input;
    for (int i = 1; i <= names; ++i)
        input.attributes.insert('A' + times("Z", i), 1);
    input.expression = times("A", 100 * names) + "+1";
    return input;
}

/// "A", "AA", ...: all of them stand everywhere.
inline Input prefixes(int names)
{
    Input input;
    for (int i = 1; i <= names; ++i)
        input.attributes.insert(times("A", i), 1);
    input.expression = "0+" + times("A", 100 * names - 1);
    return input;
}

/// Names of one length that differ in their ends.
inline Input oneLength(int names)
{
    Input input;
    for (int i = 0; i < names; ++i)
        input.attributes.insert(times("A", 60) + inBase(i, 4, "0123456789"), 1);
    input.expression = times("A", 100 * names) + "+1";
    return input;
}

/// Names of one length that overlap each other at each place, so that their order counts.
inline Input overlapping(int names)
{
    Input input;
    for (int i = 0; i < names; ++i)
        input.attributes.insert(inBase(i * 7919, 10, "AB"), 1);
    QString text;
    for (unsigned i = 0, noise = 1; i < 100U * unsigned(names); ++i, noise = noise * 69069U + 1U)
        text += (noise >> 16U) % 2 == 0 ? 'A' : 'B';
    input.expression = text + "+1";
    return input;
}

/// The value of each name is the next one.
inline Input chain(int names)
{
    Input input;
    for (int i = 1; i <= names; ++i)
        input.attributes.insert('C' + times("A", i), i == 1 ? "1" : 'C' + times("A", i - 1));
    input.expression = lengthened('C' + times("A", names), names);
    return input;
}

/// The value of each name makes another one of the characters around it.
inline Input seams(int names)
{
    const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ\u0414\u0416\u0428\u0429\u042B\u042F";
    Input input;
    for (int i = 0; i < names; ++i)
        input.attributes.insert(inBase(i, 2, letters), QString(letters.at(i % letters.size())));
    QString text;
    for (unsigned i = 0, noise = 1; i < 100U * unsigned(names); ++i, noise = noise * 69069U + 1U)
        text += letters.at(int((noise >> 16U) % unsigned(letters.size())));
    input.expression = "1+" + text;
    return input;
}

/// Values of no characters: what stood around the names makes shorter names.
inline Input vanishing(int names)
{
    Input input;
    for (int i = 1; i <= names; ++i)
        input.attributes.insert(times("A", i) + 'B', "");
    QString text = "1+1";
    for (int i = 1; text.size() < 100 * names; i = i % names + 1)
        text.insert(1, times("A", i) + 'B');
    input.expression = text;
    return input;
}

/// Each value is two times the next name.
inline Input growing(int names)
{
    Input input;
    for (int i = 1; i <= names; ++i)
        input.attributes.insert('D' + times("A", i), 1);
    int length = 1;
    int doublings = 0;
    for (; length < 100 * names; length = 2 * length + 1)
        ++doublings;
    for (int i = 1; i <= doublings; ++i) {
        const QString next = i == 1 ? QString("1") : 'E' + times("Z", i - 1);
        input.attributes.insert('E' + times("Z", i), next + '+' + next);
    }
    input.expression = 'E' + times("Z", doublings) + "+0";
    return input;
}

/// Every place of the text belongs to a name, and all names stand there.
inline Input allStand(int names)
{
    Input input;
    QStringList terms;
    for (int i = 0; i < names; ++i)
        input.attributes.insert('N' + inBase(i, 3, "ABCDEFGHIJKLMNOPQRSTUVWXYZ"), i);
    const QStringList keys = input.attributes.keys();
    for (int i = 0; 5 * i < 100 * names; ++i)
        terms.append(keys.at(i * 31 % keys.size()));
    input.expression = terms.join('+');
    return input;
}

/// Names of other scripts whose first characters have the low byte of the text's.
inline Input sameLowByte(int names)
{
    Input input;
    for (int i = 0; i < names; ++i)
        input.attributes.insert(QChar(0x0441 + 0x100 * (i / 10)) + times("A", 1 + i % 10), 1);
    input.expression = times("A", 100 * names) + "+1";
    return input;
}

/// Names of one hash: to Qt, whose hash is a sum with the powers of 31, "Aa" and "BB" are alike.
inline Input colliding(int names)
{
    Input input;
    for (int i = 0; i < names; ++i) {
        QString name;
        for (unsigned bit = 0; bit < 16; ++bit)
            name += ((unsigned(i) >> bit) & 1U) == 0 ? "Aa" : "BB";
        input.attributes.insert(name, 1);
    }
    input.expression = times("A", 100 * names) + "+1";
    return input;
}

constexpr Family families[] = {
    {"staircase", staircase},  {"long_and_absent", longAndAbsent}, {"prefixes", prefixes},
    {"one_length", oneLength}, {"overlapping", overlapping},       {"chain", chain},
    {"seams", seams},          {"vanishing", vanishing},           {"growing", growing},
    {"all_stand", allStand},   {"same_low_byte", sameLowByte},     {"colliding", colliding},
};

/// The expression with the values in it, by the letter of the rule: one name after the other, the
/// longest first.
/// @param looks takes the characters that the searches go over; may be null
inline QString insertedByTheLetter(const Input &input, qint64 *looks = nullptr)
{
    PrinterDocument document;
    document.setAttributes(input.attributes);
    QStringList names = input.attributes.keys();
    std::stable_sort(names.begin(), names.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
    QString text = input.expression;
    for (const QString &name : names) {
        if (looks != nullptr)
            *looks += text.size();
        text.replace(name, document.attributeValue(name).toString());
    }
    return text;
}

}  // namespace hostilenames
