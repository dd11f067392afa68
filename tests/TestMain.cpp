#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <string_view>

/// As the program does, the tests take the environment's locale; asked for one that is missing, they refuse
/// to run, because they would pass without having tried it.
int main(int argumentCount, char** arguments) {
    const char* const wanted = std::getenv("LC_ALL");
    if (std::setlocale(LC_ALL, "") == nullptr && wanted != nullptr &&
        std::string_view(wanted) == "de_DE.UTF-8") {
        std::cerr << "the locale " << wanted << " cannot be loaded\n";
        return EXIT_FAILURE;
    }
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
