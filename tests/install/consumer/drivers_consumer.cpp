// Calls something of the second library, and of the first through it. Its argument is the version
// that the package states.
#include <QTextStream>

#include <printerslib/drivers/documentcleaner.h>
#include "printerdocs/printerdocumentformatter.h"
#include "printerslib.h"

namespace {

int failures = 0;

void expect(const char *what, const QString &actual, const QString &expected)
{
    if (actual == expected)
        return;
    ++failures;
    QTextStream(stderr) << what << ": " << actual << " instead of " << expected << '\n';
}

}  // namespace

int main(int argc, char *argv[])
{
    using printerslib::drivers::DocumentCleaner;
    PrinterDocument document;
    document.setAttributes({{"NAME", "Tea\nTotal 0.00"}});
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate("<NAME>");
    expect("cleaned",
           formatter.toPlainText(DocumentCleaner::cleanedDocument(document), 20).join('|'),
           "Tea Total 0.00");
    expect("version", PrintersLib::version().version(), argc > 1 ? argv[1] : "a version");
    return failures == 0 ? 0 : 1;
}
