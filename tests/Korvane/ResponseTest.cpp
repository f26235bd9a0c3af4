// Response processing: which statuses and bodies give a value and which give which error,
// against a recorded transport (no network).

#include <gtest/gtest.h>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/Token.hpp"
#include "platform/testing/RecordingTransport.hpp"

namespace korvane {
namespace {

class ResponseTest : public testing::VaultTest {
protected:
    void SetUp() override {
        VaultTest::SetUp();
        KorvaneAPI::setRequestBuilderFactory(std::make_shared<URLSessionRequestBuilderFactory>(&transport));
    }
    template <class T>
    typename RequestBuilder<T>::Result respond(int status, std::string body, std::string method = "GET") {
        transport.enqueueResponse(status, std::move(body));
        auto result = run(builder<T>(std::move(method), "/r"));
        EXPECT_TRUE(result.has_value());
        return std::move(*result);
    }
    platform::RecordingTransport transport;
};

TEST_F(ResponseTest, SuccessRangeIncludes200To299Only) {
    struct Row {
        int status;
        bool success;
    };
    for (Row row : {Row{199, false}, Row{200, true}, Row{299, true}, Row{300, false}, Row{404, false}}) {
        SCOPED_TRACE(row.status);
        auto model = respond<Token>(row.status, R"({"id":"t"})");
        auto none = respond<Void>(row.status, "anything");
        EXPECT_EQ(model.has_value(), row.success);
        EXPECT_EQ(none.has_value(), row.success);
        if (!row.success) {
            for (const ErrorResponse& error : {model.error(), none.error()}) {
                EXPECT_EQ(error.code, row.status);
                ASSERT_NE(error.errorAs<DecodableRequestBuilderError>(), nullptr);
                EXPECT_EQ(error.errorAs<DecodableRequestBuilderError>()->kind(),
                          DecodableRequestBuilderError::Kind::unsuccessfulHTTPStatusCode);
            }
            EXPECT_EQ(model.error().data, R"({"id":"t"})") << "the error body reaches the caller raw";
            EXPECT_EQ(none.error().data, "anything");
        }
    }
}

TEST_F(ResponseTest, EmptyBodyFailsForAModelAndSucceedsWithoutOne) {
    auto model = respond<Token>(204, "");
    ASSERT_FALSE(model);
    EXPECT_EQ(model.error().code, 204);
    EXPECT_FALSE(model.error().data);
    ASSERT_TRUE(model.error().response);
    EXPECT_EQ(model.error().response->status, 204);
    EXPECT_EQ(model.error().errorAs<DecodableRequestBuilderError>()->kind(),
              DecodableRequestBuilderError::Kind::emptyDataResponse);

    auto none = respond<Void>(204, "");
    ASSERT_TRUE(none);
    EXPECT_EQ(none->statusCode, 204);

    auto optionalModel = respond<std::optional<Token>>(200, "");
    ASSERT_TRUE(optionalModel);
    EXPECT_FALSE(optionalModel->body);

    auto any = respond<anycodable::AnyCodable>(200, "");  // AnyCodable has a nil value: the empty one
    ASSERT_TRUE(any);
    EXPECT_TRUE(any->body.value.isEmpty());
}

TEST_F(ResponseTest, BodiesThatDoNotDecodeGiveTheStatusTheBodyAndTheDecoderError) {
    std::string deep(10000, '[');
    deep += std::string(10000, ']');
    struct Row {
        const char* why;
        std::string body;
    };
    const Row rows[] = {
        {"truncated", R"({"total_items": 3, "page_nu)"},
        {"invalid UTF-8", "{\"total_items\": 1, \"x\": \"\xC3\x28\"}"},
        {"number out of int range", R"({"total_items": 1e30})"},
        {"fraction where an int is expected", R"({"page_size": 1.5})"},
        {"string where an int is expected", R"({"page_size": "10"})"},
        {"nested 10,000 levels", deep},
        {"not an object", "[]"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        auto result = respond<Pagination>(201, row.body);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, 201);
        EXPECT_EQ(result.error().data, row.body);
        EXPECT_NE(result.error().errorAs<anycodable::DecodingError>(), nullptr) << describe(result.error().error);
    }
}

TEST_F(ResponseTest, TextAndDataResultsTakeTheBodyAsItCame) {
    auto text = respond<std::string>(200, "plain");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->body, "plain");

    auto invalid = respond<std::string>(200, "\xFF\xFE");
    ASSERT_TRUE(invalid);
    EXPECT_EQ(invalid->body, "") << "undecodable text gives the empty string";

    auto data = respond<anycodable::Data>(200, std::string("\x00\xFF", 2));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->body.bytes, std::string("\x00\xFF", 2));
}

TEST_F(ResponseTest, TransportErrorGivesMinusOneWithoutDataOrResponse) {
    transport.enqueueError(platform::HttpErrorCode::cannotConnect, "refused");
    auto result = run(builder<Token>("GET", "/r"));
    ASSERT_TRUE(result && !*result);
    EXPECT_EQ(result->error().code, -1);
    EXPECT_FALSE(result->error().data);
    EXPECT_FALSE(result->error().response);
    EXPECT_EQ(result->error().errorAs<platform::HttpError>()->code, platform::HttpErrorCode::cannotConnect);
}

TEST_F(ResponseTest, ResponseHeadersAreOneMapWithRepeatedFieldsJoined) {
    platform::HttpHeaders headers;
    headers.add("X-Trace", "a");
    headers.add("Set-Cookie", "1");
    headers.add("set-cookie", "2");
    transport.enqueueResponse(200, "{}", headers);
    auto result = run(builder<Token>("GET", "/r"));
    ASSERT_TRUE(result && *result);
    EXPECT_EQ((*result)->header.at("X-Trace"), "a");
    EXPECT_EQ((*result)->header.at("Set-Cookie"), "1, 2");
}

}  // namespace
}  // namespace korvane
