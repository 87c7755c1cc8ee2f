#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

#include "printerdocs/printerdocument.h"

/// The receipt that all programs print: a header of 6 lines, N item lines, totals, taxes and a
/// footer, 42 columns wide. Amounts have whole cents, so no way of rounding makes a difference.
namespace receipt {

constexpr int columns = 42;

struct Item
{
    QString name;  ///< at most 14 characters
    std::string nameUtf8;
    double quantity = 0;
    double price = 0;
    double discount = 0;
    double sum = 0;  ///< the discount taken off
};

/// What is known of a sale, in the forms that are best for Qt's and for the standard's strings.
struct Sale
{
    QString shop;
    QString address;
    QString taxNumber;
    QString cashier;
    QString footer;
    int number = 0;
    int till = 0;
    QDateTime time;
    std::vector<Item> items;
    double gross = 0;
    double discount = 0;
    double total = 0;
    double tax = 0;  ///< contained in the total, 25 % on the net amount
    double net = 0;
    double paid = 0;
    double change = 0;
};

/// A sale of so many items, the same one at each call with its number.
Sale makeSale(int items, unsigned number = 0);

/// Three items in ten have a discount in their line, in brackets: one of them is 0, and vanishes.
bool hasDiscountGroup(int index);

/// The names of an item's attributes end in its number: NAME0, QTY0, PRICE0, DISC0, SUM0, ...
PrinterDocument indexedDocument(const Sale &sale);
QString indexedTemplate(const Sale &sale);

/// The same attributes with values of the kinds that clients hand in: whole numbers, real ones, and
/// texts with a point or a comma.
PrinterDocument mixedDocument(const Sale &sale);

/// The same with the line sums, totals and taxes worked out from indexedDocument()'s attributes.
QString expressionTemplate(const Sale &sale);

/// The items as entries.
PrinterDocument entriesDocument(const Sale &sale);
QString entriesTemplate();

/// A receipt as bytes with a line feed behind each line.
QByteArray utf8Of(const QStringList &lines);
QByteArray utf8Of(const QString &text);
QByteArray utf8Of(const std::string &text);

}  // namespace receipt
