#include "platform/erro.h"
#include "platform/system/paths.h"
#include "session/global.h"
#include "support/database.h"
#include "support/servers.h"
#include "support/testmain.h"
#include "update/acesso.h"
#include "update/internet.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;
using testing_support::ProxySetting;

namespace {

// A program of the distribution with a configuration file of the test's own, which names the port.
class Daemon {
public:
    Daemon(const QString& folder, const QString& program, const QStringList& options,
           const QString& configuration)
        : port_(testing_support::FreePort()) {
        const QString file = folder + u'/' + program + u".conf"_s;
        Write(file, configuration.arg(QString::number(port_)));
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // It must not outlive a test that is killed.
        process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process_.start(u"/usr/sbin/"_s + program, QStringList(options) << u"-f"_s << file);
        if (!process_.waitForStarted() || !testing_support::WaitForPort(port_)) {
            qFatal("%s did not start", qPrintable(program));
        }
    }
    ~Daemon() {
        process_.terminate();
        if (!process_.waitForFinished(5000)) {
            process_.kill();
            process_.waitForFinished();
        }
    }
    int Port() const { return port_; }

    static void Write(const QString& path, const QString& text) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
            qFatal("cannot write %s", qPrintable(path));
        }
    }

private:
    int port_;
    QProcess process_;
};

QString Fetch(const QString& path, bool asText, const QString& user = {},
              const QString& password = {}) {
    return HttpExecutar(u"D"_s, true, path, asText, QString(), QString(), QString(), user,
                        password);
}

}  // namespace

// A real web server, and real proxies before it.
class TestProxies : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QByteArray large_;
    std::unique_ptr<Daemon> web_;
    int asked_ = 0;

    QString Path(const QString& name) const { return folder_.filePath(name); }

    std::unique_ptr<Daemon> Proxy(const QString& scheme) const {
        const QString before =
            u"http_port 127.0.0.1:%1\n"
            "pid_filename none\n"
            "access_log none\n"
            "cache_log /dev/null\n"
            "cache deny all\n"
            "shutdown_lifetime 0 seconds\n"_s;
        const QString after =
            u"acl known proxy_auth REQUIRED\n"
            "http_access allow known\n"
            "http_access deny all\n"
            "cache_peer 127.0.0.1 parent %1 0 no-query no-digest originserver\n"
            "never_direct allow all\n"_s.arg(web_->Port());
        return std::make_unique<Daemon>(folder_.path(), u"squid"_s, QStringList{u"-N"_s},
                                        before + scheme + after);
    }

    // Whatever the dialog is asked, this is the answer.
    void AnswerLogins(const QString& user, const QString& password) {
        asked_ = 0;
        SetPedidoDeAcesso([=, this](AcessoAoProxy& acesso) {
            ++asked_;
            acesso.usuario = user;
            acesso.senha = password;
            return true;
        });
    }

