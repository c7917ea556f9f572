"""Updates as users meet them: two computers on one folder, and the relaunch at the end of one."""

import os
import subprocess
import sys

import runs
from runs import TOOL, ProgramTest, wait

SERVER = os.path.join(runs.HERE, "..", "support", "server.py")
VERIFY = (578, 17)
QUESTION = "Existem Novas Atualizações. Deseja Instalar agora?"
DONE = "Atualização concluída com sucesso."
NOTHING = "Não existem Novas Atualizações."
REFUSED = ("Não foi possível Bloquear o Banco de Dados. (Outro Computador, de sua rede, já está "
           "Atualizando o Catálogo).")

# Stands in for the program that asks the server: knows that version 2 is there.
VERIFIER = """#!/bin/sh
path=$(printf %s "${{1#*|}}" | tr '\\\\' /)
version=$('{tool}' value '{data}/Tarvo.mdb' 'SELECT Versao FROM UMREGISTRO')
echo "$path" >>'{data}/verifier.log'
printf '1%s|2' "$version" >"$path"
"""


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

    def publish(self, *script, files=()):
        """Version 2: these files, then a script that brings a new component and these lines."""
        lists = [f"FOTO;{name};1" for name in files] + ["SDB;dois.txt;1"]
        lines = ["B:INSERT INTO COMPONENTE (CodigoComponente, NumeroTarvoComponente, "
                 "DescricaoComponente) VALUES (1?, '2?', '3?')",
                 "990001<<;>>QWX9001<<;>>Anel de teste", *script]
        for name, text in (("ListVersao2.txt", lists), ("dois.txt", lines)):
            with open(os.path.join(self.site, name), "w", newline="\r\n", encoding="utf-8") as file:
                file.write("\n".join(text))

    def new_data(self):
        data = super().new_data()
        self.run_sql(data, "UPDATE UMREGISTRO SET Versao = 1, UrlAtualizacao = 'atualiza.exemplo'")
        return data

    def run_sql(self, data, sql):
        subprocess.run([TOOL, "run", os.path.join(data, "Tarvo.mdb"), sql], check=True)

    def value(self, data, sql):
        return subprocess.run([TOOL, "value", os.path.join(data, "Tarvo.mdb"), sql], check=True,
                              capture_output=True, text=True).stdout

    def start(self, catalogue, data):
        verifier = os.path.join(catalogue.folder, "VerifAtualizCatalogoTarvo.exe")
        with open(verifier, "w", encoding="utf-8") as file:
            file.write(VERIFIER.format(tool=TOOL, data=data))
        os.chmod(verifier, 0o755)
        catalogue.start()
        self.reach_search(catalogue)

    def verify(self, catalogue):
        catalogue.restore()
        catalogue.click(*VERIFY)

    def answer(self, catalogue, text, key="Return"):
        """The box with this text, whichever window lies on top."""
        wait(f"a box with {text!r}", lambda: catalogue.box() == text)
        runs.activate(catalogue.window_ids()[-1])
        catalogue.press(key)
        wait("the box's end", lambda: catalogue.box() != text)

    def find_new_component(self, catalogue):
        catalogue.restore()
        self.type_number(catalogue, "qwx9001")
        grid = catalogue.find("table", "Resultado da pesquisa")
        wait("the new component", lambda: grid.rows() == 1 and grid.cell(0, 0) == "QWX9001")

    def test_two_computers(self):
        data = self.new_data()
        self.publish(files=["late"])
        with self.catalogue(data) as first, self.catalogue(data) as second:
            for catalogue in (first, second):
                self.start(catalogue, data)
            for catalogue in (first, second):
                self.verify(catalogue)
                wait("the question", lambda: catalogue.box() == QUESTION)
            self.answer(first, QUESTION, "alt+s")
            with open(os.path.join(data, "verifier.log"), encoding="utf-8") as log:
                seen = []
                wait("the second pass", lambda: seen.extend(log.readlines()) or len(seen) == 3)
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
        self.assertEqual(self.value(data, "SELECT Versao FROM UMREGISTRO"), "2")
        self.assertFalse([name for name in os.listdir(data) if name.endswith(".tmp")])
        subprocess.run([TOOL, "check", os.path.join(data, "Tarvo.mdb")], check=True)

    def test_relaunch(self):
        data = self.new_data()
        self.publish("R:", "E:UPDATE UMREGISTRO SET ComplementoDataEmissao = ' (2)'")
        with self.catalogue(data) as catalogue:
            self.start(catalogue, data)
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
