#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Two web servers on this machine, one by https and one without: makes its own certificate in the given folder and prints
both ports. Ends when its input closes."""

import http.server
import os
import ssl
import subprocess
import sys
import threading

LARGE = 9 << 20
PORTS = {}


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):  # pylint: disable=invalid-name
        targets = {"/around": f"https://localhost:{PORTS['https']}/picture", "/loop": "/loop",
                   "/off": f"http://localhost:{PORTS['http']}/picture", "/file": "file:///etc/hostname"}
        if self.path in targets:
            self.answer(302, b"", ("Location", targets[self.path]))
        elif self.path == "/picture":
            self.answer(200, b"picture")
        elif self.path == "/large":
            self.answer(200, bytes(LARGE))
        elif self.path == "/endless":
            self.send_response(200)
            self.end_headers()
            while True:
                self.wfile.write(bytes(1 << 16))
        elif self.path == "/slow":
            # Announces more than ever comes, and waits for the other side to give up.
            self.send_response(200)
            self.send_header("Content-Length", "100")
            self.end_headers()
            self.wfile.write(b"p")
            self.rfile.read(1)
        else:
            self.answer(404, b"not here")

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


def main(folder):
    key, certificate = (os.path.join(folder, name) for name in ("key.pem", "certificate.pem"))
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


main(sys.argv[1])
