#pragma once
// How a client call reports back: the completion, the executor it is posted to, and an
// optional cancellation token.
//
// Contract for every `ToviClient` operation: the completion runs exactly once, on the given
// executor, also after cancellation (a cancelled call may still succeed, or fail with any
// error). Waiting for a cancelled call therefore always ends.

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "ToviUI/ToviApiError.hpp"
#include "platform/Executor.hpp"
#include "platform/Result.hpp"

namespace tovi {

template <class T>
using ToviResult = platform::Result<T, ToviApiError>;

template <class T>
using ToviCompletion = std::move_only_function<void(ToviResult<T>)>;

// A shared cancellation flag. Copies refer to the same flag. A default-constructed token is
// live too; it simply has nobody who cancels it.
//
// Thread safety: every member may be called from any thread. Handlers run on the thread that
// cancels (or at once, on the registering thread, when the token is already cancelled), outside
// the token's lock.
class CancellationToken {
public:
    CancellationToken();

    // Sets the flag and runs the registered handlers once. Later calls do nothing.
    void cancel() const;
    [[nodiscard]] bool isCancelled() const;

    // Runs `handler` when the token is cancelled; at once if it already is.
    void onCancel(std::move_only_function<void()> handler) const;

private:
    struct State {
        std::mutex mutex;
        bool cancelled = false;
        std::vector<std::move_only_function<void()>> handlers;
    };
    std::shared_ptr<State> state_;
};

// Where a call reports back. `queue` must outlive the call.
struct ToviCall {
    platform::Executor& queue;
    CancellationToken cancellation{};
};

}  // namespace tovi
