#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include "printerdocs/textprinterdocument.h"
#include "printerslib/drivers/drivers_export.h"
#include "printerslib/drivers/printlayout.h"
#include "printerslib/drivers/printoptions.h"
#include "printerslib/drivers/printtarget.h"

namespace printerslib::drivers {

/// What goes to the printer for a document.
struct PRINTERSLIB_DRIVERS_EXPORT EncodedDocument
{
    /// Where a row of the document begins in the bytes.
    struct Mark
    {
        int offset = 0;  ///< in the bytes
        int block = 0;   ///< counted from 1; 0: what belongs to the whole document
        int line = 0;    ///< of the block, counted from 1; 0: the whole block
    };

    QByteArray bytes;          ///< empty if there is an error
    QVector<Mark> marks;       ///< in the order of the bytes; each begins a command or a text
    QVector<PrintNote> notes;  ///< what isn't printed as asked
    QString error;             ///< why it can't be printed; names the block
    int pieces = 0;            ///< of paper that are cut off
    /// A ticket that is held out is to be taken back so many seconds after that, by sending these
    /// bytes; 0: no, or the printer does it by itself.
    int retractAfterSeconds = 0;
    QByteArray retraction;  ///< empty where there is nothing to send

    /// Whether all is printed as the document asks for.
    bool isFaithful() const;
};

/// Turns documents into the bytes that a model understands.
///
/// No state between calls; any thread may use one encoder, several at a time.
class PRINTERSLIB_DRIVERS_EXPORT DocumentEncoder
{
public:
    /// For a printer with its paper, and the options of a shop.
    DocumentEncoder(const PrintTarget &target, const PrintOptions &options);

    const PrintTarget &target() const { return m_target; }     ///< as given
    const PrintOptions &options() const { return m_options; }  ///< as given

    /// The bytes of a document, or an error. Its codes are drawn by SymbologyDrawer.
    EncodedDocument encode(const TextPrinterDocument &document) const;
    /// Of a document that is laid out already, for the same target and options.
    EncodedDocument encode(const TextPrinterDocument &document, const PrintLayout &layout) const;

private:
    PrintTarget m_target;
    PrintOptions m_options;
};

}  // namespace printerslib::drivers
