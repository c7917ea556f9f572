#include "busca.h"
#include "session/global.h"
#include "support/servers.h"
#include "support/test.h"

#include <QTimer>

#include <optional>

using namespace std::chrono_literals;

class TestInternet : public QObject {
    Q_OBJECT

    WrongServer server_;
    std::optional<ProxySetting> proxy_;
    QTemporaryDir folder_;

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
        QCOMPARE(
            lines.first().toLower(),
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
        QCOMPARE(Fetch("ok"), u"conteúdo"_s);
        QCOMPARE(Fetch("empty"), QString());
        QCOMPARE(QDir(folder_.path()).entryList(QDir::Files), QStringList());

        const QString given = folder_.filePath(u"dado"_s);
        Write(given, "was here before and is longer");
        QCOMPARE(FetchBytes("ok", {}, given), QByteArray("conteúdo"));
        QCOMPARE(FetchBytes("empty", {}, given), QByteArray());
        QCOMPARE(FetchBytes("long", {}, given), QByteArray("0123456789"));
        QCOMPARE(Fetch("identity"), u"abc"_s);
        QCOMPARE(Fetch("same-length"), u"abc"_s);
        QCOMPARE(FetchBytes("unannounced"), QByteArray(10000, 'y'));
    }

    void Failures_data() {
        const Table<QString, QString, int> row("path", "failure", "requests");
        row("not found", "404", "HttpQueryInfo:0;-103;Status=404", 1);
        row("server's fault", "500", "HttpQueryInfo:0;-103;Status=500", 1);
        row("redirect", "302", "HttpQueryInfo:0;-103;Status=302", 1);
        row("closed without a word", "close", "HttpSendRequest:12030", 2);
        row("reset", "reset", "HttpSendRequest:12031", 2);
        row("no HTTP", "garbage", "HttpSendRequest:12152", 2);
        row("endless head", "endless-head", "HttpSendRequest:12152", 2);
        row("endless head line", "endless-line", "HttpSendRequest:12152", 2);
        row("encoded body", "encoded", "HttpSendRequest:12152", 2);
        row("two lengths", "two-lengths", "HttpSendRequest:12152", 2);
        row("a list of lengths", "list-of-lengths", "HttpSendRequest:12152", 2);
        row("nothing at all", "silent", "HttpSendRequest:12002", 2);
        row("body reset", "reset-body", "InternetReadFile:12031;-105;Ret=0", 1);
        row("body too short", "short", "InternetReadFile:12030;-105;Ret=0", 1);
        row("body stops", "silent-body", "InternetReadFile:12002;-105;Ret=0", 1);
        row("endless text", "endless", "InternetReadFile:0;14;Espaço insuficiente para o texto", 1);
    }
    void Failures() {
        QFETCH(QString, path);
        QFETCH(QString, failure);
        QFETCH(int, requests);
        if (failure.contains("12002"_L1)) {
            DefinirTempoLimite(1s);
        }
        const qsizetype before = server_.Requests().size();
        QCOMPARE(Fetch(path), u"-104 "_s + failure);
        QCOMPARE(server_.Requests().size() - before, requests);
    }

    void Refused() {
        proxy_.emplace(FreePort());
        QCOMPARE(Fetch("ok"), u"-104 HttpSendRequest:12029"_s);
    }

    void UnknownName() {
        proxy_.emplace(0);
        HttpConectar(u"servidor.invalid"_s);
        QCOMPARE(Fetch("ok"), u"-104 HttpSendRequest:12007"_s);
    }

    void BadHosts_data() {
        const Table<QString> row("host");
        for (const char* host : {"", "a b", "https:", "exemplo:8080", "eu@exemplo"}) {
            row(host, QString::fromLatin1(host));
        }
    }
    void BadHosts() {
        QFETCH(QString, host);
        QCOMPARE(Failure([&] { HttpConectar(host); }), u"-100 InternetConnect:12005"_s);
        QVERIFY(Fetch("ok").startsWith("-104 HttpOpenRequest:"_L1));
    }

    void UploadIsRefused() {
        for (const QString& mode : {u"U"_s, u"d"_s, QString()}) {
            const qsizetype before = server_.Requests().size();
            QCOMPARE(Failure([&] { HttpExecutar(mode, true, u"ok"_s, true, {}, {}, {}, {}, {}); }),
                     u"-104 BodyPostFileUpload:0;-107;Não é Permitido UPLOAD"_s);
            QCOMPARE(server_.Requests().size(), before);
        }
    }

    // Three bytes, one a second, take longer than any wait may, but each wait is short.
    void SlowBody() {
        DefinirTempoLimite(2500ms);
        QCOMPARE(Fetch("drip"), u"abc"_s);
    }

    void ScreenLivesDuringAWait() {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
        timer.start(20ms);
        QCOMPARE(Fetch("late"), u"tarde"_s);
        QVERIFY2(ticks > 4, qPrintable(QString::number(ticks)));  // of fifty, on an idle machine
    }

    void Interrupted() {
        QTimer::singleShot(100ms, this, [] { HttpInterromper(); });
        QCOMPARE(Fetch("silent"), u"-104 HttpSendRequest:0;18;Interrompido pelo usuário"_s);
    }

    // Who cannot be known is passed over, but not a name that is another one's: the tries end.
    void ProxyOfAnUnknownAuthority() {
        const WrongServer proxy("IP:127.0.0.1");
        proxy_.emplace(proxy.Port(), "https");
        QCOMPARE(Fetch("ok"), u"conteúdo"_s);
        QCOMPARE(proxy.Requests().size(), 1);
        const WrongServer impostor("DNS:outro.exemplo");
        proxy_.emplace(impostor.Port(), "https");
        QCOMPARE(Fetch("ok"),
                 u"-104 InternetSetOption_SECURITY_FLAG_IGNORE_UNKNOWN_CA:12045;-101;Cont=4"_s);
        QCOMPARE(impostor.Requests(), QStringList());
    }

    void StoredCredentialsComeFirst() {
        Logins logins({});
        QCOMPARE(Fetch("password", {"maria", "s3nha"}), u"dentro"_s);
        QCOMPARE(logins.asked.size(), 0);
        // What got through is offered at once from then on.
        const qsizetype before = server_.Requests().size();
        QCOMPARE(Fetch("password"), u"dentro"_s);
        QVERIFY(server_.Requests().size() - before <= 2);
    }

    void DialogAfterRefusedCredentials() {
        Logins logins({"maria/errada", "maria/s3nha"});
        QCOMPARE(Fetch("password", {"maria", "velha"}), u"dentro"_s);
        QCOMPARE(logins.asked.size(), 2);
        QCOMPARE(logins.asked.first().area, u"Oficina"_s);
        QCOMPARE(logins.asked.first().proxy, u"127.0.0.1:%1"_s.arg(server_.Port()));
    }

    void DialogLimits() {
        {
            Logins logins({});
            QCOMPARE(Fetch("password"), u"-104 InternetErrorDlg:0;-106;Cancel Proxy Auth"_s);
            QCOMPARE(logins.asked.size(), 1);
        }
        {
            Logins logins({"maria/errada"});
            QCOMPARE(Fetch("password"), u"-104 InternetErrorDlg:0;-102;Cont=7"_s);
            QCOMPARE(logins.asked.size(), 7);
        }
        Logins logins({"maria/s3nha"});
        QCOMPARE(Fetch("password", {"maria", "velha", false}),
                 u"-104 HttpQueryInfo:0;-103;Status=407"_s);
        QCOMPARE(logins.asked.size(), 0);
    }
};

TARVO_TEST(TestInternet);
#include "test_internet.moc"
