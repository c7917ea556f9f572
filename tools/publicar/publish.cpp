#include "publicar/publish.h"

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "publicar/names.h"
#include "publicar/signing.h"
#include "publicar/trial.h"
#include "session/arquivos.h"
#include "session/global.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace publicar {

QList<Finding> Check(const Order& order, const std::vector<File>& files) {
    QList<Finding> findings;
    // Names are judged as in a data folder that has nothing of its own yet.
    const QTemporaryDir nowhere;
    gCaminho = nowhere.path() + u'\\';
    CheckNames(order, files, findings);
    CheckSite(order, findings);
    const std::vector<Line> lines = ReadLines(order, files, findings);
    TryScripts(order, lines, findings);
    return findings;
}

void Publish(const Order& order, std::vector<File> files) {
    if (!QDir().mkpath(order.site)) {
        throw Erro(Erro::PathFileAccess,
                   u"Não foi possível criar a pasta \"%1\"."_s.arg(order.site));
    }
    const QString base = order.site + u'\\';
    for (File& file : files) {
        CriarDiretorios(base, file.name, true);
        sys::WriteWhole(base + file.name, sys::ReadBytes(file.path));
        file.size = QFileInfo(sys::ToNative(base + file.name)).size();
        file.sha256 = sys::HashOfFile(base + file.name);
    }
    sys::WriteWhole(base + ListName(order.release), ListOf(files).toUtf8());
    SignList(order.site, order.signers, order.release);
    const QString version = base + VersionName;
    const int before = sys::Exists(version) ? sys::ReadText(version).trimmed().toInt() : 0;
    SignVersion(order.site, order.signers, qMax(before, order.release));
    if (before < order.release) {
        sys::WriteWhole(version, QByteArray::number(order.release) + "\r\n");
    }
}

}  // namespace publicar
