#include "Korvane/RequestTask.hpp"

namespace korvane {

void RequestTask::cancel() {
    std::lock_guard lock(lock_);
    if (task_) {
        task_->cancel();
        task_.reset();
    }
}

std::shared_ptr<platform::DataTask> RequestTask::task() const {
    std::lock_guard lock(lock_);
    return task_;
}

void RequestTask::setTask(std::shared_ptr<platform::DataTask> task) {
    std::lock_guard lock(lock_);
    task_ = std::move(task);
}

}  // namespace korvane
