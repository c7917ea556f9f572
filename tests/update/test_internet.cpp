#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/global.h"
#include "support/servers.h"
#include "support/testmain.h"
#include "update/acesso.h"
#include "update/internet.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing_support::ProxySetting;
using testing_support::WrongServer;

namespace {

// Description of the Erro that `work` throws, its number in front; empty for none.
template <typename Work>
QString Failure(Work&& work) {
    try {
        work();
    } catch (const Erro& erro) {
        return QString::number(erro.Number()) + u' ' + erro.Description();
    }
    return {};
}

QString Fetch(const QString& path, const QString& user = {}, const QString& password = {},
              bool dialogs = true) {
    return HttpExecutar(u"D"_s, dialogs, path, true, QString(), QString(), QString(), user,
                        password);
}

}  // namespace

class TestInternet : public QObject {
    Q_OBJECT

    WrongServer server_;
    std::optional<ProxySetting> proxy_;
    QTemporaryDir folder_;

    // Answers the log-in dialog and counts how often it came.
    struct Logins {
        explicit Logins(QList<QString> answers) : answers_(std::move(answers)) {
            SetPedidoDeAcesso([this](AcessoAoProxy& acesso) {
                asked.append(acesso);
                if (answers_.isEmpty()) {
                    return false;
                }
                const QString answer =
                    answers_.size() > 1 ? answers_.takeFirst() : answers_.first();
                acesso.usuario = answer.section(u'/', 0, 0);
                acesso.senha = answer.section(u'/', 1);
                return true;
            });
        }
        ~Logins() { SetPedidoDeAcesso({}); }
        QList<AcessoAoProxy> asked;

    private:
        QList<QString> answers_;
    };

private Q_SLOTS:
    void init() {
        gCaminho = folder_.path() + u'\\';
        proxy_.emplace(server_.Port());
        DefinirTempoLimite(60s);
        HttpConectar(u"atualiza.exemplo"_s);
    }
    void cleanup() {
        HttpDesconectar();
        proxy_.reset();
    }

    void AsksAsItMust() {
        const QString head = Fetch(u"base/Peças/válvula 1.png"_s + u"/../echo?a=b c"_s);
        const QStringList lines = head.split(u"\r\n"_s);
        QCOMPARE(lines.first().toLower(),
                 u"get http://atualiza.exemplo/base/pe%c3%a7as/v%c3%a1lvula%201.png/../echo?a=b%20c "
                 "http/1.0"_s);
        for (const QString& line :
             {u"Host: atualiza.exemplo"_s, u"User-Agent: CatalogoDePecasTarvo"_s,
              u"Pragma: no-cache"_s, u"Connection: Keep-Alive"_s}) {
            QVERIFY2(lines.contains(line), qPrintable(head));
        }
        QVERIFY(!head.contains("Accept:"_L1));
    }

    void BodyAsTextAndAsFile() {
        QCOMPARE(Fetch(u"ok"_s), u"conteúdo"_s);
        QCOMPARE(Fetch(u"empty"_s), QString());
        QCOMPARE(QDir(folder_.path()).entryList(QDir::Files), QStringList());

        const QString given = folder_.filePath(u"dado"_s);
        QFile old(given);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("was here before and is longer");
        old.close();
        const auto fetch = [](const QString& path, const QString& file) {
            return HttpExecutar(u"D"_s, true, path, false, file, QString(), QString(), QString(),
                                QString());
        };
        QCOMPARE(fetch(u"ok"_s, given), given);
        QCOMPARE(sys::ReadBytes(given), QByteArray("conteúdo"));
        QCOMPARE(fetch(u"empty"_s, given), given);
        QCOMPARE(sys::ReadBytes(given), QByteArray());
        QCOMPARE(fetch(u"long"_s, given), given);
        QCOMPARE(sys::ReadBytes(given), QByteArray("0123456789"));
        QCOMPARE(sys::ReadBytes(fetch(u"unannounced"_s, QString())), QByteArray(10000, 'y'));
    }

