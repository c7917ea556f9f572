#include "publicar/signing.h"

#include "platform/erro.h"
#include "platform/secret.h"
#include "platform/system/paths.h"
#include "platform/system/proof.h"
#include "update/prova.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace publicar {
namespace {

constexpr auto SecretName = "ChaveSecreta.txt"_L1;
constexpr auto OpenName = "ChavesAtualizacao.txt"_L1;
constexpr auto SecretMark = "Chave secreta:"_L1;
constexpr auto SiteMark = "Site:"_L1;

template <typename MessageOf>
QByteArray SignaturesOf(const std::vector<Signer>& signers, MessageOf messageOf) {
    QByteArray lines;
    for (const Signer& signer : signers) {
        lines += sys::Sign(messageOf(signer.site), signer.key).toHex() + "\r\n";
    }
    return lines;
}

QString ListPath(const QString& site, int release) {
    return site + u'\\' + ListName(release);
}

// The list with a SHA-256, and the size that belongs to it, in each line.
QString WithHashes(const QString& site, const QString& list) {
    QStringList lines = list.split("\r\n"_L1);
    for (QString& line : lines) {
        QStringList fields = line.split(u';');
        if (fields.size() != 3) {
            continue;
        }
        const QString path = site + u'\\' + fields.at(1);
        const QString native = sys::ToNative(path);
        fields[2] = QString::number(QFileInfo(native).size());
        fields += QString::fromLatin1(sys::HashOfFile(path).toHex());
        line = fields.join(u';');
    }
    return lines.join("\r\n"_L1);
}

}  // namespace

void MakeKey(const QString& folder, const QString& siteName) {
    const QString secretFile = folder + u'\\' + SecretName;
    const QString openFile = folder + u'\\' + OpenName;
    if (siteName.trimmed().isEmpty() || siteName.contains(u'\n')) {
        throw Erro(Erro::InvalidArgument, u"Falta o nome do site (--site-name)."_s);
    }
    if (sys::Exists(secretFile) || sys::Exists(openFile)) {
        throw Erro(Erro::PathFileAccess, u"Já há uma chave em \"%1\"."_s.arg(folder));
    }
    if (!QDir().mkpath(folder)) {
        throw Erro(Erro::PathFileAccess, u"Não foi possível criar a pasta \"%1\"."_s.arg(folder));
    }
    sys::KeyPair pair = sys::NewKeyPair();
    const secret::WipeAtEnd withoutSecret(pair.secret);
    QByteArray text =
        "# Quem tem esta chave publica atualizações. Guarde uma cópia em lugar seguro.\r\n" +
        (SiteMark + u' ' + siteName.trimmed()).toUtf8() + "\r\n" + QByteArray(SecretMark.data()) +
        ' ' + pair.secret.toHex() + "\r\n";
    const secret::WipeAtEnd withoutText(text);
    sys::WriteWhole(secretFile, text, sys::Access::OwnerOnly);
    sys::WriteWhole(
        openFile, "# Este computador só aceita atualizações assinadas por uma destas chaves.\r\n" +
                      (SiteMark + u' ' + siteName.trimmed()).toUtf8() +
                      "\r\nChave: " + pair.open.toHex() + "\r\n");
}

Signer ReadSigner(const QString& path) {
    Signer signer;
    for (const QString& line : sys::ReadText(path).split(u'\n')) {
        if (line.startsWith(SiteMark)) {
            signer.site = line.mid(SiteMark.size()).trimmed();
        } else if (line.startsWith(SecretMark)) {
            signer.key = QByteArray::fromHex(line.mid(SecretMark.size()).trimmed().toLatin1());
        }
    }
    if (signer.site.isEmpty() || signer.key.size() != sys::KeySize) {
        throw Erro(Erro::InvalidArgument, u"\"%1\" não é uma chave secreta."_s.arg(path));
    }
    return signer;
}

void SignList(const QString& site, const std::vector<Signer>& signers, int release) {
    if (signers.empty()) {
        return;
    }
    const QByteArray list = sys::ReadBytes(ListPath(site, release));
    sys::WriteWhole(ListPath(site, release) + u".sig"_s,
                    SignaturesOf(signers, [&](const QString& name) {
                        return MensagemDaLista(name, release, list);
                    }));
}

void SignVersion(const QString& site, const std::vector<Signer>& signers, int release) {
    if (signers.empty()) {
        return;
    }
    const QDate today = QDate::currentDate();
    sys::WriteWhole(site + u'\\' + SignedVersionName,
                    QByteArray::number(release) + ';' + today.toString(Qt::ISODate).toLatin1() +
                        "\r\n" + SignaturesOf(signers, [&](const QString& name) {
                            return MensagemDaVersao(name, release, today);
                        }));
}

void SignAgain(const QString& site, const std::vector<Signer>& signers) {
    const int newest = sys::ReadText(site + u'\\' + VersionName).trimmed().toInt();
    for (int release = 1; release <= newest; ++release) {
        const QString path = ListPath(site, release);
        if (!sys::Exists(path)) {
            continue;
        }
        const QString list = sys::ReadText(path);
        if (const QString hashed = WithHashes(site, list); hashed != list) {
            sys::WriteWhole(path, hashed.toUtf8());
        }
        SignList(site, signers, release);
    }
    SignVersion(site, signers, newest);
}

}  // namespace publicar
