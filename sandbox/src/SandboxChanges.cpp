// The operations of the sandbox that change the wallet.

#include <algorithm>
#include <variant>

#include "SandboxBackendRun.hpp"
#include "SandboxCards.hpp"
#include "platform/Base64.hpp"

namespace tovi::sandbox::internal {

namespace {

bool hasPaymentMethod(const ToviSharedCustomer& customer, const std::string& id) {
    return std::ranges::any_of(customer.paymentMethods, [&](const auto& method) { return method.id == id; });
}

ToviApiError unknownPaymentMethod(const std::string& id) {
    return apiError("That card is no longer on file. Please choose another.", "sandbox: unknown payment method " + id);
}

}  // namespace

void SandboxBackend::addBalance(ToviSharedAddBalanceRequest request, ToviCall call,
                                ToviCompletion<ToviSharedBalanceUpdate> completion) {
    runNow<ToviSharedBalanceUpdate>(
        SandboxOperation::addBalance, call, std::move(completion),
        [self = shared_from_this(), request = std::move(request)]() -> ToviResult<ToviSharedBalanceUpdate> {
            std::lock_guard lock(self->mutex_);
            auto& state = self->state_;
            if (auto error = self->checkCustomer(request.customerId)) return platform::failure(*error);
            if (!hasPaymentMethod(state.customer, request.toviPaymentMethodId)) {
                return platform::failure(unknownPaymentMethod(request.toviPaymentMethodId));
            }
            if (request.amount <= 0) {
                return platform::failure(
                    apiError("Enter an amount greater than zero.", fmt::format("sandbox: amount {}", request.amount)));
            }
            // A preset's promotion is credited on top, as its own history row.
            std::int32_t bonus = 0;
            for (const auto& preset : state.userReloadConfiguration.presetAmounts) {
                if (preset.amount == request.amount && preset.promotionAmount > 0) bonus = preset.promotionAmount;
            }
            const auto now = timestamp(platform::clock().now());
            state.customer.balance.amount += request.amount + bonus;
            std::vector<ToviSharedTransaction> rows;
            if (bonus > 0) rows.push_back({self->newId("txn_sandbox"), "Reload bonus", now, bonus, true});
            rows.push_back({self->newId("txn_sandbox"), "Wallet reload", now, request.amount, true});
            state.transactions.insert(state.transactions.begin(), rows.begin(), rows.end());
            return ToviSharedBalanceUpdate{};
        });
}

void SandboxBackend::setAutoReloadConfiguration(ToviSharedAutoReloadConfigurationRequest request, ToviCall call,
                                                ToviCompletion<ToviSharedAutoReloadConfiguration> completion) {
    runNow<ToviSharedAutoReloadConfiguration>(
        SandboxOperation::setAutoReloadConfiguration, call, std::move(completion),
        [self = shared_from_this(), request = std::move(request)]() -> ToviResult<ToviSharedAutoReloadConfiguration> {
            std::lock_guard lock(self->mutex_);
            auto& state = self->state_;
            if (auto error = self->checkCustomer(request.customerId)) return platform::failure(*error);
            ToviSharedAutoReloadConfiguration stored;
            if (const auto* enabled = std::get_if<ToviSharedAutoReloadConfigurationStatusEnabled>(&request.status)) {
                if (!hasPaymentMethod(state.customer, enabled->paymentMethodId)) {
                    return platform::failure(unknownPaymentMethod(enabled->paymentMethodId));
                }
                stored = {.enabled = true,
                          .paymentMethodId = enabled->paymentMethodId,
                          .reloadAmount = enabled->reloadAmount,
                          .reloadThreshold = enabled->reloadThreshold};
            } else if (state.customer.autoReloadConfig) {
                // Turning it off keeps the last choices, so that turning it on again can offer them.
                stored = *state.customer.autoReloadConfig;
                stored.enabled = false;
            }
            state.customer.autoReloadConfig = stored;
            return stored;
        });
}

void SandboxBackend::addPaymentMethod(std::string customerId, AddPaymentMethodType type, ToviCall call,
                                      ToviCompletion<ToviSharedPaymentMethod> completion) {
    const auto tokenId = std::get<AddPaymentMethodCreditCard>(type).tokenId;
    run<ToviSharedPaymentMethod>(
        SandboxOperation::addPaymentMethod, call, std::move(completion),
        [self = shared_from_this(), customerId, tokenId](ToviCompletion<ToviSharedPaymentMethod> done) mutable {
            std::optional<ToviApiError> error;
            {
                std::lock_guard lock(self->mutex_);
                error = self->checkCustomer(customerId);
            }
            // `done` takes the lock itself, so it is called outside it.
            if (error) return done(platform::failure(*error));
            if (!self->vault_) return done(self->saveCard(madeUpCard(tokenId)));
            self->vault_->readMaskedNumber(
                tokenId, [self, tokenId, done = std::move(done)](std::optional<std::string> masked) mutable {
                    auto card = masked ? cardFromMaskedNumber(*masked) : std::nullopt;
                    if (!card) {
                        return done(platform::failure(apiError("We couldn't save this card. Please try again.",
                                                               "sandbox: vault has no card for token " + tokenId)));
                    }
                    done(self->saveCard(*std::move(card)));
                });
        });
}

void SandboxBackend::createVirtualCard(std::string customerId, ToviCall call,
                                       ToviCompletion<ToviSharedVirtualCard> completion) {
    runNow<ToviSharedVirtualCard>(SandboxOperation::createVirtualCard, call, std::move(completion),
                                  [self = shared_from_this(), customerId]() -> ToviResult<ToviSharedVirtualCard> {
                                      std::lock_guard lock(self->mutex_);
                                      if (auto error = self->checkCustomer(customerId))
                                          return platform::failure(*error);
                                      const auto today = std::chrono::year_month_day(
                                          std::chrono::floor<std::chrono::days>(platform::clock().now()));
                                      ToviSharedVirtualCard card{
                                          .id = self->newId("vc_sandbox"),
                                          .expMonth = fmt::format("{:02}", static_cast<unsigned>(today.month())),
                                          .expYear = fmt::format("{}", static_cast<int>(today.year()) + 3),
                                          .lastFour = fmt::format("{:04}", self->random_() % 10000),
                                          .cardHolderName = self->state_.cardHolderName,
                                          .cardNetwork = "MASTERCARD",
                                          .state = "ACTIVE",
                                      };
                                      self->virtualCardIds_.insert(card.id);
                                      return card;
                                  });
}

void SandboxBackend::provisionVirtualCard(ToviSharedProvisioningRequest request, ToviCall call,
                                          ToviCompletion<ToviSharedProvisioning> completion) {
    runNow<ToviSharedProvisioning>(
        SandboxOperation::provisionVirtualCard, call, std::move(completion),
        [self = shared_from_this(), request = std::move(request)]() -> ToviResult<ToviSharedProvisioning> {
            std::lock_guard lock(self->mutex_);
            if (auto error = self->checkCustomer(request.customerId)) return platform::failure(*error);
            if (!self->virtualCardIds_.contains(request.virtualCardId)) {
                return platform::failure(apiError("We couldn't add your card to the wallet. Please try again.",
                                                  "sandbox: unknown virtual card " + request.virtualCardId));
            }
            const auto& provider = std::get<ToviSharedWalletProviderApplePay>(request.walletProvider);
            for (const auto* field : {&provider.nonce, &provider.nonceSignature, &provider.certificate}) {
                auto bytes = platform::base64Decode(*field);
                if (!bytes || bytes->empty()) {
                    return platform::failure(apiError("We couldn't add your card to the wallet. Please try again.",
                                                      "sandbox: wallet provider data is not base64"));
                }
            }
            // An uncompressed P-256 point for the key; opaque bytes for the rest.
            std::string ephemeralKey = "\x04" + self->randomBytes(64);
            return ToviSharedProvisioning{
                .provisioningPayload = platform::base64Encode(self->randomBytes(48)),
                .ephemeralPublicKey = platform::base64Encode(ephemeralKey),
                .encryptedData = platform::base64Encode(self->randomBytes(256)),
            };
        });
}

}  // namespace tovi::sandbox::internal
