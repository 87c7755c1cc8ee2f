#pragma once

#include <QImage>
#include <QString>
#include <vector>

#include "layout.h"
#include "typeface.h"

namespace receiptpreview {

/// Pictures of half the size with titles, side by side. Below a title stands how many lines were
/// too long for the paper. Of a very long receipt it shows the upper part, and says where it is
/// cut.
class ContactSheet
{
public:
    explicit ContactSheet(const Typeface &typeface) : m_typeface(typeface) {}

    /// What is shown of a receipt in dots: 75 cm.
    static constexpr int mostDots = 6000;

    void add(const QString &title, const Layout &layout);
    /// The sheet; null if there isn't memory for it.
    QImage image() const;

private:
    struct Entry
    {
        QString title;
        int longLines;
        QImage picture;
    };

    int headHeight() const;
    std::vector<int> edges() const;

    const Typeface &m_typeface;
    std::vector<Entry> m_entries;
};

}  // namespace receiptpreview
