#include "support/database.h"

namespace testing_support {

TestDatabase::TestDatabase(const QByteArray& definition) {
    dao::DBEngine::Instance().CreateDatabase(Path(), Connect(), definition);
}

TestDatabase::Session TestDatabase::Open(bool readOnly) const {
    Session session;
    session.workspace = dao::DBEngine::Instance().CreateWorkspace(
        QStringLiteral("teste"), QStringLiteral("admin"), QString(), dao::dbUseJet);
    session.database = session.workspace->OpenDatabase(Path(), false, readOnly, Connect());
    return session;
}

}  // namespace testing_support
