"""Drives a headless Chromium through its debugging pipe, with nothing but the standard library."""

import base64
import fcntl
import json
import os
import pathlib
import queue
import subprocess
import tempfile
import threading

WAIT = 120  # seconds; what takes longer has failed

KEYS = {
    "Enter": ("Enter", 13, "\r"), "Tab": ("Tab", 9, ""), "Escape": ("Escape", 27, ""),
    "Space": ("Space", 32, " "), "Home": ("Home", 36, ""), "End": ("End", 35, ""),
    "ArrowLeft": ("ArrowLeft", 37, ""), "ArrowUp": ("ArrowUp", 38, ""),
    "ArrowRight": ("ArrowRight", 39, ""), "ArrowDown": ("ArrowDown", 40, ""),
    "PageDown": ("PageDown", 34, ""), "PageUp": ("PageUp", 33, ""),
}


class Browser:
    """One run of the browser with one page in it."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.messages = queue.Queue()
        self.events = []
        self.last = 0
        self.session = None
        self._start()
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        attached = self.call("Target.attachToTarget", targetId=target, flatten=True)
        self.session = attached["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")

    def _start(self):
        to_browser, self.write_end = os.pipe()
        self.read_end, from_browser = os.pipe()

        def take_places():  # the browser reads from 3 and writes to 4
            high = [fcntl.fcntl(each, fcntl.F_DUPFD, 50) for each in (to_browser, from_browser)]
            os.dup2(high[0], 3)
            os.dup2(high[1], 4)

        self.process = subprocess.Popen(
            ["chromium", "--headless=new", "--no-sandbox", "--remote-debugging-pipe",
             "--user-data-dir=" + self.folder.name, "--no-first-run", "--disable-gpu",
             "--disable-dev-shm-usage", "--disable-extensions", "--disable-background-networking",
             "--disable-component-update", "--hide-scrollbars", "--force-color-profile=srgb"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            close_fds=False, preexec_fn=take_places)
        os.close(to_browser)
        os.close(from_browser)
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        rest = b""
        while piece := os.read(self.read_end, 1 << 16):
            *whole, rest = (rest + piece).split(b"\0")
            for message in whole:
                self.messages.put(json.loads(message))
        self.messages.put(None)

    def _take(self):
        message = self.messages.get(timeout=WAIT)
        if message is None:
            raise RuntimeError("the browser has ended")
        if "method" in message:
            self.events.append(message)
        return message

    def call(self, method, **params):
        """The result of a command of the debugging protocol."""
        self.last += 1
        message = {"id": self.last, "method": method, "params": params}
        if self.session:
            message["sessionId"] = self.session
        text = json.dumps(message).encode() + b"\0"
        while text:
            text = text[os.write(self.write_end, text):]
        while True:
            answer = self._take()
            if answer.get("id") == self.last:
                if "error" in answer:
                    raise RuntimeError(method + ": " + answer["error"]["message"])
                return answer["result"]

    def open(self, page):
        """Opens a file and waits until its script has run."""
        self.events.clear()
        self.call("Page.navigate", url=pathlib.Path(page).absolute().as_uri())
        while not any(event["method"] == "Page.loadEventFired" for event in self.events):
            self._take()
        if self.run("document.body.dataset.ready") != "true":
            raise RuntimeError("the script of the page has not run: " + str(self.complaints()))

    def run(self, script):
        """The value of an expression in the page; waits for a promise."""
        result = self.call("Runtime.evaluate", expression=script, returnByValue=True,
                           awaitPromise=True)
        if "exceptionDetails" in result:
            raise RuntimeError(script + ": " + json.dumps(result["exceptionDetails"])[:500])
        return result["result"].get("value")

    def settle(self):
        """Waits until what was asked for has been drawn, a search that waits for more keys too."""
        self.run("new Promise(done => setTimeout(() => requestAnimationFrame("
                 "() => requestAnimationFrame(done)), 150))")

    def press(self, *keys, shift=False, alt=False):
        for key in keys:
            code, number, text = KEYS.get(key, (key, ord(key[0].upper()), key))
            if key == "Space":
                key = " "
            common = {"key": key, "code": code, "windowsVirtualKeyCode": number,
                      "modifiers": (8 if shift else 0) + (1 if alt else 0)}
            self.call("Input.dispatchKeyEvent", type="keyDown", text=text, **common)
            self.call("Input.dispatchKeyEvent", type="keyUp", **common)
        self.settle()

    def click(self, selector):
        """Clicks with the mouse on the middle of the first element that is meant."""
        x, y = self.run("(() => { const e = document.querySelector(%s); e.scrollIntoView({block: "
                        "'center'}); const r = e.getBoundingClientRect(); return [r.x + r.width / "
                        "2, r.y + r.height / 2]; })()" % json.dumps(selector))
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)
        self.settle()

    def resize(self, width, height, is_phone=False):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=is_phone)
        self.settle()

    def use_scheme(self, scheme):
        self.call("Emulation.setEmulatedMedia",
                  features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.settle()

    def complaints(self):
        """What stands in the console of the page since it was opened."""
        self.run("0")
        found = []
        for event in self.events:
            params = event["params"]
            if event["method"] == "Runtime.consoleAPICalled":
                found.append(str([each.get("value") for each in params["args"]]))
            elif event["method"] == "Runtime.exceptionThrown":
                found.append(json.dumps(params["exceptionDetails"])[:500])
            elif event["method"] == "Log.entryAdded":
                found.append(params["entry"]["text"])
        return found

    def requests(self):
        """The addresses that the page has asked for since it was opened."""
        return [event["params"]["request"]["url"] for event in self.events
                if event["method"] == "Network.requestWillBeSent"]

    def screenshot(self, file):
        image = self.call("Page.captureScreenshot", format="png")["data"]
        pathlib.Path(file).write_bytes(base64.b64decode(image))

    def close(self):
        try:
            self.session = None
            self.call("Browser.close")
            self.process.wait(20)
        except Exception:  # it is to end in any case
            self.process.kill()
            self.process.wait()
        self.folder.cleanup()
