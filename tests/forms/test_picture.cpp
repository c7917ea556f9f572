#include "platform/forms/controls.h"
#include "platform/forms/densepicture.h"
#include "platform/forms/picturefile.h"
#include "support/testmain.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestPicture : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;

    QString Save(const QString& name, QSize size, Qt::GlobalColor colour) {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(colour);
        const QString path = folder_.filePath(name);
        return picture.save(path) ? path : QString();
    }

private Q_SLOTS:
    void companionOfThreeTimesTheSize_data() {
        // Names of its own for each: two files of one size, written in one tick of the file system's
        // clock, are one to the cache of pictures.
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QString>("companion");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("taken");
        QTest::newRow("fits") << u"a.png"_s << u"a@3x.png"_s << QSize(120, 60) << true;
        QTest::newRow("other size") << u"c.png"_s << u"c@3x.png"_s << QSize(119, 60) << false;
        QTest::newRow("other picture's") << u"d.png"_s << u"b@3x.png"_s << QSize(120, 60) << false;
    }

    void companionOfThreeTimesTheSize() {
        QFETCH(QString, picture);
        QFETCH(QString, companion);
        QFETCH(QSize, size);
        QFETCH(bool, taken);
        const QString path = Save(picture, {40, 20}, Qt::red);
        const QString dense = Save(companion, size, Qt::blue);
        QVERIFY(!path.isEmpty() && !dense.isEmpty());
        QCOMPARE(!forms::LoadDensePicture(path, {40, 20}).isNull(), taken);
        QVERIFY(QFile::remove(dense));
    }

    void namesWithoutAnEndingHaveNone() {
        QVERIFY(forms::LoadDensePicture(u"figura"_s, {1, 1}).isNull());
        QVERIFY(forms::LoadDensePicture(QString(), {}).isNull());
    }

    // The companion adds pixels, never size: numbers are placed by the picture's own.
    void theCompanionShowsWhereThePictureHasTooFewPixels() {
        QPixmap plain(40, 20);
        plain.fill(Qt::red);
        QPixmap dense(120, 60);
        dense.fill(Qt::blue);
        forms::Picture natural(u"p"_s, QString(), nullptr, forms::Picture::Mode::Natural);
        natural.resize(60, 40);
        natural.SetPixmap(plain, dense);
        QCOMPARE(natural.PictureRect(), QRectF(0, 0, 40, 20));

        forms::Picture fitted(u"p"_s, QString(), nullptr);
        fitted.SetPixmap(plain, dense);
        for (const auto& [size, colour] :
             {std::pair(QSize(40, 20), Qt::red), std::pair(QSize(80, 40), Qt::blue)}) {
            fitted.resize(size);
            QCOMPARE(fitted.grab().toImage().pixelColor(5, 5), QColor(colour));
        }
    }
};

TARVO_TEST(TestPicture);

#include "test_picture.moc"
