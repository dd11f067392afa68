#pragma once

#include "app/Executor.h"

#include <deque>
#include <exception>
#include <functional>
#include <utility>

namespace cindertop::fakes {

/// Does everything on the one thread there is: at once, or while it holds, piece by piece as the test says.
class ManualExecutor final : public Executor {
public:
    bool isHolding = false;

    void submit(std::move_only_function<void()> work, std::move_only_function<void()> answer) override {
        if (isStopped_) {
            return;
        }
        pieces_.push_back({.work = std::move(work), .answer = std::move(answer)});
        while (!isHolding && answerNext()) {
        }
    }

    void post(std::move_only_function<void()> task) override {
        if (!isStopped_) {
            tasks_.push_back(std::move(task));
        }
    }

    void stop() override {
        isStopped_ = true;
        pieces_.clear();
        tasks_.clear();
    }

    /// The oldest piece's work is done, but nobody has been told. False: there is none.
    bool workNext() {
        if (pieces_.empty()) {
            return false;
        }
        auto& piece = pieces_.front();
        if (piece.work) {
            try {
                piece.work();
            } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the answer sees no result
            }
            piece.work = nullptr;
        }
        return true;
    }

    /// The oldest piece ends. False: there is none.
    bool answerNext() {
        if (!workNext()) {
            return false;
        }
        auto answer = std::move(pieces_.front().answer);
        pieces_.pop_front();
        answer();
        return true;
    }

    /// Runs the tasks, and those that they post.
    void runTasks() {
        while (!tasks_.empty()) {
            auto task = std::move(tasks_.front());
            tasks_.pop_front();
            task();
        }
    }

    /// Holds no longer.
    void release() {
        isHolding = false;
        do {
            runTasks();
        } while (answerNext());
    }

private:
    struct Piece {
        std::move_only_function<void()> work;
        std::move_only_function<void()> answer;
    };

    std::deque<Piece> pieces_;
    std::deque<std::move_only_function<void()>> tasks_;
    bool isStopped_ = false;
};

} // namespace cindertop::fakes
