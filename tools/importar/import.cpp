#include "importar/import.h"

#include "importar/csvsource.h"
#include "importar/mdbsource.h"
#include "importar/pictures.h"
#include "platform/dao/connection.h"
#include "platform/erro.h"
#include "platform/secret.h"
#include "platform/system/output.h"
#include "session/banco.h"
#include "session/esquema.h"
#include "tabelas/newfolder.h"
#include "verificar/check.h"
#include "verificar/pictures.h"
#include "verificar/rules.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace importar {
namespace {

const QString CatalogueName = u"Tarvo.mdb"_s;
const QString RefusedName = u"recusadas.csv"_s;

std::shared_ptr<dao::Connection> OpenNew(const QString& path) {
    QString password = SenhaBancoDados();
    const secret::WipeAtEnd withoutPassword(password);
    CriarCatalogo(path, password);
    return std::make_shared<dao::Connection>(path, password.toUtf8(),
                                             dao::Connection::Mode::ReadWrite);
}

// A copy of an old catalogue goes aside: to where there is room for the new one.
std::unique_ptr<Source> OpenSource(const Order& order, const QString& aside) {
    const QFileInfo from(order.from);
    if (from.isDir()) {
        return std::make_unique<CsvSource>(order.from);
    }
    if (!from.exists()) {
        throw Erro(Erro::FileNotFound, u"Não há \"%1\"."_s.arg(order.from));
    }
    return std::make_unique<MdbSource>(order.from, aside, order.patience);
}

// Where the rows and the pictures beside them lie.
QString FolderOf(const QString& from) {
    const QFileInfo info(from);
    return info.isDir() ? info.absoluteFilePath() : info.absolutePath();
}

class Importer {
public:
    Importer(const Order& order, tabelas::Progress& progress)
        : order_(order), progress_(progress) {}

    Outcome Check() {
        const QTemporaryDir aside;
        if (!aside.isValid()) {
            throw Erro(Erro::PathFileAccess, u"Não há onde gravar arquivos temporários."_s);
        }
        const auto catalogue = Fill(aside.path(), {});
        progress_.Stage(u"Conferência"_s);
        verificar::CheckRows(*catalogue, order_.examples, true, outcome_.findings);
        if (const QString folder = FolderOf(order_.from); HasPictures(folder)) {
            verificar::CheckPictures(*catalogue, folder, order_.examples, true, outcome_.findings);
        }
        return std::move(outcome_);
    }

    Outcome Make() {
        tabelas::NewFolder folder(order_.folder);
        const bool usualPlace = order_.refused.isEmpty();
        const QString refused = usualPlace ? folder.Path() + u'/' + RefusedName : order_.refused;
        Fill(folder.Path(), refused)->Close();
        if (outcome_.refused > 0) {
            outcome_.refusedFile = refused;
        }
        if (order_.allOrNothing && outcome_.refused > 0) {
            if (usualPlace) {
                outcome_.refusedFile = QFileInfo(folder.Target()).dir().filePath(RefusedName);
                sys::Replace(refused, outcome_.refusedFile);
            }
            return std::move(outcome_);
        }
        MakePictureFolders(folder.Path());
        if (order_.pictures) {
            outcome_.pictures = BringPictures(FolderOf(order_.from), folder.Path(), progress_);
        }
        progress_.Stage(u"Conferência"_s);
        outcome_.findings = verificar::Check({folder.Path(), order_.examples, false});
        progress_.Stage(u"Gravação"_s);
        folder.Place();
        outcome_.made = true;
        if (usualPlace && outcome_.refused > 0) {
            outcome_.refusedFile = folder.Target() + u'/' + RefusedName;
        }
        return std::move(outcome_);
    }

private:
    std::shared_ptr<dao::Connection> Fill(const QString& folder, const QString& refusedFile) {
        const auto source = OpenSource(order_, folder);
        const Matches matches = MatchTables(source->Tables());
        const auto catalogue = OpenNew(folder + u'/' + CatalogueName);
        Refused refused(refusedFile, order_.examples);
        outcome_.loaded = Load(*catalogue, *source, matches, refused, progress_);
        refused.Close();
        outcome_.refused = refused.Count();
        outcome_.refusedExamples = refused.Examples();
        outcome_.remarks = source->Remarks() + matches.remarks + outcome_.loaded.remarks;
        if (!matches.missing.isEmpty()) {
            outcome_.remarks +=
                u"Tabelas que faltam e ficam vazias: %1."_s.arg(matches.missing.join(u", "_s));
        }
        return catalogue;
    }

    const Order& order_;
    tabelas::Progress& progress_;
    Outcome outcome_;
};

}  // namespace

Outcome Import(const Order& order, tabelas::Progress& progress) {
    Importer importer(order, progress);
    return order.check ? importer.Check() : importer.Make();
}

}  // namespace importar
