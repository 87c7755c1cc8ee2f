#include "printerdocs/printerdocumentformatter.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

#include "log/loghelper.h"
#include "printerdocs/plan/templatelines_p.h"
#include "settings/checktemplatessettings.h"

// The stages of a template's way to a receipt lie in files of their own: _fiscal, _attributes,
// _markup, _pipeline, _output. Their order is behaviour: the engine rewrites a line in place and
// scans its own output again, so a tree of tokens would be prettier and print other receipts.

PrinterDocumentFormatter::PrinterDocumentFormatter(int leftMargin, QObject *parent)
    : QObject(parent),
      m_templateLines(std::make_unique<templates::TemplateLines>()),
      m_specCharsPath(CheckTemplatesSettings().checkTemplatesPath()),
      m_leftMargin(leftMargin)
{}

PrinterDocumentFormatter::~PrinterDocumentFormatter() = default;

void PrinterDocumentFormatter::setTemplate(const QString &text)
{
    m_templateLines->setLines(text.split(QLatin1Char('\n')));
}

QStringList PrinterDocumentFormatter::getTemplate() const
{
    return m_templateLines->lines();
}

bool PrinterDocumentFormatter::loadTemplate(const QString &fileName, const char *codec)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote().nospace() << fileName << logtab << file.errorString();
        return false;
    }
    QStringList lines;
    QTextStream stream(&file);
    stream.setCodec(codec);
    // Not until atEnd(): that never comes for a file that gives fewer bytes than its size says.
    QString line;
    while (stream.readLineInto(&line))
        lines.append(line);
    const bool isByteOrderMark = lines.isEmpty() && file.pos() > 0;
    if (isByteOrderMark)
        lines.append(QString());
    file.close();
    m_templateLines->setLines(lines);
    return isValid();
}

bool PrinterDocumentFormatter::isValid() const
{
    return !m_templateLines->lines().isEmpty();
}

QString PrinterDocumentFormatter::specCharsPath() const
{
    return m_specCharsPath;
}

void PrinterDocumentFormatter::setSpecCharsPath(const QString &path)
{
    m_specCharsPath = path;
}
