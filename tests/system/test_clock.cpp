#include "platform/system/clock.h"
#include "support/testmain.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestClock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void Serials_data() {
        QTest::addColumn<QString>("moment");
        QTest::addColumn<double>("serial");
        QTest::newRow("day zero") << u"1899-12-30T00:00:00"_s << 0.0;
        QTest::newRow("none") << u"1899-12-31T00:00:00"_s << 1.0;
        QTest::newRow("leap day") << u"2000-02-29T12:00:00"_s << 36585.5;
        QTest::newRow("before day zero") << u"1899-12-29T06:00:00"_s << -1.25;
        QTest::newRow("one second") << u"2010-03-05T00:00:01"_s << 40242 + 1.0 / 86400;
        // Summer time began at this midnight in São Paulo; the wall clock of others shows it.
        QTest::newRow("skipped hour") << u"2018-11-04T00:30:00"_s << 43408 + 0.5 / 24;
    }
    void Serials() {
        QFETCH(QString, moment);
        QFETCH(double, serial);
        qputenv("TZ", "America/Sao_Paulo");
        const QDateTime back = sys::FromSerial(serial);
        QCOMPARE(back.toString(u"yyyy-MM-ddTHH:mm:ss"_s), moment);
        QCOMPARE(sys::ToSerial(back), serial);
        qunsetenv("TZ");
    }

    void RoundsToTheSecond() { QCOMPARE(sys::FromSerial(40242.9999999), sys::FromSerial(40243)); }

    void OwnClock() {
        const QDateTime moment(QDate(2024, 5, 6), QTime(7, 8, 9));
        sys::SetClock([moment] { return moment; });
        QCOMPARE(sys::Now(), sys::ToSerial(moment));
        sys::SetClock({});
        QVERIFY(sys::Now() > sys::ToSerial(moment));
    }
};

TARVO_TEST(TestClock);
#include "test_clock.moc"
