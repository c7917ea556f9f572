#include "importar/mdbformat.h"

#include "platform/dao/seal.h"
#include "platform/erro.h"
#include "platform/secret.h"
#include "session/banco.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace importar {
namespace {

constexpr QByteArrayView EngineMark = "Standard Jet DB";
constexpr QByteArrayView NewEngineMark = "Standard ACE DB";
constexpr QByteArrayView SqliteMark = "SQLite format 3";
constexpr qsizetype MarkAt = 4;
constexpr qsizetype VersionAt = 0x14;
constexpr qint64 SmallestPages = 3;  // no file of the format has fewer

enum Version : char { Jet3 = 0, Jet4 = 1 };

qint64 PageSizeOf(char version) {
    return version == Jet3 ? 2048 : 4096;
}

bool IsCatalogue(const QByteArray& start) {
    QByteArray password = SenhaBancoDados().toUtf8();
    const secret::WipeAtEnd withoutPassword(password);
    return dao::seal::Explain(start, password) != dao::Failure::NotACatalogue;
}

QString WhatElse(const QByteArray& start, qint64 size) {
    if (size == 0) {
        return u"está vazio"_s;
    }
    if (IsCatalogue(start)) {
        return u"já é um catálogo deste programa"_s;
    }
    const QByteArrayView mark = QByteArrayView(start).sliced(std::min(MarkAt, start.size()));
    if (mark.startsWith(NewEngineMark) ||
        (mark.startsWith(EngineMark) && start.size() > VersionAt && start.at(VersionAt) > Jet4)) {
        return u"é de um formato mais novo; no programa que o criou, salve-o no formato .mdb de "
               "2000 ou de 2002-2003"_s;
    }
    if (start.startsWith(SqliteMark)) {
        return u"é um banco de outro tipo (SQLite)"_s;
    }
    if (!mark.startsWith(EngineMark)) {
        return u"não começa como um arquivo .mdb: é de outro tipo, está danificado no início ou "
               "está cifrado por inteiro"_s;
    }
    const qint64 page = PageSizeOf(start.size() > VersionAt ? start.at(VersionAt) : char(Jet3));
    return size < SmallestPages * page || size % page != 0 ? u"está cortado: falta o fim"_s
                                                           : QString();
}

}  // namespace

void CheckFormat(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível ler \"%1\"."_s.arg(path));
    }
    const QString other = WhatElse(file.read(4096), file.size());
    if (!other.isEmpty()) {
        throw Erro(Erro::InvalidArgument, u"\"%1\" %2."_s.arg(path, other));
    }
}

QString LockFileOf(const QString& path) {
    const QFileInfo file(path);
    const QString name = file.completeBaseName() + u".ldb"_s;
    for (const QFileInfo& beside : file.dir().entryInfoList(QDir::Files)) {
        if (beside.size() > 0 && beside.fileName().compare(name, Qt::CaseInsensitive) == 0) {
            return beside.filePath();
        }
    }
    return {};
}

}  // namespace importar
