#include "platform/linux/LaunchCommand.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace cindertop::linux_platform {

namespace {

constexpr auto shells = std::to_array<std::string_view>({
    "ash",
    "bash",
    "busybox",
    "csh",
    "dash",
    "elvish",
    "fish",
    "ksh",
    "mksh",
    "nu",
    "pwsh",
    "sh",
    "tcsh",
    "xonsh",
    "zsh",
});

constexpr auto interpreters = std::to_array<std::string_view>({
    "bun",   "deno", "dotnet",  "electron", "gjs",    "gjs-console", "guile", "java",
    "javaw", "lua",  "luajit",  "mono",     "nodejs", "node",        "perl",  "php",
    "pypy",  "qml",  "Rscript", "ruby",     "tclsh",  "wish",        "wine",  "python",
});

constexpr auto wrappers = std::to_array<std::string_view>({
    "bwrap", "dbus-launch", "dbus-run-session", "distrobox",    "doas",
    "env",   "firejail",    "flatpak",          "gapplication", "gio",
    "gksu",  "gtk-launch",  "ionice",           "kdesu",        "nice",
    "nohup", "pkexec",      "setsid",           "snap",         "su",
    "sudo",  "systemd-run", "toolbox",          "xdg-open",
});

constexpr auto multiplexers = std::to_array<std::string_view>({
    "abduco",
    "dtach",
    "screen",
    "tmux",
    "tmux: server",
    "zellij",
});

bool contains(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

std::string_view fileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1); // no "/": npos + 1 is 0
}

/// "python3.11" is "python", "guile-3.0" is "guile".
std::string_view withoutVersion(std::string_view name) {
    const auto last = name.find_last_not_of("0123456789.-");
    return name.substr(0, last + 1);
}

/// The words of a line, quoted as in a shell; none of a broken one.
std::vector<std::string> words(std::string_view line) {
    int count = 0;
    char** list = nullptr;
    if (g_shell_parse_argv(std::string(line).c_str(), &count, &list, nullptr) == FALSE) {
        return {};
    }
    const std::unique_ptr<char*, decltype(&g_strfreev)> owned(list, &g_strfreev);
    return {list, list + count};
}

/// What follows "env" and its options and variables.
std::span<const std::string> afterEnv(std::span<const std::string> command) {
    if (command.empty() || fileName(command.front()) != "env") {
        return command;
    }
    command = command.subspan(1);
    while (!command.empty()) {
        const auto& word = command.front();
        const bool takesNext = word == "-u" || word == "-C";
        if (!word.starts_with('-') && !word.contains('=')) {
            break;
        }
        command = command.subspan(std::min<std::size_t>(takesNext ? 2 : 1, command.size()));
    }
    return command;
}

/// "%U" and its like, for which the desktop puts in what it opens.
bool isFieldCode(std::string_view word) {
    return word.size() == 2 && word.front() == '%';
}

} // namespace

std::optional<LaunchCommand> parseExec(std::string_view exec) {
    const auto all = words(exec);
    const auto command = afterEnv(all);
    if (command.empty() || command.front().empty() || isLauncher(command.front())) {
        return std::nullopt;
    }
    LaunchCommand result{.program = command.front()};
    for (const auto& word : command.subspan(1)) {
        if (isFieldCode(word)) {
            continue;
        }
        if (!word.starts_with('-')) {
            return std::nullopt;
        }
        ++result.options;
    }
    return result;
}

bool isLauncher(std::string_view path) {
    const auto name = fileName(path);
    const auto plain = withoutVersion(name);
    return isShell(name) || contains(interpreters, plain) || contains(wrappers, name);
}

bool isShell(std::string_view name) {
    return contains(shells, withoutVersion(name));
}

bool isMultiplexer(std::string_view name) {
    return contains(multiplexers, name);
}

std::optional<std::string> wrapperOf(std::string_view path) {
    const auto name = fileName(path);
    const auto folder = path.substr(0, path.size() - name.size());
    for (const std::string_view suffix : {"-wrapped", "-real"}) {
        if (name.starts_with('.') && name.size() > suffix.size() + 1 && name.ends_with(suffix)) {
            return std::string(folder) + std::string(name.substr(1, name.size() - 1 - suffix.size()));
        }
    }
    return std::nullopt;
}

} // namespace cindertop::linux_platform
