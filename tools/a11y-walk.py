#!/usr/bin/env python3
"""Walks the program's accessibility tree as a screen reader sees it, on every page and dialog.

    tools/a11y-walk.py [BUILD_DIR] [--language=en|de|en,de] [--verbose] [--shots=DIR]

Starts the program from BUILD_DIR (default build/) with a virtual CDI beside it, under its own
X server and accessibility bus, drives it with keys from page to page and reads each page over
AT-SPI. It reports, per language:

  unnamed   a focusable object or an image that a screen reader would announce without a name
  markup    HTML in a name or a description ("<font color=...>")
  hidden    non-characters (U+FDD0..U+FDEF) in a name, a description or a text
  graph     a graph whose description does not name the point that breaks the limit
  silent    a name or description that changed with a language switch without an event

and exits with 1 when it found anything. --verbose prints the tree of each page, --shots=DIR
keeps a screenshot of each. It needs python3-pyatspi, gir1.2-atspi-2.0,
at-spi2-core, dbus-x11, xvfb, xdotool and openbox (Debian package names), and says which are
missing. Per-user state goes to a temporary folder; nothing of the user's own is read or written.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as ElementTree

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
INNER = "SPARKWRIGHT_A11Y_WALK_INNER"
NEEDED = {
    "xvfb-run": "xvfb",
    "dbus-run-session": "dbus",
    "xdotool": "xdotool",
    "openbox": "openbox",
}
BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
REGISTRY = "/usr/libexec/at-spi2-registryd"
DISCLAIMER_ACCEPTED = b"\x55\x05\x00\x00\x69\x01\x00\x00\x00"
MARKUP = re.compile(r"<\s*/?\s*[a-zA-Z]|&(amp|lt|gt|quot|nbsp);")
HIDDEN = re.compile("[\ufdd0-\ufdef]")
# pyatspi comes with the system's Python, not with one a version manager put first on the path.
PYTHON = "/usr/bin/python3" if os.path.exists("/usr/bin/python3") else sys.executable


def missing_packages():
    missing = [package for tool, package in NEEDED.items() if not shutil.which(tool)]
    if not os.path.exists(BUS_LAUNCHER):
        missing.append("at-spi2-core")
    probe = subprocess.run([PYTHON, "-c", "import pyatspi"], capture_output=True)
    if probe.returncode != 0:
        missing += ["python3-pyatspi", "gir1.2-atspi-2.0"]
    return missing


def key_name(character):
    """The X key name xdotool knows a mnemonic's letter by."""
    return {"ä": "adiaeresis", "ö": "odiaeresis", "ü": "udiaeresis"}.get(character, character)


class Translations:
    """The German texts of the program, read from its translation source."""

    def __init__(self, language):
        self.texts = {}
        if language != "de":
            return
        tree = ElementTree.parse(os.path.join(ROOT, "i18n", "lang_de.ts"))
        for message in tree.iter("message"):
            source = message.findtext("source")
            translation = message.findtext("translation")
            if source and translation:
                self.texts.setdefault(source, translation)

    def text(self, source):
        return self.texts.get(source, source)

    def label(self, source):
        """The name a button or tab carries: the text without its mnemonic."""
        return self.text(source).replace("&&", "\0").replace("&", "").replace("\0", "&")

    def mnemonic(self, source):
        text = self.text(source).replace("&&", "")
        at = text.find("&")
        return text[at + 1].lower() if at >= 0 else None


