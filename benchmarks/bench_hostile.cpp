// Names, values and expressions that somebody chose to make an expression slow, against the rule of
// expressions as its letter says it: each name in its turn, the longest first, is replaced by its
// value. Both sides fill one tag of a line. N names have an expression of 100 times N characters.
//
//   <family>/N                the library
//   <family>_by_the_letter/N  the letter

#include "frame.h"
#include "hostilenames.h"
#include "printerdocs/expressionevaluator.h"
#include "printerdocs/printerdocumentformatter.h"

namespace {

constexpr int sizes[] = {125, 250, 500, 1000};
constexpr int slowRepetitions = 5;

/// A line with one tag, and the document that fills it.
class Ours
{
public:
    explicit Ours(const hostilenames::Input &input)
        : m_line('<' + input.expression + QLatin1String(",0>"))
    {
        m_document.setAttributes(input.attributes);
    }
    QString text() const { return m_formatter.processDocAttributes(m_line, m_document); }

private:
    const PrinterDocumentFormatter m_formatter{0, nullptr};
    const QString m_line;
    PrinterDocument m_document;
};

class ByTheLetter
{
public:
    explicit ByTheLetter(const hostilenames::Input &input) : m_input(input) {}
    QString text() const
    {
        const QByteArray expression = hostilenames::insertedByTheLetter(m_input).toUtf8();
        int error = 0;
        const double value = te_interp(expression.constData(), &error);
        return error == 0 ? m_formatter.floatToString(QStringLiteral("0"), value) : QString();
    }

private:
    const PrinterDocumentFormatter m_formatter{0, nullptr};
    const hostilenames::Input m_input;
};

template <typename Side>
void addSide(const std::string &name, const hostilenames::Family &family, int names,
             int repetitions)
{
    frame::add(name + '/' + std::to_string(names), [family, names](benchmark::State &state) {
        const Side side(family.make(names));
        for (auto _ : state)
            benchmark::DoNotOptimize(side.text());
    })->Repetitions(repetitions);
}

}  // namespace

int main(int argc, char **argv)
{
    const int repetitions = frame::repetitions(argc, argv, slowRepetitions);
    frame::setWarnings(false);
    std::vector<frame::Sameness> texts;
    for (const auto &family : hostilenames::families) {
        for (const int names : sizes) {
            addSide<Ours>(family.name, family, names, repetitions);
            addSide<ByTheLetter>(std::string(family.name) + "_by_the_letter", family, names,
                                 repetitions);
        }
        const auto input = family.make(sizes[0]);
        texts.push_back(
            {family.name, ByTheLetter(input).text().toUtf8(), Ours(input).text().toUtf8()});
    }
    return frame::run(argc, argv, texts);
}
