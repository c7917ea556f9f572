#include "platform/system/filelocks_native.h"
#include "support/test.h"

namespace {

const QByteArray Mounts =
    "21 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
    "30 21 0:40 / /srv/dados rw,noatime shared:2 master:1 - cifs //casa/dados rw,vers=3.1,nobrl\n"
    "31 21 0:41 / /srv/dados\\040dois rw - nfs casa:/dois rw,vers=3,local_lock=none\n"
    "32 31 0:42 / /srv/dados\\040dois/x rw - nfs casa:/x rw,vers=3,local_lock=all\n"
    "33 21 0:43 / /srv/novo rw - smb3 //casa/a rw,nobrl\n"
    "34 21 0:44 / /srv/novo rw - nfs4 casa:/b rw\n"
    "a line of another / form\n";

}  // namespace

struct TestFileLocks : Fixture {};

TEST(TestFileLocks, mountsAndTheirOptions) {
    for (const auto& [path, type, option] : Each<QString, QString, QString>{
             {"root", "/home/x", "ext4", ""},
             {"share without byte ranges", "/srv/dados/Tarvo.mdb", "cifs", "nobrl"},
             {"the folder itself", "/srv/dados", "cifs", "nobrl"},
             {"a longer name", "/srv/dados2/Tarvo.mdb", "ext4", ""},
             {"a blank in the name", "/srv/dados dois/Tarvo.mdb", "nfs", ""},
             {"the deeper one", "/srv/dados dois/x/y", "nfs", "local_lock=all"},
             {"the later one", "/srv/novo/Tarvo.mdb", "nfs4", ""},
         }) {
        const sys::Mount mount = sys::MountIn(Mounts, path);
        QCOMPARE(mount.type, type);
        QCOMPARE(sys::LocalLocksOption(mount), option);
    }
}

TEST(TestFileLocks, whatKeepsLocksFromTheServer) {
    for (const AnyText known : {"cifs nobrl", "cifs nolock", "smb3 nobrl", "smb3 nolock",
                                "nfs4 nolock", "nfs4 local_lock=all", "nfs4 local_lock=posix"}) {
        const QString option = known.section(u' ', 1);
        QCOMPARE(sys::LocalLocksOption({known.section(u' ', 0, 0), {u"rw"_s, option}}), option);
    }
}

TEST(TestFileLocks, anOrdinaryFolderKeepsLocks) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"a"_s);
    QCOMPARE(sys::ProbeLock(file), sys::LockAnswer::Unknown);
    QVERIFY(!QFile::exists(file));
    Write(file, "x");
    QCOMPARE(sys::ProbeLock(file), sys::LockAnswer::Kept);
    // Somebody else who probes at the same moment has not been refused by the folder.
    QFile other(file);
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(sys::TryLock(other) == sys::Outcome::Granted);
    QCOMPARE(sys::ProbeLock(file), sys::LockAnswer::Kept);
}
