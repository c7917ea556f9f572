"""The Debian package: what is in it, and its life in a root of its own: installed, started,
upgraded, removed. The programs of that root run on this machine's libraries."""

import glob
import gzip
import os
import shutil
import subprocess
import tempfile

import runs
from runs import PATIENCE, Catalogue, ProgramTest, wait

BUILD = os.environ["TARVO_BUILD"]
NAME = "tarvo-catalogo"
POINTER = "etc/tarvo-catalogo/Caminho.txt"
PROGRAMS = "usr/lib/tarvo-catalogo"
DATA_FOLDER_QUESTION = "tarvo-catalogo/pasta"


def run(*command, **options):
    """The command's output; its complaint when it fails."""
    done = subprocess.run(command, text=True, capture_output=True, timeout=600, check=False, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.stdout}{done.stderr}")
    return done.stdout


def plain_suite():
    """The packages of the distribution's plain suite and their versions, from the machine's own lists;
    None without a list of it."""
    codename = run("sh", "-c", ". /etc/os-release && printf %s $VERSION_CODENAME")
    packages = {}
    targets = run("apt-get", "indextargets", "--format", "$(CODENAME) $(FILENAME)",
                  "Created-By: Packages")
    for line in targets.splitlines():
        suite, _, index = line.partition(" ")
        if suite != codename:
            continue
        name = ""
        for field in run("/usr/lib/apt/apt-helper", "cat-file", index).splitlines():
            key, _, value = field.partition(": ")
            if key == "Package":
                name = value
            elif key == "Version":
                packages.setdefault(name, value)
            elif key == "Provides":
                for provided in value.split(", "):
                    virtual, _, version = provided.partition(" ")
                    packages.setdefault(virtual, version.strip("()= "))
    return packages or None


def unmet(depends, packages):
    """What of a package's dependencies these packages do not satisfy."""
    def satisfies(alternative):
        name, _, condition = alternative.strip().partition(" ")
        if name not in packages or not condition:
            return name in packages
        operator, version = condition.strip("()").split(" ")
        return subprocess.run(["dpkg", "--compare-versions", packages[name], operator, version],
                              check=False).returncode == 0
    return [need.strip() for need in depends.split(",")
            if not any(satisfies(alternative) for alternative in need.split("|"))]


class Root:
    """An empty root with a package database and an answer to the package's question."""

    def __init__(self, folder):
        self.folder = folder
        self.administration = os.path.join(folder, "var/lib/dpkg")
        for name in ("info", "updates", "triggers"):
            os.makedirs(os.path.join(self.administration, name))
        open(os.path.join(self.administration, "status"), "w", encoding="ascii").close()
        for name in ("etc", "var/cache/debconf"):
            os.makedirs(os.path.join(folder, name))
        with open(os.path.join(folder, "etc/debconf.conf"), "w", encoding="ascii") as file:
            file.write("Config: configdb\nTemplates: templatedb\n")
            for database in ("config", "template"):
                file.write(f"\nName: {database}db\nDriver: File\n"
                           f"Filename: /var/cache/debconf/{database}.dat\n")
        self.environment = {**os.environ, "DPKG_ROOT": folder, "DEBIAN_FRONTEND": "noninteractive"}

    def path(self, name):
        return os.path.join(self.folder, name)

    def answer(self, data_folder):
        run("debconf-set-selections", env=self.environment,
            input=f"{NAME} {DATA_FOLDER_QUESTION} string {data_folder}\n")

    def dpkg(self, *arguments):
        # Its dependencies are this machine's, and so is the shell that runs its scripts.
        run("dpkg", f"--root={self.folder}", "--force-script-chrootless", "--force-not-root",
            "--force-depends", "--force-bad-path", "--log=/dev/null", *arguments,
            env=self.environment)

    def read(self, name):
        with open(self.path(name), encoding="utf-8") as file:
            return file.read()


