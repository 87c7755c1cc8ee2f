#pragma once

#include <zbar.h>

#include <QBuffer>
#include <QImage>
#include <QStringList>

#include "picture.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerslib/drivers/printlayout.h"
#include "printerslib/drivers/symbologydrawer.h"

using namespace receiptpreview;
using printerslib::drivers::PrinterProfile;
using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;

Q_DECLARE_METATYPE(DocumentBlock)

/// The catalogue's record of a model.
inline PrinterInfo modelOf(const QString &id)
{
    for (const PrinterInfo &model : PrinterInfo::fromResources()) {
        if (model.id() == id)
            return model;
    }
    qFatal("there is no model %s", qPrintable(id));
}

inline Paper paperOf(const QString &id = "CUSTOM_VKP_80", int paper = 0)
{
    return Paper(modelOf(id), paper);
}

inline PrintTarget targetOf(const PrinterInfo &record, int paper = 0, int font = 0)
{
    return PrintTarget(PrinterProfile::forModel(record.id()).value_or(PrinterProfile()), record,
                       paper, font);
}

inline PrintTarget targetOf(const QString &id = "CUSTOM_VKP_80", int paper = 0, int font = 0)
{
    return targetOf(modelOf(id), paper, font);
}

/// A document as a model prints it.
inline PrintLayout printOf(const TextPrinterDocument &document, const PrintTarget &target,
                           const PrintOptions &options = {})
{
    static const printerslib::drivers::SymbologyDrawer codes;
    return PrintLayout::of(document, target, options, codes);
}

inline Layout layoutOf(const TextPrinterDocument &document, const PrintTarget &target = targetOf(),
                       const PrintOptions &options = {})
{
    return Layout(printOf(document, target, options), document.prevTicketAction(),
                  document.currentTicketAction());
}

/// The document of a text with line markup.
inline TextPrinterDocument markup(const QString &text)
{
    return PrinterDocumentFormatter(0, nullptr).plainTextToTextPrinterDocument(text);
}

inline TextPrinterDocument documentOf(const QList<DocumentBlock> &blocks)
{
    TextPrinterDocument document;
    document.setBlocks(blocks);
    return document;
}

inline DocumentBlock qrBlock(const QByteArray &payload, ETextAlignment alignment = AlignCenter)
{
    DocumentBlock block;
    block.setQrCode(payload);
    block.setType(DocumentBlock::BlockQrCode);
    block.setAlignment(alignment);
    return block;
}

inline DocumentBlock barcodeBlock(const QByteArray &payload, ETextAlignment alignment = AlignCenter,
                                  int type = DocumentBlock::BarcodeBbCode)
{
    DocumentBlock block;
    block.setBarCode(payload, static_cast<DocumentBlock::EBarcodeType>(type));
    block.setType(DocumentBlock::BlockBarcode);
    block.setAlignment(alignment);
    return block;
}

inline DocumentBlock pictureBlock(const MonochromeImage &image, ETextAlignment alignment)
{
    DocumentBlock block;
    block.setImg(image);
    block.setType(DocumentBlock::BlockImage);
    block.setAlignment(alignment);
    return block;
}

inline const Typeface &typeface()
{
    // Outlives the tests and must not outlive the application, so it is never destroyed.
    static const Typeface *loaded = [] {
        auto *face = new Typeface;
        QString error;
        if (!face->load(Typeface::defaultFolder(), &error))
            qFatal("%s", qPrintable(error));
        return face;
    }();
    return *loaded;
}

using Writer = bool (*)(const Layout &, const Typeface &, int, QIODevice &, const Progress &,
                        QString *);

/// The bytes of a picture.
inline QByteArray written(Writer write, const Layout &layout, int scale = 1)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QString error;
    if (!write(
            layout, typeface(), scale, buffer, [](int, int) {}, &error))
        qFatal("%s", qPrintable(error));
    return buffer.data();
}

inline QImage pictureOf(const Layout &layout, int scale = 1)
{
    return QImage::fromData(written(writePng, layout, scale), "PNG")
        .convertToFormat(QImage::Format_RGB32);
}

/// What a model doesn't print of a document as it asks for.
inline QStringList notesOf(const TextPrinterDocument &document,
                           const PrintTarget &target = targetOf(), const PrintOptions &options = {})
{
    QStringList notes;
    for (const auto &note : printOf(document, target, options).notes)
        notes.append(note.toString());
    return notes;
}

/// What an independent reader of codes finds in a picture.
inline QStringList codesIn(const QImage &picture)
{
    QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    QByteArray bytes;
    for (int y = 0; y < grey.height(); ++y)
        bytes.append(reinterpret_cast<const char *>(grey.constScanLine(y)), grey.width());
    zbar::Image image(static_cast<unsigned>(grey.width()), static_cast<unsigned>(grey.height()),
                      "Y800", bytes.constData(), static_cast<unsigned long>(bytes.size()));
    zbar::ImageScanner scanner;
    scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    for (const auto code : {zbar::ZBAR_QRCODE, zbar::ZBAR_CODE128})
        scanner.set_config(code, zbar::ZBAR_CFG_ENABLE, 1);
    scanner.scan(image);
    QStringList result;
    for (auto symbol = image.symbol_begin(); symbol != image.symbol_end(); ++symbol)
        result.append(QString::fromStdString(symbol->get_data()));
    return result;
}
