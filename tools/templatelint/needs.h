#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace templatelint {

/// The kind of value that the tags of an attribute ask for.
enum class ValueKind {
    Any,     ///< no tag says
    Number,  ///< calculated with, or printed without decimals
    Whole,   ///< printed with zeros in front
    Real,    ///< printed with decimals
    Date,
    Time,
    DateTime,
};

/// A tag that an attribute stands in.
struct ValueUse
{
    int line;    ///< from 1
    int column;  ///< from 1, in UTF-16 units
    QString tag;
};

/// An attribute that a template prints or calculates with.
struct NeededValue
{
    QString name;
    ValueKind kind = ValueKind::Any;
    int decimals = 0;        ///< the most that a format has
    bool isPrinted = false;  ///< without a format
    bool isOptional = true;  ///< each of its tags stands in a group
    QVector<ValueUse> uses;
};

/// What a template takes from its document.
struct Needs
{
    QVector<NeededValue> values;  ///< each once, as they first occur
    bool entries = false;
    bool copyMark = false;  ///< there is a place for it
};

/// @param known names that count as a whole even if they read like an expression
Needs needsOf(const QStringList &lines, const QStringList &known);

}  // namespace templatelint
