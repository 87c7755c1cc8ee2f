#pragma once

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

#include "selftestplan.h"

namespace tool {

/// Something that only who sees the paper knows.
struct SelfTestQuestion
{
    QString key;       ///< in a file of answers
    QStringList text;  ///< lines for people, with what the paper should show
};

/// The questions that go with a self test, in the order of the paper.
QVector<SelfTestQuestion> questionsOf(const SelfTestPlan &plan);

/// What answers say of a model, beside what is known of it.
class SelfTestFindings
{
public:
    explicit SelfTestFindings(const SelfTestPlan &plan) : m_plan(plan) {}

    /// Takes the answer to a question that is asked, if it goes together with those before; an
    /// empty one says nothing.
    /// @return what is wrong with it; empty if it was taken
    QString answer(const QString &key, const QString &text);

    /// The facts that are other ones than those of the model's data; empty if none is.
    QJsonObject changes() const;
    /// A file of models that says so.
    /// @param date of the test, for the sources
    static QByteArray fileOf(const QString &model, const QJsonObject &changes, const QString &date);

private:
    friend struct SelfTestReaders;

    std::optional<int> measuredHead() const;
    QString contradiction() const;

    const SelfTestPlan &m_plan;
    QMap<QString, int> m_numbers;  ///< answers from several of which a fact follows
    QJsonObject m_facts;
};

/// The answers of a text: lines "key: answer"; "#" begins a comment.
/// @param error takes the line and what is wrong with it, if the result is false
bool readAnswers(const QString &text, SelfTestFindings &findings,
                 const QVector<SelfTestQuestion> &questions, QString *error);

}  // namespace tool
