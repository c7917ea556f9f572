#include "platform/system/paths.h"
#include "secrets/segredo.h"
#include "session/configuracao.h"
#include "session/global.h"
#include "support/database.h"
#include "support/testmain.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include "peer.h"

using namespace Qt::StringLiterals;
using testing_support::ErrorOf;

namespace {

// What nobody but the owner may have.
constexpr QFileDevice::Permissions Outros(0x0077);

QString Guardado(const QString& texto) {
    return CifrarTexto(texto, true);
}

QString Linha(const QString& verificacao, const QString& usuario, const QString& senha) {
    return verificacao + u'|' + Guardado(usuario) + u'|' + Guardado(senha);
}

// One digit of the first block: what comes out is noise, whose length is refused or impossible.
QString Danificado(const QString& guardado, char16_t digito) {
    return QString(guardado).replace(5, 1, QChar(digito));
}

}  // namespace

class TestConfiguracao : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> pasta_;
    QByteArray pastaAnterior_;

    QString Caminho() const { return pasta_->filePath(u"Ordavia/CatalogoTarvoConfig.txt"_s); }

    void Por(const QString& texto) const {
        QDir().mkpath(pasta_->filePath(u"Ordavia"_s));
        sys::WriteWhole(Caminho(), texto.toUtf8());
    }

    QString Arquivo() const { return sys::ReadText(Caminho()); }

