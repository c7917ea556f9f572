#include "busca.h"
#include "session/global.h"
#include "support/servers.h"

#include <csignal>
#include <span>
#include <sys/prctl.h>

namespace {

// A program of the distribution with a configuration file of the test's own, which names the port.
class Daemon {
public:
    Daemon(const QString& folder, const QString& program, const QStringList& options,
           const QString& configuration)
        : port_(FreePort()) {
        const QString file = folder + u'/' + program + u".conf"_s;
        Write(file, configuration.arg(QString::number(port_)).toUtf8());
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // It must not outlive a test that is killed.
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process_.start(u"/usr/sbin/"_s + program, QStringList(options) << u"-f"_s << file);
        OutputOf("python3", {"-c",
                             u"import socket, time\n"
                             "while socket.socket().connect_ex(('127.0.0.1', %1)): "
                             "time.sleep(.05)"_s.arg(port_)});
    }
    ~Daemon() {
        process_.kill();
        process_.waitForFinished();
    }
    int Port() const { return port_; }

private:
    int port_;
    QProcess process_;
};

}  // namespace

// A real web server, and real proxies before it.
struct TestProxies : Fixture {
    QTemporaryDir folder_;
    const QString large_ = u"uma figura em pontos "_s.repeated(100'000);
    std::unique_ptr<Daemon> web_;

    QString Path(const AnyText& name) const { return folder_.filePath(name); }

    Daemon Proxy(const QString& scheme) const {
        return {folder_.path(), u"squid"_s, List("-N"),
                u"http_port 127.0.0.1:%1\nauth_param %2\nacl known proxy_auth REQUIRED\n"
                "http_access allow known\nhttp_access deny all\n"
                "pid_filename none\naccess_log none\ncache_log /dev/null\ncache deny all\n"
                "cache_peer 127.0.0.1 parent %3 0 no-query no-digest originserver\n"
                "never_direct allow all\n"_s.arg(u"%1"_s, scheme, QString::number(web_->Port()))};
    }

    TestProxies() {
        // The proxy's helpers run as another user when root starts it.
        QFile::setPermissions(folder_.path(), QFile::permissions(folder_.path()) |
                                                  QFile::ReadOther | QFile::ExeOther);
        gCaminho = folder_.path() + u'\\';
        Write(Path("www/base/FotoPeca/válvula 1.png"), large_.toUtf8());
        Write(Path("www/base/ListVersao2.txt"), "SDB;dados.txt;4\r\n");
        // The password "s3nha", hashed as web servers do it.
        Write(Path("basic"), "maria:$apr1$tarvo$KR76onZWZ33k.Io.7hVK9/\n");
        Write(Path("digest"), "maria:s3nha\n");
        web_ = std::make_unique<Daemon>(
            folder_.path(), u"lighttpd"_s, List("-D"),
            u"server.document-root = \"%2\"\nserver.port = %1\n"
            "server.bind = \"127.0.0.1\"\n"_s.replace(u"%2"_s, Path("www")));
    }
    void cleanup() override { HttpDesconectar(); }
};

TEST(TestProxies, Proxies) {
    // With what is stored, and with what is typed once for all that follows.
    struct Try {
        AnyText stored;
        AnyText typed;
        int asked;
    };
    static const Try tries[] = {
        {"s3nha", "", 0}, {"", "maria/s3nha", 1}, {"velha", "maria/s3nha", 1}};
    for (const auto& [scheme, known] : Each<QString, size_t>{
             {"Basic", u"basic program /usr/lib/squid/basic_ncsa_auth "_s + Path("basic"), 3},
             {"Digest",
              u"digest program /usr/lib/squid/digest_file_auth "_s + Path("digest") +
                  u"\nauth_param digest realm Oficina"_s,
              3},
             // Goes through the whole exchange and lets everybody in.
             {"NTLM", "ntlm program /usr/lib/squid/ntlm_fake_auth", 2},
         }) {
        const Daemon squid = Proxy(scheme);
        const ProxySetting proxy(squid.Port());
        for (const auto& [stored, typed, asked] : std::span(tries).first(known)) {
            const Logins logins(AnyTexts{typed});
            HttpConectar(u"atualiza.exemplo"_s);
            QCOMPARE(Fetch("base/ListVersao2.txt", stored), u"SDB;dados.txt;4\r\n"_s);
            QVERIFY(Fetch("base/FotoPeca/válvula 1.png", stored) == large_);
            QCOMPARE(logins.asked.size(), asked);
        }
    }
}