    void Failures_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<int>("requests");
        QTest::newRow("not found") << u"404"_s << u"HttpQueryInfo:0;-103;Status=404"_s << 1;
        QTest::newRow("server's fault") << u"500"_s << u"HttpQueryInfo:0;-103;Status=500"_s << 1;
        QTest::newRow("redirect") << u"302"_s << u"HttpQueryInfo:0;-103;Status=302"_s << 1;
        QTest::newRow("closed without a word") << u"close"_s << u"HttpSendRequest:12030"_s << 2;
        QTest::newRow("reset") << u"reset"_s << u"HttpSendRequest:12031"_s << 2;
        QTest::newRow("no HTTP") << u"garbage"_s << u"HttpSendRequest:12152"_s << 2;
        QTest::newRow("endless head") << u"endless-head"_s << u"HttpSendRequest:12152"_s << 2;
        QTest::newRow("nothing at all") << u"silent"_s << u"HttpSendRequest:12002"_s << 2;
        QTest::newRow("body reset") << u"reset-body"_s << u"InternetReadFile:12031;-105;Ret=0"_s << 1;
        QTest::newRow("body too short") << u"short"_s << u"InternetReadFile:12030;-105;Ret=0"_s << 1;
        QTest::newRow("body stops") << u"silent-body"_s << u"InternetReadFile:12002;-105;Ret=0"_s << 1;
        QTest::newRow("endless text")
            << u"endless"_s << u"InternetReadFile:0;14;Espaço insuficiente para o texto"_s << 1;
    }
    void Failures() {
        QFETCH(QString, path);
        QFETCH(QString, failure);
        QFETCH(int, requests);
        DefinirTempoLimite(700ms);
        const qsizetype before = server_.Requests().size();
        QCOMPARE(Failure([&] { Fetch(path); }), u"-104 "_s + failure);
        QCOMPARE(server_.Requests().size() - before, requests);
    }

    void Refused() {
        proxy_.emplace(testing_support::FreePort());
        QCOMPARE(Failure([] { Fetch(u"ok"_s); }), u"-104 HttpSendRequest:12029"_s);
    }

    void UnknownName() {
        proxy_.emplace(0);
        HttpConectar(u"servidor.invalid"_s);
        QCOMPARE(Failure([] { Fetch(u"ok"_s); }), u"-104 HttpSendRequest:12007"_s);
    }

    void BadHosts_data() {
        QTest::addColumn<QString>("host");
        for (const char* host : {"", "a b", "https:", "exemplo:8080", "eu@exemplo"}) {
            QTest::newRow(host) << QString::fromLatin1(host);
        }
    }
    void BadHosts() {
        QFETCH(QString, host);
        QCOMPARE(Failure([&] { HttpConectar(host); }), u"-100 InternetConnect:12005"_s);
        QVERIFY(Failure([] { Fetch(u"ok"_s); }).startsWith("-104 HttpOpenRequest:"_L1));
    }

    void UploadIsRefused() {
        for (const QString& mode : {u"U"_s, u"d"_s, QString()}) {
            const qsizetype before = server_.Requests().size();
            QCOMPARE(Failure([&] {
                         HttpExecutar(mode, true, u"ok"_s, true, QString(), QString(), QString(),
                                      QString(), QString());
                     }),
                     u"-104 BodyPostFileUpload:0;-107;Não é Permitido UPLOAD"_s);
            QCOMPARE(server_.Requests().size(), before);
        }
    }

    // One byte a second is slow, but each wait is short.
    void SlowBody() {
        DefinirTempoLimite(1500ms);
        QCOMPARE(Fetch(u"drip"_s), u"abc"_s);
    }

    void ScreenLivesDuringAWait() {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
        timer.start(20ms);
        QCOMPARE(Fetch(u"late"_s), u"tarde"_s);
        QVERIFY2(ticks > 15, qPrintable(QString::number(ticks)));
    }

    void Interrupted() {
        QTimer::singleShot(100ms, this, [] { HttpInterromper(); });
        QCOMPARE(Failure([] { Fetch(u"silent"_s); }),
                 u"-104 HttpSendRequest:0;18;Interrompido pelo usuário"_s);
    }

    void StoredCredentialsComeFirst() {
        Logins logins({});
        QCOMPARE(Fetch(u"password"_s, u"maria"_s, u"s3nha"_s), u"dentro"_s);
        QCOMPARE(logins.asked.size(), 0);
        // What got through is offered at once from then on.
        const qsizetype before = server_.Requests().size();
        QCOMPARE(Fetch(u"password"_s), u"dentro"_s);
        QVERIFY(server_.Requests().size() - before <= 2);
    }

    void DialogAfterRefusedCredentials() {
        Logins logins({u"maria/errada"_s, u"maria/s3nha"_s});
        QCOMPARE(Fetch(u"password"_s, u"maria"_s, u"velha"_s), u"dentro"_s);
        QCOMPARE(logins.asked.size(), 2);
        QCOMPARE(logins.asked.first().area, u"Oficina"_s);
        QCOMPARE(logins.asked.first().proxy, u"127.0.0.1:%1"_s.arg(server_.Port()));
    }

    void DialogLimits() {
        {
            Logins logins({});
            QCOMPARE(Failure([] { Fetch(u"password"_s); }),
                     u"-104 InternetErrorDlg:0;-106;Cancel Proxy Auth"_s);
            QCOMPARE(logins.asked.size(), 1);
        }
        {
            Logins logins({u"maria/errada"_s});
            QCOMPARE(Failure([] { Fetch(u"password"_s); }), u"-104 InternetErrorDlg:0;-102;Cont=7"_s);
            QCOMPARE(logins.asked.size(), 7);
        }
        Logins logins({u"maria/s3nha"_s});
        QCOMPARE(Failure([] { Fetch(u"password"_s, u"maria"_s, u"velha"_s, false); }),
                 u"-104 HttpQueryInfo:0;-103;Status=407"_s);
        QCOMPARE(logins.asked.size(), 0);
    }
};

TARVO_TEST(TestInternet);
#include "test_internet.moc"
