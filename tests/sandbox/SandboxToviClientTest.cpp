#include "sandbox/SandboxToviClient.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <latch>
#include <map>
#include <thread>

#include "platform/Base64.hpp"
#include "platform/ThreadPool.hpp"
#include "platform/testing/ManualMainQueue.hpp"

namespace tovi::sandbox {
namespace {

using namespace std::chrono_literals;
using Kind = SandboxEvent::Kind;

// Answers masked numbers from a table, at once.
class TableVault final : public SandboxCardVault {
public:
    std::map<std::string, std::string> masked;
    void readMaskedNumber(std::string tokenId,
                          std::move_only_function<void(std::optional<std::string>)> completion) override {
        auto it = masked.find(tokenId);
        completion(it == masked.end() ? std::nullopt : std::optional<std::string>(it->second));
    }
};

class SandboxTest : public ::testing::Test {
protected:
    std::shared_ptr<SandboxToviClient> make(std::shared_ptr<SandboxCardVault> vault = nullptr) {
        return SandboxToviClient::create({.seed = SandboxSeed::standard(), .timers = &main.queue(), .vault = vault});
    }

    // Calls `start` with a ToviCall on the manual queue and returns the delivered result, if any
    // was delivered by the time the queue is idle.
    template <class T, class Start>
    std::optional<ToviResult<T>> call(Start start, CancellationToken token = {}) {
        std::optional<ToviResult<T>> result;
        start(ToviCall{main.queue(), token}, [&result](ToviResult<T> r) { result = std::move(r); });
        main->runUntilIdle();
        return result;
    }

    ToviResult<ToviSharedBalanceUpdate> addBalance(std::int32_t cents, std::string method = "pm_sandbox_visa_4242") {
        return *call<ToviSharedBalanceUpdate>([&](ToviCall c, auto done) {
            client->customer()->addBalance({client->customerId(), cents, method, std::nullopt, std::nullopt}, c,
                                           std::move(done));
        });
    }

