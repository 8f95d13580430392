"""Looks at pages of `zlmim view` in Chromium: zlmim's path, a folder to work in."""

import json
import math
import os
import pathlib
import re
import subprocess
import sys
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.actions.action_builder import ActionBuilder
from selenium.webdriver.common.actions.mouse_button import MouseButton
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

os.environ["no_proxy"] = "localhost,127.0.0.1"  # the driver is on this machine, whatever proxy there is

# WebGL in software, and nothing that asks the network by itself.
FLAGS = [
    "--headless", "--no-sandbox", "--disable-quic", "--no-first-run", "--disable-background-networking",
    "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage", "--use-gl=angle",
    "--use-angle=swiftshader", "--enable-unsafe-swiftshader",
]

# The pixels that objects cover, and a number that changes with the picture.
LOOK = """
    zlmim.stage.draw();
    const canvas = document.createElement('canvas');
    [canvas.width, canvas.height] = [240, 160];
    const context = canvas.getContext('2d');
    context.drawImage(zlmim.stage.canvas, 0, 0, canvas.width, canvas.height);
    const { data } = context.getImageData(0, 0, canvas.width, canvas.height);
    let covered = 0, sum = 0;
    for (let i = 0; i < data.length; i += 4) {
        covered += data[i + 3] > 220;
        sum = (sum * 31 + data[i] + 3 * data[i + 1] + 7 * data[i + 2]) % 1000000007;
    }
    return { covered, sum };
"""


def check(is_right, what):
    if not is_right:
        raise AssertionError(what)
    print("  ", what)


class Browser(webdriver.Chrome):
    """Chromium, closed by `with`."""

    run = webdriver.Chrome.execute_script

    def __init__(self, width, height, is_touch=False, is_dark=False):
        options = webdriver.ChromeOptions()
        for flag in [*FLAGS, f"--window-size={width},{height}"]:
            options.add_argument(flag)
        if is_touch:
            metrics = {"width": width, "height": height, "pixelRatio": 2, "touch": True}
            options.add_experimental_option("mobileEmulation", {"deviceMetrics": metrics})
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        super().__init__(service=Service("/usr/bin/chromedriver"), options=options)
        if is_dark:
            dark = {"name": "prefers-color-scheme", "value": "dark"}
            self.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [dark]})

    def wait(self, script):
        WebDriverWait(self, 60, 0.1).until(lambda _: self.run(script), script)

    def click(self, selector):
        """A click, or a tap, in the middle of an element, which must be visible."""
        self.find_element(By.CSS_SELECTOR, selector).click()

    def press(self, key):
        ActionChains(self).send_keys(key).perform()

    def drag(self, button, x, y, to_x, to_y):
        actions = ActionBuilder(self, duration=50)
        mouse = actions.pointer_action
        mouse.move_to_location(x, y).pointer_down(button).move_to_location(to_x, to_y).pointer_up(button)
        actions.perform()

    def turn_wheel(self, x, y, amount):
        actions = ActionBuilder(self)
        actions.wheel_action.scroll(x, y, 0, amount)
        actions.perform()

    def complaints(self):
        """What the page wrote to the console."""
        return [entry["message"] for entry in self.get_log("browser")]

    def requests(self, page):
        """The addresses of everything that a page requested since this was last called."""
        events = [json.loads(entry["message"])["message"] for entry in self.get_log("performance")]
        requests = [event["params"] for event in events if event["method"] == "Network.requestWillBeSent"]
        return [request["request"]["url"] for request in requests if request["documentURL"] == page]


