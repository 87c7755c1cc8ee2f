// A realistic receipt of N item lines (10, 100, 1000), formatted by the library and by others that
// print the same text. Warnings of the category "default" are off unless said otherwise.
//
//   indexed              toPlainText(), with an attribute for each value of each item
//   indexed_warnings_on  the same with warnings on and a message handler that does nothing
//   indexed_and_lines    the same with warnings off, and the log lines written beside it
//   mixed                the same as indexed with values of mixed kinds; hand_map_mixed is its peer
//   used_once            the same with a formatter of its own for each receipt
//   documents            64 documents of their own values in turn; hand_map_documents is its peer
//   entries              toPlainText(), with the items as entries
//   expressions          toPlainText(), with sums, totals and taxes worked out in the template
//   html                 toHtml() of the indexed form
//   blocks               toTextPrinterDocument() of the indexed form
//   blocks_json          the same, and its JSON by DocumentJson
//   blocks_map_json      the same of its toMap()
//   hand_qt              QString appends that print exactly this receipt
//   hand_qt_json         the same receipt's blocks as JSON, of QJsonObject and QJsonArray
//   hand_map             the same from the attributes into a QStringList: the library's own floor
//   grantlee_formats     Grantlee 5, with formats and layout in the template
//   grantlee             Grantlee 5, with values formatted by the host
//   mustache             kainjow mustache, with values formatted by the host
//   ctemplate            ctemplate, with values formatted by the host

#include <printerslib/drivers/documentjson.h>

#include <QJsonDocument>
#include <QLoggingCategory>
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
    QByteArray json() const { return printerslib::drivers::DocumentJson::toJson(blocks()); }
    QByteArray mapJson() const
    {
        return QJsonDocument::fromVariant(blocks().toMap()).toJson(QJsonDocument::Compact);
    }

private:
    PrinterDocumentFormatter m_formatter;
    PrinterDocument m_document;
};

void throwAway(QtMsgType, const QMessageLogContext &, const QString &) {}

/// Warnings are on, and go to a handler.
class Warnings
{
public:
    explicit Warnings(QtMessageHandler handler)
    {
        frame::setWarnings(true);
        m_old = qInstallMessageHandler(handler);
    }
    ~Warnings()
    {
        qInstallMessageHandler(m_old);
        frame::setWarnings(false);
    }
    Warnings(const Warnings &) = delete;
    Warnings &operator=(const Warnings &) = delete;

private:
    QtMessageHandler m_old = nullptr;
};

/// What a job writes to the log.
QStringList linesOf(const Job &job)
{
    static QStringList lines;
    lines.clear();
    const Warnings warnings(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { lines.append(line); });
    job.print();
    return lines;
}

/// A job whose formatter is made for each receipt.
class JobUsedOnce
{
public:
    JobUsedOnce(const QString &text, const PrinterDocument &document)
        : m_text(text), m_document(document)
    {}
    QStringList print() const { return Job(m_text, m_document).print(); }

private:
    const QString m_text;
    const PrinterDocument m_document;
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
    HandMap(const PrinterDocument &document, const Sale &sale)
        : m_attributes(document.attributes()), m_items(static_cast<int>(sale.items.size()))
    {}
    QStringList print() const { return receipt::byHandFromMap(m_attributes, m_items); }

private:
    const QMap<QString, QVariant> m_attributes;
    const int m_items;
};

/// All ways to print a receipt of one size. They share one map of attributes, so that where its
/// nodes lie in memory is the same for all.
class Receipts
{
public:
    explicit Receipts(int items)
        : m_sale(receipt::makeSale(items)), m_suffix('/' + std::to_string(items))
    {}

    void addOurs()
    {
        const PrinterDocument document = receipt::indexedDocument(m_sale);
        const auto indexed =
            std::make_shared<const Job>(receipt::indexedTemplate(m_sale), document);
        compare("indexed", indexed);
        compare("entries", std::make_shared<const Job>(receipt::entriesTemplate(),
                                                       receipt::entriesDocument(m_sale)));
        compare("expressions",
                std::make_shared<const Job>(receipt::expressionTemplate(m_sale), document));
        compare("hand_map", std::make_shared<const HandMap>(document, m_sale));
        add("html", [indexed] { return indexed->html(); });
        add("blocks", [indexed] { return indexed->blocks(); });
        addJson(indexed);
        addWithWarnings(indexed);
        const PrinterDocument mixed = receipt::mixedDocument(m_sale);
        compare("mixed", std::make_shared<const Job>(receipt::indexedTemplate(m_sale), mixed));
        compare("hand_map_mixed", std::make_shared<const HandMap>(mixed, m_sale));
        compare("used_once",
                std::make_shared<const JobUsedOnce>(receipt::indexedTemplate(m_sale), document));
    }

