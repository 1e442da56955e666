#!/usr/bin/env python3
"""Opens a page in headless Chromium and takes it through steps that are read from standard input.

    drive_page.py PAGE WIDTH HEIGHT [dark] [still] <steps

"dark" asks for dark colours, "still" for reduced motion. Each line of the input is a step, for which
one line is printed:

    EXPRESSION                its value as JSON; a promise is awaited
    !key NAME                 presses a key where the focus is
    !click SELECTOR           clicks into the middle of the first such element
    !drag SELECTOR DX DY      drags from the middle of the element, in pixels
    !wheel SELECTOR DY [ctrl] turns the wheel over it
    !screenshot SELECTOR      what the screen shows of the first such element: the number of different
                              colours, the part that differs from its corner, and the spread of
                              lightness (standard deviation, 0 to 255) of that part
    !requests                 the addresses that were requested beside the page itself
    !errors                   what the page reported as an error, its security policy included

Only the standard library is used: the browser is driven through two pipes with the protocol of its
developer tools. Exit code 3: there is no Chromium.
"""

import base64
import json
import os
import pathlib
import shutil
import signal
import statistics
import struct
import subprocess
import sys
import tempfile
import zlib

TIME_LIMIT = 100  # seconds, for everything
NAMED_KEYS = {"Tab": 9, "Enter": 13, "Space": 32, "End": 35, "Home": 36, "ArrowLeft": 37,
              "ArrowUp": 38, "ArrowRight": 39, "ArrowDown": 40}


def find_browser():
    for name in ("chromium", "chromium-browser"):
        if shutil.which(name):
            return shutil.which(name)
    return None


def pixels_of_png(data):
    """The pixels of a PNG of 8 bits a channel as tuples of red, green, blue."""
    width, height, _, kind = struct.unpack(">IIBB", data[16:26])
    channels = {2: 3, 6: 4}[kind]
    packed, at = b"", 8
    while at < len(data):
        size = struct.unpack(">I", data[at:at + 4])[0]
        if data[at + 4:at + 8] == b"IDAT":
            packed += data[at + 8:at + 8 + size]
        at += 12 + size
    raw = zlib.decompress(packed)
    row_size = width * channels
    above, pixels = bytearray(row_size), []
    for y in range(height):
        start = y * (row_size + 1)
        row = bytearray(raw[start + 1:start + 1 + row_size])
        for i in range(row_size):
            left = row[i - channels] if i >= channels else 0
            corner = above[i - channels] if i >= channels else 0
            row[i] = (row[i] + predicted(raw[start], left, above[i], corner)) % 256
        pixels += [tuple(row[i:i + 3]) for i in range(0, row_size, channels)]
        above = row
    return pixels


