// Whatever a printer is sent, its paper is drawn.
#include <rapidcheck.h>

#include <QXmlStreamReader>
#include <QtTest>

#include "previewtools.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/symbologydrawer.h"
#include "printerstreams.h"

using printerslib::drivers::PrinterProfile;
using printerslib::drivers::StreamInterpreter;
using printerslib::drivers::SymbologyDrawer;
using Print = printerslib::drivers::Paper;

namespace {

Layout layoutOf(const QString &model, const QByteArray &stream)
{
    static const SymbologyDrawer codes;
    StreamInterpreter::Options options;
    options.codes = &codes;
    const PrinterProfile profile = *PrinterProfile::forModel(model);
    return Layout(StreamInterpreter::papersOf(stream, profile, options), paperOf(model));
}

QByteArray anyStreamOf(const QString &model)
{
    const PrinterProfile profile = *PrinterProfile::forModel(model);
    QByteArray stream;
    for (int i = *rc::gen::inRange(1, 6); i > 0; --i)
        stream += printerstreams::anyStream(profile.dialect(), profile.vendor());
    return stream;
}

QString anyModel()
{
    return *rc::gen::element(QString("CUSTOM_VKP_80"), QString("CITIZEN_CTS_2000"),
                             QString("GENERAL_EPSON_PROTOCOL"), QString("TSP-TUP"),
                             QString("SWECOIN_TM_20XX"));
}

bool isXml(const QByteArray &text)
{
    QXmlStreamReader reader(text);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

}  // namespace

class TestPreviewStreams : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsStandInOrderAndOnThePaper()
    {
        QVERIFY(rc::check([] {
            const QString model = anyModel();
            const Layout layout = layoutOf(model, anyStreamOf(model));
            int top = 0;
            int reach = 0;
            for (const Row &row : layout.rows()) {
                reach = qMax(reach, row.bottom());
                RC_ASSERT(row.top >= top);
                RC_ASSERT(row.reach == reach);
                RC_ASSERT(row.bottom() <= layout.size().height());
                top = row.top;
                for (int i = row.firstCell; i < row.firstCell + row.cellCount; ++i) {
                    const QRect cell =
                        layout.cellRect(row, layout.cells().at(static_cast<std::size_t>(i)));
                    RC_ASSERT(cell.top() >= row.top && cell.bottom() < row.bottom());
                }
            }
        }));
    }

    void everyStreamIsDrawn()
    {
        QVERIFY(rc::check([] {
            const QString model = anyModel();
            const Layout layout = layoutOf(model, anyStreamOf(model));
            constexpr int mostDots = 20'000;
            RC_PRE(layout.size().height() > 0 && layout.size().height() < mostDots);
            RC_ASSERT(pictureOf(layout).size() == layout.size());
            RC_ASSERT(isXml(written(writeSvg, layout)));
            RC_ASSERT(written(writePdf, layout).startsWith("%PDF"));
        }));
    }
};

QTEST_MAIN(TestPreviewStreams)
#include "tst_preview_streams.moc"
