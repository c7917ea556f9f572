"""How the program starts, and the many ways in which it must refuse to."""

import os
import shutil
import subprocess

import runs
from runs import PATIENCE, TOOL, WORD, ProgramTest, wait

NO_WORD = 'Erro nº: -3\nPara acessar o Catálogo TARVO-LINDEN: executar "Tarvo.exe"'


class StartTest(ProgramTest):
    def test_without_the_word(self):
        # Before any data folder is looked at: there is no catalogue here at all.
        for words in ([], ["outra"], [WORD, "mais"], ["INICIO PAINELVERDE"]):
            with self.subTest(words), self.catalogue() as catalogue:
                process = catalogue.start_bare(*words)
                self.assertEqual(self.expect_box_then_end(catalogue, process, "Erro"), NO_WORD)

    def test_word_in_lower_case_with_blanks(self):
        with self.catalogue(self.new_data()) as catalogue:
            catalogue.start_bare("  iniciopainelverde ")
            self.reach_search(catalogue)

    def test_data_folder(self):
        data = self.new_data()
        accents = os.path.join(self.folder, "Peças & Ônibus")
        shutil.copytree(data, accents, symlinks=True)
        for pointer in (data + "/", data + "\\", data.replace("/", "\\"), data.upper(),
                        accents, accents.encode("cp1252"), b"\xef\xbb\xbf" + data.encode()):
            with self.subTest(pointer), self.catalogue(pointer) as catalogue:
                catalogue.start()
                self.reach_search(catalogue)

    def test_data_beside_the_program(self):
        with self.catalogue() as catalogue:
            for entry in os.scandir(self.new_data()):
                os.rename(entry.path, os.path.join(catalogue.folder, entry.name))
            catalogue.start()
            self.reach_search(catalogue)

    def test_bad_data_folder(self):
        data = self.new_data()
        empty = os.path.join(self.folder, "empty")
        os.makedirs(empty)
        cases = {
            "empty file": ("", 3024),
            "line end": (data + "\n", 3044),
            "missing folder": ("D:\\Dados", 3044),
            "folder without the file": (empty, 3024),
            "a picture": (b"\x89PNG\r\n\x1a\n" + bytes(range(256)) * 40, 3044),
        }
        for name, (pointer, number) in cases.items():
            with self.subTest(name), self.catalogue(pointer) as catalogue:
                process = catalogue.start_bare(WORD)
                self.expect_box_then_end(catalogue, process, f"Erro nº: {number}\n")

    def test_bad_catalogue(self):
        def picture(path):
            with open(path, "wb") as file:
                file.write(b"BM" + bytes(range(256)) * 64)

        def truncated(path):
            os.truncate(path, os.path.getsize(path) // 2)

        def first_page_changed(path):
            with open(path, "r+b") as file:
                file.seek(300)
                byte = file.read(1)
                file.seek(300)
                file.write(bytes([byte[0] ^ 1]))

        def other_password(path):
            os.remove(path)
            subprocess.run([TOOL, "make", path, "outra senha"], check=True)

        cases = [(picture, 3343), (lambda path: os.truncate(path, 0), 3343), (truncated, 3049),
                 (first_page_changed, 3049), (other_password, 3031),
                 (os.remove, 3024)]
        for spoil, number in cases:
            data = self.new_data()
            spoil(os.path.join(data, "Tarvo.mdb"))
            with self.subTest(spoil.__name__), self.catalogue(data) as catalogue:
                process = catalogue.start_bare(WORD)
                self.expect_box_then_end(catalogue, process, f"Erro nº: {number}\n")


class LauncherTest(ProgramTest):
    def launch(self, catalogue, *arguments, **environment):
        return subprocess.Popen(
            [os.path.join(catalogue.folder, "Tarvo.exe"), *arguments], text=True,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, env={**os.environ, **environment})

    def test_help_and_version(self):
        with self.catalogue() as catalogue:
            for option, expected in (("--help", "Uso: Tarvo.exe"), ("--version", "Tarvo.exe 1.")):
                process = self.launch(catalogue, option)
                self.assertIn(expected, process.communicate(timeout=PATIENCE)[0])
                self.assertEqual(process.returncode, 0)

    def test_failures(self):
        for arguments in (["abc"], ["12", "13"], ["-1"], ["0"], ["99999999999999999999"], []):
            with self.subTest(arguments), self.catalogue() as catalogue:
                os.remove(os.path.join(catalogue.folder, "CatalogoTarvo"))
                process = self.launch(catalogue, *arguments)
                catalogue.pid = process.pid
                text = wait("the launcher's box", catalogue.box)
                catalogue.answer_box(lambda: process.poll() is not None)
                self.assertEqual(process.communicate(timeout=PATIENCE)[1].strip(), text)
                self.assertEqual(process.returncode, 1)

    def test_failure_without_a_display(self):
        with self.catalogue() as catalogue:
            process = self.launch(catalogue, "abc", DISPLAY="")
            self.assertIn("abc", process.communicate(timeout=PATIENCE)[1])
            self.assertEqual(process.returncode, 1)

    def test_waits_for_the_process_that_it_is_given(self):
        with self.catalogue(self.new_data()) as catalogue:
            old = catalogue.start_bare(WORD)
            self.reach_search(catalogue)
            # Without pipes: what the launcher starts would hold them open.
            launcher = subprocess.Popen([os.path.join(catalogue.folder, "Tarvo.exe"), str(old.pid)])
            with self.assertRaises(subprocess.TimeoutExpired):
                launcher.wait(1)
            self.assertEqual(catalogue.running(), [old.pid])
            old.kill()
            # Not fetched yet by its parent, this test: ended all the same.
            self.assertEqual(launcher.wait(PATIENCE), 0)
            old.wait()
            catalogue.wait_for_process()
            self.reach_search(catalogue)


if __name__ == "__main__":
    runs.main()
