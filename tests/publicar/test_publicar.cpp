#include "importar/programa.h"
#include "platform/system/proof.h"
#include "publicar/names.h"
#include "publicar/publish.h"
#include "publicar/signing.h"
#include "support/cases.h"
#include "support/catalogo.h"
#include "update/prova.h"

#include <QRegularExpression>

using publicar::Finding;

// As a user would sum a report up: "!" a fault, "?" a hint, its cases behind it.
static QStringList Told(const QList<Finding>& findings) {
    QStringList lines;
    for (const Finding& finding : findings) {
        const QString mark = finding.weight == verificar::Weight::Fault ? u"!"_s : u"?"_s;
        for (const QString& example : finding.examples) {
            lines += mark + finding.what + u": "_s + example;
        }
    }
    return lines;
}

struct TestPublicar : InAFolder {
    publicar::Order order_;

    // Whether the folder is sound.
    bool Check() {
        QList<Finding> findings;
        files_ = publicar::ReadFolder(order_, findings);
        findings += publicar::Check(order_, files_);
        said_ = Told(findings);
        return !verificar::HasFault(findings);
    }

    publicar::Signer Key(const AnyText& folder) const {
        return publicar::ReadSigner(In(folder + u"/ChaveSecreta.txt"_s));
    }
    // As the program does it: what is sound is published.
    bool Publishes(int release, const AnyTexts& keys = {}) {
        order_.release = release;
        order_.signers.clear();
        for (const QString& key : keys) {
            order_.signers.push_back(Key(key));
        }
        const bool sound = Check();
        if (sound) {
            publicar::Publish(order_, files_);
        }
        return sound;
    }

    std::vector<publicar::File> files_;
    QStringList said_;

    static QString HashOf(const QString& path) {
        return QString::fromLatin1(sys::HashOfFile(path).toHex());
    }

    QStringList Arguments() const {
        return List(order_.folder, "--catalogue", order_.catalogue, "--site", order_.site,
                    "--release", "2");
    }

