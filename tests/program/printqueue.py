# SPDX-License-Identifier: MIT
"""A private print server on the loopback interface, with one queue that prints into a file."""

import os
import socket
import subprocess

from xsession import Failure, wait_for

CUPS_FILES = """ServerRoot {0}/root
RequestRoot {0}/spool
CacheDir {0}/cache
StateDir {0}/state
TempDir {0}/tmp
AccessLog {0}/access_log
ErrorLog {0}/error_log
PageLog {0}/page_log
FileDevice Yes
"""
CUPSD = """Listen 127.0.0.1:{0}
Browsing Off
WebInterface No
DefaultAuthType None
LogLevel warn
<Location />
Order allow,deny
Allow 127.0.0.1
</Location>
<Location /admin>
Order allow,deny
Allow 127.0.0.1
</Location>
<Policy default>
<Limit All>
Order deny,allow
</Limit>
</Policy>
"""


def start(session):
    """Returns the file that the queue prints into. Programs that the session starts from now on find the queue."""
    folder = os.path.join(session.folder, "queue")
    for name in ("root", "spool", "cache", "state", "tmp"):
        os.makedirs(os.path.join(folder, name))
    # If root runs the server, its filters run as another user, who needs access to these folders.
    for path in (session.folder, folder):
        os.chmod(path, 0o755)
    os.chmod(os.path.join(folder, "tmp"), 0o777)
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        port = probe.getsockname()[1]
    with open(os.path.join(folder, "files.conf"), "w", encoding="utf-8") as file:
        file.write(CUPS_FILES.format(folder))
    with open(os.path.join(folder, "cupsd.conf"), "w", encoding="utf-8") as file:
        file.write(CUPSD.format(port))
    session.env["CUPS_SERVER"] = "127.0.0.1:%d" % port
    server = next((p for p in ("/usr/sbin/cupsd", "/usr/bin/cupsd") if os.path.exists(p)), None)
    if server is None:
        raise Failure("no print server is installed")
    session.start_process([server, "-f", "-c", os.path.join(folder, "cupsd.conf"), "-s", os.path.join(folder, "files.conf")])
    wait_for("the print server", lambda: subprocess.run(
        ["lpstat", "-r"], env=session.env, capture_output=True, text=True, check=False).stdout.find("is running") >= 0)
    job = os.path.join(folder, "job.pdf")
    admin = "/usr/sbin/lpadmin"
    session.do(admin, "-p", "Test", "-E", "-v", "file:" + job, "-m", "lsb/usr/cupsfilters/Generic-PDF_Printer-PDF.ppd",
               "-o", "PageSize=A4")
    session.do(admin, "-d", "Test")
    return job
