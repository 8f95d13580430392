"""A small client of chromedriver: headless Chromium for the tests of pages."""

import base64
import json
import re
import subprocess
import tempfile
import time
import urllib.request

# WebGL in software, and nothing that asks the network by itself.
FLAGS = [
    "--headless", "--no-sandbox", "--disable-quic", "--no-first-run", "--disable-background-networking",
    "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage", "--use-gl=angle",
    "--use-angle=swiftshader", "--enable-unsafe-swiftshader",
]


class Browser:
    """Closed by `with`, with its driver and its profile."""

    def __init__(self, width, height, is_touch=False, is_dark=False):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.driver = subprocess.Popen(
            ["chromedriver", "--port=0"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.session = None
        try:
            self.url = f"http://127.0.0.1:{self._port()}/session"
            options = {"args": FLAGS + [f"--user-data-dir={self.profile.name}", f"--window-size={width},{height}"]}
            if is_touch:
                options["mobileEmulation"] = {
                    "deviceMetrics": {"width": width, "height": height, "pixelRatio": 2, "touch": True}}
            logs = {"browser": "ALL", "performance": "ALL"}
            capabilities = {"browserName": "chrome", "goog:chromeOptions": options, "goog:loggingPrefs": logs}
            answer = self._call("POST", "", {"capabilities": {"alwaysMatch": capabilities}})
            self.session = answer["sessionId"]
            if is_dark:
                features = [{"name": "prefers-color-scheme", "value": "dark"}]
                self.devtools("Emulation.setEmulatedMedia", {"features": features})
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *error):
        self.close()

    def close(self):
        try:
            if self.session:
                self._call("DELETE", "")
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.profile.cleanup()

    def _port(self):
        for line in self.driver.stdout:
            found = re.search(r"started successfully on port (\d+)", line)
            if found:
                return int(found.group(1))
        raise RuntimeError("chromedriver doesn't start")

    def _call(self, method, path, body=None):
        path = f"/{self.session}{path}" if self.session else path
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.url + path, data, {"Content-Type": "application/json"}, method=method)
        # The driver is on this machine, whatever proxy there is.
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        try:
            with opener.open(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(f"{method} {path}: {json.load(error)['value']['message']}") from error

    def devtools(self, command, parameters):
        return self._call("POST", "/goog/cdp/execute", {"cmd": command, "params": parameters})

    def open(self, url):
        self._call("POST", "/url", {"url": url})

    def run(self, script, *arguments):
        """The value that the body of a function in JavaScript returns."""
        return self._call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def wait(self, script, seconds=60):
        """Until the script returns something true."""
        end = time.monotonic() + seconds
        while not self.run(script):
            if time.monotonic() > end:
                raise AssertionError(f"after {seconds} seconds still not: {script}")
            time.sleep(0.1)

    def click(self, selector):
        """A click, or a tap, in the middle of an element, which must be visible."""
        element = self._call("POST", "/element", {"using": "css selector", "value": selector})
        self._call("POST", f"/element/{next(iter(element.values()))}/click", {})

    def act(self, kind, actions, pointer="mouse"):
        """A list of WebDriver's actions of a `pointer`, a `key` or a `wheel`."""
        source = {"type": kind, "id": kind, "actions": actions}
        if kind == "pointer":
            source["parameters"] = {"pointerType": pointer}
        self._call("POST", "/actions", {"actions": [source]})

    def press(self, key):
        self.act("key", [{"type": "keyDown", "value": key}, {"type": "keyUp", "value": key}])

    def screenshot(self, file):
        with open(file, "wb") as out:
            out.write(base64.b64decode(self._call("GET", "/screenshot")))

    def complaints(self):
        """What the page wrote to the console."""
        entries = self._call("POST", "/se/log", {"type": "browser"})
        return [entry["message"] for entry in entries]

    def requests(self, page):
        """The addresses of everything that a page requested since this was last called."""
        entries = self._call("POST", "/se/log", {"type": "performance"})
        events = [json.loads(entry["message"])["message"] for entry in entries]
        requests = [event["params"] for event in events if event["method"] == "Network.requestWillBeSent"]
        return [request["request"]["url"] for request in requests if request["documentURL"] == page]
