#pragma once
// A scripted wallet client for view model tests.
//
// Every call is recorded by name ("customer.get", "merchant.getCardArtUrls", ...). Its answer
// is fixed when the call arrives (a canned record, or the scripted error) and is posted to the
// call's queue at once, unless the operation is held: then it waits until `release`.

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ToviUI/ToviClient.hpp"
#include "platform/MainQueue.hpp"

namespace tovi::testing {

class ScriptedToviClient final : public ToviClient,
                                 public CustomerManager,
                                 public MerchantManager,
                                 public std::enable_shared_from_this<ScriptedToviClient> {
public:
    struct Call {
        std::string name;
        CancellationToken cancellation;
        bool startedOnMainQueue = false;
    };

    // Canned answers; tests edit them freely.
    ToviSharedCustomer customerRecord;
    ToviSharedMerchant merchantRecord;
    ToviSharedUserReloadConfiguration reloadConfig;
    ToviSharedTransactionResult transactionsRecord;
    std::vector<std::string> cardArtUrls{"https://cdn.example/art.png"};
    std::string apiKey = "key_test";
    ToviSharedPaymentMethod addedPaymentMethod{"pm_new", {"visa", "411111", "1111"}};
    bool sandbox = false;

    std::map<std::string, ToviApiError> errors;  // scripted failures by call name
    std::set<std::string> held;                  // calls that wait for `release`

    // What arrived.
    std::vector<Call> calls;
    std::vector<ToviSharedAddBalanceRequest> addBalanceRequests;
    std::vector<ToviSharedAutoReloadConfigurationRequest> autoReloadRequests;
    std::vector<ToviSharedProvisioningRequest> provisioningRequests;
    std::vector<AddPaymentMethodType> addedTypes;

    bool isSandboxMode() const override { return sandbox; }
    std::shared_ptr<CustomerManager> customer() override { return shared_from_this(); }
    std::shared_ptr<MerchantManager> merchant() override { return shared_from_this(); }

    // Delivers the oldest held call of `name`; false when none waits.
    bool release(const std::string& name) {
        auto& queue = pending_[name];
        if (queue.empty()) return false;
        auto deliver = std::move(queue.front());
        queue.pop_front();
        deliver();
        return true;
    }

    // Forgets held calls without answering them (their completions would keep the view model
    // alive through a cycle).
    void dropPending() { pending_.clear(); }

    [[nodiscard]] std::vector<std::string> callNames() const {
        std::vector<std::string> names;
        for (const auto& call : calls) names.push_back(call.name);
        return names;
    }

    [[nodiscard]] const Call* lastCall(const std::string& name) const {
        for (auto it = calls.rbegin(); it != calls.rend(); ++it) {
            if (it->name == name) return &*it;
        }
        return nullptr;
    }

    void get(std::string, ToviCall call, ToviCompletion<ToviSharedCustomer> done) override {
        answer("customer.get", call, std::move(done), customerRecord);
    }
    void getReloadConfig(std::string, ToviCall call, ToviCompletion<ToviSharedUserReloadConfiguration> done) override {
        answer("customer.getReloadConfig", call, std::move(done), reloadConfig);
    }
    void getTransactions(std::string, std::optional<std::string>, ToviCall call,
                         ToviCompletion<ToviSharedTransactionResult> done) override {
        answer("customer.getTransactions", call, std::move(done), transactionsRecord);
    }
    void addBalance(ToviSharedAddBalanceRequest request, ToviCall call,
                    ToviCompletion<ToviSharedBalanceUpdate> done) override {
        addBalanceRequests.push_back(std::move(request));
        answer("customer.addBalance", call, std::move(done), ToviSharedBalanceUpdate{});
    }
    void addPaymentMethod(std::string, AddPaymentMethodType type, ToviCall call,
                          ToviCompletion<ToviSharedPaymentMethod> done) override {
        addedTypes.push_back(std::move(type));
        answer("customer.addPaymentMethod", call, std::move(done), addedPaymentMethod);
    }
    void createVirtualCard(std::string, ToviCall call, ToviCompletion<ToviSharedVirtualCard> done) override {
        ToviSharedVirtualCard card;
        card.id = "vc_1";
        answer("customer.createVirtualCard", call, std::move(done), card);
    }
    void provisionVirtualCard(ToviSharedProvisioningRequest request, ToviCall call,
                              ToviCompletion<ToviSharedProvisioning> done) override {
        provisioningRequests.push_back(std::move(request));
        answer("customer.provisionVirtualCard", call, std::move(done),
               ToviSharedProvisioning{"cA==", "a2V5", "ZGF0YQ=="});
    }
    void setAutoReloadConfiguration(ToviSharedAutoReloadConfigurationRequest request, ToviCall call,
                                    ToviCompletion<ToviSharedAutoReloadConfiguration> done) override {
        autoReloadRequests.push_back(std::move(request));
        answer("customer.setAutoReloadConfiguration", call, std::move(done), ToviSharedAutoReloadConfiguration{});
    }
    void get(std::string, ToviCall call, ToviCompletion<ToviSharedMerchant> done) override {
        answer("merchant.get", call, std::move(done), merchantRecord);
    }
    void getCardArtUrls(ToviCall call, ToviCompletion<std::vector<std::string>> done) override {
        answer("merchant.getCardArtUrls", call, std::move(done), cardArtUrls);
    }
    void getKorvaneApiKey(std::string, ToviCall call, ToviCompletion<std::string> done) override {
        answer("merchant.getKorvaneApiKey", call, std::move(done), apiKey);
    }

private:
    template <class T>
    void answer(const std::string& name, ToviCall call, ToviCompletion<T> done, T value) {
        calls.push_back({name, call.cancellation, platform::mainQueue().isCurrent()});
        ToviResult<T> result = std::move(value);
        if (auto it = errors.find(name); it != errors.end()) result = platform::failure(it->second);
        auto deliver = [queue = &call.queue, done = std::move(done), result = std::move(result)]() mutable {
            queue->post([done = std::move(done), result = std::move(result)]() mutable { done(std::move(result)); });
        };
        if (held.contains(name)) {
            pending_[name].push_back(std::move(deliver));
        } else {
            deliver();
        }
    }

    std::map<std::string, std::deque<std::move_only_function<void()>>> pending_;
};

}  // namespace tovi::testing
