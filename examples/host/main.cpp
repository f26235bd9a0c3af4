// tovi_host_example: what a host application does with the wallet component.
//
//   tovi_host_example > preview.html
//
// 1. Brands the wallet and writes a preview of its design system (the shared components a
//    screen is made of) as one self-contained HTML page to standard output.
// 2. Starts the embedded sandbox vault, types a card into the secure elements as a customer
//    would and tokenizes it there. The card number never passes through this code: the request
//    body holds the elements, and the library reads their values on the way out.
// Progress and the token id go to standard error; the exit status is 0 once a token came back.

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "ToviUI/AlertView.hpp"
#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviButton.hpp"
#include "ToviUI/ToviErrorView.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "ToviUI/Version.hpp"
#include "platform/MainQueue.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/TextFieldDriver.hpp"
#include "platform/view/View.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace {

using namespace platform::view;
namespace elements = korvane::elements;

Node designPreview(Scope&) {
    using tovi::AlertViewType, tovi::AlertShape;
    return VStack({tovi::AlertView{{.primaryText = "You earned a $5 bonus", .secondaryText = "On your next reload"}},
                   tovi::AlertView{{.primaryText = "Your balance is low",
                                    .alertViewType = AlertViewType::alert,
                                    .alertShape = AlertShape::downArrow}},
                   tovi::ToviButton{.label = "Add Funds"}, tovi::ToviButton{.label = "Add Funds", .isLoading = true},
                   tovi::ToviErrorView{.onRetryClick = [] {}}},
                  Alignment::center, 16)
        .padding(16);
}

// Types a card and tokenizes it; `done` receives the token id, or absent with a message.
void tokenizeCard(std::function<void(std::optional<std::string>)> done) {
    auto number = std::make_shared<elements::CardNumberUITextField>();
    auto expiry = std::make_shared<elements::CardExpirationDateUITextField>();
    platform::TextFieldDriver(*number).type("4242 4242 4242 4242");
    platform::TextFieldDriver(*expiry).type("1239");
    platform::TextFieldDriver(*expiry).leave();

    const anycodable::Map card{{"type", "card"},
                               {"data", anycodable::Map{{"number", elements::elementValue(number)},
                                                        {"expiration_month", elements::elementValue(expiry->month())},
                                                        {"expiration_year", elements::elementValue(expiry->year())}}}};
    elements::KorvaneElements::tokenize(
        card, std::nullopt,
        [done](std::optional<anycodable::AnyCodable> token, std::optional<elements::ElementsError> error) {
            if (error) std::fprintf(stderr, "tokenize failed: %s\n", elements::describe(*error).c_str());
            const auto* map = token ? token->value.get<anycodable::Map>() : nullptr;
            const auto* id = map && map->find("id") ? map->find("id")->get<std::string>() : nullptr;
            done(id ? std::optional<std::string>(*id) : std::nullopt);
        });
}

}  // namespace

int main() {
    std::fprintf(stderr, "%s\n", reinterpret_cast<const char*>(ToviUIVersionString));

    tovi::ToviTheme::set(tovi::BrandColors(Color::hex("#C2410C"), Color::hex("#0F766E")));
    std::fputs(renderHtml(buildOnce(designPreview), tovi::toviHtmlOptions("Host preview")).c_str(), stdout);

    tovi::sandbox::SandboxVaultServer vault;
    elements::setTelemetryEnabled(false);
    elements::KorvaneElements::setBasePath(vault.baseUrl());
    elements::KorvaneElements::setApiKey(tovi::sandbox::SandboxVaultServer::kDefaultApiKey);

    // The library has no loop of its own: elements live on the main queue, and this thread
    // drives it until the vault's answer has arrived (or a generous deadline has passed).
    auto queue = std::make_shared<platform::MainQueue>();
    platform::setMainQueue(queue);
    int status = 1;
    queue->post([&] {
        tokenizeCard([&](std::optional<std::string> tokenId) {
            if (tokenId) std::fprintf(stderr, "token %s\n", tokenId->c_str());
            status = tokenId ? 0 : 1;
            queue->stop();
        });
    });
    queue->postAfter(std::chrono::seconds(30), [&] {
        std::fputs("no answer from the vault\n", stderr);
        queue->stop();
    });
    queue->run();
    platform::setMainQueue(nullptr);
    return status;
}
