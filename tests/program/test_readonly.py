"""A data folder on a share that may only be read. Runs as an ordinary user, because nothing is
read-only to root."""

import os
import stat
import subprocess
import tempfile

import runs
from runs import EXIT, ProgramTest, wait

NOBODY = 65534


class ReadOnlyTest(ProgramTest):
    def test_searches_go_on(self):
        data = self.new_data()
        make_read_only(data)
        with self.catalogue(data) as catalogue:
            catalogue.start()
            # Choosing a customer writes nothing, so nothing is said.
            wait("the search screen", lambda: catalogue.find(*EXIT))
            self.type_number(catalogue, "1")
            self.assertFalse(catalogue.box())


def make_read_only(folder):
    for entry in os.scandir(folder):
        if entry.is_file():
            os.chmod(entry.path, stat.S_IRUSR | stat.S_IRGRP | stat.S_IROTH)
    os.chmod(folder, 0o555)


def become_an_ordinary_user():
    """What the tests need goes along, for the sources may lie where only root may look."""
    folder = tempfile.mkdtemp()
    runs.PROGRAMS = os.path.join(folder, "programs")
    runs.copy_data(runs.DATA, os.path.join(folder, "data"))
    runs.stage(os.environ["TARVO_PROGRAMS"], runs.PROGRAMS)
    runs.DATA = os.path.join(folder, "data")
    subprocess.run(["chown", "-R", f"{NOBODY}:{NOBODY}", folder], check=True)
    os.setgroups([])
    os.setgid(NOBODY)
    os.setuid(NOBODY)


if __name__ == "__main__":
    if os.getuid() == 0:
        become_an_ordinary_user()
    runs.main()
