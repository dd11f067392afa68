"""Presses a button as a screen reader does: by its name, through its first action.

usage: press.py PROCESS NAME
"""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def descendants(node):
    yield node
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield from descendants(child)


def main(process, name):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        if program is None or program.get_process_id() != process:
            continue
        for node in descendants(program):
            showing = node.get_state_set().contains(Atspi.StateType.SHOWING)
            if showing and node.get_name() == name and node.get_action_iface() is not None:
                return 0 if node.get_action_iface().do_action(0) else 1
    return 1


if __name__ == "__main__":
    sys.exit(main(int(sys.argv[1]), sys.argv[2]))
