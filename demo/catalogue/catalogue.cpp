#include "catalogue.h"

#include "crossreferences.h"
#include "figureplan.h"
#include "inserter.h"
#include "items.h"
#include "kits.h"
#include "numbers.h"
#include "platform/system/clock.h"
#include "stock.h"
#include "streams.h"
#include "vehicles.h"

#include <QDate>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

// What no part uses: the search finds it, and opening it says so.
quint32 Spare(quint32 count, quint32 most) {
    return std::min(most, count / 50);
}

constexpr quint32 PercentWithoutList = 3;  // of the parts that could have one
constexpr quint32 PercentWithoutPhoto = 2;
constexpr quint32 PercentOffGallery = 1;
constexpr quint32 PercentAsRequired = 1;  // items without a quantity

template <typename Number>
qlonglong CodeOf(Number index) {
    return static_cast<qlonglong>(index) + 1;
}

// Letters of a component's number, by what it is.
QStringView PrefixOf(ComponentKind kind) {
    switch (Components()[static_cast<size_t>(kind)].group) {
        case Class::Seal:
        case Class::Membrane:
            return u"KA";
        case Class::Spring:
            return u"KM";
        case Class::Fixing:
            return u"KF";
        case Class::PistonRing:
        case Class::Bearing:
            return u"KB";
        default:
            return u"KC";
    }
}

class Filler {
public:
    Filler(dao::Connection& connection, const Sizes& sizes, quint64 seed,
           const QString& figureFolder)
        : connection_(connection),
          sizes_(sizes),
          seed_(seed),
          figureFolder_(figureFolder),
          assortment_(seed, sizes.parts),
          stock_(seed, sizes.components, Spare(sizes.components, 7), assortment_),
          figures_(seed, assortment_),
          kits_(seed, sizes.kits, Spare(sizes.kits, 5), assortment_),
          fleet_(seed, sizes.vehicles, Spare(sizes.vehicles, 3)) {}

    void Run() {
        TakeNumbers();
        AddCompanies();
        AddGallery();
        AddVehicles();
        AddParts();
        AddFigures();
        AddComponents();
        AddKits();
        AddCrossReferences();
        SetRecord();
    }

private:
    void TakeNumbers() {
        OwnNumbers numbers(sizes_.parts + sizes_.components + sizes_.kits);
        Random random(seed_, Stream::Numbers);
        for (const Construction& construction : assortment_.Constructions()) {
            const QStringView prefix(assortment_.Families()[construction.family].prefix);
            for (quint32 i = 0; i < construction.parts; ++i) {
                partNumbers_.append(numbers.Take(prefix, random));
            }
        }
        for (quint32 i = 0; i < sizes_.components; ++i) {
            componentNumbers_.append(numbers.Take(PrefixOf(stock_.KindOf(i)), random));
        }
        for (quint32 i = 0; i < sizes_.kits; ++i) {
            kitNumbers_.append(numbers.Take(u"JR", random));
        }
    }

    void AddCompanies() {
        Inserter rows(
            connection_, "CLIENTECONCORRENTE",
            "CodigoClienteConcorrente, DescricaoClienteConcorrente, TipoClienteConcorrente");
        quint32 company = 0;
        for (const demo::Maker& maker : Makers()) {
            rows.Add(CodeOf(company++), QString::fromUtf16(maker.company.name), u"I"_s);
        }
        for (const Company& competitor : Competitors()) {
            rows.Add(CodeOf(company++), QString::fromUtf16(competitor.name), u"C"_s);
        }
    }

    void AddGallery() {
        Inserter rows(connection_, "FOTOPECAPESQUISA",
                      "CodigoFotoPecaPesquisa, DescricaoFotoPecaPesquisa, ArquivoFotoPecaPesquisa");
        quint32 family = 0;
        for (const Family& each : assortment_.Families()) {
            rows.Add(CodeOf(family++), QString::fromUtf16(each.caption),
                     Assortment::GalleryPhotoOf(each));
        }
    }

    void AddVehicles() {
        Inserter rows(connection_, "VEICULO",
                      "CodigoVeiculo, DescricaoVeiculo, CodigoClienteConcorrente");
        quint32 vehicle = 0;
        for (const Fleet::Vehicle& each : fleet_.Vehicles()) {
            rows.Add(CodeOf(vehicle++), each.description, CodeOf(each.maker));
        }
    }

