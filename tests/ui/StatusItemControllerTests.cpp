#include "GuiApplication.h"
#include "app/FakeProgram.h"
#include "ui/theme/Theme.h"
#include "ui/tray/StatusItemController.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;
using Status = ThermalAssistantPresentation::Status;
using Trace = std::vector<std::string>;

/// Writes down each title and its time after the first one: "Serious 2/6 at 24 ms", or "none at 120 ms".
class FakeStatusItem final : public StatusItem {
public:
    explicit FakeStatusItem(const Clock& clock) : clock_(clock) {}

    StatusImage image;
    QString toolTip;
    std::optional<StatusTitle> title;
    std::optional<int> length;
    ImagePosition position = ImagePosition::imageLeft;
    Action action;
    Trace drawn;

    void startTrace() { drawn.clear(); }

    void setImage(const StatusImage& newImage) override { image = newImage; }

    void setToolTip(const QString& newToolTip) override { toolTip = newToolTip; }

    void setTitle(const std::optional<StatusTitle>& newTitle) override {
        title = newTitle;
        start_ = drawn.empty() ? clock_.now() : start_;
        const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(clock_.now() - start_);
        const auto what =
            title ? title->text.toStdString() + " " + std::to_string(std::lround(title->opacity * 6)) + "/6"
                  : " none";
        drawn.push_back(what.substr(1) + " at " + std::to_string(time.count()) + " ms");
    }

    void setLength(std::optional<int> newLength) override { length = newLength; }

    void setImagePosition(ImagePosition newPosition) override { position = newPosition; }

    void setAction(Action newAction) override { action = std::move(newAction); }

private:
    const Clock& clock_;
    Instant start_ = clock_.now();
};

class FakePopover final : public Popover {
public:
    bool isOpen = false;
    std::vector<QPoint> shownAt;

    bool isShown() const override { return isOpen; }

    void show(const QPoint& point) override {
        isOpen = true;
        shownAt.push_back(point);
    }

    void close() override { isOpen = false; }
};

class StatusItemControllerTest : public testing::Test {
protected:
    StatusItemControllerTest() { application(); }

    void start(MenuBarInfoMode mode) {
        state = &program.start();
        state->set(&AppSettingsFields::menuBarInfoMode, mode);
        controller = std::make_unique<StatusItemController>(*state, item, popover, program.clock);
        program.pass(1s);
        item.startTrace();
    }

    /// Ends with the tick that finds the band.
    void heatUntil(ThermalBand band, std::uint64_t pressure) {
        program.machine.pressure->play({pressure});
        for (int ticks = 0; program.published().thermalSnapshot->band != band; ++ticks) {
            ASSERT_LT(ticks, 100);
            item.startTrace();
            program.pass(*program.clock.nextDue() - program.clock.now());
        }
    }

    void expectRoomForLabel(bool isExpected) const {
        EXPECT_EQ(item.length, isExpected ? std::nullopt : std::optional(20));
        EXPECT_EQ(item.position,
                  isExpected ? StatusItem::ImagePosition::imageLeft : StatusItem::ImagePosition::imageOnly);
    }

    FakeProgram program;
    FakeStatusItem item{program.clock};
    FakePopover popover;
    AppState* state = nullptr;
    std::unique_ptr<StatusItemController> controller;
};

TEST(StatusLabel, SaysWhatTheModeAndTheStatusAskFor) {
    using Mode = MenuBarInfoMode;
    constexpr const char* off = "Not monitoring";
    constexpr const char* unknown = "No heat readings";
    const std::map<Mode, std::array<const char*, 8>> texts{
        // normal, fair, serious, critical, paused, notMonitoring, measuring, noHeatReadings
        {Mode::none, {}},
        {Mode::thermalStatus, {"Normal", "Fair", "Serious", "Critical", "Paused", off, "Measuring", unknown}},
        {Mode::temperature, {"47°C", "47°C", "47°C", "47°C", "Paused", off, "47°C", unknown}},
        {Mode::thermalScore, {"Normal", "Fair", "Serious", "Critical", "Paused", off, "Measuring", unknown}},
        {Mode::compactAlertOnly, {nullptr, nullptr, "Serious", "Critical", "Paused", off, nullptr, unknown}},
    };
    const std::array<std::optional<QColor>, 5> colors{std::nullopt, QColor(0xFFBB4F), QColor(0xFE6361),
                                                      QColor(0xFE5E7C), Theme::Colors::paused};
    for (const auto& [mode, row] : texts) {
        for (std::size_t status = 0; status < row.size(); ++status) {
            const ThermalAssistantPresentation presentation{.status = static_cast<Status>(status),
                                                            .trendLabel = {},
                                                            .menuBarTemperatureText = "47°C",
                                                            .popoverTemperatureText = {},
                                                            .actionMessage = {}};
            const auto label = StatusLabel::of(presentation, mode);
            ASSERT_EQ(label.has_value(), row[status] != nullptr) << rawValue(mode) << status;
            if (label) {
                EXPECT_EQ(label->text, row[status]);
                EXPECT_EQ(label->color, colors[std::min(status, colors.size() - 1)]);
            }
        }
    }
    const ThermalAssistantPresentation withoutTemperature{Status::serious, {}, {}, {}, {}};
    EXPECT_FALSE(StatusLabel::of(withoutTemperature, Mode::temperature));
}

