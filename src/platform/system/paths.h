#pragma once

#include <QByteArray>
#include <QString>

// The functions that touch a file take a path text of the system: the backslash separates, exactly
// as it stands in the system's texts. ToNative is the one place where it becomes the platform's.
namespace sys {

// Platform form of a path text. On file systems that tell case apart, each piece that is not there
// as written is looked up without regard to case; a piece that is not there at all stays as it is.
// "C:\" as a volume stands for the root of the file system where there are no drives.
QString ToNative(const QString& path);

// The same for calls of the system that do not go through the toolkit: the engine's, and our own.
QString ToSystem(const QString& path);

// The same path as the platform writes it, for people to read.
QString ToShown(const QString& path);

// A file that could be opened for reading. Does not open it, so it may ask about a catalogue that
// this process has open.
bool CanRead(const QString& path);
bool Exists(const QString& path);  // anything of that name
// Whether `path` lies in `folder` when links are followed. What is not there yet lies where it
// would be made.
bool IsInside(const QString& folder, const QString& path);
// Whether two folders that are there lie on the same volume, so that a file can be renamed from one
// into the other.
bool SameVolume(const QString& folder, const QString& other);

// While one lives, a folder is listed only once for names that are not there as written, instead of
// once for each. For work that puts very many files into a folder, whose other names stay.
class FolderListings {
public:
    FolderListings();
    ~FolderListings();
    FolderListings(const FolderListings&) = delete;
    FolderListings& operator=(const FolderListings&) = delete;
};

QByteArray ReadBytes(const QString& path);  // Erro 53, 75
// UTF-8 where the bytes are valid UTF-8, otherwise Windows-1252.
QString DecodeText(const QByteArray& bytes);
QString DecodeWindows1252(const QByteArray& bytes);
QString ReadText(const QString& path);  // Erro 53, 75

// Whose file a new one is: its owner's alone, or as the platform gives it.
enum class Access { Shared, OwnerOnly };
// Puts a file with this content in place of what is there. Whoever reads it, and whoever comes
// after a crash at any moment, finds the old content or the new one, never a part. The content has
// reached the disk when this returns. Erro 61, 75, 76; the old file is then as it was.
void WriteWhole(const QString& path, const QByteArray& bytes, Access access = Access::Shared);

void Delete(const QString& path);         // read-only files too; Erro 53, 70, 75
void MakeDirectory(const QString& path);  // one level; Erro 75, 76

QString ProgramFolder();  // as the platform gives it, without a final separator
// Machine-wide settings of the product by this name; empty if there is no such folder.
QString MachineFolder(const QString& product);
QString UserDataFolder();  // per-user local data, made if need be; empty on failure
// Where a small file lies that two programs of one user map into their memory.
QString SharedMemoryFolder();

// Serial number of the volume of a path, 0 when it cannot be had.
quint32 VolumeSerial(const QString& root);

}  // namespace sys
