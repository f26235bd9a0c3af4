#pragma once
// The wire table of the vault's API classes: one row per call, each walked in both call forms
// against the loopback server.
//
//     const WireRow rows[] = {
//         {.call = on(OP(ProxiesAPI, getById), kId), .request = "GET /proxies/" ID,
//          .response = R"({"id":")" ID R"(","destination_url":"https://psp.test"})"},
//     };
//     expectEveryOperationHasARow<ProxiesAPI>(rows, "ProxiesAPI");
//     walk(rows);
//
// For each row, `walk` checks:
//  - the builder form: the row's method and URL (base path, path and query exactly as sent,
//    percent-encoding visible), authentication required, no headers of its own, nothing sent;
//  - the completion form: it completes without error; exactly one request reached the server,
//    with the method, the path as the server decoded it and the raw query; the row's `query`
//    items when it gives them (the query as the vault reads it); the body as a JSON value with
//    keys in order and "Content-Type" "application/json", or no body and no "Content-Type";
//  - the answer: the decoded value, encoded again, is the row's `response` as a JSON value with
//    keys in order (so a row's answer lists its keys in field order, and a result of the wrong
//    model drops keys). Operations without a result ignore the answer.
// Rows may repeat an operation (all parameters absent, all present, ...).

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/Operation.hpp"
#include "platform/Url.hpp"

namespace korvane::testing {

// Called by a row's completion: nothing on success, else what went wrong.
using Finish = std::function<void(std::optional<std::string> failure)>;

// One call of one operation with its arguments, in both forms.
struct WireCall {
    std::string api{};
    std::string operation{};
    std::function<std::shared_ptr<RequestBuilderBase>()> build{};
    // Calls the completion form; the completion compares the decoded value with the answer.
    std::function<void(std::string answer, Finish)> call{};
};

template <class R>
[[nodiscard]] std::function<void(std::optional<R>, std::optional<ErrorResponse>)> expecting(std::string answer,
                                                                                            Finish done) {
    return [answer = std::move(answer), done = std::move(done)](std::optional<R> value,
                                                                std::optional<ErrorResponse> error) {
        if (error) return done("failed with status " + std::to_string(error->code) + ": " + describe(error->error));
        if (!value) return done(std::string("no value and no error"));
        if constexpr (!std::is_same_v<R, Void>) {
            const auto text = CodableHelper::encode(*value);
            if (!text) return done("the value does not encode: " + text.error().description());
            if (nlohmann::ordered_json::parse(*text) != nlohmann::ordered_json::parse(answer, nullptr, false)) {
                return done("decoded as:\n" + *text);
            }
        }
        done(std::nullopt);
    };
}

// The call of `op` with `args` (typed: braced lists can't pass through); see OP.
template <class R, class... Params, class... Args>
[[nodiscard]] WireCall on(const Operation<R, Params...>& op, std::string api, std::string operation, Args... args) {
    return {std::move(api), std::move(operation), [&op, args...] { return op.withRequestBuilder(args...); },
            [&op, args...](std::string answer, Finish done) { op(args..., expecting<R>(std::move(answer), done)); }};
}
#define OP(api, name) api::name, #api, #name

struct WireRow {
    WireCall call{};
    // "METHOD /path?query", after the base path, exactly as sent.
    std::string request{};
    // JSON compared as a value with key order; absent: no body and no "Content-Type".
    std::optional<std::string> body{};
    int status = 200;
    std::string response{};
    // When given, the query items as the vault reads them, in order.
    std::vector<std::pair<std::string, std::string>> query{};
};

// Fails once for every operation of `Api` that no row names.
template <class Api, class Rows>
void expectEveryOperationHasARow(const Rows& rows, std::string_view apiName) {
    for (std::string_view name : Api::operationNames) {
        bool found = false;
        for (const WireRow& row : rows) found = found || (row.call.api == apiName && row.call.operation == name);
        EXPECT_TRUE(found) << "no wire row for " << apiName << "." << name;
    }
}

class WireTableTest : public VaultTest {
protected:
    template <class Rows>
    void walk(const Rows& rows) {
        for (const WireRow& row : rows) walkOne(row);
    }

    void walkOne(const WireRow& row) {
        SCOPED_TRACE(row.call.api + "." + row.call.operation + ": " + row.request);
        const auto space = row.request.find(' ');
        const std::string method = row.request.substr(0, space);
        const std::string url = row.request.substr(space + 1);
        const auto mark = url.find('?');
        const std::string path = url.substr(0, mark);
        const std::string rawQuery = mark == std::string::npos ? "" : url.substr(mark + 1);

        server.clearReceivedRequests();
        const auto built = row.call.build();
        EXPECT_EQ(built->method(), method);
        EXPECT_EQ(built->URLString(), server.baseUrl() + url);
        EXPECT_TRUE(built->requiresAuthentication());
        EXPECT_TRUE(built->headers.empty());
        EXPECT_EQ(server.requestCount(), 0u) << "the builder form sends nothing";

        answer(server, "/*", row.status, row.response);  // the latest route wins
        bool finished = false;
        row.call.call(row.response, [&](std::optional<std::string> failure) {
            finished = true;
            EXPECT_FALSE(failure) << *failure;
        });
        ASSERT_TRUE(waitFor([&] { return finished; })) << "no completion";

        const auto requests = server.receivedRequests();
        ASSERT_EQ(requests.size(), 1u);
        const auto& sent = requests[0];
        EXPECT_EQ(sent.method, method);
        EXPECT_EQ(sent.path, platform::percentDecode(path).value_or("<undecodable>"));
        EXPECT_EQ(sent.rawQuery, rawQuery);
        if (!row.query.empty()) {
            EXPECT_EQ(sent.query, row.query);
        }
        if (row.body) {
            EXPECT_EQ(sent.header("Content-Type"), "application/json");
            const auto expected = nlohmann::ordered_json::parse(*row.body, nullptr, false);
            ASSERT_FALSE(expected.is_discarded()) << "the row's body is not JSON";
            EXPECT_EQ(nlohmann::ordered_json::parse(sent.body, nullptr, false), expected) << "sent:\n" << sent.body;
        } else {
            EXPECT_TRUE(sent.body.empty()) << sent.body;
            EXPECT_FALSE(sent.headers.contains("Content-Type"));
        }
    }
};

}  // namespace korvane::testing
