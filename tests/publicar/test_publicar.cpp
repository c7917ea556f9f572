#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "publicar/publish.h"
#include "support/catalogo.h"
#include "support/test.h"
#include "update/prova.h"

#include <QProcess>

using publicar::Finding;
using verificar::Weight;

namespace {

// As a user would sum a report up: "!" a fault, "?" a hint, its cases behind it.
QStringList Lines(const QList<Finding>& findings) {
    QStringList lines;
    for (const Finding& finding : findings) {
        const QString mark = finding.weight == Weight::Fault ? u"!"_s : u"?"_s;
        for (const QString& example : finding.examples) {
            lines += mark + finding.what + u": "_s + example;
        }
    }
    return lines;
}

}  // namespace

class TestPublicar : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root_;
    publicar::Order order_;

    QString In(const AnyText& name) const { return root_->filePath(name); }

    QStringList Check() const {
        QList<Finding> findings;
        const auto files = publicar::ReadFolder(order_, findings);
        return Lines(findings + publicar::Check(order_, files));
    }

    static QString HashOf(const QString& path) {
        return QString::fromLatin1(sys::HashOfFile(path).toHex());
    }

    struct Outcome {
        int code;
        QString output;
    };
    Outcome Run(const AnyTexts& options) const {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(TARVO_PUBLICAR),
                      List(order_.folder, "--catalogue", order_.catalogue) + options);
        if (!process.waitForFinished(60000)) {
            qFatal("tarvo-publicar did not end");
        }
        return {process.exitCode(), QString::fromLocal8Bit(process.readAll())};
    }

