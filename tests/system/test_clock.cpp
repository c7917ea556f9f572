#include "platform/system/clock.h"
#include "support/test.h"

struct TestClock : Fixture {};

TEST(TestClock, Serials) {
    for (const auto& [moment, serial] : Each<QString, double>{
             {"day zero", "1899-12-30T00:00:00", 0.0},
             {"none", "1899-12-31T00:00:00", 1.0},
             {"leap day", "2000-02-29T12:00:00", 36585.5},
             {"before day zero", "1899-12-29T06:00:00", -1.25},
             {"one second", "2010-03-05T00:00:01", 40242 + 1.0 / 86400},
             // Summer time began at this midnight in São Paulo; the wall clock of others shows
             // it.
             {"skipped hour", "2018-11-04T00:30:00", 43408 + 0.5 / 24},
         }) {
        qputenv("TZ", "America/Sao_Paulo");
        const QDateTime back = sys::FromSerial(serial);
        QCOMPARE(back.toString(u"yyyy-MM-ddTHH:mm:ss"_s), moment);
        QCOMPARE(sys::ToSerial(back), serial);
        qunsetenv("TZ");
    }
    sys::SetClock([] { return QDateTime({2000, 2, 29}, {12, 0}); });
    QCOMPARE(sys::Now(), 36585.5);
    sys::SetClock({});
    QVERIFY(sys::Now() > 46000);
    QCOMPARE(sys::FromSerial(40242.9999999), sys::FromSerial(40243));
}
