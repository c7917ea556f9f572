#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "publicar/publish.h"
#include "support/cases.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "update/prova.h"

#include <QProcess>
#include <QRegularExpression>

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

struct TestPublicar : Fixture {
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

    void init() override {
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
};

TEST(TestPublicar, Folders) {
    Each<QByteArray, QStringList, QStringList> row;
    for (const Case& one : Cases(QStringLiteral(TARVO_CASES "/folders.data"))) {
        const QStringList said = one.lines.filter(QRegularExpression(u"^[!?]"_s));
        row(one.name, {}, one.lines.mid(0, one.lines.size() - said.size()), said);
    }
    const QByteArray change = "E:UPDATE PECA SET DescricaoPeca = '";
    row("line feeds alone", change + "a'\n" + change + "b'\n", {},
        {"!Fim de linha que não é CR LF: o instalador lê as linhas como uma só: a.sdb",
         "!Comando que falha (no cliente, em silêncio): a.sdb, linha 1"});
    row("encoding mark", "\xef\xbb\xbf" + change + "a'\r\n", {}, {});
    row("other encoding", change + "v\xe1lvula'\r\n", {}, {"?Script que não está em UTF-8"});
    for (const auto& [script, files, said] : row) {
        Write(In("fora.txt"));
        Write(In("site/ListVersao1.txt"), "SDB;Dados.sdb;9\r\nARQ;FotoPeca\\a.png;9\r\n");
        if (!script.isEmpty()) {
            Write(In("nova/a.sdb"), script);
        }
        for (const QString& file : files) {
            const QString path = In(u"nova/"_s + file.section(u'=', 0, 0).remove(u"-> "_s));
            if (file.startsWith("->"_L1)) {
                QVERIFY(QFile::link(In(file.endsWith("txt"_L1) ? "fora.txt" : "dados"), path));
            } else {
                Write(path, file.section(u'=', 1).append(u'\n').replace(u'\n', u"\r\n"_s).toUtf8());
            }
        }
        const QByteArray before = sys::ReadBytes(In("dados/Tarvo.mdb"));
        const QStringList got = Check();
        QVERIFY2(got.size() == said.size(), qPrintable(got.join(u'\n')));
        for (qsizetype i = 0; i < said.size(); ++i) {
            QCOMPARE(Like(got.at(i), said.at(i) + u'*'), said.at(i) + u'*');
        }
        QCOMPARE(sys::ReadBytes(In("dados/Tarvo.mdb")), before);
    }
}

TEST(TestPublicar, PublishesOnlyWhatIsSound) {
    Write(In("nova/a.sdb"), "E:UPDATE NADA SET x = 1\r\n");
    Write(In("nova/FotoPeca/n.png"), "figura");
    QCOMPARE(Run({"--release", "2", "--site", order_.site}).code, 1);
    QCOMPARE(QDir(order_.site).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());

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

// From the making of a key to a site that is signed again with the next one.
TEST(TestPublicar, Signs) {
    const auto publish = [&](int release, const AnyTexts& more) {
        return Run(List("--release", QString::number(release), "--site", order_.site) + more).code;
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
    QCOMPARE(publish(3, {"--key", In("k1/ChaveSecreta.txt"), "--key", In("k2/ChaveSecreta.txt")}),
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

TEST(TestPublicar, FullDiskOfTheSite) {
    const QStringList alone = {u"--user"_s, u"--map-root-user"_s, u"--mount"_s};
    if (QProcess::execute(u"unshare"_s, QStringList(alone) << u"true"_s) != 0) {
        QSKIP("no disk of one's own to be had here");
    }
    Write(In("nova/figura.png"), QByteArray(300'000, 'f'));
    const QString command =
        u"mount -t tmpfs -o size=128k tmpfs '%1' && '%2' '%3' --release 2 --catalogue '%4' "
        "--site '%1' 2>&1; echo; ls -a '%1'"_s.arg(order_.site, QStringLiteral(TARVO_PUBLICAR),
                                                   order_.folder, order_.catalogue);
    const QString output = OutputOf("unshare", alone + List("sh", "-c", command));
    QVERIFY2(output.endsWith(u"tarvo-publicar: Disco cheio\n\n.\n..\n"_s), qPrintable(output));
}

TEST(TestPublicar, WrongUse) {
    QCOMPARE(Run({}).code, 2);
    QCOMPARE(Run({"--release", "32768"}).code, 2);
    QCOMPARE(Run({"--release", "2", "sobra"}).code, 2);
    order_.catalogue = In("nada");
    QVERIFY(Run({"--release", "2"}).output.contains(u"Não há catálogo"_s));
}

TARVO_FULL_KEYS;
