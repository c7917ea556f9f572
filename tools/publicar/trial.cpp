#include "publicar/trial.h"

#include "platform/convert.h"
#include "platform/dao/connection.h"
#include "platform/dao/errors.h"
#include "platform/dao/statement.h"
#include "session/banco.h"
#include "session/global.h"
#include "verificar/rules.h"
#include "verificar/structure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QScopeGuard>
#include <QSet>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace publicar {
namespace {

using verificar::Cases;
using verificar::Weight;

constexpr auto CatalogueName = "Tarvo.mdb"_L1;
constexpr qsizetype LongestStatement = 300;

void Copy(const QString& from, const QString& to) {
    if (!QFile::copy(from, to)) {
        throw Erro(Erro::PathFileAccess,
                   u"Não foi possível copiar \"%1\" para \"%2\"."_s.arg(from, to));
    }
}

// A catalogue that another program has open or left open keeps part of its state beside it.
void CopyCatalogue(const QString& folder, const QString& target) {
    const QString source = folder + u'/' + CatalogueName;
    if (!QFileInfo::exists(source)) {
        throw Erro(Erro::FileNotFound, u"Não há catálogo em \"%1\"."_s.arg(source));
    }
    Copy(source, target + u'/' + CatalogueName);
    if (QFileInfo::exists(source + "-journal"_L1)) {
        Copy(source + "-journal"_L1, target + u'/' + CatalogueName + "-journal"_L1);
    }
}

QString Shown(const QString& statement) {
    const QString line = statement.simplified();
    return line.size() > LongestStatement ? line.first(LongestStatement) + u'…' : line;
}

// The content of a table, whatever the order of its rows.
struct Digest {
    qint64 rows = 0;
    quint64 sum = 0;
    friend bool operator==(const Digest&, const Digest&) = default;
};

Digest DigestOf(dao::Connection& connection, const QString& table) {
    Digest digest;
    dao::Statement rows(connection, "SELECT * FROM \"" + table.toUtf8() + '"');
    QByteArray bytes;
    while (rows.Step()) {
        bytes.clear();
        for (int column = 0; column < rows.ColumnCount(); ++column) {
            const dao::Cell cell = rows.Read(column);
            bytes += char('0' + int(cell.type));
            bytes +=
                QByteArray::number(cell.integer) + '/' + QByteArray::number(cell.real, 'g', 17);
            bytes += '/' + QByteArray::number(cell.utf8.size()) + '/';
            bytes += cell.utf8;
        }
        ++digest.rows;
        digest.sum += qHash(bytes, 0);
    }
    return digest;
}

using Content = QMap<QString, Digest>;

Content ContentOf(dao::Connection& connection) {
    QStringList tables;
    {
        dao::Statement names(connection,
                             "SELECT name FROM main.sqlite_schema WHERE type = 'table' "
                             "AND name NOT LIKE 'sqlite%'");
        while (names.Step()) {
            tables += names.Column(0).toString();
        }
    }
    Content content;
    for (const QString& table : tables) {
        content.insert(table, DigestOf(connection, table));
    }
    return content;
}

class Trial {
public:
    explicit Trial(const Order& order) : order_(order) {
        CopyCatalogue(order.catalogue, folder_.path());
        gCaminho = folder_.path() + u'\\';
        Open();
        // As at the customer's: what wants the lock's own table waits for it there in vain.
        BloquearBancoDados(true);
        before_ = Rules();
    }
    ~Trial() {
        BloquearBancoDados(false);
        FecharBancoDados(gWS, gDB);
    }
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    void CheckVersion(QList<Finding>& findings) {
        const auto row = gDB->OpenRecordset(u"SELECT Versao FROM UMREGISTRO"_s);
        const int version = convert::ToInt32(row->Fields(u"Versao"_s).Value());
        Cases other(Weight::Hint, u"O catálogo da conferência não é o da versão anterior"_s, 1);
        if (version != order_.release - 1) {
            other.Add(u"está na versão %1, e a nova é a %2"_s.arg(version).arg(order_.release));
        }
        other.AppendTo(findings);
    }

    void RunOnce(const std::vector<Line>& lines, QList<Finding>& findings) {
        Cases failed(Weight::Fault, u"Comando que falha (no cliente, em silêncio)"_s,
                     order_.examples);
        Cases idle(Weight::Hint, u"Comando que não muda nada"_s, order_.examples);
        Cases slow(Weight::Fault, u"Comando que não termina em %1 segundos"_s.arg(order_.patience),
                   order_.examples);
        for (const Line& line : lines) {
            if (line.command.tipo != ComandoAtualizacao::Tipo::Sql) {
                continue;
            }
            try {
                Execute(line);
                if (gDB->RecordsAffected() == 0 && IsRowChange(line)) {
                    idle.Add(PlaceOf(line) + u": "_s + Shown(line.command.texto));
                }
            } catch (const Erro& erro) {
                if (erro.Number() == int(dao::Failure::Interrupted)) {
                    slow.Add(PlaceOf(line) + u": "_s + Shown(line.command.texto));
                    slow_ += &line;
                    continue;
                }
                failed.Add(u"%1: erro %2, %3: %4"_s.arg(PlaceOf(line))
                               .arg(erro.Number())
                               .arg(erro.Description(), Shown(line.command.texto)));
            }
        }
        failed.AppendTo(findings);
        slow.AppendTo(findings);
        idle.AppendTo(findings);
        CheckRules(findings);
    }

