#pragma once

#include <QByteArray>
#include <QString>
#include <algorithm>

#include "printerdocs/echarformat.h"
#include "printerdocs/etextalignment.h"

/// What one line became, beside the three values carried on to the next line.
struct MarkupOutcome
{
    bool valid = false;
    ETextAlignment alignment = AlignLeft;
    int lineSpacing = 0;
    QString text;
    QByteArray formats;
    QByteArray fonts;
};

/// The values carried from line to line.
struct MarkupCarry
{
    unsigned char format = 0;
    unsigned char font = 0;
    ETextAlignment alignment = AlignLeft;
};

/// The line markup once more, as slow and plain as can be: every step edits the text and the two
/// byte arrays in place, in the order in which the steps are told. The library has to agree with it
/// on every line; nothing in it is shared with the library but the two enumerations.
class MarkupModel
{
public:
    explicit MarkupModel(int leftMargin) : m_leftMargin(leftMargin) {}

    MarkupOutcome read(const QString &line, MarkupCarry &carry, int lineSpacing)
    {
        if (line.isEmpty())
            return {true, carry.alignment, lineSpacing, line, QByteArray(), QByteArray()};
        m_text = line;
        m_formats.fill(char(carry.format), line.length());
        m_fonts.fill(char(carry.font), line.length());
        MarkupOutcome outcome;
        outcome.alignment = takeAlignment();
        replaceTag("<L1>", "");
        for (const char *letters : {"Z", "B", "H2", "W2", "N", "U"}) {
            if (replaceTag(QString("<%1>").arg(letters), ""))
                wrapLine(letters);
        }
        outcome.lineSpacing = takeLineSpacing(lineSpacing);
        replaceTag("[", "");
        replaceTag("]", "");
        replaceTag("<:>", "");
        readCodes();
        applyFormatRange("B", CharBold, carry.format);
        applyFormatRange("Z", CharMarkZ, carry.format);
        applyFormatRange("U", CharUnderline, carry.format);
        applyFormatRange("N", CharItalic, carry.format);
        applyFormatRange("H2", CharDoubleHeight, carry.format);
        applyFormatRange("W2", CharDoubleWidth, carry.format);
        readFonts();
        if (!m_fonts.isEmpty())
            carry.font = static_cast<unsigned char>(m_fonts.at(m_fonts.size() - 1));
        if (m_formats.size() > m_text.length())
            m_formats.chop(1);
        if (m_text.isEmpty())
            return {};
        for (int i = 0; i < m_leftMargin; ++i) {
            m_text.prepend(' ');
            m_formats.prepend('\0');
            m_fonts.prepend('\0');
        }
        carry.alignment = outcome.alignment;
        outcome.valid = true;
        outcome.text = m_text;
        outcome.formats = m_formats;
        outcome.fonts = m_fonts;
        return outcome;
    }

private:
    /// Takes away as much of the range as there is.
    static void removeBytes(QByteArray &bytes, int index, int count)
    {
        if (index < bytes.size())
            bytes.remove(index, std::min(count, bytes.size() - index));
    }

    void removeEverywhere(int index, int count)
    {
        m_text.remove(index, count);
        removeBytes(m_formats, index, count);
        removeBytes(m_fonts, index, count);
    }

    bool replaceTag(const QString &tag, const QString &replacement)
    {
        bool hit = false;
        for (int at = m_text.indexOf(tag, 0); at >= 0; at = m_text.indexOf(tag, at + 1)) {
            hit = true;
            if (replacement.length() < tag.length()) {
                removeBytes(m_formats, at, tag.length() - replacement.length());
                removeBytes(m_fonts, at, tag.length() - replacement.length());
            }
        }
        if (hit)
            m_text.replace(tag, replacement);
        return hit;
    }

