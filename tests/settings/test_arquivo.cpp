#include "settings/textocifrado.h"
#include "usuario.h"

namespace {

// What nobody but the owner may have.
constexpr QFileDevice::Permissions Outros(0x0077);

QString Linha(const AnyText& verificacao, const AnyText& usuario, const AnyText& senha) {
    return verificacao + u'|' + CifrarTexto(usuario, true) + u'|' + CifrarTexto(senha, true);
}

// Another program of the same user: USER PASSWORD TIMES are written, then tells what it reads.
int Vizinho(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList dados = QCoreApplication::arguments();
    for (int i = 0; i < dados.value(3).toInt(); ++i) {
        GravarConfiguracao(QString(), dados.at(1), dados.at(2), true);
    }
    QTextStream(stdout) << Lido();
    return 0;
}
TARVO_PROGRAM("vizinho", Vizinho);

}  // namespace

struct TestConfiguracao : ComUsuario {};

// What each content of the file gives, and what it is afterwards. No file: a null text.
TEST(TestConfiguracao, LeituraERemendo) {
    const QString ana = CifrarTexto(u"ana"_s, true);
    const QString chave = CifrarTexto(u" chave"_s, true);
    const QString inteira = u"1|"_s + ana + u'|' + chave;
    for (const auto& [antes, lido, depois] : Each<QString, QString, QString>{
             {"none", {}, "1||", "1||"},
             {"empty", "", "1||", "1||"},
             {"whole", inteira, "1|ana| chave", inteira},
             {"a word", "sim||", "0||", "sim||"},
             {"more fields", "0|||x", "0||", "0|||x"},
             {"user's length", u"0|"_s + ana.first(40) + u'|' + chave, "0|| chave",
              u"0||"_s + chave},
             {"user's digit", u"1|x"_s + ana.mid(1) + u'|' + chave, "1|| chave", u"1||"_s + chave},
             {"password's length", inteira.chopped(2), "1|ana|", u"1|"_s + ana + u'|'},
             {"two fields", u"0|"_s + ana, "0|ana|", "1||"},
             {"one field", "0", "0||", "1||"},
         }) {
        QFile::remove(Configuracao());
        if (!antes.isNull()) {
            Write(Configuracao(), antes.toUtf8());
            QFile arquivo(Configuracao());
            QVERIFY(arquivo.open(QIODevice::ReadWrite) &&
                    arquivo.setFileTime(QDateTime({2001, 1, 1}, {}), QFile::FileModificationTime));
        }
        VerificacaoAutomatica = lido.startsWith(u'0');
        QCOMPARE(Lido(), lido);
        QCOMPARE(Guardado(), depois);
        // What is in order is not written again.
        QCOMPARE(QFileInfo(Configuracao()).lastModified().date().year() == 2001, antes == depois);
    }
}

TEST(TestConfiguracao, Gravacao) {
    GravarConfiguracao(u"0"_s, u"ana"_s, u"chave"_s, true);
    QCOMPARE(Guardado(), Linha("0", "ana", "chave"));
    GravarConfiguracao(u"1"_s, u"x"_s, u"x"_s, false);
    QCOMPARE(Guardado(), Linha("1", "ana", "chave"));
    GravarConfiguracao(QString(), QString(), u"outra"_s, true);
    QCOMPARE(Guardado(), Linha("1", "", "outra"));
    QCOMPARE(QFile::permissions(Configuracao()) & Outros, QFileDevice::Permissions());
}

// The settings folder is no folder, the file is one: nobody is told but who has to read.
TEST(TestConfiguracao, PastaQueNaoSeEscreve) {
    QDir().mkpath(Configuracao());
    GravarConfiguracao(u"0"_s, u"ana"_s, u"chave"_s, true);
    QVERIFY(QFileInfo(Configuracao()).isDir());
    QCOMPARE(ErrorOf(Lido), 75);

    QDir(Ordavia()).removeRecursively();
    Write(Ordavia());
    QCOMPARE(ErrorOf(Lido), 53);
    QCOMPARE(sys::ReadBytes(Ordavia()), "x");
}

// The program's folder stands for the machine's where nothing was set up for it.
TEST(TestConfiguracao, ArquivoDaMaquina) {
    const QTemporaryDir programa;
    const QString copia = programa.filePath(u"vizinho"_s);
    const QString daMaquina = programa.filePath(u"CatalogoTarvoConfig.txt"_s);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), copia));
    const QString linha = Linha("0", "ana", "chave");
    Write(daMaquina, linha.toUtf8());

    QCOMPARE(OutputOf(copia, {}), u"0|ana|chave"_s);
    QCOMPARE(Guardado(), linha);
    QCOMPARE(QFile::permissions(Configuracao()) & Outros, QFileDevice::Permissions());
    // Taken over once: the user's own counts from then on, the machine's stays for the others.
    OutputOf(copia, {"eva", "outra", "1"});
    QCOMPARE(OutputOf(copia, {}), u"0|eva|outra"_s);
    QCOMPARE(sys::ReadText(daMaquina), linha);

    // Without a user's folder the two are one file.
    qputenv(UserData, QFile::encodeName(daMaquina));
    QCOMPARE(OutputOf(copia, {}), u"0|ana|chave"_s);
    QVERIFY(QFile::remove(daMaquina));
    qputenv(UserData, QFile::encodeName(copia));
    QCOMPARE(OutputOf(copia, {}), u"1||"_s);
    QVERIFY(QFile::exists(daMaquina));
}

// Readers and killed writers: always one of the contents that somebody wrote, as a whole.
TEST(TestConfiguracao, DoisProgramasAoMesmoTempo) {
    const QString longo(20, u'x');
    const QSet<QString> linhas = {Linha("1", "ana", longo), Linha("1", longo, "b")};
    GravarConfiguracao(u"1"_s, u"ana"_s, longo, true);
    QRandomGenerator chance(5);
    for (int volta = 0; volta < 6; ++volta) {
        QProcess vizinhos[2];
        const QString eu = QCoreApplication::applicationFilePath();
        vizinhos[0].start(eu, List("--play", "vizinho", "ana", longo, "100000"));
        vizinhos[1].start(eu, List("--play", "vizinho", longo, "b", "100000"));
        QVERIFY(vizinhos[0].waitForStarted() && vizinhos[1].waitForStarted());
        QSet<QString> vistas;
        const QDeadlineTimer fim(150 + chance.bounded(100));
        while (!fim.hasExpired()) {
            vistas += Guardado();
        }
        for (QProcess& vizinho : vizinhos) {
            QCOMPARE(vizinho.state(), QProcess::Running);
            vizinho.kill();
            QVERIFY(vizinho.waitForFinished());
        }
        vistas += Guardado();
        QCOMPARE((vistas - linhas).values(), QStringList());
    }
}
