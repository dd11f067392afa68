#include "cli/HelpText.h"

namespace cindertop::cli {

std::string_view helpText() {
    return R"(cindertopctl tells how hot this machine runs, and why.

usage: cindertopctl COMMAND [--json]

Commands:
  status      Measure for half a second and show everything: the thermal score,
              temperatures, power, displays, the busiest applications, and
              which sources of facts this machine has.
  watch       Show it until you press q or Ctrl-C: on a terminal on one screen,
              elsewhere a line a tick. It looks every 2 s while the machine is
              cool, and up to five times a second when it is hot.
  offenders   Measure for half a second and list every application with all
              of its processes, the busiest first.

Options:
  --json         JSON instead of text. "watch" writes one object a line.
  -h, --help     Show this help.
  -V, --version  Show the version.

Shares are of the whole machine: 100 % means that every processor is busy. What
cannot be measured is "not available" in text and null in JSON, never 0.

Environment:
  NO_COLOR   Not empty: no colours. There are none outside a terminal anyway.
  COLUMNS    Width of the text where it does not go to a terminal (80).
  LC_ALL, LC_MEASUREMENT, LANG
             Choose between Celsius and Fahrenheit.

Exit status:
  0  Done. Also when you ended "watch", or whoever read it had seen enough.
  1  The output could not be written, or the system refused something needed.
  2  The command line was not understood.
Ended by SIGTERM, SIGHUP or SIGQUIT, "watch" restores the terminal and then dies
by that signal.
)";
}

} // namespace cindertop::cli
