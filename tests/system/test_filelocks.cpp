#include "platform/system/filelocks.h"
#include "support/test.h"

namespace {

const QByteArray Mounts =
    "21 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
    "30 21 0:40 / /srv/dados rw,noatime shared:2 master:1 - cifs //casa/dados rw,vers=3.1,nobrl\n"
    "31 21 0:41 / /srv/dados\\040dois rw - nfs casa:/dois rw,vers=3,local_lock=none\n"
    "32 31 0:42 / /srv/dados\\040dois/x rw - nfs casa:/x rw,vers=3,local_lock=all\n"
    "33 21 0:43 / /srv/novo rw - smb3 //casa/a rw,nobrl\n"
    "34 21 0:44 / /srv/novo rw - nfs4 casa:/b rw\n"
    "a line of another form\n";

}  // namespace

class TestFileLocks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mountsAndTheirOptions_data() {
        const Table<QString, QString, QString> row("path", "type", "option");
        row("root", "/home/x", "ext4", {});
        row("share without byte ranges", "/srv/dados/Tarvo.mdb", "cifs", "nobrl");
        row("the folder itself", "/srv/dados", "cifs", "nobrl");
        row("a longer name", "/srv/dados2/Tarvo.mdb", "ext4", {});
        row("a blank in the name", "/srv/dados dois/Tarvo.mdb", "nfs", {});
        row("the deeper one", "/srv/dados dois/x/y", "nfs", "local_lock=all");
        row("the later one", "/srv/novo/Tarvo.mdb", "nfs4", {});
    }
    void mountsAndTheirOptions() {
        QFETCH(QString, path);
        const sys::Mount mount = sys::MountIn(Mounts, path);
        QTEST(mount.type, "type");
        QTEST(sys::LocalLocksOption(mount), "option");
    }

    void anOrdinaryFolderKeepsLocks() {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"a"_s);
        QCOMPARE(sys::ProbeLock(file), sys::LockAnswer::Unknown);
        QVERIFY(!QFile::exists(file));
        Write(file, "x");
        QCOMPARE(sys::ProbeLock(file), sys::LockAnswer::Kept);
    }
};

TARVO_TEST(TestFileLocks);
#include "test_filelocks.moc"
