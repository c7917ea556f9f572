#include "platform/forms/scale.h"
#include "support/test.h"

struct TestScale : Fixture {};

TEST(TestScale, ScaleFillsTheScreenEvenly) {
    const std::pair<QSize, double> cases[] = {
        {{800, 600}, 1},      {{1366, 768}, 1.28}, {{1920, 1080}, 1.8}, {{3840, 2160}, 3.6},
        {{1024, 740}, 1.233}, {{640, 480}, 1},     {{600, 800}, 1},     {{0, 0}, 1},
    };
    for (const auto& [screen, scale] : cases) {
        QCOMPARE(forms::ScaleFor(screen), scale);
    }
    for (int width = 800; width < 4000; width += 7) {
        const double scale = forms::ScaleFor({width, width});
        QVERIFY(qRound(width / scale) >= forms::PictureSize.width());
    }
}
