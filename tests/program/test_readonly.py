"""A data folder on a share that may only be read, or that is only read. Runs as an ordinary user,
because nothing is read-only to root."""

import hashlib
import os
import stat
import subprocess
import tempfile

import runs
import stations
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

    def test_daily_work_writes_nothing(self):
        """Searching, choosing customers, leafing, printing: from the start to the settings."""
        data = self.new_data()
        # No check for updates comes in between, which would note its date.
        self.run_sql(data, "UPDATE UMREGISTRO SET DataUltimaVerificacao = "
                           "julianday('now', 'localtime') - julianday('1899-12-30')")
        before = picture_of(data)
        with self.catalogue(data) as tour:
            tour.data = data
            tour.pictures = self.folder
            for station in stations.STATIONS[:stations.STATIONS.index(stations.settings)]:
                station(tour)
            tour.click(*stations.LEAVE)
            wait("the end", tour.ended)
        self.assertEqual(picture_of(data), before)


def picture_of(folder):
    """Every file's content and time, and the folders' times, which tell of a file that came and
    went."""
    found = {}
    for path, _, names in os.walk(folder, followlinks=True):
        found[path] = os.stat(path).st_mtime_ns
        for name in names:
            file = os.path.join(path, name)
            with open(file, "rb") as content:
                found[file] = (os.stat(file).st_mtime_ns, hashlib.sha256(content.read()).hexdigest())
    return found


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
