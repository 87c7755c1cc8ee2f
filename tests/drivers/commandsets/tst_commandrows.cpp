#include <QtTest>

#include "commandsets/commandrow_p.h"

using namespace printerslib::drivers;

namespace {

struct WantedCommands
{
    Dialect dialect;
    Vendor vendor;
    const char *mnemonics;  ///< separated by commas
};

// What the drivers promise to read.
const WantedCommands wantedCommands[] = {
    {Dialect::EscPos, Vendor::General, "LF,CR,HT,FF,CAN"},
    {Dialect::EscPos, Vendor::General,
     "ESC @,ESC !,ESC E,ESC G,ESC -,ESC 4,ESC 5,ESC M,ESC a,ESC d,ESC J,ESC 2,ESC 3,ESC SP,ESC $,"
     "ESC \\,ESC D,ESC t,ESC R,ESC {,ESC V,ESC r,ESC p,ESC *,ESC i,ESC m,ESC u,ESC v,ESC &,ESC %,"
     "ESC ?,ESC c 3,ESC c 4,ESC c 5,ESC =,ESC L,ESC S,ESC W,ESC T,ESC FF"},
    {Dialect::EscPos, Vendor::General,
     "GS !,GS B,GS b,GS V,GS L,GS W,GS P,GS v 0,GS 8 L,GS $,GS \\,GS T,GS E,GS :"},
    {Dialect::EscPos, Vendor::General,
     "GS ( A,GS ( D,GS ( E,GS ( H,GS ( K,GS ( L,GS ( M,GS ( N,GS ( k"},
    {Dialect::EscPos, Vendor::General, "GS k,GS h,GS H,GS w,GS f,GS *,GS /,GS r,GS a,GS I"},
    {Dialect::EscPos, Vendor::General, "DLE EOT,DLE ENQ,DLE DC4"},
    {Dialect::EscPos, Vendor::General, "FS &,FS .,FS C,FS S,FS p,FS ( A"},
    {Dialect::EscPos, Vendor::Custom, "GS e,ESC i,ESC m,GS V"},
    {Dialect::EscPos, Vendor::Citizen, "GS R,ESC i,ESC m,GS V"},
    {Dialect::StarLine, Vendor::Star,
     "ESC GS t,ESC i,ESC E,ESC F,ESC -,ESC _,ESC W,ESC h,ESC d,ESC GS a,ESC GS y S 0,ESC GS y S 1,"
     "ESC GS y S 2,ESC GS y D 1,ESC GS y D 2,ESC GS y P,ESC GS y I,ESC b,ESC k,ESC * r A,"
     "ESC * r B,b,k,BEL,FS,EM,SUB,ESC ACK SOH"},
    {Dialect::Swecoin, Vendor::Swecoin, "RS,ESC RS,ESC FF,EM,ENQ,ESC ENQ"},
};

const struct
{
    Dialect dialect;
    Vendor vendor;
    const char *name;
} variants[] = {
    {Dialect::EscPos, Vendor::General, "ESC/POS"},
    {Dialect::EscPos, Vendor::Epson, "ESC/POS of Epson"},
    {Dialect::EscPos, Vendor::Custom, "ESC/POS of Custom"},
    {Dialect::EscPos, Vendor::Citizen, "ESC/POS of Citizen"},
    {Dialect::StarLine, Vendor::Star, "Star Line Mode"},
    {Dialect::Swecoin, Vendor::Swecoin, "Swecoin"},
};

QByteArray introducerOf(const CommandRow &row)
{
    return {row.introducer, row.introducerSize};
}

QByteArray selectorOf(const CommandRow &row)
{
    return {row.selector, row.selectorSize};
}

QVector<const CommandRow *> rowsNamed(Dialect dialect, Vendor vendor, const QByteArray &mnemonic)
{
    QVector<const CommandRow *> found;
    for (const CommandRow *row : commandsOf(dialect, vendor)) {
        if (row->mnemonic == mnemonic)
            found.append(row);
    }
    return found;
}

void everyVariant()
{
    QTest::addColumn<Dialect>("dialect");
    QTest::addColumn<Vendor>("vendor");
    for (const auto &variant : variants)
        QTest::newRow(variant.name) << variant.dialect << variant.vendor;
}

}  // namespace

Q_DECLARE_METATYPE(printerslib::drivers::Dialect)
Q_DECLARE_METATYPE(printerslib::drivers::Vendor)

class TestCommandRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPromisedCommandHasARow_data();
    void everyPromisedCommandHasARow();
    void introducersAreTheBytesOfTheirMnemonics_data();
    void introducersAreTheBytesOfTheirMnemonics();
    void operandsAreCountedAndLengthsFound_data();
    void operandsAreCountedAndLengthsFound();
    void everyRowSaysWhatItDoesAndWhereItIsFrom_data() { everyVariant(); }
    void everyRowSaysWhatItDoesAndWhereItIsFrom();
    void noTwoRowsStandForTheSameBytes_data() { everyVariant(); }
    void noTwoRowsStandForTheSameBytes();
    void vendorsOwnRowReplacesTheGeneralOne();
    void rowsOfAVendorAreUnknownToOthers();
    void rowIsFoundByItsId();
    void idOfAnotherDialectHasNoRow();
    void gsKHasAllSymbologies();
    void qrCodesHaveAllFunctions();
    void cutsHaveAllForms();
};

void TestCommandRows::everyPromisedCommandHasARow_data()
{
    QTest::addColumn<Dialect>("dialect");
    QTest::addColumn<Vendor>("vendor");
    QTest::addColumn<QByteArray>("mnemonic");
    for (const WantedCommands &wanted : wantedCommands) {
        const QList<QByteArray> mnemonics = QByteArray(wanted.mnemonics).split(',');
        for (const QByteArray &mnemonic : mnemonics)
            QTest::addRow("%s, dialect %d, vendor %d", mnemonic.constData(),
                          static_cast<int>(wanted.dialect), static_cast<int>(wanted.vendor))
                << wanted.dialect << wanted.vendor << mnemonic;
    }
}

void TestCommandRows::everyPromisedCommandHasARow()
{
    QFETCH(Dialect, dialect);
    QFETCH(Vendor, vendor);
    QFETCH(QByteArray, mnemonic);
    QVERIFY(!rowsNamed(dialect, vendor, mnemonic).isEmpty());
}

void TestCommandRows::introducersAreTheBytesOfTheirMnemonics_data()
{
    QTest::addColumn<Dialect>("dialect");
    QTest::addColumn<Vendor>("vendor");
    QTest::addColumn<QByteArray>("mnemonic");
    QTest::addColumn<QByteArray>("hex");
    const auto row = [](Dialect dialect, Vendor vendor, const char *mnemonic, const char *hex) {
        QTest::newRow(mnemonic) << dialect << vendor << QByteArray(mnemonic) << QByteArray(hex);
    };
    row(Dialect::EscPos, Vendor::General, "LF", "0a");
    row(Dialect::EscPos, Vendor::General, "ESC SP", "1b20");
    row(Dialect::EscPos, Vendor::General, "ESC \\", "1b5c");
    row(Dialect::EscPos, Vendor::General, "ESC c 3", "1b6333");
    row(Dialect::EscPos, Vendor::General, "GS v 0", "1d7630");
    row(Dialect::EscPos, Vendor::General, "GS ( k", "1d286b");
    row(Dialect::EscPos, Vendor::General, "GS 8 L", "1d384c");
    row(Dialect::EscPos, Vendor::General, "DLE DC4", "1014");
    row(Dialect::EscPos, Vendor::General, "FS .", "1c2e");
    row(Dialect::EscPos, Vendor::Custom, "GS 0xF8", "1df8");
    row(Dialect::StarLine, Vendor::Star, "ESC GS y S 0", "1b1d795330");
    row(Dialect::StarLine, Vendor::Star, "ESC * r m l", "1b2a726d6c");
    row(Dialect::StarLine, Vendor::Star, "ESC FF NUL", "1b0c00");
    row(Dialect::StarLine, Vendor::Star, "ESC ACK SOH", "1b0601");
    row(Dialect::Swecoin, Vendor::Swecoin, "ESC ENQ", "1b05");
    row(Dialect::Swecoin, Vendor::Swecoin, "EM", "19");
}

void TestCommandRows::introducersAreTheBytesOfTheirMnemonics()
{
    QFETCH(Dialect, dialect);
    QFETCH(Vendor, vendor);
    QFETCH(QByteArray, mnemonic);
    QFETCH(QByteArray, hex);
    const QVector<const CommandRow *> rows = rowsNamed(dialect, vendor, mnemonic);
    QVERIFY(!rows.isEmpty());
    QCOMPARE(introducerOf(*rows.first()).toHex(), hex);
}

void TestCommandRows::operandsAreCountedAndLengthsFound_data()
{
    QTest::addColumn<QByteArray>("mnemonic");
    QTest::addColumn<int>("operandCount");
    QTest::addColumn<int>("lengthAt");
    QTest::newRow("the last two") << QByteArray("ESC *") << 3 << 1;
    QTest::newRow("all four behind a mode") << QByteArray("GS v 0") << 5 << 1;
    QTest::newRow("first, operands behind") << QByteArray("FS ( A") << 4 << 0;
    QTest::newRow("four bytes of length") << QByteArray("GS 8 L") << 14 << 0;
    QTest::newRow("behind a function") << QByteArray("ESC (") << 3 << 1;
    QTest::newRow("none") << QByteArray("ESC @") << 0 << 0;
}