private Q_SLOTS:
    void init() {
        root_ = std::make_unique<QTemporaryDir>();
        {
            CatalogoDeTeste catalogue;
            catalogue.Executar(LinhasDePesquisa());
            QDir().mkpath(In("dados"));
            QVERIFY(QFile::copy(catalogue.Pasta() + u"/Tarvo.mdb"_s, In("dados/Tarvo.mdb")));
        }
        order_ = {};
        order_.folder = In("nova");
        order_.catalogue = In("dados");
        order_.site = In("site");
        order_.release = 2;
        order_.patience = 1;
        QVERIFY(QDir().mkpath(order_.folder) && QDir().mkpath(order_.site));
    }

    // Each script alone, and the beginning of each line that is to be said about it.
    void Scripts_data() {
        const Table<QByteArray, QStringList> row("script", "said");
        row("good",
            "B:UPDATE PECA SET DescricaoPeca = '1?' WHERE CodigoPeca = 2?\r\n"
            "Rel\xc3\xa9<<;>>1\r\nAnel<<;>>2\r\n\r\nR:\r\n",
            {});
        row("fails in the middle",
            "E:UPDATE PECA SET DescricaoPeca = 'a' WHERE CodigoPeca = 1\r\n"
            "E:UPDATE PESSA SET DescricaoPeca = 'a'\r\n"
            "E:INSERT INTO PECA (CodigoPeca) VALUES (1)\r\n",
            {"!Comando que falha (no cliente, em silêncio): a.sdb, linha 2: erro 3078",
             "!Comando que falha (no cliente, em silêncio): a.sdb, linha 3: erro 3022"});
        row("changes nothing", "E:DELETE FROM PECA WHERE CodigoPeca = 99\r\n",
            {"?Comando que não muda nada: a.sdb, linha 1: DELETE"});
        row("no template", "1<<;>>2\r\n",
            {"!Linha de dados sem um modelo \"B:\" antes dela: a.sdb, linha 1"});
        row("too few values",
            "B:UPDATE PECA SET DescricaoPeca = '1?' WHERE CodigoPeca = 2?\r\nx\r\n",
            {"!Linha com menos valores do que o modelo pede: a.sdb, linha 2: 1 em vez de 2",
             "!Comando que falha (no cliente, em silêncio): a.sdb, linha 2"});
        row("too many values",
            "B:UPDATE PECA SET DescricaoPeca = '1?' WHERE CodigoPeca = 1\r\nx<<;>>y\r\n",
            {"?Linha com mais valores do que o modelo pede: a.sdb, linha 2: 2 em vez de 1"});
        row("line feeds alone",
            "E:UPDATE PECA SET DescricaoPeca = 'a'\nE:UPDATE PECA SET DescricaoPeca = 'b'\n",
            {"!Fim de linha que não é CR LF: o instalador lê as linhas como uma só: a.sdb",
             "!Comando que falha (no cliente, em silêncio): a.sdb, linha 1"});
        row("encoding mark",
            "\xef\xbb\xbf"
            "E:UPDATE PECA SET DescricaoPeca = 'a'\r\n",
            {});
        row("looks like a command", "B:\r\n e:UPDATE PECA SET DescricaoPeca = 'a'\r\n",
            {"!Linha de dados sem um modelo",
             "?Linha de dados que parece um comando: a.sdb, linha 2"});
        row("other encoding", "E:UPDATE PECA SET DescricaoPeca = 'v\xe1lvula'\r\n",
            {"?Script que não está em UTF-8"});
        row("starts a program", "S:instalar.exe /s\r\n",
            {"?Programa que o script inicia (aqui não foi iniciado): a.sdb, linha 1: instalar"});
        row("adds again",
            "E:INSERT INTO PECA (CodigoPeca, NumeroTarvoPeca, DescricaoPeca) SELECT "
            "Max(CodigoPeca) + 1, "
            "'N', 'Nova' FROM PECA\r\n",
            {"?Tabela que muda quando os scripts correm de novo, como depois de uma queda de luz: "
             "PECA: de 4 para 5 linhas; a.sdb, linha 1"});
        row("counts on",
            "E:UPDATE COMPONENTE SET DescricaoComponente = DescricaoComponente & '!' "
            "WHERE CodigoComponente = 1\r\n",
            {"?Tabela que muda quando os scripts correm de novo, como depois de uma queda de luz: "
             "COMPONENTE: de 3 para 3 linhas; a.sdb, linha 1"});
        row("wants the update's own lock", "E:UPDATE CONTROLETRAN SET a = 2\r\n",
            {"!Comando que falha (no cliente, em silêncio): a.sdb, linha 1: erro 3260"});
        row("never ends",
            "E:INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
            "NumeroClienteConcorrente) SELECT 9, '12002', 'X' & A.CodigoPeca & "
            "B.CodigoPeca & C.CodigoPeca & D.CodigoPeca & E.CodigoPeca & F.CodigoPeca FROM PECA "
            "AS A, PECA AS B, PECA AS C, PECA AS D, PECA AS E, PECA AS F\r\n"
            "E:UPDATE PECA SET DescricaoPeca = (SELECT Count(*) FROM PECA AS A, PECA AS B, PECA AS "
            "C, "
            "COMPONENTE AS D, COMPONENTE AS E, COMPONENTE AS F, JOGOREPARO AS G, JOGOREPARO AS H, "
            "JOGOREPARO AS I, PECA AS J, PECA AS K, PECA AS L, PECA AS M, PECA AS N, PECA AS O, "
            "PECA AS P, PECA AS Q, PECA AS R)\r\n",
            {"!Comando que não termina em 1 segundos: a.sdb, linha 2: UPDATE"});
        row("breaks a rule of the rows",
            "E:UPDATE PECA SET DescricaoPeca = ' a' WHERE CodigoPeca = 1\r\n",
            {"!Depois dos scripts: PECA.DescricaoPeca que a pesquisa não acha"});
        row("leaves no version", "E:DELETE FROM UMREGISTRO\r\n",
            {"!Depois dos scripts: UMREGISTRO"});
        row("takes out and puts in again",
            "E:DELETE FROM REFERENCIACRUZADA WHERE NumeroTarvo = '12002'\r\n"
            "E:INSERT INTO REFERENCIACRUZADA (CodigoClienteConcorrente, NumeroTarvo, "
            "NumeroClienteConcorrente) VALUES (7, '12002', 'A71')\r\n",
            {});
    }
    void Scripts() {
        QFETCH(QByteArray, script);
        QFETCH(QStringList, said);
        Write(In("nova/a.sdb"), script);
        const QByteArray before = sys::ReadBytes(In("dados/Tarvo.mdb"));
        const QStringList got = Check();
        QVERIFY2(got.size() == said.size(), qPrintable(got.join(u'\n')));
        for (qsizetype i = 0; i < said.size(); ++i) {
            QVERIFY2(got.at(i).startsWith(said.at(i)), qPrintable(got.join(u'\n')));
        }
        QCOMPARE(sys::ReadBytes(In("dados/Tarvo.mdb")), before);
    }

    void TemplateGoesOnInTheNextScript() {
        Write(In("nova/1.sdb"), "B:UPDATE PECA SET DescricaoPeca = '1?' WHERE CodigoPeca = 1");
        Write(In("nova/2.sdb"), "Nova\r\n");
        QCOMPARE(Check(), QStringList());
    }

    void Names() {
        Write(In("nova/FotoPeca/boa.png"));
        Write(In("nova/Tarvo.mdb"));
        Write(In("nova/a;b.png"));
        Write(In("nova/.oculto"));
        // One name here, a way out there; two names here, one file there.
        Write(In("nova/x\\..\\..\\fora.png"));
        Write(In("nova/FotoPeca/BOA.PNG"));
        Write(In("fora.txt"));
        QVERIFY(QFile::link(In("fora.txt"), In("nova/atalho.txt")));
        QVERIFY(QFile::link(In("dados"), In("nova/pasta")));
        const QStringList got = Check();
        const QStringList wanted = {
            u"!Atalho que leva para fora da pasta: atalho.txt"_s,
            u"!Atalho para outra pasta, que não é seguido: pasta"_s,
            u"?Arquivo oculto, que não é publicado: .oculto"_s,
            u"fica fora da pasta de dados"_s,
            u"é parte do catálogo aberto"_s,
            u"!Nome que não cabe numa lista (ponto e vírgula ou espaço na ponta): a;b.png"_s,
            u"FotoPeca\\BOA.PNG / FotoPeca\\boa.png"_s,
        };
        QVERIFY2(got.size() == wanted.size(), qPrintable(got.join(u'\n')));
        for (const QString& text : wanted) {
            QVERIFY2(!got.filter(text).isEmpty(), qPrintable(text + u'\n' + got.join(u'\n')));
        }
    }

    void NamesOfEarlierVersions() {
        Write(In("site/ListVersao1.txt"), "SDB;Dados.sdb;9\r\nARQ;FotoPeca\\a.png;9\r\n");
        Write(In("nova/dados.sdb"), "R:\r\n");
        Write(In("nova/FotoPeca/A.png"));
        const QStringList got = Check();
        QCOMPARE(got.size(), 2);
        QVERIFY(got.at(0).startsWith("!Script com o nome"_L1));
        QVERIFY(got.at(0).endsWith(u"dados.sdb (versão 1)"_s));
        QVERIFY(got.at(1).endsWith(u"FotoPeca\\A.png (versão 1)"_s));
        QVERIFY(got.at(1).startsWith(u'?'));
    }

    void PublishesOnlyWhatIsSound() {
        Write(In("nova/a.sdb"), "E:UPDATE NADA SET x = 1\r\n");
        Write(In("nova/FotoPeca/n.png"), "figura");
        QCOMPARE(Run({"--release", "2", "--site", order_.site}).code, 1);
        QCOMPARE(QDir(order_.site).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());

        Write(In("nova/a.sdb"), "E:UPDATE PECA SET DescricaoPeca = 'Nova' WHERE CodigoPeca = 1");
        const Outcome good = Run({"--release", "2", "--site", order_.site, "--program",
                                  "FotoPeca/n.png", "--keep", In("dados2")});
        QVERIFY2(good.code == 0, qPrintable(good.output));
        QCOMPARE(sys::ReadText(In("site/ListVersao2.txt")),
                 u"EXE;FotoPeca\\n.png;6;%1\r\nSDB;a.sdb;61;%2\r\n"_s.arg(
                     HashOf(In("site/FotoPeca/n.png")), HashOf(In("site/a.sdb"))));
        QCOMPARE(sys::ReadText(In("site/FotoPeca/n.png")), u"figura"_s);
        QCOMPARE(sys::ReadText(In("site/Versao.txt")), u"2\r\n"_s);

        // The same version again, and one with a gap before it; from the kept catalogue it goes on.
        QCOMPARE(Run({"--release", "2", "--site", order_.site}).code, 1);
        QCOMPARE(Run({"--release", "4", "--site", order_.site}).code, 1);
        Write(In("nova/a.sdb"),
              "E:UPDATE PECA SET DescricaoPeca = 'Outra' WHERE DescricaoPeca = 'Nova'");
        QVERIFY(QFile::rename(In("nova/a.sdb"), In("nova/b.sdb")));
        order_.catalogue = In("dados2");
        const Outcome next = Run({"--release", "3", "--site", order_.site});
        QVERIFY2(next.code == 0 && !next.output.contains(u"não é o da versão"_s),
                 qPrintable(next.output));
        QCOMPARE(sys::ReadText(In("site/Versao.txt")), u"3\r\n"_s);
    }

    void NamesThatLockCustomersOut() {
        for (const char* name :
             {"versao.TXT", "ListVersao1.txt", "ListVersao12.txt.sig", "Versao.sig", "a%20b.png",
              "que?.png", "FotoPeca/nul.png", "ponto."}) {
            Write(In(u"nova/"_s + QString::fromUtf8(name)));
        }
        Write(In("nova/100%.png"));
        Write(In("nova/FotoPeca/Versao.txt"));
        const QString got = Check().join(u'\n');
        QCOMPARE(got.count(u"!Nome que o próprio servidor"_s), 4);
        QCOMPARE(got.count(u"!Nome que nenhum cliente"_s), 2);
        QCOMPARE(got.count(u"que o Windows não aceita"_s), 2);  // the question mark's, too
        QCOMPARE(got.count(u"!Nome que o Windows muda"_s), 1);
        QCOMPARE(got.count(u'\n'), 8);
    }

    // From the making of a key to a site that is signed again with the next one.
    void Signs() {
        const auto publish = [&](int release, const AnyTexts& more) {
            return Run(List("--release", QString::number(release), "--site", order_.site) + more)
                .code;
        };
        const auto keyOrder = [](const QStringList& arguments) {
            return QProcess::execute(QStringLiteral(TARVO_PUBLICAR), arguments);
        };
        const auto make = [&](const AnyText& folder) {
            return keyOrder({u"--new-key"_s, In(folder), u"--site-name"_s, u"loja"_s});
        };
        QCOMPARE(make("k1"), 0);
        QCOMPARE(make("k2"), 0);
        QCOMPARE(make("k1"), 2);  // a key is never written over
        QCOMPARE(QFile::permissions(In("k1/ChaveSecreta.txt")) & QFile::ReadOther, 0);
        const auto keys = [&](const AnyText& folder) {
            return LerTextoDasChaves(sys::ReadText(In(folder + u"/ChavesAtualizacao.txt"_s)));
        };
        const auto accepted = [&](const AnyText& folder, int release) {
            const QString list = In(u"site/ListVersao%1.txt"_s.arg(release));
            return ErrorOf([&] {
                       ConferirLista(keys(folder), release, sys::ReadBytes(list),
                                     sys::ReadBytes(list + u".sig"_s));
                   }) == 0;
        };

        Write(In("nova/FotoPeca/n.png"), "figura");
        QCOMPARE(publish(2, {"--key", In("k1/ChaveSecreta.txt")}), 0);
        QVERIFY(accepted("k1", 2) && !accepted("k2", 2));
        QCOMPARE(ConferirVersao(keys("k1"), sys::ReadBytes(In("site/Versao.sig"))).numero, 2);
        QCOMPARE(ConferirVersao(keys("k1"), sys::ReadBytes(In("site/Versao.sig"))).data,
                 QDate::currentDate());

        QFile::rename(In("nova/FotoPeca/n.png"), In("nova/FotoPeca/m.png"));
        QCOMPARE(publish(3, {}), 1);  // a signed site stays a signed site
        QCOMPARE(
            publish(3, {"--key", In("k1/ChaveSecreta.txt"), "--key", In("k2/ChaveSecreta.txt")}),
            0);
        QVERIFY(accepted("k1", 3) && accepted("k2", 3));

        // A list of the first years gets what it lacks.
        Write(In("site/ListVersao2.txt"), "ARQ;FotoPeca\\n.png;5\r\n");
        QCOMPARE(keyOrder({u"--sign-again"_s, u"--site"_s, order_.site, u"--key"_s,
                           In("k2/ChaveSecreta.txt")}),
                 0);
        QVERIFY(accepted("k2", 2) && accepted("k2", 3) && !accepted("k1", 3));
        QCOMPARE(sys::ReadText(In("site/ListVersao2.txt")),
                 u"ARQ;FotoPeca\\n.png;6;%1\r\n"_s.arg(HashOf(In("site/FotoPeca/n.png"))));
        QCOMPARE(ConferirVersao(keys("k2"), sys::ReadBytes(In("site/Versao.sig"))).numero, 3);
        QCOMPARE(keyOrder({u"--sign-again"_s, u"--site"_s, order_.site}), 2);
    }

    void FullDiskOfTheSite() {
        const QStringList alone = {u"--user"_s, u"--map-root-user"_s, u"--mount"_s};
        if (QProcess::execute(u"unshare"_s, QStringList(alone) << u"true"_s) != 0) {
            QSKIP("no disk of one's own to be had here");
        }
        Write(In(u"nova/figura.png"_s), QByteArray(300'000, 'f'));
        QDir().mkpath(In(u"pequeno"_s));
        const QString command =
            u"mount -t tmpfs -o size=128k tmpfs '%1' && '%2' '%3' --release 2 --catalogue '%4' "
            "--site '%1'; echo; ls -a '%1'"_s.arg(In(u"pequeno"_s), QStringLiteral(TARVO_PUBLICAR),
                                                  order_.folder, order_.catalogue);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(u"unshare"_s, QStringList(alone) << u"sh"_s << u"-c"_s << command);
        QVERIFY(process.waitForFinished());
        const QString output = QString::fromUtf8(process.readAll());
        QVERIFY2(output.endsWith(u"tarvo-publicar: Disco cheio\n\n.\n..\n"_s), qPrintable(output));
    }

    void WrongUse() {
        QCOMPARE(Run({}).code, 2);
        QCOMPARE(Run({"--release", "32768"}).code, 2);
        QCOMPARE(Run({"--release", "2", "sobra"}).code, 2);
        order_.catalogue = In("nada");
        QVERIFY(Run({"--release", "2"}).output.contains(u"Não há catálogo"_s));
    }
};

TARVO_FULL_KEYS;
TARVO_TEST(TestPublicar);
#include "test_publicar.moc"
