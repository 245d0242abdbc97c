#!/usr/bin/env python3
"""Drives LxUIKitGallery end to end under a virtual X server with real mouse and keys.

The gallery runs on Qt's xcb platform inside its own Xvfb (a free display picked with -displayfd),
and xdotool moves the pointer, clicks, turns the wheel and types. The gallery's --trace file says
what happened (pages painted, windows and their widgets' places, clicks, the tool windows' states);
every step waits for the facts it caused, with a timeout, and fails naming the step.

Steps:
  1. every page opens from the page list;
  2. Ctrl+F9 opens the developer tools window and a word typed into its filter narrows the lines;
  3. Ctrl+F10 starts picking, and a click selects a button without the button being clicked;
  4. the image preview opens, zooms with the wheel and steps with the arrow keys;
  5. under an application-modal dialog the tool window still takes clicks and keys.
A screenshot of the screen after each step is kept in the artifacts folder and must not be blank.

  gallery_e2e.py --gallery build/apps/gallery/LxUIKitGallery --artifacts build/e2e-artifacts

Needs Xvfb, xdotool and ImageMagick's import (scripts/common.sh installs them). Standard library only.
"""

import argparse
import ctypes
import os
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import zlib

SCREEN = (2560, 1440)
WAIT_S = 20.0  # any single fact; generous for a debug build on a busy machine
PAGE_WAIT_S = 40.0  # a page made for the first time (the preview page draws its large picture)
VIEWER_TITLE = "超级开发者工具（快捷键 Ctrl+F9）"
TOOLS_X = 1240  # tool windows are moved right of the gallery (1200 wide at 0,0)
SELECTION_FRAME = (0xF0, 0x3C, 0x3C)  # the inspector's frame around the selected widget


class StepFailed(Exception):
    pass


def die_with_parent():
    """In a child before exec: SIGTERM when this script dies, even by SIGKILL (a CTest timeout)."""
    try:
        ctypes.CDLL(None, use_errno=True).prctl(1, signal.SIGTERM)  # PR_SET_PDEATHSIG
    except (OSError, AttributeError):
        pass


# --------------------------------------------------------------------------------------------
# The trace file


# key=value, the value bare or quoted with \" \\ \n escapes; a bare word (spy "selected") has no value.
FIELD = re.compile(r'(\w+)(?:=("(?:[^"\\]|\\.)*"|\S*))?')


def unquote(v):
    if not v.startswith('"'):
        return v
    out, i, body = [], 0, v[1:-1]
    while i < len(body):
        c = body[i]
        if c == "\\" and i + 1 < len(body):
            i += 1
            c = {"n": "\n", "r": "\r"}.get(body[i], body[i])
        out.append(c)
        i += 1
    return "".join(out)


class Record(dict):
    """One trace line: its kind and fields; a window line also holds its map (widget and item lines)."""

    def __init__(self, kind, fields, index):
        super().__init__(fields)
        self.kind = kind
        self.index = index
        self.children = []

    def rect(self):
        return int(self["x"]), int(self["y"]), int(self["w"]), int(self["h"])

    def center(self):
        x, y, w, h = self.rect()
        return x + w // 2, y + h // 2

    def complete(self):
        return self.kind != "window" or self.get("state") != "shown" or len(self.children) >= int(self["lines"])

    def __repr__(self):
        return "%s %s" % (self.kind, dict.__repr__(self))


