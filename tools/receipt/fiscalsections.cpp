#include "fiscalsections.h"

#include <algorithm>

#include "printerdocs/printerdocumentformatter.h"

namespace tool {

namespace {

using printerslib::drivers::PrintLayout;

using Pieces = QList<QPair<CheckBlockType, QSharedPointer<PrinterDocumentFormatter>>>;

Pieces piecesOf(PrinterDocumentFormatter &formatter, const QString &text)
{
    bool isFound = false;
    formatter.setTemplate(text);
    return formatter.splitByFiscalParts(isFound, PrinterDocumentFormatter::PARTS);
}

/// "FISCAL_BODY"
QString nameOfSection(CheckBlockType type)
{
    for (const auto &part : PrinterDocumentFormatter::PARTS) {
        if (part.first == type)
            return part.second.mid(1, part.second.size() - 2);
    }
    return QString();
}

QString wordsOfSection()
{
    return QStringLiteral("printed by the fiscal printer");
}

DocumentBlock emptyBlock()
{
    DocumentBlock block;
    block.setText({QString()});
    block.setFormat(QList<QByteArray>{QByteArray()});
    block.setFont(QList<QByteArray>{QByteArray()});
    block.setLineSpacing(0);
    return block;
}

QStringList frameOf(const QString &text, int width)
{
    const int room = std::max(0, width - 2);
    const QString edge = QLatin1Char('+') + QString(room, QLatin1Char('-')) + QLatin1Char('+');
    const QString shown = text.left(room);
    const QString blanks((room - shown.size()) / 2, QLatin1Char(' '));
    return {edge, QLatin1Char('|') + (blanks + shown).leftJustified(room) + QLatin1Char('|'), edge};
}

QString htmlFrameOf(const QString &section)
{
    return QStringLiteral(
               "<tr><td colspan=\"2\" align = \"center\" style=\"border: 1px solid\"> "
               "<font size = 1>%1: %2</font> </td></tr>")
        .arg(section, wordsOfSection());
}

}  // namespace

QCommandLineOption fiscalOption()
{
    return {QStringLiteral("fiscal"),
            QStringLiteral("Cut the template at its fiscal markers, as a client of a fiscal "
                           "printer does, and show a frame where that prints its own section.")};
}

FiscalReceipt fiscalReceiptOf(const TemplateAndDocument &source, int margin)
{
    FiscalReceipt receipt;
    PrinterDocumentFormatter formatter(margin, nullptr);
    const Pieces pieces = piecesOf(formatter, source.text);
    QList<DocumentBlock> blocks;
    for (const auto &piece : pieces) {
        if (!piece.second) {
            blocks.append(emptyBlock());
            receipt.sections.insert(blocks.size(), nameOfSection(piece.first));
            continue;
        }
        const TextPrinterDocument text = piece.second->toTextPrinterDocument(source.document);
        blocks += text.blocks();
        QMultiMap<signed char, MonochromeImage> symbols = receipt.document.charImages();
        symbols += text.charImages();
        receipt.document.setCharImages(symbols);
        receipt.document.setCurrentTicketAction(text.currentTicketAction());
    }
    receipt.document.setBlocks(blocks);
    return receipt;
}

QStringList fiscalTextOf(const TemplateAndDocument &source, int margin, int width)
{
    PrinterDocumentFormatter formatter(margin, nullptr);
    const Pieces pieces = piecesOf(formatter, source.text);
    QStringList lines;
    for (const auto &piece : pieces)
        lines += piece.second
                     ? piece.second->toPlainText(source.document, width)
                     : frameOf(nameOfSection(piece.first) + QStringLiteral(": ") + wordsOfSection(),
                               width);
    return lines;
}

QStringList fiscalHtmlOf(const TemplateAndDocument &source, int margin, HtmlOf htmlOf)
{
    PrinterDocumentFormatter formatter(margin, nullptr);
    const Pieces pieces = piecesOf(formatter, source.text);
    // The form's first line is its head, and its last one its tail.
    const QStringList around = htmlOf(formatter, source.document).split(QLatin1Char('\n'));
    QStringList lines(around.constFirst());
    for (const auto &piece : pieces) {
        if (!piece.second) {
            lines.append(htmlFrameOf(nameOfSection(piece.first)));
            continue;
        }
        const QStringList rows = htmlOf(*piece.second, source.document).split(QLatin1Char('\n'));
        lines += rows.mid(1, rows.size() - 2);
    }
    lines.append(around.constLast());
    return lines;
}

void frameSections(const QMap<int, QString> &sections, PrintLayout &layout)
{
    for (PrintLayout::Row &row : layout.rows) {
        const auto section = sections.constFind(row.block);
        if (section == sections.constEnd())
            continue;
        PrintLayout::Row frame;
        frame.kind = PrintLayout::Row::Fault;
        frame.block = row.block;
        frame.first = layout.faults.size();
        row = frame;
        layout.faults.append({*section, wordsOfSection(), QByteArray()});
    }
}

}  // namespace tool
