#pragma once

#include <QLatin1String>
#include <QString>
#include <QStringView>

namespace templates {

// The rules tell how they rewrite a text, so that what belongs to its characters can be kept in
// step. Each is made twice: with NoEdits, which compiles to nothing, and with HeardEdits.

/// Hears of each edit of a text, in their order.
class EditListener
{
public:
    EditListener() = default;
    EditListener(const EditListener &) = delete;
    EditListener &operator=(const EditListener &) = delete;

    /// @param begin    index in the text as the edits before have left it
    /// @param removed  count of the characters from there on that go
    /// @param inserted what comes in their place; valid during the call
    virtual void replaced(int begin, int removed, QStringView inserted) = 0;

protected:
    ~EditListener() = default;
};

/// Nobody hears of the edits.
struct NoEdits
{
    static constexpr bool areHeard = false;
    template <typename Inserted>
    void replace(int, int, const Inserted &) const
    {}
};

class HeardEdits
{
public:
    static constexpr bool areHeard = true;
    explicit HeardEdits(EditListener &listener) : m_listener(&listener) {}
    void replace(int begin, int removed, QStringView inserted) const
    {
        m_listener->replaced(begin, removed, inserted);
    }
    void replace(int begin, int removed, QLatin1String inserted) const
    {
        m_listener->replaced(begin, removed, QString(inserted));
    }

private:
    EditListener *m_listener;
};

}  // namespace templates