    void wrapLine(const char *letters)
    {
        if (m_text.isEmpty() || m_formats.size() != m_text.length() ||
            m_fonts.size() != m_text.length())
            return;
        const QString open = QString("<%1:>").arg(letters);
        const QString close = QString("<:%1>").arg(letters);
        m_text = open + m_text + close;
        for (int i = 0; i < open.length(); ++i) {
            m_formats.prepend(m_formats.at(0));
            m_fonts.prepend(m_fonts.at(0));
        }
        for (int i = 0; i < close.length(); ++i) {
            m_formats.append(m_formats.at(m_formats.size() - 1));
            m_fonts.append(m_fonts.at(m_fonts.size() - 1));
        }
    }

    ETextAlignment takeAlignment()
    {
        if (replaceTag("<S>", "\t"))
            return AlignJustify;
        if (replaceTag("<C>", ""))
            return AlignCenter;
        return replaceTag("<R>", "") ? AlignRight : AlignLeft;
    }

    int takeLineSpacing(int lineSpacing)
    {
        for (int spacing = 0; spacing <= 7; ++spacing) {
            if (replaceTag(QString("<LS%1>").arg(spacing), ""))
                return spacing;
        }
        return lineSpacing;
    }

    void readCodes()
    {
        int i = 0;
        while (i < m_text.length()) {
            const int lt = m_text.indexOf('<', i);
            const int gt = lt < 0 ? -1 : m_text.indexOf('>', lt);
            if (gt < 0)
                return;
            i = lt + 1;
            if (i >= m_text.length())
                return;
            if (!m_text.at(i).isDigit() && m_text.at(i) != '#')
                continue;
            QString code = m_text.mid(lt + 1, gt - lt - 1);
            char format = lt < m_formats.size() ? m_formats.at(lt) : '\0';
            if (code.startsWith('#'))
                code.remove(0, 1);
            else
                format = char(format | CharRawCode);
            const int number = code.toInt(nullptr, 10) & 0xFF;
            removeEverywhere(lt + 1, gt - lt);
            m_text[lt] = QChar(number);
            if (lt < m_formats.size())
                m_formats[lt] = format;
        }
    }

    void applyFormatRange(const QString &letters, unsigned char flag, unsigned char &format)
    {
        const QString open = "<" + letters + ":>";
        const QString close = "<:" + letters + ">";
        int openAt = m_text.indexOf(open, 0);
        int closeAt = m_text.indexOf(close, 0);
        int i = 0;
        while (i < m_text.length()) {
            if (openAt == i) {
                format = static_cast<unsigned char>(format | flag);
                removeEverywhere(i, open.length());
                for (int k = i; k < m_formats.size(); ++k)
                    m_formats[k] = char(m_formats.at(k) | flag);
                openAt = m_text.indexOf(open, i);
                closeAt = m_text.indexOf(close, i);
            }
            if (closeAt == i) {
                removeEverywhere(i, close.length());
                format = static_cast<unsigned char>(format & ~flag);
                for (int k = i; k < m_formats.size(); ++k)
                    m_formats[k] = char(m_formats.at(k) & ~flag);
                openAt = m_text.indexOf(open, i);
                closeAt = m_text.indexOf(close, i);
            }
            ++i;
        }
    }

    void readFonts()
    {
        int i = 0;
        while (i < m_text.length()) {
            const int lt = m_text.indexOf("<F", i);
            if (lt < 0)
                return;
            i = lt;
            const int gt = m_text.indexOf('>', lt);
            if (gt < 0)
                return;
            bool ok = false;
            const int number = m_text.mid(lt + 2, gt - lt - 2).toInt(&ok, 10);
            if (!ok || number < 1) {
                ++i;
                continue;
            }
            removeEverywhere(lt, gt - lt + 1);
            const char font = char(number <= 4 ? number - 1 : number % 4);
            for (int k = i; k < m_fonts.size(); ++k)
                m_fonts[k] = font;
        }
    }

    int m_leftMargin;
    QString m_text;
    QByteArray m_formats;
    QByteArray m_fonts;
};
