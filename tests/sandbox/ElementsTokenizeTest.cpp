// The element library's vault calls against the sandbox vault: what goes on the wire, what
// reaches the completion, what reaches telemetry, and how faults end.

#include <nlohmann/json.hpp>

#include "Korvane/RequestBuilderFactory.hpp"
#include "VaultTestSupport.hpp"
#include "platform/LoopbackServer.hpp"
#include "platform/Uuid.hpp"

namespace vault_test {
namespace {

using korvane::elements::elementReferenceOf;
using korvane::elements::ElementsError;
using korvane::elements::TokenizingError;

const std::vector<std::string> kCardSecrets{"4242424242424242", "4242 4242 4242 4242", "737", "2039", "12/39"};

anycodable::Map dataOf(const anycodable::AnyCodable& token) {
    const auto* data = token.value.get<anycodable::Map>()->find("data");
    return *data->get<anycodable::Map>();
}

class ElementsTokenize : public VaultTest {};

TEST_F(ElementsTokenize, ValuesTravelOnlyInTheBodyWithTheElementHeaders) {
    Card card;
    Outcome<anycodable::AnyCodable> first, second;
    KorvaneElements::tokenize(card.body(), std::nullopt, first.completion());
    KorvaneElements::tokenize(card.body(), std::nullopt, second.completion());
    ASSERT_TRUE(waitFor([&] { return first.calls && second.calls; }));
    ASSERT_FALSE(first.error) << describe(*first.error);
    ASSERT_TRUE(first.value);

    // The vault's answer reaches the completion.
    EXPECT_EQ(*dataOf(*first.value).find("number")->get<std::string>(), "424242XXXXXX4242");

    const auto requests = wire.requests();
    ASSERT_EQ(requests.size(), 2u);
    std::set<std::string> traceIds;
    for (const auto& sent : requests) {
        EXPECT_EQ(sent.method, "POST");
        EXPECT_EQ(sent.path, "/tokenize");
        EXPECT_EQ(sent.rawQuery, "");
        EXPECT_EQ(sent.headers.get("User-Agent"), "Korvane iOS Elements");
        EXPECT_EQ(sent.headers.get("KV-API-KEY"), tovi::sandbox::SandboxVaultServer::kDefaultApiKey);
        ASSERT_TRUE(sent.headers.get("KV-TRACE-ID"));
        EXPECT_TRUE(platform::Uuid::parse(*sent.headers.get("KV-TRACE-ID")));
        traceIds.insert(*sent.headers.get("KV-TRACE-ID"));
        // The trace id is a random UUID (checked above), whose hex digits hold "737" or "2039"
        // by chance now and then.
        for (const auto& [name, value] : sent.headers) {
            if (platform::equalsIgnoringCase(name, "KV-TRACE-ID")) continue;
            for (const auto& secret : kCardSecrets) EXPECT_EQ(value.find(secret), std::string::npos) << name;
        }
        EXPECT_EQ(nlohmann::json::parse(sent.body), (nlohmann::json{{"type", "card"}, {"data", kCardData}}));
    }
    EXPECT_EQ(traceIds.size(), 2u) << "a fresh trace id per call";
}

// The sandbox's HTTP parser drops fields with an empty value, so the header is looked at on
// the transport; the vault, seeing no key, refuses the call.
TEST_F(ElementsTokenize, AnEmptyStaticKeyIsStillSentAndRefused) {
    KorvaneElements::setApiKey("");
    Card card;
    Outcome<anycodable::AnyCodable> refused;
    KorvaneElements::tokenize(card.body(), std::nullopt, refused.completion());
    ASSERT_TRUE(waitFor([&] { return refused.calls > 0; }));
    ASSERT_TRUE(refused.error);
    EXPECT_EQ(std::get<korvane::ErrorResponse>(*refused.error).code, 401);

    platform::RecordingTransport transport;
    transport.enqueueResponse(201, R"({"id": "t"})");
    korvane::KorvaneAPI::setRequestBuilderFactory(
        std::make_shared<korvane::URLSessionRequestBuilderFactory>(&transport));
    Outcome<anycodable::AnyCodable> out;
    KorvaneElements::tokenize(card.body(), std::nullopt, out.completion());
    ASSERT_TRUE(waitFor([&] { return out.calls > 0; }));
    korvane::KorvaneAPI::setRequestBuilderFactory(nullptr);
    ASSERT_EQ(transport.requestCount(), 1u);
    const auto headers = transport.requests().at(0).headers;
    ASSERT_TRUE(headers.contains("KV-API-KEY"));
    EXPECT_EQ(headers.get("KV-API-KEY"), "");
}

TEST_F(ElementsTokenize, AnIncompleteElementSendsNothingAndCompletesBeforeTheCallReturns) {
    Card card("4242 4242 4242 4242", "1239", "73");
    ASSERT_FALSE(card.cvc->metadata().complete);
    const anycodable::Map body = card.body();
    Outcome<anycodable::AnyCodable> out;
    KorvaneElements::tokenize(body, std::nullopt, out.completion());
    EXPECT_EQ(out.calls, 1) << "before the call returned, without the response queue";
    EXPECT_EQ(queue->pendingCount(), 0u);
    ASSERT_TRUE(out.error);
    EXPECT_EQ(std::get<TokenizingError>(*out.error), TokenizingError::invalidInput);
    EXPECT_FALSE(out.value);
    EXPECT_EQ(vault.requestCount(), 0u);
    const auto warnings = telemetryWith("Tried to tokenize while element is incomplete");
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0]["elementId"], card.cvc->elementId());
    EXPECT_EQ(warnings[0]["level"], "warn");

