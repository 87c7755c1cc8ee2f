// A realistic receipt of N item lines (10, 100, 1000), formatted by the library and by others that
// print the same text. Warnings of the category "default" are off unless said otherwise.
//
//   indexed              toPlainText(), with an attribute for each value of each item
//   indexed_warnings_on  the same with warnings on and a message handler that does nothing
//   entries              toPlainText(), with the items as entries
//   expressions          toPlainText(), with sums, totals and taxes worked out in the template
//   html                 toHtml() of the indexed form
//   blocks               toTextPrinterDocument() of the indexed form
//   hand_qt              QString appends that print exactly this receipt
//   hand_map             the same from the attributes into a QStringList: the library's own floor
//   grantlee_formats     Grantlee 5, with formats and layout in the template
//   grantlee             Grantlee 5, with values formatted by the host
//   mustache             kainjow mustache, with values formatted by the host
//   ctemplate            ctemplate, with values formatted by the host

#include <memory>

#include "frame.h"
#include "printerdocs/printerdocumentformatter.h"
#include "receipt/handwritten.h"
#include "receipt/sale.h"
#include "receipt/withctemplate.h"
#include "receipt/withgrantlee.h"
#include "receipt/withmustache.h"

namespace {

using receipt::Sale;

/// A template together with the document that fills it, as a client keeps them.
class Job
{
public:
    Job(const QString &text, const PrinterDocument &document)
        : m_formatter(0, nullptr), m_document(document)
    {
        m_formatter.setTemplate(text);
    }
    QStringList print() const { return m_formatter.toPlainText(m_document, receipt::columns); }
    QString html() const { return m_formatter.toHtml(m_document, true); }
    TextPrinterDocument blocks() const { return m_formatter.toTextPrinterDocument(m_document); }

private:
    PrinterDocumentFormatter m_formatter;
    PrinterDocument m_document;
};

struct Indexed : Job
{
    explicit Indexed(const Sale &sale)
        : Job(receipt::indexedTemplate(sale), receipt::indexedDocument(sale))
    {}
};

struct Entries : Job
{
    explicit Entries(const Sale &sale)
        : Job(receipt::entriesTemplate(), receipt::entriesDocument(sale))
    {}
};

struct Expressions : Job
{
    explicit Expressions(const Sale &sale)
        : Job(receipt::expressionTemplate(sale), receipt::indexedDocument(sale))
    {}
};

class HandQt
{
public:
    explicit HandQt(const Sale &sale) : m_sale(sale) {}
    QString print() const { return receipt::byHandFromSale(m_sale); }

private:
    const Sale m_sale;
};

class HandMap
{
public:
    explicit HandMap(const Sale &sale)
        : m_attributes(receipt::indexedDocument(sale).attributes()),
          m_items(static_cast<int>(sale.items.size()))
    {}
    QStringList print() const { return receipt::byHandFromMap(m_attributes, m_items); }

private:
    const QMap<QString, QVariant> m_attributes;
    const int m_items;
};

/// The receipts of one size.
class Receipts
{
public:
    explicit Receipts(int items)
        : m_sale(receipt::makeSale(items)), m_suffix('/' + std::to_string(items))
    {}

    /// A way to print that has to give the same text as all others.
    template <typename Printer>
    void compare(const std::string &name, std::vector<frame::Sameness> &texts) const
    {
        const auto printer = std::make_shared<const Printer>(m_sale);
        texts.push_back({name + m_suffix, receipt::utf8Of(receipt::byHandFromSale(m_sale)),
                         receipt::utf8Of(printer->print())});
        add(name, [printer] { return printer->print(); });
    }

    void addOtherForms() const
    {
        const auto job = std::make_shared<const Indexed>(m_sale);
        add("html", [job] { return job->html(); });
        add("blocks", [job] { return job->blocks(); });
        frame::add("indexed_warnings_on" + m_suffix, [job](benchmark::State &state) {
            frame::setWarnings(true);
            const QtMessageHandler old = qInstallMessageHandler(
                [](QtMsgType, const QMessageLogContext &, const QString &) {});
            for (auto _ : state)
                benchmark::DoNotOptimize(job->print());
            qInstallMessageHandler(old);
            frame::setWarnings(false);
        });
    }

private:
    template <typename Print>
    void add(const std::string &name, Print print) const
    {
        frame::add(name + m_suffix, [print](benchmark::State &state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(print());
        });
    }

    const Sale m_sale;
    const std::string m_suffix;
};

}  // namespace

int main(int argc, char **argv)
{
    frame::setWarnings(false);
    std::vector<frame::Sameness> texts;
    for (const int items : {10, 100, 1000}) {
        const Receipts receipts(items);
        receipts.compare<Indexed>("indexed", texts);
        receipts.compare<Entries>("entries", texts);
        receipts.compare<Expressions>("expressions", texts);
        receipts.compare<HandQt>("hand_qt", texts);
        receipts.compare<HandMap>("hand_map", texts);
        receipts.compare<receipt::WithGrantleeFormats>("grantlee_formats", texts);
        receipts.compare<receipt::WithGrantlee>("grantlee", texts);
        receipts.compare<receipt::WithMustache>("mustache", texts);
        receipts.compare<receipt::WithCtemplate>("ctemplate", texts);
        receipts.addOtherForms();
    }
    return frame::run(argc, argv, texts);
}
