#!/usr/bin/python3
"""Drives the range slider of atspi_range_slider_app through AT-SPI.

Finds the application on the accessibility bus, its two handles by their
names, reads both values, sets the lower one through the Value interface and
waits until the application reports the change on its standard output (the
file given as the only argument). Every wait is bounded.
"""

import sys
import time

import pyatspi

APP_NAME = "vel_atspi_check"
TIMEOUT = 20.0


def wait_for(what, probe, timeout=TIMEOUT):
    deadline = time.monotonic() + timeout
    while True:
        result = probe()
        if result:
            return result
        if time.monotonic() > deadline:
            sys.exit("check_range_slider: timed out waiting for %s" % what)
        time.sleep(0.2)


def find_app():
    desktop = pyatspi.Registry.getDesktop(0)
    for app in desktop:
        if app is not None and app.name == APP_NAME:
            return app
    return None


def find_handles(app):
    sliders = pyatspi.findAllDescendants(app, lambda o: o.getRole() == pyatspi.ROLE_SLIDER)
    handles = {s.name: s for s in sliders}
    if "Band minimum" in handles and "Band maximum" in handles:
        return handles
    return None


def main():
    log = sys.argv[1]
    app = wait_for("the application on the accessibility bus", find_app)
    handles = wait_for("the two handles", lambda: find_handles(app))
    lower = handles["Band minimum"].queryValue()
    upper = handles["Band maximum"].queryValue()
    print("handles: minimum %g (%g..%g), maximum %g (%g..%g)" % (
        lower.currentValue, lower.minimumValue, lower.maximumValue,
        upper.currentValue, upper.minimumValue, upper.maximumValue))
    if (lower.currentValue, upper.currentValue) != (20, 80):
        sys.exit("check_range_slider: expected the handles at 20 and 80")
    if (lower.minimumValue, lower.maximumValue) != (0, 80):
        sys.exit("check_range_slider: expected the lower handle to range over 0..80")

    lower.currentValue = 35

    def reported():
        with open(log) as f:
            return "values 35 80" in f.read().splitlines()
    wait_for("the application to report values 35 80", reported)
    if lower.currentValue != 35:
        sys.exit("check_range_slider: the lower handle reads %g, not 35" % lower.currentValue)
    print("check_range_slider: the application reported values 35 80")


if __name__ == "__main__":
    main()
