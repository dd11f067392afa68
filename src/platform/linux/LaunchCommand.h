#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// The program that the Exec line of a desktop entry starts.
struct LaunchCommand {
    std::string program;   ///< a path, or a name to look up in PATH
    std::size_t options{}; ///< how many: the entry with the fewest is the program's own

    bool operator==(const LaunchCommand&) const = default;
};

/// None when the line is broken, or when the program does not stand for the entry: a shell, an interpreter or
/// another launcher ("flatpak run", "python3 /usr/bin/tool"), or a program that is told what to be ("steam
/// steam://rungameid/1"). "env NAME=VALUE program" is looked through.
std::optional<LaunchCommand> parseExec(std::string_view exec);

/// Whether the file is a program that runs others, by its name: "bash", "python3.11", "flatpak", ...
bool isLauncher(std::string_view path);

/// Whether a process of this name is a command shell.
bool isShell(std::string_view name);

/// Whether a process of this name keeps shells running behind any terminal: "tmux: server", "screen".
bool isMultiplexer(std::string_view name);

/// The program that a wrapper of Nix or Guix starts, by the wrapper's name: "/x/bin/.maps-wrapped" and
/// "/x/bin/.maps-real" are "/x/bin/maps". None of another path.
std::optional<std::string> wrapperOf(std::string_view path);

} // namespace cindertop::linux_platform
