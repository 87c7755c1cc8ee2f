// Allocations per printed line of a receipt of N item lines: counted, not timed, so the times of
// this program mean nothing. Every call of malloc() and its like counts, Qt's and the standard
// library's too.
//
//   plain_text, entries, expressions, html, blocks  the forms of bench_receipt
//   hand_map                                        what the library's interface takes at the least

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>

#include "frame.h"
#include "printerdocs/printerdocumentformatter.h"
#include "receipt/handwritten.h"
#include "receipt/sale.h"

namespace {

std::atomic<long> allocations{0};

}  // namespace

// glibc's own functions behind the ones that are replaced here.
extern "C" {
void *__libc_malloc(size_t size);                // NOLINT(bugprone-reserved-identifier)
void *__libc_calloc(size_t count, size_t size);  // NOLINT(bugprone-reserved-identifier)
void *__libc_realloc(void *old, size_t size);    // NOLINT(bugprone-reserved-identifier)

__attribute__((visibility("default"))) void *malloc(size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}
__attribute__((visibility("default"))) void *calloc(size_t count, size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}
__attribute__((visibility("default"))) void *realloc(void *old, size_t size)
{
    ++allocations;
    return __libc_realloc(old, size);
}
}

namespace {

using receipt::Sale;

/// One way to print a receipt of so many items on so many lines.
void add(const std::string &name, int items, int lines, const std::function<void()> &print)
{
    frame::add(name + '/' + std::to_string(items), [lines, print](benchmark::State &state) {
        long counted = 0;
        for (auto _ : state) {
            const long before = allocations;
            print();
            counted = allocations - before;
        }
        state.counters["per_line"] = static_cast<double>(counted) / lines;
    });
}

using Form = std::function<void(const PrinterDocumentFormatter &, const PrinterDocument &)>;

void addForm(const std::string &name, int items, const QString &text,
             const PrinterDocument &document, const Form &form)
{
    const auto formatter = std::make_shared<PrinterDocumentFormatter>(0, nullptr);
    formatter->setTemplate(text);
    const int lines = formatter->toPlainText(document, receipt::columns).size();
    add(name, items, lines, [formatter, document, form] { form(*formatter, document); });
}

void addForms(int items)
{
    const Sale sale = receipt::makeSale(items);
    const QString text = receipt::indexedTemplate(sale);
    const PrinterDocument document = receipt::indexedDocument(sale);
    const Form toText = [](const auto &formatter, const auto &values) {
        benchmark::DoNotOptimize(formatter.toPlainText(values, receipt::columns));
    };
    addForm("plain_text", items, text, document, toText);
    addForm("entries", items, receipt::entriesTemplate(), receipt::entriesDocument(sale), toText);
    addForm("expressions", items, receipt::expressionTemplate(sale), document, toText);
    addForm("html", items, text, document, [](const auto &formatter, const auto &values) {
        benchmark::DoNotOptimize(formatter.toHtml(values, true));
    });
    addForm("blocks", items, text, document, [](const auto &formatter, const auto &values) {
        benchmark::DoNotOptimize(formatter.toTextPrinterDocument(values));
    });
    const QMap<QString, QVariant> attributes = document.attributes();
    const int lines = receipt::byHandFromMap(attributes, items).size();
    add("hand_map", items, lines, [items, attributes] {
        benchmark::DoNotOptimize(receipt::byHandFromMap(attributes, items));
    });
}

}  // namespace

int main(int argc, char **argv)
{
    frame::setWarnings(false);
    for (const int items : {10, 100, 1000})
        addForms(items);
    return frame::run(argc, argv);
}
