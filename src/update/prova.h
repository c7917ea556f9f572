#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

#include <optional>

// Who may publish updates. The way to the server is an open network: what comes over it counts only
// if the publisher has signed it (Ed25519), as far as this computer has his keys.

enum NumeroDaProva : int {
    AssinaturaRecusada = -110,  // not signed, or not by one of the keys
    ConteudoAlterado = -111,    // not the file that the list means
};

// "ChavesAtualizacao.txt" beside the program, put there by the package:
//     # a remark
//     Site: tarvo-linden
//     Chave: 64 hexadecimal digits
// with a second key while the publisher goes from one to the next.
struct ChavesDaAtualizacao {
    QString site;
    QList<QByteArray> chaves;  // none: nothing has to be signed

    bool Exigem() const { return !chaves.isEmpty(); }
};

// Without the file no keys. Erro 75 for one that cannot be read or understood: half a file must not
// let everybody in.
ChavesDaAtualizacao LerChaves();
ChavesDaAtualizacao LerTextoDasChaves(const QString& texto);

// Puts keys in the place of the file's (tests). Without a value the file's count again.
void UsarChaves(std::optional<ChavesDaAtualizacao> chaves);

// What is signed. The site's name keeps the lists of two publishers apart who share a key; no
// address is part of it, so that a mirror serves the files as they are.
QByteArray MensagemDaLista(const QString& site, int versao, const QByteArray& lista);
QByteArray MensagemDaVersao(const QString& site, int versao, const QDate& data);

// The signatures of a list, a line of hexadecimal digits for each key. Erro -110.
void ConferirLista(const ChavesDaAtualizacao& chaves, int versao, const QByteArray& lista,
                   const QByteArray& assinaturas);

// "Versao.sig": number, ";", the day of the signature as "2026-11-22"; then the signatures, a line
// each.
struct VersaoAssinada {
    int numero = 0;
    QDate data;
};
// Erro -110.
VersaoAssinada ConferirVersao(const ChavesDaAtualizacao& chaves, const QByteArray& texto);