private Q_SLOTS:
    void init() {
        pasta_ = std::make_unique<QTemporaryDir>();
        pastaAnterior_ = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", pasta_->path().toUtf8());
    }

    void cleanup() { qputenv("XDG_DATA_HOME", pastaAnterior_); }

    // What each content of the file gives, and what it is afterwards. No file: a null text.
    void LeituraERemendo_data() {
        QTest::addColumn<QString>("antes");
        QTest::addColumn<bool>("ligada");
        QTest::addColumn<QString>("usuario");
        QTest::addColumn<QString>("senha");
        QTest::addColumn<QString>("depois");
        const QString ana = Guardado(u"ana"_s);
        const QString chave = Guardado(u" chave"_s);
        QTest::newRow("none") << QString() << true << u""_s << u""_s << u"1||"_s;
        QTest::newRow("empty") << u""_s << true << u""_s << u""_s << u"1||"_s;
        QTest::newRow("whole") << u"1|"_s + ana + u'|' + chave << true << u"ana"_s << u" chave"_s
                               << u"1|"_s + ana + u'|' + chave;
        QTest::newRow("off") << u"0||"_s << false << u""_s << u""_s << u"0||"_s;
        QTest::newRow("a word") << u"sim|"_s + ana + u'|' << false << u"ana"_s << u""_s
                                << u"sim|"_s + ana + u'|';
        QTest::newRow("more fields") << u"0|||x"_s << false << u""_s << u""_s << u"0|||x"_s;
        QTest::newRow("user's length") << u"0|"_s + ana.first(40) + u'|' + chave << false << u""_s
                                       << u" chave"_s << u"0||"_s + chave;
        QTest::newRow("user's digit") << u"1|x"_s + ana.mid(1) + u'|' + chave << true << u""_s
                                      << u" chave"_s << u"1||"_s + chave;
        for (const char16_t digito : u"0123456789ABCDEF"_s.toStdU16String()) {
            const QString noise = Danificado(chave, digito);
            if (noise != chave) {
                QTest::addRow("password's noise %c", char(digito))
                    << u"1|"_s + ana + u'|' + noise << true << u"ana"_s << u""_s
                    << u"1|"_s + ana + u'|';
            }
        }
        QTest::newRow("two fields") << u"0|"_s + ana << false << u"ana"_s << u""_s << u"1||"_s;
        QTest::newRow("one field") << u"0"_s << false << u""_s << u""_s << u"1||"_s;
    }

    void LeituraERemendo() {
        QFETCH(QString, antes);
        QFETCH(QString, senha);
        QFETCH(QString, usuario);
        if (!antes.isNull()) {
            Por(antes);
        }
        QString lido = u"x"_s;
        QString senhaLida = u"x"_s;
        VerificacaoAutomatica = antes.startsWith(u'0') || antes.startsWith(u's');
        LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, lido, senhaLida);
        QTEST(VerificacaoAutomatica, "ligada");
        QCOMPARE(lido + senhaLida, u"xx"_s);  // that key leaves them alone
        LerConfiguracao(u"USUARIO_SENHA"_s, lido, senhaLida);
        QCOMPARE(lido, usuario);
        QCOMPARE(senhaLida, senha);
        QTEST(Arquivo(), "depois");
    }

    void OutraChave() {
        VerificacaoAutomatica = false;
        QString usuario = u"x"_s;
        QString senha = u"y"_s;
        LerConfiguracao(u"usuario_senha"_s, usuario, senha);
        QCOMPARE(usuario + senha, u"xy"_s);
        QVERIFY(!VerificacaoAutomatica);
        QCOMPARE(Arquivo(), u"1||"_s);
    }

    void Gravacao() {
        GravarConfiguracao(u"0"_s, u"ana"_s, u"chave"_s, true);
        QCOMPARE(Arquivo(), Linha(u"0"_s, u"ana"_s, u"chave"_s));
        GravarConfiguracao(u"1"_s, u"x"_s, u"x"_s, false);
        QCOMPARE(Arquivo(), Linha(u"1"_s, u"ana"_s, u"chave"_s));
        GravarConfiguracao(QString(), QString(), u"outra"_s, true);
        QCOMPARE(Arquivo(), Linha(u"1"_s, QString(), u"outra"_s));
        QCOMPARE(QFile::permissions(Caminho()) & Outros, QFileDevice::Permissions());
    }

    // The settings folder is no folder, the file is one: nobody is told but who has to read.
    void PastaQueNaoSeEscreve() {
        QString usuario;
        QString senha;
        QDir().mkpath(Caminho());
        GravarConfiguracao(u"0"_s, u"ana"_s, u"chave"_s, true);
        QVERIFY(QFileInfo(Caminho()).isDir());
        QCOMPARE(ErrorOf([&] { LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha); }), 75);

        QDir(pasta_->filePath(u"Ordavia"_s)).removeRecursively();
        sys::WriteWhole(pasta_->filePath(u"Ordavia"_s), "x");
        QCOMPARE(ErrorOf([&] { LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha); }), 53);
        QCOMPARE(sys::ReadBytes(pasta_->filePath(u"Ordavia"_s)), "x");
    }

    // The program's folder stands for the machine's where nothing was set up for it.
    void ArquivoDaMaquina() {
        const QTemporaryDir programa;
        const QString copia = programa.filePath(u"peer"_s);
        const QString daMaquina = programa.filePath(u"CatalogoTarvoConfig.txt"_s);
        QVERIFY(QFile::copy(QStringLiteral(TARVO_SETTINGS_PEER), copia));
        const QString linha = Linha(u"0"_s, u"ana"_s, u"chave"_s);
        sys::WriteWhole(daMaquina, linha.toUtf8());

        QCOMPARE(RunPeer({u"read"_s}, copia), u"0|ana|chave"_s);
        QCOMPARE(Arquivo(), linha);
        QCOMPARE(QFile::permissions(Caminho()) & Outros, QFileDevice::Permissions());
        // Taken over once: the user's own counts from then on, the machine's stays for the others.
        RunPeer({u"write"_s, u"eva"_s, u"outra"_s, u"1"_s}, copia);
        QCOMPARE(RunPeer({u"read"_s}, copia), u"0|eva|outra"_s);
        QCOMPARE(sys::ReadText(daMaquina), linha);

        // Without a user's folder the two are one file.
        sys::WriteWhole(pasta_->filePath(u"none"_s), "x");
        qputenv("XDG_DATA_HOME", pasta_->filePath(u"none"_s).toUtf8());
        QCOMPARE(RunPeer({u"read"_s}, copia), u"0|ana|chave"_s);
        QVERIFY(QFile::remove(daMaquina));
        QCOMPARE(RunPeer({u"read"_s}, copia), u"1||"_s);
        QVERIFY(QFile::exists(daMaquina));
    }

    // Readers and killed writers: always one of the contents that somebody wrote, as a whole.
    void DoisProgramasAoMesmoTempo() {
        const QStringList linhas = {Linha(u"1"_s, u"ana"_s, QString(20, u'a')),
                                    Linha(u"1"_s, QString(20, u'b'), u"b"_s)};
        Por(linhas.first());
        QRandomGenerator chance(5);
        for (int volta = 0; volta < 6; ++volta) {
            QProcess a;
            QProcess b;
            a.start(QStringLiteral(TARVO_SETTINGS_PEER),
                    {u"write"_s, u"ana"_s, QString(20, u'a'), u"100000"_s});
            b.start(QStringLiteral(TARVO_SETTINGS_PEER),
                    {u"write"_s, QString(20, u'b'), u"b"_s, u"100000"_s});
            QVERIFY(a.waitForStarted() && b.waitForStarted());
            QSet<QString> vistas;
            const QDeadlineTimer fim(150 + chance.bounded(100));
            while (!fim.hasExpired()) {
                vistas += Arquivo();
            }
            QVERIFY(a.state() == QProcess::Running && b.state() == QProcess::Running);
            a.kill();
            b.kill();
            QVERIFY(a.waitForFinished() && b.waitForFinished());
            vistas += Arquivo();
            for (const QString& vista : std::as_const(vistas)) {
                QVERIFY2(linhas.contains(vista), qPrintable(vista));
            }
        }
    }
};

TARVO_TEST(TestConfiguracao);
#include "test_configuracao.moc"
