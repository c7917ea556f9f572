#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "publicar/signing.h"
#include "session/global.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "support/test.h"
#include "support/windows.h"
#include "update/atualizando.h"
#include "update/prova.h"

#include <QCryptographicHash>
#include <QRegularExpression>

#include <functional>
#include <optional>

using Attack = std::function<void(const WrongServer& server)>;
Q_DECLARE_METATYPE(Attack)

namespace {

const QString Done = u"Atualização concluída com sucesso."_s;

const publicar::Signer Publisher{u"loja"_s, QByteArray(32, 'p')};
const publicar::Signer NextKey{u"loja"_s, QByteArray(32, 'n')};
const publicar::Signer Stranger{u"loja"_s, QByteArray(32, 's')};
const publicar::Signer OtherSite{u"outra loja"_s, QByteArray(32, 'p')};

QByteArray Read(const WrongServer& server, const AnyText& name) {
    return sys::ReadBytes(server.Folder() + u'/' + name);
}

void Flip(const WrongServer& server, const AnyText& name, qsizetype at) {
    QByteArray bytes = Read(server, name);
    bytes[at] = char(bytes.at(at) ^ 1);
    server.Put(name, bytes);
}

// All that the site holds, signed by these keys.
void SignAll(const WrongServer& server, const std::vector<publicar::Signer>& signers) {
    publicar::SignAgain(server.Folder(), signers);
}

QByteArray Line(const QByteArray& name, qsizetype size, const QByteArray& content) {
    return "FOTO;" + name + ';' + QByteArray::number(size) + ';' +
           QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex() + "\r\n";
}

}  // namespace

// What somebody between the publisher and the customer can do, and a publisher's own changes.
class TestProva : public QObject {
    Q_OBJECT

    std::unique_ptr<CatalogoDeTeste> catalogo_;
    std::unique_ptr<WrongServer> server_;
    std::optional<ProxySetting> proxy_;

    QString Path(const AnyText& name) const { return catalogo_->Pasta() + u'/' + name; }

    static void Trust(const std::vector<publicar::Signer>& signers) {
        ChavesDaAtualizacao chaves{u"loja"_s, {}};
        for (const auto& signer : signers) {
            chaves.chaves += sys::OpenKeyOf(signer.key);
        }
        UsarChaves(chaves);
    }

    static QStringList Update() {
        BoxAnswers boxes;
        ParametroFormulario = u"1|3"_s;
        (new frmAtualizando)->ShowModal();
        Settle();
        return boxes.Texts();
    }

private Q_SLOTS:
    void initTestCase() { server_ = std::make_unique<WrongServer>(); }
    void init() {
        server_->Clear();
        proxy_.emplace(server_->Port());
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        catalogo_->Executar(
            {"UPDATE UMREGISTRO SET UrlAtualizacao = 'espelho.exemplo', Versao = 1, VersaoAnterior "
             "= 0"});
        Write(Path("FotoPeca/a.png"), "velha");
        server_->Put("FotoPeca/a.png", "nova");
        server_->Put("FotoPeca/b.png", "outra");
        server_->Put("dois.txt", "E:INSERT INTO CLIENTECONCORRENTE VALUES (20, 'Bravil', 'C')\r\n");
        server_->Put("ListVersao2.txt", "FOTO;FotoPeca\\a.png;4\r\nSDB;dois.txt;1\r\n");
        server_->Put("ListVersao3.txt", "FOTO;FotoPeca\\b.png;4\r\n");
        server_->Put("Versao.txt", "3\r\n");
        SignAll(*server_, {Publisher});
        Trust({Publisher});
    }
    void cleanup() {
        UsarChaves(std::nullopt);
        catalogo_.reset();
        proxy_.reset();
    }

