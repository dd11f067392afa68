"""Sees and does what a screen reader can, in the windows of one process.

usage: screen_reader.py PROCESS press NAME     presses the control of that name
       screen_reader.py PROCESS focused        prints the name of what has the focus
       screen_reader.py PROCESS selected       prints the name of the open tab
       screen_reader.py PROCESS shows NAME     whether anything of that name is to be seen
"""

import sys
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

warnings.simplefilter("ignore", DeprecationWarning)


def descendants(node):
    yield node
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from descendants(child)


def showing(process):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        if program is not None and program.get_process_id() == process:
            yield from (node for node in descendants(program) if has(node, Atspi.StateType.SHOWING))


def has(node, state):
    return node.get_state_set().contains(state)


def press(process, name):
    for node in showing(process):
        action = node.get_action_iface()
        if node.get_name() == name and action is not None and node.get_role() != Atspi.Role.LABEL:
            names = [action.get_action_name(index) for index in range(action.get_n_actions())]
            return names.count("Press") > 0 and action.do_action(names.index("Press"))
    return False


def tell(process, state):
    names = [node.get_name() for node in showing(process) if has(node, state)]
    print(*names, sep="\n")
    return len(names) == 1


def main(process, wish, *names):
    if wish == "press":
        done = press(process, *names)
    elif wish == "shows":
        done = any(node.get_name() == names[0] for node in showing(process))
    else:
        done = tell(process, {"focused": Atspi.StateType.FOCUSED, "selected": Atspi.StateType.SELECTED}[wish])
    return 0 if done else 1


if __name__ == "__main__":
    sys.exit(main(int(sys.argv[1]), *sys.argv[2:]))
