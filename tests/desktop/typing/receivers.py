# SPDX-License-Identifier: MIT
"""The programs that are typed into, each with what its field has received."""

import http.server
import json
import os
import pathlib
import queue
import shutil
import subprocess
import sys
import tempfile
import threading

from desktop import PATIENCE, wait_for

HERE = pathlib.Path(__file__).parent
TITLE = "Receiver"


def title_in_front():
    return subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True).stdout


class Receiver:
    """A program in a folder of its own, with its window in front."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="receiver-"))
        self._program = None

    def start(self, *command):
        environment = dict(os.environ, LANG="C.UTF-8", HOME=str(self.folder), XDG_CONFIG_HOME=str(self.folder),
                           XDG_CACHE_HOME=str(self.folder), GDK_BACKEND="x11", QT_QPA_PLATFORM="xcb",
                           NO_AT_BRIDGE="1")
        for variable in ("GTK_IM_MODULE", "QT_IM_MODULE", "XMODIFIERS"):
            environment.pop(variable, None)
        self._program = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL)
        wait_for(lambda: TITLE in title_in_front(), f"{command[0]} in front")

    def stop(self):
        self._program.terminate()
        try:
            self._program.wait(20)
        except subprocess.TimeoutExpired:
            self._program.kill()
            self._program.wait()
        shutil.rmtree(self.folder, ignore_errors=True)


class Terminal(Receiver):
    """A terminal that sends its keys to a file as they come."""

    name = "xterm"

    def __init__(self):
        super().__init__()
        self._file = self.folder / "received"
        self._ready = self.folder / "ready"
        self._read = 0
        self.start("xterm", "-u8", "-T", TITLE, "-e", "sh", "-c",
                   f"stty raw -echo; touch '{self._ready}'; exec cat > '{self._file}'")
        wait_for(self._ready.exists, "a terminal that reads")

    def job(self, password):
        return {"sequence": "{PASSWORD}", "password": password}

    def received(self, job):
        def all_that_came():
            return self._file.read_bytes()[self._read:].decode(errors="replace")

        text = patiently(all_that_came, job["password"])
        self._read = self._file.stat().st_size
        return text


class Field(Receiver):
    """A field that keeps a file with its text, and is emptied by each job first."""

    def __init__(self, *command):
        super().__init__()
        self._file = self.folder / "text"
        self.start(*command, str(self._file))
        wait_for(self._file.exists, "a field")

    def job(self, password):
        return {"sequence": "{CLEARFIELD}{PASSWORD}", "password": password}

    def received(self, job):
        return patiently(lambda: self._file.read_text(), job["password"])


class QtField(Field):
    name = "Qt"

    def __init__(self, program):
        super().__init__(program)


class GtkField(Field):
    name = "GTK 3"

    def __init__(self):
        super().__init__(sys.executable, str(HERE / "gtk_field.py"))


class LoginForm(Receiver):
    """A browser with a login form: the user's name, Tab, the password, Return."""

    name = "Chromium"
    USERNAME = "ayşe.gül@Örnek-Şirket.com"

    def __init__(self):
        super().__init__()
        self._messages = {"/ready": queue.Queue(), "/received": queue.Queue()}
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), self._handler())
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        preferences = self.folder / "profile" / "Default" / "Preferences"
        preferences.parent.mkdir(parents=True)
        preferences.write_text(json.dumps({"credentials_enable_service": False,
                                           "profile": {"password_manager_enabled": False}}))
        as_root = ["--no-sandbox"] if os.getuid() == 0 else []
        self.start("chromium", *as_root, f"--user-data-dir={self.folder / 'profile'}", "--no-first-run",
                   "--disable-gpu", "--disable-dev-shm-usage", "--password-store=basic", "--disable-extensions",
                   "--disable-background-networking", "--disable-component-update", "--disable-sync",
                   "--disable-features=Translate,OptimizationHints,MediaRouter", "--no-default-browser-check",
                   f"--app=http://127.0.0.1:{self._server.server_port}/")

    def _handler(self):
        messages = self._messages

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                page = (HERE / "login.html").read_bytes() if self.path == "/" else b""
                self.send_response(200 if page else 404)
                self.send_header("Content-Type", "text/html; charset=utf-8")
                self.send_header("Content-Length", str(len(page)))
                self.end_headers()
                self.wfile.write(page)

            def do_POST(self):
                body = self.rfile.read(int(self.headers["Content-Length"]))
                messages[self.path].put(json.loads(body))
                self.send_response(204)
                self.end_headers()

            def log_message(self, *_):
                pass

        return Handler

    def job(self, password):
        self._messages["/ready"].get(timeout=PATIENCE)
        return {"sequence": "{USERNAME}{TAB}{PASSWORD}{ENTER}", "username": self.USERNAME, "password": password}

    def received(self, job):
        try:
            form = self._messages["/received"].get(timeout=PATIENCE)
        except queue.Empty:
            return "nothing"
        return form["password"] if form["username"] == job["username"] else f"the name {form['username']}"

    def stop(self):
        super().stop()
        self._server.shutdown()


def patiently(read, expected):
    """What `read` gives: at once where it is what is expected, else what it is after a while."""
    try:
        wait_for(lambda: read() == expected, "what was typed", patience=20)
    except AssertionError:
        pass
    return read()
