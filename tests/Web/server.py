#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Two web servers on this machine, one by https and one without, for what lies in the folder "web" below the given one:
makes its own certificate beside that and prints both ports. Ends when its input closes. A name that begins with one of these
words gets its file in another way:

    off-       a redirect to the server without https
    around-    a redirect that stays on https
    loop-      a redirect to itself
    local-     a redirect to a file of this machine
    short-     half of the file, though all of it is announced
    hang-      half of the file, and then silence until the other side gives up
    endless-   bytes without end
    zipped-    the file, said to be packed though it is not
    broken-    an error of the server's, with the file as its page
    cookie-    a redirect that sets a cookie, to a page that tells the cookies that came with it
"""

import http.server
import os
import ssl
import subprocess
import sys
import threading

PORTS = {}
FOLDER = sys.argv[1]


def bytes_of(path):
    try:
        with open(os.path.join(FOLDER, "web", path.lstrip("/")), "rb") as file:
            return file.read()
    except OSError:
        return None


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):  # pylint: disable=invalid-name
        way, _, name = self.path.lstrip("/").partition("-")
        targets = {"off": f"http://localhost:{PORTS['http']}/{name}", "loop": self.path, "local": "file:///etc/hostname",
                   "around": f"https://localhost:{PORTS['https']}/{name}"}
        ways = {"short": self.half, "hang": self.half, "endless": self.endless}
        body = bytes_of(self.path)
        if way == "cookie":
            self.answer(302, b"", ("Location", "/cookies"), ("Set-Cookie", "seen=yes; Path=/"))
        elif self.path == "/cookies":
            self.answer(200, self.headers.get("Cookie", "no cookie").encode())
        elif way in targets:
            self.answer(302, b"", ("Location", targets[way]))
        elif body is None:
            self.answer(404, b"not here")
        elif way in ways:
            ways[way](body, way == "hang")
        elif way == "zipped":
            self.answer(200, body, ("Content-Encoding", "gzip"))
        else:
            self.answer(500 if way == "broken" else 200, body)

    def half(self, body, waits):
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body[:len(body) // 2])
        self.wfile.flush()
        self.close_connection = True  # pylint: disable=attribute-defined-outside-init
        if waits:
            self.rfile.read(1)

    def endless(self, _body, _waits):
        self.send_response(200)
        self.end_headers()
        while True:
            self.wfile.write(bytes(1 << 16))

    def answer(self, status, body, *headers):
        self.send_response(status)
        for name, value in (*headers, ("Content-Length", str(len(body)))):
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):  # pylint: disable=arguments-differ
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):  # pylint: disable=arguments-differ
        pass


def main():
    key, certificate = (os.path.join(FOLDER, name) for name in ("key.pem", "certificate.pem"))
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost", "-addext",
                    "subjectAltName=DNS:localhost", "-keyout", key, "-out", certificate], check=True, capture_output=True)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    servers = {"https": Server(("127.0.0.1", 0), Handler), "http": Server(("127.0.0.1", 0), Handler)}
    servers["https"].socket = context.wrap_socket(servers["https"].socket, server_side=True)
    for kind, server in servers.items():
        PORTS[kind] = server.server_address[1]
        threading.Thread(target=server.serve_forever, daemon=True).start()
    with open(3, "w", encoding="utf-8") as report:
        print(PORTS["https"], PORTS["http"], file=report)
    sys.stdin.read()


main()
