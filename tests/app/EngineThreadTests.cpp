#include "app/EngineThread.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <array>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace cindertop {
namespace {

class EngineThreadTest : public testing::Test {
protected:
    /// Runs the event loop until `isDone`; every wait ends with an event.
    static void runUntil(const std::function<bool()>& isDone) {
        while (!isDone()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

private:
    int argumentCount_ = 1;
    std::array<char, 6> name_{"tests"};
    std::array<char*, 2> arguments_{name_.data(), nullptr};

protected:
    QCoreApplication application{argumentCount_, arguments_.data()};
    EngineThread engine;
};

TEST_F(EngineThreadTest, WorksInOrderAndAnswersOnTheMainThread) {
    const auto main = std::this_thread::get_id();
    std::vector<int> worked;
    std::vector<int> answered;
    for (int piece = 0; piece < 100; ++piece) {
        engine.submit(
            [&worked, piece, main] {
                EXPECT_NE(std::this_thread::get_id(), main);
                worked.push_back(piece);
            },
            [&answered, piece, main] {
                EXPECT_EQ(std::this_thread::get_id(), main);
                answered.push_back(piece);
            });
    }
    EXPECT_TRUE(answered.empty());
    runUntil([&answered] { return answered.size() == 100; });
    EXPECT_TRUE(std::ranges::is_sorted(worked));
    EXPECT_EQ(answered, worked);
}

TEST_F(EngineThreadTest, TasksRunAfterTheCurrentCall) {
    std::vector<int> order;
    engine.post([this, &order] {
        engine.post([&order] { order.push_back(3); });
        order.push_back(1);
    });
    engine.post([&order] { order.push_back(2); });
    EXPECT_TRUE(order.empty());
    runUntil([&order] { return order.size() == 3; });
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST_F(EngineThreadTest, AnswersAlsoWhenTheWorkThrows) {
    std::vector<std::optional<int>> results;
    const auto keep = [&results](std::optional<int> result) { results.push_back(result); };
    evaluate(engine, []() -> int { throw std::runtime_error("no"); }, keep);
    evaluate(engine, [] { return 7; }, keep);
    runUntil([&results] { return results.size() == 2; });
    EXPECT_EQ(results, (std::vector<std::optional<int>>{std::nullopt, 7}));
}

TEST_F(EngineThreadTest, AStopDropsTheAnswersThatWait) {
    std::promise<void> done;
    bool isAnswered = false;
    engine.submit([&done] { done.set_value(); }, [&isAnswered] { isAnswered = true; });
    engine.post([&isAnswered] { isAnswered = true; });
    done.get_future().wait();
    engine.stop();
    engine.submit([&isAnswered] { isAnswered = true; }, [&isAnswered] { isAnswered = true; });
    engine.post([&isAnswered] { isAnswered = true; });
    QCoreApplication::processEvents();
    EXPECT_FALSE(isAnswered);
}

TEST_F(EngineThreadTest, AStopWaitsForThePieceUnderWayAndDropsTheNext) {
    std::promise<void> begun;
    bool isEnded = false;
    bool isNextRun = false;
    // What is handed over after the stop is destroyed at once: so the piece sees that the stop has come.
    const auto isStopped = [this] {
        auto life = std::make_shared<int>();
        const std::weak_ptr<int> witness = life;
        engine.post([life = std::move(life)] {});
        return witness.expired();
    };
    engine.submit(
        [&begun, &isEnded, &isStopped] {
            begun.set_value();
            while (!isStopped()) {
                std::this_thread::yield();
            }
            isEnded = true;
        },
        [] {});
    engine.submit([&isNextRun] { isNextRun = true; }, [] {});
    begun.get_future().wait();
    engine.stop();
    EXPECT_TRUE(isEnded);
    EXPECT_FALSE(isNextRun);
}

TEST_F(EngineThreadTest, AnAnswerMayStopIt) {
    int tasks = 0;
    for (int task = 0; task < 3; ++task) {
        engine.post([this, &tasks] {
            ++tasks;
            engine.stop();
        });
    }
    runUntil([&tasks] { return tasks > 0; });
    QCoreApplication::processEvents();
    EXPECT_EQ(tasks, 1);
}

} // namespace
} // namespace cindertop