class Trace:
    def __init__(self, path, process):
        self.path = path
        self.process = process
        self.offset = 0
        self.pending = b""
        self.records = []
        self.open_map = None

    def poll(self):
        try:
            with open(self.path, "rb") as f:
                f.seek(self.offset)
                data = f.read()
        except FileNotFoundError:
            return
        self.offset += len(data)
        data = self.pending + data
        lines = data.split(b"\n")
        self.pending = lines.pop()
        for raw in lines:
            line = raw.decode("utf-8", "replace")
            kind, _, rest = line.partition(" ")
            rec = Record(kind, {k: unquote(v) for k, v in FIELD.findall(rest)}, len(self.records))
            if kind in ("widget", "item") and self.open_map is not None:
                self.open_map.children.append(rec)
                continue
            self.open_map = rec if kind == "window" and rec.get("state") == "shown" else None
            self.records.append(rec)

    def mark(self):
        self.poll()
        return len(self.records)

    def find(self, pred, since=0):
        self.poll()
        for rec in self.records[since:]:
            if rec.complete() and pred(rec):
                return rec
        return None

    def find_last(self, pred, since=0):
        self.poll()
        for rec in reversed(self.records[since:]):
            if rec.complete() and pred(rec):
                return rec
        return None

    def wait(self, what, pred, since=0, timeout=WAIT_S):
        deadline = time.monotonic() + timeout
        while True:
            rec = self.find(pred, since)
            if rec is not None:
                return rec
            if self.process.poll() is not None:
                raise StepFailed("%s: the gallery exited (code %s) before it happened" % (what, self.process.returncode))
            if time.monotonic() > deadline:
                raise StepFailed("%s: not seen within %.0f s" % (what, timeout))
            time.sleep(0.05)


def is_(kind, **want):
    return lambda r: r.kind == kind and all(r.get(k) == v for k, v in want.items())


def widget(window_rec, what, **want):
    for child in window_rec.children:
        if child.kind == "widget" and all(child.get(k) == v for k, v in want.items()):
            return child
    raise StepFailed("%s: no widget %s in the map of %s" % (what, want, window_rec.get("name")))


# --------------------------------------------------------------------------------------------
# The screen


class Screen:
    def __init__(self, env, artifacts):
        self.env = env
        self.artifacts = artifacts

    def run(self, *args, timeout=15):
        try:
            r = subprocess.run(args, env=self.env, capture_output=True, text=True, timeout=timeout)
        except subprocess.TimeoutExpired:
            raise StepFailed("%s did not finish within %d s" % (" ".join(args), timeout))
        if r.returncode != 0:
            raise StepFailed("%s failed: %s" % (" ".join(args), r.stderr.strip()))
        return r.stdout

    def click(self, x, y, button=1, repeat=1):
        self.move_mouse(x, y)
        self.run("xdotool", "click", "--repeat", str(repeat), "--delay", "80", str(button))

    def move_mouse(self, x, y):
        # Not "mousemove --sync": it waits for a motion that never comes when the pointer is there already.
        self.run("xdotool", "mousemove", str(x), str(y))
        deadline = time.monotonic() + 5
        while True:
            at = dict(f.split(":") for f in self.run("xdotool", "getmouselocation").split() if ":" in f)
            if (int(at["x"]), int(at["y"])) == (x, y):
                return
            if time.monotonic() > deadline:
                raise StepFailed("the pointer did not reach %d,%d (it is at %s,%s)" % (x, y, at["x"], at["y"]))
            time.sleep(0.02)

    def focus(self, wid):
        # Polled rather than "--sync", which can wait for good on a window that has the focus already.
        self.run("xdotool", "windowfocus", str(wid))
        deadline = time.monotonic() + 5
        while True:
            try:
                if self.run("xdotool", "getwindowfocus").strip() == str(wid):
                    return
            except StepFailed:
                pass  # no window has the focus yet
            if time.monotonic() > deadline:
                raise StepFailed("window %s did not get the keyboard focus" % wid)
            time.sleep(0.02)

    def key(self, *keys):
        self.run("xdotool", "key", "--delay", "60", *keys)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "40", text)

    def move_window(self, wid, x, y):
        self.run("xdotool", "windowmove", str(wid), str(x), str(y))

    def capture(self):
        """The whole screen as (width, height, RGB bytes)."""
        try:
            data = subprocess.run(["import", "-window", "root", "-depth", "8", "ppm:-"], env=self.env, capture_output=True,
                                  timeout=30, check=True).stdout
        except (subprocess.SubprocessError, OSError) as e:
            raise StepFailed("screenshot failed: %s" % e)
        tokens, pos = [], 0
        while len(tokens) < 4:  # magic, width, height, maximum, comments skipped
            while data[pos:pos + 1].isspace():
                pos += 1
            if data[pos:pos + 1] == b"#":
                pos = data.index(b"\n", pos)
                continue
            end = pos
            while not data[end:end + 1].isspace():
                end += 1
            tokens.append(data[pos:end])
            pos = end
        if tokens[0] != b"P6" or tokens[3] != b"255":
            raise StepFailed("screenshot: unexpected picture format %r" % tokens)
        w, h = int(tokens[1]), int(tokens[2])
        return w, h, data[pos + 1:pos + 1 + w * h * 3]

    def screenshot(self, name, areas):
        """Saves the screen as <artifacts>/<name>.png; fails when the screen or an area is one colour."""
        w, h, rgb = self.capture()
        path = os.path.join(self.artifacts, name + ".png")
        write_png(path, w, h, rgb)
        for label, (ax, ay, aw, ah) in [("screen", (0, 0, w, h))] + list(areas.items()):
            colours = count_colours(rgb, w, max(0, ax), max(0, ay), min(aw, w - ax), min(ah, h - ay))
            if colours < 2:
                raise StepFailed("screenshot %s: the %s area is a single colour (%s)" % (path, label, (ax, ay, aw, ah)))
        return Picture(path, w, rgb)