    // The host's body still holds its elements: the references replaced before the failure
    // were replaced in the call's own copy, so finishing the CVC and sending again sends the
    // values as they are now.
    const auto& data = *body.find("data")->get<anycodable::Map>();
    for (const auto& [key, value] : data) EXPECT_NE(elementReferenceOf(value), nullptr) << key;
    platform::TextFieldDriver(*card.cvc).type("7");
    Outcome<anycodable::AnyCodable> again;
    KorvaneElements::tokenize(body, std::nullopt, again.completion());
    ASSERT_TRUE(waitFor([&] { return again.calls > 0; }));
    EXPECT_FALSE(again.error);
    ASSERT_EQ(vault.requestCount(), 1u);
    EXPECT_EQ(nlohmann::json::parse(wire.requests().at(0).body)["data"]["cvc"], "737");
}

TEST_F(ElementsTokenize, CreateTokenMapsEveryFieldAndReplacesTheData) {
    Card card;
    korvane::elements::CreateToken request;
    request.type = "card";
    request.data = *card.body().find("data")->get<anycodable::Map>();
    request.metadata = std::map<std::string, std::string>{{"customer", "c-1"}};
    request.mask = "{{ data.number | reveal_last: 4 }}";
    request.deduplicateToken = true;
    request.containers = std::vector<std::string>{"/pci/high/"};
    Outcome<korvane::CreateTokenResponse> out;
    KorvaneElements::createToken(request, std::nullopt, out.completion());
    ASSERT_TRUE(waitFor([&] { return out.calls > 0; }));
    ASSERT_FALSE(out.error) << describe(*out.error);
    ASSERT_TRUE(out.value && out.value->id);
    EXPECT_EQ(out.value->type, "card");
    EXPECT_EQ(out.value->metadata, request.metadata);

    const auto sent = wire.requests().at(0);
    EXPECT_EQ(sent.path, "/tokens");
    EXPECT_EQ(nlohmann::json::parse(sent.body), (nlohmann::json{{"type", "card"},
                                                                {"data", kCardData},
                                                                {"metadata", {{"customer", "c-1"}}},
                                                                {"mask", "{{ data.number | reveal_last: 4 }}"},
                                                                {"deduplicate_token", true},
                                                                {"containers", {"/pci/high/"}}}));
    EXPECT_EQ(telemetryWith("Starting API request").at(0)["endpoint"], "POST /tokens");
}

