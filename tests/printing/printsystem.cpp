#include "printsystem.h"

#include "support/test.h"

#include <QStandardPaths>

#include <cups/cups.h>

namespace {

constexpr int PatienceMs = 60000;  // of a machine that has other work

// Everybody may do everything; jobs stay to be looked at, their attributes are written at once.
constexpr char Rules[] = R"(Listen %1/socket
Browsing Off
WebInterface No
DefaultAuthType None
PreserveJobFiles Yes
DirtyCleanInterval 0
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
    Allow all
  </Limit>
</Policy>
)";

constexpr char Places[] = R"(ServerRoot %1/root
CacheDir %1/cache
StateDir %1/state
RequestRoot %1/spool
TempDir %1/spool
AccessLog %1/access
ErrorLog %1/error
PageLog %1/page
FileDevice Yes
)";

QString Program(const QString& name) {
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {u"/usr/sbin"_s}) : found;
}

}  // namespace

PrintSystem::PrintSystem() {
    for (const QString& program : {u"cupsd"_s, u"lpadmin"_s}) {
        if (Program(program).isEmpty()) {
            missing_ = u"there is no "_s + program;
            return;
        }
    }
    Write(Path(u"cupsd.conf"_s), QString::fromLatin1(Rules).arg(folder_.path()).toUtf8());
    Write(Path(u"cups-files.conf"_s), QString::fromLatin1(Places).arg(folder_.path()).toUtf8());
    for (const QString& name : {u"root"_s, u"cache"_s, u"state"_s, u"spool"_s}) {
        QDir(folder_.path()).mkdir(name);
    }
    cupsSetServer(qPrintable(Path(u"socket"_s)));
    if (!Start()) {
        missing_ = u"the print system does not start: "_s +
                   QString::fromLocal8Bit(scheduler_.readAllStandardError());
    }
}

PrintSystem::~PrintSystem() {
    Stop();
    cupsSetServer(nullptr);
}

bool PrintSystem::Start() {
    scheduler_.start(Program(u"cupsd"_s), {u"-f"_s, u"-c"_s, Path(u"cupsd.conf"_s), u"-s"_s,
                                           Path(u"cups-files.conf"_s)});
    const auto answers = [this] {
        http_t* http = httpConnect2(qPrintable(Path(u"socket"_s)), 0, nullptr, AF_UNSPEC,
                                    HTTP_ENCRYPTION_NEVER, 1, PatienceMs, nullptr);
        httpClose(http);
        return http != nullptr;
    };
    const bool over = QTest::qWaitFor(
        [&] { return scheduler_.state() == QProcess::NotRunning || answers(); }, PatienceMs);
    return over && scheduler_.state() == QProcess::Running;
}

void PrintSystem::Stop() {
    if (scheduler_.state() != QProcess::NotRunning) {
        scheduler_.terminate();
        scheduler_.waitForFinished(PatienceMs);
    }
}

bool PrintSystem::Run(const QString& command, const QStringList& arguments) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"CUPS_SERVER"_s, Path(u"socket"_s));
    process.setProcessEnvironment(environment);
    process.start(Program(command), arguments);
    return process.waitForFinished(PatienceMs) && process.exitCode() == 0;
}

bool PrintSystem::MakeQueue(const QString& name) const {
    return Run(u"lpadmin"_s,
               {u"-p"_s, name, u"-E"_s, u"-v"_s, u"file:///dev/null"_s, u"-m"_s, u"raw"_s});
}

QString PrintSystem::Newest(const QString& pattern) const {
    const QStringList names = QDir(Path(u"spool"_s)).entryList({pattern}, QDir::Files, QDir::Name);
    return names.isEmpty() ? QString() : Path(u"spool/"_s + names.last());
}

QString PrintSystem::NewestDocument() const {
    return Newest(u"d*"_s);
}

QByteArray PrintSystem::NewestAttributes() const {
    QFile file(Newest(u"c*"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
