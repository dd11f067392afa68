#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::uint8_t> bytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

/// Runs every file of the given folder through the target once. An empty folder is a failure: nothing was
/// tried.
int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: " << *arguments << " FOLDER\n";
        return EXIT_FAILURE;
    }
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        const auto bytes = bytesOf(entry.path());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        ++count;
    }
    std::cout << count << " inputs\n";
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
