#pragma once
// The table-driven wire test of the vault's API classes: one row per call, walked against the
// loopback server through the completion form.
//
//     class SessionsAPIWireTest : public testing::ApiWireTest {};
//
//     TEST_F(SessionsAPIWireTest, EveryOperationOnTheWire) {
//         const std::vector<WireRow> rows = {
//             {.api = "SessionsAPI", .operation = "create",
//              .call = [](Finish done) {
//                  SessionsAPI::create(decoded<CreateSessionResponse>(done, [](const CreateSessionResponse& r) {
//                      EXPECT_EQ(r.nonce, "n");
//                  }));
//              },
//              .status = 201, .response = R"({"nonce":"n"})",
//              .method = "POST", .path = "/sessions"},
//         };
//         expectEveryOperationHasARow<SessionsAPI>(rows, "SessionsAPI");
//         walk(rows);
//     }
//
// For each row, `walk` checks: the call completes without error (and the row's check of the
// decoded value passes); exactly one request reached the server; its method; its path as the
// client put it on the wire (percent-encoding visible) and, decoded, as the server read it;
// its query items in order (decoded, and as sent when the row gives `rawQuery`); its body,
// as a JSON value with keys in order, with "Content-Type" "application/json", or no body and
// no "Content-Type" when the row has none.
//
// Rows of one API may repeat an operation (all parameters absent, all present, ...).

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/RequestBuilderFactory.hpp"
#include "platform/Url.hpp"

namespace korvane::testing {

// Called by a row's completion: nothing on success, else what went wrong.
using Finish = std::function<void(std::optional<std::string> failure)>;

struct WireRow {
    std::string api{};
    std::string operation{};
    std::function<void(Finish)> call{};
    int status = 200;
    std::string response{};
    std::string method{};
    // As sent, percent-encoded, without base path and query.
    std::string path{};
    std::vector<std::pair<std::string, std::string>> query{};
    // When given, the query exactly as sent (percent-encoding visible).
    std::optional<std::string> rawQuery{};
    // JSON text compared as a value with key order; absent: no body and no "Content-Type".
    std::optional<std::string> body{};
};

// A completion of the call form that reports to `done`, running `check` on a decoded value.
template <class R>
[[nodiscard]] std::function<void(std::optional<R>, std::optional<ErrorResponse>)> decoded(
    Finish done, std::function<void(const R&)> check = {}) {
    return
        [done = std::move(done), check = std::move(check)](std::optional<R> value, std::optional<ErrorResponse> error) {
            if (error) return done("failed with status " + std::to_string(error->code));
            if (!value) return done(std::string("no value and no error"));
            if (check) check(*value);
            done(std::nullopt);
        };
}

// Fails once for every operation of `Api` that no row names.
template <class Api>
void expectEveryOperationHasARow(const std::vector<WireRow>& rows, std::string_view apiName) {
    for (std::string_view name : Api::operationNames) {
        bool found = false;
        for (const WireRow& row : rows) found = found || (row.api == apiName && row.operation == name);
        EXPECT_TRUE(found) << "no wire row for " << apiName << "." << name;
    }
}

// The default factory, also noting the URL of every builder it makes: what the client put
// on the wire before any decoding by the server.
class RecordingBuilderFactory : public URLSessionRequestBuilderFactory {
public:
    [[nodiscard]] std::vector<std::string> urls() const {
        std::lock_guard lock(mutex_);
        return urls_;
    }

protected:
    std::shared_ptr<RequestBuilderBase> nonDecodableBuilder(const BuilderRecipe& recipe) const override {
        note(recipe);
        return URLSessionRequestBuilderFactory::nonDecodableBuilder(recipe);
    }
    std::shared_ptr<RequestBuilderBase> decodableBuilder(const BuilderRecipe& recipe) const override {
        note(recipe);
        return URLSessionRequestBuilderFactory::decodableBuilder(recipe);
    }

private:
    void note(const BuilderRecipe& recipe) const {
        std::lock_guard lock(mutex_);
        urls_.push_back(recipe.args.URLString);
    }
    mutable std::mutex mutex_;
    mutable std::vector<std::string> urls_;
};

class ApiWireTest : public VaultTest {
protected:
    void SetUp() override {
        VaultTest::SetUp();
        KorvaneAPI::setRequestBuilderFactory(factory);
        server.on("*", "/*", [canned = canned](const platform::testing::LoopbackRequest&) {
            std::lock_guard lock(canned->mutex);
            return reply(canned->status, canned->body);
        });
    }

    void walk(const std::vector<WireRow>& rows) {
        for (const WireRow& row : rows) walkOne(row);
    }

    void walkOne(const WireRow& row) {
        SCOPED_TRACE(row.api + "." + row.operation + " " + row.method + " " + row.path);
        answerWith(row.status, row.response);
        server.clearReceivedRequests();
        const std::size_t built = factory->urls().size();

        bool finished = false;
        row.call([&](std::optional<std::string> failure) {
            finished = true;
            EXPECT_FALSE(failure) << *failure;
        });
        ASSERT_TRUE(waitFor([&] { return finished; })) << "no completion";

        const auto urls = factory->urls();
        ASSERT_EQ(urls.size(), built + 1) << "one builder per call";
        const auto url = platform::Url::parse(urls.back());
        ASSERT_TRUE(url) << urls.back();
        EXPECT_EQ(url->percentEncodedPath(), row.path) << "as sent";

        const auto requests = server.receivedRequests();
        ASSERT_EQ(requests.size(), 1u);
        const auto& sent = requests[0];
        EXPECT_EQ(sent.method, row.method);
        EXPECT_EQ(sent.path, platform::percentDecode(row.path).value_or("<undecodable>")) << "as read";
        EXPECT_EQ(sent.query, row.query);
        if (row.rawQuery) {
            EXPECT_EQ(sent.rawQuery, *row.rawQuery);
        }
        if (row.body) {
            EXPECT_EQ(sent.header("Content-Type"), "application/json");
            const auto expected = nlohmann::ordered_json::parse(*row.body, nullptr, false);
            const auto actual = nlohmann::ordered_json::parse(sent.body, nullptr, false);
            ASSERT_FALSE(expected.is_discarded()) << "the row's body is not JSON";
            EXPECT_EQ(actual, expected) << "sent:\n" << sent.body << "\nexpected:\n" << expected.dump(2);
        } else {
            EXPECT_TRUE(sent.body.empty()) << sent.body;
            EXPECT_FALSE(sent.headers.contains("Content-Type"));
        }
    }

    // What the server answers to every request from now on.
    void answerWith(int status, std::string body) {
        std::lock_guard lock(canned->mutex);
        canned->status = status;
        canned->body = std::move(body);
    }

    std::shared_ptr<RecordingBuilderFactory> factory = std::make_shared<RecordingBuilderFactory>();
    // The answer to the row being walked; shared with the server's worker threads.
    struct Canned {
        std::mutex mutex;
        int status = 200;
        std::string body;
    };
    std::shared_ptr<Canned> canned = std::make_shared<Canned>();
};

}  // namespace korvane::testing
