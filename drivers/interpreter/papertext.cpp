#include <algorithm>
#include <tuple>

#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

namespace {

/// Something of a line, where a reader of it sees it.
struct Fragment
{
    int row = 0;    ///< what stands on one row is read together
    int begin = 0;  ///< along the row
    int end = 0;
    char16_t character = 0;  ///< 0: a text
    QString text;
    int turns = 0;  ///< what stands turned otherwise is on a row of its own
};

using Symbology = Paper::Symbology;

const char *nameOf(Symbology symbology)
{
    struct Name
    {
        Symbology symbology;
        const char *name;
    };
    static constexpr Name names[] = {
        {Symbology::UpcA, "UPC-A"},
        {Symbology::UpcE, "UPC-E"},
        {Symbology::Ean13, "EAN-13"},
        {Symbology::Ean8, "EAN-8"},
        {Symbology::Code39, "Code 39"},
        {Symbology::Itf, "ITF"},
        {Symbology::Codabar, "Codabar"},
        {Symbology::Code93, "Code 93"},
        {Symbology::Code128, "Code 128"},
        {Symbology::Gs1_128, "GS1-128"},
        {Symbology::GS1DataBar, "GS1 DataBar"},
        {Symbology::QrCode, "QR"},
        {Symbology::MicroQrCode, "Micro QR"},
        {Symbology::Pdf417, "PDF417"},
        {Symbology::DataMatrix, "Data Matrix"},
        {Symbology::Aztec, "Aztec"},
        {Symbology::MaxiCode, "MaxiCode"},
    };
    for (const Name &name : names) {
        if (name.symbology == symbology)
            return name.name;
    }
    return "code";
}

/// The bytes of a code as text: UTF-8 where they are it, control characters as "\x1D".
QString payloadText(const QByteArray &payload)
{
    // With the size, as a zero byte would end it else.
    QString text = QString::fromUtf8(payload.constData(), payload.size());
    if (text.toUtf8() != payload || text.contains(QChar::ReplacementCharacter))
        text = QString::fromLatin1(payload.constData(), payload.size());
    QString shown;
    for (const QChar c : qAsConst(text)) {
        if (c.category() == QChar::Other_Control)
            shown += QStringLiteral("\\x") +
                     QString::number(c.unicode(), 16).toUpper().rightJustified(2, u'0');
        else
            shown += c;
    }
    return shown;
}

QString textOf(const Paper::Code &code)
{
    return QStringLiteral("[%1: %2]")
        .arg(QLatin1String(nameOf(code.symbology)), payloadText(code.payload));
}

QString pictureText(const QRect &place)
{
    return QStringLiteral("[picture %1 x %2]").arg(place.width()).arg(place.height());
}

/// Reads a paper's lines.
class Reader
{
public:
    explicit Reader(const Paper &paper) : m_paper(paper), m_unit(std::max(1, paper.cell.width())) {}

    QString read()
    {
        for (const Paper::Line &line : m_paper.lines)
            readLine(line);
        endPicture();
        if (m_paper.isCut)
            m_text += QStringLiteral("[cut]\n");
        return m_text;
    }

private:
    void readLine(const Paper::Line &line)
    {
        if (line.kind == Paper::Line::Feed) {
            if (line.height > 0)
                endPicture();
            m_text += QString(line.blankLines, u'\n');
        } else if (isPictureOnly(line)) {
            for (int i = 0; i < line.pictureCount; ++i)
                addToPicture(m_paper.pictures.at(line.firstPicture + i).place);
        } else {
            endPicture();
            if (line.kind == Paper::Line::Text && isPlain(line))
                readPlain(line);
            else
                readFragments(line);
        }
    }

    bool isPictureOnly(const Paper::Line &line) const
    {
        return line.kind != Paper::Line::Page && line.pictureCount > 0 && line.cellCount == 0 &&
               line.codeCount == 0;
    }

    /// Strips of a picture come as lines of their own.
    void addToPicture(const QRect &place)
    {
        const bool touches = m_picture.adjusted(-1, -1, 1, 1).intersects(place);
        if (!m_picture.isNull() && !touches)
            endPicture();
        m_picture = m_picture.united(place);
    }

    void endPicture()
    {
        if (m_picture.isNull())
            return;
        beginRow();
        padTo(m_picture.left());
        m_row += pictureText(m_picture);
        m_picture = QRect();
        endRow();
    }

    /// Cells from left to right, the right way up, and nothing else.
    bool isPlain(const Paper::Line &line) const
    {
        if (line.pictureCount > 0 || line.codeCount > 0)
            return false;
        int left = 0;
        for (int i = 0; i < line.cellCount; ++i) {
            const Paper::Cell &cell = m_paper.cells.at(line.firstCell + i);
            if (cell.left < left || (cell.effects & Paper::UpsideDown) != 0)
                return false;
            left = cell.left;
        }
        return true;
    }

