# Reads the accessibility tree of the running window, then works the controls through it alone, and
# the chart by keys. No mouse is used.
import re, subprocess, time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

POINTS = ["A1, start of the up trend", "A2, other start of the up trend", "B1, end of the up move",
          "C1, end of the pull-back", "A3, start of the down trend",
          "A4, other start of the down trend", "B2, end of the down move", "C2, end of the rebound"]
TARGETS = ["target 1:1", "target 1.382", "target 1.618"]
LEVELS = ["retracement 38.2%", "retracement 50%", "retracement 61.8%"] + TARGETS
# Every control that takes the focus.
CONTROLS = [(role, name) for role, names in [
    ("text", ["Ticker symbol"] + POINTS), ("check box", [f"Show A{n}" for n in range(1, 5)]),
    ("button", ["Draw Chart", "Calculate", "Clear"]),
    ("combo box", ["Chart type: Candle", "Time span: 12 months", "Chart interval: Daily"]),
    ("button", ["Expand Chart", "Suppress Chart", "Help"]),
    ("text", ["Close of the newest bar"]), ("image", ["Price chart"]),
    ("check box", [f"Show A{n + i} {level}" for n in (1, 3) for level in TARGETS for i in (0, 1)]),
] for name in names]
LABELS = {f"A{number} {level}" for number in range(1, 5) for level in LEVELS} | {
    "Date of the bar", "Open", "High", "Low", "Close", "Price at the pointer"}
SUMMARY = r"DEMO: (\d+) bars shown, \S+ to \S+, prices [\d.]+ to [\d.]+, newest close ([\d.]+)(.*)"
BAR = (r"(Picked: )?Date of the bar: (\S+), Open: [\d.]+, High: ([\d.]+), Low: ([\d.]+), "
       r"Close: ([\d.]+), Price at the pointer: ([\d.]+)")
heard = []  # what a screen reader speaks: what newly got the focus, and notifications


def wait(condition):  # for its first true result
    end = time.monotonic() + 10
    while not (result := condition()):
        GLib.MainContext.default().iteration(False)
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


def keys(*names):
    subprocess.run(["xdotool", "key", *names], check=True)


def focus(name, key):  # by the keyboard alone
    for _ in range(40):
        if find(name, Atspi.StateType.FOCUSED):
            return
        keys(key)
        time.sleep(0.1)
    assert False, name


def hear(event, told=[None]):
    source, states = event.source, event.source.get_state_set()
    focused = all(map(states.contains, (Atspi.StateType.FOCUSED, Atspi.StateType.FOCUSABLE)))
    if event.detail1 and source != told[0] and (
            focused or source.get_role() == Atspi.Role.NOTIFICATION):
        told[0] = source
        heard.append(source.get_name())


def hears(pattern, *by):
    heard.clear()
    keys(*by)
    return wait(lambda: next(filter(None, (re.fullmatch(pattern, text) for text in heard)), None))


def summary():
    return re.fullmatch(SUMMARY, find("Price chart")[0].get_description())


window = wait(lambda: find("Quintara - Version 2.00.01"))[0]
assert window.get_role_name() == "frame", window.get_role_name()
tree = [(node.get_role_name().removeprefix("push "),  # as later versions of the bus say
         node.get_name(), node.get_state_set()) for node in below(window)]
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

# A session of keys: three bars are read, then A1, B1 and C1 picked.
listener = Atspi.EventListener.new(hear)
for change in ("focused", "showing"):
    listener.register(f"object:state-changed:{change}")
focus("Price chart", "Tab")
newest, older, third = hears(BAR, "Left"), hears(BAR, "Left"), hears(BAR, "Left")
assert newest[5] == newest[6] == drawn[2], newest  # its close
assert len({newest[2], older[2], third[2]}) == 3 and older[6] == newest[6]
for name, way, price in ((POINTS[0], ["Left", "End"], 4), (POINTS[0], ["Left", "End"], 4),
                         (POINTS[2], ["Left"], 3), (POINTS[3], ["Left", "Prior"], 4)):
    focus("Price chart", "shift+Tab")
    for key in way:
        hears(BAR, key)
    picked = hears(BAR, "Return")
    assert picked[1]
    focus(name, "Tab")
    assert hears(r"Dropped: ([\d.]+)", "Return")[1] == picked[price], picked[0]
    assert Atspi.Text.get_text(find(name)[0], 0, -1) == picked[price], name
press("Calculate")
wait(lambda: not find("A1 retracement 38.2%"))
press("Show A1")
wait(lambda: re.search("; A1 retracements [\\d.]+, [\\d.]+, [\\d.]+", summary()[3]))
