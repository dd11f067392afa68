#pragma once

#include "app/Executor.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

class QSocketNotifier;

namespace cindertop {

/// The live executor: one thread for the engines. Answers and tasks run from the main thread's event loop,
/// which must exist when this is made.
class EngineThread final : public Executor {
public:
    EngineThread();
    ~EngineThread() override;
    EngineThread(const EngineThread&) = delete;
    EngineThread& operator=(const EngineThread&) = delete;

    void submit(std::move_only_function<void()> work, std::move_only_function<void()> answer) override;
    void post(std::move_only_function<void()> task) override;
    void stop() override;

private:
    struct Piece {
        std::move_only_function<void()> work;
        std::move_only_function<void()> answer;
    };

    void runPieces();
    void postToMain(std::move_only_function<void()> task);
    void wakeMain() const;
    void runOnMain();

    std::mutex mutex_; ///< guards what stands below it
    std::condition_variable changed_;
    std::deque<Piece> pieces_;
    std::deque<std::move_only_function<void()>> forMain_;
    bool isStopped_ = false;

    int wakeDescriptor_; ///< an eventfd: readable while something waits for the main thread
    std::unique_ptr<QSocketNotifier> notifier_;
    std::jthread thread_; ///< last, so that it starts after everything else
};

} // namespace cindertop
