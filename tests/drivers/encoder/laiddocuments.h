#pragma once

#include <QString>
#include <QStringList>

#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/printermodels.h"
#include "printerslib/drivers/printlayout.h"
#include "printerslib/drivers/symbologydrawer.h"

/// Documents laid out for a model, and what stands in them in a form that is easily compared.
namespace laiddocuments {

using namespace printerslib::drivers;

inline PrintTarget targetOf(const char *model, int paper = 0, int font = 0)
{
    const auto target = PrintTarget::forModel(QString::fromLatin1(model), paper, font);
    return target ? *target : PrintTarget(PrinterProfile(), PrinterInfo(), 0);
}

/// A paper of a model of which some facts are others, such as R"("headDots": 100)".
inline PrintTarget changedTarget(const char *model, const char *facts, int paper = 0)
{
    PrinterModels models;
    const QByteArray json =
        QByteArray(R"([{"id": "%1", %2}])").replace("%1", model).replace("%2", facts);
    const QStringList faults = models.add(json, QStringLiteral("own.json"));
    if (!faults.isEmpty())
        qFatal("%s", qPrintable(faults.join(QLatin1Char('\n'))));
    const PrintTarget target = targetOf(model, paper);
    return PrintTarget(*models.profile(QString::fromLatin1(model)), target.record(), paper);
}

inline PrintLayout layoutOf(const TextPrinterDocument &document, const PrintTarget &target,
                            const PrintOptions &options = {})
{
    static const SymbologyDrawer codes;
    return PrintLayout::of(document, target, options, codes);
}

inline TextPrinterDocument documentOf(const QList<DocumentBlock> &blocks)
{
    TextPrinterDocument document;
    document.setBlocks(blocks);
    return document;
}

/// A block of lines that look alike.
inline DocumentBlock textBlock(const QString &text, ETextAlignment alignment = AlignLeft,
                               int format = 0, int font = 0, int spacing = 0)
{
    return DocumentBlock::createSimpleBlock(text, alignment, QByteArray(1, static_cast<char>(font)),
                                            QByteArray(1, static_cast<char>(format)), spacing, 0);
}

inline DocumentBlock barcodeBlock(int number, const QByteArray &payload,
                                  ETextAlignment alignment = AlignLeft)
{
    DocumentBlock block;
    block.setBarCode(payload, static_cast<DocumentBlock::EBarcodeType>(number));
    block.setAlignment(alignment);
    return block;
}

inline DocumentBlock qrBlock(const QByteArray &payload, ETextAlignment alignment = AlignLeft)
{
    DocumentBlock block;
    block.setQrCode(payload);
    block.setAlignment(alignment);
    return block;
}

inline PrintLayout layoutOf(const DocumentBlock &block, const PrintTarget &target,
                            const PrintOptions &options = {})
{
    return layoutOf(documentOf({block}), target, options);
}

/// The characters of a row, as they are seen.
inline QString textOf(const PrintLayout &layout, const PrintLayout::Row &row)
{
    QString text;
    for (int i = row.first; i < row.first + row.count; ++i)
        text += QChar(layout.cells[static_cast<size_t>(i)].character);
    return text;
}

/// Rows of text; others by their kind.
inline QStringList textsOf(const PrintLayout &layout)
{
    QStringList texts;
    for (const PrintLayout::Row &row : layout.rows) {
        switch (row.kind) {
            case PrintLayout::Row::Text:
                texts += textOf(layout, row);
                break;
            case PrintLayout::Row::Picture:
                texts += QStringLiteral("[picture]");
                break;
            case PrintLayout::Row::Code:
                texts += QStringLiteral("[code]");
                break;
            case PrintLayout::Row::Feed:
                texts += QStringLiteral("[feed %1]").arg(row.height);
                break;
            case PrintLayout::Row::Fault:
                texts += QStringLiteral("[fault]");
                break;
        }
    }
    return texts;
}

inline QStringList notesOf(const PrintLayout &layout)
{
    QStringList notes;
    for (const PrintNote &note : layout.notes)
        notes += note.toString();
    return notes;
}

/// The cell of a row of text.
inline PrintLayout::Cell cellAt(const PrintLayout &layout, int index, size_t row = 0)
{
    return layout.cells[static_cast<size_t>(layout.rows.at(row).first + index)];
}

}  // namespace laiddocuments
