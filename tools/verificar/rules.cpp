#include "verificar/rules.h"

#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/erro.h"
#include "verificar/missing.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace verificar {
namespace {

// `cases` is the engine's SQL; its first column is an example for the user.
struct Rule {
    Weight weight;
    QString what;
    QString cases;
};

// The three kinds of row whose columns are named after their table.
struct Kind {
    QString table;
    QString suffix;
};
const Kind Kinds[] = {
    {u"PECA"_s, u"Peca"_s}, {u"COMPONENTE"_s, u"Componente"_s}, {u"JOGOREPARO"_s, u"JogoReparo"_s}};

// Six digits is what the way from a search row to its parts carries.
constexpr int LargestOpenedCode = 999999;
constexpr int LargestSixteenBits = 32767;
// With a digit in front it still has to fit 32 bits.
constexpr int LargestCustomerCode = 147483647;

// How a value of the column stands in an example: quoted, since blanks matter.
QString Quoted(const QString& column) {
    return u"coalesce('\"' || %1 || '\"', 'Null')"_s.arg(column);
}

void AddNumberRules(QList<Rule>& rules) {
    const QString notPlain = u"(%1 GLOB '*[^A-Z0-9]*' OR %1 GLOB '0*' OR coalesce(%1, '') = '')"_s;
    for (const Kind& kind : Kinds) {
        const QString number = u"NumeroTarvo"_s + kind.suffix;
        const QString code = u"Codigo"_s + kind.suffix;
        rules +=
            {Weight::Fault,
             u"%1.%2 fora da forma gravada (letras maiúsculas e algarismos, sem zero à "
             "esquerda nem algarismo antes da primeira letra)"_s.arg(kind.table, number),
             u"SELECT '%1 ' || %1 || ': ' || %2 FROM %3 WHERE %4 OR %5 GLOB '[1-9][A-Z]*'"_s.arg(
                 code, Quoted(number), kind.table, notPlain.arg(number), number)};
        rules += {Weight::Hint, u"%1.%2 repetido"_s.arg(kind.table, number),
                  u"SELECT %1 || ' (' || count(*) || ' linhas)' FROM %2 WHERE %1 <> '' "
                  "GROUP BY %1 HAVING count(*) > 1"_s.arg(number, kind.table)};
    }
    rules +=
        {Weight::Fault,
         u"REFERENCIACRUZADA.NumeroClienteConcorrente fora da forma gravada (letras "
         "maiúsculas e algarismos, sem zero à esquerda)"_s,
         u"SELECT 'cliente ' || CodigoClienteConcorrente || ', Nº Tarvo ' || NumeroTarvo || "
         "': ' || %1 FROM REFERENCIACRUZADA WHERE %2"_s.arg(
             Quoted(u"NumeroClienteConcorrente"_s), notPlain.arg(u"NumeroClienteConcorrente"_s))};
}

void AddDescriptionRules(QList<Rule>& rules) {
    struct Described {
        QString table;
        QString code;
        QString description;
    };
    QList<Described> tables;
    for (const Kind& kind : Kinds) {
        tables += {kind.table, u"Codigo"_s + kind.suffix, u"Descricao"_s + kind.suffix};
    }
    tables += {u"VEICULO"_s, u"CodigoVeiculo"_s, u"DescricaoVeiculo"_s};
    for (const auto& [table, code, description] : tables) {
        rules +=
            {Weight::Fault,
             u"%1.%2 que a pesquisa não acha (vazia, com espaço na frente ou com apóstrofo em "
             "lugar de \"´\")"_s.arg(table, description),
             u"SELECT '%1 ' || %1 || ': ' || %2 FROM %3 WHERE coalesce(%4, '') = '' OR %4 GLOB "
             "' *' OR instr(%4, '''') > 0"_s.arg(code, Quoted(description), table, description)};
    }
    for (const auto& [table, code, description] :
         {Described{u"CLIENTECONCORRENTE"_s, u"CodigoClienteConcorrente"_s,
                    u"DescricaoClienteConcorrente"_s},
          Described{u"FOTOPECAPESQUISA"_s, u"CodigoFotoPecaPesquisa"_s,
                    u"DescricaoFotoPecaPesquisa"_s}}) {
        rules += {Weight::Fault, u"%1.%2 vazia"_s.arg(table, description),
                  u"SELECT '%1 ' || %1 FROM %2 WHERE trim(coalesce(%3, '')) = ''"_s.arg(
                      code, table, description)};
    }
}

void AddItemRules(QList<Rule>& rules) {
    QStringList forms;
    for (const QString& number :
         {u"   [0-9]"_s, u"  [1-9][0-9]"_s, u" [1-9][0-9][0-9]"_s, u"[1-9][0-9][0-9][0-9]"_s}) {
        for (const QString& letter : {QString(), u"[a-z]"_s}) {
            forms += u"ItemComponente NOT GLOB '%1'"_s.arg(number + letter);
        }
    }
    const QString wrong = u"ItemComponente IS NULL OR ("_s + forms.join(u" AND "_s) + u')';
    const std::pair<QString, QString> tables[] = {
        {u"PECA_COMPONENTE"_s, u"CodigoPeca"_s},
        {u"PECA_COMPONENTE_JOGOREPARO"_s, u"CodigoPeca"_s},
        {u"FIGURADETALHADA"_s, u"CodigoFigura"_s},
    };
    for (const auto& [table, code] : tables) {
        rules += {Weight::Fault,
                  u"%1.ItemComponente mal alinhado (número em quatro posições à direita, letra "
                  "minúscula na quinta)"_s.arg(table),
                  u"SELECT '%1 ' || %1 || ': ' || %2 FROM %3 WHERE %4"_s.arg(
                      code, Quoted(u"ItemComponente"_s), table, wrong)};
    }
}

void AddCodeRules(QList<Rule>& rules) {
    struct Range {
        QString table;
        QString code;
        int largest;
        QString only;  // a further condition
    };
    const QString maker = u" AND TipoClienteConcorrente = 'I'"_s;
    const Range ranges[] = {
        {u"PECA"_s, u"CodigoPeca"_s, LargestOpenedCode, {}},
        {u"COMPONENTE"_s, u"CodigoComponente"_s, LargestOpenedCode, {}},
        {u"JOGOREPARO"_s, u"CodigoJogoReparo"_s, LargestOpenedCode, {}},
        {u"VEICULO"_s, u"CodigoVeiculo"_s, LargestOpenedCode, {}},
        {u"FOTOPECAPESQUISA"_s, u"CodigoFotoPecaPesquisa"_s, LargestOpenedCode, {}},
        {u"FIGURA"_s, u"CodigoFigura"_s, std::numeric_limits<int>::max(), {}},
        {u"FIGURADETALHADA"_s, u"CodigoFiguraDetalhada"_s, LargestSixteenBits, {}},
        {u"CLIENTECONCORRENTE"_s, u"CodigoClienteConcorrente"_s, LargestCustomerCode, {}},
        {u"CLIENTECONCORRENTE"_s, u"CodigoClienteConcorrente"_s, LargestSixteenBits, maker},
    };
    for (const Range& range : ranges) {
        rules += {
            Weight::Fault,
            u"%1.%2 fora da faixa de 1 a %3%4"_s.arg(
                range.table, range.code, QString::number(range.largest),
                range.only.isEmpty() ? QString() : u" dos fabricantes de veículos"_s),
            u"SELECT %1 FROM %2 WHERE NOT (typeof(%1) = 'integer' AND %1 BETWEEN 1 AND %3)%4"_s.arg(
                range.code, range.table, QString::number(range.largest), range.only)};
    }
}

void AddLinkRules(QList<Rule>& rules) {
    struct Link {
        QString table;
        QString column;
        QString target;
        QString key;  // of the target; the same name as the column
        QString example;
    };
    const auto link = [](const QString& table, const QString& column, const QString& target,
                         const QString& example) {
        return Link{table, column, target, column, example};
    };
    const QString part = u"'CodigoPeca ' || L.CodigoPeca"_s;
    const QString item = part + u" || ', item ' || L.ItemComponente"_s;
    const QString vehicle = u"'CodigoVeiculo ' || L.CodigoVeiculo"_s;
    const Link links[] = {
        link(u"PECA"_s, u"CodigoFotoPecaPesquisa"_s, u"FOTOPECAPESQUISA"_s, part),
        link(u"PECA"_s, u"CodigoFigura"_s, u"FIGURA"_s, part),
        link(u"PECA_COMPONENTE"_s, u"CodigoPeca"_s, u"PECA"_s, item),
        link(u"PECA_COMPONENTE"_s, u"CodigoComponente"_s, u"COMPONENTE"_s, item),
        link(u"PECA_COMPONENTE_JOGOREPARO"_s, u"CodigoJogoReparo"_s, u"JOGOREPARO"_s, item),
        link(u"VEICULO"_s, u"CodigoClienteConcorrente"_s, u"CLIENTECONCORRENTE"_s, vehicle),
        link(u"VEICULO_PECA"_s, u"CodigoVeiculo"_s, u"VEICULO"_s, vehicle),
        link(u"VEICULO_PECA"_s, u"CodigoPeca"_s, u"PECA"_s, vehicle),
        link(u"REFERENCIACRUZADA"_s, u"CodigoClienteConcorrente"_s, u"CLIENTECONCORRENTE"_s,
             u"'Nº Tarvo ' || L.NumeroTarvo"_s),
        link(u"FIGURADETALHADA"_s, u"CodigoFigura"_s, u"FIGURA"_s,
             u"'marca ' || L.CodigoFiguraDetalhada"_s),
    };
    for (const Link& l : links) {
        rules += {Weight::Fault, u"%1.%2 sem linha em %3"_s.arg(l.table, l.column, l.target),
                  u"SELECT %1 || ' → ' || L.%2 FROM %3 AS L WHERE L.%2 IS NOT NULL AND NOT EXISTS "
                  "(SELECT 1 FROM %4 WHERE %4.%5 = L.%2)"_s.arg(l.example, l.column, l.table,
                                                                l.target, l.key)};
    }
    rules += {Weight::Fault, u"PECA_COMPONENTE_JOGOREPARO sem a linha do item em PECA_COMPONENTE"_s,
              u"SELECT %1 FROM PECA_COMPONENTE_JOGOREPARO AS L WHERE NOT EXISTS (SELECT 1 FROM "
              "PECA_COMPONENTE AS C WHERE C.CodigoPeca = L.CodigoPeca AND C.ItemComponente = "
              "L.ItemComponente)"_s.arg(item)};
    rules +=
        {Weight::Fault, u"VEICULO.CodigoClienteConcorrente de quem não é fabricante (tipo \"I\")"_s,
         u"SELECT 'CodigoVeiculo ' || CodigoVeiculo || ' → ' || "
         "VEICULO.CodigoClienteConcorrente FROM VEICULO INNER JOIN CLIENTECONCORRENTE USING "
         "(CodigoClienteConcorrente) WHERE TipoClienteConcorrente IS NOT 'I'"_s};
    // By bytes: one sorted list of the numbers instead of a search in three indexes for each row.
    rules +=
        {Weight::Fault, u"REFERENCIACRUZADA.NumeroTarvo que nenhuma peça, componente ou jogo tem"_s,
         u"SELECT 'cliente ' || CodigoClienteConcorrente || ': ' || NumeroTarvo FROM "
         "REFERENCIACRUZADA WHERE NumeroTarvo COLLATE BINARY NOT IN ("
         "SELECT NumeroTarvoPeca FROM PECA WHERE NumeroTarvoPeca IS NOT NULL UNION ALL "
         "SELECT NumeroTarvoComponente FROM COMPONENTE WHERE NumeroTarvoComponente IS NOT "
         "NULL UNION ALL SELECT NumeroTarvoJogoReparo FROM JOGOREPARO WHERE "
         "NumeroTarvoJogoReparo IS NOT NULL)"_s};
    rules += {Weight::Hint, u"Número na figura sem item na lista de componentes da peça"_s,
              u"SELECT 'CodigoPeca ' || CodigoPeca || ', item ' || ItemComponente FROM "
              "FIGURADETALHADA1 AS L WHERE NOT EXISTS (SELECT 1 FROM PECA_COMPONENTE AS C WHERE "
              "C.CodigoPeca = L.CodigoPeca AND C.ItemComponente = L.ItemComponente)"_s};
}

void AddUnusedRules(QList<Rule>& rules) {
    struct Unused {
        QString table;
        QString code;
        QString user;
    };
    const Unused unused[] = {
        {u"COMPONENTE"_s, u"CodigoComponente"_s, u"PECA_COMPONENTE"_s},
        {u"JOGOREPARO"_s, u"CodigoJogoReparo"_s, u"PECA_COMPONENTE_JOGOREPARO"_s},
        {u"VEICULO"_s, u"CodigoVeiculo"_s, u"VEICULO_PECA"_s},
        {u"FOTOPECAPESQUISA"_s, u"CodigoFotoPecaPesquisa"_s, u"PECA"_s},
        {u"FIGURA"_s, u"CodigoFigura"_s, u"PECA"_s},
    };
    for (const auto& [table, code, user] : unused) {
        rules += {Weight::Hint, u"%1 que nenhuma peça usa"_s.arg(table),
                  u"SELECT '%1 ' || %1 FROM %2 WHERE NOT EXISTS (SELECT 1 FROM %3 WHERE %3.%1 = "
                  "%2.%1)"_s.arg(code, table, user)};
    }
}

// What unique indexes keep out, for a file whose indexes are missing.
void AddDuplicateRules(QList<Rule>& rules) {
    const std::pair<QString, QString> keys[] = {
        {u"PECA"_s, u"CodigoPeca"_s},
        {u"COMPONENTE"_s, u"CodigoComponente"_s},
        {u"JOGOREPARO"_s, u"CodigoJogoReparo"_s},
        {u"CLIENTECONCORRENTE"_s, u"CodigoClienteConcorrente"_s},
        {u"VEICULO"_s, u"CodigoVeiculo"_s},
        {u"FOTOPECAPESQUISA"_s, u"CodigoFotoPecaPesquisa"_s},
        {u"FIGURA"_s, u"CodigoFigura"_s},
        {u"PECA_COMPONENTE"_s, u"CodigoPeca, ItemComponente"_s},
        {u"PECA_COMPONENTE_JOGOREPARO"_s, u"CodigoPeca, ItemComponente, CodigoJogoReparo"_s},
        {u"VEICULO_PECA"_s, u"CodigoVeiculo, CodigoPeca"_s},
        {u"REFERENCIACRUZADA"_s,
         u"CodigoClienteConcorrente, NumeroTarvo, NumeroClienteConcorrente"_s},
        {u"FIGURADETALHADA"_s, u"CodigoFigura, CodigoFiguraDetalhada"_s},
    };
    for (const auto& [table, columns] : keys) {
        rules += {Weight::Fault, u"%1: linhas iguais em %2"_s.arg(table, columns),
                  u"SELECT %1 FROM %2 GROUP BY %3 HAVING count(*) > 1"_s.arg(
                      QString(columns).replace(u", "_s, u" || ', ' || "_s), table, columns)};
    }
}

void AddSettingsRules(QList<Rule>& rules) {
    for (const QString& table : {u"UMREGISTRO"_s, u"CODIGOCLIENTECONCORRENTE"_s}) {
        rules += {Weight::Fault, u"%1 precisa ter exatamente uma linha"_s.arg(table),
                  u"SELECT count(*) || ' linhas' FROM %1 HAVING count(*) <> 1"_s.arg(table)};
    }
    rules += {Weight::Fault, u"CODIGOCLIENTECONCORRENTE que não é -5 nem um cliente"_s,
              u"SELECT CodigoClienteConcorrente FROM CODIGOCLIENTECONCORRENTE WHERE "
              "CodigoClienteConcorrente <> -5 AND CodigoClienteConcorrente NOT IN (SELECT "
              "CodigoClienteConcorrente FROM CLIENTECONCORRENTE)"_s};
    rules += {Weight::Fault, u"UMREGISTRO.DataEmissao não é uma data"_s,
              u"SELECT %1 FROM UMREGISTRO WHERE typeof(DataEmissao) NOT IN ('real', 'integer') OR "
              "DataEmissao NOT BETWEEN -657434 AND 2958465"_s.arg(Quoted(u"DataEmissao"_s))};
    for (const QString& version : {u"Versao"_s, u"VersaoAnterior"_s}) {
        rules += {Weight::Fault, u"UMREGISTRO.%1 não cabe em 16 bits"_s.arg(version),
                  u"SELECT %1 FROM UMREGISTRO WHERE typeof(%2) <> 'integer' OR %2 NOT BETWEEN "
                  "-32768 AND 32767"_s.arg(Quoted(version), version)};
    }
    rules += {Weight::Fault, u"FIGURADETALHADA.LLeft ou TTop não é um número"_s,
              u"SELECT 'CodigoFigura ' || CodigoFigura || ', marca ' || CodigoFiguraDetalhada FROM "
              "FIGURADETALHADA WHERE typeof(LLeft) NOT IN ('integer', 'real') OR typeof(TTop) NOT "
              "IN ('integer', 'real')"_s};
    rules += {Weight::Hint, u"UMREGISTRO.UrlAtualizacao vazia: o catálogo não se atualiza"_s,
              u"SELECT %1 FROM UMREGISTRO WHERE trim(coalesce(UrlAtualizacao, '')) = ''"_s.arg(
                  Quoted(u"UrlAtualizacao"_s))};
    rules += {Weight::Hint, u"PECA_COMPONENTE.QuantidadeComponente vazia ou não positiva"_s,
              u"SELECT 'CodigoPeca ' || CodigoPeca || ', item ' || ItemComponente FROM "
              "PECA_COMPONENTE WHERE coalesce(QuantidadeComponente, 0) <= 0"_s};
}

QList<Rule> AllRules() {
    QList<Rule> rules;
    AddSettingsRules(rules);
    AddCodeRules(rules);
    AddDuplicateRules(rules);
    AddNumberRules(rules);
    AddDescriptionRules(rules);
    AddItemRules(rules);
    AddLinkRules(rules);
    AddUnusedRules(rules);
    return rules;
}

}  // namespace

