# SPDX-FileCopyrightText: Aerolith developers
# Controls a Chromium without a window by the DevTools protocol over a pipe. Its mouse and keyboard
# events are real. https://chromedevtools.github.io/devtools-protocol/
import base64
import json
import os
import pathlib
import shutil
import subprocess
import tempfile

KEYS = {"Enter": 13, "Escape": 27, "Tab": 9, "ArrowLeft": 37, "ArrowRight": 39}


def is_there():
    return shutil.which("chromium") is not None


class Browser:
    def __init__(self):
        self.home = tempfile.mkdtemp(prefix="aerolith-browser-")
        theirs, self.to = os.pipe()
        self.of, answers = os.pipe()
        self.process = subprocess.Popen(
            ["bash", "-c", f'exec "$@" 3<&{theirs} 4>&{answers}', "bash", "chromium", "--headless",
             "--no-sandbox", "--disable-gpu", "--remote-debugging-pipe",
             "--user-data-dir=" + self.home, "about:blank"],
            pass_fds=(theirs, answers), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(theirs)
        os.close(answers)
        self.rest = b""
        self.number = 0
        self.session = {}
        self.events = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        attached = self.call("Target.attachToTarget", targetId=target, flatten=True)
        self.session = {"sessionId": attached["sessionId"]}
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable")

    def close(self):
        self.process.kill()
        self.process.wait()
        os.close(self.to)
        os.close(self.of)
        shutil.rmtree(self.home, ignore_errors=True)

    def read(self):
        while b"\0" not in self.rest:
            piece = os.read(self.of, 1 << 20)
            if not piece:
                raise EOFError("the browser is gone")
            self.rest += piece
        message, self.rest = self.rest.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, **parameters):
        self.number += 1
        call = {"id": self.number, "method": method, "params": parameters, **self.session}
        os.write(self.to, json.dumps(call).encode() + b"\0")
        while True:
            message = self.read()
            if message.get("id") == self.number:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message["result"]
            self.events.append(message)

    def seen(self, method):
        return [event["params"] for event in self.events if event.get("method") == method]

    def open(self, path, width=1400, height=900, script=True):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=False)
        self.call("Emulation.setScriptExecutionDisabled", value=not script)
        self.events = []
        self.call("Page.navigate", url=pathlib.Path(path).resolve().as_uri())
        while not self.seen("Page.loadEventFired"):
            self.events.append(self.read())

    def value(self, expression):
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in answer:
            raise RuntimeError(answer["exceptionDetails"]["exception"]["description"])
        return answer["result"].get("value")

    def click(self, selector):
        x, y = self.value(
            f"(() => {{ const e = document.querySelector({json.dumps(selector)});"
            "e.scrollIntoView({ block: 'center', inline: 'center' });"
            "const r = e.getBoundingClientRect(); return [r.x + r.width / 2, r.y + r.height / 2]; })()")
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)

    def press(self, key):
        text = {"text": "\r"} if key == "Enter" else {}
        for kind, more in (("keyDown", text), ("keyUp", {})):
            self.call("Input.dispatchKeyEvent", type=kind, key=key, code=key,
                      windowsVirtualKeyCode=KEYS[key], **more)

    def write(self, text):
        self.call("Input.insertText", text=text)

    def picture(self):
        """A picture of the page, as PNG."""
        return base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"])

    def pdf(self):
        """The printed page, as PDF."""
        return base64.b64decode(self.call("Page.printToPDF", preferCSSPageSize=True,
                                          printBackground=True)["data"])
