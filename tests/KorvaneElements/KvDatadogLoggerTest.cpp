// The telemetry logger: what each post carries, where it goes, and when nothing is posted.

#include <gtest/gtest.h>

#include <cmath>

#include "ElementTestSupport.hpp"
#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "platform/DeviceInfo.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace {

using namespace korvane::elements;
using anycodable::Map;

struct DeviceInfoScope {
    explicit DeviceInfoScope(platform::DeviceInfo info) : previous(platform::deviceInfo()) {
        platform::setDeviceInfo(std::move(info));
    }
    ~DeviceInfoScope() { platform::setDeviceInfo(previous); }
    platform::DeviceInfo previous;
};

struct LoggerTest : ::testing::Test {
    elements_test::TelemetryCapture telemetry;
};

TEST_F(LoggerTest, OnlyTheFirstMessageCarriesTheBuildAttributes) {
    DeviceInfoScope device({.bundleIdentifier = "com.example.shop",
                            .shortVersion = "2.1",
                            .buildVersion = std::nullopt,
                            .vendorIdentifier = std::nullopt,
                            .deviceName = "Pixel"});
    auto logger = makeDefaultLoggerBuilder().build();
    logger->log("first", "info", std::nullopt, Map{{"elementId", "E1"}});
    logger->log("second", "info");
    // The builder's attributes in key order, then the message's own.
    EXPECT_EQ(telemetry.bodies(),
              (std::vector<std::string>{
                  R"({"application":"Korvane iOS Elements","bundleBuildVersion":"Unknown vendor build version",)"
                  R"("bundleId":"com.example.shop","bundleVersion":"2.1","device":"Pixel","env":"prod",)"
                  R"("kvElementsVersion":"4.1.1","service":"Korvane iOS Elements","vendorId":"Unknown vendorId",)"
                  R"("elementId":"E1","message":"first","level":"info"})",
                  R"({"message":"second","level":"info"})"}));
}

TEST_F(LoggerTest, TheEnvironmentFollowsTheHostIdentifier) {
    const std::pair<std::optional<std::string>, const char*> rows[] = {
        {"com.example.IntegrationTester.app", R"("bundleId":"com.example.IntegrationTester.app",)"},
        {std::nullopt, R"("bundleId":"Unknown vendor",)"},
    };
    for (const auto& [identifier, bundleId] : rows) {
        platform::DeviceInfo host;
        host.bundleIdentifier = identifier;
        DeviceInfoScope device(host);
        makeDefaultLoggerBuilder().build()->log("m", "info");
        const std::string env = identifier ? "local" : "prod";  // no identifier counts as prod
        const std::string expected = bundleId + std::string(R"("bundleVersion":"Unknown vendor version",)") +
                                     R"("device":"Linux","env":")" + env + '"';
        EXPECT_NE(telemetry.bodies().back().find(expected), std::string::npos) << telemetry.bodies().back();
    }
}

// One logger through every row: each posted body also shows that the row before left nothing.
TEST_F(LoggerTest, EachPostIsTheAttributesThenMessageAndLevel) {
    KvDatadogLogger logger("tok", "https://intake.test/v1/input/");
    struct Row {
        const char* level;
        std::optional<std::string_view> error;
        Map attributes;
        const char* posted;  // null: nothing is posted
        const char* why;
    };
    const Row rows[] = {
        {"error", "timed out", {}, R"({"message":"m: timed out","level":"error"})", "error text at error"},
        {"warn", "ignored", {{"id", "E"}}, R"({"id":"E","message":"m","level":"warn"})", "at no other level"},
        {"info", {}, {{"level", "x"}, {"n", 1}}, R"({"level":"info","n":1,"message":"m"})", "a key keeps its place"},
        {"info", {}, {{"ratio", std::nan("")}, {"kept", "no"}}, nullptr, "a non-finite number drops the post"},
        {"info", {}, {{"name", "\xFF"}}, nullptr, "so does text that is not UTF-8"},
        {"info", {}, {}, R"({"message":"m","level":"info"})", "a dropped post's attributes are gone too"},
    };
    for (const auto& row : rows) {
        const auto before = telemetry.bodies().size();
        logger.log("m", row.level, row.error, row.attributes);
        const auto bodies = telemetry.bodies();
        ASSERT_EQ(bodies.size(), before + (row.posted ? 1 : 0)) << row.why;
        if (row.posted) {
            EXPECT_EQ(bodies.back(), row.posted) << row.why;
        }
    }
}

TEST_F(LoggerTest, PostsJsonToTheIntakePathWithTheToken) {
    auto logger = KVDatadogLoggerBuilder().setClientToken("pubabc").build();
    logger->log("m", "info");
    auto request = telemetry.requests().at(0);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, "https://http-intake.logs.datadoghq.com/v1/input/pubabc");
    EXPECT_EQ(request.headers.get("Content-Type"), "application/json");
    EXPECT_EQ(request.timeout, std::chrono::milliseconds(60'000));

    setTelemetryIntakeOrigin("http://127.0.0.1:9/");
    auto local = KVDatadogLoggerBuilder().setClientToken("pubabc").build();
    setTelemetryIntakeOrigin(kDefaultTelemetryIntakeOrigin);
    local->log("m", "info");
    EXPECT_EQ(telemetry.requests().at(1).url, "http://127.0.0.1:9/v1/input/pubabc");
}

TEST_F(LoggerTest, SharedLoggerFollowsTheOriginAndTheSwitchSetLater) {
    logger().log("built", "info");  // the shared logger exists from here on
    setTelemetryIntakeOrigin("http://127.0.0.1:9");
    logger().log("moved", "info");
    setTelemetryIntakeOrigin(kDefaultTelemetryIntakeOrigin);
    logger().log("back", "info");
    auto requests = telemetry.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[1].url, "http://127.0.0.1:9/v1/input/pub5c1f09ae77d24b6083e1fa2b6c9d04ee");
    EXPECT_EQ(requests[2].url, "https://http-intake.logs.datadoghq.com/v1/input/pub5c1f09ae77d24b6083e1fa2b6c9d04ee");

    // Switched off, a whole card typed into an element posts nothing at all.
    setTelemetryEnabled(false);
    {
        auto number = std::make_shared<CardNumberUITextField>();
        platform::TextFieldDriver user(*number);
        user.type("4242424242424242");
        user.leave();
        CardBrand::addCardBrands(CardBrand::DefaultCardBrands());
    }
    setTelemetryEnabled(true);
    EXPECT_EQ(telemetry.requests().size(), 3u);
    logger().log("heard", "info");
    EXPECT_EQ(telemetry.requests().size(), 4u) << "switched on again";
}

TEST(LoggerFireAndForget, PostingDoesNotWaitForTheAnswer) {
    auto transport = std::make_shared<platform::RecordingTransport>();
    transport->holdResponses(true);
    auto previous = telemetrySession();
    setTelemetrySession(transport);
    KvDatadogLogger logger("tok", "https://intake.test/v1/input/");
    logger.log("one", "info");
    logger.log("two", "info");
    EXPECT_EQ(transport->heldCount(), 2u) << "both posted while no answer has come";
    transport->releaseAll();
    setTelemetrySession(previous);
}

TEST(LoggerDeathTest, BuildingWithoutATokenStops) {
    EXPECT_DEATH((void)KVDatadogLoggerBuilder().build(), "client token is required");
}

}  // namespace
