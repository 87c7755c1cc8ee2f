#include "commandsets/tables/pagetables_p.h"

#include <QFile>
#include <cstdio>

namespace pagetables {

namespace {

/// The page with its tables made anew; empty if a mark is missing.
QString refreshed(const QString &page, const QVector<Section> &sections)
{
    const QString end = QStringLiteral("<!-- end -->");
    QString made = page;
    for (const Section &section : sections) {
        const QString mark = QStringLiteral("<!-- %1 -->\n").arg(section.mark);
        const int from = made.indexOf(mark);
        const int to = made.indexOf(end, from);
        if (from < 0 || to < 0)
            return {};
        const int begin = from + mark.size();
        made.replace(begin, to - begin, QLatin1Char('\n') + section.table + QLatin1Char('\n'));
    }
    return made;
}

int fail(const char *program, const char *text, const QString &path)
{
    std::fprintf(stderr, "%s: %s: %s\n", program, qPrintable(path), text);
    return 1;
}

}  // namespace

QString code(QString text)
{
    return QLatin1Char('`') + text.replace(QLatin1Char('|'), QLatin1String("\\|")) +
           QLatin1Char('`');
}

QString rowOf(const QStringList &cells)
{
    return QLatin1String("| ") + cells.join(QLatin1String(" | ")) + QLatin1String(" |\n");
}

QString headOf(const QStringList &columns)
{
    return rowOf(columns) + QLatin1Char('|') + QStringLiteral("---|").repeated(columns.size()) +
           QLatin1Char('\n');
}

int refresh(int argumentCount, char *arguments[], const char *program,
            const QVector<Section> &sections)
{
    const bool isCheck = argumentCount == 3 && qstrcmp(arguments[1], "--check") == 0;
    if (argumentCount != 2 && !isCheck) {
        std::fprintf(stderr, "Usage: %s [--check] PAGE\n", program);
        return 2;
    }
    const QString path = QString::fromLocal8Bit(arguments[argumentCount - 1]);
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return fail(program, "can't be read", path);
    const QString page = QString::fromUtf8(file.readAll());
    file.close();
    const QString made = refreshed(page, sections);
    if (made.isEmpty())
        return fail(program, "has no marks for the tables", path);
    if (isCheck)
        return made == page ? 0 : fail(program, "isn't what the data say", path);
    const QByteArray bytes = made.toUtf8();
    const bool isWritten = file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size();
    return isWritten && file.flush() ? 0 : fail(program, "can't be written", path);
}

}  // namespace pagetables
