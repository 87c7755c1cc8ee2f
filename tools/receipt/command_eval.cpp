#include <QLocale>
#include <algorithm>

#include "commands.h"
#include "printerdocs/expressionevaluator.h"
#include "support.h"
#include "templatelint.h"
#include "terminaltext.h"

namespace {

/// Number of characters that begin in the first bytes of a UTF-8 text.
int charactersIn(const QByteArray &text, int bytes)
{
    const QByteArray part = text.left(bytes);
    return static_cast<int>(std::count_if(part.cbegin(), part.cend(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
}

/// The expression on one line, so that a caret can stand below it.
QString onOneLine(QString expression)
{
    const auto isSpace = [](QChar c) { return c.isSpace(); };
    std::replace_if(expression.begin(), expression.end(), isSpace, QLatin1Char(' '));
    return terminaltext::shown(expression);
}

void complainAbout(const QString &expression, const QByteArray &bytes, int error)
{
    const int position = qMax(1, charactersIn(bytes, error));
    const QByteArray before = onOneLine(QString::fromUtf8(bytes.left(error))).toUtf8();
    const int column = qMax(1, charactersIn(before, before.size()));
    QStringList below{QStringLiteral("  ") + onOneLine(expression),
                      QStringLiteral("  ") + QStringLiteral("^").rightJustified(column)};
    if (const auto function = templatelint::missingFunctionIn(expression))
        below.append(QStringLiteral("there is no function \"%1\": %2")
                         .arg(function->name, function->instead));
    tool::complain(QStringLiteral("wrong at character %1 of the expression").arg(position), below);
}

}  // namespace

int runEval(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Evaluates an arithmetic expression as a template's tags do. One that "
                       "begins with \"-\" stands behind \"--\"."));
    parser.addPositionalArgument(
        QStringLiteral("EXPRESSION"),
        QStringLiteral("Numbers, + - * / % ^, brackets, and functions such as abs, floor, sqrt."));
    if (const auto status = tool::parse(parser, QStringLiteral("eval"), arguments, 1, 1))
        return *status;
    const QString expression = parser.positionalArguments().constFirst();
    const QByteArray bytes = expression.toUtf8();
    int error = 0;
    const double value = te_interp(bytes.constData(), &error);
    if (error != 0) {
        complainAbout(expression, bytes, error);
        return tool::BadInput;
    }
    tool::print(QString::number(value, 'g', QLocale::FloatingPointShortest));
    return tool::Success;
}
