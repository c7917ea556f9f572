#include "verificar/check.h"

#include "platform/dao/connection.h"
#include "platform/dao/statement.h"
#include "platform/erro.h"
#include "session/banco.h"
#include "verificar/pictures.h"
#include "verificar/rules.h"
#include "verificar/structure.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace verificar {
namespace {

// Large enough that the keys of a million rows are found in memory.
constexpr char CachePragma[] = "PRAGMA cache_size = -262144";

void CheckPages(dao::Connection& catalogue, int examples, QList<Finding>& findings) {
    Cases pages(Weight::Fault, u"Página danificada no arquivo do catálogo"_s, examples);
    for (dao::Statement check(catalogue, "PRAGMA cipher_integrity_check"); check.Step();) {
        pages.Add(check.Column(0).toString());
    }
    pages.AppendTo(findings);
}

void CheckOrder(dao::Connection& catalogue, const Order& wanted, QList<Finding>& findings) {
    Cases order(Weight::Fault, u"Tabela ou índice fora de ordem"_s, wanted.examples);
    const char* sql = wanted.full ? "PRAGMA integrity_check" : "PRAGMA quick_check";
    for (dao::Statement check(catalogue, sql); check.Step();) {
        const QString complaint = check.Column(0).toString();
        if (complaint != "ok"_L1) {
            order.Add(complaint);
        }
    }
    order.AppendTo(findings);
}

}  // namespace

QList<Finding> Check(const Order& order) {
    const QString path = order.folder + u"/Tarvo.mdb"_s;
    if (!QFileInfo::exists(path)) {
        throw Erro(Erro::FileNotFound, u"Não há catálogo em \"%1\"."_s.arg(path));
    }
    const auto catalogue = std::make_shared<dao::Connection>(path, SenhaBancoDados().toUtf8(),
                                                             dao::Connection::Mode::ReadOnly);
    catalogue->Run(CachePragma);
    QList<Finding> findings;
    // On a damaged page one check ends; the others say what they can.
    Cases unread(Weight::Fault, u"Não foi possível conferir tudo"_s, order.examples);
    const auto run = [&](auto check) {
        try {
            check();
        } catch (const Erro& erro) {
            unread.Add(erro.Description());
        }
    };
    run([&] { CheckPages(*catalogue, order.examples, findings); });
    run([&] { CheckOrder(*catalogue, order, findings); });
    bool whole = false;
    run([&] { whole = CheckStructure(*catalogue, order.examples, findings); });
    run([&] { CheckRows(*catalogue, order.examples, whole, findings); });
    CheckCompanion(*catalogue, order.folder + u"/Tarvo.ldb"_s, order.examples, findings);
    run([&] { CheckPictures(*catalogue, order.folder, order.examples, whole, findings); });
    unread.AppendTo(findings);
    return findings;
}

}  // namespace verificar
