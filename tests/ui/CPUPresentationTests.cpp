#include "app/FakeProgram.h"
#include "ui/presentation/CPUPresentation.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;

/// The CPU tab of a fake program with an application, a helper of it, and one of the system's workers.
class CPUPresentationTest : public testing::Test {
protected:
    static constexpr std::uint64_t second = 1'000'000'000; // of CPU time; the machine has 8 processors

    FakeProgram program;
    std::unique_ptr<CPUPresentation> cpu;
    std::vector<SettingsConfirmation> questions;
    std::vector<std::uint64_t> usage{0, 0, 0}; // each second: of the application, its helper, the worker

    CPUPresentationTest() {
        auto& processes = program.machine.processes;
        processes.processes.clear();
        processes.add(12, "Lumen").path = "/Applications/Lumen.app/Contents/MacOS/Lumen";
        processes.add(13, "Lumen Helper").path = "/Applications/Lumen.app/Contents/MacOS/Helper";
        processes.add(14, "mds_stores").path = "/System/Library/mds_stores";
        program.machine.applications.bundles["/Applications/Lumen.app"].identifier = "org.example.lumen";
        program.runningApplications.running = {{.processIdentifier = 12,
                                                .bundleIdentifier = "org.example.lumen",
                                                .bundlePath = "/Applications/Lumen.app"}};
    }

    void open() {
        auto& state = program.start();
        cpu = std::make_unique<CPUPresentation>(
            state, [this](SettingsConfirmation question) { questions.push_back(std::move(question)); });
    }

    void pass(std::chrono::seconds time) {
        for (; time > 0s; time -= 1s) {
            for (std::size_t place = 0; place < program.machine.processes.processes.size(); ++place) {
                program.machine.processes.processes[place].accounting->totalUserTime += usage[place];
            }
            program.pass(1s);
        }
    }

    /// Open, shown, and with the application in the list.
    void openBusy() {
        usage = {4 * second, second / 100, 0};
        open();
        pass(10s);
        cpu->setShown(true);
    }

    static QStringList column(const QAbstractItemModel& model, const char* role) {
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row) {
            texts += model.data(model.index(row, 0), model.roleNames().key(role)).toString();
        }
        return texts;
    }

    QStringList names() const { return column(*cpu->offenders(), "displayName"); }

    void select() const { cpu->select("bundle:org.example.lumen"); }

    /// The seconds at which processes are sampled within the next ones.
    std::vector<int> samplesWithin(std::chrono::seconds time) {
        std::vector<int> seconds;
        const auto start = program.clock.now();
        const auto count = program.published().processOffenderSnapshot.bindable().addNotifier([&] {
            seconds.push_back(
                static_cast<int>(std::chrono::round<std::chrono::seconds>(
                                     program.published().processOffenderSnapshot->measuredAt - start)
                                     .count()));
        });
        pass(time);
        return seconds;
    }
};

TEST_F(CPUPresentationTest, SaysWhyNothingIsListed) {
    open();
    EXPECT_EQ(cpu->emptyText(), "Collecting CPU data..."); // at the first tick
    program.executor.isHolding = true;
    cpu->setShown(true);
    EXPECT_EQ(cpu->emptyText(), "Collecting CPU data...");
    EXPECT_TRUE(cpu->isMeasuring());
    program.executor.release();
    EXPECT_EQ(cpu->emptyText(), "Collecting CPU data..."); // nothing to compare with yet
    pass(5s);
    EXPECT_EQ(cpu->emptyText(), "No meaningful CPU usage right now");
    EXPECT_FALSE(cpu->isMeasuring());

    usage = {second / 1000, 0, 0}; // 0.01 %
    pass(10s);
    EXPECT_EQ(cpu->offenders()->rowCount(), 0);
    cpu->setShown(false);
    program.executor.isHolding = true;
    cpu->setShown(true);
    pass(2s);
    EXPECT_EQ(cpu->emptyText(), "Refreshing CPU data...");
    program.executor.release();
    EXPECT_EQ(cpu->emptyText(), "No meaningful CPU usage right now");

    program.state->set(&AppSettingsFields::showProcessOffenders, false);
    EXPECT_EQ(cpu->emptyText(), "CPU data unavailable"); // nobody measures
    program.state->set(&AppSettingsFields::showProcessOffenders, true);

    program.machine.processes.processes.clear();
    pass(20s);
    EXPECT_EQ(cpu->emptyText(), "CPU data unavailable");
    program.state->setPaused(true);
    EXPECT_EQ(cpu->emptyText(), "CPU data unavailable");
    EXPECT_FALSE(cpu->isMeasuring());
}

TEST_F(CPUPresentationTest, ListsTheGreatestShareFirstAndChangesRowsByKey) {
    openBusy();
    const auto& model = *cpu->offenders();
    EXPECT_EQ(names(), QStringList("Lumen"));
    EXPECT_EQ(column(model, "percentText"), QStringList("50.1%"));
    EXPECT_EQ(column(model, "processCount"), QStringList("2"));
    EXPECT_EQ(column(model, "iconSource"), QStringList("image://application/org.example.lumen/Lumen"));
    EXPECT_EQ(cpu->emptyText(), "");
    EXPECT_EQ(cpu->note(), "");

    QStringList changes;
    const auto note = [&](const char* what) { return [&changes, what] { changes += what; }; };
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, note("insert"));
    QObject::connect(&model, &QAbstractItemModel::rowsMoved, note("move"));
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved, note("remove"));
    QObject::connect(&model, &QAbstractItemModel::modelReset, note("reset"));
    const QPersistentModelIndex lumen = model.index(0, 0);
    usage = {second, 0, 6 * second};
    pass(30s);
    EXPECT_EQ(names().back(), "Lumen");
    EXPECT_EQ(lumen.row(), 1);
    EXPECT_EQ(cpu->note(), "Spotlight or setup work is active. This usually settles on its own.");
    usage = {4 * second, 0, second};
    pass(30s);
    EXPECT_EQ(lumen.row(), 0);
    usage = {4 * second, 0, 0};
    pass(30s);
    EXPECT_EQ(changes, (QStringList{"insert", "move", "remove"}));
    EXPECT_EQ(lumen.row(), 0);
    EXPECT_EQ(cpu->note(), "");
}

