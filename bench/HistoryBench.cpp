// The transaction history as the balance screen shows a full page: 100 rows built into a view
// tree and rendered to HTML, the cost a preview or a demo host pays each time the list changes.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/TransactionHistoryTable.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/View.hpp"

namespace {

using namespace platform::view;
using namespace tovi;

std::vector<TransactionUiModel> hundredTransactions() {
    std::vector<TransactionUiModel> rows;
    for (int i = 0; i < 100; ++i) {
        rows.push_back({"t" + std::to_string(i), i % 3 == 0 ? "Add Funds" : "Use Funds",
                        "May " + std::to_string(1 + i % 28) + " \u2022 09:32 AM", "$" + std::to_string(5 + i) + ".25",
                        i % 3 == 0});
    }
    return rows;
}

void BM_RenderHistory100(benchmark::State& state) {
    const std::vector<TransactionUiModel> transactions = hundredTransactions();
    const HtmlOptions options = toviHtmlOptions("History");
    for (auto _ : state) {
        Node tree = ScrollView(TransactionHistoryTable{transactions}.body().padding(16));
        std::string html = renderHtml(tree, options);
        benchmark::DoNotOptimize(html.data());
    }
}
BENCHMARK(BM_RenderHistory100)->Unit(benchmark::kMicrosecond);

}  // namespace
