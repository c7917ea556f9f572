#include "verificar/pictures.h"

#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/system/paths.h"
#include "update/restos.h"
#include "verificar/missing.h"

#include <QDir>
#include <QHash>
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace verificar {
namespace {

// Design pixels of the box around a number on a figure.
constexpr int BoxWidth = 33;
constexpr int BoxHeight = 13;
constexpr int TourPages = 5;

// The files of one folder, found without regard to case.
class PictureFolder {
public:
    explicit PictureFolder(const QString& path) : folder_(path) {
        const QStringList names = folder_.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
        for (const QString& name : names) {
            names_.insert(name.toCaseFolded(), name);
        }
    }

    bool Holds(const QString& name) const { return names_.contains(name.toCaseFolded()); }

    // Empty for a file that is no picture.
    QSize SizeOf(const QString& name) const {
        QImageReader reader(folder_.filePath(names_.value(name.toCaseFolded())));
        reader.setDecideFormatFromContent(true);
        return reader.canRead() ? reader.size() : QSize();
    }

private:
    QDir folder_;
    QHash<QString, QString> names_;
};

// One column that names files, in its pass over the distinct names.
void CheckColumn(dao::Connection& catalogue, const QString& table, const QString& column,
                 const PictureFolder& folder, int examples, QList<Finding>& findings) {
    Cases missing(Weight::Fault, u"%1.%2: o arquivo não existe"_s.arg(table, column), examples);
    Cases damaged(Weight::Fault, u"%1.%2: o arquivo não é uma imagem"_s.arg(table, column),
                  examples);
    const QString sql =
        u"SELECT DISTINCT %1 FROM %2 WHERE coalesce(%1, '') <> ''"_s.arg(column, table);
    for (dao::Statement names(catalogue, sql.toUtf8()); names.Step();) {
        const QString name = names.Column(0).toString();
        if (!folder.Holds(name)) {
            missing.Add(name);
        } else if (folder.SizeOf(name).isEmpty()) {
            damaged.Add(name);
        }
    }
    missing.AppendTo(findings);
    damaged.AppendTo(findings);
}

void CheckNumbers(dao::Connection& catalogue, const PictureFolder& folder, int examples,
                  QList<Finding>& findings) {
    Cases outside(Weight::Fault, u"FIGURADETALHADA: número fora da figura"_s, examples);
    QString name;
    QSize size;
    for (dao::Statement marks(
             catalogue,
             "SELECT F.ArquivoFigura, D.LLeft, D.TTop, 'CodigoFigura ' || D.CodigoFigura || "
             "', marca ' || D.CodigoFiguraDetalhada || ': ' || D.LLeft || ', ' || D.TTop "
             "FROM FIGURA AS F INNER JOIN FIGURADETALHADA AS D ON D.CodigoFigura = F.CodigoFigura "
             "ORDER BY F.CodigoFigura");
         marks.Step();) {
        const QString file = marks.Column(0).toString();
        if (file != name) {
            name = file;
            size = folder.Holds(name) ? folder.SizeOf(name) : QSize();
        }
        const QPointF middle(marks.Column(1).toDouble() + BoxWidth / 2.0,
                             marks.Column(2).toDouble() + BoxHeight / 2.0);
        if (!size.isEmpty() && !QRectF(QPointF(), QSizeF(size)).contains(middle)) {
            outside.Add(u"%1 (figura de %2 por %3)"_s.arg(marks.Column(3).toString())
                            .arg(size.width())
                            .arg(size.height()));
        }
    }
    outside.AppendTo(findings);
}

}  // namespace

void CheckPictures(dao::Connection& catalogue, const QString& folder, int examples, bool whole,
                   QList<Finding>& findings) {
    const PictureFolder photos(sys::ToNative(folder + u"\\FotoPeca"_s));
    const PictureFolder figures(sys::ToNative(folder + u"\\Figuras"_s));
    UnlessMissing(whole, [&] {
        CheckColumn(catalogue, u"PECA"_s, u"ArquivoFotoPeca"_s, photos, examples, findings);
    });
    UnlessMissing(whole, [&] {
        CheckColumn(catalogue, u"FOTOPECAPESQUISA"_s, u"ArquivoFotoPecaPesquisa"_s, photos,
                    examples, findings);
    });
    UnlessMissing(whole, [&] {
        CheckColumn(catalogue, u"FIGURA"_s, u"ArquivoFigura"_s, figures, examples, findings);
    });
    UnlessMissing(whole, [&] { CheckNumbers(catalogue, figures, examples, findings); });

    Cases pages(Weight::Hint, u"Falta uma página do Conheça a Tarvo (800 por 573)"_s, TourPages);
    for (int page = 1; page <= TourPages; ++page) {
        const QString name = u"CK0%1.bmp"_s.arg(page);
        if (!figures.Holds(name)) {
            pages.Add(u"Figuras/"_s + name);
        }
    }
    pages.AppendTo(findings);
    Cases help(Weight::Hint, u"Falta a ajuda"_s, examples);
    const QString helpName = u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s;
    if (!sys::Exists(folder + u'\\' + helpName)) {
        help.Add(helpName);
    }
    help.AppendTo(findings);

    Cases rests(Weight::Hint,
                u"Arquivo temporário de uma atualização interrompida (a próxima o apaga)"_s,
                examples);
    for (const QString& place : {QString(), u"\\FotoPeca"_s, u"\\Figuras"_s}) {
        const QDir there(sys::ToNative(folder + place));
        for (const QString& name : there.entryList({u"*.tmp"_s}, QDir::Files)) {
            if (EhTemporario(name)) {
                rests.Add(place.mid(1) + (place.isEmpty() ? name : u'/' + name));
            }
        }
    }
    rests.AppendTo(findings);
}

}  // namespace verificar
