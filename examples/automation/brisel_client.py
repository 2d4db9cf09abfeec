"""Drives Brisel from Python: starts `brisel automate` and speaks JSON-RPC 2.0 with it.

Only the standard library is needed. What a component answers to is its own affair: this module
knows no component, it passes names and values on.

    with Brisel() as brisel:
        editor = brisel.create("BriselCLS.CLSEditor")
        editor["Path"] = "/tmp"                   # a property
        editor.Resize(20000, 15000)               # a method
        canvas = editor["diagramControl1"]        # an object; the same object is always equal
"""

import json
import os
import pathlib
import shutil
import subprocess


class BriselError(Exception):
    """What Brisel answered in the place of a result."""

    def __init__(self, error):
        super().__init__(error["message"])
        self.code = error["code"]
        self.number = error.get("data", {}).get("number")


class Out:
    """The result of a member that has out arguments: `result`, and the list `out`."""

    def __init__(self, result, out):
        self.result = result
        self.out = out


class Object:
    """An object inside Brisel. Items are its properties, attributes its methods."""

    def __init__(self, brisel, handle):
        self._brisel = brisel
        self._handle = handle

    def __getitem__(self, name):
        return self._brisel.request("get", object=self, member=name)

    def __setitem__(self, name, value):
        self._brisel.request("set", object=self, member=name, value=value)

    def __getattr__(self, name):
        if name.startswith("__"):
            raise AttributeError(name)
        return lambda *arguments: self._brisel.request(
            "invoke", object=self, member=name, arguments=list(arguments))

    def __eq__(self, other):
        return isinstance(other, Object) and other._handle == self._handle

    def __hash__(self):
        return hash(self._handle)

    def __repr__(self):
        return "<Brisel object %d>" % self._handle


class Brisel:
    """A running Brisel. Notifications ("event", "message", "dialog") gather in `notifications` as
    pairs of method and parameters; `on_notification`, if set, is called with each."""

    def __init__(self, program=None, window=False):
        self.program = program or find_program()
        command = [self.program, "automate"] + (["--window"] if window else [])
        self._process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self._last_id = 0
        self.notifications = []
        self.on_notification = None

    def create(self, prog_id):
        return self.request("create", progId=prog_id)

    def members(self, target):
        return self.request("members", object=target)

    def release(self, target):
        """Gives the object back; what was made by `create` is torn down."""
        self.request("release", object=target)

    def request(self, method, **params):
        self._last_id += 1
        message = {"jsonrpc": "2.0", "id": self._last_id, "method": method,
                   "params": {name: self._encode(value) for name, value in params.items()}}
        self._process.stdin.write(json.dumps(message).encode() + b"\n")
        self._process.stdin.flush()
        while True:
            line = self._process.stdout.readline()
            if not line:
                raise ConnectionError("Brisel has ended")
            answer = json.loads(line)
            if "method" in answer:
                self._take_notification(answer["method"], self._decode(answer["params"]))
            elif "error" in answer:
                raise BriselError(answer["error"])
            else:
                return self._decode(answer["result"])

    def close(self):
        """Ends Brisel; its exit code."""
        self._process.stdin.close()
        code = self._process.wait()
        self._process.stdout.close()
        return code

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _take_notification(self, method, params):
        self.notifications.append((method, params))
        if self.on_notification:
            self.on_notification(method, params)

    def _encode(self, value):
        if isinstance(value, Object):
            return {"ref": value._handle}
        if isinstance(value, (list, tuple)):
            return [self._encode(item) for item in value]
        return value

    def _decode(self, value):
        if isinstance(value, list):
            return [self._decode(item) for item in value]
        if not isinstance(value, dict):
            return value
        if set(value) == {"ref"}:
            return Object(self, value["ref"])
        if set(value) == {"result", "out"}:
            return Out(self._decode(value["result"]), self._decode(value["out"]))
        return {name: self._decode(item) for name, item in value.items()}


def find_program():
    """The program named by BRISEL, else the one built last in this source tree, else the one on
    the path."""
    if os.environ.get("BRISEL"):
        return os.environ["BRISEL"]
    root = pathlib.Path(__file__).resolve().parents[2]
    built = sorted(root.glob("build/*/bin/brisel"), key=lambda path: path.stat().st_mtime)
    program = str(built[-1]) if built else shutil.which("brisel")
    if not program:
        raise FileNotFoundError("no program brisel: build it with ./run --build, or set BRISEL")
    return program