TEST_F(ElementsTokenize, ARevealedTokenFillsElementsWithoutTheHostReadingIt) {
    Card card;
    Outcome<anycodable::AnyCodable> tokenized;
    KorvaneElements::tokenize(card.body(), std::nullopt, tokenized.completion());
    ASSERT_TRUE(waitFor([&] { return tokenized.calls > 0; }));
    const std::string id = *tokenized.value->value.get<anycodable::Map>()->find("id")->get<std::string>();

    Outcome<korvane::elements::GetTokenByIdResponse> read;
    KorvaneElements::getTokenById(id, std::nullopt, read.completion());
    ASSERT_TRUE(waitFor([&] { return read.calls > 0; }));
    ASSERT_FALSE(read.error) << describe(*read.error);
    ASSERT_TRUE(read.value && read.value->data);
    EXPECT_EQ(read.value->id, id);
    EXPECT_EQ(read.value->type, "card");
    EXPECT_TRUE(read.value->tenantId);
    EXPECT_TRUE(read.value->createdAt);

    const auto& data = *read.value->data;
    for (const char* key : {"number", "expiration_month", "expiration_year", "cvc"}) {
        SCOPED_TRACE(key);
        const auto leaf = data[key];
        ASSERT_TRUE(leaf);
        EXPECT_FALSE(leaf->rawValue());
        ASSERT_NE(leaf->elementValueReference(), nullptr);
        EXPECT_EQ(leaf->elementValueReference()->isComplete(), true);
    }

    // The leaves go into fresh elements, and a new tokenize from those sends the same card.
    Card shown("", "", "");
    shown.number->setValue(data["number"]->elementValueReference());
    shown.expiry->setValue(data["expiration_month"]->elementValueReference(),
                           data["expiration_year"]->elementValueReference());
    shown.cvc->setValue(data["cvc"]->elementValueReference());
    EXPECT_TRUE(shown.number->metadata().complete);
    EXPECT_TRUE(shown.expiry->metadata().complete);
    wire.clear();
    Outcome<anycodable::AnyCodable> again;
    KorvaneElements::tokenize(shown.body(), std::nullopt, again.completion());
    ASSERT_TRUE(waitFor([&] { return again.calls > 0; }));
    ASSERT_FALSE(again.error) << describe(*again.error);
    EXPECT_EQ(nlohmann::json::parse(wire.requests().at(0).body)["data"], kCardData);

    // The token id stays out of telemetry: the label holds the word "id".
    EXPECT_EQ(telemetryWith("Successful API response").at(1)["endpoint"], "GET /tokens/id");
    for (const auto& request : telemetry->requests()) EXPECT_EQ(request.body.find(id), std::string::npos);
}

// Every string in a telemetry message that could carry a value; ids are random and skipped.
void forEachValueString(const nlohmann::json& json, const std::string& key,
                        const std::function<void(const std::string&, const std::string&)>& visit) {
    if (json.is_string()) {
        if (key != "elementId" && key != "KV-TRACE-ID" && key != "vendorId") visit(key, json.get<std::string>());
    } else if (json.is_object()) {
        for (const auto& [k, v] : json.items()) forEachValueString(v, k, visit);
    } else if (json.is_array()) {
        for (const auto& v : json) forEachValueString(v, key, visit);
    }
}

TEST_F(ElementsTokenize, TelemetryOfAWholeFlowCarriesTheLabelAndTraceButNoValue) {
    Card card;
    Outcome<anycodable::AnyCodable> out;
    KorvaneElements::tokenize(card.body(), std::nullopt, out.completion());
    ASSERT_TRUE(waitFor([&] { return out.calls > 0; }));
    ASSERT_FALSE(out.error);
    const std::string traceId = *wire.requests().at(0).headers.get("KV-TRACE-ID");

    std::vector<std::string> flow;
    for (const auto& message : telemetryMessages()) {
        const std::string text = message.value("message", "");
        if (message.contains("KV-TRACE-ID")) {
            EXPECT_EQ(message["KV-TRACE-ID"], traceId) << text;
            EXPECT_EQ(message["endpoint"], "POST /tokenize") << text;
            flow.push_back(text);
        }
        forEachValueString(message, "", [&](const std::string& key, const std::string& value) {
            for (const auto& secret : kCardSecrets) {
                EXPECT_EQ(value.find(secret), std::string::npos) << key << " in \"" << text << "\"";
            }
        });
        for (const auto& [key, value] : message.items()) {
            if (value.is_number()) {
                EXPECT_TRUE(value != 2039 && value != 737 && value != 12) << key;
            }
        }
    }
    const std::vector<std::string> expected{"Starting API request",
                                            "Retrieving element value for API call",
                                            "Retrieving element value for API call",
                                            "Retrieving element value for API call",
                                            "Retrieving element value for API call",
                                            "Successful API response"};
    EXPECT_EQ(flow, expected);
    const auto done = telemetryWith("Successful API response");
    EXPECT_EQ(done.at(0)["apiSuccess"], true);
}

