#include "printerslib/drivers/documentencoder.h"

#include <algorithm>

#include "encoder/documentwriter_p.h"
#include "encoder/rasterroom_p.h"
#include "encoder/ticketactions_p.h"
#include "printerslib/drivers/symbologydrawer.h"

namespace printerslib::drivers {

bool EncodedDocument::isFaithful() const
{
    return error.isEmpty() &&
           std::none_of(notes.begin(), notes.end(), [](const PrintNote &n) { return n.isLoss; });
}

namespace {

/// One document on its way.
class Encoding
{
public:
    Encoding(const PrintTarget &target, const PrintOptions &options, EncodedDocument &encoded)
        : m_target(target),
          m_options(options),
          m_encoded(encoded),
          m_writer(DocumentWriter::of(target, options, encoded)),
          m_actions(target, options, *m_writer, encoded)
    {}

    void encode(const TextPrinterDocument &document, const PrintLayout &layout);

private:
    void mark(int block, int line);
    void printRow(const PrintLayout &layout, size_t index);
    void openDrawer();
    void tellOptionsWithoutEffect(const TextPrinterDocument &document);

    const PrintTarget &m_target;
    const PrintOptions &m_options;
    EncodedDocument &m_encoded;
    std::unique_ptr<DocumentWriter> m_writer;
    TicketActions m_actions;
};

void Encoding::mark(int block, int line)
{
    QVector<EncodedDocument::Mark> &marks = m_encoded.marks;
    const int offset = m_encoded.bytes.size();
    if (!marks.isEmpty() && marks.last().block == block && marks.last().line == line)
        return;
    // What sent nothing has no place.
    if (!marks.isEmpty() && marks.last().offset == offset)
        marks.removeLast();
    marks.append({offset, block, line});
}

void Encoding::printRow(const PrintLayout &layout, size_t index)
{
    using Row = PrintLayout::Row;
    const Row &row = layout.rows[index];
    mark(row.block, row.line);
    m_writer->setPlace(row.block, row.line);
    if (row.kind == Row::Text && !row.isRaster) {
        m_writer->printText(layout, row);
        return;
    }
    const int room = rasterroom::below(layout, index);
    if (row.kind == Row::Text)
        m_writer->printPicture(layout.rasterOf(row), 0, room);
    else if (row.kind == Row::Picture)
        m_writer->printPicture(layout.pictures.at(row.first), row.left, room);
    else if (row.kind == Row::Code)
        m_writer->printCode(layout.codes.at(row.first), row.left, room);
    else if (row.kind == Row::Feed)
        m_writer->feed(row.height);
    m_writer->feed(row.feed);
}

void Encoding::openDrawer()
{
    const int pin = m_options.drawerPin;
    const bool hasPin = (pin == 2 && m_target.profile().drawers() > 0) ||
                        (pin == 5 && m_target.profile().drawers() > 1);
    if (hasPin)
        m_writer->openDrawer(pin, m_options.drawerOnMilliseconds, m_options.drawerOffMilliseconds);
    else
        m_writer->note(QStringLiteral("the model has no drawer at pin %1").arg(pin));
}

void Encoding::tellOptionsWithoutEffect(const TextPrinterDocument &document)
{
    const int loop =
        int(document.loopPolicy()) != 0 ? int(document.loopPolicy()) : m_options.paperLoop;
    if (loop != 0)
        m_writer->note(QStringLiteral("the model has no command for a paper loop"), false);
    const Presenter presenter = m_target.profile().presenter();
    const bool isMoved = presenter == Presenter::Custom || presenter == Presenter::Swecoin;
    if (m_options.ticketMove > 0 && !isMoved)
        m_writer->note(QStringLiteral("the model has no command that moves a ticket"), false);
}

void Encoding::encode(const TextPrinterDocument &document, const PrintLayout &layout)
{
    mark(0, 0);
    tellOptionsWithoutEffect(document);
    m_writer->begin(document.doInit());
    m_actions.actOnPrevious(int(document.prevTicketAction()));
    if (m_options.drawer == PrintOptions::Drawer::Before)
        openDrawer();
    for (size_t i = 0; i < layout.rows.size(); ++i)
        printRow(layout, i);
    mark(0, 0);
    m_writer->setPlace(0, 0);
    m_actions.end(int(document.currentTicketAction()), document.retractionTimeout());
    if (m_options.drawer == PrintOptions::Drawer::After)
        openDrawer();
}

}  // namespace

DocumentEncoder::DocumentEncoder(const PrintTarget &target, const PrintOptions &options)
    : m_target(target), m_options(options)
{}

EncodedDocument DocumentEncoder::encode(const TextPrinterDocument &document) const
{
    const SymbologyDrawer codes;
    return encode(document, PrintLayout::of(document, m_target, m_options, codes));
}

EncodedDocument DocumentEncoder::encode(const TextPrinterDocument &document,
                                        const PrintLayout &layout) const
{
    EncodedDocument encoded;
    encoded.notes = layout.notes;
    encoded.error = layout.error;
    if (!encoded.error.isEmpty())
        return encoded;
    constexpr int bytesBeside = 256;
    encoded.bytes.reserve(int(layout.cells.size() + 8 * layout.rows.size()) + bytesBeside);
    Encoding(m_target, m_options, encoded).encode(document, layout);
    return encoded;
}

}  // namespace printerslib::drivers