class PackageTest(ProgramTest):
    @classmethod
    def setUpClass(cls):
        cls.made = tempfile.TemporaryDirectory()
        run("cpack", "--config", os.path.join(BUILD, "CPackConfig.cmake"), "-B", cls.made.name)
        cls.package, = glob.glob(os.path.join(cls.made.name, "*.deb"))
        cls.content = os.path.join(cls.made.name, "content")
        run("dpkg-deb", "--extract", cls.package, cls.content)

    @classmethod
    def tearDownClass(cls):
        cls.made.cleanup()

    def programs(self):
        for folder in ("usr/bin", PROGRAMS):
            for entry in os.scandir(os.path.join(self.content, folder)):
                if os.access(entry.path, os.X_OK):
                    yield entry

    def test_every_program_answers_and_has_its_manual_page(self):
        names = sorted(entry.name for entry in self.programs())
        self.assertLessEqual({"CatalogoTarvo", "Tarvo.exe", "VerifAtualizCatalogoTarvo.exe",
                              "tarvo-catalogo", "tarvo-demo", "tarvo-verificar"}, set(names))
        version = run("dpkg-deb", "--field", self.package, "Version").strip()
        # No display is needed to be told how to use it.
        environment = {"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8"}
        for entry in self.programs():
            with self.subTest(entry.name):
                self.assertIn("Uso: ", run(entry.path, "--help", env=environment))
                self.assertEqual(run(entry.path, "--version", env=environment).split()[-1], version)
                page = os.path.join(self.content, "usr/share/man/man1", f"{entry.name}.1.gz")
                with gzip.open(page, "rt", encoding="utf-8") as file:
                    text = file.read()
                self.assertIn(entry.name, text.replace("\\-", "-"))
                complaints = subprocess.run(
                    ["groff", "-man", "-Tutf8", "-Kutf8", "-ww", "-z"], input=text, text=True,
                    capture_output=True, timeout=60, check=True, encoding="utf-8").stderr
                self.assertEqual(complaints, "")

    def test_needs_nothing_outside_the_plain_suite(self):
        packages = plain_suite()
        if not packages:
            self.skipTest("no package list of the plain suite here")
        self.assertEqual(unmet("libc6 (>= 9), libc6, debconf (>= 0.5) | debconf-9, no-such-library1",
                               packages),
                         ["libc6 (>= 9)", "no-such-library1"], "the check itself")
        depends = run("dpkg-deb", "--field", self.package, "Depends")
        self.assertIn("libqt6core6", depends)
        self.assertEqual(unmet(depends, packages), [])

    def test_programs_are_hardened(self):
        for entry in self.programs():
            if entry.is_symlink():
                continue
            with self.subTest(entry.name):
                header = run("readelf", "--file-header", "--program-headers", "--dynamic", entry.path)
                self.assertRegex(header, r"Type: +DYN", "position-independent")
                self.assertIn("GNU_RELRO", header)
                self.assertRegex(header, "BIND_NOW|Flags: .*NOW")
                symbols = run("readelf", "--dyn-syms", "--wide", entry.path)
                self.assertIn("__stack_chk_fail", symbols)
        catalogue = os.path.join(self.content, PROGRAMS, "CatalogoTarvo")
        self.assertRegex(run("readelf", "--dyn-syms", "--wide", catalogue), r"__\w+_chk@",
                         "fortified calls")

    def test_lintian_has_nothing_to_say(self):
        if not shutil.which("lintian"):
            self.skipTest("no lintian here")
        self.assertEqual(run("lintian", "--allow-root", "--fail-on", "error,warning",
                             "--tag-display-limit", "0", self.package), "")

    def test_schedule_is_there_and_switched_off(self):
        names = run("find", self.content, "-type", "f", "-name", "tarvo-catalogo-atualizar*").split()
        self.assertEqual(sorted(names), [
            os.path.join(self.content, f"usr/lib/systemd/system/tarvo-catalogo-atualizar@.{kind}")
            for kind in ("service", "timer")])
        if not shutil.which("systemd-analyze"):
            self.skipTest("no systemd here")
        # Among this machine's own units, with the program where it is now.
        units = []
        for name in names:
            units.append(os.path.join(self.folder, os.path.basename(name).replace("@", "@oficina")))
            with open(name, encoding="utf-8") as source, open(units[-1], "w", encoding="utf-8") as copy:
                copy.write(source.read().replace("/usr/bin/", f"{self.content}/usr/bin/"))
        done = subprocess.run(["systemd-analyze", "verify", "--man=no", *sorted(units)], text=True,
                              capture_output=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""))

    def test_desktop_files(self):
        share = os.path.join(self.content, "usr/share")
        run("desktop-file-validate", os.path.join(share, "applications/tarvo-catalogo.desktop"))
        for entry in os.scandir(os.path.join(share, "metainfo")):
            run("appstreamcli", "validate", "--no-net", entry.path)
        icons = os.path.join(share, "icons/hicolor")
        for entry in os.scandir(icons):
            if entry.name != "scalable":
                size = run("identify", "-format", "%wx%h",
                           os.path.join(entry.path, "apps/tarvo-catalogo.png"))
                self.assertEqual(size, entry.name)
        # Painted without the style sheets that the program has for it.
        svg = os.path.join(icons, "scalable/apps/tarvo-catalogo.svg")
        with open(svg, encoding="utf-8") as file:
            self.assertIn('fill="#123843"', file.read())

    def test_life_of_a_package(self):
        root = Root(os.path.join(self.folder, "root"))
        data = self.new_data()
        root.answer(data)
        root.dpkg("--install", self.package)
        self.assertEqual(root.read(POINTER), data)

        with Catalogue(self.screen, root.path(PROGRAMS)) as catalogue:
            subprocess.run([root.path("usr/bin/tarvo-catalogo")], check=True, timeout=PATIENCE)
            catalogue.wait_for_process()
            self.reach_search(catalogue)
            self.assertTrue(catalogue.has_open(os.path.join(data, "Tarvo.mdb")))
            catalogue.click(49, 524)
            wait("the end", catalogue.ended)

        other = os.path.join(self.folder, "outra pasta")
        with open(root.path(POINTER), "w", encoding="utf-8") as file:
            file.write(other)
        root.dpkg("--install", self.package)
        self.assertEqual(root.read(POINTER), other, "an upgrade keeps what was written by hand")
        root.answer("relativa")
        os.remove(root.path(POINTER))
        root.dpkg("--install", self.package)
        self.assertFalse(os.path.exists(root.path(POINTER)), "no path, no pointer")
        root.answer(data)
        root.dpkg("--install", self.package)

        before = sorted(os.listdir(data))
        root.dpkg("--remove", NAME)
        self.assertFalse(os.path.exists(root.path(PROGRAMS)))
        self.assertEqual(root.read(POINTER), data)
        root.dpkg("--purge", NAME)
        self.assertFalse(os.path.exists(root.path("etc/tarvo-catalogo")))
        self.assertEqual(sorted(os.listdir(data)), before)

    def test_installed_without_a_package(self):
        prefix = os.path.join(self.folder, "prefix")
        run("cmake", "--install", BUILD, "--prefix", prefix)
        pointer = os.path.join(prefix, "lib/tarvo-catalogo/Caminho.txt")
        with open(pointer, encoding="utf-8") as file:
            self.assertEqual(file.read(), "/var/lib/tarvo-catalogo")
        with open(pointer, "w", encoding="utf-8") as file:
            file.write("/srv/dados")
        run("cmake", "--install", BUILD, "--prefix", prefix)
        with open(pointer, encoding="utf-8") as file:
            self.assertEqual(file.read(), "/srv/dados")


if __name__ == "__main__":
    runs.main()
