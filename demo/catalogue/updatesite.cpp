#include "updatesite.h"

#include "figureplan.h"
#include "items.h"
#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/erro.h"
#include "platform/system/paths.h"
#include "publicar/publish.h"
#include "publicar/signing.h"
#include "render/models.h"
#include "render/photo.h"
#include "session/banco.h"
#include "session/numeros.h"
#include "verificar/report.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr QSize Photograph(450, 351);
constexpr int Quality = 88;
constexpr quint32 ChangedDescriptions = 3;
constexpr quint64 Attempts = 20;  // to draw a construction that the catalogue left without a figure

// A script in the language of updates.
class Script {
public:
    void Execute(const QString& statement) { Line(u"E:"_s + statement); }
    void Template(const QString& statement) { Line(u"B:"_s + statement); }
    void Data(QStringList values) {
        for (QString& value : values) {
            value.replace(u'\'', u"''"_s);
        }
        Line(values.join("<<;>>"_L1));
    }
    void Restart() { Line(u"R:"_s); }
    QByteArray Bytes() const { return text_.toUtf8(); }

private:
    void Line(const QString& line) { text_ += line + u"\r\n"_s; }
    QString text_;
};

QString Number(qint64 number) {
    return QString::number(number);
}

class SiteMaker {
public:
    SiteMaker(const Order& order, const QString& site)
        : order_(order),
          site_(site),
          assortment_(order.seed, order.sizes.parts),
          stock_(order.seed, order.sizes.components, 0, assortment_),
          catalogue_(std::make_shared<dao::Connection>(QDir(order.folder).filePath(u"Tarvo.mdb"_s),
                                                       SenhaBancoDados().toUtf8(),
                                                       dao::Connection::Mode::ReadOnly)) {
        if (catalogue_->Value("SELECT Versao FROM UMREGISTRO").toInt() != 1) {
            throw Erro(Erro::InvalidArgument,
                       u"O catálogo em \"%1\" já foi atualizado."_s.arg(order.folder));
        }
    }

    void Run() {
        // Nobody will publish a version 4 for this site, so the secret half is kept nowhere.
        const QString keys = aside_.filePath(u"chaves"_s);
        publicar::MakeKey(keys, u"demonstracao"_s);
        signer_ = publicar::ReadSigner(keys + u"/ChaveSecreta.txt"_s);
        MakeVersion2();
        MakeVersion3();
        catalogue_.reset();  // the trial copies the file
        const QString updated = aside_.filePath(u"catalogo"_s);
        Publish(2, order_.folder, updated);
        Publish(3, updated, {});
        sys::WriteWhole(site_ + u"/ChavesAtualizacao.txt"_s,
                        sys::ReadBytes(keys + u"/ChavesAtualizacao.txt"_s));
    }

private:
    struct PartRow {
        qint64 code = 0;
        QString number;
        QString description;
        QVariant gallery;
        QVariant figure;
    };

    QString In(int release, const QString& name) const {
        const QString path = aside_.filePath(u"%1/%2"_s.arg(release).arg(name));
        QDir().mkpath(QFileInfo(path).path());
        return path;
    }

    bool HasPictures() const { return order_.pictures != Pictures::None; }

    PartRow PartOf(const Construction& construction) const {
        dao::Statement row(*catalogue_,
                           "SELECT CodigoPeca, NumeroTarvoPeca, DescricaoPeca, "
                           "CodigoFotoPecaPesquisa, CodigoFigura FROM PECA WHERE CodigoPeca = ?1");
        row.Bind(1, qint64(construction.firstPart) + 1);
        row.Step();
        return {row.Int64(0), row.Column(1).toString(), row.Column(2).toString(), row.Column(3),
                row.Column(4)};
    }

    // --- pictures

    // A picture of another part of the construction; its file name, empty where none are made.
    QString DrawPhoto(int release, const Construction& construction, quint32 part) const {
        if (!HasPictures()) {
            return {};
        }
        const PartModel model = assortment_.ModelOf(construction, part);
        const QString name = u"v%1-"_s.arg(release) + assortment_.PhotoOf(model);
        const render::Assembly assembly = render::AssemblyFor(
            QString::fromUtf16(model.family->slug), ParametersOf(assortment_, model));
        const int reduction = order_.pictures == Pictures::Small ? 4 : 1;
        SavePicture(render::Photo(assembly, Photograph / reduction),
                    In(release, u"FotoPeca/"_s + name), Quality);
        return name;
    }

