#include "tabelas/newfolder.h"

#include "platform/erro.h"
#include "platform/system/output.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace tabelas {
namespace {

// A folder of its own within the temporary one, which nobody else may read.
constexpr auto Inner = "pasta"_L1;

}  // namespace

NewFolder::NewFolder(const QString& target)
    : target_(QDir::cleanPath(QDir(target).absolutePath())) {
    const QFileInfo there(target_);
    if (there.exists() &&
        (!there.isDir() || !QDir(target_).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System |
                                                  QDir::NoDotAndDotDot))) {
        throw Erro(
            Erro::PathFileAccess,
            u"\"%1\" já existe e não é uma pasta vazia; indique uma pasta nova."_s.arg(target_));
    }
    const QDir parent = there.dir();
    if (!parent.exists()) {
        throw Erro(Erro::PathNotFound, u"Não há pasta \"%1\"."_s.arg(parent.path()));
    }
    aside_ = std::make_unique<QTemporaryDir>(parent.filePath(u".tarvo-XXXXXX"_s));
    if (!aside_->isValid() || !QDir(aside_->path()).mkdir(Inner)) {
        throw Erro(Erro::PathFileAccess,
                   u"Não foi possível gravar na pasta \"%1\"."_s.arg(parent.path()));
    }
}

QString NewFolder::Path() const {
    return aside_->filePath(Inner);
}

void NewFolder::Place() {
    for (QDirIterator files(Path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         files.hasNext();) {
        sys::Flush(files.next());
    }
    sys::Flush(Path());
    // An empty folder is not replaced everywhere. One that has been filled meanwhile stays.
    QDir().rmdir(target_);
    std::error_code error;
    std::filesystem::rename(QFileInfo(Path()).filesystemFilePath(),
                            QFileInfo(target_).filesystemFilePath(), error);
    if (error) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível criar \"%1\"."_s.arg(target_));
    }
    sys::Flush(QFileInfo(target_).path());
}

}  // namespace tabelas
