#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "ToviUI/CreditCardBrand.hpp"
#include "ToviUI/PaymentCardType.hpp"
#include "ToviUI/PaymentMethodOptionsList.hpp"
#include "ToviUI/PaymentMethodPreview.hpp"
#include "ToviUI/SelectPaymentMethodOptionBottomSheet.hpp"
#include "ToviUI/ToviDesignSystem.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/ScreenHost.hpp"
#include "platform/view/View.hpp"

namespace tovi {
namespace {

using namespace platform::view;
using Type = PaymentCardType;

TEST(PaymentCardTypeTest, WholeNumbersAndPrefixesInTheOrderOfAll) {
    struct Row {
        const char* number;
        std::optional<Type> whole;
        std::optional<Type> prefix;
    };
    const Row rows[] = {
        {"4175001234567", Type::visaElectron, Type::visaElectron},  // also a Visa number: Electron is tried first
        {"4242424242424242", Type::visa, Type::visa},
        {"378282246310005", Type::amex, Type::amex},
        {"5555555555554444", Type::mastercard, Type::mastercard},
        {"2221000000000009", Type::mastercard, Type::mastercard},  // the 2-series range
        {"6759649826438453", Type::maestro, Type::maestro},
        {"6011111111111117", Type::discover, Type::discover},
        {"30569309025904", Type::dinersClub, Type::dinersClub},
        {"5555555555554444999", std::nullopt, Type::mastercard},  // a match must cover the whole number
        {"4242 4242 4242 4242", std::nullopt, std::nullopt},      // spaces are not digits
        {"4242", std::nullopt, Type::visa},
        {"424", std::nullopt, std::nullopt},  // too short to suggest
        {"", std::nullopt, std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(paymentCardType(row.number), row.whole) << row.number;
        EXPECT_EQ(suggestedTypeForCardNumber(std::string(row.number)), row.prefix) << row.number;
    }
    EXPECT_EQ(suggestedTypeForCardNumber(std::nullopt), std::nullopt);
    EXPECT_EQ(rawValue(Type::visaElectron), "Visa Electron");
    EXPECT_EQ(paymentCardTypeFromRawValue("Diners Club"), Type::dinersClub);
}

TEST(PaymentCardTypeTest, ReorderingAllChangesTheAnswer) {
    auto& all = allPaymentCardTypes();
    const auto saved = all;
    all = {Type::visa, Type::visaElectron};
    EXPECT_EQ(paymentCardType("4175001234567"), Type::visa);
    EXPECT_EQ(paymentCardType("378282246310005"), std::nullopt) << "amex is no longer tried";
    all = saved;
}

TEST(CardImages, EachBrandHasItsImageAndUnknownNamesThePlaceholder) {
    struct Row {
        const char* backend;
        ToviImageSource image;
    };
    const Row rows[] = {
        {"amex", ToviImageSource::americanExpress},
        {"mastercard", ToviImageSource::masterCard},
        {"maestro", ToviImageSource::maestro},
        {"visa", ToviImageSource::visa},
        {"visa electron", ToviImageSource::visaElectron},
        {"discover", ToviImageSource::discover},
        {"diners", ToviImageSource::dinersClub},
        {"diners club", ToviImageSource::placeholderCard},
        {"Visa", ToviImageSource::placeholderCard},  // brand names are case-sensitive
    };
    for (const auto& row : rows) EXPECT_EQ(imageSource(cardBrandFromBackend(row.backend)), row.image) << row.backend;
    EXPECT_EQ(rawValue(CreditCardBrand::unionPay), "unionPay");
    EXPECT_EQ(creditCardBrand("UnionPay"), std::nullopt);
}

const PaymentMethodUiModel visa{"pm_1", {CardBrand::visa, "424242", "4242"}, false};
const PaymentMethodUiModel expired{"pm_2", {CardBrand::amex, "378282", "0005"}, true};
const PaymentMethodUiModel unnamed{"pm_3", {CardBrand::unknown, "", ""}, false};

TEST(PaymentMethodPreviewTest, ShowsTheCardRedWhenExpiredOrAddPayment) {
    const auto& ds = ToviDesignSystem::shared();
    EXPECT_EQ(inspect(PaymentMethodPreview{visa}).find("\u00b7\u00b7\u00b7\u00b7 4242").foreground(),
              ds.colors.text.bold);
    auto preview = inspect(PaymentMethodPreview{expired});
    EXPECT_EQ(preview.find("\u00b7\u00b7\u00b7\u00b7 0005").foreground(), ds.colors.text.error);
    EXPECT_EQ(preview.find(by::type("ToviImage")).frame(), (Frame{.width = 34, .height = 24}));
    EXPECT_EQ(inspect(PaymentMethodPreview{}).find("Add Payment").foreground(), ds.colors.text.link);
    EXPECT_TRUE(inspect(PaymentMethodPreview{unnamed}).has("\u00b7\u00b7\u00b7\u00b7 ")) << "an empty last four";
}

struct PickerTest : ::testing::Test {
    platform::ManualMainQueueScope main;
    PaymentMethodUpdateManager updates;
    std::optional<PaymentMethodUiModel> selection;

    // The picker, shown while the host's "shown" state is true, over a selection it mirrors.
    ScreenHost host{[this](Scope& s) {
        auto shown = s.state("shown", true);
        auto selected = s.state("selected", std::optional<PaymentMethodUiModel>(visa));
        selection = selected.get();
        return VStack({Button("toggle", [shown] { shown.set(!shown.get()); }),
                       shown.get()
                           ? s.view(SelectPaymentMethodOptionBottomSheet{.paymentMethods = {visa, expired},
                                                                         .selectedPaymentMethod = selected.binding(),
                                                                         .updates = &updates})
                           : Node{}});
    }};

    std::string checkedRow() {
        (void)host.tree();
        auto check = inspect(host.tree()).tryFind(by::id("paymentMethod.selected"));
        return check ? check->ancestor(by::type("PaymentMethodRowView")).texts().at(0) : "";
    }
    void settle() { main->runUntilIdle(); }
};

TEST_F(PickerTest, TapSelectsAnyRowWithAnAnimationAndTheSelectedRowStays) {
    EXPECT_EQ(checkedRow(), "\u00b7\u00b7\u00b7\u00b7 4242");
    ASSERT_TRUE(host.tap(HostTarget::id("paymentMethod.pm_1")));
    EXPECT_FALSE(host.rebuildPending()) << "tapping the selection changes nothing";

    ASSERT_TRUE(host.tap(HostTarget::text("Expired")));
    settle();
    EXPECT_EQ(selection, expired) << "an expired card is still selectable";
    EXPECT_EQ(checkedRow(), "\u00b7\u00b7\u00b7\u00b7 0005");
    EXPECT_EQ(host.tree()->animations, (std::vector<AnimationTag>{{Animation::easeInOut(), "selected"}}));
}

TEST_F(PickerTest, ACardAddedWhileShownIsSelectedAndNothingArrivesAfterClosing) {
    (void)host.tree();
    updates.onPaymentMethodAdded({"pm_new", {"discover", "601111", "1117"}});
    settle();
    EXPECT_EQ(selection, (PaymentMethodUiModel{"pm_new", {CardBrand::discover, "601111", "1117"}, false}));

    ASSERT_TRUE(host.tap(HostTarget::text("toggle")));
    settle();
    (void)host.tree();
    updates.onPaymentMethodAdded({"pm_late", {"visa", "424242", "1881"}});
    settle();
    EXPECT_EQ(selection->id, "pm_new");
}

}  // namespace
}  // namespace tovi