    void addPeers()
    {
        compare("hand_qt", std::make_shared<const HandQt>(m_sale));
        compare("grantlee_formats", std::make_shared<const receipt::WithGrantleeFormats>(m_sale));
        compare("grantlee", std::make_shared<const receipt::WithGrantlee>(m_sale));
        compare("mustache", std::make_shared<const receipt::WithMustache>(m_sale));
        compare("ctemplate", std::make_shared<const receipt::WithCtemplate>(m_sale));
    }

    /// Documents of their own, as a back office prints them one after the other by one template.
    void addDocuments()
    {
        constexpr unsigned count = 64;
        const auto items = static_cast<int>(m_sale.items.size());
        const auto formatter = std::make_shared<PrinterDocumentFormatter>(0, nullptr);
        formatter->setTemplate(receipt::indexedTemplate(m_sale));
        const auto byUs = [formatter](const PrinterDocument &document) {
            return formatter->toPlainText(document, receipt::columns);
        };
        const auto byHand = [items](const PrinterDocument &document) {
            return receipt::byHandFromMap(document.attributes(), items);
        };
        std::vector<PrinterDocument> documents;
        for (unsigned number = 0; number < count; ++number) {
            const Sale sale = receipt::makeSale(items, number);
            documents.push_back(receipt::mixedDocument(sale));
            compareText("documents", sale, byUs(documents.back()));
            compareText("hand_map_documents", sale, byHand(documents.back()));
        }
        addInTurn("documents", documents, byUs);
        addInTurn("hand_map_documents", documents, byHand);
    }

    /// What is compared with the text of hand_qt.
    const std::vector<frame::Sameness> &texts() const { return m_texts; }

private:
    template <typename Printer>
    void compare(const std::string &name, const std::shared_ptr<const Printer> &printer)
    {
        compareText(name, m_sale, printer->print());
        add(name, [printer] { return printer->print(); });
    }

    template <typename Text>
    void compareText(const std::string &name, const Sale &sale, const Text &text)
    {
        m_texts.push_back({name + m_suffix, receipt::utf8Of(receipt::byHandFromSale(sale)),
                           receipt::utf8Of(text)});
    }

    template <typename Print>
    void addInTurn(const std::string &name, const std::vector<PrinterDocument> &documents,
                   Print print) const
    {
        add(name, [documents, print, next = std::size_t{0}]() mutable {
            next = (next + 1) % documents.size();
            return print(documents[next]);
        });
    }

    void addJson(const std::shared_ptr<const Job> &job)
    {
        const QByteArray byHand = receipt::jsonByHandFromSale(m_sale);
        m_texts.push_back({"blocks_json" + m_suffix, byHand, job->json()});
        m_texts.push_back({"blocks_map_json" + m_suffix, byHand, job->mapJson()});
        add("blocks_json", [job] { return job->json(); });
        add("blocks_map_json", [job] { return job->mapJson(); });
        add("hand_qt_json", [sale = m_sale] { return receipt::jsonByHandFromSale(sale); });
    }

    void addWithWarnings(const std::shared_ptr<const Job> &job) const
    {
        frame::add("indexed_warnings_on" + m_suffix, [job](benchmark::State &state) {
            const Warnings warnings(throwAway);
            for (auto _ : state)
                benchmark::DoNotOptimize(job->print());
        });
        // Of another category, which is on: to switch one at each turn is measured otherwise.
        frame::add("indexed_and_lines" + m_suffix, [job](benchmark::State &state) {
            const QStringList lines = linesOf(*job);
            const QtMessageHandler old = qInstallMessageHandler(throwAway);
            for (auto _ : state) {
                benchmark::DoNotOptimize(job->print());
                for (const QString &line : lines)
                    qt_message_output(QtWarningMsg,
                                      QMessageLogContext(nullptr, 0, nullptr, "benchmark"), line);
            }
            qInstallMessageHandler(old);
        });
    }

    template <typename Print>
    void add(const std::string &name, Print print) const
    {
        frame::add(name + m_suffix, [print](benchmark::State &state) mutable {
            for (auto _ : state)
                benchmark::DoNotOptimize(print());
        });
    }

    const Sale m_sale;
    const std::string m_suffix;
    std::vector<frame::Sameness> m_texts;
};

}  // namespace

int main(int argc, char **argv)
{
    frame::setWarnings(false);
    std::vector<frame::Sameness> texts;
    for (const int items : {10, 100, 1000}) {
        Receipts receipts(items);
        receipts.addOurs();
        receipts.addPeers();
        if (items == 1000)
            receipts.addDocuments();
        texts.insert(texts.end(), receipts.texts().begin(), receipts.texts().end());
    }
    return frame::run(argc, argv, texts);
}
