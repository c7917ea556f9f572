#include "support/test.h"
#include "update/conversa.h"

#include <QScopeGuard>

#ifdef Q_OS_WIN
constexpr char SharedMemory[] = "TMP";
#else
constexpr char SharedMemory[] = "XDG_RUNTIME_DIR";
#endif

struct TestConversa : Fixture {};

TEST(TestConversa, BothEnds) {
    const QTemporaryDir folder;
    const QScopeGuard again([had = qgetenv(SharedMemory)] { qputenv(SharedMemory, had); });
    qputenv(SharedMemory, QFile::encodeName(folder.path()));
    {
        auto catalogue = Conversa::Abrir();
        QVERIFY(catalogue);
        std::unique_ptr<Conversa> verifier;
        std::unique_ptr<Conversa> late;
        {
            const Conversa::Convite invitation(catalogue.get());
            const QStringList files = QDir(folder.path()).entryList(QDir::Files);
            QCOMPARE(files.size(), 1);
#ifdef Q_OS_UNIX  // elsewhere the folder says who may read
            QCOMPARE(QFile::permissions(folder.filePath(files.first())) &
                         (QFile::ReadGroup | QFile::ReadOther),
                     QFile::Permissions());
#endif
            QCOMPARE(qEnvironmentVariable("TARVO_CONVERSA"), folder.filePath(files.first()));
            verifier = Conversa::Atender();
        }
        QVERIFY(verifier);
        QVERIFY(!Conversa::Atender());  // programs that are started later hear nothing of it
        {
            // Another kind of file. It is not made smaller: Windows would refuse that.
            const Conversa::Convite invitation(catalogue.get());
            QFile file(folder.filePath(QDir(folder.path()).entryList(QDir::Files).first()));
            QVERIFY(file.open(QIODevice::ReadWrite));
            const QByteArray mark = file.peek(4);
            QVERIFY(file.write("XXXX") == 4 && file.flush() && !Conversa::Atender());
            QVERIFY(file.seek(0) && file.write(mark) == 4 && file.flush());
            late = Conversa::Atender();
            QVERIFY(late && file.resize(file.size() + 1) && !Conversa::Atender());
        }

        catalogue->Chamar();
        QVERIFY(verifier->FoiChamada() && !verifier->FoiChamada());  // each call once

        QString user;
        QString password;
        QVERIFY(!catalogue->LerAcesso(user, password));
        verifier->GuardarAcesso(u"maria"_s, u"s3nha ç€"_s);
        QVERIFY(catalogue->LerAcesso(user, password));
        QCOMPARE(user + u'/' + password, u"maria/s3nha ç€"_s);
        verifier->GuardarAcesso(QString(300, u'u'), {});
        QVERIFY(catalogue->LerAcesso(user, password));
        QCOMPARE(user, QString(256, u'u'));

        verifier.reset();
        QVERIFY(catalogue->LerAcesso(user, password));  // what it has told outlives it
#ifdef Q_OS_UNIX  // elsewhere a file that another one has open cannot go
        catalogue.reset();
        QVERIFY(!late->LerAcesso(user, password));
#else
        late.reset();
#endif
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
}
