#include "publicar/release.h"

#include "platform/erro.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace publicar {
namespace {

using verificar::Cases;
using verificar::Weight;

class Reader {
public:
    Reader(const Order& order, QList<Finding>& findings)
        : order_(order),
          findings_(findings),
          root_(QFileInfo(order.folder).canonicalFilePath()),
          links_(Weight::Fault, u"Atalho que leva para fora da pasta"_s, order.examples),
          folderLinks_(Weight::Fault, u"Atalho para outra pasta, que não é seguido"_s,
                       order.examples),
          hidden_(Weight::Hint, u"Arquivo oculto, que não é publicado"_s, order.examples),
          unread_(Weight::Fault, u"Arquivo que não pode ser lido"_s, order.examples) {}

    std::vector<File> Read() {
        ReadLevel(QDir(order_.folder), QString());
        std::ranges::sort(files_, {}, &File::name);
        for (const Cases* cases : {&links_, &folderLinks_, &unread_, &hidden_}) {
            cases->AppendTo(findings_);
        }
        return std::move(files_);
    }

private:
    void ReadLevel(const QDir& folder, const QString& prefix) {
        const QFileInfoList entries =
            folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QFileInfo& entry : entries) {
            const QString name = prefix + entry.fileName();
            if (entry.fileName().startsWith(u'.')) {
                hidden_.Add(name);
            } else if (entry.isDir()) {
                if (entry.isSymLink()) {
                    folderLinks_.Add(name);
                } else {
                    ReadLevel(QDir(entry.filePath()), name + u'\\');
                }
            } else {
                Take(entry, name);
            }
        }
    }

    void Take(const QFileInfo& entry, const QString& name) {
        const QString target = entry.canonicalFilePath();
        if (entry.isSymLink() && !target.startsWith(root_ + u'/')) {
            links_.Add(name);
        } else if (!entry.isReadable()) {
            unread_.Add(name);
        } else {
            files_.push_back({TypeOf(name), name, entry.filePath(), entry.size()});
        }
    }

    QString TypeOf(const QString& name) const {
        if (name.endsWith(".sdb"_L1, Qt::CaseInsensitive)) {
            return u"SDB"_s;
        }
        return order_.programs.contains(name, Qt::CaseInsensitive) ? u"EXE"_s : u"ARQ"_s;
    }

    const Order& order_;
    QList<Finding>& findings_;
    QString root_;
    Cases links_;
    Cases folderLinks_;
    Cases hidden_;
    Cases unread_;
    std::vector<File> files_;
};

}  // namespace

bool File::IsScript() const {
    return type == "SDB"_L1;
}

QString ListName(int release) {
    return u"ListVersao%1.txt"_s.arg(release);
}

std::vector<File> ReadFolder(const Order& order, QList<Finding>& findings) {
    if (!QFileInfo(order.folder).isDir()) {
        throw Erro(Erro::PathNotFound, u"Não há pasta \"%1\"."_s.arg(order.folder));
    }
    return Reader(order, findings).Read();
}

QString ListOf(const std::vector<File>& files) {
    QString list;
    for (const File& file : files) {
        list += file.type + u';' + file.name + u';' + QString::number(file.size);
        // A field that installers of the first years do not read.
        list += u';' + QString::fromLatin1(file.sha256.toHex()) + u"\r\n"_s;
    }
    return list;
}

}  // namespace publicar
