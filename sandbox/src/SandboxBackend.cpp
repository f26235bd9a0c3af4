#include "SandboxBackend.hpp"

#include <fmt/format.h>

#include <utility>

#include "SandboxBackendRun.hpp"

namespace tovi::sandbox::internal {

SandboxBackend::SandboxBackend(SandboxSeed seed, platform::Executor& timers, std::shared_ptr<SandboxCardVault> vault)
    : timers_(timers), vault_(std::move(vault)), state_(std::move(seed)), random_(std::random_device{}()) {}

// --- scripting and inspection --------------------------------------------------------------

void SandboxBackend::setLatency(SandboxOperation operation, std::chrono::milliseconds latency) {
    std::lock_guard lock(mutex_);
    latency_[indexOf(operation)] = latency;
}

void SandboxBackend::setLatencyForAll(std::chrono::milliseconds latency) {
    std::lock_guard lock(mutex_);
    latency_.fill(latency);
}

void SandboxBackend::setFailure(SandboxOperation operation, std::string message, int times) {
    std::lock_guard lock(mutex_);
    if (times == 0) return;
    failures_[indexOf(operation)] = Failure{std::move(message), times};
}

void SandboxBackend::clearFailures(SandboxOperation operation) {
    std::lock_guard lock(mutex_);
    failures_[indexOf(operation)].reset();
}

void SandboxBackend::clearAllFailures() {
    std::lock_guard lock(mutex_);
    failures_.fill(std::nullopt);
}

ToviSharedCustomer SandboxBackend::customerSnapshot() const {
    std::lock_guard lock(mutex_);
    return state_.customer;
}

std::vector<ToviSharedTransaction> SandboxBackend::transactionsSnapshot() const {
    std::lock_guard lock(mutex_);
    return state_.transactions;
}

ToviSharedMerchant SandboxBackend::merchantSnapshot() const {
    std::lock_guard lock(mutex_);
    return state_.merchant;
}

std::vector<SandboxEvent> SandboxBackend::events() const {
    std::lock_guard lock(mutex_);
    return events_;
}

void SandboxBackend::clearEvents() {
    std::lock_guard lock(mutex_);
    events_.clear();
}

void SandboxBackend::record(SandboxOperation operation, SandboxEvent::Kind kind) {
    std::lock_guard lock(mutex_);
    events_.push_back({operation, kind});
}

std::string SandboxBackend::newId(std::string_view prefix) {
    return fmt::format("{}_{:016x}", prefix, random_());
}

std::string SandboxBackend::randomBytes(std::size_t count) {
    std::string bytes(count, '\0');
    for (auto& byte : bytes) byte = static_cast<char>(random_() & 0xFF);
    return bytes;
}

std::optional<ToviApiError> SandboxBackend::checkCustomer(const std::string& customerId) const {
    if (customerId == state_.customerId) return std::nullopt;
    return apiError("We couldn't find your account.", "sandbox: unknown customer " + customerId);
}

ToviSharedPaymentMethod SandboxBackend::saveCard(ToviSharedCard card) {
    std::lock_guard lock(mutex_);
    ToviSharedPaymentMethod method{.id = newId("pm_sandbox"), .card = std::move(card)};
    state_.customer.paymentMethods.push_back(method);
    return method;
}

// --- reads ---------------------------------------------------------------------------------

void SandboxBackend::getCustomer(std::string customerId, ToviCall call, ToviCompletion<ToviSharedCustomer> completion) {
    runNow<ToviSharedCustomer>(SandboxOperation::getCustomer, call, std::move(completion),
                               [self = shared_from_this(), customerId]() -> ToviResult<ToviSharedCustomer> {
                                   std::lock_guard lock(self->mutex_);
                                   if (auto error = self->checkCustomer(customerId)) return platform::failure(*error);
                                   return self->state_.customer;
                               });
}

void SandboxBackend::getReloadConfig(std::string customerId, ToviCall call,
                                     ToviCompletion<ToviSharedUserReloadConfiguration> completion) {
    runNow<ToviSharedUserReloadConfiguration>(
        SandboxOperation::getReloadConfig, call, std::move(completion),
        [self = shared_from_this(), customerId]() -> ToviResult<ToviSharedUserReloadConfiguration> {
            std::lock_guard lock(self->mutex_);
            if (auto error = self->checkCustomer(customerId)) return platform::failure(*error);
            return self->state_.userReloadConfiguration;
        });
}

void SandboxBackend::getTransactions(std::string customerId, ToviCall call,
                                     ToviCompletion<ToviSharedTransactionResult> completion) {
    runNow<ToviSharedTransactionResult>(
        SandboxOperation::getTransactions, call, std::move(completion),
        [self = shared_from_this(), customerId]() -> ToviResult<ToviSharedTransactionResult> {
            std::lock_guard lock(self->mutex_);
            if (auto error = self->checkCustomer(customerId)) return platform::failure(*error);
            return ToviSharedTransactionResult{self->state_.transactions};
        });
}

void SandboxBackend::getMerchant(std::string merchantId, ToviCall call, ToviCompletion<ToviSharedMerchant> completion) {
    runNow<ToviSharedMerchant>(SandboxOperation::getMerchant, call, std::move(completion),
                               [self = shared_from_this(), merchantId]() -> ToviResult<ToviSharedMerchant> {
                                   std::lock_guard lock(self->mutex_);
                                   if (merchantId != self->state_.merchantId) {
                                       return platform::failure(apiError("This store isn't available right now.",
                                                                         "sandbox: unknown merchant " + merchantId));
                                   }
                                   return self->state_.merchant;
                               });
}

void SandboxBackend::getCardArtUrls(ToviCall call, ToviCompletion<std::vector<std::string>> completion) {
    runNow<std::vector<std::string>>(SandboxOperation::getCardArtUrls, call, std::move(completion),
                                     [self = shared_from_this()]() -> ToviResult<std::vector<std::string>> {
                                         std::lock_guard lock(self->mutex_);
                                         return self->state_.cardArtUrls;
                                     });
}

void SandboxBackend::getKorvaneApiKey(std::string merchantId, ToviCall call, ToviCompletion<std::string> completion) {
    runNow<std::string>(SandboxOperation::getKorvaneApiKey, call, std::move(completion),
                        [self = shared_from_this(), merchantId]() -> ToviResult<std::string> {
                            std::lock_guard lock(self->mutex_);
                            if (merchantId != self->state_.merchantId) {
                                return platform::failure(apiError("This store isn't available right now.",
                                                                  "sandbox: unknown merchant " + merchantId));
                            }
                            return self->state_.korvaneApiKey;
                        });
}

}  // namespace tovi::sandbox::internal
