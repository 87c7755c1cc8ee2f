#pragma once

#include <QByteArray>
#include <QList>
#include <QMultiMap>
#include <QString>
#include <QXmlStreamReader>

#include "printerdocs/document/symbolfile_p.h"
#include "printerdocs/monochromeimage.h"

/// A file of special symbols read once more, as plainly as can be: first the whole text becomes a
/// tree, then the tree becomes drawings. Only Qt's tokens, and which files are refused, are shared
/// with the library.
class SymbolsModel
{
public:
    explicit SymbolsModel(const QByteArray &content)
    {
        if (!symbolfile::refusal(content).isEmpty())
            return;
        const Element document = treeOf(content);
        m_complete = document.children.isEmpty() || takeRoot(document.children.first());
    }

    bool complete() const { return m_complete; }
    const QMultiMap<signed char, MonochromeImage> &drawings() const { return m_drawings; }

private:
    struct Element
    {
        QString name;
        QXmlStreamAttributes attributes;
        QString text;
        QList<Element> children;

        int number(const char *attribute) const
        {
            return attributes.value(QLatin1String(attribute)).toString().toInt();
        }
    };

    /// The elements up to the end or the first fault, which closes all that are open. A line that
    /// holds an element is such a fault.
    static Element treeOf(const QByteArray &content)
    {
        QXmlStreamReader reader(content);
        Element document;
        readInto(document, {}, reader);
        return document;
    }

    static void readInto(Element &parent, const QStringList &path, QXmlStreamReader &reader)
    {
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isEndElement())
                return;
            if (reader.isCharacters() || reader.isEntityReference())
                parent.text += reader.text();
            if (!reader.isStartElement())
                continue;
            if (path == QStringList{"SpecialSymbolImages", "Font", "Symbol", "Line"}) {
                reader.raiseError("an element in a line");
                return;
            }
            const QString name = reader.name().toString();
            parent.children.append({name, reader.attributes(), {}, {}});
            readInto(parent.children.last(), path + QStringList{name}, reader);
        }
    }

    bool takeRoot(const Element &root)
    {
        if (root.name != "SpecialSymbolImages")
            return false;
        for (const Element &font : root.children) {
            for (const Element &symbol : font.children) {
                if (font.name == "Font" && symbol.name == "Symbol" &&
                    !takeSymbol(symbol, font.number("Width"), font.number("Height")))
                    return false;
            }
        }
        return true;
    }

    bool takeSymbol(const Element &symbol, int width, int height)
    {
        QStringList lines;
        for (const Element &line : symbol.children) {
            if (line.name == "Line")
                lines.append(line.text);
        }
        for (const QString &line : lines) {
            if (line.size() != width)
                return false;
        }
        if (lines.size() != height)
            return false;
        if (width > 0 && height > 0)
            m_drawings.insert(static_cast<signed char>(symbol.number("Code")),
                              MonochromeImage(width, height, bytesOf(lines, width)));
        return true;
    }

    static QByteArray bytesOf(const QStringList &lines, int width)
    {
        QByteArray bytes;
        for (const QString &line : lines) {
            QString digits;
            for (const QChar character : line)
                digits += character == '0' ? '0' : '1';
            digits = digits.leftJustified((width + 7) / 8 * 8, '0');
            for (int x = 0; x < digits.size(); x += 8)
                bytes.append(static_cast<char>(digits.mid(x, 8).toInt(nullptr, 2)));
        }
        return bytes;
    }

    bool m_complete = false;
    QMultiMap<signed char, MonochromeImage> m_drawings;
};
