#pragma once

#include "app/Executor.h"

#include <deque>

namespace cindertop {

/// Runs everything on the one thread that there is: work within the call that submits it, tasks when asked.
/// This makes a replay repeatable.
class InlineExecutor final : public Executor {
public:
    void submit(std::move_only_function<void()> work, std::move_only_function<void()> answer) override;
    void post(std::move_only_function<void()> task) override;
    void stop() override;

    /// Runs the posted tasks, and those that they post, each to its end.
    void runTasks();

private:
    std::deque<std::move_only_function<void()>> tasks_;
    bool isStopped_ = false;
};

} // namespace cindertop
