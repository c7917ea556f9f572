#include "viewdata.h"

#include "platform/convert.h"
#include "platform/dao/dao.h"
#include "platform/system/paths.h"
#include "session/global.h"

#include <QDir>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace bench {
namespace {

constexpr int FirstCode = 980000;  // of what is made here; the demonstration's codes lie below
constexpr int SharingParts = 40;
constexpr int Photos = 8;
constexpr QSize PhotoSize(1600, 1200);

const ViewData Made{u"BANCADA20"_s, u"BANCADA1000"_s, u"BANCADACOMUM"_s};

void Insert(const QString& table, const QStringList& values) {
    gDB->Execute(u"INSERT INTO "_s + table + u" VALUES ("_s + values.join(u',') + u')');
}

QString Quoted(const QString& text) {
    return u'\'' + text + u'\'';
}

QString PhotoName(int code) {
    return u"bancada%1.jpg"_s.arg(code % Photos);
}

// Structure enough that a JPEG decoder has its usual work.
void MakePhotos() {
    const QString folder = sys::ToNative(gCaminho + u"FotoPeca"_s);
    QDir().mkpath(folder);
    for (int i = 0; i < Photos; ++i) {
        QImage photo(PhotoSize, QImage::Format_RGB32);
        QPainter painter(&photo);
        for (int y = 0; y < PhotoSize.height(); y += 8) {
            for (int x = 0; x < PhotoSize.width(); x += 8) {
                painter.fillRect(x, y, 8, 8, QColor::fromHsv((x + y * (i + 1)) % 360, 60, 200));
            }
        }
        photo.save(folder + u'/' + PhotoName(i), "JPG", 85);
    }
}

// A part with a photo, vehicles, and items of which every third belongs to a kit.
void MakePart(int code, const QString& number, int items) {
    const QString part = QString::number(code);
    Insert(u"PECA"_s, {part, Quoted(number), Quoted(u"Peça de bancada "_s + number),
                       Quoted(PhotoName(code)), u"NULL"_s, u"NULL"_s});
    for (int vehicle = 1; vehicle <= 25; ++vehicle) {
        Insert(u"VEICULO_PECA"_s, {QString::number(vehicle), part});
    }
    for (int item = 1; item <= items; ++item) {
        const QString stored = Quoted(QString::number(item).rightJustified(4));
        Insert(u"PECA_COMPONENTE"_s, {part, stored, QString::number(100 + 3 * item), u"1"_s});
        if (item % 3 == 0) {
            Insert(u"PECA_COMPONENTE_JOGOREPARO"_s, {part, stored, QString::number(1 + item % 9)});
        }
    }
}

}  // namespace

ViewData PrepareViewData() {
    const auto there = gDB->OpenRecordset(
        u"SELECT CodigoPeca FROM PECA WHERE NumeroTarvoPeca = "_s + Quoted(Made.largePart));
    if (!there->Eof()) {
        return Made;
    }
    MakePhotos();
    gWS->BeginTrans();
    MakePart(FirstCode, Made.smallPart, 20);
    MakePart(FirstCode + 1, Made.largePart, 1000);
    Insert(u"COMPONENTE"_s, {QString::number(FirstCode), Quoted(Made.sharedComponent),
                             Quoted(u"Componente de bancada"_s)});
    for (int i = 0; i < SharingParts; ++i) {
        const int code = FirstCode + 2 + i;
        MakePart(code, u"BANCADAX%1"_s.arg(i, 2, 10, QChar(u'0')), 5);
        Insert(u"PECA_COMPONENTE"_s,
               {QString::number(code), u"' 999'"_s, QString::number(FirstCode), u"1"_s});
    }
    gWS->CommitTrans();
    return Made;
}

}  // namespace bench
