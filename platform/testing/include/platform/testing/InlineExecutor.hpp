#pragma once
// InlineExecutor: runs every task at once on the posting thread and ignores delays. For test
// doubles and benchmarks that want a completion where it is produced, without a queue hop.
//
// Thread safety: any thread may post; each task runs on its poster's thread.

#include <utility>

#include "platform/Executor.hpp"

namespace platform {

class InlineExecutor final : public Executor {
public:
    void post(Task task) override { run(task); }
    void postAfter(std::chrono::milliseconds, Task task) override { run(task); }
    // Only while one of this executor's tasks runs on the calling thread.
    [[nodiscard]] bool isCurrent() const override { return running_ == this; }

private:
    void run(Task& task) {
        struct Restore {
            const InlineExecutor* outer;
            ~Restore() { running_ = outer; }
        } restore{std::exchange(running_, this)};
        task();
    }

    static inline thread_local const InlineExecutor* running_ = nullptr;
};

}  // namespace platform
