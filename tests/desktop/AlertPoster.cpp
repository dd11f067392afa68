// Reads kinds of alerts from standard input, a line each, posts them on the session bus as the agent would,
// and prints what became of each: "critical: authorized".

#include "app/EventLoopTimers.h"
#include "assistant/AssistantInputs.h"
#include "assistant/SystemNotificationService.h"
#include "assistant/ThermalAlertRuleEngine.h"
#include "fakes/FakeUserDefaults.h"
#include "platform/qt/FreedesktopNotificationCenter.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QSocketNotifier>
#include <iostream>
#include <optional>
#include <string>

#include <unistd.h>

namespace cindertop::testing {

namespace {

/// The busiest offender; its name has what markup must escape.
constexpr auto offenderLabel = "Paint & <Draw> (42% CPU)";

/// The alert as the rules make it, with their texts; none for an unknown kind.
std::optional<ThermalAlert> alertOf(const std::string& kind) {
    const ThermalAlertConfiguration configuration(true, ThermalLevel::serious, Seconds{900}, Seconds{300},
                                                  Seconds{120});
    const ThermalAlertInput calm{scoreOf(ThermalLevel::fair), contextWith(),
                                 adviceOf({CinderInsightKind::coolingRecovery}), std::nullopt, at(400)};
    ThermalAlertInput hot = calm;
    hot.score = scoreOf(kind == "critical" ? ThermalLevel::critical : ThermalLevel::serious);
    hot.systemContext.sustainedPressure = sustained(130, ThermalLevel::serious);
    hot.recommendationSnapshot = kind == "critical" ? CinderRecommendationSnapshot::empty()
                                                    : adviceOf({CinderInsightKind::topCpuOffender});
    hot.topOffenderLabel = offenderLabel;
    hot.now = at(0);

    ThermalAlertRuleEngine rules(OperatingSystem::gnuLinux);
    const auto first = rules.evaluate(hot, configuration);
    const auto alert = kind == "recovery" ? rules.evaluate(calm, configuration) : first;
    return alert && rawValue(alert->kind) == kind ? alert : std::nullopt;
}

void post(SystemNotificationService& service, const std::string& kind) {
    const auto alert = alertOf(kind);
    if (!alert) {
        std::cout << kind << ": no such alert\n" << std::flush;
        return;
    }
    service.deliver(*alert, true, [kind](SystemNotificationState state) {
        std::cout << kind << ": " << rawValue(state) << '\n' << std::flush;
    });
}

int run(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    EventLoopTimers timers;
    fakes::FakeUserDefaults defaults;
    desktop::FreedesktopNotificationCenter center(QDBusConnection::sessionBus(), timers, defaults,
                                                  [] { return false; });
    SystemNotificationService service(center);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&service] {
        std::string line;
        if (std::getline(std::cin, line)) {
            post(service, line);
        } else {
            QCoreApplication::quit();
        }
    });
    return QCoreApplication::exec();
}

} // namespace

} // namespace cindertop::testing

int main(int argumentCount, char** arguments) {
    return cindertop::testing::run(argumentCount, arguments);
}
