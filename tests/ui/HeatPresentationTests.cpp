#include "app/FakeProgram.h"
#include "ui/presentation/HeatPresentation.h"

#include <gtest/gtest.h>

#include <chrono>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;

QStringList texts(QAbstractItemModel* model, const char* role) {
    const auto key = model->roleNames().key(role);
    QStringList found;
    for (int row = 0; row < model->rowCount(); ++row) {
        found += model->data(model->index(row, 0), key).toString();
    }
    return found;
}

TEST(HeatPresentation, SaysHowHotItIsAndWhyWhileItIsShown) {
    FakeProgram program;
    program.machine.pressure->play({2});
    auto& state = program.start();
    HeatPresentation heat(state);
    program.pass(0s);
    EXPECT_TRUE(heat.levelText().isEmpty()); // nobody looks
    heat.setShown(true);
    EXPECT_EQ(heat.levelText(), "Serious");
    EXPECT_EQ(heat.level(), 2);
    EXPECT_EQ(heat.scoreText(), "75 of 100");
    EXPECT_EQ(heat.trendText(), "Stable");
    EXPECT_EQ(heat.reasonText(), "Pressure heavy: 75");

    heat.setShown(false);
    int changes = 0;
    QObject::connect(&heat, &HeatPresentation::changed, [&changes] { ++changes; });
    state.setPaused(true);
    EXPECT_EQ(changes, 0);
    heat.setShown(true);
    EXPECT_EQ(heat.levelText(), "Paused");
    EXPECT_EQ(heat.level(), -1);
    EXPECT_TRUE(heat.reasonText().isEmpty());
    EXPECT_EQ(heat.facts()->rowCount(), 0);
}

TEST(HeatPresentation, ListsTheSensorsWhileTheyAreUnfolded) {
    FakeProgram program;
    program.machine.pressure->play({0});
    auto& events = program.machine.temperatureEvents;
    events.sensors = {{"CPU Package", 60}, {"SSD", 41}, {"SSD", 35}};
    auto& state = program.start();
    state.set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, true);
    HeatPresentation heat(state);
    heat.setShown(true);
    program.pass(30s);
    EXPECT_EQ(heat.sensorCountText(), "3 sensors");
    EXPECT_EQ(texts(heat.facts(), "title"), QStringList{"CPU Package"});
    EXPECT_EQ(texts(heat.facts(), "text"), QStringList{"60°C"});
    EXPECT_EQ(heat.sensors()->rowCount(), 0);
    EXPECT_FALSE(events.isObserved); // drives are left alone

    heat.showSensors(true);
    events.sensors[2].celsius = 45;
    program.pass(30s);
    EXPECT_TRUE(events.isObserved);
    EXPECT_EQ(texts(heat.sensors(), "label"), (QStringList{"CPU Package", "SSD", "SSD"}));
    EXPECT_EQ(texts(heat.sensors(), "temperatureText"), (QStringList{"60°C", "41°C", "45°C"}));
    EXPECT_EQ(texts(heat.sensors(), "rangeText"),
              (QStringList{"60°C to 60°C", "41°C to 41°C", "35°C to 45°C"}));
    const auto line = heat.sensors()->data(heat.sensors()->index(2, 0), Qt::UserRole + 3);
    const auto heights = line.value<QList<double>>();
    EXPECT_GE(heights.size(), 6);
    EXPECT_LT(heights.front(), heights.back());
}

} // namespace
} // namespace cindertop::ui