TEST_F(StatusItemControllerTest, TellsBeforeTheTermsAndWithoutHeatThatThereIsNoLevel) {
    program.machine.operatingSystem = OperatingSystem::gnuLinux;
    program.machine.process.state = 9;
    program.machine.pressure->registrationStatus = 1;
    program.defaults = {};
    start(MenuBarInfoMode::temperature);
    EXPECT_EQ(item.toolTip, "Cindertop - Not monitoring");
    EXPECT_EQ(item.title->text, " Not monitoring");
    state->acceptLegalTerms();
    program.executor.runTasks();
    program.pass(1s);
    EXPECT_EQ(item.toolTip, "Cindertop - No heat readings");
    EXPECT_EQ(item.title->text, " No heat readings");
}

TEST_F(StatusItemControllerTest, TellsTheTemperatureWherePanelsShowNoLabels) {
    program.machine.temperatureEvents.sensors = {{.product = "PMU tdie1", .celsius = 50}};
    program.machine.operatingSystem = OperatingSystem::gnuLinux;
    start(MenuBarInfoMode::none);
    EXPECT_EQ(item.toolTip, "Cindertop - Normal, 50°C");
    state->set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, false);
    program.pass(10s);
    EXPECT_EQ(item.toolTip, "Cindertop - Normal");
}

TEST_F(StatusItemControllerTest, FadesAnAlertInAndOut) {
    start(MenuBarInfoMode::compactAlertOnly);
    heatUntil(ThermalBand::fair, 1);
    EXPECT_EQ(item.toolTip, "Cindertop - Fair");
    EXPECT_FALSE(item.title);
    expectRoomForLabel(false);
    EXPECT_FALSE(item.title);
    expectRoomForLabel(false);

    heatUntil(ThermalBand::serious, 2);
    expectRoomForLabel(true);
    program.pass(130ms);
    EXPECT_EQ(item.drawn, (Trace{"Serious 0/6 at 0 ms", "Serious 1/6 at 0 ms", "Serious 2/6 at 24 ms",
                                 "Serious 3/6 at 48 ms", "Serious 4/6 at 72 ms", "Serious 5/6 at 96 ms",
                                 "Serious 6/6 at 120 ms"}));
    EXPECT_EQ(item.title->color, QColor(0xFE6361));

    heatUntil(ThermalBand::critical, 4);
    EXPECT_EQ(item.drawn, (Trace{"Critical 6/6 at 0 ms"}));
}

