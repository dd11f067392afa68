#include "app/FakeProgram.h"
#include "fakes/ForeignWords.h"
#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/PopoverPresentation.h"
#include "ui/presentation/SettingsPresentation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMetaProperty>
#include <QStringList>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <regex>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;
using fakes::foreignWordsIn;
using testing::IsEmpty;

const std::filesystem::path sourceTree = CINDERTOP_SOURCES;

void expectOwnWords(const QString& text, const std::string& place) {
    EXPECT_THAT(foreignWordsIn(text.toStdString()), IsEmpty()) << place << ": " << text.toStdString();
}

void expectOwnWords(const QVariant& value, const std::string& place);

/// The texts of all properties, and of the values that have properties themselves.
void expectOwnWords(const QMetaObject& type, const std::function<QVariant(const QMetaProperty&)>& read) {
    for (int index = 0; index < type.propertyCount(); ++index) {
        const auto property = type.property(index);
        expectOwnWords(read(property), std::string(type.className()) + "." + property.name());
    }
}

void expectOwnWords(const QObject& presentation) {
    expectOwnWords(*presentation.metaObject(),
                   [&](const QMetaProperty& property) { return property.read(&presentation); });
}

void expectOwnWords(const QVariant& value, const std::string& place) {
    if (const auto* const type = value.metaType().metaObject();
        type != nullptr && value.metaType().flags().testFlag(QMetaType::IsGadget)) {
        expectOwnWords(
            *type, [&](const QMetaProperty& property) { return property.readOnGadget(value.constData()); });
    } else if (const auto* const model = value.value<QAbstractItemModel*>()) {
        for (int row = 0; row < model->rowCount(); ++row) {
            const auto names = model->roleNames();
            for (const int role : names.keys()) {
                if (names[role] == "offenderID") {
                    continue; // for programs
                }
                expectOwnWords(model->data(model->index(row, 0), role).toString(), place);
            }
        }
    } else if (const auto* const object = value.value<QObject*>()) {
        expectOwnWords(*object);
    } else {
        expectOwnWords(value.toStringList().join('\n'), place);
    }
}

/// A program on a Linux machine with a sensor.
std::unique_ptr<FakeProgram> laptop() {
    auto program = std::make_unique<FakeProgram>();
    program->machine.operatingSystem = OperatingSystem::gnuLinux;
    program->machine.systemValues.texts = {{"hw.model", "Laptop 9"}};
    program->machine.temperatureEvents.sensors = {{.product = "CPU Package 0", .celsius = 96}};
    return program;
}

/// At every window, as it is now.
void look(FakeProgram& program) {
    const PopoverPresentation popover(*program.state, {});
    const OnboardingPresentation onboarding(*program.state, {});
    SettingsPresentation settings(*program.state, {});
    expectOwnWords(popover);
    expectOwnWords(onboarding);
    expectOwnWords(settings);
    settings.system()->resetToDefaults();
    expectOwnWords(settings);
    for (const auto& offender : program.published().processOffenderSnapshot->offenders) {
        settings.cpu()->select(QString::fromStdString(offender.id));
        settings.cpu()->quit();
        expectOwnWords(settings);
        settings.cpu()->forceQuit();
        expectOwnWords(settings);
    }
}

TEST(LinuxWords, AreSaidWhateverTheMachineDoes) {
    const auto program = laptop();
    auto& processes = program->machine.processes;
    processes.processes.clear();
    for (const auto* const name : {"localsearch-3", "packagekitd", "clamd", "chromium", "cc1plus", "vim"}) {
        processes.add(static_cast<std::int32_t>(processes.processes.size()) + 10, name);
    }
    processes.add(9, "kworker").accounting->realUserIdentifier = 0;
    program->machine.process.lowPowerMode = true;
    program->start();
    for (const std::uint64_t pressure : {0U, 1U, 2U, 3U, 4U}) {
        program->machine.pressure->play({pressure});
        for (int second = 0; second < 30; ++second) {
            for (auto& process : processes.processes) {
                process.accounting->totalUserTime += 1'000'000'000;
            }
            program->pass(1s);
        }
        EXPECT_EQ(program->published().processOffenderSnapshot->offenders.size(), 7U);
        look(*program);
    }
    program->state->setPaused(true);
    look(*program);
}