    void init() override {
        InAFolder::init();
        {
            CatalogoDeTeste catalogue;
            Executar(LinhasDePesquisa());
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
};

TEST(TestPublicar, Folders) {
    Cases row(TARVO_CASES "/folders.data");
    for (const auto& [one] : row) {
        const QStringList said = one.lines.filter(QRegularExpression(u"^[!?]"_s));
#ifdef Q_OS_WIN  // where no file has such names
        if (row.Name() == "names" || row.Name() == "names that lock customers out") {
            continue;
        }
#endif
        Write(In("fora.txt"));
        Write(In("site/ListVersao1.txt"), "SDB;Dados.sdb;9\r\nARQ;FotoPeca\\a.png;9\r\n");
        for (const QString& file : one.lines.mid(0, one.lines.size() - said.size())) {
            const QString name = file.section(u'=', 0, 0);
            const QString path = In(u"nova/"_s + QString(name).remove(u"-> "_s));
            if (file.startsWith("->"_L1)) {
                QVERIFY(QFile::link(In(file.endsWith("txt"_L1) ? "fora.txt" : "dados"), path));
            } else if (file.startsWith(u'%')) {
                Write(In(u"nova/"_s + name.mid(1)),
                      QByteArray::fromPercentEncoding(file.section(u'=', 1).toLatin1()));
            } else {
                Write(path, file.section(u'=', 1).append(u'\n').replace(u'\n', u"\r\n"_s).toUtf8());
            }
        }
        const QByteArray before = sys::ReadBytes(In("dados/Tarvo.mdb"));
        Check();
        QCOMPARE(said_.size(), said.size());
        const QString pattern = said.isEmpty() ? QString() : said.join(u"*\n"_s) + u'*';
        QCOMPARE(Like(said_.join(u'\n'), pattern), pattern);
        QCOMPARE(sys::ReadBytes(In("dados/Tarvo.mdb")), before);
    }
}

// Version after version, each from the catalogue that the one before has left.
TEST(TestPublicar, PublishesOnlyWhatIsSound) {
    Write(In("nova/a.sdb"), "E:UPDATE NADA SET x = 1\r\n");
    Write(In("nova/FotoPeca/n.png"), "figura");
    Ends(Arguments(), "1 *");
    QCOMPARE(NamesIn(order_.site), QStringList());

    Write(In("site/Versao.txt"), "1");
    QVERIFY(!Publishes(3));
    QVERIFY(said_.contains(u"!Falta no servidor a lista da versão anterior: ListVersao2.txt"_s));
    Write(In("nova/a.sdb"), "E:UPDATE PECA SET DescricaoPeca = 'Nova' WHERE CodigoPeca = 1");
    order_.programs = List("fotopeca\\N.png");
    order_.keep = In("dados2");
    QVERIFY(Publishes(2));
    QCOMPARE(said_, QStringList());
    QCOMPARE(sys::ReadText(In("site/ListVersao2.txt")),
             u"EXE;FotoPeca\\n.png;6;%1\r\nSDB;a.sdb;61;%2\r\n"_s.arg(
                 HashOf(In("site/FotoPeca/n.png")), HashOf(In("site/a.sdb"))));
    QCOMPARE(sys::ReadText(In("site/FotoPeca/n.png")), u"figura"_s);
    QCOMPARE(sys::ReadText(In("site/Versao.txt")), u"2\r\n"_s);

    order_.programs = List("n.png", "a.sdb");
    QVERIFY(!Publishes(4));
    QCOMPARE(said_, List("!Script com o nome de um arquivo de outra versão: quem atualiza as duas "
                         "de uma vez o recebe só uma vez: a.sdb (versão 2)",
                         "?Nome que outra versão já tem: também ela passa a trazer este conteúdo: "
                         "FotoPeca\\n.png (versão 2)",
                         "!Programa que não está na pasta: n.png",
                         "?Mais de um programa: só o último da lista é iniciado: n.png, a.sdb",
                         "!Falta no servidor a lista da versão anterior: ListVersao3.txt",
                         "?O catálogo da conferência não é o da versão anterior: está na versão "
                         "1, e a nova é a 4"));
    order_.programs.clear();
    QList<Finding> large;
    publicar::CheckNames(order_, {{u"ARQ"_s, u"a"_s, {}, 0x7FFFFFFF}, {u"ARQ"_s, u"b"_s, {}, 1}},
                         large);
    QCOMPARE(Told(large).filter(u"2 GB"_s),
             List("!Arquivos grandes demais para uma só versão (2 GB ao todo): b"));
    QVERIFY(!Publishes(2));
    const auto again =
        u"!Versão já publicada (--replace *não a recebe outra vez): ListVersao2.txt"_s;
    QCOMPARE(Like(said_.join(u'\n'), again), again);
    Write(In("nova/a.sdb"), "E:UPDATE PECA SET DescricaoPeca = 'Nova' WHERE CodigoPeca = 2");
    Ends(Arguments() + List("--replace", "--keep", order_.keep), "0 *");
    QVERIFY(QFile::rename(In("nova/a.sdb"), In("nova/b.sdb")));
    QVERIFY(QFile::rename(In("nova/FotoPeca/n.png"), In("nova/FotoPeca/m.png")));
    Write(In("nova/b.sdb"),
          "E:UPDATE PECA SET DescricaoPeca = 'Outra' WHERE DescricaoPeca = 'Nova'");
    order_.catalogue = order_.keep;
    QVERIFY(Publishes(3));
    QCOMPARE(said_, QStringList());
    QCOMPARE(sys::ReadText(In("site/Versao.txt")), u"3\r\n"_s);
    Write(In("nova/b.sdb"), "E:DELETE FROM PECA WHERE (SELECT VersaoAnterior FROM UMREGISTRO) = 2");
    Check();
    QCOMPARE(said_.filter(u"não muda nada"_s), QStringList());
}

// From the making of a key to a site that is signed again with the next one.
TEST(TestPublicar, Signs) {
    publicar::MakeKey(In("k1"), u" loja "_s);
    publicar::MakeKey(In("k2"), u"loja"_s);
    const auto k1 = LerTextoDasChaves(sys::ReadText(In("k1/ChavesAtualizacao.txt")));
    const auto k2 = LerTextoDasChaves(sys::ReadText(In("k2/ChavesAtualizacao.txt")));
    QCOMPARE(k1.site, u"loja"_s);
    for (const AnyText nameless : {" ", "a\nb"}) {
        QCOMPARE(ErrorOf([&] { publicar::MakeKey(In("k3"), nameless); }), 5);
    }
    QCOMPARE(ErrorOf([&] { publicar::MakeKey(In("k1"), u"loja"_s); }), 75);
    QVERIFY(QFile::remove(In("k2/ChavesAtualizacao.txt")));
    QCOMPARE(ErrorOf([&] { publicar::MakeKey(In("k2"), u"loja"_s); }), 75);  // one is enough
    QCOMPARE(ErrorOf([&] { publicar::ReadSigner(In("k1/ChavesAtualizacao.txt")); }), 5);
#ifdef Q_OS_UNIX  // elsewhere the folder says who may read
    QCOMPARE(QFile::permissions(In("k1/ChaveSecreta.txt")) & QFile::ReadOther, 0);
#endif
    const auto accepted = [&](const auto& keys, int release) {
        const QString list = In(u"site/ListVersao%1.txt"_s.arg(release));
        return ErrorOf([&] {
                   ConferirLista(keys, release, sys::ReadBytes(list),
                                 sys::ReadBytes(list + u".sig"_s));
               }) == 0;
    };

    Write(In("nova/FotoPeca/n.png"), "figura");
    QVERIFY(Publishes(2, {"k1"}) && accepted(k1, 2) && !accepted(k2, 2));
    const auto signedVersion = ConferirVersao(k1, sys::ReadBytes(In("site/Versao.sig")));
    QCOMPARE(signedVersion.numero, 2);
    QCOMPARE(signedVersion.data, QDate::currentDate());

    QFile::rename(In("nova/FotoPeca/n.png"), In("nova/FotoPeca/m.png"));
    QVERIFY(!Publishes(3));  // a signed site stays a signed site
    QVERIFY(said_.contains(u"!O site é assinado, e falta a chave (--key): Versao.sig"_s));
    QVERIFY(Publishes(3, {"k1", "k2"}) && accepted(k1, 3) && accepted(k2, 3));

    // Lists of the first years get what they lack.
    for (const AnyText list : {"site/ListVersao1.txt", "site/ListVersao2.txt"}) {
        Write(In(list), "ARQ;FotoPeca\\n.png;5\r\n");
    }
    publicar::SignAgain(order_.site, {Key("k2")});
    QVERIFY(accepted(k2, 1) && accepted(k2, 2) && accepted(k2, 3) && !accepted(k1, 3));
    QCOMPARE(sys::ReadText(In("site/ListVersao2.txt")),
             u"ARQ;FotoPeca\\n.png;6;%1\r\n"_s.arg(HashOf(In("site/FotoPeca/n.png"))));
    const QByteArray version = sys::ReadBytes(In("site/Versao.sig"));
    QCOMPARE(ConferirVersao(k2, version).numero, 3);
    QCOMPARE(ErrorOf([&] { ConferirVersao(k1, version); }), -110);
}

TEST(TestPublicar, FullDiskOfTheSite) {
    Write(In("nova/figura.png"), QByteArray(300'000, 'f'));
    const QString command = u"mount -t tmpfs -o size=128k tmpfs '%1' && '%2' '%3'"_s;
    FailsAlone(command.arg(order_.site, Program, Arguments().join(u"' '"_s)), order_.site,
               u"tarvo-publicar: Disco cheio\n 2\n"_s);
}

TEST(TestPublicar, WrongUse) {
    Ends({}, "2 Uso: *");
    Ends(Arguments() << u"--release"_s << u"32768"_s, "2 Uso: *");
    Ends(Arguments() << u"sobra"_s, "2 Uso: *");
    Ends({"--sign-again", "--site", order_.site}, "2 Uso: *");
    Ends({"--new-key", In("k"), "--site-name", "loja"}, "0 *");
    Write(In("site/Versao.txt"), "0");
    Ends({"--sign-again", "--site", order_.site, "--key", In("k/ChaveSecreta.txt")}, "0 *");
    // What was going on in a catalogue belongs to it.
    QVERIFY(QDir().mkpath(In("dados/Tarvo.mdb-journal")));
    QCOMPARE(ErrorOf([&] { Check(); }), 75);
    order_.catalogue = In("nada");
    Ends(Arguments(), "2 *Não há catálogo*");
}

TARVO_FULL_KEYS;
