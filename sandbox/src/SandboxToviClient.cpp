#include "sandbox/SandboxToviClient.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "SandboxBackend.hpp"
#include "platform/ThreadPool.hpp"

namespace tovi::sandbox {

namespace {

using internal::SandboxBackend;

class SandboxCustomerManager final : public CustomerManager {
public:
    explicit SandboxCustomerManager(std::shared_ptr<SandboxBackend> backend) : backend_(std::move(backend)) {}

    void get(std::string customerId, ToviCall call, ToviCompletion<ToviSharedCustomer> completion) override {
        backend_->getCustomer(std::move(customerId), call, std::move(completion));
    }
    void getReloadConfig(std::string customerId, ToviCall call,
                         ToviCompletion<ToviSharedUserReloadConfiguration> completion) override {
        backend_->getReloadConfig(std::move(customerId), call, std::move(completion));
    }
    void getTransactions(std::string customerId, std::optional<std::string>, ToviCall call,
                         ToviCompletion<ToviSharedTransactionResult> completion) override {
        // One page holds the whole history, so a cursor has nothing to select.
        backend_->getTransactions(std::move(customerId), call, std::move(completion));
    }
    void addBalance(ToviSharedAddBalanceRequest request, ToviCall call,
                    ToviCompletion<ToviSharedBalanceUpdate> completion) override {
        backend_->addBalance(std::move(request), call, std::move(completion));
    }
    void addPaymentMethod(std::string customerId, AddPaymentMethodType type, ToviCall call,
                          ToviCompletion<ToviSharedPaymentMethod> completion) override {
        backend_->addPaymentMethod(std::move(customerId), std::move(type), call, std::move(completion));
    }
    void createVirtualCard(std::string customerId, ToviCall call,
                           ToviCompletion<ToviSharedVirtualCard> completion) override {
        backend_->createVirtualCard(std::move(customerId), call, std::move(completion));
    }
    void provisionVirtualCard(ToviSharedProvisioningRequest request, ToviCall call,
                              ToviCompletion<ToviSharedProvisioning> completion) override {
        backend_->provisionVirtualCard(std::move(request), call, std::move(completion));
    }
    void setAutoReloadConfiguration(ToviSharedAutoReloadConfigurationRequest request, ToviCall call,
                                    ToviCompletion<ToviSharedAutoReloadConfiguration> completion) override {
        backend_->setAutoReloadConfiguration(std::move(request), call, std::move(completion));
    }

private:
    std::shared_ptr<SandboxBackend> backend_;
};

class SandboxMerchantManager final : public MerchantManager {
public:
    explicit SandboxMerchantManager(std::shared_ptr<SandboxBackend> backend) : backend_(std::move(backend)) {}

    void get(std::string merchantId, ToviCall call, ToviCompletion<ToviSharedMerchant> completion) override {
        backend_->getMerchant(std::move(merchantId), call, std::move(completion));
    }
    void getCardArtUrls(ToviCall call, ToviCompletion<std::vector<std::string>> completion) override {
        backend_->getCardArtUrls(call, std::move(completion));
    }
    void getKorvaneApiKey(std::string merchantId, ToviCall call, ToviCompletion<std::string> completion) override {
        backend_->getKorvaneApiKey(std::move(merchantId), call, std::move(completion));
    }

private:
    std::shared_ptr<SandboxBackend> backend_;
};

constexpr std::array<std::string_view, kSandboxOperationCount> kOperationNames{
    "getCustomer",      "getReloadConfig",   "getTransactions",      "addBalance",
    "addPaymentMethod", "createVirtualCard", "provisionVirtualCard", "setAutoReloadConfiguration",
    "getMerchant",      "getCardArtUrls",    "getKorvaneApiKey",
};

}  // namespace

std::string_view operationName(SandboxOperation operation) {
    return kOperationNames.at(static_cast<std::size_t>(operation));
}

std::optional<SandboxOperation> operationNamed(std::string_view name) {
    const auto found = std::ranges::find(kOperationNames, name);
    if (found == kOperationNames.end()) return std::nullopt;
    return static_cast<SandboxOperation>(found - kOperationNames.begin());
}

std::shared_ptr<SandboxToviClient> SandboxToviClient::create(Options options) {
    platform::Executor& timers = options.timers != nullptr ? *options.timers : platform::backgroundPool();
    auto customerId = options.seed.customerId;
    auto merchantId = options.seed.merchantId;
    auto backend = std::make_shared<SandboxBackend>(std::move(options.seed), timers, std::move(options.vault));
    return std::shared_ptr<SandboxToviClient>(
        new SandboxToviClient(std::move(backend), std::move(customerId), std::move(merchantId)));
}

SandboxToviClient::SandboxToviClient(std::shared_ptr<internal::SandboxBackend> backend, std::string customerId,
                                     std::string merchantId)
    : backend_(std::move(backend)), customerId_(std::move(customerId)), merchantId_(std::move(merchantId)) {}

std::shared_ptr<CustomerManager> SandboxToviClient::customer() {
    return std::make_shared<SandboxCustomerManager>(backend_);
}

std::shared_ptr<MerchantManager> SandboxToviClient::merchant() {
    return std::make_shared<SandboxMerchantManager>(backend_);
}

void SandboxToviClient::setLatency(SandboxOperation operation, std::chrono::milliseconds latency) {
    backend_->setLatency(operation, latency);
}

void SandboxToviClient::setLatencyForAll(std::chrono::milliseconds latency) {
    backend_->setLatencyForAll(latency);
}

void SandboxToviClient::failNext(SandboxOperation operation, std::string humanReadableMessage, int times) {
    backend_->setFailure(operation, std::move(humanReadableMessage), times < 1 ? 0 : times);
}

void SandboxToviClient::failAlways(SandboxOperation operation, std::string humanReadableMessage) {
    backend_->setFailure(operation, std::move(humanReadableMessage), -1);
}

void SandboxToviClient::clearFailures(SandboxOperation operation) {
    backend_->clearFailures(operation);
}
void SandboxToviClient::clearAllFailures() {
    backend_->clearAllFailures();
}
ToviSharedCustomer SandboxToviClient::customerSnapshot() const {
    return backend_->customerSnapshot();
}
std::vector<ToviSharedTransaction> SandboxToviClient::transactionsSnapshot() const {
    return backend_->transactionsSnapshot();
}
ToviSharedMerchant SandboxToviClient::merchantSnapshot() const {
    return backend_->merchantSnapshot();
}
std::vector<SandboxEvent> SandboxToviClient::events() const {
    return backend_->events();
}
void SandboxToviClient::clearEvents() {
    backend_->clearEvents();
}

}  // namespace tovi::sandbox
