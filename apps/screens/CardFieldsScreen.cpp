#include "CardFieldsScreen.hpp"

#include <memory>
#include <string>

#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "ToviUI/ToviButton.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/Cancellable.hpp"
#include "platform/view/View.hpp"

namespace tovi::screens {

using namespace platform::view;
namespace kv = korvane::elements;

namespace {

// The three fields of one screen identity and the subscriptions to their events.
struct CardFields {
    std::shared_ptr<kv::CardNumberUITextField> number = std::make_shared<kv::CardNumberUITextField>();
    std::shared_ptr<kv::CardExpirationDateUITextField> expiry = std::make_shared<kv::CardExpirationDateUITextField>();
    std::shared_ptr<kv::CardVerificationCodeUITextField> cvc = std::make_shared<kv::CardVerificationCodeUITextField>();
    platform::CancellableSet subscriptions;

    [[nodiscard]] bool complete() const {
        for (const kv::TextElementUITextField* element : {static_cast<const kv::TextElementUITextField*>(number.get()),
                                                          static_cast<const kv::TextElementUITextField*>(expiry.get()),
                                                          static_cast<const kv::TextElementUITextField*>(cvc.get())}) {
            const kv::ElementMetadata& m = element->metadata();
            if (m.empty || !m.complete || !m.valid) return false;
        }
        return true;
    }

    [[nodiscard]] anycodable::Map body() const {
        anycodable::Map data{{"number", kv::elementValue(number)},
                             {"expiration_month", kv::elementValue(expiry->month())},
                             {"expiration_year", kv::elementValue(expiry->year())},
                             {"cvc", kv::elementValue(cvc)}};
        return anycodable::Map{{"type", "card"}, {"data", std::move(data)}};
    }
};

Node field(const std::shared_ptr<platform::TextField>& element, std::string id, std::string label,
           std::string placeholder, const std::string& state) {
    const auto& ds = ToviDesignSystem::shared();
    return VStack({HStack({Text(std::move(label)).font(ds.fonts.body.semibold), Spacer(),
                           Text(state).font(ds.fonts.footnote).foregroundColor(ds.colors.text.secondary)}),
                   HostedTextField(element, std::move(placeholder))
                       .accessibilityIdentifier(std::move(id))
                       .padding(12)
                       .background(RoundedRectangle(8).stroke(ds.colors.borders.generic, 1))},
                  Alignment::leading, 4);
}

std::string flags(const kv::ElementMetadata& m) {
    if (m.empty) return "empty";
    return std::string(m.complete ? "complete" : "incomplete") + (m.valid ? "" : ", invalid");
}

}  // namespace

Body cardFieldsScreen(SandboxEnvironment& environment) {
    return [&environment](Scope& s) {
        // Bumped by every element event, so that the flags shown follow the fields.
        auto revision = s.state("revision", 0);
        auto status = s.state("status", std::string("Type a card, then tokenize it."));
        auto busy = s.state("busy", false);
        auto fields = s.stateObject<CardFields>("fields", [revision] {
            auto made = std::make_shared<CardFields>();
            made->cvc->setConfig(kv::CardVerificationCodeOptions{.cardNumberUITextField = made->number});
            for (kv::TextElementUITextField* element : {static_cast<kv::TextElementUITextField*>(made->number.get()),
                                                        static_cast<kv::TextElementUITextField*>(made->expiry.get()),
                                                        static_cast<kv::TextElementUITextField*>(made->cvc.get())}) {
                element->subject()
                    .publisher()
                    .sink([revision](const kv::ElementEvent&) { revision.set(revision.get() + 1); })
                    .store(made->subscriptions);
            }
            return made;
        });
        const auto& ds = ToviDesignSystem::shared();
        const kv::CardMetadata& card = fields->number->cardMetadata();
        std::string numberState = flags(fields->number->metadata());
        if (card.cardBrand != "unknown") numberState = card.cardBrand + ", " + numberState;
        if (card.cardLast4) numberState += " •••• " + *card.cardLast4;

        auto tokenize = [fields, status, busy, &environment] {
            busy.set(true);
            status.set("Tokenizing…");
            kv::KorvaneElements::tokenize(
                fields->body(), environment.vaultApiKey(),
                [status, busy](std::optional<anycodable::AnyCodable> token, std::optional<kv::ElementsError> error) {
                    busy.set(false);
                    if (error || !token) {
                        status.set("The vault refused the card: " + (error ? kv::describe(*error) : "no answer"));
                        return;
                    }
                    const auto* map = token->value.get<anycodable::Map>();
                    const auto* id = map != nullptr ? map->find("id") : nullptr;
                    const auto* text = id != nullptr ? id->get<std::string>() : nullptr;
                    status.set(text != nullptr ? "Token " + *text : std::string("The vault answered without an id"));
                });
        };
        return ScrollView(
            VStack(
                {Text("Card").font(ds.fonts.title.medium).foregroundColor(ds.colors.text.bold),
                 field(fields->number, "cardNumber", "Number", "4242 4242 4242 4242", numberState),
                 field(fields->expiry, "expiry", "Expiry", "MM/YY", flags(fields->expiry->metadata())),
                 field(fields->cvc, "cvc", "Security code", "CVC", flags(fields->cvc->metadata())),
                 ToviButton{
                     .label = "Tokenize", .enabled = fields->complete(), .isLoading = busy.get(), .onClick = tokenize},
                 Text(status.get())
                     .font(ds.fonts.body.medium)
                     .foregroundColor(ds.colors.text.primary)
                     .accessibilityIdentifier("status")},
                Alignment::leading, 16)
                .padding(20));
    };
}

}  // namespace tovi::screens