class Picture:
    def __init__(self, path, width, rgb):
        self.path, self.width, self.rgb = path, width, rgb

    def has_colour(self, area, colour):
        x, y, w, h = area
        want = bytes(colour)
        for row in range(max(0, y), y + h):
            start = (row * self.width + max(0, x)) * 3
            line = self.rgb[start:start + w * 3]
            at = line.find(want)
            while at >= 0:
                if at % 3 == 0:
                    return True
                at = line.find(want, at + 1)
        return False


def count_colours(rgb, width, x, y, w, h, limit=64):
    """Distinct colours in a rectangle, sampled every other pixel, counted up to limit."""
    seen = set()
    for row in range(y, y + h, 2):
        start = (row * width + x) * 3
        line = rgb[start:start + w * 3]
        for i in range(0, len(line), 6):
            seen.add(line[i:i + 3])
        if len(seen) >= limit:
            break
    return len(seen)


def write_png(path, w, h, rgb):
    stride = w * 3
    raw = b"".join(b"\x00" + rgb[y * stride:(y + 1) * stride] for y in range(h))

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body) & 0xFFFFFFFF)

    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n")
        f.write(chunk(b"IHDR", struct.pack(">IIBBBBB", w, h, 8, 2, 0, 0, 0)))
        f.write(chunk(b"IDAT", zlib.compress(raw, 3)))
        f.write(chunk(b"IEND", b""))


# --------------------------------------------------------------------------------------------
# The run


