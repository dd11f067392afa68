#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace cindertop {

/// Runs slow reads away from the main thread and hands their answers back to it. Called on the main thread.
class Executor {
public:
    virtual ~Executor() = default;

    /// Runs `work` away from the main thread, then `answer` on it, even when `work` threw. Pieces run one at
    /// a time, in the order in which they were submitted.
    virtual void submit(std::move_only_function<void()> work, std::move_only_function<void()> answer) = 0;

    /// Runs `task` on the main thread after the current call has returned; tasks run in their order.
    virtual void post(std::move_only_function<void()> task) = 0;

    /// Returns when the piece under way has ended. Whatever else was submitted or posted is dropped, and so
    /// is everything from now on.
    virtual void stop() = 0;
};

/// What `work` returns; none when it throws.
template <typename Work>
std::optional<std::invoke_result_t<Work&>> attempt(Work work) {
    try {
        return work();
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

/// Submits `work` and hands its result to `answer`; none when it threw.
template <typename Work, typename Answer>
void evaluate(Executor& executor, Work work, Answer answer) {
    using Result = std::invoke_result_t<Work&>;
    auto result = std::make_shared<std::optional<Result>>();
    executor.submit([result, work = std::move(work)]() mutable { result->emplace(work()); },
                    [result, answer = std::move(answer)]() mutable { answer(std::move(*result)); });
}

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
