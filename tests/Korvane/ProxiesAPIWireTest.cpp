// Proxy configurations on the wire.

#include <gtest/gtest.h>

#include "Korvane/ApiWireTable.hpp"
#include "Korvane/ProxiesAPI.hpp"

namespace korvane {
namespace {

using platform::Uuid;
using testing::decoded;
using testing::Finish;
using testing::WireRow;

const Uuid kProxy = *Uuid::parse("e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
const Uuid kReactor = *Uuid::parse("0d2a9a4e-51e4-4b1b-8a3e-3c6f3b0f5a11");
#define PROXY_ID "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
#define REACTOR_ID "0D2A9A4E-51E4-4B1B-8A3E-3C6F3B0F5A11"

constexpr const char* kProxyJson =
    R"({"id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f","key":"pk_1","name":"psp","destination_url":"https://psp.test/pay",
        "request_reactor_id":")" REACTOR_ID R"(","require_auth":false,"request_transform":{"code":"c"},
        "configuration":{"a":"b"},"proxy_host":"https://proxy.test","modified_at":"2024-01-15T12:00:00.123Z"})";

void expectPsp(const Proxy& proxy) {
    EXPECT_EQ(proxy.id, kProxy);
    EXPECT_EQ(proxy.key, "pk_1");
    EXPECT_EQ(proxy.requestReactorId, kReactor);
    EXPECT_EQ(proxy.requireAuth, false);
    EXPECT_EQ(proxy.requestTransform, ProxyTransform{.code = "c"});
    EXPECT_FALSE(proxy.responseTransform);
    EXPECT_EQ(proxy.modifiedAt, Date(std::chrono::milliseconds(1'705'320'000'123)));
}

class ProxiesAPIWireTest : public testing::ApiWireTest {};

TEST_F(ProxiesAPIWireTest, EveryOperationOnTheWire) {
    const CreateProxyRequest fullCreate{.name = "psp",
                                        .destinationUrl = "https://psp.test/pay?v=2",
                                        .requestReactorId = kReactor,
                                        .responseReactorId = kProxy,
                                        .requestTransform = ProxyTransform{.code = "req"},
                                        .responseTransform = ProxyTransform{},
                                        .application = Application{.id = kReactor},
                                        .configuration = std::map<std::string, std::string>{{"k", "v"}},
                                        .requireAuth = true};
    const UpdateProxyRequest fullUpdate{.name = "psp",
                                        .destinationUrl = "https://psp.test",
                                        .requestReactorId = kReactor,
                                        .responseReactorId = kReactor,
                                        .requestTransform = ProxyTransform{},
                                        .responseTransform = ProxyTransform{.code = "res"},
                                        .application = Application{.name = "a"},
                                        .configuration = std::map<std::string, std::string>{},
                                        .requireAuth = false};
    const auto psp = [](Finish done) { return decoded<Proxy>(std::move(done), expectPsp); };

    const std::vector<WireRow> rows = {
        {.api = "ProxiesAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 ProxiesAPI::callGet(std::nullopt, std::nullopt, std::nullopt, std::nullopt,
                                     decoded<ProxyPaginatedList>(done));
             },
         .response = "{}",
         .method = "GET",
         .path = "/proxies",
         .rawQuery = ""},
        {.api = "ProxiesAPI",
         .operation = "callGet",
         .call =
             [](Finish done) {
                 ProxiesAPI::callGet(std::vector<Uuid>{kReactor, kProxy}, "psp/eu 1", 2, 50,
                                     decoded<ProxyPaginatedList>(done, [](const ProxyPaginatedList& list) {
                                         EXPECT_EQ(list.pagination->pageSize, 50);
                                         ASSERT_EQ(list.data->size(), 1u);
                                         expectPsp(list.data->at(0));
                                     }));
             },
         .response = std::string(R"({"pagination":{"page_size":50},"data":[)") + kProxyJson + "]}",
         .method = "GET",
         .path = "/proxies",
         .query = {{"id", REACTOR_ID}, {"id", PROXY_ID}, {"name", "psp/eu 1"}, {"page", "2"}, {"size", "50"}},
         .rawQuery = "id=" REACTOR_ID "&id=" PROXY_ID "&name=psp/eu%201&page=2&size=50"},
        {.api = "ProxiesAPI",
         .operation = "create",
         .call = [=](Finish done) { ProxiesAPI::create(fullCreate, psp(done)); },
         .status = 201,
         .response = kProxyJson,
         .method = "POST",
         .path = "/proxies",
         .body =
             R"({"name":"psp","destination_url":"https://psp.test/pay?v=2","request_reactor_id":")" REACTOR_ID
             R"(","response_reactor_id":")" PROXY_ID R"(","request_transform":{"code":"req"},"response_transform":{},
                     "application":{"id":")" REACTOR_ID R"("},"configuration":{"k":"v"},"require_auth":true})"},
        {.api = "ProxiesAPI",
         .operation = "delete_",
         .call = [](Finish done) { ProxiesAPI::delete_(kProxy, decoded<Void>(done)); },
         .status = 204,
         .method = "DELETE",
         .path = "/proxies/" PROXY_ID},
        {.api = "ProxiesAPI",
         .operation = "getById",
         .call = [=](Finish done) { ProxiesAPI::getById(kProxy, psp(done)); },
         .response = kProxyJson,
         .method = "GET",
         .path = "/proxies/" PROXY_ID},
        {.api = "ProxiesAPI",
         .operation = "update",
         .call = [=](Finish done) { ProxiesAPI::update(kProxy, fullUpdate, psp(done)); },
         .response = kProxyJson,
         .method = "PUT",
         .path = "/proxies/" PROXY_ID,
         .body =
             R"({"name":"psp","destination_url":"https://psp.test","request_reactor_id":")" REACTOR_ID
             R"(","response_reactor_id":")" REACTOR_ID R"(","request_transform":{},"response_transform":{"code":"res"},
                     "application":{"name":"a"},"configuration":{},"require_auth":false})"},
        {.api = "ProxiesAPI",
         .operation = "update",
         .call = [=](Finish done) { ProxiesAPI::update(kProxy, {.name = "p", .destinationUrl = ""}, psp(done)); },
         .response = kProxyJson,
         .method = "PUT",
         .path = "/proxies/" PROXY_ID,
         .body = R"({"name":"p","destination_url":""})"},
    };
    testing::expectEveryOperationHasARow<ProxiesAPI>(rows, "ProxiesAPI");
    walk(rows);
}

}  // namespace
}  // namespace korvane
