#include "folder.h"

#include "catalogue.h"
#include "platform/dao/errors.h"
#include "platform/erro.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "tour.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr auto CatalogueName = "Tarvo.mdb"_L1;
constexpr auto PhotoFolder = "FotoPeca"_L1;
constexpr auto FigureFolder = "Figuras"_L1;
constexpr auto HelpFolder = "Ajuda"_L1;
constexpr auto HelpPage = "ajuda.html"_L1;
constexpr auto HelpName = "Ajuda_Catalogo_TARVO-LINDEN.hlp"_L1;

[[noreturn]] void Fail(Erro::Code code, const QString& text) {
    throw Erro(code, text);
}

void MakeFolder(const QString& path) {
    if (!QDir().mkpath(path)) {
        Fail(Erro::PathFileAccess, u"Não foi possível criar a pasta \"%1\"."_s.arg(path));
    }
}

void MakeCatalogue(const QString& path, const Order& order, const QString& figureFolder) {
    CriarCatalogo(path, SenhaBancoDados());
    const auto connection = std::make_shared<dao::Connection>(path, SenhaBancoDados().toUtf8(),
                                                              dao::Connection::Mode::ReadWrite);
    FillCatalogue(*connection, order.sizes, order.seed, figureFolder);
}

// The page and the pictures that it shows.
void MakeHelp(const QDir& folder) {
    const QDir from(u":/help/ajuda"_s);
    const QStringList names = from.entryList(QDir::Files);
    for (const QString& name : names) {
        const QString to =
            folder.filePath(name == HelpPage ? QString(HelpName) : HelpFolder + "/"_L1 + name);
        QFile source(from.filePath(name));
        QFile target(to);
        if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)) {
            Fail(Erro::PathFileAccess, u"Não foi possível gravar \"%1\"."_s.arg(to));
        }
        const QByteArray bytes = source.readAll();
        if (target.write(bytes) != bytes.size() || !target.flush()) {
            Fail(Erro::DiskFull, u"Não foi possível gravar \"%1\": o disco está cheio."_s.arg(to));
        }
    }
}

void Move(const QString& from, const QString& to) {
    std::error_code error;
    std::filesystem::rename(QFileInfo(from).filesystemFilePath(),
                            QFileInfo(to).filesystemFilePath(), error);
    if (error) {
        Fail(Erro::PathFileAccess, u"Não foi possível gravar \"%1\"."_s.arg(to));
    }
}

void MoveFiles(const QDir& from, const QDir& to) {
    const QStringList names = from.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        if (name != CatalogueName) {
            Move(from.filePath(name), to.filePath(name));
        }
    }
}

// The catalogue comes last: whoever sees it sees a whole folder.
void MoveAll(const QDir& from, const QDir& to) {
    for (const auto folder : {PhotoFolder, FigureFolder, HelpFolder}) {
        MakeFolder(to.filePath(folder));
        MoveFiles(from.filePath(folder), to.filePath(folder));
    }
    MoveFiles(from, to);
    // A journal that an interrupted program left behind would be rolled back into the new file.
    const QString journal = to.filePath(CatalogueName + "-journal"_L1);
    if (QFile::exists(journal) && !QFile::remove(journal)) {
        Fail(Erro::PathFileAccess, u"Não foi possível excluir \"%1\"."_s.arg(journal));
    }
    Move(from.filePath(CatalogueName), to.filePath(CatalogueName));
}

}  // namespace

bool HasCatalogue(const Order& order) {
    return QDir(order.folder).exists(CatalogueName);
}

void MakeDataFolder(const Order& order) {
    const QDir folder(QDir(order.folder).absolutePath());
    if (folder.exists(CatalogueName) && !order.overwrite) {
        Fail(Erro::PathFileAccess,
             u"A pasta \"%1\" já contém um catálogo. Use --overwrite para substituí-lo."_s.arg(
                 folder.path()));
    }
    MakeFolder(folder.path());
    const QTemporaryDir aside(folder.filePath(u"tarvo-demo-XXXXXX"_s));
    if (!aside.isValid()) {
        Fail(Erro::PathFileAccess,
             u"Não foi possível gravar na pasta \"%1\"."_s.arg(folder.path()));
    }
    MakeFolder(aside.filePath(PhotoFolder));
    MakeFolder(aside.filePath(FigureFolder));
    try {
        MakeCatalogue(aside.filePath(CatalogueName), order,
                      order.pictures == Pictures::None ? QString() : aside.filePath(FigureFolder));
    } catch (const Erro& erro) {
        throw Erro(erro.Number(),
                   u"Não foi possível criar o catálogo: %1"_s.arg(erro.Description()));
    }
    MakeFolder(aside.filePath(HelpFolder));
    MakeHelp(QDir(aside.path()));
    DrawPhotos(Assortment(order.seed, order.sizes.parts), aside.filePath(PhotoFolder),
               order.pictures);
    if (order.pictures != Pictures::None) {
        DrawTour(aside.filePath(FigureFolder));
    }
    MoveAll(QDir(aside.path()), folder);
}

}  // namespace demo
