// What holds of any bytes that a printer sends.
#include <rapidcheck.h>

#include <QtTest>

#include "answersof.h"

using namespace answersof;

namespace {

QByteArray anyBytes(int most)
{
    const auto bytes = *rc::gen::resize(
        most, rc::gen::container<std::vector<char>>(rc::gen::weightedOneOf<char>(
                  {{1, rc::gen::arbitrary<char>()},
                   {3, rc::gen::elementOf(std::string("\x10\x12\x13\x37\x22\x5f\x23\x06\x15"
                                                      "\x0f\x00",
                                                      11))}})));
    return {bytes.data(), int(bytes.size())};
}

PrinterProfile anyModel()
{
    const QStringList ids = PrinterProfile::modelIds();
    return *PrinterProfile::forModel(ids.at(*rc::gen::inRange(0, ids.size())));
}

void askSome(StatusDialogue &dialogue)
{
    if (*rc::gen::arbitrary<bool>())
        dialogue.askStatus();
    if (*rc::gen::arbitrary<bool>())
        dialogue.ask(StatusQuestion::BufferRead);
    if (*rc::gen::arbitrary<bool>())
        dialogue.ask(StatusQuestion::FullStatus);
    if (*rc::gen::arbitrary<bool>())
        dialogue.askResponse("0042");
}

/// A whole status of a printer that has no paper.
QByteArray paperOut(Dialect dialect)
{
    switch (dialect) {
        case Dialect::StarLine:
            return hex("0f0208000008 00");
        case Dialect::Swecoin:
            return hex("15030001");
        case Dialect::EscPos:
            break;
    }
    return hex("1a32127e");
}

}  // namespace

class TestStatusDialogueLaws : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyByteIsOfAnAnswerOrStray();
    void piecesMakeTheSameAnswers();
    void statusIsFoundBehindRubbishThatWasGivenUp();
    void statusIsFoundRightBehindRubbishWithoutTexts();
    void endlessTextIsNotKept();
};

void TestStatusDialogueLaws::everyByteIsOfAnAnswerOrStray()
{
    const bool holds = rc::check("bytes are answers, flow control or stray", [] {
        StatusDialogue dialogue(anyModel());
        askSome(dialogue);
        const int due = dialogue.expected().size();
        const QByteArray bytes = anyBytes(400);
        qint64 answered = 0;
        int questions = 0;
        for (const StatusAnswer &answer : dialogue.read(bytes)) {
            answered += answer.bytes.size();
            questions += answer.question != StatusQuestion::Text &&
                                 answer.question != StatusQuestion::Automatic &&
                                 answer.question != StatusQuestion::Response
                             ? 1
                             : 0;
        }
        RC_ASSERT(questions <= due);
        const qint64 before = dialogue.strayBytes();
        dialogue.giveUp();
        // What was kept is small.
        RC_ASSERT(dialogue.strayBytes() - before <= 96);
        const qint64 taken = answered + dialogue.strayBytes();
        RC_ASSERT(taken <= bytes.size());
        RC_ASSERT(taken >= bytes.size() - bytes.count('\x11') - bytes.count('\x13'));
    });
    QVERIFY(holds);
}

void TestStatusDialogueLaws::piecesMakeTheSameAnswers()
{
    const bool holds = rc::check("pieces make no difference", [] {
        const PrinterProfile profile = anyModel();
        StatusDialogue whole(profile);
        StatusDialogue pieces(profile);
        whole.askStatus();
        pieces.askStatus();
        const QByteArray bytes = anyBytes(200);
        const QVector<StatusAnswer> expected = whole.read(bytes);
        QVector<StatusAnswer> found;
        for (int at = 0; at < bytes.size();) {
            const int size = *rc::gen::inRange(1, 9);
            found += pieces.read(bytes.mid(at, size));
            at += size;
        }
        RC_ASSERT(found == expected);
        RC_ASSERT(pieces.status() == whole.status());
        RC_ASSERT(pieces.strayBytes() == whole.strayBytes());
        RC_ASSERT(pieces.expected() == whole.expected());
    });
    QVERIFY(holds);
}

void TestStatusDialogueLaws::statusIsFoundBehindRubbishThatWasGivenUp()
{
    const bool holds = rc::check("a status behind rubbish", [] {
        const PrinterProfile profile = anyModel();
        StatusDialogue dialogue(profile);
        askSome(dialogue);
        dialogue.read(anyBytes(200));
        dialogue.giveUp();
        dialogue.askStatus();
        dialogue.read(paperOut(profile.dialect()));
        RC_ASSERT(dialogue.expected().isEmpty());
        RC_ASSERT(dialogue.status().isKnown());
        RC_ASSERT(dialogue.status().has(PrinterStatus::PaperOut));
    });
    QVERIFY(holds);
}

/// Rubbish in which nothing looks like an answer to a question: of ESC/POS no text either.
void TestStatusDialogueLaws::statusIsFoundRightBehindRubbishWithoutTexts()
{
    const bool holds = rc::check("a status right behind rubbish", [] {
        const PrinterProfile profile = anyModel();
        StatusDialogue dialogue(profile);
        dialogue.askStatus();
        QByteArray rubbish;
        for (const char byte : anyBytes(200)) {
            const auto value = quint8(byte);
            const bool isAnswer = profile.dialect() == Dialect::EscPos &&
                                  ((value & 0x13U) == 0x12 || value == 0x37 || value == 0x5F);
            const bool isCode =
                profile.dialect() == Dialect::Swecoin && (value == 0x06 || value == 0x15);
            if (!isAnswer && !isCode)
                rubbish.append(byte);
        }
        dialogue.read(rubbish + paperOut(profile.dialect()));
        RC_ASSERT(dialogue.status().isKnown());
        RC_ASSERT(dialogue.status().has(PrinterStatus::PaperOut));
    });
    QVERIFY(holds);
}

void TestStatusDialogueLaws::endlessTextIsNotKept()
{
    for (const QString &id : PrinterProfile::modelIds()) {
        for (const char *const text : {"_", "7", "7\"", "#", "\x06", "\x15", "\x10"}) {
            StatusDialogue dialogue(*PrinterProfile::forModel(id));
            dialogue.read(QByteArray(text).repeated(100000));
            const qint64 before = dialogue.strayBytes();
            dialogue.giveUp();
            QVERIFY(dialogue.strayBytes() - before <= 96);
        }
    }
}

QTEST_APPLESS_MAIN(TestStatusDialogueLaws)
#include "tst_statusdialogue_laws.moc"