    void Attacks_data() {
        const Table<Attack, QString> row("attack", "box");
        const QString unsignedList = u"Erro nº: -110\n*(ListVersao3.txt)"_s;
        const auto altered = [](const AnyText& name) {
            return u"Erro nº: -111\n*\""_s + name + u"\"*"_s;
        };
        const auto resign = [](const AnyText& name, const QByteArray& list,
                               const publicar::Signer& signer) {
            return [=](const WrongServer& server) {
                server.Put(name, list);
                server.Put(name + u".sig"_s,
                           sys::Sign(MensagemDaLista(signer.site, 3, list), signer.key).toHex());
            };
        };
        row(
            "flipped byte in the list", [](auto& s) { Flip(s, "ListVersao3.txt", 3); },
            unsignedList);
        row(
            "flipped byte in the signature", [](auto& s) { Flip(s, "ListVersao3.txt.sig", 9); },
            unsignedList);
        row(
            "flipped byte in the script", [](auto& s) { Flip(s, "dois.txt", 30); },
            altered("dois.txt"));
        row(
            "flipped byte in a picture", [](auto& s) { Flip(s, "FotoPeca/b.png", 0); },
            altered("FotoPeca\\b.png"));
        row(
            "no signature", [](auto& s) { QFile::remove(s.Folder() + "/ListVersao3.txt.sig"_L1); },
            unsignedList);
        row(
            "empty signature", [](auto& s) { s.Put("ListVersao3.txt.sig", "\r\n"); }, unsignedList);
        row(
            "list and signature of another version",
            [](auto& s) {
                s.Put("ListVersao3.txt", Read(s, "ListVersao2.txt"));
                s.Put("ListVersao3.txt.sig", Read(s, "ListVersao2.txt.sig"));
            },
            unsignedList);
        row(
            "another site's signature", [](auto& s) { SignAll(s, {OtherSite}); },
            "Erro nº: -110\n*(ListVersao2.txt)");
        row(
            "a stranger's signature", [](auto& s) { SignAll(s, {Stranger}); },
            "Erro nº: -110\n*(ListVersao2.txt)");
        row(
            "a picture of an older version", [](auto& s) { s.Put("FotoPeca/b.png", "velho"); },
            altered("FotoPeca\\b.png"));
        row(
            "a picture cut short", [](auto& s) { s.Put("FotoPeca/b.png", "out"); },
            altered("FotoPeca\\b.png"));
        row(
            "a longer picture", [](auto& s) { s.Put("FotoPeca/b.png", "outra e mais"); },
            u"Erro nº: -104\nInternetReadFile:0;-111;*FotoPeca\\b.png*"_s);
        row("endless data", resign("ListVersao3.txt", Line("endless", 10, "x"), Publisher),
            "Erro nº: -104\nInternetReadFile:0;-111;*(endless)");
        row("a line without SHA-256",
            resign("ListVersao3.txt", "FOTO;FotoPeca\\b.png;5\r\n", Publisher),
            "Erro nº: -110\n*(ListVersao3.txt, linha 1: FOTO;FotoPeca\\b.png;5)");
        row(
            "fast-forward over versions that are not there",
            [](auto& s) {
                s.Put("ListVersao3.txt", "");
                QFile::remove(s.Folder() + "/ListVersao3.txt.sig"_L1);
            },
            unsignedList);
        row(
            "the list before a replacement, genuine like the one after it",
            [](auto& s) {
                const QByteArray list = Read(s, "ListVersao3.txt");
                const QByteArray signature = Read(s, "ListVersao3.txt.sig");
                s.Put("FotoPeca/b.png", "outra, melhor");
                s.Put("ListVersao3.txt", "FOTO;FotoPeca\\b.png;13\r\n");
                SignAll(s, {Publisher});
                QVERIFY(Read(s, "ListVersao3.txt") != list);
                s.Put("ListVersao3.txt", list);
                s.Put("ListVersao3.txt.sig", signature);
            },
            u"Erro nº: -104\nInternetReadFile:0;-111;*FotoPeca\\b.png*"_s);
        // Not even needed: without keys the list's own word is checked all the same.
        row(
            "wrong SHA-256, no keys",
            [=](auto& s) {
                UsarChaves(ChavesDaAtualizacao());
                s.Put("FotoPeca/b.png", "outrA");
            },
            altered("FotoPeca\\b.png"));
        row(
            "half a SHA-256, no keys",
            [=](auto& s) {
                UsarChaves(ChavesDaAtualizacao());
                s.Put("ListVersao3.txt", "FOTO;FotoPeca\\b.png;5;00ff\r\n");
            },
            "Erro nº: 13\n*(ListVersao3.txt, linha 1: FOTO;FotoPeca\\b.png;5;00ff)");
    }
    void Attacks() {
        QFETCH(Attack, attack);
        QFETCH(QString, box);
        attack(*server_);
        const QStringList boxes = Update();
        QCOMPARE(boxes.size(), 1);
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(
            QRegularExpression::escape(box).replace("\\*"_L1, ".*"_L1)));
        QVERIFY2(pattern.match(boxes.first()).hasMatch(), qPrintable(boxes.first()));
        QCOMPARE(sys::ReadBytes(Path("FotoPeca/a.png")), QByteArray("velha"));
        QVERIFY(!QFile::exists(Path("FotoPeca/b.png")));
        QCOMPARE(Valor("SELECT Versao & '/' & VersaoAnterior FROM UMREGISTRO"), u"1/0"_s);
        QCOMPARE(Valor("SELECT Count(*) FROM CLIENTECONCORRENTE"), u"0"_s);
    }

    void Accepted_data() {
        const Table<Attack> row("change");
        row("as published", [](auto&) {});
        row("a client with the next key too", [](auto&) { Trust({NextKey, Publisher}); });
        row("signed by both keys", [](auto& s) { SignAll(s, {Publisher, NextKey}); });
        row("the key rotated", [](auto& s) {
            SignAll(s, {NextKey});
            Trust({Publisher, NextKey});
        });
        row("a client of the time before signatures",
            [](auto&) { UsarChaves(ChavesDaAtualizacao()); });
        row("a picture replaced under its old name", [](auto& s) {
            s.Put("ListVersao3.txt", "FOTO;FotoPeca\\b.png;1\r\nARQ;fotopeca\\A.png ;1\r\n");
            const QByteArray before = Line("FotoPeca\\a.png", 8, "primeira");
            s.Put("ListVersao2.txt", before + "SDB;dois.txt;1\r\n");
            // The name in other letters is the same file to the installer, not to this server.
            s.Put("fotopeca/A.png ", "nova");
            SignAll(s, {Publisher});
        });
    }
    void Accepted() {
        QFETCH(Attack, change);
        change(*server_);
        QCOMPARE(Update(), List(Done));
        QCOMPARE(sys::ReadBytes(Path("FotoPeca/a.png")), QByteArray("nova"));
        QCOMPARE(sys::ReadBytes(Path("FotoPeca/b.png")), QByteArray("outra"));
        QCOMPARE(Valor("SELECT Versao & '/' & VersaoAnterior FROM UMREGISTRO"), u"3/1"_s);
        QCOMPARE(Valor("SELECT Count(*) FROM CLIENTECONCORRENTE"), u"1"_s);
        QCOMPARE(catalogo_->Temporarios(), QStringList());
    }

    // Half a key file must not let everybody in.
    void KeyFiles_data() {
        const Table<QString, int> row("text", "keys");
        const QString key(64, u'a');
        row("one key", u"Site: loja\nChave: %1"_s.arg(key), 1);
        row("two keys, remarks", u"# a\r\n\r\nsite:loja\r\nCHAVE: %1\r\nChave: %1 \r\n"_s.arg(key),
            2);
        row("empty", {}, 0);
        row("no site", u"Chave: "_s + key, 0);
        row("no key", "Site: loja", 0);
        row("short key", u"Site: loja\nChave: %1\nChave: ab"_s.arg(key), 0);
        row("no hexadecimal key", u"Site: loja\nChave: "_s + QString(64, u'g'), 0);
        row("something else", u"Site: loja\nChave: %1\nOlá"_s.arg(key), 0);
        row("two sites", u"Site: loja\nSite: outra\nChave: %1"_s.arg(key), 0);
    }
    void KeyFiles() {
        QFETCH(QString, text);
        QFETCH(int, keys);
        qsizetype read = 0;
        const int error = ErrorOf([&] { read = LerTextoDasChaves(text).chaves.size(); });
        QCOMPARE(read, keys);
        QCOMPARE(error, keys == 0 ? 75 : 0);
    }
};

TARVO_TEST(TestProva);
#include "test_prova.moc"
