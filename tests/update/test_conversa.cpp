#include "support/test.h"
#include "update/conversa.h"

struct TestConversa : Fixture {
    TestConversa() { qputenv(SharedMemory, QFile::encodeName(folder_.path())); }
    ~TestConversa() override {
        had_.isNull() ? qunsetenv(SharedMemory) : qputenv(SharedMemory, had_);
    }

#ifdef Q_OS_WIN
    static constexpr char SharedMemory[] = "TMP";
#else
    static constexpr char SharedMemory[] = "XDG_RUNTIME_DIR";
#endif
    QTemporaryDir folder_;
    const QByteArray had_ = qgetenv(SharedMemory);
};

TEST(TestConversa, BothEnds) {
    {
        const auto catalogue = Conversa::Abrir();
        QVERIFY(catalogue);
        std::unique_ptr<Conversa> verifier;
        {
            const Conversa::Convite invitation(catalogue.get());
            const QStringList files = QDir(folder_.path()).entryList(QDir::Files);
            QCOMPARE(files.size(), 1);
#ifdef Q_OS_UNIX  // elsewhere the folder says who may read
            QCOMPARE(QFile::permissions(folder_.filePath(files.first())) &
                         (QFile::ReadGroup | QFile::ReadOther),
                     QFile::Permissions());
#endif
            QCOMPARE(qEnvironmentVariable("TARVO_CONVERSA"), folder_.filePath(files.first()));
            verifier = Conversa::Atender();
        }
        QVERIFY(verifier);
        QVERIFY(!Conversa::Atender());  // programs that are started later hear nothing of it
        {
            // Another kind of file. It is not made smaller: Windows would refuse that.
            const Conversa::Convite invitation(catalogue.get());
            QFile file(folder_.filePath(QDir(folder_.path()).entryList(QDir::Files).first()));
            QVERIFY(file.open(QIODevice::ReadWrite));
            const QByteArray mark = file.peek(4);
            QVERIFY(file.write("XXXX") == 4 && file.flush() && !Conversa::Atender());
            QVERIFY(file.seek(0) && file.write(mark) == 4 && file.flush() && Conversa::Atender());
            QVERIFY(file.resize(file.size() + 1) && !Conversa::Atender());
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
    }
    QCOMPARE(QDir(folder_.path()).entryList(QDir::Files), QStringList());
}
