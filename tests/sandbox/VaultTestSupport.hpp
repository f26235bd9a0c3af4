#pragma once
// Shared set-up of the tests that run the element library against the sandbox vault: a fresh
// vault, the library pointed at it, a manual response queue drained while waiting, telemetry
// recorded instead of posted, and a card typed into the four elements of the add-card form.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "Korvane/KorvaneAPI.hpp"
#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/CardVerificationCodeUITextField.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "platform/CurlSession.hpp"
#include "platform/HttpTestSupport.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/testing/RecordingTransport.hpp"
#include "platform/view/TextFieldDriver.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace vault_test {

using korvane::elements::KorvaneElements;

// A transport whose requests give up after a fraction of a second, for servers that stall.
class ImpatientSession final : public platform::HttpSession {
public:
    explicit ImpatientSession(std::chrono::milliseconds timeout) : timeout_(timeout) {}
    std::shared_ptr<platform::DataTask> dataTask(platform::HttpRequest request,
                                                 platform::HttpCompletion completion) override {
        request.timeout = timeout_;
        return inner_.dataTask(std::move(request), std::move(completion));
    }
    void setChallengeHandler(platform::ChallengeHandler handler) override {
        inner_.setChallengeHandler(std::move(handler));
    }
    platform::Executor& delegateQueue() override { return inner_.delegateQueue(); }

private:
    std::chrono::milliseconds timeout_;
    platform::CurlSession inner_;
};

// The data of the card that `Card` types by default, as it reaches the vault.
inline const nlohmann::json kCardData{
    {"number", "4242424242424242"}, {"expiration_month", 12}, {"expiration_year", 2039}, {"cvc", "737"}};

// The card elements of the add-card form, typed in full unless told otherwise.
struct Card {
    std::shared_ptr<korvane::elements::CardNumberUITextField> number =
        std::make_shared<korvane::elements::CardNumberUITextField>();
    std::shared_ptr<korvane::elements::CardExpirationDateUITextField> expiry =
        std::make_shared<korvane::elements::CardExpirationDateUITextField>();
    std::shared_ptr<korvane::elements::CardVerificationCodeUITextField> cvc =
        std::make_shared<korvane::elements::CardVerificationCodeUITextField>();

    explicit Card(std::string_view numberText = "4242 4242 4242 4242", std::string_view expiryText = "1239",
                  std::string_view cvcText = "737") {
        platform::TextFieldDriver(*number).type(numberText);
        platform::TextFieldDriver(*expiry).type(expiryText);
        platform::TextFieldDriver(*cvc).type(cvcText);
        platform::TextFieldDriver(*cvc).leave();
    }

    // {"type": "card", "data": {...}} with the elements in place of the values.
    [[nodiscard]] anycodable::Map body() const {
        using korvane::elements::elementValue;
        anycodable::Map data{{"number", elementValue(number)},
                             {"expiration_month", elementValue(expiry->month())},
                             {"expiration_year", elementValue(expiry->year())},
                             {"cvc", elementValue(cvc)}};
        return anycodable::Map{{"type", "card"}, {"data", std::move(data)}};
    }
};

// What the vault accepted, in full, as clients sent it: the vault itself keeps no bodies.
class Wire {
public:
    [[nodiscard]] tovi::sandbox::SandboxVaultServer::Options observing() {
        tovi::sandbox::SandboxVaultServer::Options options;
        options.observer = [this](const tovi::sandbox::SandboxVaultRequest& r) {
            std::lock_guard lock(mutex_);
            requests_.push_back(r);
        };
        return options;
    }
    [[nodiscard]] std::vector<tovi::sandbox::SandboxVaultRequest> requests() const {
        std::lock_guard lock(mutex_);
        return requests_;
    }
    void clear() {
        std::lock_guard lock(mutex_);
        requests_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::vector<tovi::sandbox::SandboxVaultRequest> requests_;
};

class VaultTest : public ::testing::Test {
protected:
    void SetUp() override {
        korvane::KorvaneAPI::resetForTesting();
        korvane::KorvaneAPI::setApiResponseQueue(queue);
        previousTelemetry = korvane::elements::telemetrySession();
        telemetry->setHandler([](const platform::HttpRequest&) {
            return platform::HttpResult(platform::HttpResponse{202, {}, "", ""});
        });
        korvane::elements::setTelemetrySession(telemetry);
        KorvaneElements::setBasePath(vault.baseUrl());
        KorvaneElements::setApiKey(tovi::sandbox::SandboxVaultServer::kDefaultApiKey);
        KorvaneElements::setHttpSession(nullptr);
    }
    void TearDown() override {
        KorvaneElements::setHttpSession(nullptr);
        KorvaneElements::setApiKey("");
        KorvaneElements::setBasePath(std::string(korvane::KorvaneAPI::kDefaultBasePath));
        korvane::KorvaneAPI::resetForTesting();
        korvane::elements::setTelemetrySession(previousTelemetry);
    }

    // Runs the response queue until `done` holds, for at most 20 s of real time.
    bool waitFor(const std::function<bool()>& done) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (std::chrono::steady_clock::now() < deadline) {
            queue->runUntilIdle();
            if (done()) return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }

    // Every telemetry message, in order, with its attributes.
    [[nodiscard]] std::vector<nlohmann::json> telemetryMessages() const {
        std::vector<nlohmann::json> messages;
        for (const auto& request : telemetry->requests()) messages.push_back(nlohmann::json::parse(request.body));
        return messages;
    }
    // The messages whose text is `message`.
    [[nodiscard]] std::vector<nlohmann::json> telemetryWith(std::string_view message) const {
        std::vector<nlohmann::json> found;
        for (auto& m : telemetryMessages()) {
            // At level "error" the error's text follows the message after ": ".
            const std::string text = m.value("message", "");
            if (text == message || text.starts_with(std::string(message) + ": ")) found.push_back(std::move(m));
        }
        return found;
    }

    Wire wire;
    tovi::sandbox::SandboxVaultServer vault{wire.observing()};
    std::shared_ptr<platform::ManualMainQueue> queue = std::make_shared<platform::ManualMainQueue>();
    std::shared_ptr<platform::RecordingTransport> telemetry = std::make_shared<platform::RecordingTransport>();
    std::shared_ptr<platform::HttpSession> previousTelemetry;
};

// What a completion of a vault call received, and how often it ran.
template <class T>
struct Outcome {
    int calls = 0;
    std::optional<T> value;
    std::optional<korvane::elements::ElementsError> error;

    [[nodiscard]] auto completion() {
        return [this](std::optional<T> v, std::optional<korvane::elements::ElementsError> e) {
            ++calls;
            value = std::move(v);
            error = std::move(e);
        };
    }
};

// What a proxy or HTTP helper completion received; filled on the transport's thread.
struct HttpOutcome {
    std::atomic<int> calls = 0;
    std::optional<platform::HttpResponse> response;
    std::optional<korvane::elements::JSON> tree;
    std::optional<korvane::elements::ElementsError> error;

    [[nodiscard]] KorvaneElements::HttpCompletion completion() {
        return [this](std::optional<platform::HttpResponse> r, std::optional<korvane::elements::JSON> t,
                      std::optional<korvane::elements::ElementsError> e) {
            response = std::move(r);
            tree = std::move(t);
            error = std::move(e);
            ++calls;
        };
    }
};

}  // namespace vault_test
