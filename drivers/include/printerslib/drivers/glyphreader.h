#pragma once

#include <memory>

#include "printerslib/drivers/letterreader.h"
#include "printerslib/drivers/printerprofile.h"

namespace printerslib::drivers {

class PageTable;

/// Reads the characters that DocumentEncoder defines in a printer, dot by dot: drawings of others,
/// and special symbols, are not known to it.
///
/// - A drawing without dots is a blank.
/// - Letters of several alphabets may look alike. Only what no code page of the model has is ever
///   defined, so these come first; among them Cyrillic ones, then all others by their codes, ASCII
///   last. The Greek A of a model without Greek and Cyrillic pages is so read as the Cyrillic one.
///
/// Tables are made once for all readers, at their first use. Any thread may call it.
class PRINTERSLIB_DRIVERS_EXPORT GlyphReader : public LetterReader
{
public:
    /// For what is sent to a model.
    explicit GlyphReader(const PrinterProfile &profile);
    ~GlyphReader() override;

    char16_t letterOf(const Paper::Picture &drawing, QSize cell) const override;

private:
    std::shared_ptr<const PageTable> m_pages;
};

}  // namespace printerslib::drivers
