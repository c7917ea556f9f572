#include "busca.h"
#include "session/global.h"
#include "support/cases.h"
#include "support/servers.h"

#include <QTimer>

using namespace std::chrono_literals;

struct TestInternet : Fixture {
    WrongServer server_;
    const ProxySetting proxy_{server_.Port()};
    std::optional<QTemporaryDir> folder_;

    QStringList Files() const { return QDir(folder_->path()).entryList(QDir::Files); }
    void init() override {
        gCaminho = folder_.emplace().path() + u'\\';
        DefinirTempoLimite(60s);
        DefinirMaiorTexto(10000);
        HttpConectar(u"atualiza.exemplo"_s);
    }
    void cleanup() override {
        HttpDesconectar();
        DefinirMaiorTexto(256 << 20);
    }
};

TEST(TestInternet, AsksAsItMust) {
    const QString head = Fetch(u"base/Peças/válvula 1.png"_s + u"/../echo?a=b c"_s);
    const QStringList lines = head.split(u"\r\n"_s);
    QCOMPARE(lines.first().toLower(),
             u"get http://atualiza.exemplo/base/pe%c3%a7as/v%c3%a1lvula%201.png/../echo?a=b%20c "
             "http/1.0"_s);
    for (const AnyText line : {"Host: atualiza.exemplo", "User-Agent: CatalogoDePecasTarvo",
                               "Pragma: no-cache", "Connection: Keep-Alive"}) {
        QVERIFY2(lines.contains(line), qPrintable(head));
    }
    QVERIFY(!head.contains("Accept:"_L1));
}

TEST(TestInternet, Answers) {
    Cases row(TARVO_CASES "/requests.data");
    row("unannounced", Case{List(u"> "_s + QString(10000, u'y') + u"/1"_s)});
    for (auto [one] : row) {
        const QString answer = one.Take(u'>').first();
        if (answer.contains("12002"_L1) || row.Name() == "drip") {
            DefinirTempoLimite(1800ms);
        }
        const qsizetype before = server_.Requests().size();
        const QString text = Fetch(row.Name().constData());
        QCOMPARE(text + u'/' + QString::number(server_.Requests().size() - before), answer);
        QCOMPARE(Files().size(), answer.contains("InternetReadFile:12"_L1));  // half a body stays
    }
}

TEST(TestInternet, ConnectionsThatAreReset) {
    QCOMPARE(Fetch("reset"), u"-104 HttpSendRequest:12031"_s);
    QCOMPARE(Fetch("reset-body"), u"-104 InternetReadFile:12031;-105;Ret=0"_s);
    QCOMPARE(Files().size(), 1);  // half a body stays
}

TEST(TestInternet, IntoAFile) {
    const QString given = folder_->filePath(u"dado"_s);
    const QString other = folder_->filePath(u"outro"_s);
    Write(other, "was here before and is longer");
    QVERIFY(QFile::link(other, given));  // is replaced, not followed
    for (const AnyText path : {"ok", "empty"}) {
        QCOMPARE(HttpExecutar(u"D"_s, true, path, false, given, {}, {}, {}, {}), given);
        QCOMPARE(sys::ReadText(given), path == u"ok"_s ? u"conteúdo"_s : QString());
    }
    QVERIFY(sys::ReadText(other).startsWith(u"was"_s));
    const qsizetype before = server_.Requests().size();
    QCOMPARE(SaidBy([] { HttpExecutar(u"U"_s, true, u"ok"_s, true, {}, {}, {}, {}, {}); }),
             u"-104 BodyPostFileUpload:0;-107;Não é Permitido UPLOAD"_s);
    QCOMPARE(server_.Requests().size(), before);
}

TEST(TestInternet, NobodyThere) {
    const ProxySetting nobody(FreePort());
    QCOMPARE(Fetch("ok"), u"-104 HttpSendRequest:12029"_s);
    const ProxySetting none(0);
    HttpConectar(u"servidor.invalid"_s);
    QCOMPARE(Fetch("ok"), u"-104 HttpSendRequest:12007"_s);
    for (const AnyText host : {"", "a b", "https:", "exemplo:8080", "eu@exemplo"}) {
        QCOMPARE(SaidBy([&] { HttpConectar(host); }), u"-100 InternetConnect:12005"_s);
        QVERIFY(Fetch("ok").startsWith("-104 HttpOpenRequest:"_L1));
    }
}

