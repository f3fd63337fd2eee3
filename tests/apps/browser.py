"""A headless Chromium that tests steer through its DevTools protocol; standard library only."""

import base64
import json
import os
import re
import select
import shutil
import signal
import subprocess
import tempfile
import time

FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
         "--disable-component-update", "--disable-sync", "--enable-unsafe-swiftshader", "--disable-dev-shm-usage",
         "--window-size=1500,900", "--remote-debugging-pipe"]


# What Chromium's own drawing without a graphics card says of its speed.
SOFTWARE_RENDERER = re.compile(r"GL Driver Message \(OpenGL, Performance, .* GPU stall due to ReadPixels")


def find_chromium():
    """The program, or None where it isn't installed."""
    return shutil.which("chromium")


class Browser:
    """One page at a time. Remembers what the page wrote to its console, and the requests that it made."""

    def __init__(self, folder, *more_flags, timeout=60):
        self.timeout = timeout
        self.console = []
        self.requests = []
        self.next_id = 0
        self.buffer = b""
        # Chromium reads commands from descriptor 3 and writes answers to descriptor 4.
        command_read, self.command_write = os.pipe()
        self.answer_read, answer_write = os.pipe()
        self.profile = tempfile.mkdtemp(dir=folder)
        self.log = open(os.path.join(folder, "chromium.log"), "wb")
        arguments = [find_chromium(), *FLAGS, *more_flags, "--user-data-dir=" + self.profile, "about:blank"]
        script = f'exec "$@" 3<&{command_read} 4>&{answer_write}'
        self.process = subprocess.Popen(["bash", "-c", script, "bash", *arguments], stdin=subprocess.DEVNULL,
                                        stdout=self.log, stderr=self.log, start_new_session=True,
                                        pass_fds=(command_read, answer_write))
        os.close(command_read)
        os.close(answer_write)
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(domain + ".enable", session=self.session)

    def close(self):
        os.close(self.command_write)
        try:
            os.killpg(self.process.pid, signal.SIGKILL)  # its own session: this browser and nothing else
        except ProcessLookupError:
            pass
        self.process.wait()
        os.close(self.answer_read)
        self.log.close()
        shutil.rmtree(self.profile, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def call(self, method, session=None, **params):
        self.next_id += 1
        message = {"id": self.next_id, "method": method, "params": params}
        if session:
            message["sessionId"] = session
        os.write(self.command_write, json.dumps(message).encode() + b"\0")
        deadline = time.monotonic() + self.timeout
        while True:
            answer = self.read(deadline)
            if answer.get("id") == self.next_id:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
            self.note(answer)

    def read(self, deadline):
        while b"\0" not in self.buffer:
            ready, _, _ = select.select([self.answer_read], [], [], max(0.0, deadline - time.monotonic()))
            if not ready:
                raise TimeoutError("the browser doesn't answer")
            block = os.read(self.answer_read, 1 << 20)
            if not block:
                raise RuntimeError("the browser has ended")
            self.buffer += block
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def note(self, event):
        method, params = event.get("method"), event.get("params", {})
        if method == "Runtime.consoleAPICalled":
            values = [str(value.get("value", value.get("description"))) for value in params["args"]]
            self.console.append((params["type"], " ".join(values)))
        elif method == "Runtime.exceptionThrown":
            self.console.append(("exception", json.dumps(params["exceptionDetails"])))
        elif method == "Log.entryAdded" and not SOFTWARE_RENDERER.search(params["entry"]["text"]):
            self.console.append((params["entry"]["level"], params["entry"]["text"]))
        elif method == "Network.requestWillBeSent":
            self.requests.append(params["request"]["url"])

    def open(self, path):
        """Loads the page anew, and forgets what was noted of the one before."""
        self.navigate("about:blank")
        self.console, self.requests = [], []
        self.navigate("file://" + str(path))

    def navigate(self, url):
        self.call("Page.navigate", session=self.session, url=url)
        deadline = time.monotonic() + self.timeout
        while self.evaluate("document.readyState + ' ' + location.href") != "complete " + url:
            if time.monotonic() > deadline:
                raise TimeoutError(f"{url} doesn't load")
            time.sleep(0.05)

    def evaluate(self, expression):
        result = self.call("Runtime.evaluate", session=self.session, expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(json.dumps(result["exceptionDetails"]))
        return result["result"].get("value")

    def press(self, key):
        for kind in ("keyDown", "keyUp"):
            self.call("Input.dispatchKeyEvent", session=self.session, type=kind, key=key,
                      text=key if len(key) == 1 and kind == "keyDown" else "")

    def mouse(self, kind, x, y, **more):
        self.call("Input.dispatchMouseEvent", session=self.session, type=kind, x=x, y=y, **more)

    def screenshot(self, path):
        answer = self.call("Page.captureScreenshot", session=self.session, format="png")
        with open(path, "wb") as file:
            file.write(base64.b64decode(answer["data"]))
