#include "platform/testing/RecordingTransport.hpp"

#include "platform/testing/ManualMainQueue.hpp"

#include <gtest/gtest.h>

namespace {

using platform::HttpErrorCode;
using platform::HttpRequest;
using platform::HttpResult;
using platform::RecordingTransport;

HttpRequest at(std::string url) {
    HttpRequest request;
    request.url = std::move(url);
    return request;
}

struct Log {
    std::vector<std::pair<std::string, HttpResult>> entries;
    platform::HttpCompletion callback(std::string name) {
        return [this, name](HttpResult r) { entries.emplace_back(name, std::move(r)); };
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> out;
        for (const auto& e : entries) out.push_back(e.first);
        return out;
    }
};

TEST(RecordingTransport, RecordsInResumeOrderAndAnswersCannedThenHandlerThenError) {
    RecordingTransport transport;
    transport.enqueueResponse(201, "first");
    transport.enqueueError(HttpErrorCode::timedOut);
    Log log;
    auto a = transport.dataTask(at("/a"), log.callback("a"));
    auto b = transport.dataTask(at("/b"), log.callback("b"));
    auto c = transport.dataTask(at("/c"), log.callback("c"));
    auto d = transport.dataTask(at("/d"), log.callback("d"));
    b->resume();
    a->resume();
    transport.setHandler([](const HttpRequest& r) {
        return HttpResult(platform::HttpResponse{200, {}, "handled " + r.url, {}});
    });
    c->resume();
    transport.setHandler(nullptr);
    d->resume();

    const auto requests = transport.requests();
    ASSERT_EQ(requests.size(), 4u);
    EXPECT_EQ(requests[0].url, "/b");
    EXPECT_EQ(requests[1].url, "/a");
    ASSERT_EQ(log.names(), (std::vector<std::string>{"b", "a", "c", "d"}));  // inline without an executor
    EXPECT_EQ(log.entries[0].second->body, "first");
    EXPECT_EQ(log.entries[1].second.error().code, HttpErrorCode::timedOut);
    EXPECT_EQ(log.entries[2].second->body, "handled /c");
    EXPECT_EQ(log.entries[3].second.error().code, HttpErrorCode::other);  // nothing was queued
}

TEST(RecordingTransport, CompletionsWaitForTheirExecutor) {
    platform::ManualMainQueue executor;
    RecordingTransport transport(&executor);
    transport.enqueueResponse(200);
    Log log;
    auto task = transport.dataTask(at("/x"), log.callback("x"));
    EXPECT_EQ(transport.requestCount(), 0u);  // not before resume
    task->resume();
    EXPECT_EQ(transport.requestCount(), 1u);
    EXPECT_TRUE(log.entries.empty());
    EXPECT_EQ(&transport.delegateQueue(), &executor);
    executor.runUntilIdle();
    EXPECT_EQ(log.names(), std::vector<std::string>{"x"});
}

TEST(RecordingTransport, HeldResponsesCompleteWhenAndInTheOrderReleased) {
    RecordingTransport transport;
    transport.holdResponses(true);
    transport.enqueueResponse(200, "one");
    transport.enqueueResponse(200, "two");
    transport.enqueueResponse(200, "three");
    Log log;
    auto one = transport.dataTask(at("/1"), log.callback("one"));
    auto two = transport.dataTask(at("/2"), log.callback("two"));
    auto three = transport.dataTask(at("/3"), log.callback("three"));
    one->resume();
    two->resume();
    three->resume();
    EXPECT_EQ(transport.heldCount(), 3u);
    EXPECT_TRUE(log.entries.empty());

    EXPECT_TRUE(transport.release(three->taskIdentifier()));
    EXPECT_TRUE(transport.releaseNext());
    transport.releaseAll();
    EXPECT_FALSE(transport.releaseNext());
    EXPECT_EQ(log.names(), (std::vector<std::string>{"three", "one", "two"}));
    EXPECT_EQ(log.entries[0].second->body, "three");  // answers stay with their requests
}

TEST(RecordingTransport, CancellingAHeldTaskDeliversCancelledOnce) {
    RecordingTransport transport;
    transport.holdResponses(true);
    transport.enqueueResponse(200, "late");
    Log log;
    auto task = transport.dataTask(at("/held"), log.callback("held"));
    task->resume();
    task->cancel();
    task->cancel();
    EXPECT_EQ(transport.heldCount(), 0u);
    transport.releaseAll();
    ASSERT_EQ(log.entries.size(), 1u);
    EXPECT_EQ(log.entries[0].second.error().code, HttpErrorCode::cancelled);
    EXPECT_EQ(task->state(), platform::HttpTaskState::completed);
}

TEST(RecordingTransport, CompletionMayUseTheTransportAgain) {
    RecordingTransport transport;
    transport.enqueueResponse(200, "outer");
    transport.enqueueResponse(200, "inner");
    Log log;
    std::shared_ptr<platform::DataTask> inner;
    auto outer = transport.dataTask(at("/outer"), [&](HttpResult) {
        inner = transport.dataTask(at("/inner"), log.callback("inner"));
        inner->resume();
    });
    outer->resume();
    ASSERT_EQ(log.entries.size(), 1u);
    EXPECT_EQ(log.entries[0].second->body, "inner");
}

}  // namespace
