#include "till/tillreceipt.h"

#include <random>

#include "printerdocs/eprinterticketaction.h"
#include "printerdocs/printerdocumentformatter.h"
#include "receipt/sale.h"

using namespace printerslib::drivers;

namespace {

PrintTarget counterTarget()
{
    return *PrintTarget::forModel(QStringLiteral("GENERAL_EPSON_PROTOCOL"), 0);
}

}  // namespace

PrinterProfile till::profile()
{
    return counterTarget().profile();
}

int till::itemsOf(int number)
{
    constexpr int most = 40;
    std::minstd_rand random(static_cast<unsigned>(number) + 1);
    random.discard(2);
    const int one = static_cast<int>(random() % most);
    const int other = static_cast<int>(random() % most);
    return 1 + std::min(one, other);
}

EncodedDocument till::receiptOf(int items)
{
    const receipt::Sale sale = receipt::makeSale(items);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(receipt::indexedTemplate(sale));
    TextPrinterDocument document = formatter.toTextPrinterDocument(receipt::indexedDocument(sale));
    document.setDoInit(true);
    document.setCurrentTicketAction(QFlags<EPrinterTicketAction>(TicketActionEveryDocument));
    return DocumentEncoder(counterTarget(), {}).encode(document);
}