class Walker:
    def __init__(self, build, language, verbose, shots=None):
        import pyatspi

        self.atspi = pyatspi
        self.build = build
        self.language = language
        self.verbose = verbose
        self.shots = shots
        self.tr = Translations(language)
        self.findings = []
        self.events = []
        self.focused = None
        self.app = None

    # ---- the program ----

    def find_app(self, timeout=20):
        end = time.time() + timeout
        while time.time() < end:
            desktop = self.atspi.Registry.getDesktop(0)
            for index in range(desktop.childCount):
                app = desktop.getChildAtIndex(index)
                if app is not None and (app.name or "").lower() == "sparkwright":
                    self.app = app
                    return app
            time.sleep(0.3)
        raise SystemExit("the program did not appear on the accessibility bus")

    def key(self, *keys):
        for key in keys:
            subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True)
            time.sleep(0.15)
        time.sleep(0.6)

    def objects(self, root=None):
        """Every showing object below root (the program when none), with its path."""
        root = root or self.app
        stack = [(root, ())]
        while stack:
            node, path = stack.pop()
            if node is None:
                continue
            try:
                states = node.getState()
                if node is not root and not states.contains(self.atspi.STATE_SHOWING):
                    continue
                yield node, path, states
                count = min(node.childCount, 400)
            except Exception:
                continue
            for index in reversed(range(count)):
                try:
                    stack.append((node.getChildAtIndex(index), path + (index,)))
                except Exception:
                    pass

    def find(self, role, source, timeout=10, exact=True):
        name = self.tr.label(source)
        end = time.time() + timeout
        while time.time() < end:
            self.app.clearCache() if hasattr(self.app, "clearCache") else None
            for node, _, _ in self.objects():
                try:
                    if node.getRole() == role and (node.name == name if exact else name in node.name):
                        return node
                except Exception:
                    pass
            time.sleep(0.3)
        raise SystemExit("%s: no %s named %r" % (self.language, role, name))

    def press(self, role, source, key="space"):
        node = self.find(role, source)
        node.queryComponent().grabFocus()
        time.sleep(0.3)
        self.key(key)

    def menu(self, menu_source, item_source):
        """Opens the menu by its Alt key and walks down to the entry: no letter keys to map."""
        pyatspi = self.atspi
        # A menu asked for while a closing dialog still holds the keyboard does not open: again.
        for attempt in range(3):
            self.key("alt+" + key_name(self.tr.mnemonic(menu_source)))
            try:
                item = self.find(pyatspi.ROLE_MENU_ITEM, item_source, timeout=4)
                break
            except SystemExit:
                if attempt == 2:
                    raise
                self.key("Escape")
        parent = item.parent
        steps = 0
        for index in range(parent.childCount):
            sibling = parent.getChildAtIndex(index)
            if sibling == item:
                break
            states = sibling.getState()
            if sibling.getRole() != pyatspi.ROLE_SEPARATOR and states.contains(pyatspi.STATE_ENABLED) \
                    and states.contains(pyatspi.STATE_SHOWING):
                steps += 1
        self.key(*(["Down"] * steps + ["Return"]))

    # ---- the checks ----

    def walk(self, page):
        """Records what a screen reader would miss on the page shown."""
        self.pump(0.8)
        if self.shots:
            name = re.sub(r"[^a-z0-9]+", "-", page.lower()).strip("-")
            subprocess.run(["import", "-window", "root", os.path.join(self.shots, "%s-%s.png" % (self.language, name))],
                stderr=subprocess.DEVNULL)
        pyatspi = self.atspi
        seen = 0
        # What has the focus is announced even where the tree does not lead to it (a cell's editor).
        try:
            if self.focused is not None and not (self.focused.name or "").strip():
                self.report(page, "unnamed", "%s with the focus" % self.focused.getRoleName())
        except Exception:
            pass
        for node, path, states in self.objects():
            seen += 1
            try:
                role = node.getRole()
                name = node.name or ""
                description = node.description or ""
            except Exception:
                continue
            role_name = node.getRoleName()
            focusable = states.contains(pyatspi.STATE_FOCUSABLE)
            image = role in (pyatspi.ROLE_IMAGE, pyatspi.ROLE_ICON)
            if (focusable or image) and not name.strip():
                self.report(page, "unnamed", "%s at %s" % (role_name, "/".join(map(str, path))))
            for what, text in (("name", name), ("description", description)):
                if MARKUP.search(text):
                    self.report(page, "markup", "%s %s: %r" % (role_name, what, text[:90]))
                if HIDDEN.search(text):
                    self.report(page, "hidden", "%s %s" % (role_name, what))
            if role in (pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY) or "text" in role_name:
                try:
                    text = node.queryText().getText(0, -1)
                except Exception:
                    text = ""
                if HIDDEN.search(text):
                    self.report(page, "hidden", "%s %r text holds non-characters" % (role_name, name))
            if self.verbose:
                print("    %s%s %r %r" % ("  " * len(path), role_name, name, description[:60]))
        if self.verbose:
            print("  %s: %d objects" % (page, seen))

    def graph_descriptions(self, page, sources):
        """The named graphs' descriptions, which must name the point over its limit."""
        limit_words = self.tr.text("the angle for %rpm RPM should not exceed %max for this profile")
        limit_words = limit_words.split("%rpm")[0].strip()
        for source in sources:
            node = self.find(self.atspi.ROLE_IMAGE, source, timeout=3, exact=False) \
                if self.has(self.atspi.ROLE_IMAGE, source) else None
            node = node or self.find_any_role(source)
            description = node.description if node else ""
            if self.verbose:
                print("  graph %r: %r" % (source, description))
            if limit_words.lower() not in description.lower():
                self.report(page, "graph", "%r does not name the point over its limit" % self.tr.label(source))

    def has(self, role, source):
        name = self.tr.label(source)
        return any(n.getRole() == role and name in (n.name or "") for n, _, _ in self.objects())

    def find_any_role(self, source):
        name = self.tr.label(source)
        for node, _, _ in self.objects():
            if name in (node.name or ""):
                return node
        return None

    def snapshot(self):
        texts = {}
        for node, path, _ in self.objects():
            try:
                texts[path] = (node.name or "", node.description or "")
            except Exception:
                pass
        return texts

    def listen(self):
        def heard(event):
            try:
                self.events.append((event.type, self.path_of(event.source)))
            except Exception:
                pass

        def focused(event):
            if event.detail1:
                self.focused = event.source

        self.atspi.Registry.registerEventListener(focused, "object:state-changed:focused")
        self.atspi.Registry.registerEventListener(heard, "object:property-change:accessible-name")
        self.atspi.Registry.registerEventListener(heard, "object:property-change:accessible-description")

    def path_of(self, node):
        path = []
        while node is not None and node != self.app:
            path.append(node.getIndexInParent())
            node = node.parent
        return tuple(reversed(path))

    def pump(self, seconds):
        from gi.repository import GLib

        context = GLib.MainContext.default()
        end = time.time() + seconds
        while time.time() < end:
            while context.pending():
                context.iteration(False)
            time.sleep(0.05)

    def language_switch(self, page, to_source):
        """Switches the language at run time; every changed text must have said so."""
        before = self.snapshot()
        self.events.clear()
        self.menu("&Language", to_source)
        self.pump(2.5)
        after = self.snapshot()
        heard = {(kind.split(":")[-1], path) for kind, path in self.events}
        silent = []
        for path, (name, description) in after.items():
            old = before.get(path)
            if old is None:
                continue
            if name != old[0] and ("accessible-name", path) not in heard:
                silent.append("name %r -> %r" % (old[0][:40], name[:40]))
            if description != old[1] and ("accessible-description", path) not in heard:
                silent.append("description %r -> %r" % (old[1][:40], description[:40]))
        for item in silent:
            self.report(page, "silent", item)

    def report(self, page, kind, text):
        self.findings.append((page, kind, text))

    # ---- the tour ----

    def tour(self, disclaimer):
        pyatspi = self.atspi
        self.find_app()
        self.listen()
        if disclaimer:
            self.find(pyatspi.ROLE_PUSH_BUTTON, "&Accept")
            self.walk("disclaimer")
            self.press(pyatspi.ROLE_CHECK_BOX, "Do &not show again")
            self.press(pyatspi.ROLE_PUSH_BUTTON, "&Accept")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Customize profiles")
        self.walk("start page")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Customize profiles")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "Load from &file")
        self.walk("load page")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Create from template")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Create")
        self.walk("template page")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Create")

        # The editor: the map tab, a cell being edited, a point over its limit, the other tabs.
        self.find(pyatspi.ROLE_PAGE_TAB, "Para&meters")
        self.walk("editor, map")
        self.key("ctrl+Home", "Right", "Down", "Down", "Down", "Down", "4")
        self.walk("editor, cell editor")
        self.key("9", "Return")
        self.walk("editor, a point over its limit")
        self.graph_descriptions("editor", ["Graph of the ignition map"])
        self.key("ctrl+w")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        self.walk("confirmation, a point over its limit")
        self.graph_descriptions("confirmation", ["Graph of the ignition map"])
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        self.key("ctrl+z")
        for tab in ("&Information",):
            tab_node = self.find(pyatspi.ROLE_PAGE_TAB, tab, exact=False)
            tab_node.queryAction().doAction(0)
            self.walk("editor, %s tab" % self.tr.label(tab))
        self.find(pyatspi.ROLE_PAGE_TAB, "Para&meters").queryAction().doAction(0)
        self.press(pyatspi.ROLE_PUSH_BUTTON, "Hint on the ignition map")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Close")
        self.walk("hint dialog")
        self.key("Escape")
        if self.language == "en":
            self.language_switch("editor, switched to German", "&German")
            self.tr = Translations("de")
            self.language_switch("editor, switched back to English", "&English")
            self.tr = Translations("en")

        # Programming: the confirmation page, the write confirmation, the progress page.
        self.key("ctrl+w")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        self.walk("confirmation")
        self.key("alt+" + self.tr.mnemonic("Program the &CDI") if self.tr.mnemonic("Program the &CDI") else "Return")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Confirm", timeout=15)
        self.walk("write confirmation")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "Ca&ncel")
        time.sleep(1)
        self.walk("after the write confirmation")

        # The start page's other ways: the comparison, the connection test without a CDI.
        self.menu("&Help", "&About")
        self.find(pyatspi.ROLE_DIALOG, "About", exact=False)
        self.walk("about box")
        self.key("Escape")
        self.menu("&Help", "&Update")
        time.sleep(1.5)
        self.walk("update")
        self.key("Escape")

        # The comparison: its list with a template added, then the graph of the list.
        for _ in range(3):
            if self.has(pyatspi.ROLE_PUSH_BUTTON, "Co&mpare profiles"):
                break
            self.press(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "Co&mpare profiles")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "Add &default profile")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Add to list")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Show graph")
        self.walk("comparison list")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Show graph")
        self.find(pyatspi.ROLE_CHECK_BOX, "Show li&mits")
        self.walk("comparison graph")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Back")

    def device_pages(self, cdi):
        """The connection test's progress page with a CDI, the port page without one."""
        pyatspi = self.atspi
        self.key("Escape")
        for _ in range(3):
            if self.has(pyatspi.ROLE_PUSH_BUTTON, "&Test connection to CDI"):
                break
            self.press(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Test connection to CDI")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Back", timeout=15)
        time.sleep(4)
        self.walk("progress page")
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Back")
        cdi.send_signal(signal.SIGTERM)
        cdi.wait(5)
        time.sleep(3)
        self.press(pyatspi.ROLE_PUSH_BUTTON, "&Test connection to CDI")
        time.sleep(6)
        # The port the CDI answered on is tried again first; its failure offers the others.
        if not self.has(pyatspi.ROLE_PUSH_BUTTON, "&Refresh list"):
            self.walk("progress page, failed")
            self.press(pyatspi.ROLE_PUSH_BUTTON, "&Choose another port")
        self.find(pyatspi.ROLE_PUSH_BUTTON, "&Refresh list", timeout=15)
        self.walk("port page")

    def summary(self):
        kinds = {}
        for _, kind, _ in self.findings:
            kinds[kind] = kinds.get(kind, 0) + 1
        return kinds


