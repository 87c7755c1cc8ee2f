#include <QJsonDocument>
#include <QtTest>

#include "arbitrary.h"
#include "printers/printerinfo.h"

namespace rc {

template <>
struct Arbitrary<FontInfo>
{
    static Gen<FontInfo> arbitrary()
    {
        return gen::build<FontInfo>(
            gen::set(&FontInfo::setId, gen::arbitrary<signed char>()),
            gen::set(&FontInfo::setWidth), gen::set(&FontInfo::setHeight),
            gen::set(&FontInfo::setMwidth), gen::set(&FontInfo::setMheight),
            gen::set(&FontInfo::setMonospace), gen::set(&FontInfo::setCustomSymbols),
            gen::set(&FontInfo::setCustomWidth), gen::set(&FontInfo::setCustomHeight));
    }
};

template <>
struct Arbitrary<PaperInfo>
{
    static Gen<PaperInfo> arbitrary()
    {
        return gen::build<PaperInfo>(
            gen::set(&PaperInfo::setId, gen::arbitrary<signed char>()),
            gen::set(&PaperInfo::setWidth), gen::set(&PaperInfo::setHeight),
            gen::set(&PaperInfo::setPointsToLine), gen::set(&PaperInfo::setCaption));
    }
};

}  // namespace rc

namespace {

using Setter = void (PrinterInfo::*)(bool);

const Setter setters[] = {
    &PrinterInfo::setDoubleWidth,
    &PrinterInfo::setDoubleHeight,
    &PrinterInfo::setBold,
    &PrinterInfo::setItalic,
    &PrinterInfo::setUnderline,
    &PrinterInfo::setInversion,
    &PrinterInfo::setAlignCenter,
    &PrinterInfo::setAlignRight,
    &PrinterInfo::setAlignLeft,
    &PrinterInfo::setAlignJustify,
    &PrinterInfo::setCustomSymbols,
    &PrinterInfo::setCustomImages,
    &PrinterInfo::setLineSpacing,
    &PrinterInfo::setRetraction,
    &PrinterInfo::setEjection,
    &PrinterInfo::setRetractTimeout,
    &PrinterInfo::setPaperLoopSupported,
    &PrinterInfo::setCheckMoveSettingsSupported,
};

/// A record whose fonts and papers have the ids 0 to 7, as the catalogue's have.
PrinterInfo record()
{
    PrinterInfo record;
    record.setId(*rc::gen::arbitrary<QString>());
    record.setName(*rc::gen::arbitrary<QString>());
    record.setInterface(*rc::gen::arbitrary<QString>());
    record.setResolution(*rc::gen::arbitrary<int>());
    for (const Setter setter : setters)
        (record.*setter)(*rc::gen::arbitrary<bool>());
    const int fonts = *rc::gen::inRange(0, 8);
    for (int id = 0; id < fonts; ++id) {
        FontInfo font = *rc::gen::arbitrary<FontInfo>();
        font.setId(static_cast<signed char>(id));
        if (!font.customSymbols()) {
            font.setCustomWidth(0);
            font.setCustomHeight(0);
        }
        record.addFontType(font);
    }
    for (const int id : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8))) {
        PaperInfo paper = *rc::gen::arbitrary<PaperInfo>();
        paper.setId(static_cast<signed char>(id));
        record.addPaperType(paper);
    }
    return record;
}

void keepsButForTwoFields(const PrinterInfo &read, PrinterInfo record)
{
    record.setEjection(false);
    record.setCustomSymbols(record.customImages());
    RC_ASSERT(read == record);
    RC_ASSERT(read.fontTypes() == record.fontTypes());
    RC_ASSERT(read.paperTypes() == record.paperTypes());
}

}  // namespace

class TestPrinterInfoLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fontKeepsThroughItsMapForm()
    {
        VERIFY_LAW([](FontInfo font) {
            FontInfo read;
            read.setMap(font.toMap());
            font.setId(0);
            if (!font.customSymbols()) {
                font.setCustomWidth(0);
                font.setCustomHeight(0);
            }
            RC_ASSERT(read == font);
        });
    }

    void paperKeepsThroughItsMapForm()
    {
        VERIFY_LAW([](PaperInfo paper) {
            PaperInfo read;
            read.setMap(paper.toMap());
            paper.setId(0);
            RC_ASSERT(read == paper);
        });
    }

    void recordKeepsThroughItsMapForm()
    {
        VERIFY_LAW([] {
            const PrinterInfo original = record();
            PrinterInfo read = record();
            read.setMap(original.toMap());
            keepsButForTwoFields(read, original);
        });
    }

    void catalogueKeepsThroughJson()
    {
        VERIFY_LAW([] {
            const int size = *rc::gen::inRange(0, 4);
            QList<PrinterInfo> records;
            QVariantList list;
            for (int i = 0; i < size; ++i) {
                records.append(record());
                list.append(records.last().toMap());
            }
            const auto read = PrinterInfo::fromJson(QJsonDocument::fromVariant(list).toJson());
            RC_ASSERT(read.size() == records.size());
            for (int i = 0; i < size; ++i)
                keepsButForTwoFields(read.at(i), records.at(i));
        });
    }

    void equalRecordsDifferInFontsAndPapersOnly()
    {
        VERIFY_LAW([] {
            const PrinterInfo original = record();
            PrinterInfo other = original;
            other.setFontTypes({});
            other.setPaperTypes({});
            RC_ASSERT(other == original);
            const Setter setter =
                *rc::gen::elementOf(std::vector<Setter>(std::begin(setters), std::end(setters)));
            PrinterInfo on = original;
            (on.*setter)(true);
            PrinterInfo off = original;
            (off.*setter)(false);
            RC_ASSERT(on != off);
            RC_ASSERT((on == original) != (off == original));
        });
    }

    void paperIsThatOfTheNearestIdWithinTheRange()
    {
        VERIFY_LAW([](int id) {
            const PrinterInfo original = record();
            const auto papers = original.paperTypes();
            const PaperInfo paper = original.paperType(id);
            if (papers.isEmpty())
                RC_ASSERT(paper == PaperInfo());
            else if (id >= papers.lastKey())
                RC_ASSERT(paper == papers.last());
            else if (id <= papers.firstKey())
                RC_ASSERT(paper == papers.first());
            else
                RC_ASSERT(paper == papers.value(id));
        });
    }
};

QTEST_APPLESS_MAIN(TestPrinterInfoLaws)
#include "tst_printerinfo_laws.moc"