    // Nothing for a construction that explains itself, or without pictures.
    std::optional<Figure> DrawFigure(int release, const Construction& construction) {
        if (!HasPictures()) {
            return std::nullopt;
        }
        const std::vector<Item> items = ItemsOf(construction, assortment_, stock_, order_.seed);
        for (quint64 attempt = 1; attempt <= Attempts; ++attempt) {
            FigurePlan plan(order_.seed + attempt, assortment_);
            if (!plan.Add(construction, items)) {
                continue;
            }
            const QTemporaryDir drawn;
            Figure figure = plan.Draw(drawn.path()).front();
            // The figure and its companion for dense screens.
            const QString mark = u"v%1-"_s.arg(release);
            for (const QString& file : QDir(drawn.path()).entryList(QDir::Files)) {
                if (!QFile::copy(drawn.filePath(file), In(release, u"Figuras/"_s + mark + file))) {
                    throw Erro(Erro::PathFileAccess);
                }
            }
            figure.file.prepend(mark);
            return figure;
        }
        return std::nullopt;
    }

    void AddFigure(Script& script, qint64 code, const Figure& figure) const {
        script.Execute(u"INSERT INTO FIGURA (CodigoFigura, ArquivoFigura) VALUES (%1, '%2')"_s.arg(
            Number(code), figure.file));
        script.Template(
            u"INSERT INTO FIGURADETALHADA (CodigoFigura, CodigoFiguraDetalhada, ItemComponente, "
            "LLeft, TTop) VALUES (%1, 1?, '2?', 3?, 4?)"_s.arg(code));
        qint64 marker = 0;
        for (const Figure::Marker& each : figure.markers) {
            script.Data(
                {Number(++marker), each.item, Number(each.corner.x()), Number(each.corner.y())});
        }
    }

    // --- versions

    void MakeVersion2() {
        Script script;
        SetEmission(script, u"DateSerial(2026,6,1)"_s, u" B"_s);
        const auto& constructions = assortment_.Constructions();
        script.Template(u"UPDATE PECA SET DescricaoPeca = '1?' WHERE NumeroTarvoPeca = '2?'"_s);
        for (size_t i = 0; i < constructions.size() && i < ChangedDescriptions; ++i) {
            const PartRow part = PartOf(constructions[i]);
            script.Data({part.description + u", vedação reforçada"_s, part.number});
        }
        if (const QString photo =
                DrawPhoto(2, constructions.front(), constructions.front().parts - 1);
            !photo.isEmpty()) {
            script.Execute(u"UPDATE PECA SET ArquivoFotoPeca = '%1' WHERE CodigoPeca = %2"_s.arg(
                photo, Number(PartOf(constructions.front()).code)));
        }
        for (const Construction& construction : constructions) {
            if (!PartOf(construction).figure.isNull()) {
                continue;
            }
            if (const auto figure = DrawFigure(2, construction)) {
                AddFigure(script, NextFigure(), *figure);
                script.Execute(u"UPDATE PECA SET CodigoFigura = %1 WHERE CodigoPeca = %2"_s.arg(
                    Number(NextFigure()), Number(PartOf(construction).code)));
                break;
            }
        }
        sys::WriteWhole(In(2, u"Atualizacao/versao2.sdb"_s), script.Bytes());
    }

    void MakeVersion3() {
        Script script;
        SetEmission(script, u"DateSerial(2026,9,1)"_s, u" C"_s);
        const Construction& construction = ModelForNewPart();
        const PartRow model = PartOf(construction);
        const qint64 code = catalogue_->Value("SELECT Max(CodigoPeca) + 1 FROM PECA").toLongLong();
        const qint64 figureCode = NextFigure() + 1;  // version 2 took the next one
        const auto figure = DrawFigure(3, construction);
        if (figure) {
            AddFigure(script, figureCode, *figure);
        }
        const QString photo = DrawPhoto(3, construction, std::max(construction.parts, 2u) - 2);
        script.Execute(
            u"INSERT INTO PECA (CodigoPeca, NumeroTarvoPeca, DescricaoPeca, ArquivoFotoPeca, "
            "CodigoFotoPecaPesquisa, CodigoFigura) VALUES (%1, '%2', '%3', %4, %5, %6)"_s.arg(
                Number(code), FreeNumber(construction),
                QString(model.description).replace(u'\'', u"''"_s) + u", modelo 2026"_s,
                photo.isEmpty() ? u"Null"_s : u'\'' + photo + u'\'',
                model.gallery.isNull() ? u"Null"_s : model.gallery.toString(),
                figure ? Number(figureCode) : u"Null"_s));
        CopyRows(script, model.code, code);
        script.Restart();
        sys::WriteWhole(In(3, u"Atualizacao/versao3.sdb"_s), script.Bytes());
    }

