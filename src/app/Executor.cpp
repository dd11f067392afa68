#include "app/Executor.h"

#include <exception>
#include <utility>

namespace cindertop {

void InlineExecutor::submit(std::move_only_function<void()> work, std::move_only_function<void()> answer) {
    if (isStopped_) {
        return;
    }
    try {
        work();
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the answer sees that there is no result
    }
    answer();
}

void InlineExecutor::post(std::move_only_function<void()> task) {
    if (!isStopped_) {
        tasks_.push_back(std::move(task));
    }
}

void InlineExecutor::stop() {
    isStopped_ = true;
    tasks_.clear();
}

void InlineExecutor::runTasks() {
    while (!tasks_.empty()) {
        auto task = std::move(tasks_.front());
        tasks_.pop_front();
        task();
    }
}

} // namespace cindertop
