#include <QtConcurrent>
#include <QtTest>
#include <numeric>

#include "printerdocs/echarformat.h"
#include "printerslib/drivers/documentencoder.h"

using namespace printerslib::drivers;

namespace {

constexpr int rounds = 64;

TextPrinterDocument receiptOf(int number)
{
    TextPrinterDocument document;
    const QStringList lines{QStringLiteral("Чек № %1").arg(number),
                            QStringLiteral("Сумма 1 234,50 € ┌─┐ 漢"), QString()};
    for (const int format : {0, int(CharBold), CharDoubleWidth | CharUnderline})
        document.appendBlock(DocumentBlock::createSimpleBlock(
            lines, AlignLeft, 0, static_cast<unsigned char>(format), 1, 0));
    DocumentBlock code;
    code.setQrCode("t=" + QByteArray::number(number));
    document.appendBlock(code);
    code = DocumentBlock();
    code.setBarCode("1234567", static_cast<DocumentBlock::EBarcodeType>(3));
    document.appendBlock(code);
    return document;
}

PrintOptions asPicture(bool isPicture)
{
    PrintOptions options;
    options.isPicture = isPicture;
    options.drawer = PrintOptions::Drawer::After;
    return options;
}

/// What tells one result from another.
QByteArray outline(const EncodedDocument &encoded)
{
    QByteArray text = encoded.bytes + encoded.error.toUtf8() + QByteArray::number(encoded.pieces);
    for (const PrintNote &note : encoded.notes)
        text += note.toString().toUtf8();
    return text;
}

}  // namespace

class TestEncoderThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The first of all: what is made at the first use is made by several threads at once.
    void threadsMayBeginAtOnce()
    {
        const QStringList models = PrinterProfile::modelIds();
        QVector<int> numbers(rounds);
        std::iota(numbers.begin(), numbers.end(), 0);
        QVector<QByteArray> found(rounds);
        QByteArray *const results = found.data();
        QtConcurrent::blockingMap(numbers, [&models, results](int number) {
            results[number] = outline(encoderOf(models, number).encode(receiptOf(number)));
        });
        for (int number = 0; number < rounds; ++number) {
            QVERIFY(!found.at(number).isEmpty());
            QCOMPARE(found.at(number),
                     outline(encoderOf(models, number).encode(receiptOf(number))));
        }
    }

    void threadsMayShareAnEncoder_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &model : PrinterProfile::modelIds())
            QTest::newRow(qPrintable(model)) << model;
    }
    void threadsMayShareAnEncoder()
    {
        QFETCH(QString, model);
        for (const bool isPicture : {false, true}) {
            const DocumentEncoder encoder(*PrintTarget::forModel(model, 0), asPicture(isPicture));
            QVector<int> numbers(rounds);
            std::iota(numbers.begin(), numbers.end(), 0);
            QVector<QByteArray> found(rounds);
            QByteArray *const results = found.data();
            QtConcurrent::blockingMap(numbers, [&encoder, results](int number) {
                results[number] = outline(encoder.encode(receiptOf(number % 8)));
            });
            for (int number = 0; number < rounds; ++number)
                QCOMPARE(found.at(number), outline(encoder.encode(receiptOf(number % 8))));
        }
    }

    void threadsMayShareADocument()
    {
        const TextPrinterDocument document = receiptOf(1);
        const QStringList models = PrinterProfile::modelIds();
        QVector<int> numbers(rounds);
        std::iota(numbers.begin(), numbers.end(), 0);
        QVector<QByteArray> found(rounds);
        QByteArray *const results = found.data();
        QtConcurrent::blockingMap(numbers, [&models, &document, results](int number) {
            results[number] = outline(encoderOf(models, number).encode(document));
        });
        for (int number = 0; number < rounds; ++number)
            QCOMPARE(found.at(number), outline(encoderOf(models, number).encode(document)));
    }

private:
    static DocumentEncoder encoderOf(const QStringList &models, int number)
    {
        const QString model = models.at(number % models.size());
        return {*PrintTarget::forModel(model, 0), asPicture(number / models.size() % 2 == 1)};
    }
};

QTEST_APPLESS_MAIN(TestEncoderThreads)
#include "tst_encoderthreads.moc"