private Q_SLOTS:
    void initTestCase() {
        // The proxy's helpers run as another user when root starts it.
        QFile::setPermissions(folder_.path(), QFile::permissions(folder_.path()) |
                                                  QFile::ReadOther | QFile::ExeOther);
        gCaminho = folder_.path() + u'\\';
        QVERIFY(QDir(folder_.path()).mkpath(u"www/base/FotoPeca"_s));
        Daemon::Write(Path(u"www/base/ListVersao2.txt"_s), u"SDB;dados.txt;4\r\n"_s);
        for (quint32 i = 0; i < 2'000'000; ++i) {
            large_ += char(i * 7919U >> 8U);
        }
        QFile picture(Path(u"www/base/FotoPeca/válvula 1.png"_s));
        QVERIFY(picture.open(QIODevice::WriteOnly) && picture.write(large_) == large_.size());
        picture.close();
        // basic: the password "s3nha", hashed as web servers do it
        Daemon::Write(Path(u"basic"_s), u"maria:$apr1$tarvo$KR76onZWZ33k.Io.7hVK9/\n"_s);
        Daemon::Write(Path(u"digest"_s), u"maria:s3nha\n"_s);
        web_ = std::make_unique<Daemon>(folder_.path(), u"lighttpd"_s, QStringList{u"-D"_s},
                                        u"server.document-root = \"%2\"\n"
                                        "server.bind = \"127.0.0.1\"\n"
                                        "server.port = %1\n"_s.replace(u"%2"_s, Path(u"www"_s)));
    }
    void cleanup() {
        HttpDesconectar();
        SetPedidoDeAcesso({});
    }

    void WebServer() {
        const ProxySetting proxy(web_->Port());
        HttpConectar(u"atualiza.exemplo"_s);
        QCOMPARE(Fetch(u"base/ListVersao2.txt"_s, true), u"SDB;dados.txt;4\r\n"_s);
        QCOMPARE(sys::ReadBytes(Fetch(u"base/FotoPeca/válvula 1.png"_s, false)), large_);
        const std::pair<QString, QString> refused[] = {{u"base/nada.txt"_s, u"Status=404"_s},
                                                       {u"base"_s, u"Status=301"_s}};
        for (const auto& [path, status] : refused) {
            try {
                Fetch(path, true);
                QFAIL("fetched");
            } catch (const Erro& erro) {
                QCOMPARE(erro.Description(), u"HttpQueryInfo:0;-103;"_s + status);
            }
        }
    }

    void Proxies_data() {
        QTest::addColumn<QString>("scheme");
        QTest::addColumn<bool>("knowsPasswords");
        QTest::newRow("Basic") << u"auth_param basic program /usr/lib/squid/basic_ncsa_auth %2\n"_s
                                      .replace(u"%2"_s, Path(u"basic"_s))
                               << true;
        QTest::newRow("Digest")
            << u"auth_param digest program /usr/lib/squid/digest_file_auth %2\n"
               "auth_param digest realm Oficina\n"_s.replace(u"%2"_s, Path(u"digest"_s))
            << true;
        // Goes through the whole exchange and lets everybody in.
        QTest::newRow("NTLM") << u"auth_param ntlm program /usr/lib/squid/ntlm_fake_auth\n"_s
                              << false;
    }
    void Proxies() {
        QFETCH(QString, scheme);
        QFETCH(bool, knowsPasswords);
        const auto squid = Proxy(scheme);
        const ProxySetting proxy(squid->Port());

        AnswerLogins(u"maria"_s, u"s3nha"_s);
        HttpConectar(u"atualiza.exemplo"_s);
        QCOMPARE(Fetch(u"base/ListVersao2.txt"_s, true, u"maria"_s, u"s3nha"_s),
                 u"SDB;dados.txt;4\r\n"_s);
        QCOMPARE(sys::ReadBytes(Fetch(u"base/FotoPeca/válvula 1.png"_s, false, u"maria"_s,
                                      u"s3nha"_s)),
                 large_);
        QCOMPARE(asked_, 0);

        // Nothing stored: asked once for all that follows.
        HttpConectar(u"atualiza.exemplo"_s);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(Fetch(u"base/ListVersao2.txt"_s, true), u"SDB;dados.txt;4\r\n"_s);
        }
        QCOMPARE(asked_, 1);

        if (!knowsPasswords) {
            return;
        }
        AnswerLogins(u"maria"_s, u"s3nha"_s);
        HttpConectar(u"atualiza.exemplo"_s);
        QCOMPARE(Fetch(u"base/ListVersao2.txt"_s, true, u"maria"_s, u"velha"_s),
                 u"SDB;dados.txt;4\r\n"_s);
        QCOMPARE(asked_, 1);

        AnswerLogins(u"maria"_s, u"errada"_s);
        HttpConectar(u"atualiza.exemplo"_s);
        QCOMPARE(testing_support::ErrorOf([] { Fetch(u"base/ListVersao2.txt"_s, true); }), -104);
        QCOMPARE(asked_, 7);
    }
};

TARVO_TEST(TestProxies);
#include "test_proxies.moc"
