#include "commandsets/commandtext_p.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <iterator>

#include "commandsets/rowbuilder_p.h"

namespace printerslib::drivers {

namespace {

QString grouped(qint64 number)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(number);
}

QString namesOfBytes(const QByteArray &bytes)
{
    QStringList names;
    for (const char byte : bytes)
        names.append(nameOfByte(byte));
    return names.join(QLatin1Char(' '));
}

/// How many of the names from `first` on are the bytes of one number: "p1 p2 p3 p4", "xL xH".
int bytesOfNumber(const QStringList &names, int first)
{
    const QString &name = names.at(first);
    if (name == QLatin1String("p1") && first + 4 <= names.size() &&
        names.at(first + 3) == QLatin1String("p4"))
        return 4;
    if (first + 1 == names.size() || name.size() < 2)
        return 1;
    const QString pair = name.chopped(1) + names.at(first + 1).right(1);
    const bool isPair = pair == names.at(first + 1) &&
                        ((name.endsWith(QLatin1Char('L')) && pair.endsWith(QLatin1Char('H'))) ||
                         (name.endsWith(QLatin1Char('H')) && pair.endsWith(QLatin1Char('L'))));
    return isPair ? 2 : 1;
}

qint64 numberOf(QByteArray bytes, bool isHighFirst)
{
    if (!isHighFirst)
        std::reverse(bytes.begin(), bytes.end());
    qint64 number = 0;
    for (const char byte : qAsConst(bytes))
        number = 256 * number + static_cast<unsigned char>(byte);
    return number;
}

bool isEndedByMark(PayloadRule rule)
{
    return rule == PayloadRule::NulTerminated || rule == PayloadRule::RsTerminated;
}

}  // namespace

QString nameOfByte(char byte)
{
    const auto *const control =
        std::find_if(std::begin(rowbuilder::controlNames), std::end(rowbuilder::controlNames),
                     [byte](const auto &name) { return name.byte == byte; });
    if (control != std::end(rowbuilder::controlNames))
        return QString::fromLatin1(control->name.data(), int(control->name.size()));
    if (byte > ' ' && byte < '\x7F')
        return QChar::fromLatin1(byte);
    return QStringLiteral("0x%1").arg(
        QString::number(static_cast<unsigned char>(byte), 16).toUpper());
}

QString mnemonicOf(const StreamCommand &command)
{
    if (command.kind == StreamCommand::Text)
        return {};
    if (command.row == nullptr)
        return namesOfBytes(command.bytes);
    const bool isFamily = (command.row->traits & CommandRow::Family) != 0;
    if (isFamily)
        return namesOfBytes(command.bytes.left(command.row->introducerSize + 1));
    return QLatin1String(command.row->mnemonic);
}

QVector<QPair<QString, qint64>> operandsOf(const CommandRow &row, const QByteArray &operands)
{
    QVector<QPair<QString, qint64>> found;
    const QStringList names =
        QString::fromLatin1(row.operands).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const bool isFamily = (row.traits & CommandRow::Family) != 0;
    for (int first = isFamily ? 1 : 0; first < names.size();) {
        const int count = bytesOfNumber(names, first);
        if (first + count > operands.size())
            break;
        const QString &name = names.at(first);
        found.append({count == 1 ? name : name.chopped(1),
                      numberOf(operands.mid(first, count), name.endsWith(QLatin1Char('H')))});
        first += count;
    }
    return found;
}

QVector<QPair<QString, qint64>> operandsOf(const StreamCommand &command)
{
    if (command.row == nullptr)
        return {};
    return operandsOf(
        *command.row,
        command.bytes.mid(command.operandsBegin, command.payloadBegin - command.operandsBegin));
}

QByteArray dataOf(const StreamCommand &command)
{
    QByteArray data = command.row == nullptr ? QByteArray() : command.payload();
    const bool hasMark = command.kind == StreamCommand::Command && command.row != nullptr &&
                         isEndedByMark(command.row->payload);
    if (hasMark && !data.isEmpty())
        data.chop(1);
    return data;
}

QString endsInside(const StreamCommand &command)
{
    QString place = QStringLiteral("ends inside %1").arg(mnemonicOf(command));
    const qint64 whole = command.bytesExpected;
    if (command.row == nullptr || whole == 0)
        return place;
    const qint64 dataBegin = command.row->introducerSize + command.row->operandCount;
    const qint64 counted = whole > dataBegin && command.bytes.size() >= dataBegin ? dataBegin : 0;
    return QStringLiteral("%1, %2 of %3")
        .arg(place, grouped(command.bytes.size() - counted), countedBytes(whole - counted));
}

QString countedBytes(qint64 count)
{
    return count == 1 ? QStringLiteral("1 byte") : QStringLiteral("%1 bytes").arg(grouped(count));
}

}  // namespace printerslib::drivers
