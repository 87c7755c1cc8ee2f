// The shortest way from a template to a receipt.
#include <QTextStream>

#include "printerdocs/printerdocumentformatter.h"

int main()
{
    PrinterDocumentFormatter formatter(0, nullptr);  // blanks in front of each line, parent
    formatter.setTemplate(QStringLiteral("<C><SHOP>\nTotal<S><TOTAL,0.00>"));
    PrinterDocument document;
    document.setAttributes({{"SHOP", "Harbour Kiosk"}, {"TOTAL", 6.65}});
    const QStringList lines = formatter.toPlainText(document, 30);  // characters per line
    for (const QString &line : lines)
        QTextStream(stdout) << line << '\n';
}
