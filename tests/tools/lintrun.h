#pragma once

#include <QtTest>

#include "receiptprogram.h"

/// Runs of the checker on one template, and the places of what it finds.
namespace lintrun {

inline QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

/// A document with values of every kind.
inline QByteArray sale()
{
    return json(
        "{'attributes': {'SHOP': 'Kiosk', 'DOCNO': 7, 'TABLE': 7, 'QTY': 2, 'PRICE': 1.5, 'ZERO': "
        "0, "
        "'A1': 5, 'EMPTY': '', 'WHEN': {'date': '2026-03-14'}, 'TAGGED': '<B:>x', "
        "'ENDED': 'x<:B>', 'REMOVES': '<:X>', 'GROUP': 'a]', 'GUEST': 'Maya <#3>', "
        "'AT': {'datetime': '2026-03-14T18:05:30'}, 'CLOSES': {'time': '18:05:30'}, "
        "'Номер': 12, 'SHOP NAME': 'Kiosk', 'LOOP': '<LOOP>', 'GROWS': '<GROWS><GROWS>'}, "
        "'entries': 'Cash=10\\tChange=2.50'} ");
}

/// What standard error says of a template with values that is checked without any.
inline QString lackOfData()
{
    return QStringLiteral(
        "receipt: figures and sums aren't checked without data: --data DATA.json\n");
}

/// Runs the checker in a folder that has the files of symbols, and a document.
inline ReceiptRun lint(const QByteArray &templateText, const QStringList &options,
                       const QByteArray &document = QByteArray())
{
    const WorkFolder folder;
    QFile::copy(example("symbols/shop.ssi"), folder.path("shop.ssi"));
    for (const char *name : {"logo.png", "twin.png", "twin-old.png"})
        QFile::copy(example("images/logo.png"), folder.path(name));
    folder.file("plain.json", R"([{"id": "PLAIN", "like": "AV_268", "rasterCommand": "None",
                                  "ownCharacters": 0}])");
    folder.file("damaged.ssi",
                "<SpecialSymbolImages><Font Width=\"2\" Height=\"1\"><Symbol Code=\"1\">"
                "<Line>111</Line></Symbol></Font></SpecialSymbolImages>");
    folder.file("broken.ssi", "<SpecialSymbolImages>\n  <Font></Fnt>");
    QStringList arguments{"lint", folder.file("t.cpt", templateText)};
    if (!document.isEmpty())
        arguments += {"--data", folder.file("data.json", document)};
    ReceiptRun run =
        runReceipt(arguments + QStringList(options).replaceInStrings("FOLDER", folder.path("")));
    run.output.remove(folder.path("") + '/');
    run.errors.remove(folder.path("") + '/');
    if (document.isEmpty() && run.errors == lackOfData())
        run.errors.clear();
    return run;
}

/// The findings as "line:column rule".
inline QStringList placesOf(const QString &output)
{
    QStringList places;
    const QRegularExpression finding("^t\\.cpt:(\\d+:\\d+): .* \\[([a-z-]+)\\]$");
    for (const QString &line : output.split('\n', Qt::SkipEmptyParts)) {
        const auto match = finding.match(line);
        places.append(match.hasMatch() ? match.captured(1) + ' ' + match.captured(2) : line);
    }
    return places;
}

/// Templates with the document and the options they are checked with, and the places of what is
/// found there. No places: the checker is silent.
inline void addTemplates()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("places");
}

inline void row(const char *name, const QByteArray &text, const QByteArray &document,
                const char *options, const char *places)
{
    QTest::newRow(name) << text << document << QString(options) << QString(places);
}

/// Checked without a document.
inline void blank(const char *name, const char *text, const char *places)
{
    row(name, text, QByteArray(), "", places);
}

inline void blankWith(const char *options, const char *name, const char *text, const char *places)
{
    row(name, text, QByteArray(), options, places);
}

/// Checked with the values of the sale.
inline void filled(const char *name, const char *text, const char *places)
{
    row(name, text, sale(), "", places);
}

inline void filledWith(const char *options, const char *name, const char *text, const char *places)
{
    row(name, text, sale(), options, places);
}

inline void checkPlaces()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, document);
    QFETCH(QString, options);
    QFETCH(QString, places);
    const ReceiptRun run = lint(text, options.split(' ', Qt::SkipEmptyParts), document);
    QCOMPARE(placesOf(run.output).join(' '), places);
    QCOMPARE(run.errors, QString());
}

}  // namespace lintrun
