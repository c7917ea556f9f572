#include "session/global.h"
#include "settings/arquivo.h"
#include "settings/textocifrado.h"
#include "usuario.h"

namespace {

// What nobody but the owner may have.
constexpr QFileDevice::Permissions Outros(0x0077);

QString Guardado(const AnyText& texto) {
    return CifrarTexto(texto, true);
}

QString Linha(const AnyText& verificacao, const AnyText& usuario, const AnyText& senha) {
    return verificacao + u'|' + Guardado(usuario) + u'|' + Guardado(senha);
}

}  // namespace

struct TestConfiguracao : Fixture {
    std::unique_ptr<PastaDoUsuario> pasta_;

    QString Arquivo() const { return sys::ReadText(pasta_->Configuracao()); }

    void init() override { pasta_ = std::make_unique<PastaDoUsuario>(); }
    void cleanup() override { pasta_.reset(); }
};

// What each content of the file gives, and what it is afterwards. No file: a null text.
TEST(TestConfiguracao, LeituraERemendo) {
    Each<QString, bool, QString, QString, QString> row;
    const QString ana = Guardado("ana");
    const QString chave = Guardado(" chave");
    row("none", {}, true, "", "", "1||");
    row("empty", "", true, "", "", "1||");
    row("whole", u"1|"_s + ana + u'|' + chave, true, "ana", " chave", u"1|"_s + ana + u'|' + chave);
    row("off", "0||", false, "", "", "0||");
    row("a word", u"sim|"_s + ana + u'|', false, "ana", "", u"sim|"_s + ana + u'|');
    row("more fields", "0|||x", false, "", "", "0|||x");
    row("user's length", u"0|"_s + ana.first(40) + u'|' + chave, false, "", " chave",
        u"0||"_s + chave);
    row("user's digit", u"1|x"_s + ana.mid(1) + u'|' + chave, true, "", " chave", u"1||"_s + chave);
    for (const char digito : QByteArray("0123456789ABCDEF")) {
        // One digit of the first block: what comes out is noise, whose length is refused or
        // impossible.
        const QString ruido = QString(chave).replace(5, 1, QLatin1Char(digito));
        if (ruido != chave) {
            row(QByteArray("password's noise ") + digito, u"1|"_s + ana + u'|' + ruido, true, "ana",
                "", u"1|"_s + ana + u'|');
        }
    }
    row("two fields", u"0|"_s + ana, false, "ana", "", "1||");
    row("one field", "0", false, "", "", "1||");
    for (const auto& [antes, ligada, usuario, senha, depois] : row) {
        if (!antes.isNull()) {
            Write(pasta_->Configuracao(), antes.toUtf8());
        }
        QString lido = u"x"_s;
        QString senhaLida = u"x"_s;
        VerificacaoAutomatica = antes.startsWith(u'0') || antes.startsWith(u's');
        LerConfiguracao(u"VERIFICACAOAUTOMATICA"_s, lido, senhaLida);
        QCOMPARE(VerificacaoAutomatica, ligada);
        QCOMPARE(lido + senhaLida, u"xx"_s);  // that key leaves them alone
        LerConfiguracao(u"USUARIO_SENHA"_s, lido, senhaLida);
        QCOMPARE(lido, usuario);
        QCOMPARE(senhaLida, senha);
        QCOMPARE(Arquivo(), depois);
    }
}

TEST(TestConfiguracao, OutraChave) {
    VerificacaoAutomatica = false;
    QString usuario = u"x"_s;
    QString senha = u"y"_s;
    LerConfiguracao(u"usuario_senha"_s, usuario, senha);
    QCOMPARE(usuario + senha, u"xy"_s);
    QVERIFY(!VerificacaoAutomatica);
    QCOMPARE(Arquivo(), u"1||"_s);
}

TEST(TestConfiguracao, Gravacao) {
    GravarConfiguracao(u"0"_s, u"ana"_s, u"chave"_s, true);
    QCOMPARE(Arquivo(), Linha("0", "ana", "chave"));
    GravarConfiguracao(u"1"_s, u"x"_s, u"x"_s, false);
    QCOMPARE(Arquivo(), Linha("1", "ana", "chave"));
    GravarConfiguracao(QString(), QString(), u"outra"_s, true);
    QCOMPARE(Arquivo(), Linha("1", QString(), "outra"));
    QCOMPARE(QFile::permissions(pasta_->Configuracao()) & Outros, QFileDevice::Permissions());
}

// The settings folder is no folder, the file is one: nobody is told but who has to read.
TEST(TestConfiguracao, PastaQueNaoSeEscreve) {
    QString usuario;
    QString senha;
    QDir().mkpath(pasta_->Configuracao());
    GravarConfiguracao(u"0"_s, u"ana"_s, u"chave"_s, true);
    QVERIFY(QFileInfo(pasta_->Configuracao()).isDir());
    QCOMPARE(ErrorOf([&] { LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha); }), 75);

    QDir(pasta_->Caminho(u"Ordavia"_s)).removeRecursively();
    sys::WriteWhole(pasta_->Caminho(u"Ordavia"_s), "x");
    QCOMPARE(ErrorOf([&] { LerConfiguracao(u"USUARIO_SENHA"_s, usuario, senha); }), 53);
    QCOMPARE(sys::ReadBytes(pasta_->Caminho(u"Ordavia"_s)), "x");
}

// The program's folder stands for the machine's where nothing was set up for it.
TEST(TestConfiguracao, ArquivoDaMaquina) {
    const QTemporaryDir programa;
    const QString copia = programa.filePath(u"vizinho"_s);
    const QString daMaquina = programa.filePath(u"CatalogoTarvoConfig.txt"_s);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copia));
    const QString linha = Linha("0", "ana", "chave");
    sys::WriteWhole(daMaquina, linha.toUtf8());

    QCOMPARE(OutputOf(copia, {"read"}), u"0|ana|chave"_s);
    QCOMPARE(Arquivo(), linha);
    QCOMPARE(QFile::permissions(pasta_->Configuracao()) & Outros, QFileDevice::Permissions());
    // Taken over once: the user's own counts from then on, the machine's stays for the others.
    OutputOf(copia, {"write", "eva", "outra", "1"});
    QCOMPARE(OutputOf(copia, {"read"}), u"0|eva|outra"_s);
    QCOMPARE(sys::ReadText(daMaquina), linha);

    // Without a user's folder the two are one file.
    sys::WriteWhole(pasta_->Caminho(u"none"_s), "x");
    qputenv(UserData, pasta_->Caminho(u"none"_s).toUtf8());
    QCOMPARE(OutputOf(copia, {"read"}), u"0|ana|chave"_s);
    QVERIFY(QFile::remove(daMaquina));
    QCOMPARE(OutputOf(copia, {"read"}), u"1||"_s);
    QVERIFY(QFile::exists(daMaquina));
}

// Readers and killed writers: always one of the contents that somebody wrote, as a whole.
TEST(TestConfiguracao, DoisProgramasAoMesmoTempo) {
    const QStringList linhas = {Linha("1", "ana", QString(20, u'a')),
                                Linha("1", QString(20, u'b'), "b")};
    Write(pasta_->Configuracao(), linhas.first().toUtf8());
    QRandomGenerator chance(5);
    for (int volta = 0; volta < 6; ++volta) {
        QProcess a;
        QProcess b;
        const QString eu = QCoreApplication::applicationFilePath();
        const QStringList gravar = List("--play", "vizinho", "write");
        a.start(eu, gravar + List("ana", QString(20, u'a'), "100000"));
        b.start(eu, gravar + List(QString(20, u'b'), "b", "100000"));
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
