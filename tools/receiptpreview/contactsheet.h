#pragma once

#include <QImage>
#include <QString>
#include <vector>

#include "layout.h"
#include "typeface.h"

namespace receiptpreview {

/// Pictures of half the size with titles, side by side. Of a long receipt it shows the upper part.
class ContactSheet
{
public:
    explicit ContactSheet(const Typeface &typeface) : m_typeface(typeface) {}

    void add(const QString &title, const Layout &layout);
    /// The sheet; null if there isn't memory for it.
    QImage image() const;

private:
    std::vector<int> edges() const;

    struct Entry
    {
        QString title;
        QImage picture;
    };

    const Typeface &m_typeface;
    std::vector<Entry> m_entries;
};

}  // namespace receiptpreview
