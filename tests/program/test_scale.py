"""The whole picture on every display, whatever the desktop's own scaling, and when the display changes
while the program runs."""

import os
import subprocess

import runs
from driver import output_of, wait, xdotool
from runs import EXIT, ProgramTest

SIZES = [(1366, 768), (1920, 1080), (2560, 1440), (3840, 2160)]
EXIT_BUTTON = (27, 509, 45, 31)  # design pixels


def xrandr(*arguments):
    subprocess.run(["xrandr", *map(str, arguments)], check=True, stderr=subprocess.DEVNULL)


class ScaleTest(ProgramTest):
    @classmethod
    def setUpClass(cls):
        for width, height in SIZES:
            name = f"{width}x{height}-"
            xrandr("--newmode", name, 60, width, width, width, width + 1, height, height, height, height + 1)
            xrandr("--addmode", "screen", name)

    def show_at(self, size):
        xrandr("--output", "screen", "--mode", "{}x{}-".format(*size))
        self.screen.width, self.screen.height = size

    def scaling(self, percent):
        """The desktop's own, as the settings of a desktop tell it to the programs that start."""
        subprocess.run(["xrdb", "-nocpp", "-merge"], input=f"Xft.dpi: {96 * percent // 100}\n", text=True,
                       check=True)

    def start(self, catalogue):
        catalogue.start()
        wait("the splash", catalogue.windows)
        xdotool("mousemove", *self.screen.design_to_screen(400, 300), "click", 1)
        catalogue.await_node(*EXIT)
        xdotool("mousemove", 0, 0)

    def expect_whole(self, catalogue, scale):
        """The button in the lowest corner stands where this scale puts it, and nothing scrolls."""
        def standing():
            place = catalogue.await_node(*EXIT).place()
            margin = [(size / scale - design) / 2
                      for size, design in zip((self.screen.width, self.screen.height), (800, 600))]
            wanted = (margin[0] + EXIT_BUTTON[0], margin[1] + EXIT_BUTTON[1], *EXIT_BUTTON[2:])
            return all(abs(a - b) <= 1 for a, b in zip((place.x, place.y, place.width, place.height), wanted))
        wait(f"the picture at {scale}", standing)
        self.assertIsNone(catalogue.find("scroll bar"))

    def picture(self):
        """Of the whole display, once it stands still."""
        seen = [""]

        def still():
            seen.append(output_of("import", "-window", "root", "-format", "%wx%h %#", "info:-"))
            return seen[-1] == seen[-2] and seen[-1]
        return wait("a picture that stands still", still)

    def test_every_scaling_on_every_display(self):
        alike = {}
        data = self.new_data()
        for percent in (100, 125, 150, 175, 200, 250):
            self.show_at(SIZES[0])
            self.scaling(percent)
            with self.catalogue(data) as catalogue:
                self.start(catalogue)
                for size in SIZES:
                    with self.subTest(percent=percent, size=size):
                        self.show_at(size)
                        self.expect_whole(catalogue, self.screen.scale)
                        # One program on every desk, and as sharp.
                        picture = self.picture()
                        self.assertEqual(alike.setdefault(size, picture), picture)

    def test_a_factor_of_ones_own(self):
        data = self.new_data()
        self.show_at((1920, 1080))
        self.scaling(100)
        self.addCleanup(os.environ.pop, "QT_SCALE_FACTOR", None)
        for factor, scale in (("1.25", 1.25), ("3", 1.8), ("0.8", 1)):
            os.environ["QT_SCALE_FACTOR"] = factor
            with self.subTest(factor=factor), self.catalogue(data) as catalogue:
                self.start(catalogue)
                self.expect_whole(catalogue, scale)


if __name__ == "__main__":
    runs.main(3840, 2160)
