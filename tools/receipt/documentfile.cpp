#include "documentfile.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include "dataschema.h"
#include "support.h"
#include "templatefile.h"

namespace {

QVariant dateOf(const QString &text)
{
    const QDate date = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
    return date.isValid() ? QVariant(date) : QVariant();
}

QVariant timeOf(const QString &text)
{
    const auto formats = {QStringLiteral("hh:mm"), QStringLiteral("hh:mm:ss"),
                          QStringLiteral("hh:mm:ss.zzz")};
    for (const QString &format : formats) {
        const QTime time = QTime::fromString(text, format);
        if (time.isValid())
            return time;
    }
    return QVariant();
}

QVariant dateTimeOf(const QString &text)
{
    constexpr int timeMark = 10;  // behind the ten characters of the date
    if (text.size() <= timeMark || text.at(timeMark) != QLatin1Char('T'))
        return QVariant();
    // A time without an offset is printed as written, also one that summer time skips here.
    const QDateTime plain = QDateTime::fromString(text + QLatin1Char('Z'), Qt::ISODateWithMs);
    const QDateTime moment =
        plain.isValid() ? plain : QDateTime::fromString(text, Qt::ISODateWithMs);
    return moment.isValid() ? QVariant(moment) : QVariant();
}

/// A value that JSON has no type for, written as an object with one key.
struct TypedText
{
    const char *key;
    const char *example;
    QVariant (*read)(const QString &text);
};

constexpr TypedText typedTexts[] = {
    {"date", "2026-03-14", dateOf},
    {"time", "18:05:30", timeOf},
    {"datetime", "2026-03-14T18:05:30", dateTimeOf},
};

const TypedText *findTypedText(const QString &key)
{
    for (const TypedText &typed : typedTexts) {
        if (key == QLatin1String(typed.key))
            return &typed;
    }
    return nullptr;
}

class DocumentReader
{
public:
    explicit DocumentReader(const QString &fileName) : m_fileName(fileName) {}

    std::optional<PrinterDocument> read(const QJsonObject &document)
    {
        PrinterDocument result;
        for (auto member = document.begin(); member != document.end(); ++member) {
            if (member.key() == QLatin1String("attributes"))
                result.setAttributes(attributes(member.key(), member.value()));
            else if (member.key() == QLatin1String("entries"))
                result.setEntries(entries(member.key(), member.value()));
            else if (member.key() == QLatin1String("isCopy"))
                result.setIsCopy(copyMark(member.key(), member.value()));
            else
                complain(member.key(),
                         QStringLiteral("unknown key; a document has \"attributes\", \"entries\" "
                                        "and \"isCopy\""));
        }
        return m_good ? std::optional<PrinterDocument>(result) : std::nullopt;
    }

private:
    QMap<QString, QVariant> attributes(const QString &path, const QJsonValue &value)
    {
        if (!value.isObject())
            complain(path, QStringLiteral("an object of names and values is expected"));
        QMap<QString, QVariant> result;
        const QJsonObject members = value.toObject();
        for (auto member = members.begin(); member != members.end(); ++member)
            result.insert(member.key(),
                          attribute(path + QLatin1Char('.') + member.key(), member.value()));
        return result;
    }

    QString entries(const QString &path, const QJsonValue &value)
    {
        if (!value.isString())
            complain(path, QStringLiteral("a text is expected: \"name=value\", separated by tabs"));
        return value.toString();
    }

    bool copyMark(const QString &path, const QJsonValue &value)
    {
        if (!value.isBool())
            complain(path, QStringLiteral("true or false is expected"));
        return value.toBool();
    }

    QVariant attribute(const QString &path, const QJsonValue &value)
    {
        switch (value.type()) {
            case QJsonValue::Bool:
            case QJsonValue::String:
            case QJsonValue::Double:  // toVariant() gives a LongLong for a whole number
                return value.toVariant();
            case QJsonValue::Object:
                return typedText(path, value.toObject());
            default:
                complain(path, QStringLiteral("a number, a text, true, false, or an object with "
                                              "\"date\", \"time\" or \"datetime\" is expected"));
                return QVariant();
        }
    }

    QVariant typedText(const QString &path, const QJsonObject &object)
    {
        const TypedText *typed = object.size() == 1 ? findTypedText(object.begin().key()) : nullptr;
        if (typed == nullptr) {
            complain(path, QStringLiteral("an object with one of \"date\", \"time\" and "
                                          "\"datetime\" is expected"));
            return QVariant();
        }
        const QJsonValue text = object.begin().value();
        QVariant result = typed->read(text.toString());
        if (!result.isValid())
            complain(
                path + QLatin1Char('.') + QLatin1String(typed->key),
                (text.isString() ? QStringLiteral("\"%1\" is none").arg(text.toString())
                                 : QStringLiteral("a text is expected")) +
                    QStringLiteral("; write it like \"%1\"").arg(QLatin1String(typed->example)));
        return result;
    }

    void complain(const QString &path, const QString &what)
    {
        tool::complain(QStringLiteral("%1: %2: %3").arg(m_fileName, path, what));
        m_good = false;
    }

    QString m_fileName;
    bool m_good = true;
};

}  // namespace

namespace tool {

std::optional<QJsonDocument> readDocumentJson(const QString &fileName)
{
    const auto text = readInput(fileName);
    if (!text)
        return std::nullopt;
    const QString content = QString::fromUtf8(*text);
    const bool isBbCode = isBbCodeText(content);
    if ((isBbCode || isTemplateText(content)) && QJsonDocument::fromJson(*text).isNull()) {
        const QString what =
            isBbCode ? QStringLiteral("a text in BBCode") : QStringLiteral("a template");
        complain(QStringLiteral("%1: this is %2, where the JSON of a document is expected")
                     .arg(fileName, what));
        return std::nullopt;
    }
    return jsonOf(fileName, *text);
}

std::optional<PrinterDocument> readDocument(const QString &fileName)
{
    const auto json = readDocumentJson(fileName);
    if (!json)
        return std::nullopt;
    const auto document = documentOf(fileName, *json);
    return document && fitsDataSchema(fileName, *json) ? document : std::nullopt;
}

std::optional<PrinterDocument> documentOf(const QString &fileName, const QJsonDocument &json)
{
    if (!json.isObject()) {
        complain(QStringLiteral("%1: the document is no JSON object").arg(fileName));
        return std::nullopt;
    }
    if (json.object().contains(QStringLiteral("$schema"))) {
        complain(
            QStringLiteral("%1: this is a JSON Schema, where the JSON of a document is expected")
                .arg(fileName));
        return std::nullopt;
    }
    return DocumentReader(fileName).read(json.object());
}

}  // namespace tool
