// The builder's pure parts (file names, the challenge delegate, the factory hook) and the
// runtime's fatal stops.

#include <gtest/gtest.h>

#include "Korvane/KorvaneTestSupport.hpp"
#include "Korvane/Token.hpp"
#include "Korvane/internal/Execution.hpp"
#include "platform/testing/RecordingTransport.hpp"

namespace korvane {
namespace {

TEST(RequestBuilderFileName, ContentDispositionParsing) {
    struct Row {
        std::optional<std::string> header;
        std::optional<std::string> name;
    };
    const Row rows[] = {
        {std::nullopt, std::nullopt},
        {"attachment", std::nullopt},
        {R"(attachment; filename="report.pdf")", "report.pdf"},
        {"attachment;filename=plain.txt;size=3", "plain.txt"},
        {R"(attachment; filename=" spaced name.csv "  )", "spaced name.csv"},
        {R"(attachment; filename=""; other)", ""},
        {R"(attachment; filename="../../etc/passwd")", "../../etc/passwd"},  // sanitised later, not here
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.header.value_or("(absent)"));
        EXPECT_EQ(internal::fileNameFromContentDisposition(row.header), row.name);
    }
}

TEST(RequestBuilderFileName, UnsafeNamesAreReplacedByATemporaryName) {
    for (std::string name : {"report.pdf", "a..b"}) {
        // ".." inside a name is refused too: a cheap rule that can't be got wrong.
        const bool kept = name == "report.pdf";
        EXPECT_EQ(internal::safeDownloadName(name) == name, kept) << name;
    }
    const std::optional<std::string> refused[] = {std::nullopt,          "", "   ", ".", "..", "../x", "a/b", "a\\b",
                                                  std::string("a\0b", 3)};
    for (const auto& name : refused) {
        const std::string safe = internal::safeDownloadName(name);
        EXPECT_TRUE(safe.starts_with("tmp.Korvane.")) << safe;
        EXPECT_TRUE(platform::Uuid::parse(safe.substr(12))) << safe;
    }
}

TEST(RequestBuilderChallenge, DelegateAnswersInTheDocumentedOrder) {
    using platform::ChallengeDisposition;
    constexpr std::uint64_t kTask = 900001;  // far from identifiers of real tasks
    platform::AuthChallenge challenge{kTask, {"127.0.0.1", 80, "vault", platform::HttpAuthScheme::basic}, 0};

    EXPECT_EQ(internal::answerChallenge(challenge).disposition, ChallengeDisposition::performDefaultHandling);

    internal::credentialStore().set(kTask, platform::HttpCredential{"u", "p"});
    auto answer = internal::answerChallenge(challenge);
    EXPECT_EQ(answer.disposition, ChallengeDisposition::useCredential);
    EXPECT_EQ(answer.credential, (platform::HttpCredential{"u", "p"}));

    challenge.previousFailureCount = 1;
    EXPECT_EQ(internal::answerChallenge(challenge).disposition, ChallengeDisposition::rejectProtectionSpace);

    internal::challengeHandlerStore().set(kTask, [](const platform::AuthChallenge&) {
        return platform::ChallengeAnswer{ChallengeDisposition::cancel, std::nullopt};
    });
    EXPECT_EQ(internal::answerChallenge(challenge).disposition, ChallengeDisposition::cancel) << "handler first";

    internal::challengeHandlerStore().set(kTask, std::nullopt);
    internal::credentialStore().set(kTask, std::nullopt);
}

// A factory that answers its own builder for one result type and the defaults otherwise.
template <class T>
class MarkedBuilder : public URLSessionDecodableRequestBuilder<T> {
public:
    using URLSessionDecodableRequestBuilder<T>::URLSessionDecodableRequestBuilder;
};

class MarkingFactory : public URLSessionRequestBuilderFactory {
protected:
    std::shared_ptr<RequestBuilderBase> decodableBuilder(const BuilderRecipe& recipe) const override {
        if (recipe.resultType == typeid(Token)) return std::make_shared<MarkedBuilder<Token>>(recipe.args);
        return URLSessionRequestBuilderFactory::decodableBuilder(recipe);
    }
};

TEST(RequestBuilderFactory, HookChoosesTheBuilderPerResultType) {
    KorvaneAPI::resetForTesting();
    KorvaneAPI::setRequestBuilderFactory(std::make_shared<MarkingFactory>());
    KorvaneAPI::setCustomHeaders({{"X-Custom", "1"}});
    auto token = KorvaneAPI::requestBuilderFactory()->getBuilder<Token>({"GET", "https://h/t", {}, {}, true});
    auto text = KorvaneAPI::requestBuilderFactory()->getBuilder<std::string>({"GET", "https://h/t", {}, {}, true});
    EXPECT_NE(dynamic_cast<MarkedBuilder<Token>*>(token.get()), nullptr);
    EXPECT_EQ(dynamic_cast<MarkedBuilder<std::string>*>(text.get()), nullptr);
    EXPECT_EQ(token->headers.at("X-Custom"), "1") << "custom headers are added at construction";
    KorvaneAPI::resetForTesting();
}

// The stops go through a recorded transport so that no real session threads are forked.
class RequestBuilderDeathTest : public ::testing::Test {
protected:
    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        KorvaneAPI::resetForTesting();
    }
    void TearDown() override { KorvaneAPI::resetForTesting(); }

    template <class T, template <class> class B = URLSessionDecodableRequestBuilder>
    void execute(std::string method, HeaderMap headers, std::optional<Parameters> parameters = std::nullopt) {
        platform::RecordingTransport transport;
        transport.enqueueResponse(200, R"({"id":"t"})");
        auto queue = std::make_shared<platform::ManualMainQueue>();
        auto b = std::make_shared<B<T>>(RequestBuilderArgs{std::move(method), "http://127.0.0.1:9/x",
                                                           std::move(parameters), std::move(headers), true},
                                        &transport);
        b->execute(queue, [](auto) {});
        queue->runUntilIdle();
    }
};

constexpr const char* kPrefix = "Korvane/URLSessionImplementations: Fatal error: ";

TEST_F(RequestBuilderDeathTest, UnknownMethodStops) {
    EXPECT_DEATH(execute<Token>("FETCH", {}), std::string(kPrefix) + "Unsupported Http method - FETCH");
    EXPECT_DEATH(execute<Token>("get", {}), "Unsupported Http method - get");
}

TEST_F(RequestBuilderDeathTest, MediaTypeIsComparedWhole) {
    EXPECT_DEATH(execute<Token>("POST", {{"Content-Type", "application/json; charset=utf-8"}}),
                 std::string(kPrefix) + "Unsupported Media Type - application/json; charset=utf-8");
    EXPECT_DEATH(execute<Token>("PATCH", {{"Content-Type", "text/plain"}}), "Unsupported Media Type - text/plain");
}

TEST_F(RequestBuilderDeathTest, NonDecodingBuilderWithAResultTypeStops) {
    EXPECT_DEATH((execute<Token, URLSessionRequestBuilder>("GET", {})),
                 std::string(kPrefix) + "Unsupported Response Body Type - Token");
}

}  // namespace
}  // namespace korvane
