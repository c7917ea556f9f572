#include "importar/pictures.h"

#include "platform/erro.h"
#include "platform/system/output.h"
#include "platform/system/paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace importar {
namespace {

const QString PictureFolders[] = {u"FotoPeca"_s, u"Figuras"_s};
const QString HelpFolder = u"Ajuda"_s;
const QString HelpName = u"Ajuda_Catalogo_TARVO-LINDEN.hlp"_s;

[[noreturn]] void Fail(Erro::Code code, const QString& file) {
    throw Erro(code, code == Erro::DiskFull
                         ? u"Não foi possível copiar \"%1\": o disco está cheio."_s.arg(file)
                         : u"Não foi possível copiar \"%1\"."_s.arg(file));
}

void CopyFile(const QString& from, const QString& to) {
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) {
        Fail(Erro::PathFileAccess, from);
    }
    try {
        sys::Output target(to);
        constexpr qint64 Piece = 1 << 20;
        for (QByteArray bytes = source.read(Piece); !bytes.isEmpty(); bytes = source.read(Piece)) {
            target.Write(bytes.constData(), bytes.size());
        }
        if (source.error() != QFileDevice::NoError) {
            Fail(Erro::PathFileAccess, from);
        }
        target.Close();
    } catch (const Erro& erro) {
        Fail(static_cast<Erro::Code>(erro.Number()), from);
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
        CopyFile(source, target);
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