class Run:
    def __init__(self, args):
        self.args = args
        self.xvfb = None
        self.gallery = None
        self.tmp = tempfile.mkdtemp(prefix="lx-e2e-")
        os.makedirs(args.artifacts, exist_ok=True)
        for old in os.listdir(args.artifacts):
            if old.endswith((".png", ".trace", ".log")):
                os.remove(os.path.join(args.artifacts, old))
        self.trace_path = os.path.join(args.artifacts, "gallery.trace")

    # -- processes

    def start_xvfb(self):
        read_fd, write_fd = os.pipe()
        self.xvfb = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_fd), "-screen", "0", "%dx%dx24" % SCREEN, "-nolisten", "tcp"],
            pass_fds=(write_fd,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=die_with_parent)
        os.close(write_fd)
        number, deadline = b"", time.monotonic() + WAIT_S
        os.set_blocking(read_fd, False)
        while not number.endswith(b"\n"):
            if time.monotonic() > deadline or self.xvfb.poll() is not None:
                os.close(read_fd)
                raise StepFailed("start: Xvfb did not report a display")
            try:
                chunk = os.read(read_fd, 16)
                if not chunk:
                    time.sleep(0.05)
                number += chunk
            except BlockingIOError:
                time.sleep(0.05)
        os.close(read_fd)
        return ":" + number.decode().strip()

    def start(self):
        display = self.start_xvfb()
        env = {k: v for k, v in os.environ.items() if not k.startswith(("QT_", "WAYLAND"))}
        runtime = os.path.join(self.tmp, "runtime")
        os.makedirs(runtime, mode=0o700)
        env.update(DISPLAY=display, QT_QPA_PLATFORM="xcb", LX_PRODUCT_ROOT=os.path.join(self.tmp, "product"),
                   XDG_RUNTIME_DIR=runtime)
        self.env = env
        self.screen = Screen(env, self.args.artifacts)
        listing = subprocess.run([self.args.gallery, "--list-pages", "--lang", "en"], env=env, capture_output=True,
                                 text=True, timeout=60)
        if listing.returncode != 0:
            raise StepFailed("start: --list-pages failed: %s" % listing.stderr.strip())
        self.pages = [line.split("\t") for line in listing.stdout.splitlines() if line.strip()]
        if not self.pages:
            raise StepFailed("start: --list-pages listed no page")
        self.log = open(os.path.join(self.args.artifacts, "gallery.log"), "w")
        self.gallery = subprocess.Popen([self.args.gallery, "--lang", "en", "--trace", self.trace_path], env=env,
                                        stdout=self.log, stderr=subprocess.STDOUT, preexec_fn=die_with_parent)
        self.trace = Trace(self.trace_path, self.gallery)
        self.main = self.trace.wait("start: the gallery window is shown",
                                    is_("window", state="shown", name="GalleryWindow"), timeout=60)
        self.trace.wait("start: the first page is painted", is_("page", name=self.pages[0][0], state="shown"))

    def stop(self):
        for proc in (self.gallery, self.xvfb):
            if proc is None or proc.poll() is not None:
                continue
            proc.terminate()
            try:
                proc.wait(timeout=5)
            except subprocess.TimeoutExpired:
                proc.kill()
                proc.wait(timeout=5)
        if getattr(self, "log", None):
            self.log.close()
        shutil.rmtree(self.tmp, ignore_errors=True)

    # -- helpers

    def latest_map(self, what, since=0, **want):
        return self.trace.wait(what, is_("window", state="shown", **want), since)

    def current_map(self, **want):
        rec = self.trace.find_last(is_("window", state="shown", **want))
        if rec is None:
            raise StepFailed("no map of the window %s" % want)
        return rec

    def open_page(self, step, name):
        rows = {r["text"]: r for r in self.current_map(name="GalleryWindow").children
                if r.kind == "item" and r.get("view") == "GalleryPageList"}
        title = dict(self.pages)[name]
        if title not in rows:
            raise StepFailed("%s: the page list shows no row \"%s\" (rows: %s)" % (step, title, sorted(rows)))
        since = self.trace.mark()
        self.screen.click(*rows[title].center())
        self.trace.wait("%s: page \"%s\" is painted after a click on its row" % (step, name),
                        is_("page", name=name, state="shown"), since, timeout=PAGE_WAIT_S)
        # The map written once the page is up holds the page's widgets.
        return self.latest_map("%s: the gallery window's map after opening \"%s\"" % (step, name), since,
                               name="GalleryWindow")

    def place_tool_window(self, step, rec, x, y):
        """Moves a tool window off the gallery and returns its map at the new place."""
        since = self.trace.mark()
        self.screen.move_window(rec["wid"], x, y)
        return self.trace.wait("%s: %s moved to %d,%d" % (step, rec["class"], x, y),
                               lambda r: (r.kind == "window" and r.get("state") == "shown" and r.get("wid") == rec["wid"]
                                          and r["x"] == str(x) and r["y"] == str(y)), since)

    def viewer_state(self, since=0):
        return self.trace.find_last(lambda r: r.kind == "viewer" and r.get("visible") == "1", since)

    # -- steps

    def step_pages(self):
        step = "step 1 (every page opens)"
        rows = [r for r in self.main.children if r.kind == "item" and r.get("view") == "GalleryPageList"]
        if [r["text"] for r in rows] != [title for _, title in self.pages]:
            raise StepFailed("%s: the page list %s differs from --list-pages %s"
                             % (step, [r["text"] for r in rows], [t for _, t in self.pages]))
        # The first page is already open: it is opened again last, after leaving it.
        for name, _ in self.pages[1:] + self.pages[:1]:
            gallery = self.open_page(step, name)
        page = widget(gallery, step, name="GalleryPage_" + self.pages[0][0])
        self.screen.screenshot("1-pages", {"page": page.rect()})

    def step_viewer(self):
        step = "step 2 (Ctrl+F9 log viewer and its filter)"
        gallery = self.open_page(step, "devtools")
        self.screen.focus(self.main["wid"])
        since = self.trace.mark()
        self.screen.key("ctrl+F9")
        viewer = self.trace.wait("%s: the developer tools window is shown after Ctrl+F9" % step,
                                 is_("window", state="shown", **{"class": "CLogViewerWnd"}), since)
        if viewer["title"] != VIEWER_TITLE:
            raise StepFailed("%s: the window's title is \"%s\"" % (step, viewer["title"]))
        # xdotool reads the name as an extended regular expression.
        pattern = "^" + re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", VIEWER_TITLE) + "$"
        found = self.screen.run("xdotool", "search", "--onlyvisible", "--name", pattern).split()
        if viewer["wid"] not in found:
            raise StepFailed("%s: the X server has no visible window named \"%s\"" % (step, VIEWER_TITLE))
        viewer = self.place_tool_window(step, viewer, TOOLS_X, 0)

        # Known lines: the page's demo logs one record of each level (and puts the viewer over the gallery).
        since = self.trace.mark()
        self.screen.click(*widget(gallery, step, name="GalleryDemo").center())
        self.trace.wait("%s: the Demo button is clicked" % step, is_("button", name="GalleryDemo"), since)
        before = self.trace.wait("%s: the demo's lines reach the viewer" % step,
                                 lambda r: r.kind == "viewer" and r.get("visible") == "1" and int(r["lines"]) >= 8,
                                 since)
        viewer = self.place_tool_window(step, self.current_map(**{"class": "CLogViewerWnd"}), TOOLS_X, 0)
        lines_before = int(self.viewer_state()["lines"])

        combo = widget(viewer, step, **{"class": "QComboBox"})
        since = self.trace.mark()
        self.screen.click(*combo.center())
        self.screen.type("rejected")
        after = self.trace.wait("%s: the filter reads \"rejected\"" % step,
                                is_("viewer", visible="1", filter="rejected"), since)
        if not 0 < int(after["lines"]) < lines_before:
            raise StepFailed("%s: the filter shows %s lines of %d (expected fewer, and at least the demo's "
                             "\"rejected\" line)" % (step, after["lines"], lines_before))
        self.screen.screenshot("2-log-viewer", {"viewer": viewer.rect()})
        self.filtered = (int(before["lines"]), int(after["lines"]))

    def step_spy(self):
        step = "step 3 (Ctrl+F10 picks without clicking)"
        gallery = self.open_page(step, "inspector")
        button = widget(gallery, step, name="PlaceOrderButton")
        since = self.trace.mark()
        self.screen.click(*button.center())
        self.trace.wait("%s: a plain click clicks the button" % step,
                        is_("button", name="PlaceOrderButton", count="1"), since)

        # The pointer stays on the button: picking moves it away and back, then the hover lands there.
        self.screen.focus(self.main["wid"])
        since = self.trace.mark()
        self.screen.key("ctrl+F10")
        self.trace.wait("%s: Ctrl+F10 starts picking" % step, is_("spy", picking="on"), since)
        self.trace.wait("%s: the button is hovered while picking" % step,
                        lambda r: r.kind == "spy" and "hovered" in r and r.get("name") == "PlaceOrderButton", since)
        picked_at = self.trace.mark()
        self.screen.click(*button.center())
        self.trace.wait("%s: the inspector selects the button" % step,
                        lambda r: r.kind == "spy" and "selected" in r and r.get("name") == "PlaceOrderButton"
                        and r.get("class") == "QPushButton", picked_at)
        self.trace.wait("%s: picking ends with the pick" % step, is_("spy", picking="off"), picked_at)
        spy = self.trace.wait("%s: the inspector window comes back" % step,
                              is_("window", state="shown", **{"class": "CSpyToolWnd"}), picked_at)
        spy = self.place_tool_window(step, spy, TOOLS_X, 760)

        # A click after picking is a click again: the count goes from 1 to 2, so the pick never got there.
        since = self.trace.mark()
        leaked = self.trace.find(is_("button", name="PlaceOrderButton"), picked_at)
        if leaked is not None:
            raise StepFailed("%s: the picking click reached the button (%r)" % (step, leaked))
        self.screen.click(*button.center())
        clicked = self.trace.wait("%s: a click after picking reaches the button" % step,
                                  is_("button", name="PlaceOrderButton"), since)
        if clicked["count"] != "2":
            raise StepFailed("%s: the button counts %s clicks, expected 2" % (step, clicked["count"]))
        shot = self.screen.screenshot("3-inspector", {"inspector": spy.rect(), "button": button.rect()})
        if not shot.has_colour(button.rect(), SELECTION_FRAME):
            raise StepFailed("%s: no selection frame around the picked button in %s" % (step, shot.path))
        self.picked_button = button

    def step_preview(self):
        step = "step 4 (image preview: wheel zoom, arrow keys)"
        gallery = self.open_page(step, "preview")
        since = self.trace.mark()
        self.screen.click(*widget(gallery, step, name="PreviewOpen").center())
        first = self.trace.wait("%s: the preview shows the first picture, loaded" % step,
                                is_("preview", visible="1", index="0", status="Status_Loaded"), since)
        self.trace.wait("%s: the preview window is mapped" % step,
                        is_("window", state="shown", **{"class": "CLxImagePreviewWnd"}), since)
        wnd = self.current_map(**{"class": "CLxImagePreviewWnd"})
        content = widget(wnd, step, **{"class": "CLxImagePreviewContentWidget"})
        count = int(first["count"])
        if count < 3:
            raise StepFailed("%s: the preview holds %d pictures" % (step, count))
        scale = float(self.trace.find_last(is_("preview", visible="1"))["scale"])

        self.screen.move_mouse(*content.center())
        for button, expected, what in ((4, scale + 0.1, "up"), (5, scale, "down"), (5, scale - 0.1, "down")):
            since = self.trace.mark()
            self.screen.click(*content.center(), button=button)
            self.trace.wait("%s: a wheel turn %s zooms to %.2f" % (step, what, expected),
                            lambda r: r.kind == "preview" and r.get("visible") == "1"
                            and abs(float(r["scale"]) - expected) < 0.001, since)

        self.screen.focus(wnd["wid"])
        for key, index in (("Right", 1), ("Right", 2), ("Left", 1)):
            since = self.trace.mark()
            self.screen.key(key)
            self.trace.wait("%s: %s steps to picture %d" % (step, key, index),
                            is_("preview", visible="1", index=str(index)), since)
        shot = self.screen.screenshot("4-preview", {"preview": wnd.rect()})
        # The button picked in step 3 is on a page now hidden: its selection frame went with it.
        if shot.has_colour(self.picked_button.rect(), SELECTION_FRAME):
            raise StepFailed("%s: the selection frame of the hidden inspector page still shows in %s"
                             % (step, shot.path))
        since = self.trace.mark()
        self.screen.key("Escape")
        self.trace.wait("%s: Escape closes the preview" % step, is_("preview", visible="0"), since)

    def step_modal(self):
        step = "step 5 (tool window under an application-modal dialog)"
        gallery = self.open_page(step, "devtools")
        since = self.trace.mark()
        self.screen.click(*widget(gallery, step, name="DevToolsModal").center())
        dialog = self.trace.wait("%s: the application-modal dialog is shown" % step,
                                 is_("window", state="shown", modal="application"), since)
        modal_at = self.trace.mark()

        # The gallery itself is blocked: its Demo button must not take this click.
        self.screen.click(*widget(gallery, step, name="GalleryDemo").center())

        viewer = self.current_map(**{"class": "CLogViewerWnd"})
        state = self.viewer_state()
        combo = widget(viewer, step, **{"class": "QComboBox"})
        since = self.trace.mark()
        self.screen.click(*combo.center())
        self.screen.key("ctrl+a")
        self.screen.type("partially")
        typed = self.trace.wait("%s: keys typed into the tool window's filter arrive" % step,
                                is_("viewer", visible="1", filter="partially"), since)
        if int(typed["lines"]) < 1:
            raise StepFailed("%s: the filter \"partially\" shows no line" % step)

        errors = widget(viewer, step, **{"class": "QCheckBox", "text": "错误"})
        mask = int(state["mask"], 16)
        since = self.trace.mark()
        self.screen.click(*errors.center())
        self.trace.wait("%s: a click on the tool window's \"错误\" box changes the type filter" % step,
                        lambda r: r.kind == "viewer" and r.get("visible") == "1" and int(r["mask"], 16) == mask ^ 0x010,
                        since)
        blocked = self.trace.find(is_("button", name="GalleryDemo"), modal_at)
        if blocked is not None:
            raise StepFailed("%s: the gallery took a click while the modal dialog was open" % step)
        self.screen.screenshot("5-modal", {"dialog": dialog.rect(), "viewer": viewer.rect()})

        since = self.trace.mark()
        self.screen.click(*widget(dialog, step, **{"class": "QPushButton"}).center())
        self.trace.wait("%s: the dialog's Close button closes it" % step,
                        is_("window", state="hidden", name=dialog["name"]), since)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--gallery", required=True, help="the LxUIKitGallery program")
    parser.add_argument("--artifacts", required=True, help="folder for the screenshots, trace and log")
    args = parser.parse_args()
    missing = [tool for tool in ("Xvfb", "xdotool", "import") if shutil.which(tool) is None]
    if missing:
        print("e2e: missing programs: %s (scripts/common.sh installs them)" % ", ".join(missing), file=sys.stderr)
        return 1

    def on_signal(signum, _frame):
        raise SystemExit(128 + signum)

    for s in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(s, on_signal)

    started = time.monotonic()
    run = Run(args)
    current = "start"
    try:
        run.start()
        for current, fn in (("1", run.step_pages), ("2", run.step_viewer), ("3", run.step_spy),
                            ("4", run.step_preview), ("5", run.step_modal)):
            t = time.monotonic()
            fn()
            print("e2e: step %s passed in %.1f s" % (current, time.monotonic() - t), flush=True)
    except StepFailed as e:
        print("e2e: FAILED: %s" % e, file=sys.stderr)
        try:
            print("e2e: screen at the failure: %s" % run.screen.screenshot("failure-step-%s" % current, {}).path,
                  file=sys.stderr)
        except Exception as shot_error:  # the failure above is the one to report
            print("e2e: (no screenshot: %s)" % shot_error, file=sys.stderr)
        print("e2e: trace %s, gallery output %s" % (run.trace_path, os.path.join(args.artifacts, "gallery.log")),
              file=sys.stderr)
        return 1
    finally:
        run.stop()
    print("e2e: all steps passed in %.1f s (viewer lines %d -> %d with the filter); screenshots in %s"
          % (time.monotonic() - started, run.filtered[0], run.filtered[1], args.artifacts))
    return 0


if __name__ == "__main__":
    sys.exit(main())