class Page:
    """A page in a browser, loaded."""

    def __init__(self, browser, path):
        self.browser = browser
        self.url = path.as_uri()
        browser.get(self.url)
        browser.wait("return document.documentElement.dataset.ready")
        self.data = json.loads(browser.run("return document.getElementById('data').textContent"))

    def report(self):
        return self.browser.run("return zlmim.report()")

    def look(self):
        return self.browser.run(LOOK)

    def text(self, selector):
        return self.browser.run("return document.querySelector(arguments[0]).innerText", selector)

    def camera(self):
        """The camera's place and what it looks at, after a frame."""
        return self.browser.run("""
            const { camera, controls } = zlmim.stage;
            const places = () => [camera.position.toArray(), controls.target.toArray()];
            return new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(() => resolve(places()))));""")

    def camera_after(self, before, seconds=20):
        """The same, once it isn't as before."""
        end = time.monotonic() + seconds
        while (camera := self.camera()) == before and time.monotonic() < end:
            time.sleep(0.1)
        return camera

    def number_of(self, name):
        return next(i for i, node in enumerate(self.data["nodes"]) if node.get("kind") == "entry" and node["name"] == name)

    def box_of(self, name):
        return f".row[data-node='{self.number_of(name)}'] input"

    def check_is_whole(self):
        report = self.report()
        meshes = [self.data["meshes"][node["mesh"]] for node in self.data["nodes"] if node.get("kind") == "entry"]
        check(report["triangles"] == sum(chunk["count"] for mesh in meshes for chunk in mesh["chunks"]),
              f"all {report['triangles']} triangles are drawn")
        check(report["objects"] == sum(len(mesh["chunks"]) for mesh in meshes), "all chunks are drawn")
        check(report["drawCalls"] >= report["objects"], "the graphics library got them")
        check(self.look()["covered"] > 2000, "the canvas isn't blank")

    def check_hiding(self):
        before, picture = self.report(), self.look()
        self.browser.click(self.box_of("default"))
        after = self.report()
        check(after["triangles"] == before["triangles"] - 716 and self.look()["covered"] < picture["covered"],
              "a click on an entry hides it, but not what hangs on it")
        self.browser.click(self.box_of("default"))
        check(self.report()["triangles"] == before["triangles"] and self.look() == picture, "another shows it again")

    def check_animation(self):
        start = self.look()
        self.browser.click("#forward")
        check(abs(self.report()["time"] - 1 / 30) < 1e-6, "a step forward is one frame")
        self.browser.click("#back")
        check(self.report()["time"] == 0 and self.look() == start, "a step back too")
        self.browser.click("#play")
        self.browser.wait("return zlmim.report().time > 0.2")
        check(self.report()["isPlaying"], "the animation plays")
        self.browser.click("#play")
        check(not self.report()["isPlaying"] and self.look() != start, "it moved, and pauses")
        self.browser.run("zlmim.player.choose('rest')")
        check(self.look()["covered"] > 2000, "the rest pose is drawn")

    def check_is_quiet(self):
        check(self.report()["errors"] == [] and self.browser.complaints() == [], "the console is empty")
        requests = self.browser.requests(self.url)
        check(self.url in requests, "requests are seen")
        others = [url for url in requests if url != self.url and not url.startswith("blob:null/")]
        check(others == [], f"nothing else is requested: {others}")


def check_controls(page):
    browser = page.browser
    browser.run("zlmim.stage.controls.enableDamping = false")  # so that a movement ends with its cause
    # What happens, and whether the camera moves, its target, and the distance between them.
    for name, turn, changes in [
        ("a drag rotates", lambda: browser.drag(MouseButton.LEFT, 300, 300, 420, 330), (True, False, False)),
        ("a drag with the right button pans", lambda: browser.drag(MouseButton.RIGHT, 300, 300, 380, 340), (True, True, False)),
        ("the wheel zooms", lambda: browser.turn_wheel(300, 300, -240), (True, False, True)),
        ("an arrow key rotates", lambda: browser.press(Keys.LEFT), (True, False, False)),
        ("a key zooms", lambda: browser.press("-"), (True, False, True)),
        ("a number key changes the view", lambda: browser.press("3"), (True, True, True)),
    ]:
        before = page.camera()
        turn()
        after = page.camera_after(before)
        moves = [math.dist(*pair) > 1e-3 for pair in zip(before, after)]
        check((*moves, abs(math.dist(*before) - math.dist(*after)) > 1e-3) == changes, name)
    for key, name in {"w": "wireframe", "n": "normals", "g": "grid"}.items():
        before = page.look()
        browser.press(key)
        check(page.look() != before, f"a key toggles {name}")
        browser.press(key)
    browser.press("t")
    check(browser.run("return zlmim.model.meshes.every((mesh) => !mesh.material.map)"), "a key takes the textures away")
    browser.press("t")
    check(browser.run("return zlmim.model.meshes.some((mesh) => mesh.material.map)"), "and brings them back")
    browser.press("a")
    check(len(browser.run("return [...document.querySelectorAll('#labels button')].map((label) => label.textContent)")) == 7,
          "a key shows the attachment points with their names")
    browser.press("a")