    void AddParts() {
        Inserter parts(connection_, "PECA",
                       "CodigoPeca, NumeroTarvoPeca, DescricaoPeca, ArquivoFotoPeca,"
                       "CodigoFotoPecaPesquisa, CodigoFigura");
        Inserter list(connection_, "PECA_COMPONENTE",
                      "CodigoPeca, ItemComponente, CodigoComponente, QuantidadeComponente");
        Inserter kitItems(connection_, "PECA_COMPONENTE_JOGOREPARO",
                          "CodigoPeca, ItemComponente, CodigoJogoReparo");
        Inserter fits(connection_, "VEICULO_PECA", "CodigoVeiculo, CodigoPeca");
        for (const Construction& construction : assortment_.Constructions()) {
            const std::vector<Item> items = ItemsOf(construction, assortment_, stock_, seed_);
            const std::vector<Kit> kits = kits_.KitsOfNext(construction, items);
            const QVariant figure = FigureOf(construction, items);
            for (quint32 i = 0; i < construction.parts; ++i) {
                const quint32 part = construction.firstPart + i;
                Random gaps(seed_, Stream::Gaps, part);
                AddPart(parts, part, assortment_.ModelOf(construction, i), figure, gaps);
                AddFits(fits, part, assortment_.Families()[construction.family].use);
                // The first one keeps its list, so that no kit is left without a part.
                if (i == 0 || !gaps.Percent(PercentWithoutList)) {
                    AddList(list, part, i == 0 ? items : ItemsOfPart(items, part, stock_, seed_),
                            gaps);
                    AddKitItems(kitItems, construction, i, items, kits);
                }
            }
        }
    }

    QVariant FigureOf(const Construction& construction, const std::vector<Item>& items) {
        const bool drawn = !figureFolder_.isEmpty() && figures_.Add(construction, items);
        return drawn ? QVariant(CodeOf(figures_.Count() - 1)) : QVariant();
    }

    void AddPart(Inserter& rows, quint32 part, const PartModel& model, const QVariant& figure,
                 Random& gaps) {
        const auto family = model.family - assortment_.Families().data();
        const QVariant photo =
            gaps.Percent(PercentWithoutPhoto) ? QVariant() : assortment_.PhotoOf(model);
        const QVariant gallery =
            gaps.Percent(PercentOffGallery) ? QVariant() : QVariant(CodeOf(family));
        rows.Add(CodeOf(part), partNumbers_[part], assortment_.Description(model), photo, gallery,
                 figure);
    }

    void AddFits(Inserter& rows, quint32 part, Use use) {
        const Fleet::Fit fit = fleet_.FitOf(part, use);
        makersOfPart_.push_back(fit.makers);
        for (const quint32 vehicle : fit.vehicles) {
            rows.Add(CodeOf(vehicle), CodeOf(part));
        }
    }

    void AddList(Inserter& rows, quint32 part, const std::vector<Item>& items, Random& gaps) {
        for (const Item& item : items) {
            const QVariant quantity =
                gaps.Percent(PercentAsRequired) ? QVariant() : QVariant(item.quantity);
            rows.Add(CodeOf(part), item.number, CodeOf(item.component), quantity);
        }
    }

    void AddKitItems(Inserter& rows, const Construction& construction, quint32 ordinal,
                     const std::vector<Item>& items, const std::vector<Kit>& kits) {
        for (const Kit& kit : kits) {
            if (kit.onlyFor && *kit.onlyFor != ordinal) {
                continue;
            }
            for (const size_t item : kit.items) {
                rows.Add(CodeOf(construction.firstPart + ordinal), items[item].number,
                         CodeOf(kit.kit));
            }
        }
    }

    void AddFigures() {
        Inserter figures(connection_, "FIGURA", "CodigoFigura, ArquivoFigura");
        Inserter markers(connection_, "FIGURADETALHADA",
                         "CodigoFigura, CodigoFiguraDetalhada, ItemComponente, LLeft, TTop");
        qlonglong code = 0;
        for (const Figure& figure : figures_.Draw(figureFolder_)) {
            figures.Add(++code, figure.file);
            qlonglong marker = 0;
            for (const Figure::Marker& each : figure.markers) {
                markers.Add(code, ++marker, each.item, each.corner.x(), each.corner.y());
            }
        }
    }