/// From here on the mode alone makes the label come and go: nothing else publishes meanwhile.
TEST_F(StatusItemControllerTest, TurnsAFadeWhereverItIs) {
    start(MenuBarInfoMode::none);
    const auto setMode = [&](MenuBarInfoMode mode, std::chrono::milliseconds then) {
        item.startTrace();
        state->set(&AppSettingsFields::menuBarInfoMode, mode);
        program.pass(then);
        return item.drawn;
    };
    EXPECT_EQ(setMode(MenuBarInfoMode::thermalStatus, 30ms),
              (Trace{"Normal 0/6 at 0 ms", "Normal 1/6 at 0 ms", "Normal 2/6 at 24 ms"}));
    EXPECT_EQ(setMode(MenuBarInfoMode::none, 30ms), (Trace{"Normal 5/6 at 0 ms", "Normal 4/6 at 24 ms"}));
    expectRoomForLabel(true);
    EXPECT_EQ(setMode(MenuBarInfoMode::thermalScore, 30ms),
              (Trace{"Normal 0/6 at 0 ms", "Normal 1/6 at 0 ms", "Normal 2/6 at 24 ms"}));
    EXPECT_EQ(setMode(MenuBarInfoMode::thermalStatus, 130ms), (Trace{"Normal 6/6 at 0 ms"}));
    EXPECT_EQ(
        setMode(MenuBarInfoMode::none, 130ms),
        (Trace{"Normal 5/6 at 0 ms", "Normal 4/6 at 24 ms", "Normal 3/6 at 48 ms", "Normal 2/6 at 72 ms",
               "Normal 1/6 at 96 ms", "Normal 0/6 at 120 ms", "none at 120 ms"}));
    expectRoomForLabel(false);

    setMode(MenuBarInfoMode::thermalStatus, 130ms);
    setMode(MenuBarInfoMode::none, 30ms);
    EXPECT_EQ(setMode(MenuBarInfoMode::temperature, 130ms), (Trace{"none at 0 ms"})); // there is none
    expectRoomForLabel(false);

    setMode(MenuBarInfoMode::thermalStatus, 30ms);
    controller.reset();
    item.startTrace();
    program.pass(130ms);
    EXPECT_TRUE(item.drawn.empty());
    EXPECT_FALSE(item.action);
}

TEST_F(StatusItemControllerTest, PausesInGreyWithAPictureMadeOnce) {
    start(MenuBarInfoMode::none);
    const auto* const active = item.image.sizes.at(1).constBits();
    state->setPaused(true);
    program.pass(0s);
    EXPECT_EQ(item.image.sizes.at(1).pixel(6, 15), Theme::Colors::paused.rgba());
    EXPECT_EQ(item.toolTip, "Cindertop - Paused");
    EXPECT_FALSE(item.title);

    state->set(&AppSettingsFields::menuBarInfoMode, MenuBarInfoMode::temperature);
    program.pass(130ms);
    EXPECT_EQ(item.title, (StatusTitle{.text = " Paused", .color = Theme::Colors::paused, .opacity = 1}));

    state->setPaused(false);
    program.pass(0s);
    EXPECT_EQ(item.image.sizes.at(1).constBits(), active);
}

TEST_F(StatusItemControllerTest, AClickOpensOrClosesThePopover) {
    start(MenuBarInfoMode::none);
    item.action({3, 4});
    EXPECT_EQ(popover.shownAt, std::vector{QPoint(3, 4)});
    item.action({3, 4});
    EXPECT_FALSE(popover.isOpen);

    // The press closes it, before the panel tells of the click.
    item.action({3, 4});
    popover.close();
    controller->popoverDidClose();
    program.pass(100ms);
    item.action({3, 4});
    EXPECT_FALSE(popover.isOpen);
    item.action({3, 4});
    EXPECT_TRUE(popover.isOpen);

    popover.close(); // by a click elsewhere
    controller->popoverDidClose();
    program.pass(1s);
    item.action({3, 4});
    EXPECT_TRUE(popover.isOpen);
}

TEST(FlameImages, StandInTheMiddleInTheirColors) {
    application();
    const auto images = FlameImages::draw();
    for (const auto& [status, color] : std::map<Status, QColor>{{Status::fair, QColor(0xFFBB4F)},
                                                                {Status::serious, QColor(0xFE6361)},
                                                                {Status::critical, QColor(0xFE5E7C)},
                                                                {Status::paused, Theme::Colors::paused},
                                                                {Status::normal, QColor(0xF2F2F2)}}) {
        const auto& pictures = images.of(status).sizes;
        ASSERT_EQ(pictures.size(), FlameImages::sizes.size());
        for (std::size_t index = 0; index < pictures.size(); ++index) {
            const auto& picture = pictures[index];
            const int size = FlameImages::sizes[index];
            ASSERT_EQ(picture.size(), QSize(size, size));
            QRect ink;
            int solid = 0;
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) {
                    ink |= picture.pixelColor(x, y).alpha() > 100 ? QRect(x, y, 1, 1) : QRect();
                    solid += picture.pixel(x, y) == color.rgba() ? 1 : 0;
                }
            }
            EXPECT_LE(std::abs(ink.left() - (size - 1 - ink.right())), 1) << size;
            EXPECT_LE(std::abs(ink.top() - (size - 1 - ink.bottom())), 1) << size;
            EXPECT_GE(ink.height(), size * 3 / 4);
            EXPECT_GE(solid, size * size / 6);
        }
    }
}

} // namespace
} // namespace cindertop::ui
