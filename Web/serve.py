#!/usr/bin/env python3
"""Serves a folder to this machine alone, prints the address and opens it where there is a desktop.

usage: serve.py FOLDER [PORT]
"""

import functools
import http.server
import os
import shutil
import subprocess
import sys

USUAL_PORT = 8000


class Handler(http.server.SimpleHTTPRequestHandler):
    extensions_map = {**http.server.SimpleHTTPRequestHandler.extensions_map, ".js": "text/javascript"}

    def end_headers(self):
        self.send_header("Cache-Control", "no-store")  # a page that was built anew shows at once
        super().end_headers()

    def log_message(self, *_):
        pass


def main(folder, port=None):
    handler = functools.partial(Handler, directory=folder)
    try:
        server = http.server.ThreadingHTTPServer(("127.0.0.1", int(port or USUAL_PORT)), handler)
    except OSError as error:
        if port:
            sys.exit(f"port {port}: {error.strerror}")
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    address = f"http://127.0.0.1:{server.server_port}/"
    print(f"the player page: {address} (Ctrl-C ends it)", flush=True)
    if (os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY")) and shutil.which("xdg-open"):
        subprocess.Popen(["xdg-open", address], stderr=subprocess.DEVNULL)
    try:
        server.serve_forever()
    except KeyboardInterrupt:
        print()


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(*sys.argv[1:])
