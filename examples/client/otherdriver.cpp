// Walks over the blocks of a document, as a driver does that isn't the library's: the rows of text
// come laid out for the model's paper, and the rest is up to the driver.
#include <printerslib/drivers/linelayout.h>

#include <QTextStream>

#include "printerdocs/bbcodeparser.h"
#include "printerdocs/echarformat.h"

using namespace printerslib::drivers;

namespace {

/// A character behind the other; those that are bold stand between asterisks.
QString shown(const LaidLine &row)
{
    QString result;
    bool isBold = false;
    for (int i = 0; i < row.text.size(); ++i) {
        if (((row.format.at(i) & CharBold) != 0) != isBold) {
            isBold = !isBold;
            result += '*';
        }
        result += row.text.at(i);
    }
    return isBold ? result + '*' : result;
}

}  // namespace

int main()
{
    const auto target = PrintTarget::forModel("GENERAL_EPSON_PROTOCOL", 0);  // paper 0
    BbCodeParser parser(nullptr);
    parser.setSymbolsPerLine(static_cast<unsigned char>(target->symbolsPerLine()));
    parser.parseText("[center][b]Harbour[/b] Kiosk[/center][barcode]1207[/barcode]");
    const LineLayout layout(*target);
    QTextStream output(stdout);
    const QList<DocumentBlock> blocks = parser.document().blocks();
    for (const DocumentBlock &block : blocks) {
        if (block.isText()) {
            for (const LaidLine &row : layout.rowsOf(block))
                output << shown(row) << '\n';
        } else if (block.isBarcode()) {
            output << "barcode of type " << block.barCodeType() << ": " << block.barcode() << '\n';
        }
    }
}
