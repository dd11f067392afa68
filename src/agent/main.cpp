#include "agent/AgentBus.h"
#include "agent/Arguments.h"
#include "agent/DesktopFrontend.h"
#include "agent/Display.h"
#include "agent/DisplayLoss.h"
#include "agent/LiveProgram.h"
#include "agent/MemoryReturn.h"
#include "agent/Restart.h"
#include "agent/ScenarioProgram.h"
#include "agent/SessionPlace.h"
#include "agent/StatusLine.h"
#include "agent/TerminationSignals.h"
#include "agent/TermsQuestion.h"
#include "app/EventLoopTimers.h"
#include "app/LegalTerms.h"
#include "app/Version.h"
#include "cli/AgentClient.h"
#include "cli/HelpText.h"
#include "platform/linux/AgentLock.h"
#include "platform/qt/FreedesktopNotificationCenter.h"
#include "platform/qt/NotificationSwitch.h"
#include "platform/qt/SessionBus.h"
#include "scenario/player/ScenarioFile.h"
#include "terminal/DisplayText.h"
#include "terminal/Output.h"
#include "terminal/ValueText.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QLocale>
#include <chrono>
#include <clocale>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace cindertop::agent {

namespace {

using namespace std::chrono_literals;

enum ExitStatus { success = 0, failure = 1, usageError = 2 };

/// A played hour has more ticks than anybody can read.
constexpr auto pauseBetweenPlayedLines = 500ms;

constexpr int timeToShow = 2'000; ///< milliseconds

/// One line, whatever names of files and keys it holds.
void say(const cli::Output& output, const std::string& sentence) {
    const auto line = cli::shown("cindertop: " + sentence, cli::Charset::unicode) + '\n';
    // If even this cannot be written, nobody reads it.
    [[maybe_unused]] const auto ignored = output.write(line);
}

void say(int descriptor, const std::string& sentence) {
    say(cli::Output(descriptor), sentence);
}

/// A place of output whose reader cannot keep the program from ending.
cli::Output outputUnless(int interruption, int descriptor) {
    cli::Output output(descriptor);
    output.interruptBy(interruption);
    return output;
}

bool isTerminal(int descriptor) {
    return ::isatty(descriptor) == 1;
}

bool hasWindows() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

/// The program's windows; none without a display.
std::unique_ptr<DesktopFrontend> makeFrontend(const Arguments& arguments, const QDBusConnection& bus,
                                              const cli::Output& problems,
                                              DesktopFrontend::Restarter startAnew) {
    if (!hasWindows()) {
        return nullptr;
    }
    return std::make_unique<DesktopFrontend>(
        arguments.isDark, bus, [&problems](const QString& text) { say(problems, text.toStdString()); },
        std::move(startAnew));
}

AppStateEnvironment completed(AppStateEnvironment environment, DesktopFrontend* frontend) {
    return frontend != nullptr ? frontend->completed(std::move(environment)) : environment;
}

/// Runs until somebody ends the program.
int runEventLoop(AppState& state, DesktopFrontend* frontend, const Arguments& arguments) {
    if (frontend == nullptr) {
        return QCoreApplication::exec();
    }
    frontend->start(state, arguments.opening, arguments.isBackground);
    const int status = QCoreApplication::exec();
    frontend->end();
    return status;
}

int playScenario(const Arguments& arguments, const TerminationSignals& signals) {
    PosixFileSystem files;
    auto scenario = replay::loadScenario(files, *arguments.scenario);
    if (!scenario) {
        say(STDERR_FILENO, scenario.error());
        return usageError;
    }
    const TerminationNotifier termination(signals, [] { QCoreApplication::quit(); });
    const auto output = outputUnless(signals.descriptor(), STDOUT_FILENO);
    const auto problems = outputUnless(signals.descriptor(), STDERR_FILENO);
    EventLoopTimers timers;
    const desktop::SessionBus bus(timers);
    // After a restart it would play from the beginning.
    const auto frontend =
        makeFrontend(arguments, bus.connection(), problems,
                     [](Opening /*opening*/, const QString& /*libraryBuild*/) { return false; });
    StatusLines lines(output, pauseBetweenPlayedLines);
    ScenarioProgram program(*scenario, arguments.speed, arguments.pauseAt,
                            [&lines](const UserNotificationRequest& request) {
                                lines.note(request.content.title + ": " + request.content.body);
                            });
    AppState state(completed(program.environment(), frontend.get()));
    state.observeTicks([&] {
        lines.tick(state, cli::localTimeOfDay(state.environment().machine.clock.now()),
                   std::chrono::steady_clock::now());
    });
    program.play(state, [] { QCoreApplication::quit(); });
    return runEventLoop(state, frontend.get(), arguments);
}

/// Brings the one that runs already to the front.
int showRunningAgent(const QDBusConnection& bus) {
    const auto call = QDBusMessage::createMethodCall(busName, busPath, busName, "Open");
    const auto answer = bus.isConnected() ? bus.call(call, QDBus::Block, timeToShow) : QDBusMessage();
    const bool isReached = answer.type() == QDBusMessage::ReplyMessage;
    const bool isShown = isReached && answer.arguments().value(0).toBool();
    say(STDOUT_FILENO, isShown     ? "already running; its window is open now"
                       : isReached ? "already running without windows; \"cindertopctl\" talks to it"
                                   : std::string(cli::unreachableAgent));
    return success;
}

/// Whether the person at the terminal accepts the terms; without that there is nothing to do.
bool acceptsTermsAtTerminal(UserDefaults& defaults, int interruption) {
    const auto output = outputUnless(interruption, STDOUT_FILENO);
    const auto answer = askForTerms(output, STDIN_FILENO, interruption);
    if (answer == true) {
        storeTermsAccepted(defaults);
    } else if (answer == false) {
        say(output,
            "the terms of use are not accepted, so nothing is watched in the background and nothing is "
            "kept; \"cindertopctl watch\" looks without keeping anything");
    }
    return answer == true;
}

/// Asks a person who can answer; everybody else is told how to accept. False: there is nothing to do.
bool prepareTerms(UserDefaults& defaults, int interruption) {
    if (areTermsAccepted(defaults)) {
        return true;
    }
    if (isTerminal(STDIN_FILENO) && isTerminal(STDOUT_FILENO)) {
        return acceptsTermsAtTerminal(defaults, interruption);
    }
    say(outputUnless(interruption, STDERR_FILENO),
        "before you accept the terms of use, nothing is watched in the background and nothing is kept; "
        "run \"cindertopctl accept-terms\"");
    return true;
}

std::string environmentText(const char* name) {
    return qEnvironmentVariable(name).toStdString();
}

BusActions busActions(AppState& state, DesktopFrontend* frontend) {
    return {.open =
                [&state, frontend] {
                    if (frontend != nullptr) {
                        frontend->openMainWindow();
                    } else {
                        state.showMainWindow();
                    }
                },
            .quit = [] { QCoreApplication::quit(); }};
}

/// Runs on the machine until it is told to end.
int watchMachine(const Arguments& arguments, const UserFolders& folders, const TerminationSignals& signals,
                 Restart& restart) {
    const TerminationNotifier termination(signals, [] { QCoreApplication::quit(); });
    PosixFileSystem files;
    linux_platform::PropertyListUserDefaults stored(linux_platform::PropertyListUserDefaults::defaultFile(),
                                                    files);
    TermsAcceptedForRun accepted(stored);
    if (arguments.acceptsTerms && !areTermsAccepted(stored)) {
        say(outputUnless(signals.descriptor(), STDERR_FILENO),
            "the terms of use count as accepted for this run; "
            "\"cindertopctl accept-terms\" accepts them for good");
    }
    UserDefaults& defaults = arguments.acceptsTerms ? static_cast<UserDefaults&>(accepted) : stored;
    // Where there are windows, one of them asks.
    if (!hasWindows() && !prepareTerms(defaults, signals.descriptor())) {
        return success;
    }
    EventLoopTimers timers;
    desktop::SessionBus bus(timers);
    desktop::FreedesktopNotificationCenter notifications(
        bus.connection(), timers, defaults,
        desktop::notificationSwitch(environmentText("XDG_CURRENT_DESKTOP"), folders.config));
    LiveProgram program(folders, defaults, notifications);
    const auto problems = outputUnless(signals.descriptor(), STDERR_FILENO);
    const auto frontend = makeFrontend(
        arguments, bus.connection(), problems, [&restart](Opening opening, const QString& libraryBuild) {
            const bool isPrepared = restart.prepare(opening, libraryBuild.toStdString());
            if (isPrepared) {
                QCoreApplication::exit();
            }
            return isPrepared;
        });
    AppState state(completed(program.environment(), frontend.get()));
    AgentBus agentBus(bus.connection(), state, busActions(state, frontend.get()));
    if (agentBus.claimName() == AgentBus::Claim::taken) {
        return showRunningAgent(bus.connection());
    }
    notifications.observeServer([&state] { state.refreshNotificationState(); });
    bus.observe([&](const QDBusConnection& connection) {
        notifications.useBus(connection);
        agentBus.useBus(connection);
        if (frontend) {
            frontend->useBus(connection);
        }
    });
    const auto tellProblem = [&] {
        if (const auto problem = stored.takeProblem()) {
            say(problems, *problem);
            state.reportPreferencesProblem(*problem);
        }
    };
    tellProblem();
    const auto output = outputUnless(signals.descriptor(), STDOUT_FILENO);
    StatusLines lines(output, 0ms);
    const bool isShown = isTerminal(STDOUT_FILENO);
    state.observeTicks([&] {
        agentBus.publishTick();
        tellProblem();
        if (isShown) {
            lines.tick(state, cli::localTimeOfDay(state.environment().machine.clock.now()),
                       std::chrono::steady_clock::now());
        }
    });
    const MemoryReturn memory(timers);
    const DisplayLoss displayLoss(state);
    return runEventLoop(state, frontend.get(), arguments);
}

/// A command that looks whether an agent runs holds the lock for a moment.
auto acquireLock(const std::filesystem::path& folder, const std::string& note) {
    constexpr int tries = 5;
    constexpr auto moment = 10ms;
    auto lock = linux_platform::AgentLock::tryAcquire(folder, note);
    for (int tried = 1; tried < tries && !lock && lock.error() == std::errc::device_or_resource_busy;
         ++tried) {
        std::this_thread::sleep_for(moment);
        lock = linux_platform::AgentLock::tryAcquire(folder, note);
    }
    return lock;
}

/// Its window would open out of sight when the running one belongs to another screen.
int leaveToRunningAgent(const SessionPlace& here, const UserFolders& folders) {
    const auto there = SessionPlace::fromNote(linux_platform::AgentLock::note(folders.programData()));
    if (!there || !here.isApartFrom(*there)) {
        return showRunningAgent(
            QDBusConnection::connectToBus(desktop::sessionBusAddress(), "cindertop-second-start"));
    }
    say(STDOUT_FILENO,
        "already running in your other session (" + there->words() + "); it watches for all of them");
    return success;
}

int runLive(const Arguments& arguments, const TerminationSignals& signals, Restart& restart) {
    const auto folders = UserFolders::ofUser();
    const auto here = SessionPlace::of(environmentText, hasWindows());
    const auto lock = acquireLock(folders.programData(), here.note());
    if (!lock && lock.error() == std::errc::device_or_resource_busy) {
        return leaveToRunningAgent(here, folders);
    }
    if (!lock) {
        say(STDERR_FILENO, "nothing will be kept: " + folders.programData().string() + ": " +
                               std::make_error_code(lock.error()).message());
    }
    return watchMachine(arguments, folders, signals, restart);
}

/// The history is written as one long text every minute, and glibc would keep the room for it, once for
/// each thread. See docs/performance.md for what this saves and costs.
void returnUnusedMemory() {
    /// More than an hour of history, in bytes: a text of less grows within the heap.
    constexpr int longText = 1024 * 1024;
    constexpr int largestKept = 128 * 1024; ///< bytes
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_MMAP_THRESHOLD, longText);
    ::mallopt(M_TRIM_THRESHOLD, largestKept);
}

