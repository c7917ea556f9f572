// A file system that shows a folder at another place and is as bad as it is told to be.
//
//   frailfs <folder> <mount point> [ignore-locks | no-locks | handle-locks | read-only]
//
// With ignore-locks every lock is granted to everybody, with no-locks none at all, as where a
// server's service of locks is missing; with handle-locks a lock belongs to the open file, as on
// SMB: it keeps out all others of the same process, is let go by none of them, and a shared one
// keeps its own owner from an exclusive one. A file "lento" in the folder makes each read take as
// many milliseconds as it says; a file "morto" makes each fail, after that time.

#define FUSE_USE_VERSION 31
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <fuse.h>
#include <limits>
#include <mutex>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

std::string folder;

std::string At(const char* path) {
    return folder + path;
}

int Answer(long result) {
    return result < 0 ? -errno : static_cast<int>(result);
}

int Handle(const fuse_file_info* file) {
    return static_cast<int>(file->fh);
}

int Attributes(const char* path, struct stat* found, fuse_file_info*) {
    return Answer(lstat(At(path).c_str(), found));
}

int List(const char* path, void* buffer, fuse_fill_dir_t fill, off_t, fuse_file_info*,
         fuse_readdir_flags) {
    DIR* names = opendir(At(path).c_str());
    if (names == nullptr) {
        return -errno;
    }
    while (const dirent* name = readdir(names)) {
        fill(buffer, name->d_name, nullptr, 0, fuse_fill_dir_flags{});
    }
    closedir(names);
    return 0;
}

int Create(const char* path, mode_t mode, fuse_file_info* file) {
    const int handle = open(At(path).c_str(), file->flags, mode);
    file->fh = static_cast<uint64_t>(handle);
    file->direct_io = 1;  // nothing is answered from memory
    return handle < 0 ? -errno : 0;
}

int Read(const char*, char* bytes, size_t size, off_t from, fuse_file_info* file) {
    int milliseconds = 0;
    if (std::ifstream(At("/lento")) >> milliseconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    if (access(At("/morto").c_str(), F_OK) == 0) {
        return -EIO;
    }
    return Answer(pread(Handle(file), bytes, size, from));
}

int Write(const char*, const char* bytes, size_t size, off_t to, fuse_file_info* file) {
    return Answer(pwrite(Handle(file), bytes, size, to));
}

struct Lock {
    std::string path;
    uint64_t handle;
    uint64_t owner;  // the process: one that inherits a file and closes it lets nothing go
    short type;
    off_t from;
    off_t to;
};
std::vector<Lock> locks;

int LockByHandle(const char* path, fuse_file_info* file, int command, struct flock* range) {
    static std::mutex one;
    const std::lock_guard guard(one);
    const off_t to =
        range->l_len == 0 ? std::numeric_limits<off_t>::max() : range->l_start + range->l_len;
    const auto isOwn = [file](const Lock& lock) {
        return lock.handle == file->fh && lock.owner == file->lock_owner;
    };
    if (range->l_type == F_UNLCK) {
        std::erase_if(locks, [&](const Lock& lock) {
            return isOwn(lock) && lock.from >= range->l_start && lock.to <= to;
        });
        return 0;
    }
    const bool taken = std::any_of(locks.begin(), locks.end(), [&](const Lock& lock) {
        const bool meets = lock.path == path && lock.from < to && range->l_start < lock.to;
        const bool shared = range->l_type == F_RDLCK;
        return meets && !(shared && (lock.type == F_RDLCK || isOwn(lock)));
    });
    if (command == F_GETLK) {
        range->l_type = static_cast<short>(taken ? F_WRLCK : F_UNLCK);
        return 0;
    }
    if (!taken) {
        locks.push_back({path, file->fh, file->lock_owner, range->l_type, range->l_start, to});
    }
    return taken ? -EAGAIN : 0;
}

fuse_operations Operations(const std::string& option) {
    fuse_operations all = {};
    all.getattr = Attributes;
    all.readdir = List;
    all.open = [](const char* path, fuse_file_info* file) { return Create(path, 0, file); };
    all.create = Create;
    all.read = Read;
    all.write = Write;
    all.release = [](const char*, fuse_file_info* file) {
        std::erase_if(locks, [&](const Lock& lock) { return lock.handle == file->fh; });
        return Answer(close(Handle(file)));
    };
    all.fsync = [](const char*, int, fuse_file_info* file) { return Answer(fsync(Handle(file))); };
    all.truncate = [](const char* path, off_t size, fuse_file_info*) {
        return Answer(truncate(At(path).c_str(), size));
    };
    all.unlink = [](const char* path) { return Answer(unlink(At(path).c_str())); };
    all.mkdir = [](const char* path, mode_t mode) { return Answer(mkdir(At(path).c_str(), mode)); };
    all.rmdir = [](const char* path) { return Answer(rmdir(At(path).c_str())); };
    all.rename = [](const char* from, const char* to, unsigned) {
        return Answer(rename(At(from).c_str(), At(to).c_str()));
    };
    all.chmod = [](const char* path, mode_t mode, fuse_file_info*) {
        return Answer(chmod(At(path).c_str(), mode));
    };
    if (option == "ignore-locks") {
        all.lock = [](const char*, fuse_file_info*, int, struct flock*) { return 0; };
    } else if (option == "no-locks") {
        all.lock = [](const char*, fuse_file_info*, int, struct flock*) { return -ENOLCK; };
    } else if (option == "handle-locks") {
        all.lock = LockByHandle;
    }
    return all;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::fputs("frailfs <folder> <mount point> [option]\n", stderr);
        return 2;
    }
    folder = arguments[1];
    const std::string option = count > 3 ? arguments[3] : "";
    const fuse_operations operations = Operations(option);
    char foreground[] = "-f";
    char readOnly[] = "-oro";
    char* mine[] = {arguments[0], arguments[2], foreground, readOnly};
    return fuse_main(option == "read-only" ? 4 : 3, mine, &operations, nullptr);
}
