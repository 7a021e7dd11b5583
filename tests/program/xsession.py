# SPDX-License-Identifier: MIT
"""A display with a window manager, the installed program on it, and functions that move the mouse and press keys.

Everything a test starts is its own: display, program folder, instrument. All of it ends with the session.
"""

import ctypes
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time

# Place of the scope screen inside the main window: height of the menu bar plus the place in the client area.
SCREEN = (32, 63, 601, 401)
# Middle of a toolbar button, by the menu item it stands for.
TOOLS = {"open": (22, 44), "preview": (50, 44), "print": (78, 44), "table": (117, 44), "graticule": (145, 44),
         "line": (173, 44), "point": (201, 44), "port": (240, 44), "fetch": (268, 44), "auto": (296, 44),
         "stop": (324, 44), "help": (363, 44)}
PATIENCE = 60.0


def die_with_parent():
    """Ends the processes that a killed test has started."""
    set_parent_death_signal = 1
    ctypes.CDLL(None).prctl(set_parent_death_signal, signal.SIGTERM)


class Failure(AssertionError):
    pass


def wait_for(what, condition, seconds=PATIENCE):
    """Waits until `condition` returns something true, and returns that."""
    end = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise Failure("waited in vain for " + what)
        time.sleep(0.05)


def ppm(data):
    """Returns width, height and the RGB bytes of a binary pixmap."""
    match = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    if match is None:
        raise Failure("no pixmap of one byte a colour: " + repr(data[:40]))
    width, height = int(match.group(1)), int(match.group(2))
    return width, height, data[match.end():]


