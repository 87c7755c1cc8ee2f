#include "printerdocs/printerdocumentformatter.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

#include "log/loghelper.h"
#include "settings/checktemplatessettings.h"

// The stages of a template's way to a receipt lie in files of their own: _fiscal, _attributes,
// _markup, _pipeline, _output. Their order is behaviour: the engine rewrites a line in place and
// scans its own output again, so a tree of tokens would be prettier and print other receipts.

PrinterDocumentFormatter::PrinterDocumentFormatter(int leftMargin, QObject *parent)
    : QObject(parent),
      m_specCharsPath(CheckTemplatesSettings().checkTemplatesPath()),
      m_leftMargin(leftMargin)
{}

PrinterDocumentFormatter::~PrinterDocumentFormatter() = default;

void PrinterDocumentFormatter::setTemplate(const QString &text)
{
    m_templateLines = text.split(QLatin1Char('\n'));
}

QStringList PrinterDocumentFormatter::getTemplate() const
{
    return m_templateLines;
}

bool PrinterDocumentFormatter::loadTemplate(const QString &fileName, const char *codec)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote().nospace() << fileName << logtab << file.errorString();
        return false;
    }
    m_templateLines.clear();
    QTextStream stream(&file);
    stream.setCodec(codec);
    // Not until atEnd(): that never comes for a file that gives fewer bytes than its size says.
    QString line;
    while (stream.readLineInto(&line))
        m_templateLines.append(line);
    const bool isByteOrderMark = m_templateLines.isEmpty() && file.pos() > 0;
    if (isByteOrderMark)
        m_templateLines.append(QString());
    file.close();
    return isValid();
}

bool PrinterDocumentFormatter::isValid() const
{
    return !m_templateLines.isEmpty();
}

QString PrinterDocumentFormatter::specCharsPath() const
{
    return m_specCharsPath;
}

void PrinterDocumentFormatter::setSpecCharsPath(const QString &path)
{
    m_specCharsPath = path;
}