def run_program(build, home, language):
    env = dict(os.environ)
    env.update({
        "XDG_DATA_HOME": os.path.join(home, "data"),
        "XDG_CONFIG_HOME": os.path.join(home, "config"),
        "XDG_RUNTIME_DIR": os.path.join(home, "runtime"),
        "HOME": home,
        "LANG": "de_DE.UTF-8" if language == "de" else "en_US.UTF-8",
        "LC_ALL": "de_DE.UTF-8" if language == "de" else "en_US.UTF-8",
        "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        "QT_ACCESSIBILITY": "1",
    })
    os.makedirs(env["XDG_RUNTIME_DIR"], mode=0o700, exist_ok=True)
    cdi = subprocess.Popen([os.path.join(build, "sparkwright-cli"), "virtual-cdi"], cwd=build, env=env,
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    time.sleep(0.5)
    program = subprocess.Popen([os.path.join(build, "sparkwright")], cwd=home, env=env,
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return program, cdi


def inner(build, languages, verbose, shots):
    helpers = [subprocess.Popen([BUS_LAUNCHER, "--launch-immediately"]),
        subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)]
    time.sleep(1)
    helpers.append(subprocess.Popen([REGISTRY]))
    time.sleep(1)
    home = tempfile.mkdtemp(prefix="sparkwright-a11y-")
    found = 0
    try:
        for number, language in enumerate(languages):
            acceptance = os.path.join(home, "data", "sparkwright.example", "Sparkwright", "disclaimer.a")
            if number > 0:
                os.makedirs(os.path.dirname(acceptance), exist_ok=True)
                with open(acceptance, "wb") as file:
                    file.write(DISCLAIMER_ACCEPTED)
            program, cdi = run_program(build, home, language)
            walker = Walker(build, language, verbose, shots)
            try:
                walker.tour(disclaimer=number == 0)
                walker.device_pages(cdi)
            except SystemExit as failure:
                # Where the tour got stuck, for a look with an image viewer.
                shot = os.path.join(tempfile.gettempdir(), "sparkwright-a11y-walk-%s.png" % language)
                subprocess.run(["import", "-window", "root", shot], stderr=subprocess.DEVNULL)
                print("%s (the screen is in %s)" % (failure, shot))
                found += 1
                continue
            finally:
                for process in (program, cdi):
                    process.send_signal(signal.SIGTERM)
                    try:
                        process.wait(5)
                    except subprocess.TimeoutExpired:
                        process.kill()
            print("%s: %d findings %s" % (language, len(walker.findings), walker.summary()))
            for page, kind, text in walker.findings:
                print("  %-8s %-36s %s" % (kind, page, text))
            found += len(walker.findings)
    finally:
        for helper in reversed(helpers):
            helper.terminate()
        shutil.rmtree(home, ignore_errors=True)
    return 1 if found else 0


def main():
    args = [a for a in sys.argv[1:] if not a.startswith("--")]
    options = [a for a in sys.argv[1:] if a.startswith("--")]
    build = os.path.abspath(args[0] if args else os.path.join(ROOT, "build"))
    languages = ["en", "de"]
    for option in options:
        if option.startswith("--language="):
            value = option.split("=", 1)[1]
            languages = ["en", "de"] if value == "both" else value.split(",")
    verbose = "--verbose" in options
    shots = None
    for option in options:
        if option.startswith("--shots="):
            shots = os.path.abspath(option.split("=", 1)[1])
            os.makedirs(shots, exist_ok=True)
    if os.environ.get(INNER):
        return inner(build, languages, verbose, shots)
    missing = missing_packages()
    if missing:
        print("missing: %s\ninstall with: apt-get install %s" % (", ".join(missing), " ".join(missing)),
            file=sys.stderr)
        return 2
    if not os.path.exists(os.path.join(build, "sparkwright")):
        print("no program in %s: build it first (scripts/run.sh)" % build, file=sys.stderr)
        return 2
    env = dict(os.environ, **{INNER: "1"})
    env.pop("QT_QPA_PLATFORM", None)
    command = ["dbus-run-session", "--", "xvfb-run", "-a", "-s", "-screen 0 1280x1024x24",
        PYTHON, os.path.abspath(__file__), build, "--language=" + ",".join(languages)]
    if verbose:
        command.append("--verbose")
    if shots:
        command.append("--shots=" + shots)
    return subprocess.run(command, env=env).returncode


if __name__ == "__main__":
    sys.exit(main())