void TestCommandRows::operandsAreCountedAndLengthsFound()
{
    QFETCH(QByteArray, mnemonic);
    QFETCH(int, operandCount);
    QFETCH(int, lengthAt);
    const auto rows = rowsNamed(Dialect::EscPos, Vendor::General, mnemonic);
    QVERIFY(!rows.isEmpty());
    QCOMPARE(int(rows.first()->operandCount), operandCount);
    QCOMPARE(int(rows.first()->lengthAt), lengthAt);
}

void TestCommandRows::everyRowSaysWhatItDoesAndWhereItIsFrom()
{
    QFETCH(Dialect, dialect);
    QFETCH(Vendor, vendor);
    QVERIFY(commandsOf(dialect, vendor).size() > 20);
    for (const CommandRow *row : commandsOf(dialect, vendor)) {
        QVERIFY2(qstrlen(row->meaning) > 0, row->mnemonic);
        QVERIFY2(qstrlen(row->source) > 0, row->mnemonic);
        QVERIFY2(row->selectorAt + row->selectorSize <= row->operandCount, row->mnemonic);
        QVERIFY2(row->payload == PayloadRule::None || row->lengthAt <= row->operandCount,
                 row->mnemonic);
        QVERIFY2(row->vendor == Vendor::General || row->vendor == vendor, row->mnemonic);
    }
}

void TestCommandRows::noTwoRowsStandForTheSameBytes()
{
    QFETCH(Dialect, dialect);
    QFETCH(Vendor, vendor);
    QSet<QByteArray> seen;
    for (const CommandRow *row : commandsOf(dialect, vendor)) {
        const QByteArray key = introducerOf(*row).toHex() + ' ' +
                               QByteArray::number(row->selectorAt) + ' ' + selectorOf(*row).toHex();
        QVERIFY2(!seen.contains(key), key.constData());
        seen.insert(key);
    }
}

void TestCommandRows::vendorsOwnRowReplacesTheGeneralOne()
{
    const auto general = rowsNamed(Dialect::EscPos, Vendor::General, "ESC i");
    const auto custom = rowsNamed(Dialect::EscPos, Vendor::Custom, "ESC i");
    QCOMPARE(general.size(), 1);
    QCOMPARE(custom.size(), 1);
    QCOMPARE(general.first()->id, CommandId::PartialCut);
    QCOMPARE(custom.first()->id, CommandId::FullCut);
}

void TestCommandRows::rowsOfAVendorAreUnknownToOthers()
{
    QVERIFY(rowsNamed(Dialect::EscPos, Vendor::Epson, "GS e").isEmpty());
    QVERIFY(rowsNamed(Dialect::EscPos, Vendor::Citizen, "GS e").isEmpty());
    QVERIFY(rowsNamed(Dialect::EscPos, Vendor::Custom, "GS R").isEmpty());
}

void TestCommandRows::rowIsFoundByItsId()
{
    const CommandRow *row = commandOf(Dialect::StarLine, Vendor::Star, CommandId::StarCut);
    QVERIFY(row != nullptr);
    QCOMPARE(row->mnemonic, "ESC d");
}

void TestCommandRows::idOfAnotherDialectHasNoRow()
{
    QVERIFY(commandOf(Dialect::Swecoin, Vendor::Swecoin, CommandId::RasterBegin) == nullptr);
}

void TestCommandRows::gsKHasAllSymbologies()
{
    QByteArray symbologies;
    for (const CommandRow *row : rowsNamed(Dialect::EscPos, Vendor::General, "GS k"))
        symbologies += selectorOf(*row);
    QCOMPARE(symbologies.toHex(), QByteArray("00010203040506"
                                             "4142434445464748494a4b4c4d4e4f"));
}

void TestCommandRows::qrCodesHaveAllFunctions()
{
    QByteArray functions;
    for (const CommandRow *row : rowsNamed(Dialect::EscPos, Vendor::General, "GS ( k")) {
        if (row->selector[0] == 49)
            functions += row->selector[1];
    }
    QCOMPARE(functions.toHex(), QByteArray("414345505152"));
}

void TestCommandRows::cutsHaveAllForms()
{
    QByteArray forms;
    for (const CommandRow *row : rowsNamed(Dialect::EscPos, Vendor::General, "GS V"))
        forms += selectorOf(*row) + ' ' + QByteArray::number(row->operandCount) + ';';
    QCOMPARE(forms, QByteArray(" 1;A 2;B 2;a 2;b 2;g 2;h 2;"));
}

QTEST_APPLESS_MAIN(TestCommandRows)
#include "tst_commandrows.moc"
