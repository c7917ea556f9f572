#include "settings/textocifrado.h"

#include "platform/convert.h"
#include "platform/secret.h"
#include "session/banco.h"
#include "settings/rijndael.h"

#include <QtEndian>

using secret::WipeAtEnd;

namespace {

// Between the position of a character of the password and the code of the one that follows it in
// the phrase. A settings file is readable only by programs with the same value.
constexpr int Deslocamento = 37;

// Two bytes a character, the lower one first, without an end mark.
QByteArray ParaBytes(const QString& texto) {
    QByteArray bytes(texto.size() * 2, Qt::Uninitialized);
    qToLittleEndian<quint16>(texto.utf16(), texto.size(), bytes.data());
    return bytes;
}

QString ParaTexto(const QByteArray& bytes) {
    QString texto(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.constData(), texto.size(), texto.data());
    return texto;
}

int Digito(QChar caractere) {
    const char16_t c = caractere.unicode();
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    throw Erro(Erro::TypeMismatch);
}

QByteArray DeHexadecimal(const QString& texto) {
    QByteArray bytes;
    for (qsizetype i = 0; i < texto.size(); i += 2) {
        if (i + 1 == texto.size()) {
            throw Erro(Erro::SubscriptOutOfRange);
        }
        bytes.append(static_cast<char>(Digito(texto.at(i)) * 16 + Digito(texto.at(i + 1))));
    }
    return bytes;
}

}  // namespace

QString FraseCifra() {
    QString senha = SenhaBancoDados();
    const WipeAtEnd semSenha(senha);
    QString frase(2 * senha.size(), QChar());  // growing would leave pieces behind
    for (qsizetype i = 0; i < senha.size(); ++i) {
        frase[2 * i] = senha.at(i);
        frase[2 * i + 1] = QChar(static_cast<char16_t>(i + 1 + Deslocamento));
    }
    return frase;
}

QString CifrarTexto(const QString& Texto, bool Cifrar) {
    if (Texto.isEmpty()) {
        return {};
    }
    CRijndael cifra;
    QString frase = FraseCifra();
    const WipeAtEnd semFrase(frase);
    QByteArray chave = ParaBytes(frase);
    const WipeAtEnd semChave(chave);
    if (Cifrar) {
        QByteArray claro = ParaBytes(Texto);
        const WipeAtEnd semClaro(claro);
        return QString::fromLatin1(cifra.EncryptData(claro, chave).toHex().toUpper());
    }
    QByteArray claro = cifra.DecryptData(DeHexadecimal(Texto), chave);
    const WipeAtEnd semClaro(claro);
    return ParaTexto(claro);
}
