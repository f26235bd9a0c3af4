#include <gtest/gtest.h>

#include "platform/DeviceWallet.hpp"
#include "platform/testing/FakeDeviceWallet.hpp"

namespace platform {
namespace {

// Answers the challenge later, when told to, like a delegate that asks a backend first.
class DeferredDelegate final : public AddPaymentPassDelegate {
public:
    void generateRequest(AddPaymentPassChallenge challenge,
                         std::move_only_function<void(AddPaymentPassRequest)> completion) override {
        seen = std::move(challenge);
        answer = std::move(completion);
    }
    void didFinishAdding(std::optional<PaymentPass> pass, std::optional<DeviceWalletError> error) override {
        finishedWith = std::make_pair(std::move(pass), std::move(error));
    }

    std::optional<AddPaymentPassChallenge> seen;
    std::move_only_function<void(AddPaymentPassRequest)> answer;
    std::optional<std::pair<std::optional<PaymentPass>, std::optional<DeviceWalletError>>> finishedWith;
};

TEST(DeviceWallet, WithoutAnInstalledWalletNothingCanBeAdded) {
    setDeviceWallet(nullptr);
    auto wallet = deviceWallet();
    EXPECT_FALSE(wallet->canAddPaymentPass());
    EXPECT_TRUE(wallet->paymentPasses().empty());
    EXPECT_FALSE(wallet->presentAddPaymentPass({}, std::make_shared<DeferredDelegate>()));
}

TEST(FakeDeviceWallet, PlaysTheAddPassExchange) {
    auto wallet = std::make_shared<FakeDeviceWallet>();
    setDeviceWallet(wallet);
    auto delegate = std::make_shared<DeferredDelegate>();
    AddPaymentPassConfiguration configuration;
    configuration.primaryAccountSuffix = "1234";
    ASSERT_TRUE(deviceWallet()->presentAddPaymentPass(configuration, delegate));
    EXPECT_EQ(wallet->openDialog()->primaryAccountSuffix, "1234");

    EXPECT_EQ(wallet->requestPass({{"cert-1", "cert-2"}, "nonce", "signature"}), std::nullopt) << "not answered yet";
    EXPECT_EQ(delegate->seen->certificateChain.size(), 2u);
    delegate->answer({"pass", "activation", "key"});
    EXPECT_EQ(wallet->lastRequest(), (AddPaymentPassRequest{"pass", "activation", "key"}));

    wallet->finishAdding(PaymentPass{"serial-1", "1234", "Driftwood"}, std::nullopt);
    EXPECT_FALSE(wallet->openDialog());
    EXPECT_EQ(wallet->paymentPasses().size(), 1u);
    EXPECT_TRUE(delegate->finishedWith->first);
    setDeviceWallet(nullptr);
}

TEST(FakeDeviceWallet, ErrorsAddNoPassAndRefusedDialogsOpenNothing) {
    auto wallet = std::make_shared<FakeDeviceWallet>();
    auto delegate = std::make_shared<DeferredDelegate>();
    wallet->refuseNextDialog();
    EXPECT_FALSE(wallet->presentAddPaymentPass({}, delegate));
    EXPECT_FALSE(wallet->openDialog());

    ASSERT_TRUE(wallet->presentAddPaymentPass({}, delegate));
    wallet->finishAdding(PaymentPass{"serial-2", "9", ""}, DeviceWalletError{DeviceWalletError::kUserCancelled, ""});
    EXPECT_TRUE(wallet->paymentPasses().empty());
    EXPECT_EQ(delegate->finishedWith->second->code, 1);
}

TEST(FakeDeviceWallet, AnAnswerAfterTheWalletIsGoneIsHarmless) {
    auto delegate = std::make_shared<DeferredDelegate>();
    {
        auto wallet = std::make_shared<FakeDeviceWallet>();
        ASSERT_TRUE(wallet->presentAddPaymentPass({}, delegate));
        (void)wallet->requestPass({{"cert"}, "n", "s"});
    }
    delegate->answer({"late", "", ""});  // must not touch the destroyed wallet
}

}  // namespace
}  // namespace platform
