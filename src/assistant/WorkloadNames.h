#pragma once

#include <array>
#include <string_view>

// Parts of names, in lower case, by which a kind of work is known whatever the category of its processes.

namespace cindertop {

inline constexpr auto gameNameFragments = std::to_array<std::string_view>({
    "steam",
    "epic games",
    "battle.net",
    "roblox",
    "minecraft",
    "riot",
    "league of legends",
    "unity",
    "unreal",
});

inline constexpr auto localAINameFragments = std::to_array<std::string_view>({
    "ollama",
    "lm studio",
    "llama",
    "mlx",
});

} // namespace cindertop
