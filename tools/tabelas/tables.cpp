#include "tabelas/tables.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace tabelas {
namespace {

constexpr qint64 LargestOpenedCode = 999999;
constexpr qint64 LargestCustomerCode = 147483647;
constexpr qint64 LargestMarkerCode = 32767;
constexpr qint64 LargestCode = std::numeric_limits<qint32>::max();
constexpr bool MayBeEmpty = true;

Column OwnCode(const QString& name, qint64 largest, const QString& what) {
    return {name, Kind::Code, false, {}, largest, u"código "_s + what + u"; vazio: é dado"_s};
}

Column Link(const QString& name, Id target, const QString& what, bool mayBeEmpty = false) {
    return {name, Kind::Code, mayBeEmpty, target, LargestCode, u"código "_s + what};
}

Column Plain(const QString& name, Kind kind, const QString& explanation, bool mayBeEmpty = false) {
    return {name, kind, mayBeEmpty, {}, 0, explanation};
}

const QString ItemText = u"item da lista: até quatro algarismos e, se houver, uma letra"_s;
const QString OwnNumberText = u"Nº Tarvo"_s;

// A part, a component or a kit: its columns are named after it.
Table Described(Id id, const QString& name, const QString& suffix, const QString& what) {
    return {id,
            name,
            {OwnCode(u"Codigo"_s + suffix, LargestOpenedCode, what),
             Plain(u"NumeroTarvo"_s + suffix, Kind::OwnNumber, OwnNumberText),
             Plain(u"Descricao"_s + suffix, Kind::Description, u"descrição"_s)},
            1,
            1,
            0};
}

Table Parts() {
    Table parts = Described(Id::Parts, u"PECA"_s, u"Peca"_s, u"da peça"_s);
    parts.columns.push_back(Plain(u"ArquivoFotoPeca"_s, Kind::FileName,
                                  u"arquivo da foto em FotoPeca, ou vazio"_s, MayBeEmpty));
    parts.columns.push_back(Link(u"CodigoFotoPecaPesquisa"_s, Id::Gallery,
                                 u"da figura da pesquisa, ou vazio"_s, MayBeEmpty));
    parts.columns.push_back(
        Link(u"CodigoFigura"_s, Id::Figures, u"da figura detalhada; vazio: não tem"_s, MayBeEmpty));
    return parts;
}

std::vector<Table> MakeTables() {
    return {
        {Id::Customers,
         u"CLIENTECONCORRENTE"_s,
         {OwnCode(u"CodigoClienteConcorrente"_s, LargestCustomerCode,
                  u"do cliente ou concorrente"_s),
          Plain(u"DescricaoClienteConcorrente"_s, Kind::Caption, u"nome"_s),
          Plain(u"TipoClienteConcorrente"_s, Kind::Letter,
                u"I: fabricante de veículos; outra letra: concorrente"_s)},
         1,
         1,
         0},
        {Id::Gallery,
         u"FOTOPECAPESQUISA"_s,
         {OwnCode(u"CodigoFotoPecaPesquisa"_s, LargestOpenedCode, u"da figura da pesquisa"_s),
          Plain(u"DescricaoFotoPecaPesquisa"_s, Kind::Caption, u"legenda"_s),
          Plain(u"ArquivoFotoPecaPesquisa"_s, Kind::FileName, u"arquivo em FotoPeca"_s)},
         1,
         1,
         0},
        {Id::Figures,
         u"FIGURA"_s,
         {OwnCode(u"CodigoFigura"_s, LargestCode, u"da figura detalhada"_s),
          Plain(u"ArquivoFigura"_s, Kind::FileName, u"arquivo em Figuras"_s)},
         1,
         1,
         0},
        Parts(),
        Described(Id::Components, u"COMPONENTE"_s, u"Componente"_s, u"do componente"_s),
        Described(Id::Kits, u"JOGOREPARO"_s, u"JogoReparo"_s, u"do jogo de reparo"_s),
        {Id::Vehicles,
         u"VEICULO"_s,
         {OwnCode(u"CodigoVeiculo"_s, LargestOpenedCode, u"do veículo"_s),
          Plain(u"DescricaoVeiculo"_s, Kind::Description, u"descrição"_s),
          Link(u"CodigoClienteConcorrente"_s, Id::Customers, u"do fabricante (tipo I)"_s)},
         1,
         1,
         0},
        {Id::PartItems,
         u"PECA_COMPONENTE"_s,
         {Link(u"CodigoPeca"_s, Id::Parts, u"da peça"_s),
          Plain(u"ItemComponente"_s, Kind::Item, ItemText),
          Link(u"CodigoComponente"_s, Id::Components, u"do componente"_s),
          Plain(u"QuantidadeComponente"_s, Kind::Number, u"quantidade, ou vazio"_s, MayBeEmpty)},
         2},
        {Id::KitItems,
         u"PECA_COMPONENTE_JOGOREPARO"_s,
         {Link(u"CodigoPeca"_s, Id::Parts, u"da peça"_s),
          Plain(u"ItemComponente"_s, Kind::Item, ItemText),
          Link(u"CodigoJogoReparo"_s, Id::Kits, u"do jogo de reparo"_s)},
         3},
        {Id::VehicleParts,
         u"VEICULO_PECA"_s,
         {Link(u"CodigoVeiculo"_s, Id::Vehicles, u"do veículo"_s),
          Link(u"CodigoPeca"_s, Id::Parts, u"da peça"_s)},
         2},
        {Id::CrossReferences,
         u"REFERENCIACRUZADA"_s,
         {Link(u"CodigoClienteConcorrente"_s, Id::Customers, u"do cliente ou concorrente"_s),
          Plain(u"NumeroTarvo"_s, Kind::OwnNumber,
                u"Nº Tarvo de uma peça, um componente ou um jogo de reparo"_s),
          Plain(u"NumeroClienteConcorrente"_s, Kind::CustomerNumber,
                u"número do cliente ou concorrente"_s)},
         3},
        {Id::Markers,
         u"FIGURADETALHADA"_s,
         {Link(u"CodigoFigura"_s, Id::Figures, u"da figura detalhada"_s),
          {u"CodigoFiguraDetalhada"_s,
           Kind::Code,
           false,
           {},
           LargestMarkerCode,
           u"ordem do número na figura; vazio: é dada"_s},
          Plain(u"ItemComponente"_s, Kind::Item, ItemText),
          Plain(u"LLeft"_s, Kind::Number, u"lado esquerdo do número, em pixels da figura"_s),
          Plain(u"TTop"_s, Kind::Number, u"lado de cima do número, em pixels da figura"_s)},
         2,
         -1,
         1},
        {Id::Settings,
         u"UMREGISTRO"_s,
         {Plain(u"DataEmissao"_s, Kind::Date, u"data dos dados, dd/mm/aaaa; uma linha só"_s),
          Plain(u"ComplementoDataEmissao"_s, Kind::Text, u"texto depois da data, ou vazio"_s,
                MayBeEmpty),
          Plain(u"DataUltimaVerificacao"_s, Kind::Date,
                u"dd/mm/aaaa hh:mm:ss; vazio: nunca verificou"_s, MayBeEmpty),
          Plain(u"FlagErroUltimaVerificacao"_s, Kind::Flag, u"1: a verificação falhou; 0: não"_s,
                MayBeEmpty),
          Plain(u"UrlAtualizacao"_s, Kind::Text,
                u"endereço do servidor de atualizações, ou vazio"_s, MayBeEmpty),
          Plain(u"Versao"_s, Kind::Version, u"versão dos dados, de 0 a 32767"_s),
          Plain(u"VersaoAnterior"_s, Kind::Version, u"versão anterior"_s)},
         1},
        {Id::Selection,
         u"CODIGOCLIENTECONCORRENTE"_s,
         {Plain(u"CodigoClienteConcorrente"_s, Kind::Number, u"escolhido, ou -5"_s)},
         1},
    };
}

}  // namespace

QStringList Table::ColumnNames() const {
    QStringList names;
    for (const Column& column : columns) {
        names += column.name;
    }
    return names;
}

int Table::IndexOf(const QString& column) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& each) {
        return each.name.compare(column, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

const std::vector<Table>& All() {
    static const std::vector<Table> tables = MakeTables();
    return tables;
}

const Table& Of(Id id) {
    return *std::find_if(All().begin(), All().end(),
                         [id](const Table& table) { return table.id == id; });
}

const Column* NameColumnOf(const Column& link) {
    if (!link.target) {
        return nullptr;
    }
    const Table& target = Of(*link.target);
    return &target.columns[static_cast<std::size_t>(target.byName)];
}

const Column* NameInPlaceOf(const Column& link, const Table& table) {
    const Column* name = NameColumnOf(link);
    return name && table.IndexOf(name->name) < 0 ? name : nullptr;
}

}  // namespace tabelas
