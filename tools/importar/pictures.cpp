#include "importar/pictures.h"

#include "importar/copyfile.h"
#include "platform/erro.h"
#include "platform/system/paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace importar {
namespace {

const QString PictureFolders[] = {u"FotoPeca"_s, u"Figuras"_s};
const QString HelpFolder = u"Ajuda"_s;
const QString HelpName = u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s;

// Whatever stands in the way, the file is what the user knows.
void Bring(const QString& from, const QString& to) {
    try {
        CopyFile(from, to);
    } catch (const Erro& erro) {
        throw Erro(erro.Number(),
                   erro.Number() == Erro::DiskFull
                       ? u"Não foi possível copiar \"%1\": o disco está cheio."_s.arg(from)
                       : u"Não foi possível copiar \"%1\"."_s.arg(from));
    }
}

QString FolderOf(const QString& folder, const QString& name) {
    return sys::ToNative(folder + u'\\' + name);
}

}  // namespace

bool HasPictures(const QString& folder) {
    return std::any_of(std::begin(PictureFolders), std::end(PictureFolders),
                       [&](const QString& name) { return QDir(FolderOf(folder, name)).exists(); });
}

void MakePictureFolders(const QString& to) {
    for (const QString& name : PictureFolders) {
        sys::MakeDirectory(to + u'\\' + name);
    }
}

qint64 BringPictures(const QString& from, const QString& to, tabelas::Progress& progress) {
    qint64 copied = 0;
    const auto copy = [&](const QString& source, const QString& target) {
        Bring(source, target);
        progress.Step(0, ++copied);
    };
    for (const QString& name : {PictureFolders[0], PictureFolders[1], HelpFolder}) {
        const QString folder = FolderOf(from, name);
        if (!QDir(folder).exists()) {
            continue;
        }
        progress.Stage(name);
        QDir(to).mkpath(name);
        for (QDirIterator files(folder, QDir::Files); files.hasNext();) {
            const QFileInfo file(files.next());
            copy(file.filePath(), to + u'/' + name + u'/' + file.fileName());
        }
    }
    if (const QString help = FolderOf(from, HelpName); QFileInfo(help).isFile()) {
        copy(help, to + u'/' + HelpName);
    }
    return copied;
}

}  // namespace importar
