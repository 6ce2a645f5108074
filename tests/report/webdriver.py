"""A browser without a window, driven over the WebDriver protocol by the standard library alone."""
import base64
import http.client
import json
import shutil
import subprocess
import time

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class Browser:
    """Chromium through ChromeDriver; a context manager that ends both."""

    def __init__(self, width=1200, height=1000):
        driver = shutil.which("chromedriver")
        if driver is None:
            raise SystemExit("chromedriver is missing; install the package chromium-driver.")
        self._process = subprocess.Popen([driver, "--port=0"], stdout=subprocess.PIPE,
                                         stderr=subprocess.DEVNULL, text=True)
        self._session = None
        try:
            self._port = self._read_port()
            options = {"args": ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage",
                                "--hide-scrollbars", f"--window-size={width},{height}"]}
            answer = self._send("POST", "/session", {"capabilities": {"alwaysMatch": {
                "browserName": "chrome", "goog:chromeOptions": options,
                "goog:loggingPrefs": {"browser": "ALL"}}}})
            self._session = answer["sessionId"]
        except BaseException:
            self._process.kill()
            raise

    def _read_port(self):
        for line in self._process.stdout:
            if "started successfully on port" in line:
                return int(line.rsplit("port", 1)[1].strip(" .\n"))
        raise SystemExit("chromedriver did not start.")

    def _send(self, method, path, body=None):
        connection = http.client.HTTPConnection("127.0.0.1", self._port, timeout=120)
        connection.request(method, path, json.dumps(body or {}) if method == "POST" else None,
                           {"Content-Type": "application/json"})
        value = json.loads(connection.getresponse().read())["value"]
        connection.close()
        if isinstance(value, dict) and "error" in value:
            raise RuntimeError(f"{path}: {value['error']}: {value['message']}")
        return value

    def _call(self, method, path, body=None):
        return self._send(method, f"/session/{self._session}{path}", body)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self._call("DELETE", "")
        finally:
            self._process.terminate()
            self._process.wait()

    def open(self, address):
        self._call("POST", "/url", {"url": address})

    def run(self, script, *arguments):
        return self._call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def find(self, selector):
        return self._call("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def text(self, selector):
        return self._call("GET", f"/element/{self.find(selector)}/text")

    def attribute(self, selector, name):
        return self.run("return document.querySelector(arguments[0]).getAttribute(arguments[1])",
                        selector, name)

    def count(self, selector):
        return self.run("return document.querySelectorAll(arguments[0]).length", selector)

    def click(self, selector):
        self._call("POST", f"/element/{self.find(selector)}/click")

    def box(self, selector):
        """Left, top, width and height of an element that is scrolled into view."""
        return self.run("const e = document.querySelector(arguments[0]);"
                        "e.scrollIntoView({block: 'center'}); const b = e.getBoundingClientRect();"
                        "return [b.left, b.top, b.width, b.height]", selector)

    def point(self, selector, x, y=0.5):
        """Moves the pointer to a part (0..1) of an element's width and height."""
        self._act([self._move(self.box(selector), x, y)])

    def drag(self, selector, start, end, y=0.5):
        box = self.box(selector)
        middle = (start + end) / 2
        self._act([self._move(box, start, y), {"type": "pointerDown", "button": 0},
                   self._move(box, middle, y), self._move(box, end, y),
                   {"type": "pointerUp", "button": 0}])

    def double_click(self, selector):
        press = [{"type": "pointerDown", "button": 0}, {"type": "pointerUp", "button": 0}]
        self._act([self._move(self.box(selector), 0.5, 0.5)] + press + press)

    def wheel(self, selector, x, turns):
        """Turns the wheel over an element; away from the user is negative."""
        left, top, width, height = self.box(selector)
        step = {"type": "scroll", "x": round(left + x * width), "y": round(top + height / 2),
                "deltaX": 0, "deltaY": 100 if turns > 0 else -100, "duration": 0,
                "origin": "viewport"}
        self._call("POST", "/actions", {"actions": [
            {"type": "wheel", "id": "wheel", "actions": [step] * abs(turns)}]})

    def keys(self, selector, text):
        self._call("POST", f"/element/{self.find(selector)}/value", {"text": text})

    def complaints(self):
        """What the page wrote to the console as an error."""
        return [entry["message"] for entry in self._call("POST", "/se/log", {"type": "browser"})
                if entry["level"] == "SEVERE"]

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self._call("GET", "/screenshot")))

    def wait_for(self, script, seconds=20):
        end = time.monotonic() + seconds
        while not self.run(script):
            if time.monotonic() > end:
                raise AssertionError(f"never true: {script}")
            time.sleep(0.05)

    @staticmethod
    def _move(box, x, y):
        left, top, width, height = box
        return {"type": "pointerMove", "duration": 0, "origin": "viewport",
                "x": round(left + x * width), "y": round(top + y * height)}

    def _act(self, actions):
        self._call("POST", "/actions", {"actions": [
            {"type": "pointer", "id": "mouse", "parameters": {"pointerType": "mouse"},
             "actions": actions}]})
