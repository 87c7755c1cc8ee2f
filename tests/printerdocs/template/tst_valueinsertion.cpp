#include <QtTest>
#include <random>

#include "hostilenames.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/valueinsertion_p.h"

using hostilenames::Attributes;
using hostilenames::Input;
using templates::KeyTable;
using templates::ValueInsertion;

Q_DECLARE_METATYPE(Input)

// The values in an expression are those of the rule, one name after the other, and no input costs
// much more than that. What is counted are characters that are looked at, not time.
class TestValueInsertion : public QObject
{
    Q_OBJECT

private:
    static QString longest() { return QString("+1").repeated(401); }

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("default.warning=false"); }

    void hostileNamesCostLittleMoreThanTheRule_data()
    {
        QTest::addColumn<Input>("input");
        for (const auto &family : hostilenames::families) {
            for (const int names : {16, 32, 64, 128})
                QTest::addRow("%s of %d", family.name, names) << family.make(names);
        }
    }

    void hostileNamesCostLittleMoreThanTheRule()
    {
        QFETCH(Input, input);
        qint64 byTheLetter = 0;
        const QString expected = hostilenames::insertedByTheLetter(input, &byTheLetter);
        ValueInsertion insertion(input.attributes);
        QCOMPARE(insertion.inserted(input.expression), expected);
        QVERIFY2(insertion.looks() <= 3 * byTheLetter,
                 qPrintable(QString("%1 for %2").arg(insertion.looks()).arg(byTheLetter)));
        const qint64 once = insertion.looks();
        QCOMPARE(insertion.inserted(input.expression), expected);
        QCOMPARE(insertion.looks(), 2 * once);
    }

    // The same names in an expression of a receipt's length, where looking up pays.
    void shortExpressionsOfHostileNames_data()
    {
        QTest::addColumn<Input>("input");
        for (const auto &family : hostilenames::families) {
            for (const int length : {1, 2, 3, 20, 200, 1500}) {
                Input input = family.make(100);
                input.expression.truncate(length);
                QTest::addRow("%s, %d characters", family.name, length) << input;
            }
        }
    }

    void shortExpressionsOfHostileNames()
    {
        QFETCH(Input, input);
        ValueInsertion insertion(input.attributes);
        QCOMPARE(insertion.inserted(input.expression), hostilenames::insertedByTheLetter(input));
        qint64 byTheLetter = 0;
        hostilenames::insertedByTheLetter(input, &byTheLetter);
        constexpr int ofExpression = 1024;
        constexpr int ofName = 16;
        const qint64 lookingUp = ofExpression + ofName * input.attributes.size();
        QVERIFY2(insertion.looks() <= 3 * byTheLetter + 2 * lookingUp,
                 qPrintable(QString("%1 for %2").arg(insertion.looks()).arg(byTheLetter)));
    }

    // Looked up, in their turns, and first the one and then the other.
    void randomNamesAreThoseOfTheRule()
    {
        std::mt19937 engine(20261122);
        const auto below = [&engine](int limit) {
            return std::uniform_int_distribution<>(0, limit - 1)(engine);
        };
        const auto text = [&below](int length) {
            QString result;
            for (; length > 0; --length)
                result += QStringLiteral("AABC1\u0141+").at(below(7));
            return result;
        };
        int inTurn = 0;
        for (int run = 0; run < 3000; ++run) {
            Input input;
            for (int names = below(9); names > 0; --names)
                input.attributes.insert(text(below(5)), text(below(4)));
            input.expression = text(below(run % 10 == 0 ? 3000 : 60));
            ValueInsertion insertion(input.attributes);
            const QString expected = hostilenames::insertedByTheLetter(input);
            const bool fits = expected.size() - input.expression.size() <= 1 << 20;
            QCOMPARE(insertion.inserted(input.expression), fits ? expected : QString());
            inTurn += insertion.looks() > 1024 + 16 * input.attributes.size() ? 1 : 0;
        }
        QVERIFY2(inTurn > 100 && inTurn < 2000, qPrintable(QString::number(inTurn)));
    }

    // A receipt's expressions don't get slower with the number of names.
    void usualNamesAreLookedUp()
    {
        Attributes attributes;
        for (int i = 0; i < 5000; ++i)
            attributes.insert(QString("PRICE%1").arg(i), i);
        ValueInsertion insertion(attributes);
        QCOMPARE(insertion.inserted("PRICE17*PRICE4999-PRICE1"), QString("17*4999-1"));
        QVERIFY2(insertion.looks() < 500, qPrintable(QString::number(insertion.looks())));
    }

    // "AA" stands 1000 times in 2000 letters, not 1999 times.
    void placesThatOverlapCountOnce_data()
    {
        QTest::addColumn<int>("letters");
        QTest::addColumn<bool>("fits");
        QTest::newRow("even") << 2000 << true;
        QTest::newRow("odd") << 2001 << true;
        QTest::newRow("the most that fit") << 2620 << true;
        QTest::newRow("one more") << 2622 << false;
    }

    void placesThatOverlapCountOnce()
    {
        QFETCH(int, letters);
        QFETCH(bool, fits);
        const Attributes attributes{{"AA", longest()}};
        ValueInsertion insertion(attributes);
        const QString expression = '0' + QString(letters, 'A');
        const QString expected = hostilenames::insertedByTheLetter({attributes, expression});
        QCOMPARE(expected.size() - expression.size() <= 1 << 20, fits);
        QCOMPARE(insertion.inserted(expression), fits ? expected : QString());
    }

    void overlappingNamesPrintTheirSum()
    {
        PrinterDocument document;
        document.setAttributes({{"AA", longest()}});
        const PrinterDocumentFormatter formatter(0, nullptr);
        QCOMPARE(formatter.processDocAttributes("<0" + QString(2000, 'A') + ",0>", document),
                 QString("401000"));
    }

    void emptyNameStandsEverywhere_data()
    {
        QTest::addColumn<QString>("expression");
        for (const QString &expression :
             {QString(), QString("1"), QString("12"), QString("3").repeated(5000)})
            QTest::addRow("%d characters", expression.size()) << expression;
    }

    void emptyNameStandsEverywhere()
    {
        QFETCH(QString, expression);
        const Attributes attributes{{"", "0"}, {"12", "7"}};
        ValueInsertion insertion(attributes);
        QCOMPARE(insertion.inserted(expression),
                 hostilenames::insertedByTheLetter({attributes, expression}));
    }

    void noNamesLeaveTheExpression()
    {
        const Attributes attributes;
        ValueInsertion insertion(attributes);
        const QString expression = QString("1+").repeated(10000);
        QCOMPARE(insertion.inserted(expression), expression);
    }

    void namesOfOneHashGiveTheTableUp()
    {
        const Input input = hostilenames::colliding(1000);
        QCOMPARE(input.attributes.size(), 1000);
        const QStringList names = input.attributes.keys();
        const uint hash = qHash(names.first());
        const bool collide = std::all_of(names.cbegin(), names.cend(), [hash](const QString &name) {
            return qHash(name) == hash;
        });
        QVERIFY(collide);
        QVERIFY(KeyTable(input.attributes).isCrowded());
        ValueInsertion insertion(input.attributes);
        QCOMPARE(insertion.inserted(names.at(5) + '+' + names.at(999)), QString("1+1"));
    }

    void usualNamesAreNotCrowded()
    {
        Attributes attributes;
        QVERIFY(!KeyTable(attributes).isCrowded());
        for (int i = 0; i < 20000; ++i)
            attributes.insert(QString("QTY%1").arg(i), i);
        QVERIFY(!KeyTable(attributes).isCrowded());
    }
};

QTEST_GUILESS_MAIN(TestValueInsertion)
#include "tst_valueinsertion.moc"
