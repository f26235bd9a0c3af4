// A card added and tokenized while the answers turn hostile: echoes of the card number in
// truncated or malformed bodies, bodies of the wrong shape, redirects to another origin. Every
// call must end in an error value, and the number must reach no error text, no telemetry body
// and no console line.

#include <nlohmann/json.hpp>

#include "VaultTestSupport.hpp"
#include "platform/Console.hpp"
#include "platform/LoopbackServer.hpp"

namespace vault_test {
namespace {

using korvane::elements::ElementsError;
using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;
using platform::testing::respond;

// Longer than the published bin ("42424242"), so only a leak matches.
const std::vector<std::string> kNumberFragments{"4242424242424242", "424242424242", "4242 4242 4242"};

enum class Call { tokenize, getToken, proxy, httpGet };

class HostileAnswers : public VaultTest {
protected:
    // Runs `call` against the current base path and answers what its error tells the host ("" on
    // success).
    std::string run(Call call, const std::string& helperUrl) {
        Card card;
        std::optional<ElementsError> error;
        bool done = false;
        auto finish = [&](auto& outcome) {
            EXPECT_TRUE(waitFor([&] { return outcome.calls > 0; }));
            error = outcome.error;
            done = true;
        };
        switch (call) {
            case Call::tokenize: {
                Outcome<anycodable::AnyCodable> out;
                KorvaneElements::tokenize(card.body(), std::nullopt, out.completion());
                finish(out);
                break;
            }
            case Call::getToken: {
                Outcome<korvane::elements::GetTokenByIdResponse> out;
                KorvaneElements::getTokenById("t1", std::nullopt, out.completion());
                finish(out);
                break;
            }
            case Call::proxy: {
                korvane::elements::ProxyHttpRequest request;
                request.method = korvane::elements::HttpMethod::post;
                request.body = card.body();
                HttpOutcome out;
                KorvaneElements::proxy("sandbox-api-key", "echo-key", std::nullopt, request, out.completion());
                finish(out);
                break;
            }
            case Call::httpGet: {
                HttpOutcome out;
                KorvaneElements::get(helperUrl, std::nullopt, out.completion());
                finish(out);
                break;
            }
        }
        EXPECT_TRUE(done);
        if (!error) return "";
        // The error's text, and any bytes of the answer it carries to the host.
        std::string text = korvane::elements::describe(*error);
        if (const auto* vault = std::get_if<korvane::ErrorResponse>(&*error)) {
            text += vault->data.value_or("") + (vault->response ? vault->response->body : "");
        }
        return text;
    }

    void expectNoNumberIn(const std::string& text, const std::string& where) {
        for (const auto& fragment : kNumberFragments) {
            EXPECT_EQ(text.find(fragment), std::string::npos) << where << ": " << text;
        }
    }
};

TEST_F(HostileAnswers, NoCardNumberReachesAnErrorTextTelemetryOrTheConsole) {
    platform::ConsoleCapture console;
    // The sandbox first, as a real add-card flow would meet it.
    ASSERT_EQ(run(Call::tokenize, ""), "");

    platform::testing::LoopbackServer hostile;
    KorvaneElements::setBasePath(hostile.baseUrl());
    const std::string echoed = R"({"data": {"number": "4242424242424242", "cvc": "737"}})";
    struct Case {
        Call call;
        LoopbackResponse answer;
        const char* error;  // the kind the error text names
        const char* why;
    };
    const Case cases[] = {
        {Call::tokenize, respond(201, echoed.substr(0, 30)), "unexpected end of input", "a truncated body"},
        {Call::tokenize, respond(201, R"({"number": 4242424242424242x})"), "unexpected character",
         "a number running into a letter"},
        {Call::tokenize, platform::testing::cutMidBody(echoed), "connectionLost", "a connection cut mid-body"},
        {Call::tokenize, respond(307, "", {{"Location", vault.baseUrl() + "/tokenize"}}), "redirectRefused",
         "a redirect to another origin"},
        {Call::getToken, respond(200, R"({"id": "t1", "data": "4242424242424242"})"), "typeMismatch",
         "token data that is not an object"},
        {Call::getToken, respond(200, echoed + "}"), "unexpected character", "a token with a stray brace"},
        {Call::proxy, respond(200, R"(["4242424242424242"])"), "typeMismatch", "a proxy answer that is an array"},
        {Call::proxy, respond(200, echoed.substr(0, 40)), "unexpected end of input", "a truncated proxy answer"},
        {Call::httpGet, respond(200, R"([{"number": "4242424242424242"}])"), "typeMismatch",
         "an HTTP helper answer that is an array"},
        {Call::httpGet, respond(200, "{\"number\": \"4242424242424242\" nope}"), "unexpected character",
         "a malformed HTTP helper answer"},
    };
    for (const auto& c : cases) {
        hostile.on("*", "/tokenize", [&](const LoopbackRequest&) { return c.answer; });
        hostile.on("*", "/tokens/t1", [&](const LoopbackRequest&) { return c.answer; });
        hostile.on("*", "/proxy", [&](const LoopbackRequest&) { return c.answer; });
        hostile.on("*", "/answer", [&](const LoopbackRequest&) { return c.answer; });
        const std::string error = run(c.call, hostile.baseUrl() + "/answer");
        EXPECT_NE(error.find(c.error), std::string::npos) << c.why << ": " << error;
        expectNoNumberIn(error, c.why);
    }
    EXPECT_EQ(vault.requestCount(), 1u) << "the redirect reached no other origin";

    ASSERT_TRUE(waitFor([&] { return telemetry->requests().size() >= 2 * std::size(cases); }));
    for (const auto& request : telemetry->requests()) expectNoNumberIn(request.body, "telemetry");
    for (const auto& line : console.lines()) expectNoNumberIn(line, "console");
}

}  // namespace
}  // namespace vault_test
