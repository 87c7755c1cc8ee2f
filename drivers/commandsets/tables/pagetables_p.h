#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// Tables in pages that are made from data.
namespace pagetables {

/// What stands between "<!-- mark -->" and the next "<!-- end -->".
struct Section
{
    QString mark;
    QString table;
};

/// In a table a bar ends a cell, also within code.
QString code(QString text);

/// A row of a table, with its line feed.
QString rowOf(const QStringList &cells);
/// The head of a table.
QString headOf(const QStringList &columns);

/// What a program does: puts the sections into the page that its arguments name. With --check
/// nothing is written, and the status is 1 if the page isn't up to date.
int refresh(int argumentCount, char *arguments[], const char *program,
            const QVector<Section> &sections);

}  // namespace pagetables
