#include "Korvane/FormDataEncoding.hpp"
#include "Korvane/FormURLEncoding.hpp"
#include "Korvane/JSONDataEncoding.hpp"
#include "Korvane/JSONEncodingHelper.hpp"
#include "Korvane/URLEncoding.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

namespace korvane {
namespace {

using anycodable::Array;
using anycodable::Value;

platform::HttpRequest requestTo(std::string url) {
    platform::HttpRequest request;
    request.method = "POST";
    request.url = std::move(url);
    return request;
}

class TempFile {
public:
    TempFile(const std::string& name, const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() / ("korvane-" + platform::Uuid::random().string()) / name) {
        std::filesystem::create_directories(path_.parent_path());
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~TempFile() { std::filesystem::remove_all(path_.parent_path()); }
    [[nodiscard]] platform::Url url() const { return platform::Url::fileUrl(path_); }

private:
    std::filesystem::path path_;
};

TEST(FormDataEncodingTest, DataPartsByteForByte) {
    Parameters parameters{{"name", "Ann"}, {"ids", Array{Value(7), Value("x")}}, {"flag", true}};
    auto body = FormDataEncoding().body(parameters, "B");
    ASSERT_TRUE(body);
    EXPECT_EQ(*body,
              "--B\r\nContent-Disposition: form-data; name=\"name\"\r\n\r\nAnn"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"ids\"\r\n\r\n7"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"ids\"\r\n\r\nx"
              "\r\n--B\r\nContent-Disposition: form-data; name=\"flag\"\r\n\r\n1"
              "\r\n--B--\r\n");
}

TEST(FormDataEncodingTest, FilePartsCarryFileNameAndContentType) {
    TempFile png("pic.PNG", std::string("\x89PNG\0", 5));  // binary, with a NUL
    TempFile bare("README", "r");
    auto body = FormDataEncoding().body(Parameters{{"f", png.url()}, {"g", bare.url()}}, "B");
    ASSERT_TRUE(body);
    const std::string pngBytes("\x89PNG\0", 5);
    EXPECT_EQ(*body,
              "--B\r\nContent-Disposition: form-data; name=\"f\"; filename=\"pic.PNG\"\r\n"
              "Content-Type: image/png\r\n\r\n" +
                  pngBytes +
                  "\r\n--B\r\nContent-Disposition: form-data; name=\"g\"; filename=\"README\"\r\n"
                  "Content-Type: application/octet-stream\r\n\r\nr\r\n--B--\r\n");

    FormDataEncoding custom([](const platform::Url&) { return std::optional<std::string>("text/x-custom"); });
    EXPECT_NE(custom.body(Parameters{{"g", bare.url()}}, "B")->find("Content-Type: text/x-custom\r\n"),
              std::string::npos);
}

TEST(FormDataEncodingTest, EncodeSetsBoundaryHeaderAndFailsOnUnreadableFile) {
    auto request = requestTo("https://v.test/x");
    request.headers.set("Content-Type", "text/plain");
    auto encoded = FormDataEncoding().encode(request, Parameters{{"a", "b"}});
    ASSERT_TRUE(encoded);
    auto contentType = *encoded->headers.get("Content-Type");
    ASSERT_EQ(contentType.rfind("multipart/form-data; boundary=Boundary-", 0), 0u) << contentType;
    std::string boundary = contentType.substr(contentType.find('=') + 1);
    EXPECT_EQ(boundary.size(), 9u + 36u);
    EXPECT_TRUE(encoded->body.ends_with("\r\n--" + boundary + "--\r\n"));

    auto missing = FormDataEncoding().encode(request, Parameters{{"f", platform::Url::fileUrl("/no/such/file")}});
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, ParameterEncodingError::Code::fileReadFailed);
}

TEST(FormDataEncodingTest, EmptyParametersLeaveTheRequestAlone) {
    auto request = requestTo("https://v.test/x");
    request.body = "old";
    EXPECT_EQ(*FormDataEncoding().encode(request, Parameters{}), request);
    EXPECT_EQ(*FormDataEncoding().encode(request, std::nullopt), request);
}

TEST(FormDataEncodingDeathTest, UnprocessableValueStops) {
    EXPECT_DEATH((void)FormDataEncoding().body(Parameters{{"when", anycodable::Null{}}}, "B"),
                 "^Korvane/URLSessionImplementations: Fatal error: Unprocessable value <null> with key when\n");
    EXPECT_DEATH((void)FormDataEncoding().body(Parameters{{"m", Array{Value(anycodable::Map{{"a", 1}})}}}, "B"),
                 R"(Fatal error: Unprocessable value \["a": 1\] with key m)");
}

TEST(FormURLEncodingTest, BodyIsTheDecodedQuery) {
    auto request = requestTo("https://v.test/x");
    request.body = "stale";
    auto encoded = FormURLEncoding().encode(request, Parameters{{"a", "x y&z"}, {"b", Array{Value(1), Value(2)}}});
    ASSERT_TRUE(encoded);
    EXPECT_EQ(encoded->body, "a=x y&z&b=1&b=2");
    EXPECT_EQ(encoded->headers.get("Content-Type"), "application/x-www-form-urlencoded");

    auto none = FormURLEncoding().encode(request, std::nullopt);
    EXPECT_EQ(none->body, "") << "no items clears an earlier body";

    request.headers.set("Content-Type", "application/custom");
    EXPECT_EQ(FormURLEncoding().encode(request, std::nullopt)->headers.get("Content-Type"), "application/custom");
}

TEST(URLEncodingTest, ReplacesTheQueryWithEscapedItems) {
    auto request = requestTo("https://v.test/a?old=1");
    auto encoded = URLEncoding().encode(request, Parameters{{"q", "a b&c=d+é/?"}, {"id", Array{Value("1"), Value()}}});
    ASSERT_TRUE(encoded);
    EXPECT_EQ(encoded->url, "https://v.test/a?q=a%20b%26c%3Dd+%C3%A9/?&id=1");

    auto onlyAbsent = URLEncoding().encode(request, Parameters{{"q", Value()}});
    EXPECT_EQ(onlyAbsent->url, "https://v.test/a") << "no items removes the query";
    EXPECT_EQ(URLEncoding().encode(request, Parameters{})->url, request.url);
    EXPECT_EQ(URLEncoding().encode(request, std::nullopt)->url, request.url);
}

TEST(URLEncodingTest, RequestWithoutUrlFails) {
    auto encoded = URLEncoding().encode(requestTo(""), Parameters{{"a", 1}});
    ASSERT_FALSE(encoded);
    EXPECT_EQ(encoded.error().code, ParameterEncodingError::Code::requestMissingURL);
}

TEST(JSONDataEncodingTest, SetsBodyAndDefaultContentType) {
    auto parameters = JSONDataEncoding::encodingParameters(std::string("{}"));
    auto encoded = JSONDataEncoding().encode(requestTo("https://v.test"), parameters);
    EXPECT_EQ(encoded->body, "{}");
    EXPECT_EQ(encoded->headers.get("Content-Type"), "application/json");

    auto request = requestTo("https://v.test");
    request.headers.set("Content-Type", "application/json; charset=utf-8");
    EXPECT_EQ(JSONDataEncoding().encode(request, parameters)->headers.get("Content-Type"),
              "application/json; charset=utf-8");

    EXPECT_FALSE(JSONDataEncoding::encodingParameters(std::string()));
    EXPECT_EQ(*JSONDataEncoding().encode(request, Parameters{{"jsonData", "not data"}}), request);
}

struct Body {
    std::optional<std::string> type;
    std::optional<double> amount;
    friend bool operator==(const Body&, const Body&) = default;
    static constexpr auto jsonFields() {
        return fields(optional("type", &Body::type), optional("amount", &Body::amount));
    }
};

TEST(JSONEncodingHelperTest, TypedBodyIsPrettyPrintedAndFailureSendsNoBody) {
    auto parameters = JSONEncodingHelper::encodingParameters(Body{"card", 1.5});
    ASSERT_TRUE(parameters);
    EXPECT_EQ(parameters->find("jsonData")->get<anycodable::Data>()->bytes,
              "{\n  \"type\" : \"card\",\n  \"amount\" : 1.5\n}");
    EXPECT_FALSE(JSONEncodingHelper::encodingParameters(std::optional<Body>()));

    platform::ConsoleCapture console;
    EXPECT_FALSE(JSONEncodingHelper::encodingParameters(Body{"x", std::nan("")}));
    EXPECT_EQ(console.lines(),
              std::vector<std::string>{"The data couldn't be written because it isn't in the correct format."});
}

TEST(JSONEncodingHelperTest, UntypedFormAcceptsOnlyJsonContainers) {
    auto ok = JSONEncodingHelper::encodingParametersForObject(anycodable::Map{{"a", Array{Value(1)}}});
    ASSERT_TRUE(ok);
    EXPECT_EQ(ok->find("jsonData")->get<anycodable::Data>()->bytes, "{\n  \"a\" : [\n    1\n  ]\n}");
    platform::ConsoleCapture console;
    EXPECT_FALSE(JSONEncodingHelper::encodingParametersForObject(Value("fragment")));
    EXPECT_FALSE(JSONEncodingHelper::encodingParametersForObject(anycodable::Map{{"d", anycodable::Date{}}}));
    EXPECT_FALSE(JSONEncodingHelper::encodingParametersForObject(Value()));
    EXPECT_EQ(console.lines().size(), 2u);
}

}  // namespace
}  // namespace korvane