// ---- Faults ---------------------------------------------------------------------------------

class ElementsTokenizeFaults : public VaultTest {};

TEST_F(ElementsTokenizeFaults, EachEndsInOneErrorAndLeavesTheBodyReusable) {
    using platform::testing::LoopbackRequest;
    using platform::testing::LoopbackServer;
    const auto stalls = http_test::stallingServer();
    LoopbackServer garbage;
    garbage.on("*", "*", [](const LoopbackRequest&) { return platform::testing::respond(201, "{\"id\": tok"); });
    ImpatientSession impatient(std::chrono::milliseconds(300));

    struct Row {
        const char* name;
        std::string basePath;
        std::optional<std::string> apiKey;
        int code;
        std::optional<platform::HttpErrorCode> transport;
    };
    const Row rows[] = {
        {"connection refused", http_test::closedBaseUrl(), std::nullopt, -1, platform::HttpErrorCode::cannotConnect},
        {"slow past the time-out", stalls->baseUrl(), std::nullopt, -1, platform::HttpErrorCode::timedOut},
        {"garbage", garbage.baseUrl(), std::nullopt, 201, std::nullopt},
        {"the call's own key, which the vault does not know, wins over the static one", vault.baseUrl(), "wrong-key",
         401, std::nullopt},
    };
    Card card;
    const anycodable::Map body = card.body();
    korvane::KorvaneAPI::setRequestBuilderFactory(
        std::make_shared<korvane::URLSessionRequestBuilderFactory>(&impatient));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KorvaneElements::setBasePath(row.basePath);
        Outcome<anycodable::AnyCodable> out;
        KorvaneElements::tokenize(body, row.apiKey, out.completion());
        ASSERT_TRUE(waitFor([&] { return out.calls > 0; }));
        queue->runUntilIdle();
        EXPECT_EQ(out.calls, 1);
        EXPECT_FALSE(out.value);
        ASSERT_TRUE(out.error);
        const auto* response = std::get_if<korvane::ErrorResponse>(&*out.error);
        ASSERT_NE(response, nullptr);
        EXPECT_EQ(response->code, row.code);
        if (row.transport) {
            ASSERT_NE(response->errorAs<platform::HttpError>(), nullptr);
            EXPECT_EQ(response->errorAs<platform::HttpError>()->code, *row.transport);
        }
    }
    const auto failures = telemetryWith("Unsuccessful API response");
    ASSERT_EQ(failures.size(), std::size(rows));
    EXPECT_EQ(failures[0]["level"], "error");
    EXPECT_EQ(failures[0]["apiSuccess"], false);

    // The same body, sent once more to the vault, carries every value again.
    KorvaneElements::setBasePath(vault.baseUrl());
    wire.clear();
    Outcome<anycodable::AnyCodable> out;
    KorvaneElements::tokenize(body, std::nullopt, out.completion());
    ASSERT_TRUE(waitFor([&] { return out.calls > 0; }));
    EXPECT_FALSE(out.error);
    EXPECT_EQ(nlohmann::json::parse(wire.requests().at(0).body)["data"], kCardData);
}

TEST_F(ElementsTokenize, ASessionComesBackToTheCaller) {
    Outcome<korvane::CreateSessionResponse> out;
    KorvaneElements::createSession(std::nullopt, out.completion());
    ASSERT_TRUE(waitFor([&] { return out.calls > 0; }));
    ASSERT_FALSE(out.error) << describe(*out.error);
    EXPECT_TRUE(out.value && out.value->sessionKey && out.value->nonce && out.value->expiresAt);
    const auto sent = wire.requests().at(0);
    EXPECT_EQ(sent.path, "/sessions");
    EXPECT_EQ(sent.body, "");
    EXPECT_EQ(telemetryWith("Successful API response").at(0)["endpoint"], "POST /sessions");
}

}  // namespace
}  // namespace vault_test
