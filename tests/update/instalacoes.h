#pragma once

#include "platform/system/clock.h"
#include "platform/system/process.h"
#include "platform/system/proof.h"
#include "publicar/signing.h"
#include "support/cases.h"
#include "support/catalogo.h"
#include "support/servers.h"
#include "support/windows.h"
#include "update/atualizando.h"

using namespace std::chrono_literals;

inline const QString Done = u"Atualização concluída com sucesso."_s;
inline const QString Stopped =
    u"Atualização interrompida. Uma parte dela já está no catálogo; a próxima atualização recomeça "
    "do início."_s;
inline QString Insert(int code, const AnyText& name) {
    return u"E:INSERT INTO CLIENTECONCORRENTE VALUES (%1, '%2', 'C')"_s.arg(code).arg(name);
}

// A script in the place of the site's own.
inline QString Script(const AnyTexts& lines) {
    return u"dois.txt="_s + lines.join(u'\n');
}

// "p" is the publisher's key, any other letter another one; "P" is his for another site.
inline std::vector<publicar::Signer> Signers(const QString& letters) {
    std::vector<publicar::Signer> signers;
    for (const QChar letter : letters) {
        signers.push_back({letter.isUpper() ? u"outra loja"_s : u"loja"_s,
                           QByteArray(32, letter.toLower().toLatin1())});
    }
    return signers;
}

// The window that updates, before a site of the versions 2 and 3: as published, with faults of its
// publisher, and as somebody between him and the customer can make it.
struct Instalacoes : Fixture {
    WrongServer server_;
    const ProxySetting proxy_{server_.Port()};
    std::unique_ptr<CatalogoDeTeste> catalogo_;
    std::unique_ptr<QTemporaryDir> outside_;

    QString Path(const AnyText& name) const { return catalogo_->Pasta() + u'/' + name; }
    QByteArray Local(const AnyText& name) const {
        return QFileInfo(Path(name)).isFile() ? sys::ReadBytes(Path(name)) : QByteArray("none");
    }
    QString Site() const { return server_.Folder() + u"/base/"_s; }
    void Put(const AnyText& name, const QByteArray& content) const {
        server_.Put(u"base/"_s + name, content);
    }

    // "name=content" with line feeds for line ends, or a word and what it is about.
    void Apply(const AnyTexts& changes) const {
        for (const QString& change : changes) {
            const QString word = change.section(u' ', 0, 0);
            const QString name = change.section(u' ', 1, 1);
            const qsizetype content = change.indexOf(u'=') + 1;
            if (word == "flip"_L1) {
                QByteArray bytes = sys::ReadBytes(Site() + name);
                const int at = change.section(u' ', 2).toInt();
                bytes[at] = char(bytes.at(at) ^ 1);
                Put(name, bytes);
            } else if (word == "remove"_L1) {
                QVERIFY(QFile::remove(Site() + name));
            } else if (word == "copy"_L1) {
                Put(change.section(u' ', 2), sys::ReadBytes(Site() + name));
            } else if (word == "sign"_L1) {
                publicar::SignAgain(Site(), Signers(name));
            } else if (word == "seal"_L1) {  // the lists as they are
                for (const int list : {2, 3}) {
                    publicar::SignList(Site(), Signers(name), list);
                }
            } else if (word == "trust"_L1) {
                ChavesDaAtualizacao keys{u"loja"_s, {}};
                for (const auto& signer : Signers(name)) {
                    keys.chaves += sys::OpenKeyOf(signer.key);
                }
                UsarChaves(keys);
            } else if (word == "folder"_L1) {
                QVERIFY(QDir().mkpath(Path(name)));
            } else {
                QVERIFY2(content > 0, qPrintable(change));
                Put(change.left(content - 1),
                    change.mid(content).replace(u'\n', u"\r\n"_s).toUtf8());
            }
        }
    }

    // Runs the update and returns the boxes that were shown.
    static QStringList Update(int from = 1, int to = 3, const QList<int>& answers = {}) {
        BoxAnswers boxes(answers);
        ParametroFormulario = u"%1|%2"_s.arg(from).arg(to);
        (new frmAtualizando)->ShowModal();
        Settle();
        return boxes.Texts();
    }

    // Version and the one before, rows of the script, two pictures, files on their way.
    QString State() const {
        return u"%1 %2 %3 %4 %5"_s
            .arg(Valor("SELECT Versao & '/' & VersaoAnterior FROM UMREGISTRO"),
                 Valor("SELECT Count(*) FROM CLIENTECONCORRENTE"),
                 QString::fromUtf8(Local("FotoPeca/a.png")),
                 QString::fromUtf8(Local("FotoPeca/b.png")))
            .arg(catalogo_->Temporarios().size());
    }

    static forms::Form* Screen() { return forms::Form::Find(frmAtualizando::Nome); }

    // Acts again and again from the time when the server has been asked so often.
    std::unique_ptr<QTimer> FromRequest(int count, const std::function<void()>& act) const {
        auto timer = std::make_unique<QTimer>();
        connect(timer.get(), &QTimer::timeout, this, [=, this] {
            if (Screen() && server_.Requests().size() >= count) {
                act();
            }
        });
        timer->start(20ms);
        return timer;
    }

    void init() override {
        server_.Clear();
        catalogo_ = std::make_unique<CatalogoDeTeste>();
        Executar(
            {"UPDATE UMREGISTRO SET UrlAtualizacao = 'HTTP://atualiza.exemplo/base', Versao = 1, "
             "VersaoAnterior = 0, FlagErroUltimaVerificacao = 7"});
        outside_ = std::make_unique<QTemporaryDir>();
        Write(Path("FotoPeca/a.png"), "velha");
        QVERIFY(QFile::link(outside_->path(), Path("fora")));
        QVERIFY(QFile::link(Path("FotoPeca"), Path("dentro")));
        Apply({"FotoPeca/a.png=nova", "FotoPeca/b.png=outra", Script({Insert(20, "Bravil")}),
               "ListVersao2.txt=FOTO;FotoPeca\\a.png;4\nSDB;dois.txt;1\n",
               "ListVersao3.txt=FOTO;FotoPeca\\b.png;4\n", "Versao.txt=3\n"});
        ReiniciarPrograma = false;
    }
    void cleanup() override {
        QCOMPARE(QDir(outside_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
        UsarChaves(std::nullopt);
        sys::SetStartHandler({});
        sys::SetClock({});
        catalogo_.reset();
    }
};
