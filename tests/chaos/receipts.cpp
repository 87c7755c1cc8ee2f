#include "receipts.h"

#include <printerslib/drivers/printtarget.h>
#include <printerslib/drivers/streaminterpreter.h>

#include <QCryptographicHash>
#include <QRegularExpression>
#include <random>

#include "printerdocs/documentblock.h"
#include "printerdocs/eprinterticketaction.h"
#include "printerdocs/monochromeimage.h"
#include "printerdocs/textprinterdocument.h"

using namespace printerslib::drivers;

namespace chaos {

namespace {

const QString lineForm = QStringLiteral("J%1 L%2");

QString lineOf(const Receipt &receipt, int number)
{
    constexpr int jobDigits = 5;
    constexpr int lineDigits = 3;
    constexpr int longestRest = 12;
    return lineForm.arg(receipt.job, jobDigits, 10, QLatin1Char('0'))
               .arg(number, lineDigits, 10, QLatin1Char('0')) +
           QLatin1Char(' ') + QString((receipt.job + number) % longestRest, QLatin1Char('x'));
}

/// Dots that no other receipt has.
DocumentBlock pictureOf(const Receipt &receipt, int number)
{
    constexpr int width = 128;
    constexpr int bytesPerRow = width / 8;
    constexpr int byteBits = 0xFF;
    std::mt19937 random(unsigned(receipt.job) * 16U + unsigned(number));
    QByteArray rows;
    for (int i = 0; i < bytesPerRow * receipt.pictureRows; ++i)
        rows.append(char(random() & byteBits));
    DocumentBlock block;
    block.setType(DocumentBlock::BlockImage);
    block.setImg(MonochromeImage(width, receipt.pictureRows, rows));
    return block;
}

TextPrinterDocument documentOf(const Receipt &receipt)
{
    TextPrinterDocument document;
    document.setDoInit(true);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
    const int perPart = receipt.lines / (receipt.pictures + 1) + 1;
    int picture = 0;
    QStringList part;
    for (int number = 1; number <= receipt.lines; ++number) {
        part.append(lineOf(receipt, number));
        if (part.size() < perPart && number < receipt.lines)
            continue;
        document.appendBlock(DocumentBlock::createSimpleBlock(part, AlignLeft, 0, 0, 0, 0));
        part.clear();
        if (picture < receipt.pictures && number < receipt.lines)
            document.appendBlock(pictureOf(receipt, ++picture));
    }
    return document;
}

}  // namespace

QString Receipt::toString() const
{
    return QStringLiteral("%1,%2,%3,%4").arg(job).arg(lines).arg(pictures).arg(pictureRows);
}

Receipt Receipt::fromString(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    return {parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt(),
            parts.value(3).toInt()};
}

EncodedDocument encodedReceipt(const Receipt &receipt, const QString &model)
{
    const auto target = PrintTarget::forModel(model, 0);
    return target ? DocumentEncoder(*target, {}).encode(documentOf(receipt)) : EncodedDocument();
}

QStringList itemsOf(const Paper &paper)
{
    QStringList items;
    for (const Paper::Line &line : paper.lines) {
        QString text;
        for (int i = 0; i < line.cellCount; ++i)
            text.append(QChar(paper.cells.at(line.firstCell + i).character));
        if (!text.trimmed().isEmpty())
            items.append(text.trimmed());
        for (int i = 0; i < line.pictureCount; ++i) {
            const Paper::Picture &picture = paper.pictures.at(line.firstPicture + i);
            constexpr int shownDigits = 8;
            const QByteArray hash =
                QCryptographicHash::hash(picture.rows, QCryptographicHash::Sha256).toHex();
            items.append(QStringLiteral("[%1 x %2 %3]")
                             .arg(picture.size.width())
                             .arg(picture.size.height())
                             .arg(QString::fromLatin1(hash.left(shownDigits))));
        }
    }
    return items;
}

QStringList itemsOf(const Receipt &receipt, const PrinterProfile &profile)
{
    QStringList items;
    const QVector<Paper> papers =
        StreamInterpreter::papersOf(encodedReceipt(receipt, profile.modelId()).bytes, profile);
    for (const Paper &paper : papers)
        items += itemsOf(paper);
    return items;
}

int jobOf(const QString &item)
{
    static const QRegularExpression form(QStringLiteral("\\AJ([0-9]{5})\\b"));
    return form.match(item).captured(1).toInt();
}

bool isFirstLine(const QString &item)
{
    return jobOf(item) != 0 && item.contains(QLatin1String(" L001"));
}

}  // namespace chaos
