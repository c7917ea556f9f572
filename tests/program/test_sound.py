"""Two programs on one catalogue, damaged pages, programs killed at any moment."""

import os
import random
import signal
import time

import runs
from runs import EXIT, WORD, ProgramTest, wait

PAGE = 4096


class SoundTest(ProgramTest):
    def test_two_programs(self):
        data = self.new_data()
        with self.catalogue(data) as first, self.catalogue(data) as second:
            for catalogue in (first, second):
                catalogue.start()
                self.reach_search(catalogue)
            # The second one's window lies on top.
            self.type_number(second, "1")
            first.restore()
            self.type_number(first, "2")
            first.click(49, 524)
            wait("the first one's end", first.ended)
            self.assertFalse(second.ended())
        self.expect_sound(data)

    def test_one_byte_changed_in_every_page(self):
        data = self.new_data()
        path = os.path.join(data, "Tarvo.mdb")
        with open(path, "r+b") as file:
            for page in range(8, os.path.getsize(path) // PAGE):
                file.seek(page * PAGE + 1000)
                byte = file.read(1)
                file.seek(-1, os.SEEK_CUR)
                file.write(bytes([byte[0] ^ 0x10]))
        with self.catalogue(data) as catalogue:
            process = catalogue.start_bare(WORD)
            wait("the search screen or a box", lambda: catalogue.box() or catalogue.find(*EXIT))
            if not catalogue.box():
                catalogue.click(634, 161)
                catalogue.await_node("text", "Nº Tarvo")
                catalogue.type("1")
            self.expect_box_then_end(catalogue, process, "Erro nº: 3049\n")

    def test_killed_at_any_moment(self):
        data = self.new_data()
        seed = random.randrange(1 << 32)
        chance = random.Random(seed)
        with self.catalogue(data) as catalogue:
            for round_number in range(10):
                with self.subTest(seed=seed, round=round_number):
                    process = catalogue.start_bare(WORD)
                    end = time.monotonic() + chance.uniform(0.05, 3)
                    while time.monotonic() < end:
                        # Skips the splash, opens the panel, changes the customer, types.
                        catalogue.click(*chance.choice([(400, 300), (634, 161), (490, 105)]))
                        catalogue.press(chance.choice(["Down", "Up", "Return", "1", "a"]))
                    process.send_signal(signal.SIGKILL)
                    process.wait()
                    self.expect_sound(data)
            catalogue.start()
            self.reach_search(catalogue)
            self.type_number(catalogue, "1")


if __name__ == "__main__":
    runs.main()