    // The first construction that the catalogue has a figure of, or any.
    const Construction& ModelForNewPart() const {
        const auto& constructions = assortment_.Constructions();
        const auto found = std::find_if(
            constructions.begin(), constructions.end(),
            [this](const Construction& each) { return !PartOf(each).figure.isNull(); });
        return found == constructions.end() ? constructions.front() : *found;
    }

    // List, kits and vehicles of the new part are those of its model.
    void CopyRows(Script& script, qint64 from, qint64 to) const {
        struct Table {
            const char* query;
            const char16_t* statement;
        };
        static constexpr Table tables[] = {
            {"SELECT ItemComponente, CodigoComponente, ifnull(QuantidadeComponente, 'Null') "
             "FROM PECA_COMPONENTE WHERE CodigoPeca = ?1",
             u"INSERT INTO PECA_COMPONENTE (CodigoPeca, ItemComponente, CodigoComponente, "
             u"QuantidadeComponente) VALUES (%1, '1?', 2?, 3?)"},
            {"SELECT ItemComponente, CodigoJogoReparo FROM PECA_COMPONENTE_JOGOREPARO "
             "WHERE CodigoPeca = ?1",
             u"INSERT INTO PECA_COMPONENTE_JOGOREPARO (CodigoPeca, ItemComponente, "
             u"CodigoJogoReparo) VALUES (%1, '1?', 2?)"},
            {"SELECT CodigoVeiculo FROM VEICULO_PECA WHERE CodigoPeca = ?1",
             u"INSERT INTO VEICULO_PECA (CodigoVeiculo, CodigoPeca) VALUES (1?, %1)"},
        };
        for (const Table& table : tables) {
            script.Template(QString::fromUtf16(table.statement).arg(to));
            dao::Statement rows(*catalogue_, table.query);
            rows.Bind(1, from);
            while (rows.Step()) {
                QStringList values;
                for (int column = 0; column < rows.ColumnCount(); ++column) {
                    values += rows.Column(column).toString();
                }
                script.Data(values);
            }
        }
    }

    static void SetEmission(Script& script, const QString& date, const QString& addition) {
        script.Execute(
            u"UPDATE UMREGISTRO SET DataEmissao = %1, ComplementoDataEmissao = '%2'"_s.arg(
                date, addition));
    }

    qint64 NextFigure() const {
        return catalogue_->Value("SELECT ifnull(Max(CodigoFigura), 0) + 1 FROM FIGURA")
            .toLongLong();
    }

    QString FreeNumber(const Construction& construction) const {
        const QString prefix =
            QStringView(assortment_.Families()[construction.family].prefix).toString();
        dao::Statement taken(*catalogue_,
                             "SELECT 1 FROM PECA WHERE NumeroTarvoPeca = ?1 UNION ALL "
                             "SELECT 1 FROM COMPONENTE WHERE NumeroTarvoComponente = ?1 UNION ALL "
                             "SELECT 1 FROM JOGOREPARO WHERE NumeroTarvoJogoReparo = ?1");
        for (int tail = 2026; tail < 100000; ++tail) {
            const QString number = prefix + QString::number(tail);
            taken.Bind(1, number);
            const bool free = !taken.Step();
            taken.Reset();
            if (free && NormalizarNumero(number) == number) {
                return number;
            }
        }
        throw Erro(Erro::InternalError);
    }

    void Publish(int release, const QString& catalogue, const QString& keep) const {
        publicar::Order order;
        order.folder = aside_.filePath(Number(release));
        order.catalogue = catalogue;
        order.site = QDir(site_).absolutePath();
        order.keep = keep;
        order.release = release;
        order.replace = order_.overwrite;
        order.signers = {signer_};
        QList<verificar::Finding> findings;
        const std::vector<publicar::File> files = publicar::ReadFolder(order, findings);
        findings += publicar::Check(order, files);
        const bool faulty = std::any_of(findings.begin(), findings.end(), [](const auto& finding) {
            return finding.weight == verificar::Weight::Fault;
        });
        if (faulty) {
            throw Erro(Erro::InternalError, verificar::Report(catalogue, findings));
        }
        publicar::Publish(order, files);
    }

    const Order& order_;
    QString site_;
    Assortment assortment_;
    ComponentStock stock_;
    std::shared_ptr<dao::Connection> catalogue_;
    QTemporaryDir aside_;
    publicar::Signer signer_;
};

}  // namespace

void MakeUpdateSite(const Order& order, const QString& site) {
    SiteMaker(order, site).Run();
}

}  // namespace demo
