// Requests the page would never send: each gets a 4xx with a message saying what was wrong, and
// the session's screen is as it was.

#include <gtest/gtest.h>

#include <httplib.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <string>

#include "DemoServer.hpp"

namespace {

struct BadRequest {
    const char* why;
    const char* method;
    std::string path;  // "{id}" stands for the session's id
    std::string body;
    int status;
    const char* says;
};

TEST(DemoServer, RefusesWhatThePageWouldNeverSendAndChangesNothing) {
    auto server = tovi::demo::DemoServer::start({.port = 0, .maxBodyBytes = 4096});
    ASSERT_TRUE(server) << server.error();
    httplib::Client http("127.0.0.1", (*server)->port());
    auto made = http.Get("/new?screen=cardFields");
    ASSERT_TRUE(made && made->status == 303);
    const std::string session = made->get_header_value("Location");
    const std::string before = http.Get(session + "/tree")->body;

    const BadRequest rows[] = {
        {"an unknown session", "POST", "/s/00000000-0000-0000-0000-000000000000/act", R"({"action":"tap","id":"x"})",
         404, "no session"},
        {"a body that is not JSON", "POST", "{id}/act", "{\"action\":", 400, "one JSON object"},
        {"JSON that is not an object", "POST", "{id}/act", "[1]", 400, "one JSON object"},
        {"an unknown action", "POST", "{id}/act", R"({"action":"fly","id":"cardNumber"})", 400, "must name an action"},
        {"a node that is not there", "POST", "{id}/act", R"({"action":"tap","id":"nowhere"})", 400, "nowhere"},
        {"keys for a node that is not a field", "POST", "{id}/act", R"({"action":"type","text":"Tokenize","keys":"4"})",
         400, ""},
        {"a body over the limit", "POST", "{id}/act", std::string(5000, ' '), 413, "larger than 4096"},
        {"an unknown wallet operation", "POST", "{id}/sandbox", R"({"wallet":{"operation":"nope","effect":"clear"}})",
         400, "nope"},
        {"an unknown setting", "POST", "{id}/sandbox", R"({"weather":"rain"})", 400, "weather"},
        {"an unknown screen", "GET", "/new?screen=nope", "", 404, "nope"},
    };
    for (const BadRequest& row : rows) {
        std::string path = row.path;
        if (path.starts_with("{id}")) path = session + path.substr(4);
        auto answer = std::string(row.method) == "GET" ? http.Get(path) : http.Post(path, row.body, "application/json");
        ASSERT_TRUE(answer) << row.why;
        EXPECT_EQ(answer->status, row.status) << row.why << ": " << answer->body;
        EXPECT_NE(answer->body.find(row.says), std::string::npos) << row.why << ": " << answer->body;
    }
    EXPECT_EQ(http.Get(session + "/tree")->body, before) << "a refused request changed the screen";

    // A page elsewhere that reaches the port through a name of its own is turned away.
    auto foreign = http.Get("/", {{"Host", "evil.example:" + std::to_string((*server)->port())}});
    ASSERT_TRUE(foreign);
    EXPECT_EQ(foreign->status, 403);
}

TEST(DemoServer, APageThatConnectsLateStillGetsTheScreenAsItStands) {
    // The key changes the screen while no page listens; the stream the page opens afterwards
    // must begin with that screen, or the page shows the old one until the next change.
    auto server = tovi::demo::DemoServer::start({.port = 0});
    ASSERT_TRUE(server) << server.error();
    httplib::Client http("127.0.0.1", (*server)->port());
    const std::string session = http.Get("/new?screen=cardFields")->get_header_value("Location");
    auto typed = http.Post(session + "/act", R"({"action":"type","id":"cardNumber","keys":"4"})", "application/json");
    ASSERT_TRUE(typed && typed->status == 200);
    const std::string version = "\"version\":" + nlohmann::json::parse(typed->body)["version"].dump() + ",";

    std::string events;
    http.set_read_timeout(std::chrono::seconds(5));
    (void)http.Get(session + "/events", [&](const char* data, std::size_t length) {
        events.append(data, length);
        return events.find("event: update") == std::string::npos;
    });
    const auto update = events.find("event: update\ndata: ");
    ASSERT_NE(update, std::string::npos) << events;
    EXPECT_NE(events.find(version, update), std::string::npos) << events;
}

}  // namespace
