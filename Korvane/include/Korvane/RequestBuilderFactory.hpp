#pragma once
// RequestBuilderFactory: which builder class an operation gets.
//
// Operations ask `getNonDecodableBuilder<T>` when they have no result (T = Void) and
// `getBuilder<T>` otherwise. C++ has no virtual member templates, so the per-type choice is
// made in two steps: the generic accessor prepares a BuilderRecipe for T (the arguments and
// makers of the default builders for T), and the factory's virtual hook answers a builder
// from it: one of the defaults, one of its own when it recognises `resultType`, or a
// default on another session.
//
// Thread safety: factories are immutable once installed; any thread may ask them.

#include <functional>
#include <memory>
#include <typeindex>

#include "Korvane/FatalError.hpp"
#include "Korvane/RequestBuilder.hpp"
#include "Korvane/URLSessionRequestBuilder.hpp"

namespace korvane {

struct BuilderRecipe {
    std::type_index resultType;
    RequestBuilderArgs args;
    // URLSessionRequestBuilder<T> and URLSessionDecodableRequestBuilder<T> over `session`
    // (null: the vault session).
    std::function<std::shared_ptr<RequestBuilderBase>(const BuilderRecipe&, platform::HttpSession* session)>
        makeURLSessionBuilder;
    std::function<std::shared_ptr<RequestBuilderBase>(const BuilderRecipe&, platform::HttpSession* session)>
        makeURLSessionDecodableBuilder;
};

class RequestBuilderFactory {
public:
    virtual ~RequestBuilderFactory() = default;

    template <class T>
    [[nodiscard]] std::shared_ptr<RequestBuilder<T>> getNonDecodableBuilder(RequestBuilderArgs args) const {
        return typed<T>(nonDecodableBuilder(recipe<T>(std::move(args))));
    }

    template <class T>
    [[nodiscard]] std::shared_ptr<RequestBuilder<T>> getBuilder(RequestBuilderArgs args) const {
        return typed<T>(decodableBuilder(recipe<T>(std::move(args))));
    }

protected:
    // REQUIRES: the answer is a RequestBuilder of `recipe.resultType`.
    [[nodiscard]] virtual std::shared_ptr<RequestBuilderBase> nonDecodableBuilder(
        const BuilderRecipe& recipe) const = 0;
    [[nodiscard]] virtual std::shared_ptr<RequestBuilderBase> decodableBuilder(const BuilderRecipe& recipe) const = 0;

private:
    template <class T>
    static BuilderRecipe recipe(RequestBuilderArgs args) {
        return BuilderRecipe{
            typeid(T), std::move(args),
            [](const BuilderRecipe& r, platform::HttpSession* session) -> std::shared_ptr<RequestBuilderBase> {
                return std::make_shared<URLSessionRequestBuilder<T>>(r.args, session);
            },
            [](const BuilderRecipe& r, platform::HttpSession* session) -> std::shared_ptr<RequestBuilderBase> {
                return std::make_shared<URLSessionDecodableRequestBuilder<T>>(r.args, session);
            }};
    }

    template <class T>
    static std::shared_ptr<RequestBuilder<T>> typed(const std::shared_ptr<RequestBuilderBase>& builder) {
        auto result = std::dynamic_pointer_cast<RequestBuilder<T>>(builder);
        if (!result) fatalError("The request builder factory answered a builder of another result type");
        return result;
    }
};

// The default: URLSessionRequestBuilder<T> and URLSessionDecodableRequestBuilder<T>, over the
// vault session or over the session given here (for tests and embedders with a transport of
// their own; it must outlive every builder made).
class URLSessionRequestBuilderFactory : public RequestBuilderFactory {
public:
    explicit URLSessionRequestBuilderFactory(platform::HttpSession* session = nullptr) : session_(session) {}

protected:
    std::shared_ptr<RequestBuilderBase> nonDecodableBuilder(const BuilderRecipe& recipe) const override {
        return recipe.makeURLSessionBuilder(recipe, session_);
    }
    std::shared_ptr<RequestBuilderBase> decodableBuilder(const BuilderRecipe& recipe) const override {
        return recipe.makeURLSessionDecodableBuilder(recipe, session_);
    }

private:
    platform::HttpSession* session_;
};

}  // namespace korvane
