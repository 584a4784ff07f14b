# Reads the accessibility tree of the running window, then works the controls through it alone.
import re, time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

POINTS = ["A1, start of the up trend", "A2, other start of the up trend", "B1, end of the up move",
          "C1, end of the pull-back", "A3, start of the down trend",
          "A4, other start of the down trend", "B2, end of the down move", "C2, end of the rebound"]
TARGETS = ["target 1:1", "target 1.382", "target 1.618"]
LEVELS = ["retracement 38.2%", "retracement 50%", "retracement 61.8%"] + TARGETS
# Every control that takes the focus.
CONTROLS = [(role, name) for role, names in [
    ("text", ["Ticker symbol"] + POINTS), ("check box", [f"Show A{n}" for n in range(1, 5)]),
    ("push button", ["Draw Chart", "Calculate", "Clear"]),
    ("combo box", ["Chart type: Candle", "Time span: 12 months", "Chart interval: Daily"]),
    ("push button", ["Expand Chart", "Suppress Chart", "Help"]),
    ("text", ["Close of the newest bar"]), ("image", ["Price chart"]),
    ("check box", [f"Show A{n + i} {level}" for n in (1, 3) for level in TARGETS for i in (0, 1)]),
] for name in names]
LABELS = {f"A{number} {level}" for number in range(1, 5) for level in LEVELS} | {
    "Date of the bar", "Open", "High", "Low", "Close", "Price at the pointer"}
SUMMARY = r"DEMO: (\d+) bars shown, \S+ to \S+, prices [\d.]+ to [\d.]+, newest close ([\d.]+)"


def wait(condition):  # for its first true result
    end = time.monotonic() + 10
    while not (result := condition()):
        assert time.monotonic() < end, "in vain, at the line above"
        time.sleep(0.05)
    return result


def below(node):
    for child in filter(None, map(node.get_child_at_index, range(node.get_child_count()))):
        if child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield child
            yield from below(child)


def find(name, state=Atspi.StateType.SHOWING):
    return [node for node in below(Atspi.get_desktop(0))
            if node.get_name() == name and node.get_state_set().contains(state)]


def press(name):
    Atspi.Action.do_action(find(name)[0], 0)


def summary():
    return re.fullmatch(SUMMARY, find("Price chart")[0].get_description())


window = wait(lambda: find("Quintara - Version 2.00.01"))[0]
assert window.get_role_name() == "frame", window.get_role_name()
tree = [(node.get_role_name(), node.get_name(), node.get_state_set()) for node in below(window)]
assert all(name for _, name, _ in tree), [role for role, name, _ in tree if not name]
found = {(role, name) for role, name, state in tree if state.contains(Atspi.StateType.FOCUSABLE)}
assert found == set(CONTROLS), found ^ set(CONTROLS)
unsaid = LABELS - {name for role, name, _ in tree if role == "label"}
assert not unsaid, unsaid

Atspi.EditableText.set_text_contents(find("Ticker symbol")[0], "DEMO")
press("Draw Chart")
drawn = wait(summary)
close = Atspi.Text.get_text(find("Close of the newest bar")[0], 0, -1)
assert close == drawn[2] and find(f"Close: {close}"), close
press("Expand Chart")
wait(lambda: int(summary()[1]) < int(drawn[1]))
for name, price in ((POINTS[0], "23.17"), (POINTS[2], "31.45"), (POINTS[3], "27.80")):
    Atspi.EditableText.set_text_contents(find(name)[0], price)
press("Calculate")
wait(lambda: find("A1 retracement 38.2%: 28.287") and find("A2 retracement 38.2%"))
press("Show A1")
wait(lambda: find("Show A1", Atspi.StateType.CHECKED))