class Session:
    def __init__(self, programs, pictures):
        """`pictures` is the folder for a picture of the display when a test fails."""
        self.programs = programs
        self.pictures = pictures
        # In the system's folder for temporary files: the path of a socket has 107 bytes at most, and a build folder may
        # have a longer one.
        self.folder = tempfile.mkdtemp(prefix="sixtrace-")
        self.home = os.path.join(self.folder, "home", "sixtrace")
        os.makedirs(self.home)
        runtime = os.path.join(self.folder, "run")
        os.makedirs(runtime, mode=0o700)
        self.running = []
        self.env = dict(os.environ, XDG_DATA_HOME=os.path.dirname(self.home), HOME=self.folder, XDG_RUNTIME_DIR=runtime,
                        QT_QPA_PLATFORM="xcb", LANG="C.UTF-8", QT_SCALE_FACTOR="1",
                        DBUS_SESSION_BUS_ADDRESS="unix:path=" + runtime + "/no-bus")
        # The keyboard library of the display copies strings by their length, which the strictest check reports.
        self.env["ASAN_OPTIONS"] = ":".join(filter(None, [self.env.get("ASAN_OPTIONS"), "strict_string_checks=0"]))
        self.env["DISPLAY"] = self._display()
        wait_for("the display", lambda: self.quiet("xdotool", "getmouselocation") is not None)
        self.start_process(["openbox", "--sm-disable"])
        wait_for("the window manager", lambda: self.quiet("xdotool", "get_num_desktops") is not None)
        self.program = None

    def __enter__(self):
        return self

    def __exit__(self, kind, error, trace):
        if kind is not None:
            self.tell()
        for process in reversed(self.running):
            process.send_signal(signal.SIGTERM)
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def tell(self):
        """Collects what helps to explain a failure: windows, processes, their output, and a picture of the display."""
        for window in self.windows():
            print("window:", *window)
        for process in self.running:
            print("process:", *process.args, "runs" if process.poll() is None else "ended with %d" % process.returncode)
        for name in sorted(os.listdir(self.folder)):
            if name.endswith(".log"):
                with open(os.path.join(self.folder, name), "rb") as file:
                    print(name + ":", file.read()[-4000:].decode("utf-8", "replace"), sep="\n")
        os.makedirs(os.path.dirname(self.pictures), exist_ok=True)
        subprocess.run(["import", "-window", "root", self.pictures + ".png"], env=self.env, check=False)

    def start_process(self, command, **options):
        log = open(os.path.join(self.folder, os.path.basename(command[0]) + ".log"), "ab")
        process = subprocess.Popen(command, env=self.env, stdout=log, stderr=log, preexec_fn=die_with_parent, **options)
        self.running.append(process)
        return process

    def _display(self):
        # The number comes from this process: a server that takes the first free number may lose its socket to a server that
        # is ending.
        number = ":" + str(1000 + os.getpid() % 50000)
        reader, writer = os.pipe()
        self.start_process(["Xvfb", number, "-displayfd", str(writer), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
                            "-noreset"], # after its last client a server resets, and then refuses clients for a moment
                           pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as pipe:
            if not pipe.readline():
                raise Failure("no display")
        return number

    def quiet(self, *command):
        done = subprocess.run(command, env=self.env, capture_output=True, text=True, check=False)
        return done.stdout if done.returncode == 0 else None

    def do(self, *command):
        done = subprocess.run(command, env=self.env, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise Failure(" ".join(command) + ": " + done.stderr)
        return done.stdout

    def start_bus(self):
        """Starts a session bus for the programs that are started from now on."""
        reader, writer = os.pipe()
        self.start_process(["dbus-daemon", "--session", "--nofork", "--print-address=" + str(writer),
                            "--address=unix:path=" + os.path.join(self.folder, "run", "bus")], pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as pipe: # the bus writes its address when it listens
            address = pipe.readline().strip()
        if not address:
            raise Failure("no session bus")
        self.env["DBUS_SESSION_BUS_ADDRESS"] = address

    # The programs.

    def path(self, name):
        return os.path.join(self.programs, name)

    def kqx(self, *arguments):
        return self.do(self.path("kqx"), *arguments)

    def capture(self, name, form="V11", scene="six"):
        file = os.path.join(self.folder, name)
        self.do(self.path("sixtrace-instrument"), "--write", file, "--form", form, "--scene", scene)
        return file

    def instrument(self, *arguments):
        os.makedirs(os.path.join(self.home, "ports"), exist_ok=True)
        line = os.path.join(self.home, "ports", "com1")
        socket = os.path.join(self.home, "instrument.socket")
        process = self.start_process([self.path("sixtrace-instrument"), "--serial", line, "--usb", socket, *arguments])
        wait_for("the instrument", lambda: os.path.exists(line) and os.path.exists(socket))
        return process

    def settings(self):
        try:
            with open(os.path.join(self.home, "vkq.ini"), encoding="utf-8") as file:
                return dict(line.rstrip("\n").split("=", 1) for line in file if "=" in line)
        except FileNotFoundError:
            return {}

    def write_settings(self, text):
        with open(os.path.join(self.home, "vkq.ini"), "w", encoding="utf-8") as file:
            file.write(text)

    def start(self, *, english=True):
        """Starts the program, dismisses the splash by a key and returns the main window."""
        if english and not self.settings():
            self.write_settings("[Common]\nLanguage=1\n")
        self.launch()
        return wait_for("the main window", self.past_the_splash)

    def past_the_splash(self):
        main = self.find("Sixtrace", above=800, below=801)
        splash = next((w for w in self.windows() if w[4] < 800), None)
        if main is None and splash is not None:
            # On a slow machine the splash may have closed by itself. The key then does nothing in the main window.
            self.quiet("xdotool", "windowfocus", splash[0])
            self.quiet("xdotool", "key", "Shift_L")
        return main

    def launch(self):
        self.program = self.start_process([self.path("sixtrace")])

    def ended(self):
        wait_for("the end of the program", lambda: self.program.poll() is not None)
        return self.program.returncode

    # What is on the display.

    def windows(self):
        found = []
        for number in (self.quiet("xdotool", "search", "--onlyvisible", "--class", "sixtrace") or "").split():
            name = self.quiet("xdotool", "getwindowname", number)
            shape = self.quiet("xwininfo", "-id", number)
            if name is None or shape is None:
                continue
            values = dict(line.rsplit(":", 1) for line in shape.splitlines() if line.count(":") == 1)
            places = ("  Absolute upper-left X", "  Absolute upper-left Y", "  Width", "  Height")
            found.append((number, name.strip(), *(int(values[place]) for place in places)))
        return found

    def title(self, window):
        """The exact title that the window manager shows."""
        told = self.do("xprop", "-id", window[0], "_NET_WM_NAME") or ""
        return told.split(' = "', 1)[-1].rstrip("\n")[:-1]

    def find(self, title, above=0, below=10000):
        """A visible window whose title begins with this text and whose width lies within these bounds."""
        for window in self.windows():
            if window[1].startswith(title) and above <= window[4] < below:
                return window
        return None

    def window(self, title, above=0, below=10000):
        return wait_for("the window " + title, lambda: self.find(title, above, below))

    def gone(self, title, below=10000):
        wait_for("the end of the window " + title, lambda: self.find(title, below=below) is None)

    def splash(self):
        return wait_for("the splash", lambda: next((w for w in self.windows() if w[4] < 800), None))

    def main(self):
        return self.window("Sixtrace", above=800, below=801)

    def focus(self, window):
        """Gives a window the keyboard focus and waits until window manager and program both know it."""
        self.quiet("xdotool", "windowactivate", window[0])
        self.quiet("xdotool", "windowfocus", window[0])
        wait_for("the focus", lambda: (self.quiet("xdotool", "getwindowfocus") or "").strip() == window[0])
        time.sleep(0.15)

    def picture(self, window, place):
        """The RGB bytes of a part of a window, read from the display."""
        x, y, width, height = place
        crop = "%dx%d+%d+%d" % (width, height, window[2] + x, window[3] + y)
        done = subprocess.run(["import", "-window", "root", "-crop", crop, "-depth", "8", "ppm:-"], env=self.env, capture_output=True,
                              check=True)
        return ppm(done.stdout)

    def screen(self, window=None):
        return self.picture(window or self.main(), SCREEN)

    def screen_of(self, capture, *options):
        """The picture of a capture that the screen has to show, drawn by the companion program."""
        file = os.path.join(self.folder, "expected.png")
        self.kqx("screen", capture, file, *options)
        done = subprocess.run(["convert", file, "-depth", "8", "ppm:-"], capture_output=True, check=True)
        return ppm(done.stdout)

    def expect_screen(self, what, expected):
        self.park()
        try:
            wait_for(what, lambda: self.screen() == expected)
        except Failure as failure:
            shown = self.screen()
            shape = "another size" if shown[:2] != expected[:2] else "%d of %d bytes differ" % (
                sum(a != b for a, b in zip(shown[2], expected[2])), len(expected[2]))
            raise Failure("%s; on the screen %s" % (failure, shape)) from failure

    # Mouse and keys.

    def key(self, *keys):
        self.do("xdotool", "key", *keys)

    def type(self, text):
        self.do("xdotool", "type", "--delay", "5", text)

    def move(self, window, x, y):
        self.do("xdotool", "mousemove", "--sync", str(window[2] + x), str(window[3] + y))

    def park(self):
        """Moves the pointer to where no picture is taken."""
        self.do("xdotool", "mousemove", "1020", "764")

    def click(self, window, x, y, count=1):
        self.move(window, x, y)
        self.do("xdotool", "click", "--repeat", str(count), "--delay", "60", "1")

    def drag(self, window, start, end, steps=8):
        self.move(window, *start)
        self.do("xdotool", "mousedown", "1")
        for step in range(1, steps + 1):
            self.move(window, start[0] + (end[0] - start[0]) * step // steps,
                      start[1] + (end[1] - start[1]) * step // steps)
            time.sleep(0.03)
        self.do("xdotool", "mouseup", "1")

    def tool(self, name):
        self.click(self.main(), *TOOLS[name])

    def open(self, file):
        """Opens a capture by File, Open and the file dialog, by keys only."""
        main = self.main()
        self.focus(main)
        self.key("ctrl+o")
        dialog = wait_for("the open dialog",
                          lambda: next((w for w in self.windows() if w[0] != main[0] and w[4] > 250), None))
        self.answer_file_dialog(dialog, file)

    def answer_file_dialog(self, dialog, file):
        self.focus(dialog)
        self.key("ctrl+a")
        self.type(file)
        self.key("Return")
        wait_for("the end of the dialog", lambda: dialog[0] not in [w[0] for w in self.windows()])
