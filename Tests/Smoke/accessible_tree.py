"""The program as assistive techniques see it within the session of a private desktop. Prints its
windows as JSON; "do LABEL ACTION" and "set LABEL NUMBER" act on what is on the screen; "listen"
follows all changes and prints what gets the focus. A label: "check box: Launch at login"."""
import json
import sys

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

STATES = ("checked", "enabled", "focusable", "focused", "selected", "showing")


def label_of(element):
    return f"{element.get_role_name()}: {element.get_name()}"


def children(element):
    return [element.get_child_at_index(index) for index in range(element.get_child_count())]


def actions(element):
    count = Atspi.Action.get_n_actions(element) if "Action" in element.get_interfaces() else 0
    return [Atspi.Action.get_action_name(element, index) for index in range(count)]


def described(element):
    interfaces = element.get_interfaces()
    states = {state.value_nick for state in element.get_state_set().get_states()}
    rect = Atspi.Component.get_extents(element, Atspi.CoordType.SCREEN) \
        if "Component" in interfaces else None
    return {"label": label_of(element), "role": element.get_role_name(), "name": element.get_name(),
            "description": element.get_description(), "actions": actions(element),
            "states": [state for state in STATES if state in states],
            "value": Atspi.Value.get_current_value(element) if "Value" in interfaces else None,
            "rect": [rect.x, rect.y, rect.width, rect.height] if rect else None,
            "children": [described(child) for child in children(element)]}


def find(element, label):
    if label_of(element) == label and element.get_state_set().contains(Atspi.StateType.SHOWING):
        return element
    return next(filter(None, (find(child, label) for child in children(element))), None)


if sys.argv[1:] == ["listen"]:
    silent, focus = (Atspi.EventListener.new(react) for react in (
        lambda event: None, lambda event: print(label_of(event.source), flush=True)))
    silent.register("object:")
    focus.register("focus:")
    Atspi.event_main()
program = next((c for c in children(Atspi.get_desktop(0)) if c.get_name() == "meterkin"), None)
if not sys.argv[1:]:
    print(json.dumps([described(window) for window in children(program)] if program else []))
elif program:
    verb, label, wish = sys.argv[1:]
    element = find(program, label)
    print(json.dumps(element is not None and (
        Atspi.Value.set_current_value(element, float(wish)) if verb == "set" else wish in
        actions(element) and Atspi.Action.do_action(element, actions(element).index(wish)))))
