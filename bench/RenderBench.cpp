// View tree benchmarks: building a balance-like screen of about 300 nodes from the wallet's
// components and rendering it to HTML, the cost a preview or a demo host pays per state change.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <vector>

#include "ToviUI/AlertView.hpp"
#include "ToviUI/ToviActionView.hpp"
#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviButton.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "ToviUI/ToviImage.hpp"
#include "ToviUI/ToviSpacing.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/View.hpp"

namespace {

using namespace platform::view;
using namespace tovi;

constexpr int transactionRows = 22;

Node transactionRow(int i) {
    const auto& ds = ToviDesignSystem::shared();
    Node icon =
        ZStack({Circle().fill(ds.colors.background.item),
                ToviImage{i % 3 == 0 ? ToviImageSource::plus : ToviImageSource::wallet, RenderingMode::templated}
                    .body()
                    .foregroundColor(ds.colors.icons.primary)
                    .frame(20, 20)})
            .frame(40, 40);
    Node texts =
        VStack({Text("Merchant " + std::to_string(i)).font(ds.fonts.body.medium).foregroundColor(ds.colors.text.bold),
                Text("Nov " + std::to_string(1 + i % 28) + ", 2026")
                    .font(ds.fonts.footnote)
                    .foregroundColor(ds.colors.text.secondary)},
               Alignment::leading, 2);
    Node amount = Text((i % 3 == 0 ? "+$" : "-$") + std::to_string(5 + i) + ".25")
                      .font(ds.fonts.body.semibold)
                      .foregroundColor(i % 3 == 0 ? ds.colors.text.positiveTransaction : ds.colors.text.primary);
    return VStack({HStack({icon, texts, Spacer(), amount}, Alignment::center, spacing::s)
                       .padding(Edge::vertical, spacing::s)
                       .accessibilityIdentifier("transaction." + std::to_string(i)),
                   Divider()},
                  Alignment::leading, 0);
}

Node balanceLikeTree() {
    const auto& ds = ToviDesignSystem::shared();
    const auto& c = ds.colors;
    Node header = VStack({Text("Wallet balance").font(ds.fonts.subhead).foregroundColor(Color::white()),
                          Text("$125.50").font(ds.fonts.title.large).foregroundColor(Color::white()),
                          HStack({ToviButton{.label = "Add Funds",
                                             .backgroundColor = Color::white(),
                                             .labelColor = c.text.link,
                                             .onClick = [] {}},
                                  ToviButton{.label = "Auto Reload", .enabled = false, .onClick = [] {}}},
                                 Alignment::center, spacing::s)},
                         Alignment::leading, spacing::s)
                      .padding(spacing::l)
                      .fillWidth(Alignment::leading)
                      .background(ColorView(LinearGradient{{c.brand.primary, c.brand.primary.opacity(0.7)}}));
    std::vector<Node> methods;
    for (auto source : {ToviImageSource::visa, ToviImageSource::masterCard, ToviImageSource::applePay}) {
        methods.push_back(ToviActionView{.icon = ToviImage{source},
                                         .label = std::string(rawValue(source)),
                                         .subtitle = "Ending in 4242",
                                         .onClick = [] {}});
    }
    std::vector<Node> rows;
    for (int i = 0; i < transactionRows; ++i) rows.push_back(transactionRow(i));
    Node content = VStack(
        {header,
         AlertView{{"Earn 5% back", "On every reload", AlertViewType::bonus, AlertShape::upArrow}}.body().padding(
             Edge::horizontal, spacing::m),
         VStack(std::move(methods), Alignment::leading, 0).padding(Edge::horizontal, spacing::m),
         Text("Recent activity").font(ds.fonts.title.smallSemiBold).padding(Edge::horizontal, spacing::m),
         VStack(std::move(rows), Alignment::leading, 0).padding(Edge::horizontal, spacing::m)},
        Alignment::leading, spacing::m);
    return NavigationStack(ScrollView(content)
                               .refreshable([](std::function<void()> done) { done(); })
                               .navigationTitle("Wallet")
                               .navigationBarTitleDisplayMode(TitleDisplayMode::inlined))
        .colorScheme(ColorScheme::light);
}

std::size_t countNodes(const Node& node) {
    std::size_t n = node.isEmpty() ? 0 : 1;
    forEachShownChild(node, [&n](const Node& child) { n += countNodes(child); });
    return n;
}

void BM_RenderBalanceLikeTree(benchmark::State& state) {
    const HtmlOptions options = toviHtmlOptions("Balance");
    std::size_t bytes = 0;
    for (auto _ : state) {
        Node tree = balanceLikeTree();
        std::string html = renderHtml(tree, options);
        bytes = html.size();
        benchmark::DoNotOptimize(html.data());
    }
    state.counters["nodes"] = static_cast<double>(countNodes(balanceLikeTree()));
    state.counters["htmlBytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_RenderBalanceLikeTree)->Unit(benchmark::kMicrosecond);

void BM_BuildBalanceLikeTree(benchmark::State& state) {
    for (auto _ : state) {
        Node tree = balanceLikeTree();
        benchmark::DoNotOptimize(tree);
    }
}
BENCHMARK(BM_BuildBalanceLikeTree)->Unit(benchmark::kMicrosecond);

}  // namespace
