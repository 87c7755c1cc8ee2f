// A line in front changes nothing of what stands below it, whatever the document, its options and
// the model.
#include <rapidcheck.h>

#include "printabledocuments.h"
#include "printedpaper.h"
#include "printerslib/drivers/leadingline.h"

using namespace printedpaper;

namespace {

/// All that is seen on a paper from `top` on, as if it began there.
Seen seenBelow(const Paper &paper, int top)
{
    Paper rest = paper;
    for (Paper::Cell &cell : rest.cells)
        cell.top -= top;
    for (Paper::Picture &picture : rest.pictures)
        picture.place.translate(0, -top);
    for (Paper::Code &code : rest.codes)
        code.place.translate(0, -top);
    rest.cells.erase(std::remove_if(rest.cells.begin(), rest.cells.end(),
                                    [](const Paper::Cell &cell) { return cell.top < 0; }),
                     rest.cells.end());
    for (Paper::Line &line : rest.lines) {
        while (line.pictureCount > 0 && rest.pictures.at(line.firstPicture).place.top() < 0) {
            ++line.firstPicture;
            --line.pictureCount;
        }
    }
    return seenOn(rest);
}

bool hasRows(const EncodedDocument &document)
{
    return std::any_of(document.marks.begin(), document.marks.end(),
                       [](const EncodedDocument::Mark &mark) { return mark.block > 0; });
}

void checkSame(const Paper &made, const Paper &before)
{
    const int shift = made.length - before.length;
    RC_ASSERT(shift > 0);
    const Seen seen = seenBelow(made, shift);
    const Seen wanted = seenOn(before);
    RC_ASSERT(seen.cells.join('\n').toStdString() == wanted.cells.join('\n').toStdString());
    const std::string difference =
        seen.ink == wanted.ink ? std::string() : seen.ink.comparedTo(wanted.ink).toStdString();
    RC_ASSERT(difference == std::string());
}

}  // namespace

class TestLeadingLineLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingBelowChanges_data() { addModels(); }
    void nothingBelowChanges()
    {
        QFETCH(QString, model);
        const PrintTarget to = target(model);
        const bool isKept = rc::check("nothing below changes", [&to] {
            TextPrinterDocument document = *printabledocuments::document();
            document.setPrevTicketAction({});
            const EncodedDocument before = encoded(document, to, printabledocuments::options(to));
            RC_PRE(before.error.isEmpty() && hasRows(before));
            const QString line = *rc::gen::element<QString>(
                "REPEAT", QString::fromUtf8("ПОВТОР"), QString::fromUtf8("Ω≋"), QString(70, 'x'));
            const EncodedDocument made = withLineInFront(before, to, line);
            RC_ASSERT(made.error.isEmpty());
            RC_ASSERT(made.marks.size() == before.marks.size());
            const QVector<Paper> old = papersOf(before.bytes, to.profile());
            const QVector<Paper> papers = papersOf(made.bytes, to.profile());
            RC_ASSERT(papers.size() == old.size());
            checkSame(papers.first(), old.first());
        });
        QVERIFY(isKept);
    }
};

QTEST_APPLESS_MAIN(TestLeadingLineLaws)
#include "tst_leadingline_laws.moc"