    void RunAgain(const std::vector<Line>& lines, QList<Finding>& findings) {
        dao::Connection& connection = *gDB->GetConnection();
        const Content before = ContentOf(connection);
        std::vector<const Line*> changing;
        for (const Line& line : lines) {
            if (line.command.tipo != ComandoAtualizacao::Tipo::Sql || slow_.contains(&line)) {
                continue;
            }
            try {
                Execute(line);
                if (gDB->RecordsAffected() != 0) {
                    changing.push_back(&line);
                }
            } catch (const Erro&) {
                // Fails where it already ran, which is as it should be.
            }
        }
        const Content after = ContentOf(connection);
        Cases twice(Weight::Hint,
                    u"Tabela que muda quando os scripts correm de novo, como depois "
                    "de uma queda de luz"_s,
                    order_.examples);
        for (const QString& table : QStringList(before.keys() + after.keys())) {
            if (before.value(table) != after.value(table) && !seen_.contains(table)) {
                seen_ += table;
                twice.Add(u"%1: de %2 para %3 linhas; %4"_s.arg(table)
                              .arg(before.value(table).rows)
                              .arg(after.value(table).rows)
                              .arg(Suspects(table, changing)));
            }
        }
        twice.AppendTo(findings);
    }

    // The catalogue as the new version leaves it.
    void Keep() {
        gDB->Execute(u"UPDATE UMREGISTRO SET Versao = %1, VersaoAnterior = %2"_s.arg(order_.release)
                         .arg(order_.release - 1),
                     dao::dbFailOnError);
        FecharBancoDados(gWS, gDB);
        const QString target = order_.keep + u'/' + CatalogueName;
        if (!QDir().mkpath(order_.keep) || (QFile::exists(target) && !QFile::remove(target))) {
            throw Erro(Erro::PathFileAccess,
                       u"Não foi possível gravar em \"%1\"."_s.arg(order_.keep));
        }
        Copy(folder_.filePath(CatalogueName), target);
        Open();
    }

private:
    void Open() {
        AbrirBancoDados(gWS, u"gWS"_s, gDB, false);
        // A copy that nobody will miss need not reach the disk after each statement.
        gDB->GetConnection()->Run("PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY");
    }

    void Execute(const Line& line) const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(order_.patience);
        gDB->SetIdle([end] { return std::chrono::steady_clock::now() < end; });
        // What is looked up afterwards takes as long as it takes.
        const auto nobodyWaits = qScopeGuard([] { gDB->SetIdle({}); });
        // Nobody shares the copy: a lock that is met is the update's own, and waiting would not
        // help.
        gDB->Execute(line.command.texto, dao::dbFailOnError + dao::dbSeeChanges);
    }

    QList<Finding> Rules() const {
        QList<Finding> findings;
        dao::Connection& catalogue = *gDB->GetConnection();
        const bool whole = verificar::CheckStructure(catalogue, order_.examples, findings);
        verificar::CheckRows(catalogue, order_.examples, whole, findings);
        return findings;
    }

    // What the catalogue had before is not the scripts' doing.
    void CheckRules(QList<Finding>& findings) const {
        for (Finding& finding : Rules()) {
            const bool known = std::any_of(before_.begin(), before_.end(), [&](const Finding& was) {
                return was.what == finding.what && was.count >= finding.count;
            });
            if (!known) {
                finding.what = u"Depois dos scripts: "_s + finding.what;
                findings += finding;
            }
        }
    }

    static bool IsRowChange(const Line& line) {
        const QString word = line.command.texto.trimmed().section(u' ', 0, 0).toUpper();
        return word == "UPDATE"_L1 || word == "DELETE"_L1 || word == "INSERT"_L1;
    }

    static QString Suspects(const QString& table, const std::vector<const Line*>& changing) {
        constexpr qsizetype Most = 3;
        QStringList places;
        for (const Line* line : changing) {
            if (line->command.texto.contains(table, Qt::CaseInsensitive)) {
                if (places.size() == Most) {
                    places += u"…"_s;
                    break;
                }
                places += PlaceOf(*line);
            }
        }
        return places.isEmpty() ? u"sem linha que a nomeie"_s : places.join(u"; "_s);
    }

    const Order& order_;
    QTemporaryDir folder_;
    QStringList seen_;
    QList<Finding> before_;
    QSet<const Line*> slow_;
};

}  // namespace

void TryScripts(const Order& order, const std::vector<Line>& lines, QList<Finding>& findings) {
    Trial trial(order);
    trial.CheckVersion(findings);
    trial.RunOnce(lines, findings);
    if (!order.keep.isEmpty()) {
        trial.Keep();
    }
    trial.RunAgain(lines, findings);
}

}  // namespace publicar
