#!/usr/bin/python3
"""Starts the real program on a display of its own and works with it as a user does: keys in, window titles, the
accessibility tree and the screen out. Usage: mainWindow.py VELORIN [NAME OF A TEST]...; 77 means skipped."""
import contextlib
import importlib.util
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

SKIPPED = 77
PATIENCE = 20  # seconds
DEMO = pathlib.Path(__file__).resolve().parents[2] / "demo" / "plate.vrf"
PROGRAMS = ("Xvfb", "openbox", "dbus-run-session", "xdotool", "import")


def missing():
    there = {name: shutil.which(name) for name in PROGRAMS}
    there["at-spi2-core"] = pathlib.Path("/usr/libexec/at-spi-bus-launcher").exists()
    there["python3-pyatspi"] = importlib.util.find_spec("pyatspi")
    return [name for name, found in there.items() if not found]


@contextlib.contextmanager
def running(*arguments, **options):
    process = subprocess.Popen(arguments, **options)
    try:
        yield process
    finally:
        process.terminate()
        with contextlib.suppress(subprocess.TimeoutExpired):
            process.wait(5)
        process.kill()
        process.wait()


def wait_for(what, probe):
    """What `probe` gives as soon as it is something; the tree may change while it is read, which counts as nothing."""
    end = time.monotonic() + PATIENCE
    found = None
    while not found and time.monotonic() < end:
        time.sleep(0.05)
        with contextlib.suppress(Exception):  # objects of the tree come and go, with errors of several kinds
            found = probe()
    if not found:
        raise AssertionError(f"waited {PATIENCE} s for {what}")
    return found


def xdotool(*arguments):
    return subprocess.run(["xdotool", *arguments], capture_output=True, text=True, check=False).stdout.strip()


def objects(root):
    yield root
    for index in range(root.childCount):
        child = root.getChildAtIndex(index)
        if child is not None:
            yield from objects(child)


