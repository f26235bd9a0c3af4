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
using nlohmann::json;

struct DeviceInfoScope {
    explicit DeviceInfoScope(platform::DeviceInfo info) : previous(platform::deviceInfo()) {
        platform::setDeviceInfo(std::move(info));
    }
    ~DeviceInfoScope() { platform::setDeviceInfo(previous); }
    platform::DeviceInfo previous;
};

struct LoggerTest : ::testing::Test {
    std::vector<json> posted() const {
        std::vector<json> result;
        for (const auto& body : telemetry.bodies()) result.push_back(json::parse(body));
        return result;
    }
    elements_test::TelemetryCapture telemetry;
};

TEST_F(LoggerTest, FirstMessageCarriesTheBuildAttributesAndTheSecondDoesNot) {
    DeviceInfoScope device({.bundleIdentifier = "com.example.shop",
                            .shortVersion = "2.1",
                            .buildVersion = std::nullopt,
                            .vendorIdentifier = std::nullopt,
                            .deviceName = "Pixel"});
    auto logger = makeDefaultLoggerBuilder().build();
    logger->log("first", "info", std::nullopt, json::object({{"elementId", "E1"}}));
    logger->log("second", "info");
    auto bodies = posted();
    ASSERT_EQ(bodies.size(), 2u);
    EXPECT_EQ(bodies[0]["env"], "prod");
    EXPECT_EQ(bodies[0]["application"], "Korvane iOS Elements");
    EXPECT_EQ(bodies[0]["service"], "Korvane iOS Elements");
    EXPECT_EQ(bodies[0]["vendorId"], "Unknown vendorId");
    EXPECT_EQ(bodies[0]["bundleId"], "com.example.shop");
    EXPECT_EQ(bodies[0]["bundleVersion"], "2.1");
    EXPECT_EQ(bodies[0]["bundleBuildVersion"], "Unknown vendor build version");
    EXPECT_EQ(bodies[0]["device"], "Pixel");
    EXPECT_EQ(bodies[0]["kvElementsVersion"], "4.1.1");
    EXPECT_EQ(bodies[0]["elementId"], "E1");
    EXPECT_EQ(bodies[1], (json{{"message", "second"}, {"level", "info"}}));
}

TEST_F(LoggerTest, IntegrationTesterHostsReportTheLocalEnvironment) {
    platform::DeviceInfo tester;
    tester.bundleIdentifier = "com.example.IntegrationTester.app";
    DeviceInfoScope device(tester);
    auto logger = makeDefaultLoggerBuilder().build();
    logger->log("m", "info");
    EXPECT_EQ(posted().at(0)["env"], "local");
    DeviceInfoScope none({});
    auto other = makeDefaultLoggerBuilder().build();
    other->log("m", "info");
    EXPECT_EQ(posted().at(1)["env"], "prod") << "no identifier counts as prod";
    EXPECT_EQ(posted().at(1)["bundleId"], "Unknown vendor");
}

TEST_F(LoggerTest, ErrorTextIsAppendedOnlyAtErrorLevel) {
    KvDatadogLogger logger("tok", "https://intake.test/v1/input/");
    logger.log("Unsuccessful API response", "error", "timed out");
    logger.log("Invalid proxy request", "warn", "ignored");
    auto bodies = posted();
    EXPECT_EQ(bodies[0]["message"], "Unsuccessful API response: timed out");
    EXPECT_EQ(bodies[1]["message"], "Invalid proxy request");
    EXPECT_EQ(bodies[1]["level"], "warn");
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

TEST_F(LoggerTest, UnrepresentableAttributeDropsThatMessageAndEmptiesTheMap) {
    KvDatadogLogger logger("tok", "https://intake.test/v1/input/");
    logger.log("nan", "info", std::nullopt, json::object({{"ratio", std::nan("")}, {"kept", "no"}}));
    logger.log("bad text", "info", std::nullopt, json::object({{"name", "\xFF"}}));
    logger.log("next", "info");
    auto bodies = posted();
    ASSERT_EQ(bodies.size(), 1u);
    EXPECT_EQ(bodies[0], (json{{"message", "next"}, {"level", "info"}}));
}

TEST_F(LoggerTest, HostSwitchTurnsTelemetryOff) {
    KvDatadogLogger logger("tok", "https://intake.test/v1/input/");
    setTelemetryEnabled(false);
    logger.log("silent", "info");
    setTelemetryEnabled(true);
    EXPECT_TRUE(telemetry.requests().empty());
    logger.log("heard", "info");
    EXPECT_EQ(telemetry.requests().size(), 1u);
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
