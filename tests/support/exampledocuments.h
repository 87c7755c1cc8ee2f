#pragma once

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QVector>
#include <functional>

#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "settings/checktemplatessettings.h"

/// The documents of the folder "examples": each template with its data, each BBCode text, and all
/// of them as they come back when they were stored.
namespace exampledocuments {

struct Example
{
    QString name;
    /// For a line of so many characters.
    std::function<TextPrinterDocument(int)> document;
    /// The same as text; none for what has no form of text but the document's.
    std::function<QStringList(int)> text;
};

inline QByteArray contentOf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("there is no %s", qPrintable(fileName));
    return file.readAll();
}

inline QVariant valueOf(const QJsonValue &value)
{
    const QJsonObject typed = value.toObject();
    if (typed.contains("date"))
        return QDate::fromString(typed.value("date").toString(), Qt::ISODate);
    if (typed.contains("time"))
        return QTime::fromString(typed.value("time").toString(), Qt::ISODate);
    if (typed.contains("datetime"))
        return QDateTime::fromString(typed.value("datetime").toString() + 'Z', Qt::ISODate);
    return value.toVariant();
}

inline PrinterDocument dataOf(const QString &fileName)
{
    const QJsonObject json = QJsonDocument::fromJson(contentOf(fileName)).object();
    QMap<QString, QVariant> attributes;
    const QJsonObject values = json.value("attributes").toObject();
    for (auto value = values.begin(); value != values.end(); ++value)
        attributes.insert(value.key(), valueOf(value.value()));
    PrinterDocument data;
    data.setAttributes(attributes);
    data.setEntries(json.value("entries").toString());
    data.setIsCopy(json.value("isCopy").toBool());
    return data;
}

/// A template with a file of data. Special symbols are looked for beside it.
inline Example templateExample(const QDir &folder, const QString &name, const QString &data)
{
    const QString text = QString::fromUtf8(contentOf(folder.filePath(name + ".cpt")));
    const PrinterDocument values = dataOf(folder.filePath(data + ".json"));
    const auto formatter = [text = text.endsWith('\n') ? text.chopped(1) : text, folder] {
        CheckTemplatesSettings().setCheckTemplatesPath(folder.path());
        // Each name that is looked up is told.
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
        auto result = QSharedPointer<PrinterDocumentFormatter>::create(0, nullptr);
        result->setTemplate(text);
        return result;
    };
    return {name == data ? name : name + "-" + data,
            [=](int) { return formatter()->toTextPrinterDocument(values); },
            [=](int width) { return formatter()->toPlainText(values, width); }};
}

inline Example bbCodeExample(const QDir &folder, const QString &name)
{
    const QString text = QString::fromUtf8(contentOf(folder.filePath(name + ".bbcode")));
    return {name,
            [=](int width) {
                BbCodeParser parser(nullptr);
                parser.setSymbolsPerLine(static_cast<unsigned char>(qMin(width, 255)));
                parser.setImagesPath(folder.filePath("images"));
                parser.parseText(text);
                return parser.document();
            },
            {}};
}

/// The files of data for a template: of its name, or its name and more behind a "-"; else no data.
inline QStringList dataFor(const QDir &folder, const QString &name)
{
    QStringList found;
    for (const QString &file : folder.entryList({name + ".json", name + "-*.json"}, QDir::Files))
        found.append(QFileInfo(file).completeBaseName());
    return found.isEmpty() ? QStringList("nothing") : found;
}

inline QVector<Example> templatesIn(const QDir &folder)
{
    QVector<Example> examples;
    for (const QString &file : folder.entryList({"*.cpt"}, QDir::Files)) {
        const QString name = QFileInfo(file).completeBaseName();
        for (const QString &data : dataFor(folder, name))
            examples.append(templateExample(folder, name, data));
    }
    return examples;
}

/// What a document is when it was stored and read again.
inline Example reloaded(const Example &example)
{
    return {example.name + "-reloaded",
            [document = example.document](int width) {
                TextPrinterDocument read;
                read.setMap(document(width).toMap());
                return read;
            },
            {}};
}

/// The lines of a document's text form. Codes and pictures have none.
inline QStringList textForm(const TextPrinterDocument &document, int width)
{
    QStringList lines;
    for (DocumentBlock block : document.blocks())
        lines += block.toStringList(width);
    return lines;
}

inline QVector<Example> madeExamples()
{
    const QDir folder(PRINTERSLIB_EXAMPLES);
    const QDir authors(folder.filePath("authors"));
    QVector<Example> examples = templatesIn(folder) + templatesIn(authors);
    examples.append(templateExample(authors, "entries", "copy"));
    for (const QString &file : folder.entryList({"*.bbcode"}, QDir::Files))
        examples.append(bbCodeExample(folder, QFileInfo(file).completeBaseName()));
    return examples;
}

inline const QVector<Example> &examples()
{
    static const QVector<Example> all = [] {
        const QVector<Example> made = madeExamples();
        QVector<Example> found = made;
        for (const Example &example : made)
            found.append(reloaded(example));
        return found;
    }();
    return all;
}

}  // namespace exampledocuments
