"""Updates as users meet them: two computers on one folder, and the relaunch at the end of one."""

import os
import subprocess
import sys
import time

import runs
from driver import active_window, window_number, xdotool, xprop
from runs import ProgramTest, wait

SERVER = os.path.join(runs.HERE, "..", "support", "server.py")
VERIFY = (578, 17)
VERIFIER = "VerifAtualizCatalogoTarvo.exe"
QUESTION = "Existem Novas Atualizações. Deseja Instalar agora?"
DONE = "Atualização concluída com sucesso."
NOTHING = "Não existem Novas Atualizações."
REFUSED = ("Não foi possível Bloquear o Banco de Dados. (Outro Computador, de sua rede, já está "
           "Atualizando o Catálogo).")


class UpdateTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.site = os.path.join(self.folder, "site")
        os.makedirs(self.site)
        server = subprocess.Popen(
            [sys.executable, SERVER, self.site, os.path.join(self.folder, "log")],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(server.wait)
        self.addCleanup(server.stdin.close)
        self.addCleanup(server.stdout.close)
        os.environ["http_proxy"] = f"http://127.0.0.1:{server.stdout.readline().strip()}"
        self.addCleanup(os.environ.pop, "http_proxy")

    def publish(self, *script, files=(), folder="."):
        """Version 2: these files, then a script that brings a new component and these lines."""
        os.makedirs(os.path.join(self.site, folder), exist_ok=True)
        lists = [f"FOTO;{name};1" for name in files] + ["SDB;dois.txt;1"]
        lines = ["B:INSERT INTO COMPONENTE (CodigoComponente, NumeroTarvoComponente, "
                 "DescricaoComponente) VALUES (1?, '2?', '3?')",
                 "990001<<;>>QWX9001<<;>>Anel de teste", *script]
        for name, text in (("ListVersao2.txt", lists), ("dois.txt", lines), ("Versao.txt", ["2"])):
            with open(os.path.join(self.site, folder, name), "w", newline="\r\n", encoding="utf-8") as file:
                file.write("\n".join(text))

    def new_data(self):
        data = super().new_data()
        self.run_sql(data, "UPDATE UMREGISTRO SET Versao = 1, UrlAtualizacao = 'atualiza.exemplo'")
        return data

    def requests(self, name):
        with open(os.path.join(self.folder, "log"), encoding="utf-8") as log:
            return sum(f"/{name} " in line for line in log)

    def start(self, catalogue):
        catalogue.start()
        self.reach_search(catalogue)

    def verify(self, catalogue):
        catalogue.restore()
        catalogue.click(*VERIFY)

    def answer(self, catalogue, text, key="Return"):
        """The box with this text, whichever window lies on top. It is told of before it takes keys, and
        a key that comes too early is lost: so it is pressed again while the box stands."""
        def answered():
            if catalogue.box() == text:
                runs.activate(catalogue.window_ids()[-1])
                catalogue.press(key)
                time.sleep(0.2)
            return catalogue.box() != text
        wait(f"a box with {text!r}", lambda: catalogue.box() == text)
        wait("the box's end", answered)

    def find_new_component(self, catalogue):
        wait("the new search screen", catalogue.window_ids)
        catalogue.restore()
        self.type_number(catalogue, "qwx9001")
        grid = catalogue.await_node("table", "Resultado da pesquisa")
        wait("the new component", lambda: grid.rows() == 1 and grid.cell(0, 0) == "QWX9001")

    def search_again(self, catalogue, rows):
        catalogue.press("ctrl+a")
        catalogue.type("qwx9001")
        grid = catalogue.await_node("table", "Resultado da pesquisa")
        wait(f"{rows} rows", lambda: grid.rows() == rows)

    def test_two_computers(self):
        data = self.new_data()
        self.publish(files=["late"])
        with self.catalogue(data) as first, self.catalogue(data) as second:
            for catalogue in (first, second):
                self.start(catalogue)
            for catalogue in (first, second):
                self.verify(catalogue)
                wait("the question", lambda: catalogue.box() == QUESTION)
            self.answer(first, QUESTION, "alt+s")
            wait("the second pass", lambda: self.requests("Versao.txt") == 3)
            self.answer(second, QUESTION, "alt+s")
            self.answer(second, REFUSED)
            self.answer(first, DONE)
            self.find_new_component(first)
            self.verify(second)
            self.answer(second, NOTHING)
            self.find_new_component(second)
            for catalogue in (first, second):
                catalogue.restore()
                catalogue.click(49, 524)
                wait("the end", catalogue.ended)
        self.assertEqual(self.run_sql(data, "SELECT Versao FROM UMREGISTRO"), "2")
        self.assertFalse([name for name in os.listdir(data) if name.endswith(".tmp")])
        self.expect_sound(data)

    def schedule(self, catalogue):
        """An update without a window, beside one; its exit code and its line."""
        launcher = os.path.join(catalogue.folder, "Tarvo.exe")
        done = subprocess.run([launcher, "--atualizar"], stdout=subprocess.PIPE, text=True, check=False,
                              stderr=subprocess.STDOUT, timeout=60,
                              env={**os.environ, "DISPLAY": "", "XDG_RUNTIME_DIR": self.folder})
        return done.returncode, done.stdout

    def test_scheduler_beside_a_window(self):
        data = self.new_data()
        self.publish(files=[f"{folder}/late" for folder in range(6)])
        with self.catalogue(data) as catalogue:
            self.start(catalogue)
            self.verify(catalogue)
            self.answer(catalogue, QUESTION, "alt+s")
            wait("the installation", lambda: self.requests("ListVersao2.txt") == 1)
            self.assertEqual(self.schedule(catalogue), (
                4, "Outro computador, ou outro programa, já está atualizando o catálogo.\n"))
            self.answer(catalogue, DONE)
            self.find_new_component(catalogue)
            # What a scheduler brings is there for an open window, too.
            self.run_sql(data, "DELETE FROM COMPONENTE WHERE CodigoComponente = 990001")
            self.run_sql(data, "UPDATE UMREGISTRO SET Versao = 1")
            self.search_again(catalogue, rows=0)
            self.assertEqual(self.schedule(catalogue), (
                3, "O catálogo foi atualizado da versão 1 para a 2.\n"))
            self.search_again(catalogue, rows=1)

    def question(self, but=None):
        """The verifier's own window, by its identifier."""
        def found():
            ids = xprop("-root", "_NET_CLIENT_LIST").split("#")[-1].split(",")
            for window in map(str.strip, ids):
                pid = xprop("-id", window, "_NET_WM_PID").split("=")[-1].strip()
                try:
                    program = os.readlink(f"/proc/{pid}/exe")
                except OSError:
                    continue
                if program.endswith(VERIFIER) and window != but:
                    return window
            return None
        return wait("the question for a password", found)

    def guarded_data(self):
        data = self.new_data()
        self.run_sql(data, "UPDATE UMREGISTRO SET UrlAtualizacao = 'atualiza.exemplo/guarded'")
        return data

    def test_password_of_a_proxy(self):
        data = self.guarded_data()
        self.publish(folder="guarded")
        with self.catalogue(data) as catalogue:
            self.start(catalogue)
            self.verify(catalogue)
            window = self.question()
            xdotool("windowminimize", window)
            catalogue.restore()
            wait("the question out of sight", lambda: active_window() != window_number(window))
            self.verify(catalogue)
            wait("the question back", lambda: active_window() == window_number(window))
            catalogue.type("maria")
            catalogue.press("Tab")
            catalogue.type("errada")
            catalogue.press("Return")
            # Refused: the user stays, and the password is wanted at once.
            again = self.question(but=window)
            wait("the second question", lambda: active_window() == window_number(again))
            catalogue.type("s3nha")
            catalogue.press("Return")
            # Nobody asks once more, neither the second check nor the installation.
            self.answer(catalogue, QUESTION, "alt+s")
            self.answer(catalogue, DONE)
            self.find_new_component(catalogue)
        self.assertFalse([name for name in os.listdir(data) if name.endswith(".tmp")])

    def test_the_question_goes_with_the_program(self):
        data = self.guarded_data()
        self.publish(folder="guarded")
        with self.catalogue(data) as catalogue:
            self.start(catalogue)
            self.verify(catalogue)
            window = self.question()
            pid = int(xprop("-id", window, "_NET_WM_PID").split("=")[-1])
            catalogue.restore()
            catalogue.click(49, 524)
            wait("the verifier's end", lambda: not os.path.exists(f"/proc/{pid}/exe"))
            wait("the end", catalogue.ended)
        self.assertFalse([name for name in os.listdir(data) if name.endswith(".tmp")])

    def test_relaunch(self):
        data = self.new_data()
        self.publish("R:", "E:UPDATE UMREGISTRO SET ComplementoDataEmissao = ' (2)'")
        with self.catalogue(data) as catalogue:
            self.start(catalogue)
            old = catalogue.pid
            self.verify(catalogue)
            self.answer(catalogue, QUESTION, "alt+s")
            self.answer(catalogue, DONE)
            catalogue.wait_for_process(other_than=old)
            self.assertNotIn(old, catalogue.running())
            self.reach_search(catalogue)
            self.find_new_component(catalogue)


if __name__ == "__main__":
    runs.main()
