#pragma once

#include "TemporaryTree.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// A machine of tests/fixtures/machines, unfolded into a folder of its own. Its file has sections "[folder]"
/// with lines "file text" and "link -> target"; "\n", "\t" and "\0" in a text stand for these bytes, and each
/// text without a zero byte ends with a line end. "#" begins a comment.
class MachineTree : public TemporaryTree {
public:
    explicit MachineTree(std::string_view machine) {
        const auto file =
            std::filesystem::path(CINDERTOP_FIXTURES) / "machines" / (std::string(machine) + ".tree");
        std::ifstream stream(file);
        if (!stream) {
            throw std::runtime_error("no machine " + file.string());
        }
        std::filesystem::path folder;
        std::string line;
        while (std::getline(stream, line)) {
            if (line.starts_with('[')) {
                folder = line.substr(1, line.size() - 2);
            } else if (!line.empty() && !line.starts_with('#')) {
                const auto blank = line.find(' ');
                add(folder / line.substr(0, blank), std::string_view(line).substr(blank + 1));
            }
        }
    }

private:
    void add(const std::filesystem::path& file, std::string_view text) const {
        if (text.starts_with("-> ")) {
            link(file, text.substr(3));
            folder((file.parent_path() / text.substr(3))
                       .lexically_normal()); // what it leads to need not be listed
            return;
        }
        const auto bytes = unescaped(text);
        write(file, bytes.ends_with('\0') ? bytes : bytes + "\n");
    }

    static std::string unescaped(std::string_view text) {
        std::string bytes;
        for (std::size_t index = 0; index < text.size(); ++index) {
            if (text[index] != '\\' || index + 1 == text.size()) {
                bytes += text[index];
                continue;
            }
            const char code = text[++index];
            bytes += code == 'n' ? '\n' : code == 't' ? '\t' : code == '0' ? '\0' : code;
        }
        return bytes;
    }
};

} // namespace cindertop::linux_platform
