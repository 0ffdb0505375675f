#!/usr/bin/python3 -Wignore
"""audit.py HOST SANDBOX: leads the flow through what assistive tools see and do (AT-SPI), on a session bus and a display.

Each screen has to be one named dialog with its controls in reading order, and each step has to be told: what is chosen,
what is missing, that something is being sent, and that it has arrived.
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import urllib.request

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

LIMIT = 15
SHOWN = ["push button", "text", "check box", "image", "alert", "dialog", "heading"]


def fail(words):
    sys.exit(f"FAIL: {words}")


def wait_for(words, condition):
    """What `condition` gives, as soon as it is true."""
    end = time.monotonic() + LIMIT
    while time.monotonic() < end:
        try:
            result = condition()
        except GLib.Error:  # something has gone while it was looked at
            result = None
        if result:
            return result
        time.sleep(0.05)
    fail(f"waited in vain for {words}")


def has(accessible, state):
    return accessible.get_state_set().contains(state)


def below(accessible):
    """Everything below that can be seen, in the order in which it is read."""
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        if child and has(child, Atspi.StateType.SHOWING):
            yield child
            yield from below(child)


def find(root, role, name):
    return next((a for a in below(root) if a.get_role_name() == role and a.get_name() == name), None)


def press(root, role, name):
    found = wait_for(f"{role} '{name}'", lambda: find(root, role, name))
    action = found.get_action_iface()
    names = [Atspi.Action.get_action_name(action, i) for i in range(Atspi.Action.get_n_actions(action))]
    wanted = next((i for i, name in enumerate(names) if name in ("Press", "Toggle")), None)
    if wanted is None or not Atspi.Action.do_action(action, wanted):
        fail(f"{role} '{name}' cannot be pressed: {names}")


def shake():
    """Ctrl+Shift+S, by the codes that an X server has for these keys."""
    keys = [37, 50, 39]
    for key in keys:
        Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.PRESS)
    for key in reversed(keys):
        Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.RELEASE)


def focused(root):
    return [a.get_name() for a in below(root) if has(a, Atspi.StateType.FOCUSED)]


def check_controls(screen, expected):
    def controls():
        found = [(a.get_role_name(), a.get_name()) for a in below(screen)]
        return [control for control in found if control[0] in SHOWN]

    wait_for(f"{expected} in '{screen.get_name()}'", lambda: controls() == expected)  # it slides into sight
    print(f"ok: '{screen.get_name()}' with {len(expected)} controls in order")


def check_state(accessible, state, is_set=True):
    if has(accessible, state) != is_set:
        fail(f"'{accessible.get_name()}' has {state.value_nick}: {not is_set}")


def listen(process):
    for line in process.stdout:
        if line.startswith("Listening on "):
            return line.split()[-1]
    fail("the sandbox has ended")


def host_application():
    desktop = Atspi.get_desktop(0)
    applications = (desktop.get_child_at_index(i) for i in range(desktop.get_child_count()))
    return next((a for a in applications if a and a.get_name().endswith("-host") and a.get_child_count()), None)


def run(app, url):
    app.set_cache_mask(Atspi.Cache.NONE)  # names that are told later than their bearers would stay unknown
    wait_for("the host's window", lambda: app.get_child_at_index(0).get_state_set().contains(Atspi.StateType.ACTIVE))
    shake()
    dialog = wait_for("the dialog", lambda: find(app, "dialog", "Need help?"))
    check_controls(dialog, [("push button", "Report a bug"), ("push button", "Suggest an improvement"),
                            ("push button", "Cancel")])
    wait_for("the focus in the dialog", lambda: "Report a bug" in focused(dialog))
    if "broken" not in find(dialog, "push button", "Report a bug").get_description():
        fail("the choice does not say what it is for")

    press(dialog, "push button", "Report a bug")
    form = wait_for("the form", lambda: find(app, "dialog", "Report a bug"))
    if find(app, "dialog", "Need help?"):
        fail("the dialog is still there")
    check_controls(form, [("push button", "Close"), ("heading", "Report a bug"), ("push button", "Send"),
                          ("text", "Email"), ("text", "Description"), ("push button", "First time"),
                          ("image", "Screenshot"), ("push button", "Remove screenshot"),
                          ("push button", "Edit screenshot"), ("push button", "Add Media (1/5)"), ("check box", "Allow support contact")])
    check_state(find(form, "text", "Email"), Atspi.StateType.EDITABLE)
    check_state(find(form, "text", "Description"), Atspi.StateType.MULTI_LINE)
    box = find(form, "check box", "Allow support contact")
    check_state(box, Atspi.StateType.CHECKED, False)
    press(form, "check box", "Allow support contact")
    wait_for("the mark", lambda: has(box, Atspi.StateType.CHECKED))

    press(form, "push button", "Add Media (1/5)")
    picker = wait_for("the picker", lambda: find(app, "dialog", "Photos and videos"))
    places = [("push button", name) for name in ("Up", "Pictures", "Videos", "Home", "Other files…")]
    check_controls(picker, [("push button", "Cancel"), ("heading", "Pictures"), ("push button", "Done"), *places,
                            ("push button", "a folder"), ("check box", "picture.png")])
    choice = find(picker, "check box", "picture.png")
    check_state(choice, Atspi.StateType.CHECKED, False)
    press(picker, "check box", "picture.png")
    wait_for("the choice", lambda: has(choice, Atspi.StateType.CHECKED))
    press(picker, "push button", "Done (1)")
    wait_for("the picture in the form", lambda: find(form, "image", "Picture"))
    press(form, "push button", "Remove attachment")
    wait_for("the end of the picture", lambda: not find(form, "image", "Picture"))

    press(form, "push button", "Send")
    alert = wait_for("the alert", lambda: find(app, "alert", "Missing Field"))
    if alert.get_description() != "Description is required.":
        fail("the alert does not say what is missing")
    wait_for("the focus on the alert", lambda: "OK" in focused(alert))
    press(alert, "push button", "OK")
    wait_for("the end of the alert", lambda: not find(app, "alert", "Missing Field"))

    fault = {"path": "/v1/sdk/reports", "delayMs": 1500, "handle": True}
    request = urllib.request.Request(f"{url}/sandbox/faults", json.dumps(fault).encode(),
                                     {"Content-Type": "application/json"})
    urllib.request.urlopen(request).close()
    find(form, "text", "Description").get_component_iface().grab_focus()
    wait_for("the focus in the text", lambda: "Description" in focused(form))
    for letter in "words":
        Atspi.generate_keyboard_event(0, letter, Atspi.KeySynthType.STRING)
    description = find(form, "text", "Description")
    wait_for("the text", lambda: Atspi.Text.get_text(description.get_text_iface(), 0, -1) == "words")
    press(form, "push button", "Send")
    wait_for("word that it is being sent", lambda: "Sending" in focused(form))
    alert = wait_for("word that it has arrived", lambda: find(app, "alert", "Thank You"))
    wait_for("the focus on the alert", lambda: "OK" in focused(alert))
    press(alert, "push button", "OK")
    wait_for("the end of the form", lambda: not find(app, "dialog", "Report a bug"))


def make_pictures(home):
    pictures = pathlib.Path(home, "Pictures")
    pictures.joinpath("a folder").mkdir(parents=True)
    shutil.copy(pathlib.Path(__file__).parents[2] / "examples/media/screen.png", pictures / "picture.png")


def main():
    host, sandbox = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        service = subprocess.Popen([sandbox, "--folder", folder, "--token", "demo-token=com.example.demo"],
                                   stdout=subprocess.PIPE, text=True)
        app = None
        try:
            url = listen(service)
            make_pictures(folder)
            app = subprocess.Popen([host, "--service", url, "--token", "demo-token"],
                                   env={**os.environ, "HOME": folder, "XDG_CONFIG_HOME": folder})
            run(wait_for("the host", host_application), url)
            if app.poll() is not None:
                fail("the host has ended")
        finally:
            for process in (app, service):
                if process:
                    process.terminate()
                    process.wait()


main()