    platform::ManualMainQueueScope main;
    std::shared_ptr<SandboxToviClient> client = make();
};

TEST_F(SandboxTest, AddBalanceRaisesTheBalanceRecordsCreditsAndRefusesUnknownCardsAndEmptyAmounts) {
    const auto before = client->customerSnapshot().balance.amount;

    ASSERT_TRUE(addBalance(1234));
    EXPECT_EQ(client->customerSnapshot().balance.amount, before + 1234);
    auto rows = client->transactionsSnapshot();
    EXPECT_EQ(rows.front().amount, 1234);
    EXPECT_EQ(rows.front().isCredit, true);
    EXPECT_EQ(rows.front().created, "2024-01-15T12:00:00.000Z") << "stamped with the platform clock";

    ASSERT_TRUE(addBalance(2500)) << "a preset with a promotion";
    EXPECT_EQ(client->customerSnapshot().balance.amount, before + 1234 + 2500 + 250);
    rows = client->transactionsSnapshot();
    EXPECT_EQ(rows[0].displayName, "Reload bonus");
    EXPECT_EQ(rows[0].amount, 250);

    const auto after = client->customerSnapshot();
    EXPECT_FALSE(addBalance(1000, "pm_nope")) << "an unknown card";
    EXPECT_FALSE(addBalance(0)) << "nothing to add";
    EXPECT_EQ(client->customerSnapshot(), after);
}

TEST_F(SandboxTest, ScriptedFailuresCountDownOrLast) {
    client->failNext(SandboxOperation::addBalance, "Your card was declined.", 2);
    auto first = addBalance(100);
    ASSERT_FALSE(first);
    EXPECT_EQ(first.error().humanReadableMessage, "Your card was declined.");
    EXPECT_FALSE(addBalance(100));
    EXPECT_TRUE(addBalance(100)) << "two failures were asked for";

    client->failAlways(SandboxOperation::addBalance, "Down for maintenance.");
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(addBalance(100));
    client->clearFailures(SandboxOperation::addBalance);
    EXPECT_TRUE(addBalance(100));
}

TEST_F(SandboxTest, LatencyDelaysTheCompletionWithoutBlockingTheCaller) {
    client->setLatency(SandboxOperation::getCardArtUrls, 300ms);
    std::optional<ToviResult<std::vector<std::string>>> result;
    client->merchant()->getCardArtUrls(ToviCall{main.queue()}, [&](auto r) { result = std::move(r); });

    EXPECT_FALSE(result) << "the call returned before the answer";
    main->advance(299ms);
    EXPECT_FALSE(result);
    main->advance(1ms);
    ASSERT_TRUE(result && *result);
}

TEST_F(SandboxTest, CancellationEndsAWaitingCallAtOnceAndChangesNothing) {
    client->setLatency(SandboxOperation::addBalance, 5000ms);
    const auto before = client->customerSnapshot();
    CancellationToken token;
    std::optional<ToviResult<ToviSharedBalanceUpdate>> result;
    client->customer()->addBalance({client->customerId(), 500, "pm_sandbox_visa_4242", std::nullopt, std::nullopt},
                                   ToviCall{main.queue(), token}, [&](auto r) { result = std::move(r); });
    token.cancel();
    main->runUntilIdle();
    ASSERT_TRUE(result);
    EXPECT_FALSE(*result);

    main->advance(5000ms);  // the timer fires later and must neither deliver again nor apply
    EXPECT_EQ(client->customerSnapshot(), before);
    EXPECT_EQ(client->events().back(), (SandboxEvent{SandboxOperation::addBalance, Kind::failed}));
}

TEST_F(SandboxTest, AutoReloadStateIsStoredAndKeptWhenTurnedOff) {
    auto set = [&](ToviSharedAutoReloadConfigurationStatus status) {
        return *call<ToviSharedAutoReloadConfiguration>([&](ToviCall c, auto done) {
            client->customer()->setAutoReloadConfiguration({client->customerId(), status}, c, std::move(done));
        });
    };
    auto on = set(ToviSharedAutoReloadConfigurationStatusEnabled{"pm_sandbox_mc_4444", 2500, 1000});
    ASSERT_TRUE(on);
    EXPECT_EQ(client->customerSnapshot().autoReloadConfig,
              (ToviSharedAutoReloadConfiguration{true, "pm_sandbox_mc_4444", 2500, 1000}));

    ASSERT_TRUE(set(ToviSharedAutoReloadConfigurationStatusDisabled::disabled()));
    EXPECT_EQ(client->customerSnapshot().autoReloadConfig,
              (ToviSharedAutoReloadConfiguration{false, "pm_sandbox_mc_4444", 2500, 1000}));

    EXPECT_FALSE(set(ToviSharedAutoReloadConfigurationStatusEnabled{"pm_gone", 2500, 1000}));
}

TEST_F(SandboxTest, AddedCardsTakeTheirDetailsFromTheVault) {
    auto vault = std::make_shared<TableVault>();
    vault->masked = {{"tok_visa", "424242XXXXXX4242"}, {"tok_amex", "3782 82XXXXX 0005"},
                     {"tok_mc2", "222300XXXXXX0011"},  {"tok_electron", "417500XXXXXX0008"},
                     {"tok_diners", "305693XXXX5904"}, {"tok_disc", "601111XXXXXX1117"},
                     {"tok_odd", "999999XXXXXX9999"},  {"tok_bad", "XXXXXXXXXXXX4242"}};
    client = make(vault);
    auto add = [&](std::string token) {
        return *call<ToviSharedPaymentMethod>([&](ToviCall c, auto done) {
            client->customer()->addPaymentMethod(client->customerId(), creditCard(token), c, std::move(done));
        });
    };
    const std::map<std::string, ToviSharedCard> expected{
        {"tok_visa", {"visa", "424242", "4242"}},      {"tok_amex", {"amex", "378282", "0005"}},
        {"tok_mc2", {"mastercard", "222300", "0011"}}, {"tok_electron", {"visa electron", "417500", "0008"}},
        {"tok_diners", {"diners", "305693", "5904"}},  {"tok_disc", {"discover", "601111", "1117"}},
        {"tok_odd", {"unknown", "999999", "9999"}},
    };
    for (const auto& [token, card] : expected) {
        auto method = add(token);
        ASSERT_TRUE(method) << token;
        EXPECT_EQ(method->card, card) << token;
    }
    EXPECT_FALSE(add("tok_bad")) << "a masked number without leading digits";
    EXPECT_FALSE(add("tok_unknown")) << "a token the vault doesn't know";
    EXPECT_EQ(client->customerSnapshot().paymentMethods.size(), 2 + expected.size());
}

TEST_F(SandboxTest, WithoutAVaultCardsAreMadeUpFromTheToken) {
    auto method = call<ToviSharedPaymentMethod>([&](ToviCall c, auto done) {
        client->customer()->addPaymentMethod(client->customerId(), creditCard("tok_ab12cd3456"), c, std::move(done));
    });
    ASSERT_TRUE(method && *method);
    EXPECT_EQ((*method)->card, (ToviSharedCard{"visa", "424242", "3456"}));
    EXPECT_EQ(client->customerSnapshot().paymentMethods.back().id, (*method)->id);

    auto stranger = call<ToviSharedPaymentMethod>([&](ToviCall c, auto done) {
        client->customer()->addPaymentMethod("cus_someone_else", creditCard("tok_1"), c, std::move(done));
    });
    ASSERT_TRUE(stranger);
    EXPECT_EQ(stranger->error().humanReadableMessage, "We couldn't find your account.");
}

TEST_F(SandboxTest, VirtualCardsProvisionWithBase64Data) {
    auto card = call<ToviSharedVirtualCard>([&](ToviCall c, auto done) {
        client->customer()->createVirtualCard(client->customerId(), c, std::move(done));
    });
    ASSERT_TRUE(card && *card);
    EXPECT_EQ((*card)->lastFour.size(), 4u);
    EXPECT_EQ((*card)->cardHolderName, "Alex Morgan");

    auto provision = [&](std::string cardId, std::string nonce) {
        return *call<ToviSharedProvisioning>([&](ToviCall c, auto done) {
            client->customer()->provisionVirtualCard(
                {client->customerId(), cardId, ToviSharedWalletProviderApplePay{nonce, "c2ln", "Y2VydA=="}}, c,
                std::move(done));
        });
    };
    auto data = provision((*card)->id, "bm9uY2U=");
    ASSERT_TRUE(data);
    for (const auto* field : {&data->encryptedData, &data->provisioningPayload, &data->ephemeralPublicKey}) {
        auto bytes = platform::base64Decode(*field);
        ASSERT_TRUE(bytes && !bytes->empty());
    }
    EXPECT_EQ(platform::base64Decode(data->ephemeralPublicKey)->size(), 65u);
    EXPECT_FALSE(provision("vc_unknown", "bm9uY2U="));
    EXPECT_FALSE(provision((*card)->id, "not base64!"));
}

// Changes from many threads all apply, and a scripted count of failures is spent exactly, each
// by one call, while other threads read the records.
TEST(SandboxConcurrency, CallsFromManyThreadsAllApplyAndSpendTheScriptedFailuresExactly) {
    auto client = SandboxToviClient::create();
    const auto before = client->customerSnapshot().balance.amount;
    constexpr int kCalls = 6 * 40;
    constexpr int kFailures = 75;
    client->failNext(SandboxOperation::getCustomer, "Try again later.", kFailures);
    platform::ThreadPool completions(2, "sb-test");
    std::atomic<int> failed{0};
    std::atomic<int> wrongMessage{0};
    std::latch finished(2 * kCalls);
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 6; ++t) {
            threads.emplace_back([&] {
                for (int i = 0; i < kCalls / 6; ++i) {
                    client->customer()->addBalance(
                        {client->customerId(), 1, "pm_sandbox_visa_4242", std::nullopt, std::nullopt},
                        ToviCall{completions}, [&](auto&&) { finished.count_down(); });
                    client->customer()->get(client->customerId(), ToviCall{completions},
                                            [&](ToviResult<ToviSharedCustomer> result) {
                                                if (!result) {
                                                    ++failed;
                                                    if (result.error().humanReadableMessage != "Try again later.") {
                                                        ++wrongMessage;
                                                    }
                                                }
                                                finished.count_down();
                                            });
                    (void)client->customerSnapshot();
                }
            });
        }
    }
    finished.wait();
    EXPECT_EQ(client->customerSnapshot().balance.amount, before + kCalls);
    EXPECT_EQ(client->transactionsSnapshot().size(), SandboxSeed::standard().transactions.size() + kCalls);
    EXPECT_EQ(failed.load(), kFailures) << "each scripted failure is used by exactly one call";
    EXPECT_EQ(wrongMessage.load(), 0);

    const auto events = client->events();
    const auto count = [&](Kind kind) {
        return std::ranges::count_if(events, [&](const SandboxEvent& e) { return e.kind == kind; });
    };
    EXPECT_EQ(count(Kind::started), 2 * kCalls);
    EXPECT_EQ(count(Kind::failed), kFailures);
    EXPECT_EQ(count(Kind::succeeded), 2 * kCalls - kFailures);
}

}  // namespace
}  // namespace tovi::sandbox
