#include "cli/StandardDescriptors.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace cindertop::cli {

void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace cindertop::cli