TEST(TestInternet, ScreenLivesDuringAWait) {
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
    timer.start(20ms);
    QCOMPARE(Fetch("late"), u"tarde"_s);
    QVERIFY2(ticks > 4, qPrintable(QString::number(ticks)));  // of fifty, on an idle machine
    connect(&timer, &QTimer::timeout, this, [] { HttpInterromper(); });
    QCOMPARE(Fetch("silent"), u"-104 HttpSendRequest:0;18;Interrompido pelo usuário"_s);
    // After each block, too, however fast the next one is there.
    server_.Put("grande", QByteArray(1'000'000, 'g'));
    HttpConectar(u"atualiza.exemplo"_s);
    int blocks = 0;
    timer.stop();
    QCOMPARE(SaidBy([&] {
                 HttpExecutar(u"D"_s, true, u"grande"_s, true, {}, {}, {}, {}, {}, [&](qint32) {
                     ++blocks;
                     HttpInterromper();
                 });
             }),
             u"-104 InternetReadFile:0;18;Interrompido pelo usuário"_s);
    QCOMPARE(blocks, 1);
}

// Who cannot be known is passed over.
TEST(TestInternet, ProxyOfAnUnknownAuthority) {
    const WrongServer proxy("IP:127.0.0.1");
    const ProxySetting setting(proxy.Port(), "https");
    QCOMPARE(Fetch("ok"), u"conteúdo"_s);
    QCOMPARE(proxy.Requests().size(), 1);
}

// But not a name that is another one's: the tries end.
TEST(TestInternet, ProxyOfAnotherName) {
    const WrongServer impostor("DNS:outro.exemplo");
    const ProxySetting setting(impostor.Port(), "https");
    QCOMPARE(Fetch("ok"),
             u"-104 InternetSetOption_SECURITY_FLAG_IGNORE_UNKNOWN_CA:12045;-101;Cont=4"_s);
    QCOMPARE(impostor.Requests(), QStringList());
}

TEST(TestInternet, Passwords) {
    for (const auto& [stored, dialogs, typed, answer, times] :
         Each<QString, bool, QStringList, QString, int>{
             {"the stored one first", "s3nha", true, List(), "dentro", 0},
             {"refused, typed", "velha", true, List("maria/errada", "maria/s3nha"), "dentro", 2},
             {"given up", "", true, List(), "-104 InternetErrorDlg:0;-106;Cancel Proxy Auth", 1},
             {"never right", "", true, List("maria/errada"), "-104 InternetErrorDlg:0;-102;Cont=7",
              7},
             {"nobody to ask", "velha", false, List("maria/s3nha"),
              "-104 HttpQueryInfo:0;-103;Status=407", 0},
         }) {
        Logins logins(typed);
        QCOMPARE(Fetch("password", stored, dialogs), answer);
        QCOMPARE(int(logins.asked.size()), times);
        for (const AcessoAoProxy& asked : logins.asked) {
            QCOMPARE(asked.area, u"Oficina"_s);
            QCOMPARE(asked.proxy, u"127.0.0.1:%1"_s.arg(server_.Port()));
            QCOMPARE(asked.recusado, !stored.isEmpty() || &asked != &logins.asked.first());
        }
        if (answer == "dentro"_L1) {
            // What got through is offered at once from then on.
            const qsizetype before = server_.Requests().size();
            QCOMPARE(Fetch("password"), answer);
            QVERIFY(server_.Requests().size() - before <= 2);
        }
        if (logins.asked.size() == 2) {  // and what was typed to another connection, too
            HttpConectar(u"atualiza.exemplo"_s);
            QCOMPARE(Fetch("password"), answer);
            QCOMPARE(logins.asked.size(), 2);
        }
    }
}
