// The expiry element: auto-prefixing, refused months, the date test against a set clock, and
// its references.

#include <gtest/gtest.h>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardExpirationDateUITextField.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "platform/Locale.hpp"
#include "platform/testing/ScopedLocale.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using namespace std::chrono;
using anycodable::Map;
using elements_test::EventLog;

// 2024-01-15 12:00 UTC, the manual queue's default "now".
struct ExpiryTest : ::testing::Test {
    void SetUp() override { expiry = std::make_shared<CardExpirationDateUITextField>(); }
    void TearDown() override { expiry->resignFirstResponder(); }
    void setNow(int y, unsigned m, unsigned d) { main->setNow(sys_days{year{y} / month{m} / day{d}} + hours{12}); }
    std::string shown() const { return expiry->getValue(elements_test::valueKey()).value_or("<none>"); }

    platform::ScopedLocale locale{"en_US", "UTC"};
    platform::ManualMainQueueScope main;
    elements_test::TelemetryCapture telemetry;
    std::shared_ptr<CardExpirationDateUITextField> expiry;
};

TEST_F(ExpiryTest, DateTestAgainstTheClock) {
    struct Case {
        int year;
        unsigned month;
        const char* text;
        bool valid;
        const char* why;
    };
    const Case cases[] = {
        {2024, 1, "12/25", true, "a later year"},
        {2024, 1, "01/24", true, "the current month"},
        {2024, 6, "05/24", false, "the month just passed"},
        {2024, 1, "12/23", false, "an earlier year"},
        {2024, 1, "00/40", true, "months are not bounded by the date test"},
        {2026, 12, "12/26", false, "late December reads the week-based year, already 2027 in en_US"},
    };
    for (const auto& c : cases) {
        setNow(c.year, c.month, c.year == 2026 ? 31 : 15);
        expiry->setText(c.text);
        EXPECT_EQ(expiry->metadata().valid, c.valid) << c.text << ": " << c.why;
        EXPECT_EQ(expiry->metadata().complete, c.valid) << c.text << ": " << c.why;
    }
    expiry->setText("12/2");
    EXPECT_FALSE(expiry->metadata().valid) << "four characters are never valid";
}

TEST_F(ExpiryTest, ReferencesReadTheFieldWhenResolved) {
    expiry->setText("12/25");
    auto month = expiry->month();
    auto year = expiry->year();
    EXPECT_EQ(month->getValue(elements_test::valueKey()), "12");
    EXPECT_EQ(year->getValue(elements_test::valueKey()), "2025");
    EXPECT_EQ(year->getValueType(), ElementValueType::int_);
    EXPECT_EQ(year->isComplete(), true);
    EXPECT_EQ(year->elementId(), expiry->elementId());
    expiry->setText("03/31");
    EXPECT_EQ(year->getValue(elements_test::valueKey()), "2031") << "read at resolution";
    EXPECT_EQ(expiry->format("yyyy-MM")->getValue(elements_test::valueKey()), "2031-03");
    EXPECT_EQ(expiry->format("yyyy-MM-dd HH:mm:ss")->getValue(elements_test::valueKey()), "2031-03-01 23:59:59");
    EXPECT_EQ(expiry->format("yyyy")->getValueType(), ElementValueType::string);

    expiry->setText("04/6");
    EXPECT_EQ(year->getValue(elements_test::valueKey()), "206");
    EXPECT_FALSE(expiry->format("yyyy-MM")->hasValueMethod()) << "year 206 is no date here, and no stop";
}

TEST_F(ExpiryTest, SetValueFromMonthAndYearReferences) {
    EventLog log(*expiry);
    auto ref = [](std::string v) {
        return std::make_shared<ElementValueReference>(
            "x", [v] { return v; }, true, ElementValueType::int_);
    };
    expiry->setValue(ref("5"), ref("2031"));
    EXPECT_EQ(shown(), "05/31");
    EXPECT_EQ(log.types(), (std::vector<std::string>{"textChange"}));
    expiry->setValue(nullptr, nullptr);
    EXPECT_EQ(shown(), "00/");
}

TEST_F(ExpiryTest, HalfTypedDatesGiveNoYearAndNoFormattedDate) {
    // A year reference taken before anything was typed is read when the request is built.
    auto year = expiry->year();
    for (const char* typed : {"", "1", "12"}) {
        expiry->setText(typed);
        EXPECT_EQ(year->getValue(elements_test::valueKey()), "") << typed;
        EXPECT_FALSE(expiry->format("yyyy-MM")->hasValueMethod()) << typed;
        Map body{{"year", elementValue(year)}};
        EXPECT_EQ(KorvaneElements::replaceElementReferences(body, "POST /tokenize", "t"),
                  std::unexpected(TokenizingError::invalidInput))
            << typed;
    }
}

TEST(ExpiryDeathTest, SetValueWithoutValueMethodStops) {
    auto expiry = std::make_shared<CardExpirationDateUITextField>();
    auto broken = std::make_shared<ElementValueReference>("x", nullptr, true, ElementValueType::int_);
    EXPECT_DEATH(expiry->setValue(broken, nullptr), "has no valueMethod");
}

}  // namespace