    void readPlain(const Paper::Line &line)
    {
        beginRow();
        for (int i = 0; i < line.cellCount; ++i) {
            const Paper::Cell &cell = m_paper.cells.at(line.firstCell + i);
            padTo(cell.left);
            m_row += QChar(cell.character);
            m_end = cell.left + cell.width;
        }
        endRow();
    }

    void readFragments(const Paper::Line &line)
    {
        QVector<Fragment> fragments;
        // Digits below a barcode say once more what the code says.
        const bool hasDigits = line.kind == Paper::Line::Graphics && line.codeCount > 0;
        for (int i = 0; i < line.cellCount && !hasDigits; ++i)
            fragments.append(fragmentOf(m_paper.cells.at(line.firstCell + i), line));
        for (int i = 0; i < line.pictureCount; ++i) {
            const QRect place = m_paper.pictures.at(line.firstPicture + i).place;
            const int row =
                line.kind == Paper::Line::Text ? line.top + line.height : place.bottom() + 1;
            fragments.append({row, place.left(), place.right() + 1, 0, pictureText(place)});
        }
        for (int i = 0; i < line.codeCount; ++i) {
            const Paper::Code &code = m_paper.codes.at(line.firstCode + i);
            if (code.fault.isEmpty())
                fragments.append({code.place.bottom() + 1, code.place.left(),
                                  code.place.right() + 1, 0, textOf(code)});
        }
        std::stable_sort(fragments.begin(), fragments.end(), [](const auto &a, const auto &b) {
            return std::tie(a.turns, a.row, a.begin) < std::tie(b.turns, b.row, b.begin);
        });
        for (int i = 0; i < fragments.size();)
            i = readRow(fragments, i);
    }

    /// One row of the sorted fragments; gives where the next begins.
    int readRow(const QVector<Fragment> &fragments, int first)
    {
        beginRow();
        const Fragment &begin = fragments.at(first);
        int i = first;
        for (; i < fragments.size(); ++i) {
            const Fragment &fragment = fragments.at(i);
            if (fragment.turns != begin.turns || fragment.row != begin.row)
                break;
            padTo(fragment.begin);
            if (fragment.character != 0)
                m_row += QChar(fragment.character);
            else
                m_row += fragment.text;
            m_end = fragment.end;
        }
        endRow();
        return i;
    }

    /// As a reader sees a cell who turns the paper so that the character stands upright. Rows of
    /// lines, other than those of pages, are one, whatever the heights.
    Fragment fragmentOf(const Paper::Cell &cell, const Paper::Line &line) const
    {
        Fragment fragment;
        fragment.character = cell.character;
        const int right = cell.left + cell.width;
        const int bottom = cell.top + cell.height;
        const int turns = line.kind == Paper::Line::Page || (cell.effects & Paper::Turned) == 0
                              ? cell.effects & (Paper::Turned | Paper::UpsideDown)
                              : cell.effects & Paper::UpsideDown;
        switch (turns) {
            case Paper::UpsideDown:
                fragment = {-cell.top, m_paper.width - right, m_paper.width - cell.left,
                            cell.character, QString()};
                break;
            case Paper::Turned:
                fragment = {-cell.left, cell.top, bottom, cell.character, QString()};
                break;
            case Paper::Turned | Paper::UpsideDown:
                fragment = {right, m_paper.length - bottom, m_paper.length - cell.top,
                            cell.character, QString()};
                break;
            default:
                fragment = {bottom, cell.left, right, cell.character, QString()};
        }
        if (line.kind == Paper::Line::Text)
            fragment.row = line.top + line.height;
        else
            fragment.turns = turns;
        return fragment;
    }

    void beginRow()
    {
        m_row.resize(0);
        m_end = 0;
    }

    /// Characters that follow each other stand together, however wide they are; others stand at
    /// their column.
    void padTo(int left)
    {
        const int gap = left - m_end;
        if (2 * gap < m_unit)
            return;
        const int column = std::max((left + m_unit / 2) / m_unit, m_row.size() + 1);
        m_row += QString(column - m_row.size(), u' ');
    }

    void endRow()
    {
        int size = m_row.size();
        while (size > 0 && m_row.at(size - 1) == u' ')
            --size;
        m_text += m_row.leftRef(size);
        m_text += u'\n';
    }

    const Paper &m_paper;
    const int m_unit;
    QString m_text;
    QString m_row;
    int m_end = 0;    ///< of what stands in the row, in dots
    QRect m_picture;  ///< that isn't written yet
};

}  // namespace

QString Paper::toText() const
{
    return Reader(*this).read();
}

}  // namespace printerslib::drivers
