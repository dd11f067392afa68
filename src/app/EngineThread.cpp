#include "app/EngineThread.h"

#include <QSocketNotifier>
#include <cerrno>
#include <cstdint>
#include <exception>
#include <system_error>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace cindertop {

namespace {

int openEvent() {
    const int descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot make an event descriptor");
    }
    return descriptor;
}

} // namespace

EngineThread::EngineThread()
    : wakeDescriptor_(openEvent()),
      notifier_(std::make_unique<QSocketNotifier>(wakeDescriptor_, QSocketNotifier::Read)),
      thread_([this] { runPieces(); }) {
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { runOnMain(); });
}

EngineThread::~EngineThread() {
    stop();
    notifier_.reset();
    ::close(wakeDescriptor_);
}

void EngineThread::submit(std::move_only_function<void()> work, std::move_only_function<void()> answer) {
    {
        const std::scoped_lock lock(mutex_);
        if (isStopped_) {
            return;
        }
        pieces_.push_back({.work = std::move(work), .answer = std::move(answer)});
    }
    changed_.notify_one();
}

void EngineThread::post(std::move_only_function<void()> task) {
    postToMain(std::move(task));
}

void EngineThread::stop() {
    // What is dropped is destroyed here, on the main thread and outside the lock: destructors may do
    // anything.
    std::deque<Piece> pieces;
    std::deque<std::move_only_function<void()>> tasks;
    {
        const std::scoped_lock lock(mutex_);
        isStopped_ = true;
        pieces.swap(pieces_);
        tasks.swap(forMain_);
    }
    changed_.notify_one();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void EngineThread::runPieces() {
    for (;;) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isStopped_ || !pieces_.empty(); });
        if (isStopped_) {
            return;
        }
        auto piece = std::move(pieces_.front());
        pieces_.pop_front();
        lock.unlock();
        try {
            piece.work();
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the answer sees there is no result
        }
        piece.work = nullptr; // what it holds goes before the main thread may rely on being its only owner
        postToMain(std::move(piece.answer));
    }
}

void EngineThread::postToMain(std::move_only_function<void()> task) {
    {
        const std::scoped_lock lock(mutex_);
        if (isStopped_) {
            return;
        }
        forMain_.push_back(std::move(task));
    }
    wakeMain();
}

void EngineThread::wakeMain() const {
    const std::uint64_t one = 1;
    // It can only fail when the counter is at its maximum, and then the main thread is awake anyway.
    [[maybe_unused]] const auto written = ::write(wakeDescriptor_, &one, sizeof one);
}

void EngineThread::runOnMain() {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto taken = ::read(wakeDescriptor_, &count, sizeof count);
    std::deque<std::move_only_function<void()>> tasks;
    {
        const std::scoped_lock lock(mutex_);
        tasks.swap(forMain_);
    }
    for (auto& task : tasks) {
        {
            const std::scoped_lock lock(mutex_);
            if (isStopped_) {
                return;
            }
        }
        task();
    }
}

} // namespace cindertop