class MainWindow(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # The bus wakes up when it is first asked for, and a program that starts meanwhile might not find it.
        import pyatspi
        wait_for("the accessibility bus", lambda: pyatspi.Registry.getDesktop(0).childCount >= 0)

    def start(self, path, new_addins=False):
        """Starts the program with settings of its own, which look for new add-ins only if so told."""
        folder = self.enterContext(tempfile.TemporaryDirectory())
        # Leaks of the display's libraries are not the program's.
        environment = os.environ | {"XDG_CONFIG_HOME": folder, "ASAN_OPTIONS": "detect_leaks=0"}
        if not new_addins:
            settings = pathlib.Path(folder, "settings.reg")
            settings.write_text("Windows Registry Editor Version 5.00\n\n"
                                "[HKEY_CURRENT_USER\\Software\\Ordvane\\Velorin\\1.0\\Settings]\n"
                                '"Auto Install"=dword:00000000\n', "utf-16")
            batch = pathlib.Path(PROGRAM).with_name("velorin-batch")
            subprocess.run([batch, "registry", "import", settings], env=environment, check=True)
        self.velorin = self.enterContext(running(PROGRAM, str(path), env=environment))

    def application(self):
        import pyatspi
        desktop = pyatspi.Registry.getDesktop(0)
        return next(app for app in desktop if app is not None and app.get_process_id() == self.velorin.pid)

    def shown(self, name):
        """The visible object of this name, none while there isn't one."""
        import pyatspi
        return next((item for item in objects(self.application())
                     if item.name == name and item.getState().contains(pyatspi.STATE_SHOWING)), None)

    def wait_window(self, title):
        wait_for(f"the window {title}", lambda: xdotool("getactivewindow", "getwindowname") == title)

    def wait_panel(self, tool_tip, text):
        """Until a panel of the status bar shows a text."""
        wait_for(f"{tool_tip} {text}", lambda: any(item.description == tool_tip and item.name == text
                                                   for item in objects(self.application())))

    def choose(self, menu_key, item_key, caption):
        """Opens a menu and chooses of it by access keys."""
        xdotool("key", f"alt+{menu_key}")
        wait_for(f"the menu with {caption}", lambda: self.shown(caption))
        xdotool("key", item_key)

    def picture(self):
        command = ["import", "-silent", "-window", xdotool("getactivewindow"), "-depth", "8", "rgb:-"]
        return subprocess.run(command, capture_output=True, check=True).stdout

    def labels(self):
        """What the lists on the tool bar are for, as an assistive tool reads it."""
        import pyatspi
        return [relation.getTarget(0).name for item in objects(self.application())
                if item.getRole() == pyatspi.ROLE_COMBO_BOX and item.getState().contains(pyatspi.STATE_SHOWING)
                for relation in item.getRelationSet() if relation.getRelationType() == pyatspi.RELATION_LABELLED_BY]

    def expect_end(self):
        self.assertEqual(self.velorin.wait(PATIENCE), 0)

    def test_steps_and_zooms_and_a_session_that_ends_keeps_all(self):
        path = shutil.copy(DEMO, self.enterContext(tempfile.TemporaryDirectory()))
        self.start(path)
        self.wait_window("Velorin - plate")
        self.wait_panel("経過時間", "0.05")
        wait_for("the lists", lambda: self.labels() == ["ステップ", "ベクトルアイテム", "コンタアイテム"])
        wait_for("the picture", lambda: len(set(self.picture())) > 20)
        first = self.picture()
        xdotool("key", "ctrl+Down")
        self.wait_panel("経過時間", "1")
        wait_for("the picture of the last step", lambda: self.picture() != first)
        self.choose("v", "i", "拡大(I)")
        self.wait_panel("倍率", "125 %")
        self.velorin.terminate()
        self.expect_end()
        self.assertIn("<currentstep>19</currentstep>", pathlib.Path(path + ".property").read_text("cp932"))

    def test_new_addins_are_offered_and_run(self):
        path = shutil.copy(DEMO, self.enterContext(tempfile.TemporaryDirectory()))
        self.start(path, new_addins=True)
        wait_for("the offer", lambda: any("個のアドインモジュールが見つかりました。" in item.name
                                          for item in objects(self.application())))
        xdotool("key", "Return")
        wait_for("the answer", lambda: self.shown("インストールが完了しました。"))
        xdotool("key", "Return")
        self.wait_window("Velorin - plate")
        xdotool("key", "alt+a")
        wait_for("the menu", lambda: self.shown("メッシュ品質"))
        xdotool("key", "Down", "Return")
        report = pathlib.Path(path).with_suffix(".quality.txt")
        wait_for("the report", report.exists)
        self.assertIn("最小角の小さい要素", report.read_text("utf-8"))

    def test_the_end_does_not_wait_for_a_dialog(self):
        for new_addins in (False, True):
            self.start("/nowhere/none.vrf", new_addins)
            self.wait_window("Velorin")
            self.velorin.terminate()
            self.expect_end()

    def test_a_path_that_is_not_there_is_told(self):
        self.start("/nowhere/none.vrf")
        wait_for("the message", lambda: self.shown("無効なパラメータです。"))
        self.wait_window("Velorin")
        xdotool("key", "Return")
        self.wait_window("Velorin - (未定義)")
        self.choose("f", "x", "終了(X)")
        self.expect_end()


def outside():
    """A display and a message bus for this run alone, and within them this script again."""
    absent = missing()
    if absent:
        print(f"skipped: this needs {', '.join(absent)}, which scripts/setup installs")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        environment = os.environ | {"HOME": folder, "XDG_RUNTIME_DIR": folder, "QT_QPA_PLATFORM": "xcb",
                                    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "VELORIN_E2E_INSIDE": "1"}
        screen = ["-screen", "0", "1280x900x24", "-nolisten", "tcp"]
        with running("Xvfb", "-displayfd", "1", *screen, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as server:
            environment["DISPLAY"] = ":" + server.stdout.readline().decode().strip()
            with running("openbox", env=environment, stderr=subprocess.DEVNULL):
                inside = ["dbus-run-session", "--", sys.executable, *sys.argv]
                return subprocess.run(inside, env=environment, check=False).returncode


if __name__ == "__main__":
    PROGRAM = sys.argv[1]
    if "VELORIN_E2E_INSIDE" not in os.environ:
        sys.exit(outside())
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=2)