/// With windows where there is a display for them.
std::unique_ptr<QCoreApplication> makeApplication(const Arguments& arguments, int& argumentCount,
                                                  char** words) {
    std::unique_ptr<QCoreApplication> application;
    if (!arguments.isHeadless && hasDisplay()) {
        application = std::make_unique<QGuiApplication>(argumentCount, words);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        QGuiApplication::setDesktopFileName("cindertop");
        QGuiApplication::setLayoutDirection(QLocale().textDirection()); // as the desktop around it
    } else {
        application = std::make_unique<QCoreApplication>(argumentCount, words);
    }
    std::setlocale(LC_ALL, ""); // Qt has set the program's own
    return application;
}

/// Whatever it has opened is closed when it returns.
int runProgram(const Arguments& arguments, int& count, char** texts, Restart& restart) {
    const TerminationSignals signals;
    const auto application = makeApplication(arguments, count, texts);
    return arguments.scenario ? playScenario(arguments, signals) : runLive(arguments, signals, restart);
}

int run(int count, char** texts) {
    const std::vector<std::string_view> words(texts + (count > 0 ? 1 : 0), texts + count);
    const auto arguments = parseArguments(words);
    if (!arguments) {
        say(STDERR_FILENO, arguments.error() + "; see \"cindertop --help\"");
        return usageError;
    }
    const cli::Output output(STDOUT_FILENO);
    if (arguments->action == Action::help) {
        return output.write(cli::helpText(programTable())) ? success : failure;
    }
    if (arguments->action == Action::version) {
        return output.write("cindertop " + std::string(version) + '\n') ? success : failure;
    }
    Restart restart({words.begin(), words.end()});
    const int status = runProgram(*arguments, count, texts, restart);
    if (restart.isPrepared()) {
        say(STDERR_FILENO, restart.carryOut());
        return failure;
    }
    return status;
}

} // namespace

} // namespace cindertop::agent

int main(int argumentCount, char** arguments) {
    using namespace cindertop::agent;
    cindertop::cli::occupyStandardDescriptors();
    returnUnusedMemory();
    ::signal(SIGPIPE, SIG_IGN); // a write to a reader that is gone fails instead
    try {
        return run(argumentCount, arguments);
    } catch (const std::exception& error) {
        say(STDERR_FILENO, error.what());
        return failure;
    }
}
