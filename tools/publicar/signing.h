#pragma once

#include "publicar/release.h"

namespace publicar {

// Makes a publisher's key in `folder`: "ChaveSecreta.txt", which stays with the publisher, and
// "ChavesAtualizacao.txt" for the computers that are to take nothing but what he signs. Throws
// Erro, also when there is a key already.
void MakeKey(const QString& folder, const QString& siteName);

// Throws Erro for what is no "ChaveSecreta.txt".
Signer ReadSigner(const QString& path);

// Writes "ListVersao<n>.txt.sig" and "Versao.sig" (of today) for what lies in the site, a line for
// each signer. Nothing without signers.
void SignList(const QString& site, const std::vector<Signer>& signers, int release);
void SignVersion(const QString& site, const std::vector<Signer>& signers, int release);

// Signs all that the site holds once more, with today's date: the publisher still stands behind it,
// perhaps with another key. Lines of lists that have no SHA-256 get that of the site's file, so
// that a site that was never signed becomes a signed one. Throws Erro.
void SignAgain(const QString& site, const std::vector<Signer>& signers);

}  // namespace publicar
