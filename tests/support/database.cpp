#include "support/database.h"

TestDatabase::TestDatabase(const QByteArray& definition) {
    dao::DBEngine::Instance().CreateDatabase(Path(), Connect(), definition);
}

TestDatabase::Session TestDatabase::Open(bool readOnly) const {
    Session session;
    session.workspace =
        dao::DBEngine::Instance().CreateWorkspace(u"teste"_s, u"admin"_s, QString(), dao::dbUseJet);
    session.database = session.workspace->OpenDatabase(Path(), false, readOnly, Connect());
    return session;
}

QString SaidBy(const std::function<void()>& work) {
    try {
        work();
    } catch (const Erro& erro) {
        return QString::number(erro.Number()) + u' ' + erro.Description();
    }
    return {};
}

void ReadRows(dao::Database& database, const AnyText& sql, QStringList& rows) {
    const auto result = database.OpenRecordset(sql, dao::dbOpenForwardOnly);
    for (; !result->Eof(); result->MoveNext()) {
        QStringList cells;
        for (int i = 0; i < result->FieldCount(); ++i) {
            cells.append(result->Fields(i).Value().toString());
        }
        rows.append(cells.join(u'|'));
    }
}
