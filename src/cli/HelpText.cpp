#include "cli/HelpText.h"

namespace cindertop::cli {

std::string_view helpText() {
    return R"(cindertopctl tells how hot this machine runs, and why.

usage: cindertopctl status | watch | offenders | history [--json]
       cindertopctl settings [NAME [VALUE]] [--json]
       cindertopctl pause | resume | quit | accept-terms
       cindertopctl export FILE
       cindertopctl replay FILE [--until SECONDS] [--state-dir FOLDER]
       cindertopctl record FILE [--seconds SECONDS]

The machine, as the running agent sees it, or measured here without one:
  status      The thermal score, the agent's advice, temperatures, power,
              displays, the busiest applications, and which sources of facts
              this machine has.
  watch       The same until you press q or Ctrl-C: on a terminal on one
              screen, elsewhere a line a tick. It looks every 2 s while the
              machine is cool, and up to five times a second when it is hot.
  offenders   Every application with its processes, the busiest first.

The agent:
  history     The last hour, or as much of it as the preference
              historyDurationMinutes says, and today, as the agent recorded
              them. It need not run for that.
  settings    All preferences, or the one named; with a VALUE, change it.
  pause, resume
              Pause and resume the monitoring.
  quit        End the agent, and wait until it has ended.
  accept-terms
              Show the terms of use and accept them. Before, nothing is watched
              in the background and nothing is kept. A look that you ask for
              (status, watch, offenders, record) needs no acceptance and keeps
              nothing.
  export FILE Write the recorded diagnostic events, the settings and what kind
              of system this is into FILE, to send along with a question. An
              existing file is replaced; "-" writes to the output.

Scenarios:
  replay FILE Play a scenario to the program in virtual time and print what it
              does, one JSON object a line: up to SECONDS of it with --until,
              keeping its files in FOLDER with --state-dir.
  record FILE Write what this machine does for SECONDS (60, or until Ctrl-C)
              as a scenario, without paths and names of persons or the host.

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
             Choose between Celsius and Fahrenheit, unless the preference
             temperatureUnit does.

Exit status:
  0  Done. Also when you ended "watch", or whoever read it had seen enough.
  1  The output or a file could not be written, no agent runs where one is
     needed, or it or the system refused.
  2  The command line or the scenario was not understood.
Ended by SIGTERM, SIGHUP or SIGQUIT, "watch" restores the terminal and then dies
by that signal.
)";
}

} // namespace cindertop::cli