TEST_F(CPUPresentationTest, SamplesWhileItIsLookedAt) {
    openBusy();
    const std::vector<int> everyThree{3, 6, 9, 12};
    EXPECT_LE(samplesWithin(16s).size(), 2); // the program's own
    select();
    EXPECT_EQ(samplesWithin(13s), everyThree);

    cpu->setShown(false);
    EXPECT_LE(samplesWithin(16s).size(), 2);
    cpu->setShown(true);
    EXPECT_EQ(samplesWithin(13s), everyThree);
    program.state->setPaused(true);
    EXPECT_TRUE(samplesWithin(16s).empty());
    EXPECT_TRUE(cpu->hasSelection()); // as it was last seen
    program.state->setPaused(false);
    EXPECT_GE(samplesWithin(16s).size(), 4);
    cpu->back();
    EXPECT_LE(samplesWithin(16s).size(), 2);
}

TEST_F(CPUPresentationTest, TakesOneSampleAtATimeAndMayEndBeforeIt) {
    openBusy();
    pass(2s);
    program.executor.isHolding = true;
    select();
    EXPECT_TRUE(program.executor.answerNext());
    EXPECT_FALSE(program.executor.workNext());
    pass(3s); // the next one is under way
    cpu->setShown(false);
    cpu->setShown(true);
    cpu.reset();
    program.executor.release();
}

TEST_F(CPUPresentationTest, KeepsTheSelectedOffenderWhileItRests) {
    openBusy();
    cpu->select("bundle:org.example.unknown");
    EXPECT_FALSE(cpu->hasSelection());
    select();
    auto& detail = *cpu->detail();
    EXPECT_EQ(detail.displayName(), "Lumen");
    EXPECT_EQ(detail.categoryLabel(), "Top CPU offender");
    EXPECT_EQ(detail.systemOwnedNote(), "");
    EXPECT_EQ(column(*detail.childModel(), "processIdentifier"), (QStringList{"12", "13"}));
    EXPECT_EQ(column(*detail.childModel(), "percentText"), (QStringList{"50.0%", "0.1%"}));
    pass(10s);
    EXPECT_TRUE(detail.hasChart());
    EXPECT_EQ(detail.history().axisMaximum, 100);
    EXPECT_NEAR(detail.history().points.back().normalizedValue, 0.501, 0.001);

    usage = {0, 0, second};
    pass(4s);
    EXPECT_EQ(cpu->retainedSelectedOffender()->displayName, "Lumen");
    EXPECT_EQ(detail.percentText(), "–");
    usage[0] = 2 * second;
    pass(10s);
    EXPECT_EQ(detail.percentText(), "25.0%");

    cpu->back();
    EXPECT_FALSE(cpu->hasSelection());
    cpu->select(column(*cpu->offenders(), "offenderID").back());
    EXPECT_EQ(detail.systemOwnedNote(), "System-owned load is shown for diagnosis only.");
    EXPECT_FALSE(detail.canQuit());
}

TEST_F(CPUPresentationTest, AsksBeforeItEndsAnApplication) {
    openBusy();
    cpu->quit();
    EXPECT_TRUE(questions.empty()); // nothing is selected
    select();
    EXPECT_TRUE(cpu->detail()->canQuit());
    cpu->quit();
    cpu->forceQuit();
    ASSERT_EQ(questions.size(), 2U);
    EXPECT_EQ(questions[0].title, "Quit Lumen App?");
    EXPECT_EQ(questions[0].message,
              "Cindertop will ask the whole app to quit normally, not only the selected "
              "process row. Save any work first if needed.");
    EXPECT_EQ(questions[0].confirmTitle, "Quit App");
    EXPECT_EQ(questions[1].title, "Force Quit Lumen App?");
    EXPECT_EQ(questions[1].message, "macOS will force quit the whole app immediately, not only one helper "
                                    "process. Unsaved work can be lost.");
    EXPECT_EQ(questions[1].confirmTitle, "Force Quit App");
    for (const auto& question : questions) {
        EXPECT_EQ(question.cancelTitle, "Cancel");
        EXPECT_EQ(question.role, SettingsConfirmation::Role::destructive);
    }
    auto& asked = program.runningApplications.requests;
    EXPECT_TRUE(asked.empty());
    cpu->back(); // the question is about the offender that it names
    questions[0].action();
    select();
    questions[1].action();
    EXPECT_EQ(asked, (std::vector<std::string>{"terminate 12", "force 12"}));

    program.machine.processes.processes.erase(program.machine.processes.processes.begin(),
                                              program.machine.processes.processes.begin() + 2);
    pass(4s);
    EXPECT_FALSE(cpu->hasSelection()); // it is gone, as it was to
}

} // namespace
} // namespace cindertop::ui