def predicted(filter_type, left, up, corner):
    """What a filter of PNG adds to a byte."""
    if filter_type == 4:
        nearest = [(abs(left + up - corner - value), i) for i, value in
                   enumerate((left, up, corner))]
        return (left, up, corner)[min(nearest)[1]]
    return (0, left, up, (left + up) // 2)[filter_type]


def shades_of(pixels):
    drawn = [pixel for pixel in pixels if pixel != pixels[0]]
    lightness = [sum(pixel) / 3 for pixel in drawn]
    return {"colours": len(set(pixels)), "drawn": len(drawn) / len(pixels),
            "spread": statistics.pstdev(lightness) if lightness else 0.0}


class Browser:
    """One Chromium and one page in it."""

    def __init__(self, program, profile):
        to_browser, self.output = os.pipe()
        self.input, from_browser = os.pipe()

        def connect():
            os.dup2(to_browser, 103)
            os.dup2(from_browser, 104)
            os.dup2(103, 3)
            os.dup2(104, 4)

        for descriptor in (to_browser, from_browser):
            os.set_inheritable(descriptor, True)
        self.process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
             "--disable-dev-shm-usage", "--disable-background-networking", "--no-first-run",
             "--remote-debugging-pipe", f"--user-data-dir={profile}", "about:blank"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            close_fds=False, preexec_fn=connect, start_new_session=True)
        os.close(to_browser)
        os.close(from_browser)
        self.unread = b""
        self.number = 0
        self.session = None
        self.events = []

    def close(self):
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()

    def receive(self):
        while b"\0" not in self.unread:
            part = os.read(self.input, 1 << 16)
            if not part:
                raise RuntimeError("the browser has ended")
            self.unread += part
        message, self.unread = self.unread.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.output, json.dumps(message).encode() + b"\0")
        while True:
            received = self.receive()
            if received.get("id") == self.number:
                if "error" in received:
                    raise RuntimeError(f"{method}: {received['error']['message']}")
                return received["result"]
            self.events.append(received)

    def wait_for(self, event):
        while not any(seen.get("method") == event for seen in self.events):
            self.events.append(self.receive())

    def open(self, page, width, height, dark, still):
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime", "Log"):
            self.call(f"{domain}.enable")
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-color-scheme", "value": "dark" if dark else "light"},
            {"name": "prefers-reduced-motion", "value": "reduce" if still else "no-preference"}])
        self.page = pathlib.Path(page).resolve().as_uri()
        self.call("Page.navigate", url=self.page)
        self.wait_for("Page.loadEventFired")

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", expression=expression, awaitPromise=True,
                           returnByValue=True)
        if "exceptionDetails" in result:
            details = result["exceptionDetails"]
            return "exception: " + details.get("exception", {}).get("description", details["text"])
        return result["result"].get("value")

    def middle_of(self, selector):
        at = self.evaluate(
            f"(() => {{ const e = document.querySelector({json.dumps(selector)});"
            " e.scrollIntoView({block: 'center'}); const r = e.getBoundingClientRect();"
            " return [r.x + r.width / 2, r.y + r.height / 2]; })()")
        if not isinstance(at, list):
            raise RuntimeError(f"{selector}: {at}")
        return at

    def mouse(self, kind, x, y, **parameters):
        self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, **parameters)

    def key(self, name):
        key = " " if name == "Space" else name
        code = NAMED_KEYS.get(name, ord(name[0]))
        common = {"key": key, "windowsVirtualKeyCode": code, "code": name}
        text = {} if len(key) > 1 and key != "Enter" else {"text": "\r" if key == "Enter" else key}
        self.call("Input.dispatchKeyEvent", type="keyDown", **common, **text)
        self.call("Input.dispatchKeyEvent", type="keyUp", **common)

    def click(self, selector):
        x, y = self.middle_of(selector)
        self.mouse("mousePressed", x, y, button="left", buttons=1, clickCount=1)
        self.mouse("mouseReleased", x, y, button="left", clickCount=1)

    def drag(self, selector, dx, dy):
        x, y = self.middle_of(selector)
        self.mouse("mousePressed", x, y, button="left", buttons=1, clickCount=1)
        for part in (0.5, 1.0):
            self.mouse("mouseMoved", x + dx * part, y + dy * part, button="left", buttons=1)
        self.mouse("mouseReleased", x + dx, y + dy, button="left", clickCount=1)

    def wheel(self, selector, dy, ctrl):
        x, y = self.middle_of(selector)
        self.mouse("mouseWheel", x, y, deltaX=0, deltaY=dy, modifiers=2 if ctrl else 0)
        # A turn of the wheel is handled with the next frame.
        self.evaluate("new Promise((done) => requestAnimationFrame(() => setTimeout(done, 50)))")

    def screenshot(self, selector):
        self.middle_of(selector)  # scrolls it into sight
        x, y, width, height = self.evaluate(
            f"(() => {{ const r = document.querySelector({json.dumps(selector)})"
            ".getBoundingClientRect();"
            " return [r.x + scrollX, r.y + scrollY, r.width, r.height]; })()")
        picture = self.call("Page.captureScreenshot", format="png", clip={
            "x": x, "y": y, "width": width, "height": height, "scale": 1})
        return shades_of(pixels_of_png(base64.b64decode(picture["data"])))

    def requests(self):
        addresses = [seen["params"]["request"]["url"] for seen in self.events
                     if seen.get("method") == "Network.requestWillBeSent"]
        return [address for address in addresses if address != self.page]

    def errors(self):
        found = []
        for seen in self.events:
            if seen.get("method") == "Runtime.exceptionThrown":
                found.append(seen["params"]["exceptionDetails"]["text"])
            elif seen.get("method") == "Log.entryAdded":
                entry = seen["params"]["entry"]
                if entry["level"] == "error":
                    found.append(entry["text"])
        return found

    def step(self, line):
        if not line.startswith("!"):
            return self.evaluate(line)
        name, *words = line[1:].split()
        if name == "key":
            return self.key(*words)
        if name == "click":
            return self.click(" ".join(words))
        if name == "drag":
            return self.drag(words[0], float(words[1]), float(words[2]))
        if name == "wheel":
            return self.wheel(words[0], float(words[1]), "ctrl" in words)
        if name == "screenshot":
            return self.screenshot(" ".join(words))
        if name in ("requests", "errors"):
            self.evaluate("0")  # so that events that are under way are seen
            return getattr(self, name)()
        raise RuntimeError(f"unknown step: {line}")


def main():
    program = find_browser()
    if not program:
        print("Chromium is missing", file=sys.stderr)
        return 3
    page, width, height, *modes = sys.argv[1:]
    signal.alarm(TIME_LIMIT)
    signal.signal(signal.SIGALRM, lambda *_: sys.exit(f"no result after {TIME_LIMIT} s"))
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        browser = Browser(program, profile)
        try:
            browser.open(page, int(width), int(height), "dark" in modes, "still" in modes)
            for line in sys.stdin.read().splitlines():
                print(json.dumps(browser.step(line)))
        finally:
            browser.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
