#include <QtTest>
#include <random>

#include "printerdocs/template/entries_p.h"
#include "printerdocs/template/printedline_p.h"
#include "printerdocs/template/removal_p.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "printerdocs/template/textedits_p.h"

using namespace templates;

namespace {

/// Makes each edit in a copy of the text that a rule rewrites.
class Replay final : public EditListener
{
public:
    explicit Replay(const QString &text) : m_text(text) {}
    void replaced(int begin, int removed, QStringView inserted) override
    {
        m_isInside = m_isInside && begin >= 0 && removed >= 0 && begin + removed <= m_text.size();
        m_text.replace(begin, removed, inserted.toString());
        ++m_count;
    }
    const QString &text() const { return m_text; }
    int count() const { return m_count; }
    bool isInside() const { return m_isInside; }

private:
    QString m_text;
    int m_count = 0;
    bool m_isInside = true;
};

}  // namespace

// Whoever makes the edits that a rule tells comes by what the rule makes, and to be heard changes
// nothing about that.
class TestTextEdits : public QObject
{
    Q_OBJECT

private:
    static constexpr int runs = 5000;

    static QString valueOf(QStringView tag)
    {
        if (tag == u"ZERO")
            return "0";
        if (tag == u"TAGGED")
            return "<B:>x<NAME>[y<S>";
        return tag == u"EMPTY" ? QString() : "value";
    }

    // Lines made of what means something in a template, put together at random.
    static QString randomLine(std::mt19937 &engine)
    {
        static const QStringList parts{"<",           ">",
                                       "[",           "]",
                                       "<B:>",        "<:B>",
                                       "<B>",         "<W2>",
                                       "<:W2>",       "<S>",
                                       "<C>",         "<R>",
                                       "<L1>",        "<LS2>",
                                       "<:>",         "<65>",
                                       "<#60>",       "<1x>",
                                       "<F2>",        "<F0>",
                                       "<X>",         "<X:>",
                                       "<:X>",        "<I>",
                                       "</I>",        "a",
                                       " text ",      "<ZERO>",
                                       "<NAME>",      "<TAGGED>",
                                       "<EMPTY>",     "<ENTRIES>",
                                       "\n",          "\u0416",
                                       "\u00DF",      "I>",
                                       "X:>",         "<<X:>a<:X>X:>",
                                       "<<I>a</I>I>", "<entr",
                                       "ies>"};
        QString line;
        for (int count = std::uniform_int_distribution<>(0, 12)(engine); count > 0; --count)
            line += parts.at(std::uniform_int_distribution<>(0, parts.size() - 1)(engine));
        return line;
    }

    // @param rule gives a text for a line, heard or not
    template <typename Rule>
    static void compare(Rule rule)
    {
        std::mt19937 engine(1);
        int edits = 0;
        for (int run = 0; run < runs; ++run) {
            const QString line = randomLine(engine);
            Replay replay(line);
            const QString made = rule(line, HeardEdits(replay));
            if (made != replay.text() || made != rule(line, NoEdits()))
                qInfo() << line;
            QCOMPARE(replay.text(), made);
            QCOMPARE(rule(line, NoEdits()), made);
            QVERIFY(replay.isInside());
            edits += replay.count();
        }
        QVERIFY2(edits > runs / 10, qPrintable(QString::number(edits)));
    }

private Q_SLOTS:
    void filling()
    {
        compare([](const QString &line, auto edits) {
            QString value;
            return filledLine(
                line,
                [&value](QStringView tag) {
                    value = valueOf(tag);
                    return QStringView(value);
                },
                edits);
        });
    }

    void markedParts()
    {
        compare([](QString text, auto edits) {
            removeMarkedParts(text, edits);
            return text;
        });
    }

    void images()
    {
        compare([](QString text, auto edits) {
            const bool isLeft = removeImages(text, edits);
            return isLeft || text.isEmpty() ? text : "wrong";
        });
    }

    void markedLines()
    {
        compare([](QString text, auto edits) {
            emptyMarkedLine(text, edits);
            return text;
        });
    }

    // The lines that the entries make of one, put together.
    void entries()
    {
        for (const char *const text : {"", "one", "Cash=10\tChange=2", "a\tlast[\u00DF<ENTR",
                                       "\t<ENTRIES>\tb", "\u00DF\u00DF\u00DF\t\u00DF"}) {
            const Entries unpacked(QString::fromUtf8(text));
            compare([&unpacked](const QString &line, auto edits) {
                QStringList lines;
                unpacked.appendUnpacked(lines, line, edits);
                return lines.join(QString());
            });
        }
    }

    // Formats that stay on from line to line included.
    void markup_data()
    {
        QTest::addColumn<int>("margin");
        QTest::newRow("without a margin") << 0;
        QTest::newRow("with a margin") << 3;
    }
    void markup()
    {
        QFETCH(int, margin);
        for (const unsigned char format : QByteArray("\0\1\xFF", 3)) {
            compare([=](const QString &line, auto edits) {
                CarriedStyle carried{format, 0, AlignLeft};
                return printedLine(line, carried, 0, margin, LineDetail::WithBytes, edits).text;
            });
        }
    }

    // What stands in the place of what: the checker tells by it where things come from.
    void editsOfOneLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("a tag") << "a<NAME>b" << QStringList{"1 6 value"};
        QTest::newRow("a group goes behind its value")
            << "a[<ZERO>]b" << QStringList{"2 6 0", "1 3 "};
        QTest::newRow("no tag") << "a [b] <B>" << QStringList();
        QTest::newRow("a tag of a value")
            << "<TAGGED>" << QStringList{"0 8 <B:>x<NAME>[y<S>", "5 6 value"};
    }
    void editsOfOneLine()
    {
        class List final : public EditListener
        {
        public:
            void replaced(int begin, int removed, QStringView inserted) override
            {
                edits.append(QString("%1 %2 ").arg(begin).arg(removed) + inserted.toString());
            }
            QStringList edits;
        };
        QFETCH(QString, line);
        QFETCH(QStringList, expected);
        List list;
        QString value;
        filledLine(
            line,
            [&value](QStringView tag) {
                value = valueOf(tag);
                return QStringView(value);
            },
            HeardEdits(list));
        QCOMPARE(list.edits, expected);
    }
};

QTEST_GUILESS_MAIN(TestTextEdits)
#include "tst_textedits.moc"
