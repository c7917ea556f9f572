#include "publicar/names.h"

#include "platform/erro.h"
#include "platform/system/paths.h"
#include "update/lista.h"

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace publicar {
namespace {

using verificar::Cases;
using verificar::Weight;

// By which an installer tells whether two lines name the same file.
QString KeyOf(const QString& name) {
    return name.trimmed().toUpper();
}

// The key of every name in the lists before this version, and the version that had it first.
QHash<QString, int> NamesBefore(const Order& order) {
    QHash<QString, int> names;
    for (int release = 1; release < order.release && !order.site.isEmpty(); ++release) {
        const QString path = order.site + u'/' + ListName(release);
        if (!QFileInfo::exists(path)) {
            continue;
        }
        for (const QString& line : sys::ReadText(path).split("\r\n"_L1)) {
            const QString name = line.section(u';', 1, 1);
            if (!name.trimmed().isEmpty() && !names.contains(KeyOf(name))) {
                names.insert(KeyOf(name), release);
            }
        }
    }
    return names;
}

// What the server itself uses, whatever the letters: some web servers do not tell them apart.
bool IsReserved(const QString& name) {
    static const QRegularExpression reserved(
        u"^(Versao\\.(txt|sig)|ListVersao\\d+\\.txt(\\.sig)?)$"_s,
        QRegularExpression::CaseInsensitiveOption);
    return reserved.match(name).hasMatch();
}

// In an address the first ends the path, and the second is read as one character.
bool IsMisread(const QString& name) {
    static const QRegularExpression escape(u"\\?|%[0-9A-F]{2}"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    return escape.match(name).hasMatch();
}

// What lies on disk under another name than the one that was asked for.
bool IsStoredOtherwise(const QString& name) {
    const QStringList pieces = name.split(u'\\');
    return std::any_of(pieces.begin(), pieces.end(), [](const QString& piece) {
        return piece != ".."_L1 && (piece.endsWith(u'.') || piece.endsWith(u' '));
    });
}

void CheckSizes(const Order& order, const std::vector<File>& files, QList<Finding>& findings) {
    constexpr qint64 Most = std::numeric_limits<qint32>::max();
    Cases large(Weight::Fault, u"Arquivos grandes demais para uma só versão (2 GB ao todo)"_s,
                order.examples);
    qint64 total = 0;
    for (const File& file : files) {
        total += file.size;
        if (total > Most) {
            large.Add(file.name);
        }
    }
    large.AppendTo(findings);
}

void CheckRepeated(const Order& order, const std::vector<File>& files, QList<Finding>& findings) {
    Cases scripts(Weight::Fault,
                  u"Script com o nome de um arquivo de outra versão: quem atualiza "
                  "as duas de uma vez o recebe só uma vez"_s,
                  order.examples);
    Cases others(Weight::Hint,
                 u"Nome que outra versão já tem: também ela passa a trazer este "
                 "conteúdo"_s,
                 order.examples);
    const QHash<QString, int> before = NamesBefore(order);
    for (const File& file : files) {
        if (const auto found = before.constFind(KeyOf(file.name)); found != before.constEnd()) {
            (file.IsScript() ? scripts : others)
                .Add(u"%1 (versão %2)"_s.arg(file.name).arg(found.value()));
        }
    }
    scripts.AppendTo(findings);
    others.AppendTo(findings);
}

void CheckPrograms(const Order& order, const std::vector<File>& files, QList<Finding>& findings) {
    Cases missing(Weight::Fault, u"Programa que não está na pasta"_s, order.examples);
    for (const QString& program : order.programs) {
        const bool there = std::any_of(files.begin(), files.end(), [&](const File& file) {
            return file.name.compare(program, Qt::CaseInsensitive) == 0;
        });
        if (!there) {
            missing.Add(program);
        }
    }
    missing.AppendTo(findings);
    Cases several(Weight::Hint, u"Mais de um programa: só o último da lista é iniciado"_s,
                  order.examples);
    if (order.programs.size() > 1) {
        several.Add(order.programs.join(u", "_s));
    }
    several.AppendTo(findings);
}

}  // namespace

void CheckNames(const Order& order, const std::vector<File>& files, QList<Finding>& findings) {
    Cases refused(Weight::Fault, u"Nome que o instalador recusa"_s, order.examples);
    Cases unlisted(Weight::Fault,
                   u"Nome que não cabe numa lista (ponto e vírgula ou espaço na "
                   "ponta)"_s,
                   order.examples);
    Cases alike(Weight::Fault, u"Nomes que só diferem em maiúsculas e minúsculas"_s,
                order.examples);
    Cases reserved(Weight::Fault, u"Nome que o próprio servidor de atualizações usa"_s,
                   order.examples);
    Cases misread(Weight::Fault,
                  u"Nome que nenhum cliente consegue pedir (ponto de interrogação ou % e dois "
                  "dígitos)"_s,
                  order.examples);
    Cases otherwise(Weight::Fault,
                    u"Nome que o Windows muda (ponto ou espaço no fim do arquivo ou da pasta)"_s,
                    order.examples);
    QHash<QString, QString> keys;
    for (const File& file : files) {
        if (IsReserved(file.name)) {
            reserved.Add(file.name);
        }
        if (IsMisread(file.name)) {
            misread.Add(file.name);
        }
        if (IsStoredOtherwise(file.name)) {
            otherwise.Add(file.name);
        }
        if (file.name.contains(u';') || file.name != file.name.trimmed()) {
            unlisted.Add(file.name);
        }
        try {
            ConferirNome(file.name);
        } catch (const Erro& erro) {
            refused.Add(erro.Description());
        }
        if (const auto found = keys.constFind(KeyOf(file.name)); found != keys.constEnd()) {
            alike.Add(found.value() + u" / "_s + file.name);
        }
        keys.insert(KeyOf(file.name), file.name);
    }
    Cases empty(Weight::Fault, u"Pasta sem nenhum arquivo para publicar"_s, order.examples);
    if (files.empty()) {
        empty.Add(order.folder);
    }
    for (const Cases* cases :
         {&empty, &refused, &unlisted, &reserved, &misread, &otherwise, &alike}) {
        cases->AppendTo(findings);
    }
    CheckSizes(order, files, findings);
    CheckRepeated(order, files, findings);
    CheckPrograms(order, files, findings);
}

void CheckSite(const Order& order, QList<Finding>& findings) {
    if (order.site.isEmpty()) {
        return;
    }
    Cases there(Weight::Fault,
                u"Versão já publicada (--replace a publica de novo, mas quem já a instalou não a "
                "recebe outra vez)"_s,
                order.examples);
    if (!order.replace && QFileInfo::exists(order.site + u'/' + ListName(order.release))) {
        there.Add(ListName(order.release));
    }
    there.AppendTo(findings);
    // Installers ask for every list between their version and the newest one.
    Cases gap(Weight::Fault, u"Falta no servidor a lista da versão anterior"_s, order.examples);
    const QString version = order.site + u'/' + VersionName;
    const int newest = QFileInfo::exists(version) ? sys::ReadText(version).trimmed().toInt() : 0;
    if (newest > 0 && order.release > newest + 1) {
        gap.Add(ListName(order.release - 1));
    }
    gap.AppendTo(findings);
    // Computers with a key would take nothing any more.
    Cases keyless(Weight::Fault, u"O site é assinado, e falta a chave (--key)"_s, order.examples);
    if (order.signers.empty() && QFileInfo::exists(order.site + u'/' + SignedVersionName)) {
        keyless.Add(SignedVersionName);
    }
    keyless.AppendTo(findings);
}

}  // namespace publicar
