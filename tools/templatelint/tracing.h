#pragma once

#include <functional>

#include "printerdocs/template/textedits_p.h"
#include "text.h"

namespace templatelint {

/// Keeps a text's origins in step while a rule of the engine rewrites its characters. What a rule
/// puts in stands in for the first character that went for it, and comes from nowhere if none did.
class Tracing final : public templates::EditListener
{
public:
    /// Hears of each edit before it is made.
    using Hear = std::function<void(const Text &removed, QStringView inserted)>;

    explicit Tracing(const Text &text, Hear hear = Hear());
    void replaced(int begin, int removed, QStringView inserted) override;
    Text text() const;

private:
    Text part(int begin, int size) const;
    void moveTo(int place);

    const Hear m_hear;
    // Edits lie near each other: in front of their place all is kept as it is, and the rest behind
    // it the wrong way round, so that both grow and shrink at their ends.
    Text m_left;
    Text m_right;
};

/// The text as a rule leaves it, which gets its characters and where to tell the edits.
template <typename Rule>
Text traced(const Text &text, Rule rule, Tracing::Hear hear = Tracing::Hear())
{
    Tracing tracing(text, std::move(hear));
    rule(text.characters, templates::HeardEdits(tracing));
    return tracing.text();
}

}  // namespace templatelint