    void AddComponents() {
        Inserter rows(connection_, "COMPONENTE",
                      "CodigoComponente, NumeroTarvoComponente, DescricaoComponente");
        for (quint32 i = 0; i < stock_.Count(); ++i) {
            rows.Add(CodeOf(i), componentNumbers_[i], stock_.Description(i));
        }
    }

    void AddKits() {
        Inserter rows(connection_, "JOGOREPARO",
                      "CodigoJogoReparo, NumeroTarvoJogoReparo, DescricaoJogoReparo");
        quint32 kit = 0;
        for (const QString& description : kits_.Descriptions()) {
            rows.Add(CodeOf(kit), kitNumbers_[kit], description);
            ++kit;
        }
    }

    void AddCrossReferences() {
        Inserter rows(connection_, "REFERENCIACRUZADA",
                      "CodigoClienteConcorrente, NumeroTarvo, NumeroClienteConcorrente");
        const std::vector<Referenced> tables{
            {partNumbers_, makersOfPart_, 50}, {componentNumbers_, {}, 35}, {kitNumbers_, {}, 15}};
        MakeCrossReferences(seed_, sizes_.crossReferences, tables,
                            [&rows](quint32 company, const QString& own, const QString& theirs) {
                                rows.Add(CodeOf(company), own, theirs);
                            });
    }

    // The address is this computer's own: a demonstration never asks anybody for updates.
    void SetRecord() {
        dao::Statement statement(connection_,
                                 "UPDATE UMREGISTRO SET DataEmissao = ?1,"
                                 " ComplementoDataEmissao = ?2, UrlAtualizacao = ?3");
        statement.Bind(1, sys::ToSerial(QDate(2026, 3, 5).startOfDay()));
        statement.Bind(2, seed_ % 2 == 0 ? QVariant() : QVariant(u" A"_s));
        statement.Bind(3, u"http://127.0.0.1/tarvo"_s);
        statement.Step();
    }

    dao::Connection& connection_;
    Sizes sizes_;
    quint64 seed_;
    QString figureFolder_;
    Assortment assortment_;
    ComponentStock stock_;
    FigurePlan figures_;
    KitPlan kits_;
    Fleet fleet_;
    QStringList partNumbers_;
    QStringList componentNumbers_;
    QStringList kitNumbers_;
    std::vector<quint32> makersOfPart_;
};

// Drops the indexes and hands back what makes them again: filling sorted is many times faster.
QList<QByteArray> DropIndexes(dao::Connection& connection) {
    QList<QByteArray> names;
    QList<QByteArray> definitions;
    {
        // Those on an expression are the guards of the one-row tables; they cost nothing.
        dao::Statement indexes(connection,
                               "SELECT name, sql FROM sqlite_schema WHERE type = 'index'"
                               " AND sql IS NOT NULL AND sql NOT LIKE '%((1))' ORDER BY name");
        while (indexes.Step()) {
            names.append(indexes.Read(0).utf8.toByteArray());
            definitions.append(indexes.Read(1).utf8.toByteArray());
        }
    }
    for (const QByteArray& name : names) {
        connection.Run("DROP INDEX " + name);
    }
    return definitions;
}

}  // namespace

void FillCatalogue(dao::Connection& connection, const Sizes& sizes, quint64 seed,
                   const QString& figureFolder) {
    // Half a catalogue is never kept, so nothing needs a way back, nor the disk before the end.
    connection.Run(
        "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF;"
        "PRAGMA cache_size = -262144; BEGIN");
    const QList<QByteArray> indexes = DropIndexes(connection);
    Filler(connection, sizes, seed, figureFolder).Run();
    for (const QByteArray& definition : indexes) {
        connection.Run(definition);
    }
    connection.Run("COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = DELETE");
    // The engine syncs the whole file with the first change that it makes in full earnest.
    connection.Run("UPDATE UMREGISTRO SET Versao = Versao");
}

}  // namespace demo