def check_selection(page):
    browser = page.browser
    browser.drag(MouseButton.LEFT, 440, 330, 440, 330)
    check(re.search(r"mesh\s.*\.im", page.text("#details")) and browser.run("return document.querySelector('.chunk.selected') !== null"),
          "a click on the canvas shows an entry's and a chunk's data")
    check(browser.run("return document.querySelector('#parts .row.selected') !== null"), "and marks it in the list")
    browser.press("o")
    check(page.report()["objects"] < 13, "a key hides all other entries")
    browser.press("o")
    browser.press(Keys.ESCAPE)
    check(browser.run("return document.getElementById('details').hidden"), "Escape selects nothing")


def check_themes(page):
    dark = page.browser.run("return getComputedStyle(document.body).backgroundColor")
    page.browser.click("#theme")
    light = page.browser.run("return getComputedStyle(document.body).backgroundColor")
    check(dark != light, "a button changes the theme")


def save_picture(page, file):
    """The picture that the README shows: the right door, selected, while it opens."""
    page.browser.run("""
        document.activeElement.blur();
        zlmim.player.choose('all');
        zlmim.player.seek(0.7);
        zlmim.look('corner');
        zlmim.select(arguments[0], 4);
        zlmim.stage.draw();""", page.number_of("default"))
    page.browser.save_screenshot(str(file))


def make(zlmim, asset, page, status):
    result = subprocess.run([zlmim, "view", asset, "-o", page], capture_output=True, text=True)
    check(result.returncode == status, f"{page.name}: the exit status is {status} {result.stderr.strip()}")
    return page


def damage(folder):
    """A mesh that ends early, and a name that would be a script."""
    config = folder / "config.txt"
    config.write_text(config.read_text().replace("Covered wagon", "</script><script>zlmim=1</script><!--", 1))
    mesh = folder / "body.im"
    mesh.write_bytes(mesh.read_bytes()[:-200])


def main(zlmim, folder):
    folder = pathlib.Path(folder)
    subprocess.run([zlmim, "sample", folder / "sample"], check=True)
    wagon = folder / "sample/assets/wagon"
    whole = make(zlmim, wagon, folder / "whole.html", 0)
    damage(wagon)
    damaged = make(zlmim, wagon, folder / "damaged.html", 1)
    # An entry whose mesh isn't loaded, and a finding about another file.
    (wagon / "config.txt").write_text("mesh-table {\n default {\n  anim doors.kin\n }\n}\n")
    (wagon / "doors.kin").write_bytes((wagon / "doors.kin").read_bytes()[:100])
    empty = make(zlmim, wagon, folder / "empty.html", 1)

    print("A desktop:")
    with Browser(1280, 800, is_dark=True) as browser:
        page = Page(browser, whole)
        for look in (page.check_is_whole, page.check_hiding, page.check_animation):
            look()
        for look in (check_themes, check_selection, check_controls):
            look(page)
        page.check_is_quiet()
        save_picture(page, folder / "desktop.png")
        print("A damaged asset:")
        page = Page(browser, damaged)
        check(browser.run("return document.title").startswith("</script>"), "names are text")
        check("body.im" in page.text("#findings") and page.look()["covered"] > 500, "the rest is drawn, and what is wrong listed")
        page.check_is_quiet()
        page = Page(browser, empty)
        check("nothing to draw" in page.text("#message") and "doors.kin" in page.text("#findings"),
              "a page without anything to draw says so, and why")
        page.check_is_quiet()
    print("A phone:")
    with Browser(390, 780, is_touch=True) as browser:
        page = Page(browser, whole)
        check(browser.run("return document.documentElement.scrollWidth <= innerWidth"), "nothing is wider than the screen")
        for look in (page.check_is_whole, page.check_hiding, page.check_animation, page.check_is_quiet):
            look()
        browser.save_screenshot(str(folder / "phone.png"))


main(*sys.argv[1:])