void CheckRows(dao::Connection& catalogue, int examples, bool whole, QList<Finding>& findings) {
    for (const Rule& rule : AllRules()) {
        Cases cases(rule.weight, rule.what, examples);
        UnlessMissing(whole, [&] {
            for (dao::Statement statement(catalogue, rule.cases.toUtf8()); statement.Step();) {
                cases.Add(statement.Column(0).toString());
            }
        });
        cases.AppendTo(findings);
    }
}

void CheckCompanion(dao::Connection& catalogue, const QString& companion, int examples,
                    QList<Finding>& findings) {
    if (QFileInfo(companion).size() == 0) {
        return;
    }
    Cases rows(Weight::Fault, u"CONTROLETRAN, em Tarvo.ldb, precisa ter exatamente uma linha"_s,
               examples);
    try {
        dao::Statement attach(catalogue, "ATTACH ?1 AS verificado KEY ''");
        attach.Bind(1, companion);
        attach.Step();
        const qint64 count =
            catalogue.Value("SELECT count(*) FROM verificado.CONTROLETRAN").toLongLong();
        if (count != 1) {
            rows.Add(u"%1 linhas"_s.arg(count));
        }
    } catch (const Erro& erro) {
        rows.Add(erro.Description());
    }
    rows.AppendTo(findings);
}

}  // namespace verificar