TEST(LinuxWords, AreSaidOfTheDesktop) {
    for (const auto status : {LoginItemStatus::enabled, LoginItemStatus::requiresApproval,
                              LoginItemStatus::notFound, LoginItemStatus::unknown}) {
        const auto program = laptop();
        program->notificationCenter.status = status == LoginItemStatus::unknown
                                                 ? NotificationAuthorizationStatus::unknown
                                                 : NotificationAuthorizationStatus::denied;
        program->start().setLaunchAtLogin(status == LoginItemStatus::enabled);
        program->loginItem.answer = status;
        program->state->refreshLaunchAtLoginStatus();
        program->state->exportDiagnosticLogs();
        program->desktop.answer("/data/export.json");
        const SystemPresentation system(*program->state, [](const SettingsConfirmation&) {}, true);
        EXPECT_EQ(system.exportText(), "Exported to /data/export.json");
        EXPECT_NE(system.notificationsDetail(), "") << "they are on by default";
        look(*program);
    }
}

TEST(LinuxWords, AreSaidToANewUserOfAnyMachine) {
    class Survey final : public HeatSourceSurvey {
    public:
        HeatSources found;

        HeatSources findHeatSources() override { return found; }
    };

    using Marker = OnboardingPresentation::Marker;
    for (const auto& [sources, marker, pressure] :
         {std::tuple(HeatSources{.pressureSource = "8 counters", .sensors = {"CPU Package 0", "GPU"}},
                     Marker::complete, "8 counters"),
          std::tuple(HeatSources{.thermalState = 0, .hasFan = true}, Marker::complete, "not available"),
          std::tuple(HeatSources{}, Marker::caution, "not available")}) {
        Survey survey;
        survey.found = sources;
        const auto program = laptop();
        program->machine.survey = &survey;
        program->defaults.stored.clear();
        auto& state = program->start();
        look(*program);
        state.startHardwareCheckIfNeeded();
        look(*program);
        program->pass(900ms);
        const OnboardingPresentation onboarding(state, {});
        EXPECT_EQ(onboarding.marker(), static_cast<int>(marker));
        EXPECT_EQ(onboarding.hasPressure(), sources.pressureSource.has_value());
        EXPECT_EQ(onboarding.detailTitles(), (QStringList{"Machine", "Processor", "Architecture",
                                                          "Thermal pressure", "Sensors", "Power"}));
        EXPECT_EQ(onboarding.detailValues(),
                  (QStringList{"Laptop 9", "unknown", "arm64", pressure,
                               QString::number(sources.sensors.size()), "AC Power"}));
        look(*program);
    }
}

/// What stands between quotation marks in the views, and the pages that the program opens.
TEST(LinuxWords, StandInViewsAndPages) {
    const std::regex literal(R"re("(?:[^"\\]|\\.)*")re");
    const std::regex unseen(R"re(//.*|symbolName: ".*")re"); // comments, and names of symbols
    int files = 0;
    for (const auto* const folder : {"src/ui/views", "docs/pages", "data"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(sourceTree / folder)) {
            const auto kind = entry.path().extension();
            if (kind != ".qml" && kind != ".html" && kind != ".desktop") {
                continue;
            }
            ++files;
            std::ifstream stream(entry.path());
            std::string text(std::istreambuf_iterator<char>(stream), {});
            if (kind == ".qml") {
                const auto code = std::regex_replace(text, unseen, "");
                text.clear();
                for (std::sregex_iterator each(code.begin(), code.end(), literal), end; each != end; ++each) {
                    text += each->str() + '\n';
                }
            }
            EXPECT_THAT(foreignWordsIn(text), IsEmpty()) << entry.path();
        }
    }
    EXPECT_GT(files, 50);
}

} // namespace
} // namespace cindertop::ui
