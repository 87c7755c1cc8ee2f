#pragma once

#include <QString>
#include <QStringList>
#include <random>

#include "printerdocs/printerdocument.h"

/// Templates with documents, BBCode texts and expressions, made of what means something in them and
/// put together at random. A case depends on the seed, its kind and its number alone, so that any
/// one can be made again, by any version of this library.
namespace differential {

struct TemplateCase
{
    QStringList lines;
    PrinterDocument document;
    int leftMargin;
    int width;
    int charactersMode;  ///< IPrintDeviceSettings::ECharactersMode
    bool rightAlign;
    QString copyMark;  ///< the translation of the copy mark; null: there is none
};

struct BbcodeCase
{
    QString text;
    unsigned char symbolsPerLine;
};

class Generator
{
public:
    enum Kind { Template, Bbcode, Expression, Receipt };

    Generator(unsigned seed, Kind kind, unsigned number);

    TemplateCase templateCase();
    /// Lines and values as tills have them, and what clients and customers may make of both: all
    /// kinds of values, names that mean something else too, lines with a wrong character.
    TemplateCase receiptCase();
    BbcodeCase bbcodeCase();
    QByteArray expression();

private:
    int below(int limit);
    bool oneIn(int count) { return below(count) == 0; }
    template <std::size_t Size>
    QString oneOf(const char *const (&texts)[Size])
    {
        return QString::fromUtf8(texts[below(static_cast<int>(Size))]);
    }
    QString word();
    QString name();
    QString format();
    QString attributeTag();
    QString templateExpression(int depth);
    QString group(int depth);
    QString templateLine();
    QString itemLine(int number);
    QVariant value();
    QVariant mixedNumber();
    QString entries();
    QString receiptLine();
    QString withAWrongCharacter(QString line);
    QString receiptEntries();
    QMap<QString, QVariant> receiptAttributes();
    QVariant receiptValue();
    QVariant oddValue();
    double oddNumber();
    QByteArray operand(int depth);

    std::mt19937_64 m_engine;
};

}  // namespace differential
